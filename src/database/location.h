#pragma once

#include <string>

#include <tessel/platform/od_string.h>

namespace tessel {

/// What a path says: the file, and the SQLite VFS to reach it through.
struct Location {
  std::string vfs;  ///< Empty for SQLite's default.
  std::string file;
};

/// Splits "vfs://file" at the first "://"; a path without it is a file name as it stands. `utf8::invalid_utf16` for a
/// path that is no text.
inline Location locationOf(const OdString& path) {
  const std::string text = path.toUtf8();
  const std::size_t separator = text.find("://");
  if (separator == std::string::npos) return {{}, text};
  return {text.substr(0, separator), text.substr(separator + 3)};
}

}  // namespace tessel
