#include <cstring>

#include <gtest/gtest.h>

#include "operations/all_traits.h"
#include "operations/conditions.h"

namespace tessel::test {
namespace {

/// A mode that no setter gives, such as one of a later build.
NumberCriteria withMode(int mode) {
  NumberCriteria criteria;
  static_assert(sizeof(NumberCriteria::Mode) == sizeof mode);
  std::memcpy(static_cast<void*>(&criteria), &mode, sizeof mode);
  return criteria;
}

TEST(NumberCondition, OfAnUnknownModeIsTheLiteralTrue) {
  const auto& column = odb::query<Unit>::scale;
  ASSERT_EQ(withMode(3).mode(), NumberCriteria::Mode::Equals);
  EXPECT_FALSE(numberCondition(column, withMode(8)).const_true());
  for (const int mode : {0, 9, -1, 4711}) EXPECT_TRUE(numberCondition(column, withMode(mode)).const_true()) << mode;
}

TEST(TextCondition, OfNoModeIsTheLiteralTrue) {
  const auto& column = odb::query<Unit>::label;
  EXPECT_TRUE(textCondition(column, StringCriteria()).const_true());
  EXPECT_FALSE(textCondition(column, StringCriteria().empty()).const_true());
}

TEST(OwnerCondition, OfId0IsTheLiteralTrue) {
  const auto& column = odb::query<Unit>::measure;
  EXPECT_TRUE(ownerCondition(column, 0).const_true());
  EXPECT_FALSE(ownerCondition(column, 1).const_true());
}

}  // namespace
}  // namespace tessel::test
