#pragma once

#include <string>
#include <string_view>

namespace tessel::tool {

/// Whether the bytes begin as an SQLite database does.
bool isDatabase(std::string_view bytes);

/// Whether the file at that path does; false also if it cannot be read.
bool isDatabaseFile(const std::string& path);

/// Whether the file at that path begins as an XML document does, which people take for a project file and the other way
/// round; false also if it cannot be read.
bool looksLikeXml(const std::string& path);

}  // namespace tessel::tool
