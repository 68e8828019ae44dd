#pragma once

#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <tessel/export.h>
#include <tessel/platform/alloc.h>

/// @file
/// Text as it crosses the interface.

/// Text of 16-bit units, meant to be UTF-16 but not checked: any sequence of units can be held, zero and
/// unpaired surrogates too. Only the conversion to UTF-8 insists on well-formed text.
///
/// A value with the thread rules of a `std::string`. Positions and lengths count units. Texts of up to seven
/// units live inside the object; longer ones take their memory from odrxAlloc, and each operation that may
/// grow a text throws OdError with `eOutOfMemory` when there is none. A text that was moved from is empty.
///
/// Literals of both kinds are used as they stand:
///
///     OdString name = L"Wall";
///     if (name == u"Wall") name += L"s";
class TESSEL_API OdString {
public:
  /// "To the end" as a count, "not found" as a position.
  static constexpr std::size_t npos = std::u16string_view::npos;

  OdString() noexcept = default;

  /// Zero-terminated text, where null stands for empty text, or as many units as are told.
  ///@{
  OdString(const char16_t* text);  // NOLINT(google-explicit-constructor)
  OdString(const char16_t* text, std::size_t length);
  explicit OdString(std::u16string_view text);
  ///@}

  /// The same of wide text, as fromWide does it.
  ///@{
  OdString(const wchar_t* text);  // NOLINT(google-explicit-constructor)
  OdString(const wchar_t* text, std::size_t length);
  ///@}

  OdString(const OdString&) = default;
  OdString(OdString&&) noexcept = default;
  OdString& operator=(const OdString&) = default;
  OdString& operator=(OdString&&) noexcept = default;
  ~OdString() = default;

  /// Reads UTF-8. Bytes that are none throw a subclass of `utf8::exception`, which is a `std::exception`:
  /// `utf8::invalid_utf8` for a wrong lead or trail byte and an overlong form, `utf8::not_enough_room` when
  /// the last sequence is cut off, `utf8::invalid_code_point` for a surrogate or a number above U+10FFFF.
  static OdString fromUtf8(std::string_view text);

  /// As fromUtf8, but keeps the memory that this text has already. The text is empty after an exception.
  void assignUtf8(std::string_view text);

  /// Throws `utf8::invalid_utf16`, whose text is "Invalid UTF-16", for an unpaired surrogate.
  [[nodiscard]] std::string toUtf8() const;

  /// Where `wchar_t` has 32 bits, a code point above U+FFFF becomes a surrogate pair, a surrogate stays as it
  /// is, and a value above 0x10FFFF throws `utf8::invalid_code_point`. Where it has 16 bits, the units are
  /// copied.
  static OdString fromWide(std::wstring_view text);

  /// The reverse of fromWide: a surrogate pair becomes one code point where `wchar_t` has 32 bits, an
  /// unpaired surrogate stays as it is. Never throws for the contents of the text.
  [[nodiscard]] std::wstring toWide() const;

  /// Text after the manner of `std::swprintf`, of any length up to 2^24 wide characters; "%ls" takes a wide
  /// text. The decimal point follows the process's C locale. Throws `std::invalid_argument` when the text
  /// cannot be made: it would be longer, or an argument is no text in that locale. Arguments that do not fit
  /// the pattern are undefined behaviour, as in C.
  static OdString format(const wchar_t* pattern, ...);

  /// The number of units, without the zero behind them.
  ///@{
  [[nodiscard]] std::size_t length() const noexcept { return text_.size(); }
  [[nodiscard]] std::size_t size() const noexcept { return text_.size(); }
  ///@}

  /// Whether there is no unit.
  ///@{
  [[nodiscard]] bool isEmpty() const noexcept { return text_.empty(); }
  [[nodiscard]] bool empty() const noexcept { return text_.empty(); }
  ///@}

  /// The units, with a zero behind them. Valid until the text is changed or destroyed, as is the view.
  ///@{
  [[nodiscard]] const char16_t* c_str() const noexcept { return text_.c_str(); }
  [[nodiscard]] std::u16string_view view() const noexcept { return text_; }
  ///@}

  /// `index` is at most the length; at the length stands a zero.
  char16_t operator[](std::size_t index) const noexcept { return text_[index]; }

  /// The part from `position` on, of at most `count` units; empty if `position` lies behind the end.
  [[nodiscard]] OdString mid(std::size_t position, std::size_t count = npos) const;

  /// The first position of what is looked for, at or behind `from`; `npos` if there is none.
  ///@{
  [[nodiscard]] std::size_t find(char16_t unit, std::size_t from = 0) const noexcept { return view().find(unit, from); }
  [[nodiscard]] std::size_t find(std::u16string_view part, std::size_t from = 0) const noexcept {
    return view().find(part, from);
  }
  ///@}

  /// Put a text or a unit at the end.
  ///@{
  OdString& append(std::u16string_view text);
  OdString& operator+=(const OdString& text) { return append(text.view()); }
  OdString& operator+=(char16_t unit) { return append({&unit, 1}); }
  ///@}

  /// One wide character, which may become a surrogate pair.
  OdString& operator+=(wchar_t character) { return *this += OdString(&character, 1); }

  /// Puts `to` in place of each `from`; returns how many there were.
  std::size_t replace(char16_t from, char16_t to) noexcept;

  /// Makes the text empty; its memory stays.
  void clear() noexcept { text_.clear(); }

  /// Makes room for texts of up to `length` units.
  void reserve(std::size_t length);

  /// Exchange the two texts; no memory is taken.
  ///@{
  void swap(OdString& other) noexcept { text_.swap(other.text_); }
  friend void swap(OdString& left, OdString& right) noexcept { left.swap(right); }
  ///@}

  /// Negative, zero or positive as this text comes before, equals or comes behind the other. The units are
  /// compared as unsigned numbers, one by one; a text comes behind its own beginning. No locale and no case
  /// folding.
  [[nodiscard]] int compare(const OdString& other) const noexcept { return view().compare(other.view()); }

  /// The left text with the right one behind it.
  ///@{
  friend OdString operator+(const OdString& left, const OdString& right) { return concatenate(left, right); }
  friend OdString operator+(OdString&& left, const OdString& right) { return std::move(left += right); }
  ///@}

  /// In the order of `compare`; a null pointer stands for empty text.
  ///@{
  friend bool operator==(const OdString& left, const OdString& right) noexcept {
    return equal(left.view(), right.view());
  }
  friend bool operator==(const OdString& left, const char16_t* right) noexcept {
    return equal(left.view(), right ? right : u"");
  }
  friend bool operator==(const char16_t* left, const OdString& right) noexcept { return right == left; }
  friend bool operator!=(const OdString& left, const OdString& right) noexcept { return !(left == right); }
  friend bool operator!=(const OdString& left, const char16_t* right) noexcept { return !(left == right); }
  friend bool operator!=(const char16_t* left, const OdString& right) noexcept { return !(left == right); }
  friend bool operator<(const OdString& left, const OdString& right) noexcept { return left.compare(right) < 0; }
  friend bool operator<=(const OdString& left, const OdString& right) noexcept { return left.compare(right) <= 0; }
  friend bool operator>(const OdString& left, const OdString& right) noexcept { return left.compare(right) > 0; }
  friend bool operator>=(const OdString& left, const OdString& right) noexcept { return left.compare(right) >= 0; }
  ///@}

private:
  void assignShortUtf8(std::string_view text);

  static OdString concatenate(const OdString& left, const OdString& right);

  static bool equal(std::u16string_view left, std::u16string_view right) noexcept {
    return left.size() == right.size() && std::memcmp(left.data(), right.data(), left.size() * sizeof(char16_t)) == 0;
  }

  std::basic_string<char16_t, std::char_traits<char16_t>, OdAllocator<char16_t>> text_;
};

/// Equal texts have equal hashes, within one run of a program.
template <>
struct std::hash<OdString> {
  /// The hash of the units.
  std::size_t operator()(const OdString& text) const noexcept { return std::hash<std::u16string_view>()(text.view()); }
};
