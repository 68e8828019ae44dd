#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "json/numbers.h"
#include "json/string_traits.h"

namespace tsutils::json::detail {

enum class Token {
  openArray,
  closeArray,
  openObject,
  closeObject,
  colon,
  comma,
  null,
  truth,
  falsity,
  signedInteger,
  unsignedInteger,
  real,
  string,
  end,
  error,
};

/// Cuts a text of 16-bit units into tokens. A unit of value 0 between tokens ends the text, as its real end does.
template <typename String, typename Iterator>
class Lexer {
  static_assert(std::is_convertible_v<Iterator, const char16_t*>, "the text is read in place");

public:
  Lexer(Iterator first, Iterator last) : at_(first), end_(last) {}

  Token next();

  /// The 64 bits of the last integer.
  [[nodiscard]] std::uint64_t integer() const noexcept { return integer_; }
  [[nodiscard]] double real() const noexcept { return real_; }
  /// The last string; valid until the next token is read.
  [[nodiscard]] std::u16string_view text() const noexcept { return text_; }

private:
  static constexpr char16_t quote = u'"';
  static constexpr char16_t backslash = u'\\';

  static bool isSpace(char16_t unit) noexcept { return unit == 32 || (unit >= 9 && unit <= 13); }
  static bool isDigit(char16_t unit) noexcept { return unit >= u'0' && unit <= u'9'; }

  [[nodiscard]] char16_t peek() const noexcept { return at_ == end_ ? u'\0' : *at_; }
  bool skip(char16_t unit) noexcept {
    if (peek() != unit) return false;
    ++at_;
    return true;
  }
  /// What the token is, one unit long.
  Token single(Token token) noexcept {
    ++at_;
    return token;
  }
  bool skipDigits() noexcept {
    const Iterator first = at_;
    while (isDigit(peek())) ++at_;
    return at_ != first;
  }

  Token word(std::u16string_view letters, Token token) noexcept;

  Token number();
  Token fraction(Iterator first);
  const std::string& narrow(Iterator first);

  Token string();
  Token stringWithEscapes(Iterator first);
  void skipPlain();
  bool escape();
  bool hexEscape();
  void append(char16_t unit) { buffer_.append(std::u16string_view(&unit, 1)); }
  static std::u16string_view view(Iterator first, Iterator last) noexcept {
    return {first, static_cast<std::size_t>(last - first)};
  }

  Iterator at_;
  Iterator end_;
  std::uint64_t integer_ = 0;
  double real_ = 0;
  std::u16string_view text_;
  String buffer_;       // holds strings with escapes; all others are read in place
  std::string digits_;  // the text of a number, for the functions that read numbers
};

template <typename String, typename Iterator>
Token Lexer<String, Iterator>::next() {
  while (isSpace(peek())) ++at_;
  switch (peek()) {
  case 0:
    return Token::end;
  case u'[':
    return single(Token::openArray);
  case u']':
    return single(Token::closeArray);
  case u'{':
    return single(Token::openObject);
  case u'}':
    return single(Token::closeObject);
  case u':':
    return single(Token::colon);
  case u',':
    return single(Token::comma);
  case u'n':
    return word(u"null", Token::null);
  case u't':
    return word(u"true", Token::truth);
  case u'f':
    return word(u"false", Token::falsity);
  case quote:
    return string();
  default:
    return number();
  }
}

/// What follows the last letter is the business of the next token.
template <typename String, typename Iterator>
Token Lexer<String, Iterator>::word(std::u16string_view letters, Token token) noexcept {
  const bool same = std::all_of(letters.begin(), letters.end(), [this](char16_t letter) { return skip(letter); });
  return same ? token : Token::error;
}

template <typename String, typename Iterator>
Token Lexer<String, Iterator>::number() {
  const Iterator first = at_;
  const bool negative = skip(u'-');
  if (!isDigit(peek())) return Token::error;
  const bool zero = skip(u'0');
  if (!zero) skipDigits();
  const char16_t behind = peek();
  if (behind == u'.' || behind == u'e' || behind == u'E') return fraction(first);
  // A zero is unsigned even behind a minus.
  const bool isSigned = negative && !zero;
  if (zero) {
    integer_ = 0;
  } else if (isSigned) {
    integer_ = static_cast<std::uint64_t>(toSigned(narrow(first)));
  } else {
    integer_ = toUnsigned(narrow(first));
  }
  return isSigned ? Token::signedInteger : Token::unsignedInteger;
}

/// What follows the integral part of a real, which began at `first`.
template <typename String, typename Iterator>
Token Lexer<String, Iterator>::fraction(Iterator first) {
  if (skip(u'.')) skipDigits();
  if (skip(u'e') || skip(u'E')) {
    if (!skip(u'-')) skip(u'+');
    if (!skipDigits()) return Token::error;
  }
  real_ = toReal(narrow(first));
  return Token::real;
}

/// The number between `first` and the current position.
template <typename String, typename Iterator>
const std::string& Lexer<String, Iterator>::narrow(Iterator first) {
  digits_.resize(static_cast<std::size_t>(at_ - first));
  std::transform(first, at_, digits_.begin(), [](char16_t unit) { return static_cast<char>(unit); });
  return digits_;
}

template <typename String, typename Iterator>
Token Lexer<String, Iterator>::string() {
  const Iterator first = ++at_;
  skipPlain();
  if (*at_ != quote) return stringWithEscapes(first);
  text_ = view(first, at_++);
  return Token::string;
}

/// Goes to the next quote or backslash. A string without an end goes on for ever, as if zeros followed, so it ends when
/// there is no memory left for it. The outcome is certain, so it comes at once.
template <typename String, typename Iterator>
void Lexer<String, Iterator>::skipPlain() {
  while (at_ != end_ && *at_ != quote && *at_ != backslash) ++at_;
  if (at_ == end_) StringTraits<String>::outOfMemory();
}

/// At the first backslash of the string, which began at `first`.
template <typename String, typename Iterator>
Token Lexer<String, Iterator>::stringWithEscapes(Iterator first) {
  buffer_.clear();
  buffer_.append(view(first, at_));
  while (skip(backslash)) {
    if (!escape()) return Token::error;
    first = at_;
    skipPlain();
    buffer_.append(view(first, at_));
  }
  ++at_;
  text_ = StringTraits<String>::view(buffer_);
  return Token::string;
}

template <typename String, typename Iterator>
bool Lexer<String, Iterator>::escape() {
  constexpr std::u16string_view letters = u"ntrfb\"\\/";
  constexpr std::u16string_view meanings = u"\n\t\r\f\b\"\\/";
  if (skip(u'u')) return hexEscape();
  const std::size_t which = letters.find(peek());
  if (which == std::u16string_view::npos) return false;
  append(meanings[which]);
  ++at_;
  return true;
}

/// Any unit, also half of a surrogate pair.
template <typename String, typename Iterator>
bool Lexer<String, Iterator>::hexEscape() {
  unsigned value = 0;
  for (int i = 0; i < 4; ++i) {
    const char16_t unit = peek();
    const auto letter = static_cast<char16_t>(unit | 0x20);
    if (isDigit(unit)) {
      value = value * 16 + unit - u'0';
    } else if (letter >= u'a' && letter <= u'f') {
      value = value * 16 + letter - u'a' + 10;
    } else {
      return false;
    }
    ++at_;
  }
  append(static_cast<char16_t>(value));
  return true;
}

}  // namespace tsutils::json::detail
