#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <variant>
#include <vector>

#include "json/numbers.h"
#include "json/output.h"
#include "json/printable.h"
#include "json/value.h"

namespace tsutils::json {
namespace detail {

/// The units that stand in a string as they are, as far as a table is worth while: the printable ones of ASCII.
constexpr std::array<bool, 128> plainUnits() {
  std::array<bool, 128> result = {};
  for (char16_t unit = 0x20; unit < 0x7F; ++unit) result[unit] = unit != u'"' && unit != u'\\';
  return result;
}

/// Writes one value. There is no limit to its nesting: open containers stand in a list.
template <typename Value, typename Text>
class Writer {
public:
  Writer(Text& text, bool pretty) : out_(text), pretty_(pretty) {}

  void write(const Value& root) {
    putValue(root);
    while (!open_.empty()) {
      std::visit([this](auto& members) { putNext(members); }, open_.back());
    }
    out_.flush();
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

  Output<Text> out_;
  const bool pretty_;
  std::vector<std::variant<Elements, Pairs>> open_;
};

/// The next member of the innermost container, or its end.
template <typename Value, typename Text>
template <typename Some>
void Writer<Value, Text>::putNext(Some& members) {
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

template <typename Value, typename Text>
void Writer<Value, Text>::putMember(const typename Value::Object::value_type& member) {
  putString(StringTraits<typename Value::String>::view(member.first));
  out_.put(pretty_ ? std::u16string_view(u" : ") : std::u16string_view(u":"));
  putValue(member.second);
}

template <typename Value, typename Text>
void Writer<Value, Text>::putValue(const Value& value) {
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

template <typename Value, typename Text>
template <typename Some>
void Writer<Value, Text>::open(char16_t bracket, const Some& members) {
  out_.put(bracket);
  open_.emplace_back(members);
}

/// Nothing unless pretty.
template <typename Value, typename Text>
void Writer<Value, Text>::breakLine() {
  if (!pretty_) return;
  out_.put(u'\n');
  for (std::size_t level = 0; level < open_.size(); ++level) out_.put(std::u16string_view(u"    "));
}

template <typename Value, typename Text>
void Writer<Value, Text>::putString(std::u16string_view text) {
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
template <typename Value, typename Text>
void Writer<Value, Text>::putSpecial(char16_t unit) {
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

template <typename Value, typename Text>
void Writer<Value, Text>::putInteger(const Value& value) {
  value.isUnsigned() ? putNumber(static_cast<std::uint64_t>(value.asInt())) : putNumber(value.asInt());
}

template <typename Value, typename Text>
template <typename Number>
void Writer<Value, Text>::putNumber(Number number) {
  char buffer[longestReal];
  const char* const end = detail::write(number, buffer);
  out_.putAscii({buffer, static_cast<std::size_t>(end - buffer)});
}

}  // namespace detail

/// Appends the text of the value to `out`: any text of 16-bit units with `append` for a std::u16string_view, `reserve`
/// and `size`, such as std::u16string and OdString. It takes the place of a wide stream, which has characters of another
/// size here and is slow. If memory runs out, a part of the text may have been appended.
///
/// Compact text has no space at all. Pretty text has a line break behind each opening bracket, brace and member, four
/// blanks per level before each line, and a blank on both sides of each colon. Reals are in fixed notation with 16 digits
/// behind the point, so an infinite one gives a text that is no JSON. In strings, all that is not printable is escaped.
template <typename Config, typename Text>
void write(const Value_impl<Config>& value, Text& out, bool pretty) {
  detail::Writer<Value_impl<Config>, Text>(out, pretty).write(value);
}

}  // namespace tsutils::json
