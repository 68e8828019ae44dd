#include "text.h"

#include <charconv>
#include <cmath>

#include <cstdio>

#include <utf8.h>

namespace tessel::tool {
namespace {

bool isControl(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

std::string hex(const char* pattern, unsigned number) {
  char text[8];
  std::snprintf(text, sizeof text, pattern, number);
  return text;
}

std::string escapeControl(char32_t character) {
  switch (character) {
  case U'\n':
    return "\\n";
  case U'\r':
    return "\\r";
  case U'\t':
    return "\\t";
  default:
    return hex("\\u%04x", static_cast<unsigned>(character));
  }
}

void appendPrintable(std::string& out, std::string_view valid) {
  for (auto at = valid.begin(); at != valid.end();) {
    const auto from = at;
    const auto character = static_cast<char32_t>(utf8::unchecked::next(at));
    if (isControl(character)) {
      out += escapeControl(character);
    } else {
      out.append(from, at);
    }
  }
}

}  // namespace

std::string printable(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const auto bad = utf8::find_invalid(text.begin(), text.end());
    const auto length = static_cast<std::size_t>(bad - text.begin());
    appendPrintable(out, text.substr(0, length));
    text.remove_prefix(length);
    if (text.empty()) break;
    out += hex("\\x%02x", static_cast<unsigned char>(text.front()));
    text.remove_prefix(1);
  }
  return out;
}

std::string numberText(double number) {
  const double size = std::abs(number);
  const bool plain = number == 0 || (size >= 1e-6 && size < 1e15);
  char text[40];
  const auto end =
    std::to_chars(text, text + sizeof text, number, plain ? std::chars_format::fixed : std::chars_format::scientific);
  return std::string(text, end.ptr);
}

std::string counted(unsigned long long count, std::string_view singular, std::string_view plural) {
  return std::to_string(count) + " " + std::string(count == 1 ? singular : plural);
}

}  // namespace tessel::tool
