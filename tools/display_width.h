#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessel::tool {

/// How many columns of a terminal a text takes: two for each wide character, none for one that joins its neighbour. The
/// text must be valid UTF-8 without control characters, as `printable` makes it.
std::size_t displayWidth(std::string_view text);

/// The text if it takes no more columns than `width`, otherwise its beginning with "…" behind it. The "…" itself always
/// stays.
std::string shortened(const std::string& text, std::size_t width);

}  // namespace tessel::tool
