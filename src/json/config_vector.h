#pragma once

#include <utility>
#include <vector>

#include "json/string_traits.h"

namespace tsutils::json {

/// Objects are vectors of pairs in the order in which the members came; a key may stand there more than once.
template <typename Text>
struct Config_vector {
  using String = Text;

  template <typename Value>
  using Object = std::vector<std::pair<String, Value>>;

  /// The place for the value of a member, a new null at the end.
  template <typename Value>
  static Value& place(std::vector<std::pair<String, Value>>& object, String key) {
    return object.emplace_back(std::move(key), Value()).second;
  }
};

}  // namespace tsutils::json
