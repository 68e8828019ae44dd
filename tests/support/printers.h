#pragma once

#include <cstdio>
#include <ostream>

#include <tessel/platform/od_string.h>

/// Shows a text in the messages of failed tests: ASCII as it is, everything else as \u and the unit.
inline void PrintTo(const OdString& text, std::ostream* out) {
  *out << '"';
  for (const char16_t unit : text.view()) {
    if (unit >= 0x20 && unit < 0x7F) {
      *out << static_cast<char>(unit);
      continue;
    }
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, "\\u%04X", static_cast<unsigned>(unit));
    *out << escaped;
  }
  *out << '"';
}
