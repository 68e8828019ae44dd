#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include <tessel/platform/od_string.h>

#include "support/printers.h"

namespace {

// "%ud" is an unsigned number and then the letter d.
TEST(OdStringFormat, WritesAnObjectWithoutANameByItsId) {
  EXPECT_EQ(OdString::format(L"%ls:%ud", L"Unit", 12u), u"Unit:12d");
  EXPECT_EQ(OdString::format(L"%ls:%ud", L"SpatialStructure", 4294967295u), u"SpatialStructure:4294967295d");
}

TEST(OdStringFormat, FollowsThePattern) {
  EXPECT_EQ(OdString::format(L""), u"");
  EXPECT_EQ(OdString::format(L"100%%"), u"100%");
  EXPECT_EQ(OdString::format(L"%d %5.2f|%-4d|%04X", -3, 2.5, 7, 0xABCu), u"-3  2.50|7   |0ABC");
}

TEST(OdStringFormat, CharactersBeyondTheBmpBecomePairs) {
  EXPECT_EQ(OdString::format(L"\U0001F3E0 %ls", L"\U0010FFFF"), u"\U0001F3E0 \U0010FFFF");
}

TEST(OdStringFormat, GrowsUntilTheTextFits) {
  for (const std::size_t length : {126u, 127u, 128u, 129u, 510u, 511u, 512u, 513u, 100000u}) {
    const std::wstring argument(length, L'x');
    const OdString text = OdString::format(L"%ls%d", argument.c_str(), 7);
    EXPECT_EQ(text.length(), length + 1);
    EXPECT_EQ(text.view().substr(0, length), std::u16string(length, u'x'));
    EXPECT_EQ(text[length], u'7');
  }
}

TEST(OdStringFormat, RefusesAnArgumentThatIsNoText) {
  EXPECT_THROW(OdString::format(L"%s", "\xFF\xFE"), std::invalid_argument);
}

TEST(OdStringFormat, RefusesATextOfAbsurdLength) {
  EXPECT_EQ(OdString::format(L"%*d", 1 << 24, 1).length(), std::size_t{1} << 24);
  EXPECT_THROW(OdString::format(L"%*d", 1 << 25, 1), std::invalid_argument);
}

}  // namespace
