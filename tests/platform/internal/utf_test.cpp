#include "platform/utf.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <utf8.h>

namespace tessel {
namespace {

std::vector<std::u16string> samples() {
  std::vector<std::u16string> result = {u"", u"\u0001", u"\u007F", u"\u0080", u"\u07FF", u"\u0800", u"\uFFFF"};
  for (std::size_t length = 1; length < 40; ++length) {
    result.emplace_back(length, u'x');
    result.push_back(std::u16string(length, u'x') + u"\u00E4" + std::u16string(length, u'y'));
    result.push_back(std::u16string(length, u'\u4E2D') + u"\U0001F3E0");
  }
  return result;
}

TEST(Utf8Length, IsWhatIsWritten) {
  for (const std::u16string& text : samples()) EXPECT_EQ(utf8Length(text), utf8::utf16to8(text).size());
}

TEST(Utf16Length, IsWhatIsWritten) {
  for (const std::u16string& text : samples()) EXPECT_EQ(utf16Length(utf8::utf16to8(text)), text.size());
}

TEST(WriteUtf8, FillsTheRoomAndNothingBehindIt) {
  for (const std::u16string& text : samples()) {
    const std::string expected = utf8::utf16to8(text);
    std::string buffer(expected.size() + 16, '#');
    char* const end = writeUtf8(text, buffer.data());
    EXPECT_EQ(end - buffer.data(), static_cast<std::ptrdiff_t>(expected.size()));
    EXPECT_EQ(buffer, expected + std::string(16, '#'));
  }
}

TEST(WriteUtf16, FillsTheRoomAndNothingBehindIt) {
  for (const std::u16string& text : samples()) {
    std::u16string buffer(text.size() + 16, u'#');
    char16_t* const end = writeUtf16(utf8::utf16to8(text), buffer.data());
    EXPECT_EQ(end - buffer.data(), static_cast<std::ptrdiff_t>(text.size()));
    EXPECT_EQ(buffer, text + std::u16string(16, u'#'));
  }
}

// Every text of up to four of these units, most of them malformed: whatever comes of it stays within the room.
TEST(WriteUtf8, MalformedTextStaysWithinTheRoom) {
  const std::array<char16_t, 6> units = {u'a', 0x80, 0x800, 0xD800, 0xDC00, 0xFFFF};
  for (std::size_t number = 0; number < 1296; ++number) {
    const std::u16string text = {units[number % 6], units[number / 6 % 6], units[number / 36 % 6], units[number / 216]};
    const std::size_t room = utf8Length(text);
    std::string buffer(room + 16, '#');
    try {
      EXPECT_EQ(writeUtf8(text, buffer.data()), buffer.data() + room);
    } catch (const utf8::invalid_utf16&) {
    }
    EXPECT_EQ(buffer.substr(room), std::string(16, '#'));
  }
}

TEST(WriteUtf16, MalformedTextStaysWithinTheRoom) {
  const std::array<char, 8> bytes = {'a', '\x80', '\xBF', '\xC3', '\xE4', '\xED', '\xF0', '\xFF'};
  for (std::size_t number = 0; number < 32768; ++number) {
    std::string text;
    for (std::size_t rest = number, i = 0; i < 5; ++i, rest /= 8) text += bytes[rest % 8];
    const std::size_t room = utf16Length(text);
    std::u16string buffer(room + 16, u'#');
    try {
      EXPECT_EQ(writeUtf16(text, buffer.data()), buffer.data() + room);
    } catch (const utf8::exception&) {
    }
    EXPECT_EQ(buffer.substr(room), std::u16string(16, u'#'));
  }
}

TEST(WriteWide, NeedsOneCharacterForAPair) {
  std::wstring buffer(5, L'#');
  wchar_t* const end = writeWide(u"a\U0001F3E0z", buffer.data());
  EXPECT_EQ(end - buffer.data(), 3);
  EXPECT_EQ(buffer, L"a\U0001F3E0z##");
  EXPECT_EQ(utf16Length(L"a\U0001F3E0z"), 4u);
}

// The half of a pair that stands behind the end of the view is none of its business.
TEST(WriteWide, DoesNotLookBehindTheEnd) {
  std::wstring buffer(2, L'#');
  writeWide(std::u16string_view(u"\U0001F3E0", 1), buffer.data());
  EXPECT_EQ(buffer, (std::wstring{wchar_t{0xD83C}, L'#'}));
}

}  // namespace
}  // namespace tessel
