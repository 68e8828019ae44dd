#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "json/lexer.h"
#include "json/value.h"

namespace tsutils::json {
namespace detail {

/// Reads the first value of a text. There is no limit to its nesting: open containers stand in a list.
template <typename Value, typename Iterator>
class Parser {
public:
  Parser(Iterator first, Iterator last) : lexer_(first, last) {}

  /// False, with `out` left alone, if the text does not begin with a value. Once only.
  bool parse(Value& out) {
    try {
      Value value;
      readTree(value);
      out = std::move(value);
      return true;
    } catch (const Error&) {
      return false;
    }
  }

private:
  using Config = typename Value::Config;
  using String = typename Value::String;

  struct Error {};

  void readTree(Value& root);
  bool readMember(Value& container, Token first);
  bool readValue(Value& place, Token token);
  bool open(Value& place, Value container);

  static void expect(bool fulfilled) {
    if (!fulfilled) throw Error();
  }
  static Token closing(const Value& container) noexcept {
    return container.kind() == Kind::object ? Token::closeObject : Token::closeArray;
  }

  Lexer<String, Iterator> lexer_;
  std::vector<Value*> open_;  // each is the last member of the one before, so that its address lasts
};

template <typename Value, typename Iterator>
void Parser<Value, Iterator>::readTree(Value& root) {
  bool atFirst = readValue(root, lexer_.next());
  while (!open_.empty()) {
    Value& container = *open_.back();
    Token token = lexer_.next();
    if (!atFirst && token == Token::comma) {
      token = lexer_.next();
      atFirst = true;
    }
    if (token == closing(container)) {
      open_.pop_back();
      atFirst = false;
    } else {
      expect(atFirst);
      atFirst = readMember(container, token);
    }
  }
}

/// Like readValue, for a new member that begins with the token `first`.
template <typename Value, typename Iterator>
bool Parser<Value, Iterator>::readMember(Value& container, Token first) {
  if (container.kind() == Kind::array) return readValue(container.asArray().emplace_back(), first);
  expect(first == Token::string);
  String key(lexer_.text());
  expect(lexer_.next() == Token::colon);
  return readValue(Config::place(container.asObject(), std::move(key)), lexer_.next());
}

/// True if the value is a container, which is then open.
template <typename Value, typename Iterator>
bool Parser<Value, Iterator>::readValue(Value& place, Token token) {
  switch (token) {
  case Token::openArray:
    return open(place, Value(typename Value::Array()));
  case Token::openObject:
    return open(place, Value(typename Value::Object()));
  case Token::null:
    place = Value();
    return false;
  case Token::truth:
    place = Value(true);
    return false;
  case Token::falsity:
    place = Value(false);
    return false;
  case Token::signedInteger:
    place = Value(static_cast<std::int64_t>(lexer_.integer()));
    return false;
  case Token::unsignedInteger:
    place = Value(lexer_.integer());
    return false;
  case Token::real:
    place = Value(lexer_.real());
    return false;
  case Token::string:
    place = Value(String(lexer_.text()));
    return false;
  default:
    throw Error();
  }
}

template <typename Value, typename Iterator>
bool Parser<Value, Iterator>::open(Value& place, Value container) {
  place = std::move(container);
  open_.push_back(&place);
  return true;
}

}  // namespace detail

/// Reads the first value of the text; what follows it is not looked at. False, with `out` left alone, if there is none
/// or it has a fault. A string without a closing quote ends as if memory had run out: with std::bad_alloc, or what the
/// string type of the configuration throws.
///
/// More than JSON is taken: a comma before a closing bracket or brace, no digit behind the point of a number, vertical tabs
/// and form feeds between tokens, and control characters in strings.
template <typename Config>
bool parse(std::u16string_view text, Value_impl<Config>& out) {
  detail::Parser<Value_impl<Config>, const char16_t*> parser(text.data(), text.data() + text.size());
  return parser.parse(out);
}

}  // namespace tsutils::json
