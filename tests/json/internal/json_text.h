#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/printers.h"
#include "json/od_string_json.h"

namespace tsutils::json {

/// Nothing if the text does not begin with a value.
template <typename Value>
std::optional<Value> parsed(std::u16string_view text) {
  Value value;
  if (!parse(text, value)) return std::nullopt;
  return value;
}

template <typename Value>
std::u16string written(const Value& value, bool pretty = false) {
  std::u16string text;
  write(value, text, pretty);
  return text;
}

/// The text that reading and writing makes of a text; "fault" if it cannot be read.
template <typename Value>
std::u16string rewritten(std::u16string_view text) {
  const std::optional<Value> value = parsed<Value>(text);
  return value ? written(*value) : u"fault";
}

template <typename Config>
void PrintTo(const Value_impl<Config>& value, std::ostream* out) {
  PrintTo(OdString(written(value).c_str()), out);
}

/// For rules that hold in both configurations.
using Values = ::testing::Types<wmValue, OdValue>;

struct ConfigurationNames {
  template <typename Value>
  static std::string GetName(int) {
    return std::is_same_v<Value, wmValue> ? "Map" : "Vector";
  }
};

}  // namespace tsutils::json
