#pragma once

#include <cstdint>

namespace tsutils::json {

/// The numbers stand in the text of ValueError.
enum class Kind : std::int32_t { object, array, string, boolean, integer, real, null };

namespace detail {

/// Throws ValueError.
[[noreturn]] void throwWrongKind(Kind actual, Kind asked);

}  // namespace detail
}  // namespace tsutils::json
