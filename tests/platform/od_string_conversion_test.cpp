#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <utf8.h>

#include <tessel/platform/od_string.h>

#include "support/printers.h"

namespace {

using namespace std::string_literals;

// Each length of UTF-8 sequence with its first and last character, without the surrogates.
const std::u16string everyLength = u"\u0001\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF";
const std::string everyLengthUtf8 =
  "\x01\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";

std::string utf8Of(std::u16string_view text) { return OdString(text).toUtf8(); }

TEST(OdStringUtf8, ConvertsEveryLengthOfSequence) {
  EXPECT_EQ(utf8Of(everyLength), everyLengthUtf8);
  EXPECT_EQ(OdString::fromUtf8(everyLengthUtf8).view(), everyLength);
}

TEST(OdStringUtf8, EmptyTextStaysEmpty) {
  EXPECT_EQ(OdString().toUtf8(), "");
  EXPECT_TRUE(OdString::fromUtf8("").isEmpty());
  EXPECT_TRUE(OdString::fromUtf8(std::string_view()).isEmpty());
}

TEST(OdStringUtf8, ZeroIsACharacter) {
  EXPECT_EQ(utf8Of({u"a\0b", 3}), "a\0b"s);
  EXPECT_EQ(OdString::fromUtf8("a\0b"s), OdString(u"a\0b", 3));
}

TEST(OdStringUtf8, KeepsAByteOrderMark) {
  EXPECT_EQ(OdString::fromUtf8("\xEF\xBB\xBFx"), u"\uFEFFx");
  EXPECT_EQ(utf8Of(u"\uFEFFx"), "\xEF\xBB\xBFx");
}

// Text is converted in blocks: a character of each kind is moved through every position of a few of them.
TEST(OdStringUtf8, PlaceInTheTextDoesNotMatter) {
  const std::vector<std::pair<std::u16string, std::string>> characters = {
    {u"\u0080", "\xC2\x80"}, {u"\u4E2D", "\xE4\xB8\xAD"}, {u"\U0001F3E0", "\xF0\x9F\x8F\xA0"}};
  for (const auto& [units, bytes] : characters) {
    for (std::size_t before = 0; before < 20; ++before) {
      for (std::size_t behind = 0; behind < 20; ++behind) {
        const std::u16string wide = std::u16string(before, u'x') + units + std::u16string(behind, u'y');
        const std::string narrow = std::string(before, 'x') + bytes + std::string(behind, 'y');
        ASSERT_EQ(utf8Of(wide), narrow);
        ASSERT_EQ(OdString::fromUtf8(narrow).view(), wide);
      }
    }
  }
}

TEST(OdStringUtf8, LongMixedTextMakesTheRoundTrip) {
  std::u16string text;
  for (char16_t i = 0; i < 20000; ++i) {
    text += i % 7 == 0 ? everyLength : std::u16string(i % 23, static_cast<char16_t>(u'a' + i % 26));
  }
  const std::string bytes = utf8Of(text);
  EXPECT_EQ(bytes, utf8::utf16to8(text));
  EXPECT_EQ(OdString::fromUtf8(bytes).view(), text);
}

// Texts of up to 256 bytes go another way than longer ones.
TEST(OdStringUtf8, ConvertsAroundTheLengthOfTheBuffer) {
  for (std::size_t length = 250; length < 262; ++length) {
    const std::string ascii(length, 'x');
    EXPECT_EQ(OdString::fromUtf8(ascii).view(), std::u16string(length, u'x'));
    EXPECT_EQ(OdString::fromUtf8(ascii.substr(2) + "\xC3\xA4").view(), std::u16string(length - 2, u'x') + u"\u00E4");
  }
}

TEST(OdStringUtf8, AssignReusesTheMemory) {
  OdString text;
  text.reserve(1000);
  const char16_t* const units = text.c_str();
  for (const std::size_t length : {3u, 200u, 1000u, 0u, 600u}) {
    text.assignUtf8(std::string(length, 'x'));
    EXPECT_EQ(text.view(), std::u16string(length, u'x'));
    EXPECT_EQ(text.c_str(), units);
    EXPECT_EQ(units[length], u'\0');
  }
}

TEST(OdStringUtf8, UnpairedSurrogatesCannotBeWritten) {
  const std::vector<std::u16string> malformed = {{0xD800},         {0xDBFF},         {0xDC00},       {0xDFFF},
                                                 {0xDC00, 0xD800}, {0xD800, 0xD800}, {0xD800, u'a'}, {0xD800, 0x4E2D}};
  for (const std::u16string& part : malformed) {
    for (const std::size_t around : {0u, 1u, 8u, 13u, 500u}) {
      const OdString text(std::u16string(around, u'x') + part + std::u16string(around, u'y'));
      EXPECT_THROW((void)text.toUtf8(), utf8::invalid_utf16) << testing::PrintToString(text);
    }
  }
}

TEST(OdStringUtf8, TheErrorOfMalformedTextSaysInvalidUtf16) {
  try {
    (void)OdString(u"abc\xD800").toUtf8();
    FAIL();
  } catch (const std::exception& error) {
    EXPECT_STREQ(error.what(), "Invalid UTF-16");
  }
}

template <typename Error>
void expectMalformed(const std::string& bytes) {
  EXPECT_THROW(OdString::fromUtf8(bytes), Error) << testing::PrintToString(bytes);
  OdString text = L"before";
  EXPECT_THROW(text.assignUtf8(bytes), Error);
  EXPECT_TRUE(text.isEmpty());
}

template <typename Error>
void expectMalformed(const std::vector<std::string>& parts, const std::vector<std::string>& tails) {
  for (const std::string& part : parts) {
    for (const std::string& tail : tails) {
      std::string bytes = part;
      bytes += tail;
      for (const std::size_t before : {0u, 1u, 8u, 13u, 500u}) {
        expectMalformed<Error>(std::string(before, 'x') + bytes);
      }
    }
  }
}

const std::vector<std::string> anyTail = {"", "y", "yyyyyyyyyyyyyyyyyyyy", "\xC3\xA4"};

TEST(OdStringUtf8, WrongLeadAndTrailBytesAreRefused) {
  expectMalformed<utf8::invalid_utf8>({"\x80", "\xBF", "\xFF", "\xF8\x88\x80\x80\x80"}, anyTail);
  expectMalformed<utf8::invalid_utf8>({"\xC3", "\xE4\xB8", "\xF0\x9F\x8F"}, {"y", "yyyyyyyyyyyyyyyyyyyy", "\xC3\xA4"});
}

TEST(OdStringUtf8, OverlongFormsAreRefused) {
  expectMalformed<utf8::invalid_utf8>({"\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF"}, anyTail);
}

TEST(OdStringUtf8, SequencesThatAreCutOffAreRefused) {
  expectMalformed<utf8::not_enough_room>({"\xC3", "\xE4", "\xE4\xB8", "\xF0", "\xF0\x9F", "\xF0\x9F\x8F"}, {""});
}

TEST(OdStringUtf8, SurrogatesAndNumbersBeyondUnicodeAreRefused) {
  expectMalformed<utf8::invalid_code_point>({"\xED\xA0\x80", "\xED\xBF\xBF", "\xED\xA0\xBD\xED\xB8\x80"}, anyTail);
  expectMalformed<utf8::invalid_code_point>({"\xF4\x90\x80\x80", "\xF7\xBF\xBF\xBF"}, anyTail);
}

TEST(OdStringWide, CharactersBeyondTheBmpBecomePairsAndBack) {
  const OdString text = L"a\U00010000\U0010FFFF\uFFFFz";
  EXPECT_EQ(text, u"a\U00010000\U0010FFFF\uFFFFz");
  EXPECT_EQ(text.length(), 7u);
  EXPECT_EQ(text.toWide(), L"a\U00010000\U0010FFFF\uFFFFz");
}

TEST(OdStringWide, EmptyTextStaysEmpty) {
  EXPECT_TRUE(OdString::fromWide(L"").isEmpty());
  EXPECT_TRUE(OdString().toWide().empty());
}

TEST(OdStringWide, ZeroIsACharacter) {
  EXPECT_EQ(OdString::fromWide(L"a\0b"s), OdString(u"a\0b", 3));
  EXPECT_EQ(OdString(L"a\0b", 3).toWide(), L"a\0b"s);
}

TEST(OdStringWide, UnpairedSurrogatesPassAsTheyAre) {
  const std::vector<std::vector<char16_t>> texts = {
    {0xD800}, {0xDFFF}, {0xDC00, 0xD800}, {u'a', 0xD800, u'b'}, {0xD800, 0xD800}, {0xDC00, 0xDC00}};
  for (const auto& units : texts) {
    const std::wstring wide(units.begin(), units.end());
    const OdString text(units.data(), units.size());
    EXPECT_EQ(text.toWide(), wide);
    EXPECT_EQ(OdString::fromWide(wide), text);
  }
}

// Both ends of each range, one unit off a pair on either side.
TEST(OdStringWide, JoinsPairsOnly) {
  EXPECT_EQ(OdString(u"\xD800\xD800\xDC00\xDC00").toWide(),
            (std::wstring{wchar_t{0xD800}, L'\U00010000', wchar_t{0xDC00}}));
  EXPECT_EQ(OdString(u"\xDBFF\xDFFF").toWide(), L"\U0010FFFF");
}

TEST(OdStringWide, NumbersBeyondUnicodeAreRefused) {
  EXPECT_THROW(OdString::fromWide(L"a" + std::wstring(1, wchar_t{0x110000})), utf8::invalid_code_point);
  EXPECT_THROW(OdString::fromWide(std::wstring(1, wchar_t{-1})), utf8::invalid_code_point);
  EXPECT_THROW(OdString::fromWide(std::wstring(1, wchar_t{0x01000041})), utf8::invalid_code_point);
  const wchar_t text[] = {wchar_t{0x7FFFFFFF}, 0};
  EXPECT_THROW(OdString{text}, utf8::exception);
  EXPECT_THROW(OdString(text, 1), utf8::exception);
}

TEST(OdStringWide, LongMixedTextMakesTheRoundTrip) {
  std::wstring text;
  for (int i = 0; i < 5000; ++i) text += L"Wall \U0001F3E0 \u4E2D";
  const OdString units = OdString::fromWide(text);
  EXPECT_EQ(units.length(), text.size() + 5000);
  EXPECT_EQ(units.toWide(), text);
}

}  // namespace
