#pragma once

#include <cstddef>
#include <string_view>

namespace tessel {

// Conversion between buffers that the caller owns, for code that must not go through a temporary text. Each
// direction is a pair: the first function tells how much room is needed, the second fills it and returns the
// end of what it wrote. Malformed text is the business of the second one, which throws before it could write
// beyond that room.

/// Bytes of the text in UTF-8.
std::size_t utf8Length(std::u16string_view text) noexcept;

/// Throws `utf8::invalid_utf16` at an unpaired surrogate.
char* writeUtf8(std::u16string_view text, char* out);

/// Units of the text in UTF-16.
std::size_t utf16Length(std::string_view text) noexcept;

/// Throws a subclass of `utf8::exception`, as OdString::fromUtf8 tells.
char16_t* writeUtf16(std::string_view text, char16_t* out);

/// Units of wide text in UTF-16.
std::size_t utf16Length(std::wstring_view text) noexcept;

/// Throws `utf8::invalid_code_point` as OdString::fromWide tells.
char16_t* writeUtf16(std::wstring_view text, char16_t* out);

/// Needs room for as many characters as the text has units, and may write fewer.
wchar_t* writeWide(std::u16string_view text, wchar_t* out) noexcept;

}  // namespace tessel
