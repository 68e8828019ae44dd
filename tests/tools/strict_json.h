#pragma once

#include <cctype>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include <utf8.h>

namespace tessel::test {

/// The members of one JSON object as texts: a string without its quotes and escapes, anything else as it is written;
/// those of an inner object as "outer.inner", those of an array as "outer.0", "outer.1".
using JsonMembers = std::map<std::string, std::string>;

/// Reads one object or array by the grammar of RFC 8259 and throws std::runtime_error for whatever departs from it:
/// controls in strings, unknown escapes, lone surrogates, bytes that are no UTF-8, members twice, anything behind the
/// end.
class StrictJson {
public:
  static JsonMembers read(std::string_view text) {
    StrictJson json(text);
    json.peek() == '[' ? json.readArray("") : json.readObject("");
    if (json.at_ != text.size()) json.fail("something behind the end");
    return json.members_;
  }

private:
  explicit StrictJson(std::string_view text) : text_(text) {
    if (utf8::find_invalid(text.begin(), text.end()) != text.end()) fail("no UTF-8");
  }

  [[noreturn]] void fail(const std::string& why) const {
    throw std::runtime_error(why + " at " + std::to_string(at_) + " in: " + std::string(text_));
  }

  char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }

  char take() {
    if (at_ == text_.size()) fail("the end");
    return text_[at_++];
  }

  void expect(char wanted) {
    if (take() != wanted) fail(std::string("no ") + wanted);
  }

  void skipSpace() {
    while (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r') ++at_;
  }

  void readObject(const std::string& prefix) {
    expect('{');
    skipSpace();
    if (peek() == '}') return void(take());
    for (;;) {
      skipSpace();
      readMember(prefix);
      skipSpace();
      const char next = take();
      if (next == '}') return;
      if (next != ',') fail("neither , nor }");
    }
  }

  void readMember(const std::string& prefix) {
    const std::string name = prefix + readString();
    skipSpace();
    expect(':');
    skipSpace();
    readValue(name);
  }

  void readArray(const std::string& prefix) {
    expect('[');
    skipSpace();
    if (peek() == ']') return void(take());
    for (int index = 0;; ++index) {
      skipSpace();
      readValue(prefix + std::to_string(index));
      skipSpace();
      const char next = take();
      if (next == ']') return;
      if (next != ',') fail("neither , nor ]");
    }
  }

  void readValue(const std::string& name) {
    if (peek() == '{') return readObject(name + ".");
    if (peek() == '[') return readArray(name + ".");
    if (!members_.emplace(name, peek() == '"' ? readString() : readWord()).second) fail("twice " + name);
  }

  /// A number, true, false or null.
  std::string readWord() {
    const std::size_t start = at_;
    while (std::isalnum(static_cast<unsigned char>(peek())) || peek() == '-' || peek() == '+' || peek() == '.') ++at_;
    const std::string word(text_.substr(start, at_ - start));
    if (word != "true" && word != "false" && word != "null" && !isNumber(word)) fail("no value: " + word);
    return word;
  }

  static std::size_t digits(std::string_view text, std::size_t from) {
    while (from < text.size() && std::isdigit(static_cast<unsigned char>(text[from]))) ++from;
    return from;
  }

  static bool isNumber(std::string_view word) {
    std::size_t at = !word.empty() && word[0] == '-' ? 1 : 0;
    const std::size_t whole = digits(word, at);
    if (whole == at || (word[at] == '0' && whole > at + 1)) return false;
    at = whole;
    if (at < word.size() && word[at] == '.') {
      const std::size_t fraction = digits(word, at + 1);
      if (fraction == at + 1) return false;
      at = fraction;
    }
    if (at < word.size() && (word[at] == 'e' || word[at] == 'E')) {
      const std::size_t sign = at + 1 < word.size() && (word[at + 1] == '+' || word[at + 1] == '-') ? 1 : 0;
      const std::size_t exponent = digits(word, at + 1 + sign);
      if (exponent == at + 1 + sign) return false;
      at = exponent;
    }
    return at == word.size();
  }

  std::string readString() {
    expect('"');
    std::string out;
    for (;;) {
      const char next = take();
      if (next == '"') return out;
      if (static_cast<unsigned char>(next) < 0x20) fail("a control character");
      if (next == '\\') {
        readEscape(out);
      } else {
        out += next;
      }
    }
  }

  void readEscape(std::string& out) {
    constexpr std::string_view letters = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    const char letter = take();
    if (letter == 'u') return utf8::append(readUnicode(), std::back_inserter(out)), void();
    const std::size_t index = letters.find(letter);
    if (index == std::string_view::npos) fail("an unknown escape");
    out += meanings[index];
  }

  /// The code point of "\u" and four digits, or of a surrogate pair of two such escapes.
  char32_t readUnicode() {
    const char32_t first = readHex();
    if (first < 0xD800 || first > 0xDFFF) return first;
    expect('\\');
    expect('u');
    const char32_t second = readHex();
    if (first > 0xDBFF || second < 0xDC00 || second > 0xDFFF) fail("a lone surrogate");
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
  }

  char32_t readHex() {
    std::string hex;
    for (int i = 0; i < 4; ++i) {
      hex += take();
      if (!std::isxdigit(static_cast<unsigned char>(hex.back()))) fail("no hexadecimal digit");
    }
    return static_cast<char32_t>(std::stoul(hex, nullptr, 16));
  }

  std::string_view text_;
  std::size_t at_ = 0;
  JsonMembers members_;
};

}  // namespace tessel::test
