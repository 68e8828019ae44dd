#pragma once

#include <string>
#include <string_view>

namespace tessel::tool {

class JsonArray;

/// A JSON object (RFC 8259) on one line, built member by member. Control characters of the texts are escaped, so that one
/// object stays one line; bytes that are no UTF-8 become U+FFFD.
///
///     std::cout << JsonObject().text("name", name).number("count", 2).str() << "\n";
class JsonObject {
public:
  JsonObject& text(std::string_view name, std::string_view value);
  JsonObject& number(std::string_view name, long long value) { return raw(name, std::to_string(value)); }
  /// JSON has no infinity: that becomes null.
  JsonObject& real(std::string_view name, double value);
  JsonObject& null(std::string_view name) { return raw(name, "null"); }
  JsonObject& boolean(std::string_view name, bool value) { return raw(name, value ? "true" : "false"); }
  JsonObject& object(std::string_view name, const JsonObject& value) { return raw(name, value.str()); }

  JsonObject& array(std::string_view name, const JsonArray& value);

  std::string str() const { return "{" + members_ + "}"; }

private:
  JsonObject& raw(std::string_view name, std::string_view value);

  std::string members_;
};

/// A JSON array of objects or of texts.
class JsonArray {
public:
  JsonArray& add(const JsonObject& value) { return raw(value.str()); }
  JsonArray& add(std::string_view text);

  std::string str() const { return "[" + elements_ + "]"; }

private:
  JsonArray& raw(const std::string& element);

  std::string elements_;
};

}  // namespace tessel::tool
