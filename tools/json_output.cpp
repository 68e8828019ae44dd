#include "json_output.h"

#include <cmath>
#include <cstdio>
#include <iterator>

#include <utf8.h>

#include "text.h"

namespace tessel::tool {
namespace {

void appendEscaped(std::string& out, char character) {
  const auto byte = static_cast<unsigned char>(character);
  if (byte < 0x20 || byte == 0x7F) {
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(byte));
    out += escaped;
    return;
  }
  if (character == '"' || character == '\\') out += '\\';
  out += character;
}

std::string quoted(std::string_view text) {
  std::string out = "\"";
  std::string valid;
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid));
  for (const char character : valid) {
    appendEscaped(out, character);
  }
  return out + "\"";
}

}  // namespace

JsonObject& JsonObject::text(std::string_view name, std::string_view value) { return raw(name, quoted(value)); }

JsonObject& JsonObject::real(std::string_view name, double value) {
  return raw(name, std::isfinite(value) ? numberText(value) : "null");
}

JsonObject& JsonObject::raw(std::string_view name, std::string_view value) {
  if (!members_.empty()) members_ += ", ";
  members_ += quoted(name) + ": ";
  members_ += value;
  return *this;
}

JsonObject& JsonObject::array(std::string_view name, const JsonArray& value) { return raw(name, value.str()); }

JsonArray& JsonArray::add(std::string_view text) { return raw(quoted(text)); }

JsonArray& JsonArray::raw(const std::string& element) {
  if (!elements_.empty()) elements_ += ", ";
  elements_ += element;
  return *this;
}

}  // namespace tessel::tool
