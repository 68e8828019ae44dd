#pragma once

namespace tsutils::json::detail {

/// Whether the writer leaves a unit as it is. Each unit is judged by itself, so the halves of a surrogate pair are not
/// printable.
bool isPrintable(char16_t unit);

}  // namespace tsutils::json::detail
