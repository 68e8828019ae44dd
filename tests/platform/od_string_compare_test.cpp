#include <algorithm>
#include <map>
#include <unordered_set>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/platform/od_string.h>

#include "support/printers.h"

namespace {

TEST(OdStringCompare, LiteralsOfBothKindsOnEitherSide) {
  const OdString text = L"Wall";
  EXPECT_TRUE(text == L"Wall");
  EXPECT_TRUE(text == u"Wall");
  EXPECT_TRUE(L"Wall" == text);
  EXPECT_TRUE(u"Wall" == text);
  EXPECT_FALSE(text != L"Wall");
  EXPECT_FALSE(text != u"Wall");
  EXPECT_FALSE(L"Wall" != text);
  EXPECT_FALSE(u"Wall" != text);
  EXPECT_TRUE(text < L"Walls");
  EXPECT_TRUE(u"Walk" < text);
}

TEST(OdStringCompare, NullIsEmptyText) {
  const char16_t* const null = nullptr;
  EXPECT_TRUE(OdString() == null);
  EXPECT_TRUE(null == OdString());
  EXPECT_TRUE(OdString(L"x") != null);
}

TEST(OdStringCompare, DiffersInCaseLengthAndUnits) {
  const OdString text = L"Wall";
  EXPECT_NE(text, u"wall");
  EXPECT_NE(text, u"Wal");
  EXPECT_NE(text, u"Walls");
  EXPECT_NE(text, u"");
  EXPECT_NE(text, u"Walx");
}

TEST(OdStringCompare, DoesNotEndAtAZero) {
  const OdString shorter(u"a", 1);
  const OdString left(u"a\0b", 3);
  const OdString right(u"a\0c", 3);
  EXPECT_NE(left, right);
  EXPECT_NE(left, shorter);
  EXPECT_LT(left, right);
  EXPECT_LT(shorter, left);
}

TEST(OdStringCompare, AllSixOperatorsAgree) {
  const std::vector<OdString> ascending = {L"", L"A", L"AB", L"B", L"a", L"\u00E4", L"\u4E2D"};
  for (std::size_t i = 0; i < ascending.size(); ++i) {
    for (std::size_t j = 0; j < ascending.size(); ++j) {
      const OdString& left = ascending[i];
      const OdString& right = ascending[j];
      EXPECT_EQ(left == right, i == j);
      EXPECT_EQ(left != right, i != j);
      EXPECT_EQ(left < right, i < j);
      EXPECT_EQ(left <= right, i <= j);
      EXPECT_EQ(left > right, i > j);
      EXPECT_EQ(left >= right, i >= j);
      EXPECT_EQ(left.compare(right) < 0, i < j);
      EXPECT_EQ(left.compare(right) > 0, i > j);
    }
  }
}

// Units of 0x8000 and more are not negative.
TEST(OdStringCompare, OrdersByUnsignedUnits) {
  EXPECT_LT(OdString(u"\u7FFF"), OdString(u"\u8000"));
  EXPECT_LT(OdString(u"a"), OdString(u"\uFFFD"));
}

// A character beyond U+FFFF begins with a unit of 0xD800 to 0xDBFF, so it comes before the last ones of the BMP. By
// code points or by UTF-8 bytes it would come behind them. The low byte of a unit has no weight against the high one.
TEST(OdStringCompare, OrdersByUnitsNotByCodePointsOrBytes) {
  EXPECT_LT(OdString(u"\U0001F3E0"), OdString(u"\uFFFD"));
  EXPECT_LT(OdString(u"\u01FF"), OdString(u"\u0200"));
}

TEST(OdStringCompare, ServesAsKeyOfAMap) {
  std::map<OdString, int> floors = {{L"roof", 3}, {L"cellar", 1}, {L"ground", 2}};
  floors[L"cellar"] = 0;
  EXPECT_EQ(floors.size(), 3u);
  EXPECT_EQ(floors.begin()->first, u"cellar");
  EXPECT_EQ(floors.at(u"ground"), 2);
}

TEST(OdStringCompare, EqualTextsHaveEqualHashes) {
  const std::hash<OdString> hash;
  OdString grown;
  grown.reserve(100);
  grown += L"Ground floor";
  EXPECT_EQ(hash(grown), hash(L"Ground floor"));
  EXPECT_NE(hash(L"Ground floor"), hash(L"Ground floos"));
  EXPECT_NE(hash(OdString(u"a\0b", 3)), hash(OdString(u"a\0c", 3)));
  std::unordered_set<OdString> names = {L"a", L"b", u"a"};
  EXPECT_EQ(names.size(), 2u);
  EXPECT_EQ(names.count(u"b"), 1u);
}

}  // namespace
