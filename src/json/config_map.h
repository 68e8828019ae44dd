#pragma once

#include <map>
#include <utility>

#include "json/string_traits.h"

namespace tsutils::json {

/// Objects are maps, sorted by the 16-bit units of their keys, each of which they hold once.
template <typename Text>
struct Config_map {
  using String = Text;

  template <typename Value>
  using Object = std::map<String, Value>;

  /// The place for the value of a member: a new null, or the earlier value of the same key. The end is a good guess at
  /// where the key belongs, for what was written by this library is sorted.
  template <typename Value>
  static Value& place(std::map<String, Value>& object, String key) {
    return object.try_emplace(object.end(), std::move(key))->second;
  }
};

}  // namespace tsutils::json
