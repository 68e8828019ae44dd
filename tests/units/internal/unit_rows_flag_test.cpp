#include <gtest/gtest.h>

#include "units/unit_rows_impl.h"

namespace tessel::test {
namespace {

TsSmartPtr<Unit> newUnit() { return Unit::create(L"m", 1.0, Measure::create(L"LENGTH", 1, 0, 0, 0, 0, 0, 0)); }

template <typename Row>
Row changedRow(const TsSmartPtr<const Unit>& unit);
template <>
ColumnUnit changedRow(const TsSmartPtr<const Unit>& unit) {
  return ColumnUnit(L"Site", L"total_area", unit);
}
template <>
DefaultUnit changedRow(const TsSmartPtr<const Unit>& unit) {
  return DefaultUnit(unit->measure(), unit);
}

template <typename T>
class UnitRowFlag : public ::testing::Test {};

using UnitRows = ::testing::Types<ColumnUnit, DefaultUnit>;
TYPED_TEST_SUITE(UnitRowFlag, UnitRows, );

TYPED_TEST(UnitRowFlag, IsClearInABlankRow) { EXPECT_FALSE(TypeParam().impl().changed); }

TYPED_TEST(UnitRowFlag, IsSetInARowMadeOfValues) { EXPECT_TRUE(changedRow<TypeParam>(newUnit()).impl().changed); }

TYPED_TEST(UnitRowFlag, IsLeftAloneByThePointerThatIsThere) {
  const auto unit = newUnit();
  TypeParam row = changedRow<TypeParam>(unit);
  row.impl().changed = false;
  row.set_unit(unit);
  EXPECT_FALSE(row.impl().changed);

  TypeParam blank;
  blank.set_unit(nullptr);
  EXPECT_FALSE(blank.impl().changed);
}

TYPED_TEST(UnitRowFlag, IsSetByAnotherPointerToAnEqualUnit) {
  const auto unit = newUnit();
  const auto equal = newUnit();
  ASSERT_TRUE(*unit == *equal);
  TypeParam row = changedRow<TypeParam>(unit);
  row.impl().changed = false;
  row.set_unit(equal);
  EXPECT_TRUE(row.impl().changed);
  EXPECT_EQ(row.unit(), equal);
}

TYPED_TEST(UnitRowFlag, IsSetByTheLossOfTheUnit) {
  TypeParam row = changedRow<TypeParam>(newUnit());
  row.impl().changed = false;
  row.set_unit(nullptr);
  EXPECT_TRUE(row.impl().changed);
}

TEST(ColumnUnitRowId, IsZeroInANewRow) {
  EXPECT_EQ(ColumnUnit().impl().id, 0U);
  EXPECT_EQ(changedRow<ColumnUnit>(newUnit()).impl().id, 0U);
}

}  // namespace
}  // namespace tessel::test
