#pragma once

#include <string>
#include <string_view>

#include <tessel/platform/od_string.h>

namespace tessel::tool {

/// Text for one line on a terminal: control characters are written as "\n", "\t", "\r" or "\u001b", bytes that are no
/// UTF-8 as "\xff". Everything else stays as it is. A name can hold anything, and must neither break the line nor
/// command the terminal.
std::string printable(std::string_view text);

inline std::string printable(const OdString& text) { return printable(text.toUtf8()); }

/// The shortest text that reads back as the same number; plain digits as long as people still count them.
std::string numberText(double number);

/// "1 error", "2 errors".
std::string counted(unsigned long long count, std::string_view singular, std::string_view plural);

}  // namespace tessel::tool
