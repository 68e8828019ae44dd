#include "json/lexer.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "json_text.h"

namespace tsutils::json::detail {
namespace {

using TextLexer = Lexer<std::u16string, const char16_t*>;

TextLexer lexerOf(std::u16string_view text) { return {text.data(), text.data() + text.size()}; }

/// All tokens up to the end or the first fault, which is in the list.
std::vector<Token> tokens(std::u16string_view text) {
  TextLexer lexer = lexerOf(text);
  std::vector<Token> result;
  do {
    result.push_back(lexer.next());
  } while (result.back() != Token::end && result.back() != Token::error);
  return result;
}

Token first(std::u16string_view text) { return tokens(text).front(); }

using Tokens = std::vector<Token>;

TEST(JsonLexer, TokensHaveTheirNumbers) {
  const Tokens inOrder = tokens(u"[ ] { } : , null true false -1 1 1.0 \"\"");
  ASSERT_EQ(inOrder.size(), 14u);
  for (std::size_t i = 0; i < inOrder.size(); ++i) EXPECT_EQ(static_cast<std::size_t>(inOrder[i]), i);
  EXPECT_EQ(static_cast<int>(first(u"?")), 14);
}

TEST(JsonLexer, SixCharactersAreSpace) {
  EXPECT_EQ(tokens(u"\t\n\v\f\r [\t\n\v\f\r ]\t\n\v\f\r "), (Tokens{Token::openArray, Token::closeArray, Token::end}));
}

TEST(JsonLexer, NoOtherCharacterIsSpace) {
  for (const char16_t unit : {u'\x08', u'\x0E', u'\x1F', u'\x85', u'\xA0', u'\u2028', u'\u3000', u'\uFEFF'}) {
    EXPECT_EQ(first(std::u16string(1, unit) + u"1"), Token::error) << static_cast<unsigned>(unit);
  }
}

TEST(JsonLexer, AllOtherCharactersAreFaults) {
  const std::u16string_view starts = u"[]{}:,ntf-0123456789\"\t\n\v\f\r ";
  for (unsigned unit = 1; unit < 0x10000; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    if (starts.find(character) != std::u16string_view::npos) continue;
    ASSERT_EQ(first({&character, 1}), Token::error) << unit;
  }
}

TEST(JsonLexer, EndsAtTheEndAndAtAZero) {
  EXPECT_EQ(first(u""), Token::end);
  EXPECT_EQ(first(u"  "), Token::end);
  EXPECT_EQ(first({u"\0[", 2}), Token::end);
  EXPECT_EQ(tokens({u"[ \0 ]", 5}), (Tokens{Token::openArray, Token::end}));
  EXPECT_EQ(tokens({u"1\0 2", 4}), (Tokens{Token::unsignedInteger, Token::end}));
}

TEST(JsonLexer, StaysAtTheEnd) {
  TextLexer lexer = lexerOf(u"1");
  EXPECT_EQ(lexer.next(), Token::unsignedInteger);
  EXPECT_EQ(lexer.next(), Token::end);
  EXPECT_EQ(lexer.next(), Token::end);
}

TEST(JsonLexer, LooksNotBehindTheEnd) {
  const std::u16string text = u"12345";
  TextLexer lexer(text.data(), text.data() + 2);
  EXPECT_EQ(lexer.next(), Token::unsignedInteger);
  EXPECT_EQ(lexer.integer(), 12u);
  EXPECT_EQ(lexer.next(), Token::end);
}

TEST(JsonLexer, WordsAreMatchedLetterByLetter) {
  for (const auto* text : {u"nul", u"nuLl", u"Null", u"tru", u"trve", u"fals", u"falze", u"n", u"t", u"f"}) {
    EXPECT_EQ(first(text), Token::error) << OdString(text).toUtf8();
  }
}

TEST(JsonLexer, WhatFollowsAWordIsAnotherToken) {
  EXPECT_EQ(tokens(u"nullx"), (Tokens{Token::null, Token::error}));
  EXPECT_EQ(tokens(u"truefalse"), (Tokens{Token::truth, Token::falsity, Token::end}));
}

struct Integer {
  Token token;
  std::uint64_t bits;
};

Integer integer(std::u16string_view text) {
  TextLexer lexer = lexerOf(text);
  const Token token = lexer.next();
  return {token, lexer.integer()};
}

void expectUnsigned(std::u16string_view text, std::uint64_t value) {
  EXPECT_EQ(integer(text).token, Token::unsignedInteger) << OdString(text).toUtf8();
  EXPECT_EQ(integer(text).bits, value) << OdString(text).toUtf8();
}

void expectSigned(std::u16string_view text, std::int64_t value) {
  EXPECT_EQ(integer(text).token, Token::signedInteger) << OdString(text).toUtf8();
  EXPECT_EQ(static_cast<std::int64_t>(integer(text).bits), value) << OdString(text).toUtf8();
}

TEST(JsonLexer, IntegersWithoutAMinusAreUnsigned) {
  expectUnsigned(u"0", 0);
  expectUnsigned(u"7", 7);
  expectUnsigned(u"1234567890", 1234567890);
  expectUnsigned(u"9223372036854775808", std::uint64_t{1} << 63);
  expectUnsigned(u"18446744073709551615", std::numeric_limits<std::uint64_t>::max());
}

TEST(JsonLexer, IntegersWithAMinusAreSigned) {
  expectSigned(u"-1", -1);
  expectSigned(u"-1234567890", -1234567890);
  expectSigned(u"-9223372036854775808", std::numeric_limits<std::int64_t>::min());
}

TEST(JsonLexer, IntegersSaturate) {
  expectUnsigned(u"18446744073709551616", std::numeric_limits<std::uint64_t>::max());
  expectUnsigned(u"99999999999999999999999999999999", std::numeric_limits<std::uint64_t>::max());
  expectSigned(u"-9223372036854775809", std::numeric_limits<std::int64_t>::min());
  expectSigned(u"-99999999999999999999999999999999", std::numeric_limits<std::int64_t>::min());
}

TEST(JsonLexer, ZeroIsUnsignedEvenBehindAMinus) { expectUnsigned(u"-0", 0); }

TEST(JsonLexer, LeadingZeroEndsTheNumber) {
  expectUnsigned(u"01", 0);
  EXPECT_EQ(tokens(u"01"), (Tokens{Token::unsignedInteger, Token::unsignedInteger, Token::end}));
  EXPECT_EQ(tokens(u"-01"), (Tokens{Token::unsignedInteger, Token::unsignedInteger, Token::end}));
  EXPECT_EQ(tokens(u"00.5"), (Tokens{Token::unsignedInteger, Token::real, Token::end}));
}

TEST(JsonLexer, WhatEndsANumberIsPushedBack) {
  EXPECT_EQ(tokens(u"1,2"), (Tokens{Token::unsignedInteger, Token::comma, Token::unsignedInteger, Token::end}));
  EXPECT_EQ(tokens(u"1.5]"), (Tokens{Token::real, Token::closeArray, Token::end}));
  EXPECT_EQ(tokens(u"-1-1"), (Tokens{Token::signedInteger, Token::signedInteger, Token::end}));
  EXPECT_EQ(tokens(u"1x"), (Tokens{Token::unsignedInteger, Token::error}));
  EXPECT_EQ(tokens(u"1e5.5"), (Tokens{Token::real, Token::error}));
}

TEST(JsonLexer, MinusNeedsADigit) {
  for (const auto* text : {u"-", u"- 1", u"--1", u"-.5", u"-e5", u"-x", u"-null"}) {
    EXPECT_EQ(first(text), Token::error) << OdString(text).toUtf8();
  }
}

TEST(JsonLexer, NumbersDoNotBeginWithAPointOrAPlus) {
  EXPECT_EQ(first(u".5"), Token::error);
  EXPECT_EQ(first(u"+5"), Token::error);
}

TEST(JsonLexer, ExponentNeedsADigit) {
  for (const auto* text :
       {u"1e", u"1E", u"1e+", u"1e-", u"1.e", u"1.5e", u"1.5e+x", u"0e", u"-0e", u"1ee5", u"1e+-5"}) {
    EXPECT_EQ(first(text), Token::error) << OdString(text).toUtf8();
  }
}

double real(std::u16string_view text) {
  TextLexer lexer = lexerOf(text);
  EXPECT_EQ(lexer.next(), Token::real) << OdString(text).toUtf8();
  EXPECT_EQ(lexer.next(), Token::end) << OdString(text).toUtf8();
  return lexer.real();
}

TEST(JsonLexer, PointOrExponentMakesAReal) {
  EXPECT_EQ(real(u"1.5"), 1.5);
  EXPECT_EQ(real(u"-1.5"), -1.5);
  EXPECT_EQ(real(u"1."), 1.0);
  EXPECT_EQ(real(u"0."), 0.0);
  EXPECT_EQ(real(u"0.25"), 0.25);
  EXPECT_EQ(real(u"1e5"), 100000.0);
  EXPECT_EQ(real(u"1E5"), 100000.0);
  EXPECT_EQ(real(u"1e+5"), 100000.0);
  EXPECT_EQ(real(u"1e-2"), 0.01);
  EXPECT_EQ(real(u"1.e2"), 100.0);
  EXPECT_EQ(real(u"12.5e1"), 125.0);
  EXPECT_EQ(real(u"0e0"), 0.0);
  EXPECT_EQ(real(u"1.0"), 1.0);
  EXPECT_EQ(real(u"1e0005"), 100000.0);
}

TEST(JsonLexer, RealsKeepTheSignOfZero) {
  EXPECT_TRUE(std::signbit(real(u"-0.0")));
  EXPECT_TRUE(std::signbit(real(u"-0e1")));
  EXPECT_FALSE(std::signbit(real(u"0.0")));
}

TEST(JsonLexer, RealsBecomeInfiniteOrVanish) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(real(u"1e309"), infinity);
  EXPECT_EQ(real(u"-1e309"), -infinity);
  EXPECT_EQ(real(u"1e99999999999999999999"), infinity);
  EXPECT_EQ(real(u"1.7976931348623157e308"), std::numeric_limits<double>::max());
  EXPECT_EQ(real(u"4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(real(u"1e-310"), 1e-310);
  EXPECT_EQ(real(u"1e-400"), 0.0);
  EXPECT_TRUE(std::signbit(real(u"-1e-400")));
  EXPECT_EQ(real(u"1e-99999999999999999999"), 0.0);
  EXPECT_EQ(real(u"0e99999999999999999999"), 0.0);
}

TEST(JsonLexer, RealsOfManyDigits) {
  EXPECT_EQ(real(u"0." + std::u16string(5000, u'0') + u"1e5001"), 1.0);
  EXPECT_EQ(real(u"1" + std::u16string(5000, u'0') + u"e-5000"), 1.0);
  EXPECT_EQ(real(u"1." + std::u16string(5000, u'0') + u"1"), 1.0);
}

// The C function is in the plain locale here, for no test changes that.
TEST(JsonLexer, RealsAreTheNearestOnes) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    std::string text = random() % 2 == 0 ? "-" : "";
    text += std::to_string(1 + random() % 1000000) + ".";
    for (auto digits = random() % 25; digits > 0; --digits) text += static_cast<char>('0' + random() % 10);
    if (random() % 2 == 0) text += "e" + std::to_string(static_cast<int>(random() % 700) - 350);
    ASSERT_EQ(real(OdString::fromUtf8(text).view()), std::strtod(text.c_str(), nullptr)) << text;
  }
}

std::u16string string(std::u16string_view text) {
  TextLexer lexer = lexerOf(text);
  EXPECT_EQ(lexer.next(), Token::string) << OdString(text).toUtf8();
  const std::u16string result(lexer.text());
  EXPECT_EQ(lexer.next(), Token::end) << OdString(text).toUtf8();
  return result;
}

TEST(JsonLexer, StringsAreCopiedUpToTheQuote) {
  EXPECT_EQ(string(u"\"\""), u"");
  EXPECT_EQ(string(u"\"text\""), u"text");
  EXPECT_EQ(string(u"\" [,] 'x' \""), u" [,] 'x' ");
  EXPECT_EQ(string(u"\"\u00E4\u4E2D\U0001F3E0\""), u"\u00E4\u4E2D\U0001F3E0");
}

TEST(JsonLexer, ControlCharactersMayStandInStrings) {
  EXPECT_EQ(string(u"\"a\n\t\x01z\""), u"a\n\t\x01z");
  EXPECT_EQ(string({u"\"a\0z\"", 5}), std::u16string(u"a\0z", 3));
}

TEST(JsonLexer, EscapesHaveTheirMeanings) {
  EXPECT_EQ(string(uR"("\n\"\\\/\t\r\f\b")"), u"\n\"\\/\t\r\f\b");
  EXPECT_EQ(string(uR"("a\nb\tc")"), u"a\nb\tc");
}

TEST(JsonLexer, NoOtherEscapeIsTaken) {
  const std::u16string_view letters = u"ntrfb\"\\/u";
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    const auto letter = static_cast<char16_t>(unit);
    if (letters.find(letter) != std::u16string_view::npos) continue;
    ASSERT_EQ(first(std::u16string(u"\"\\") + letter + u"\""), Token::error) << unit;
  }
}

TEST(JsonLexer, HexEscapesGiveOneUnit) {
  EXPECT_EQ(string(uR"("\u00e9")"), u"\u00E9");
  EXPECT_EQ(string(uR"("\u00E9")"), u"\u00E9");
  EXPECT_EQ(string(uR"("\uabcd\uABCD")"), u"\uABCD\uABCD");
  EXPECT_EQ(string(uR"("\u0000")"), std::u16string(1, u'\0'));
  EXPECT_EQ(string(uR"("\u00e9f")"), u"\u00E9f");
  EXPECT_EQ(string(uR"("\uFFFF")"), std::u16string(1, char16_t{0xFFFF}));
}

TEST(JsonLexer, SurrogatesAreNotCombinedOrChecked) {
  EXPECT_EQ(string(uR"("\uD83C\uDFE0")"), u"\U0001F3E0");
  EXPECT_EQ(string(uR"("\uDFE0\uD83C")"), (std::u16string{char16_t{0xDFE0}, char16_t{0xD83C}}));
  EXPECT_EQ(string(uR"("\uD83C")"), std::u16string(1, char16_t{0xD83C}));
}

TEST(JsonLexer, HexEscapesNeedFourDigits) {
  for (const auto* text : {uR"("\u")", uR"("\u12")", uR"("\u123")", uR"("\u123g")", uR"("\ug123")", uR"("\u12 4")",
                           uR"("\U1234")", uR"("\u+123")", uR"("\u0x12")", uR"("\u12@4")", uR"("\u12`4")"}) {
    EXPECT_EQ(first(text), Token::error) << OdString(text).toUtf8();
  }
}

// Only the string itself goes on behind the end; an escape does not.
TEST(JsonLexer, EscapeCutOffByTheEndIsAFault) {
  for (const auto* text : {uR"("\)", uR"("text\)", uR"("\u)", uR"("\u1)", uR"("\u123)"}) {
    EXPECT_EQ(first(text), Token::error) << OdString(text).toUtf8();
  }
}

TEST(JsonLexer, StringWithoutAnEndRunsOutOfMemory) {
  EXPECT_THROW(first(u"\""), std::bad_alloc);
  EXPECT_THROW(first(u"\"text"), std::bad_alloc);
  EXPECT_THROW(first(uR"("te\u0078t)"), std::bad_alloc);
  EXPECT_THROW(first(uR"("text\")"), std::bad_alloc);
  EXPECT_THROW(first({u"\"text\0", 6}), std::bad_alloc);
}

TEST(JsonLexer, StringWithoutAnEndFailsLikeItsType) {
  const std::u16string_view text = u"\"text";
  Lexer<OdString, const char16_t*> lexer(text.data(), text.data() + text.size());
  try {
    lexer.next();
    ADD_FAILURE() << "no exception";
  } catch (const OdError& error) {
    EXPECT_EQ(error.code(), eOutOfMemory);
  }
}

TEST(JsonLexer, BufferIsEmptyForEachString) {
  TextLexer lexer = lexerOf(uR"("a\tb" "\n" "plain" "\u0041")");
  for (const auto* expected : {u"a\tb", u"\n", u"plain", u"A"}) {
    EXPECT_EQ(lexer.next(), Token::string);
    EXPECT_EQ(lexer.text(), expected);
  }
}

}  // namespace
}  // namespace tsutils::json::detail
