#pragma once

#include <new>
#include <string>
#include <string_view>

namespace tsutils::json {

/// What a configuration has to know of its string type beyond this: it is made from a std::u16string_view, and has
/// `append` for one and `clear`.
template <typename String>
struct StringTraits;

/// Wide text of the standard library. It is std::u16string and not std::wstring because all text here is of 16-bit
/// units, in which keys are sorted and characters are escaped; wchar_t has 32 bits on most platforms.
template <>
struct StringTraits<std::u16string> {
  static std::u16string_view view(const std::u16string& text) noexcept { return text; }

  /// Throws what the type throws when it cannot grow.
  [[noreturn]] static void outOfMemory() { throw std::bad_alloc(); }
};

}  // namespace tsutils::json
