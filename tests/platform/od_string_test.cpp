#include <tessel/platform/od_string.h>

#include <cstdint>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "support/printers.h"

namespace {

const OdString longText = L"A text that is too long to live inside of the object";

bool livesInside(const OdString& text) {
  const auto start = reinterpret_cast<std::uintptr_t>(&text);
  const auto units = reinterpret_cast<std::uintptr_t>(text.c_str());
  return units >= start && units < start + sizeof text;
}

void expectOutOfMemory(OdString& text, std::size_t length) {
  try {
    text.reserve(length);
    ADD_FAILURE() << "memory for " << length << " units";
  } catch (const OdError& error) {
    EXPECT_EQ(error.code(), 9);
  }
}

TEST(OdString, IsEmptyAtFirst) {
  const OdString text;
  EXPECT_TRUE(text.isEmpty());
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(text.length(), 0u);
  EXPECT_EQ(text.c_str()[0], u'\0');
}

TEST(OdString, TakesLiteralsAsTheyStand) {
  const OdString wide = L"Wall";
  const OdString units = u"Wall";
  EXPECT_EQ(wide, units);
  EXPECT_EQ(wide.view(), u"Wall");
  EXPECT_EQ(wide.length(), 4u);
  EXPECT_EQ(wide.size(), 4u);
  EXPECT_FALSE(wide.isEmpty());
  EXPECT_FALSE(wide.empty());
}

TEST(OdString, IsEmptyFromNull) {
  EXPECT_TRUE(OdString(static_cast<const char16_t*>(nullptr)).isEmpty());
  EXPECT_TRUE(OdString(static_cast<const wchar_t*>(nullptr)).isEmpty());
}

TEST(OdString, TakesPartsOfBuffers) {
  EXPECT_EQ(OdString(u"Wall and roof", 4), u"Wall");
  EXPECT_EQ(OdString(L"Wall and roof", 4), u"Wall");
  EXPECT_EQ(OdString(std::u16string_view(u"Wall and roof").substr(9)), u"roof");
}

TEST(OdString, IsNotMadeFromAViewByAccident) { EXPECT_FALSE((std::is_convertible_v<std::u16string_view, OdString>)); }

TEST(OdString, HoldsAnySequenceOfUnits) {
  const char16_t units[] = {u'a', 0, 0xDC00, 0xD800, u'b'};
  const OdString text(units, 5);
  EXPECT_EQ(text.length(), 5u);
  EXPECT_EQ(text[1], u'\0');
  EXPECT_EQ(text[2], 0xDC00);
  EXPECT_EQ(text.view(), std::u16string_view(units, 5));
}

TEST(OdString, EndsWithAZeroBehindTheLastUnit) {
  EXPECT_EQ(longText[longText.length()], u'\0');
  EXPECT_EQ(longText.c_str()[longText.length()], u'\0');
  EXPECT_EQ(OdString(u"Wall and roof", 4).c_str()[4], u'\0');
}

TEST(OdString, KeepsShortTextsInside) {
  EXPECT_TRUE(livesInside(OdString()));
  EXPECT_TRUE(livesInside(OdString(L"1234567")));
  EXPECT_TRUE(livesInside(OdString::fromUtf8("1234567")));
  EXPECT_FALSE(livesInside(longText));
}

TEST(OdString, CopiesAreIndependent) {
  OdString copy = longText;
  EXPECT_EQ(copy, longText);
  copy += L"!";
  EXPECT_EQ(copy, longText + L"!");
  copy = longText;
  EXPECT_EQ(copy, longText);
  EXPECT_NE(copy.c_str(), longText.c_str());
}

TEST(OdString, MovesWithoutCopyingAndLeavesEmptyText) {
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<OdString>);
  EXPECT_TRUE(std::is_nothrow_move_assignable_v<OdString>);
  OdString source = longText;
  const char16_t* const units = source.c_str();
  OdString moved = std::move(source);
  EXPECT_EQ(moved.c_str(), units);
  EXPECT_TRUE(source.isEmpty());  // NOLINT(bugprone-use-after-move)
  source = std::move(moved);
  EXPECT_EQ(source.c_str(), units);
  EXPECT_TRUE(moved.isEmpty());  // NOLINT(bugprone-use-after-move)
}

TEST(OdString, Swaps) {
  OdString left = longText;
  OdString right = L"short";
  left.swap(right);
  EXPECT_EQ(left, u"short");
  EXPECT_EQ(right, longText);
  using std::swap;
  swap(left, right);
  EXPECT_EQ(right, u"short");
}

TEST(OdString, MidGivesTheRest) {
  EXPECT_EQ(OdString(L"Ground floor").mid(7), u"floor");
  EXPECT_EQ(OdString(L"Ground floor").mid(0), u"Ground floor");
}

TEST(OdString, MidGivesAtMostTheCount) {
  EXPECT_EQ(OdString(L"Ground floor").mid(0, 6), u"Ground");
  EXPECT_EQ(OdString(L"Ground floor").mid(7, 100), u"floor");
  EXPECT_EQ(OdString(L"Ground floor").mid(7, 0), u"");
}

TEST(OdString, MidIsEmptyBehindTheEnd) {
  EXPECT_EQ(OdString(L"Ground").mid(6), u"");
  EXPECT_EQ(OdString(L"Ground").mid(7), u"");
  EXPECT_EQ(OdString(L"Ground").mid(OdString::npos, 3), u"");
}

TEST(OdString, FindsUnitsAndParts) {
  const OdString text = L"a/b/c";
  EXPECT_EQ(text.find(u'/'), 1u);
  EXPECT_EQ(text.find(u'/', 2), 3u);
  EXPECT_EQ(text.find(u'/', 4), OdString::npos);
  EXPECT_EQ(text.find(u"b/"), 2u);
  EXPECT_EQ(text.find(u"b/", 3), OdString::npos);
  EXPECT_EQ(text.find(u'/', 100), OdString::npos);
}

TEST(OdString, Appends) {
  OdString text = L"Wall";
  text += OdString(L" and");
  text += L" roof";
  text += u", ";
  text += u'7';
  text += L'\u00E4';
  text.append(u"!");
  EXPECT_EQ(text, u"Wall and roof, 7\u00E4!");
}

TEST(OdString, AppendsAWideCharacterBeyondTheBmpAsAPair) {
  OdString text;
  text += L'\U0001F3E0';
  EXPECT_EQ(text, u"\U0001F3E0");
  EXPECT_EQ(text.length(), 2u);
}

TEST(OdString, AppendsItself) {
  OdString text = longText;
  text += text;
  EXPECT_EQ(text, longText + longText);
  OdString small = L"ab";
  small += small;
  EXPECT_EQ(small, u"abab");
}

TEST(OdString, ConcatenatesTextsAndLiteralsOnEitherSide) {
  const OdString text = L"Wall";
  EXPECT_EQ(text + text, u"WallWall");
  EXPECT_EQ(text + L" 1", u"Wall 1");
  EXPECT_EQ(text + u" 1", u"Wall 1");
  EXPECT_EQ(L"1 " + text, u"1 Wall");
  EXPECT_EQ(u"1 " + text, u"1 Wall");
  EXPECT_EQ(L"%" + text + L"%", u"%Wall%");
  EXPECT_EQ(text, u"Wall");
}

TEST(OdString, ReusesTheMemoryOfTheLeftSideThatNobodyNeeds) {
  OdString left;
  left.reserve(100);
  const char16_t* const units = left.c_str();
  const OdString sum = std::move(left) + longText;
  EXPECT_EQ(sum.c_str(), units);
}

TEST(OdString, ReplacesEachUnitAndTellsHowMany) {
  OdString path = L"C:\\projects\\house.db";
  EXPECT_EQ(path.replace(u'\\', u'/'), 2u);
  EXPECT_EQ(path, u"C:/projects/house.db");
  EXPECT_EQ(path.replace(u'\\', u'/'), 0u);
  EXPECT_EQ(path, u"C:/projects/house.db");
}

TEST(OdString, ClearKeepsTheMemory) {
  OdString text = longText;
  const char16_t* const units = text.c_str();
  text.clear();
  EXPECT_TRUE(text.isEmpty());
  EXPECT_EQ(text.c_str()[0], u'\0');
  text += longText;
  EXPECT_EQ(text.c_str(), units);
}

TEST(OdString, ReserveMakesRoomAndNeverGivesItBack) {
  OdString text;
  text.reserve(1000);
  const char16_t* const units = text.c_str();
  text.reserve(0);
  for (int i = 0; i < 1000; ++i) text += u'x';
  EXPECT_EQ(text.c_str(), units);
}

TEST(OdString, ThrowsResult9WhenMemoryIsExhausted) {
  OdString text = longText;
  expectOutOfMemory(text, SIZE_MAX);
  expectOutOfMemory(text, SIZE_MAX / 2);
  expectOutOfMemory(text, SIZE_MAX / 4);
  expectOutOfMemory(text, SIZE_MAX / 4 - 64);
  expectOutOfMemory(text, SIZE_MAX / 8);
  EXPECT_EQ(text, longText);
}

}  // namespace
