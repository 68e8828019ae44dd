#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <variant>
#include <vector>

#include "json/numbers.h"
#include "json/printable.h"
#include "json/value.h"

namespace tsutils::json {
namespace detail {

/// Gathers what is written in blocks and hands it over at the end: by then the length is known, so that a long text is
/// not moved each time it has outgrown its memory.
class Output {
public:
  void put(char16_t unit) { *room(1) = unit, ++used_; }
  void put(std::u16string_view units) {
    put(units, [](char16_t) { return true; });
  }
  void putAscii(std::string_view letters) {
    std::copy(letters.begin(), letters.end(), room(letters.size()));
    used_ += letters.size();
  }

  /// Puts units as long as they are wanted and there is room in the block; returns how many those are, none only if the
  /// first one is not wanted.
  template <typename Wanted>
  std::size_t putSome(std::u16string_view units, Wanted wanted) {
    char16_t* out = room(1);
    const char16_t* next = units.data();
    const char16_t* const end = next + std::min(units.size(), block_.size() - used_);
    while (next != end && wanted(*next)) *out++ = *next++;
    const auto count = static_cast<std::size_t>(next - units.data());
    used_ += count;
    return count;
  }

  /// Either all or, if there is no memory, nothing.
  template <typename Text>
  void appendTo(Text& text) const {
    std::size_t length = text.size() + used_;
    for (const auto& block : full_) length += block.size();
    if (!full_.empty()) text.reserve(length);
    for (const auto& block : full_) text.append(std::u16string_view(block));
    text.append(std::u16string_view(block_.data(), used_));
  }

private:
  /// The next `count` units, fewer than a block has.
  char16_t* room(std::size_t count) {
    if (count > block_.size() - used_) {
      full_.emplace_back(block_.data(), used_);
      used_ = 0;
    }
    return block_.data() + used_;
  }

  std::vector<std::u16string> full_;
  std::size_t used_ = 0;
  std::array<char16_t, 4096> block_;
};

/// The units that stand in a string as they are, as far as a table is worth while: the printable ones of ASCII.
constexpr std::array<bool, 128> plainUnits() {
  std::array<bool, 128> result = {};
  for (char16_t unit = 0x20; unit < 0x7F; ++unit) result[unit] = unit != u'"' && unit != u'\\';
  return result;
}

/// Writes one value. There is no limit to its nesting: open containers stand in a list.
template <typename Value>
class Writer {
public:
  explicit Writer(bool pretty) : pretty_(pretty) {}

  template <typename Text>
  void write(const Value& root, Text& text) {
    putValue(root);
    while (!open_.empty()) {
      std::visit([this](auto& members) { putNext(members); }, open_.back());
    }
    out_.appendTo(text);
  }

private:
  template <typename Iterator>
  struct Members {
    Iterator next;
    Iterator end;
    bool first = true;
  };
  using Elements = Members<typename Value::Array::const_iterator>;
  using Pairs = Members<typename Value::Object::const_iterator>;

  static constexpr char16_t closing(const Elements&) noexcept { return u']'; }
  static constexpr char16_t closing(const Pairs&) noexcept { return u'}'; }

  template <typename Some>
  void putNext(Some& members);
  void putMember(const Value& element) { putValue(element); }
  void putMember(const typename Value::Object::value_type& member);
  void putValue(const Value& value);
  template <typename Some>
  void open(char16_t bracket, const Some& members);
  void breakLine();

  void putString(std::u16string_view text);
  void putSpecial(char16_t unit);
  void putInteger(const Value& value);
  template <typename Number>
  void putNumber(Number number);

  static constexpr std::array<bool, 128> plain = plainUnits();

  Output out_;
  const bool pretty_;
  std::vector<std::variant<Elements, Pairs>> open_;
};

/// The next member of the innermost container, or its end.
template <typename Value>
template <typename Some>
void Writer<Value>::putNext(Some& members) {
  if (members.next == members.end) {
    const char16_t bracket = closing(members);
    open_.pop_back();
    breakLine();
    out_.put(bracket);
    return;
  }
  if (!members.first) out_.put(u',');
  members.first = false;
  breakLine();
  const auto& member = *members.next++;
  putMember(member);  // last, for it may open a container and so move the members
}

template <typename Value>
void Writer<Value>::putMember(const typename Value::Object::value_type& member) {
  putString(StringTraits<typename Value::String>::view(member.first));
  out_.put(pretty_ ? std::u16string_view(u" : ") : std::u16string_view(u":"));
  putValue(member.second);
}

template <typename Value>
void Writer<Value>::putValue(const Value& value) {
  switch (value.kind()) {
  case Kind::object:
    return open(u'{', Pairs{value.asObject().begin(), value.asObject().end()});
  case Kind::array:
    return open(u'[', Elements{value.asArray().begin(), value.asArray().end()});
  case Kind::string:
    return putString(StringTraits<typename Value::String>::view(value.asString()));
  case Kind::boolean:
    return out_.put(value.asBool() ? std::u16string_view(u"true") : std::u16string_view(u"false"));
  case Kind::integer:
    return putInteger(value);
  case Kind::real:
    return putNumber(value.asReal());
  case Kind::null:
    return out_.put(std::u16string_view(u"null"));
  }
}

template <typename Value>
template <typename Some>
void Writer<Value>::open(char16_t bracket, const Some& members) {
  out_.put(bracket);
  open_.emplace_back(members);
}

/// Nothing unless pretty.
template <typename Value>
void Writer<Value>::breakLine() {
  if (!pretty_) return;
  out_.put(u'\n');
  for (std::size_t level = 0; level < open_.size(); ++level) out_.put(std::u16string_view(u"    "));
}

template <typename Value>
void Writer<Value>::putString(std::u16string_view text) {
  const auto isPlain = [](char16_t unit) { return unit < plain.size() && plain[unit]; };
  out_.put(u'"');
  while (!text.empty()) {
    const std::size_t done = out_.putSome(text, isPlain);
    if (done == 0) putSpecial(text.front());
    text.remove_prefix(done == 0 ? 1 : done);
  }
  out_.put(u'"');
}

/// Every unit that may need an escape.
template <typename Value>
void Writer<Value>::putSpecial(char16_t unit) {
  constexpr std::u16string_view units = u"\b\t\n\f\r\"\\";
  constexpr std::u16string_view letters = u"btnfr\"\\";
  constexpr std::u16string_view digits = u"0123456789ABCDEF";
  const std::size_t which = units.find(unit);
  if (which != std::u16string_view::npos) {
    out_.put(u'\\');
    out_.put(letters[which]);
  } else if (isPrintable(unit)) {
    out_.put(unit);
  } else {
    out_.put(std::u16string_view(u"\\u"));
    for (int shift = 12; shift >= 0; shift -= 4) out_.put(digits[(unit >> shift) & 0xF]);
  }
}

template <typename Value>
void Writer<Value>::putInteger(const Value& value) {
  value.isUnsigned() ? putNumber(static_cast<std::uint64_t>(value.asInt())) : putNumber(value.asInt());
}

template <typename Value>
template <typename Number>
void Writer<Value>::putNumber(Number number) {
  char buffer[longestReal];
  const char* const end = detail::write(number, buffer);
  out_.putAscii({buffer, static_cast<std::size_t>(end - buffer)});
}

}  // namespace detail

/// Appends the text of the value to `out`: any text of 16-bit units with `append` for a std::u16string_view, `reserve`
/// and `size`, such as std::u16string and OdString. It takes the place of a wide stream, which has characters of another
/// size here and is slow.
///
/// Compact text has no space at all. Pretty text has a line break behind each opening bracket, brace and member, four
/// blanks per level before each line, and a blank on both sides of each colon. Reals are in fixed notation with 16 digits
/// behind the point, so an infinite one gives a text that is no JSON. In strings, all that is not printable is escaped.
template <typename Config, typename Text>
void write(const Value_impl<Config>& value, Text& out, bool pretty) {
  detail::Writer<Value_impl<Config>>(pretty).write(value, out);
}

}  // namespace tsutils::json
