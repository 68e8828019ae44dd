#include <utility>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

namespace tessel::test {
namespace {

struct Watch : ObjectReactor {
  int deleted = 0;
  void onObjectDeleted(Object*) override { ++deleted; }
};

TsSmartPtr<Unit> newUnit() { return Unit::create(L"m", 1.0, Measure::create(L"LENGTH", 1, 0, 0, 0, 0, 0, 0)); }

TEST(ColumnUnitRow, IsBlankByItself) {
  const ColumnUnit row;
  EXPECT_TRUE(row.table().isEmpty());
  EXPECT_TRUE(row.column().isEmpty());
  EXPECT_TRUE(row.unit().isNull());
}

TEST(ColumnUnitRow, HoldsWhatItIsMadeOf) {
  const auto unit = newUnit();
  const ColumnUnit row(L"Site", L"total_area", unit);
  EXPECT_EQ(row.table(), L"Site");
  EXPECT_EQ(row.column(), L"total_area");
  EXPECT_EQ(row.unit(), unit);
}

TEST(DefaultUnitRow, IsBlankByItself) {
  const DefaultUnit row;
  EXPECT_TRUE(row.measure().isNull());
  EXPECT_TRUE(row.unit().isNull());
}

TEST(DefaultUnitRow, HoldsWhatItIsMadeOf) {
  const auto unit = newUnit();
  const DefaultUnit row(unit->measure(), unit);
  EXPECT_EQ(row.measure(), unit->measure());
  EXPECT_EQ(row.unit(), unit);
  EXPECT_TRUE(DefaultUnit(unit->measure(), nullptr).unit().isNull());
}

template <typename Row>
Row rowOf(const TsSmartPtr<const Unit>& unit);
template <>
ColumnUnit rowOf(const TsSmartPtr<const Unit>& unit) {
  return ColumnUnit(L"Site", L"total_area", unit);
}
template <>
DefaultUnit rowOf(const TsSmartPtr<const Unit>& unit) {
  return DefaultUnit(unit->measure(), unit);
}

template <typename T>
class UnitRow : public ::testing::Test {};

using UnitRows = ::testing::Types<ColumnUnit, DefaultUnit>;
TYPED_TEST_SUITE(UnitRow, UnitRows, );

TYPED_TEST(UnitRow, HoldsItsUnitAsLongAsItLives) {
  Watch watch;
  auto unit = newUnit();
  unit->addReactor(&watch);
  {
    const TypeParam row = rowOf<TypeParam>(unit);
    unit.reset();
    EXPECT_EQ(watch.deleted, 0);
  }
  EXPECT_EQ(watch.deleted, 1);
}

TYPED_TEST(UnitRow, LetsGoOfTheUnitThatIsReplaced) {
  Watch watch;
  auto unit = newUnit();
  unit->addReactor(&watch);
  TypeParam row = rowOf<TypeParam>(unit);
  unit.reset();
  const auto next = newUnit();
  row.set_unit(next);
  EXPECT_EQ(watch.deleted, 1);
  EXPECT_EQ(row.unit(), next);
}

TYPED_TEST(UnitRow, CanBeDestroyedAfterAMove) {
  Watch watch;
  auto unit = newUnit();
  unit->addReactor(&watch);
  {
    TypeParam row = rowOf<TypeParam>(unit);
    unit.reset();
    const TypeParam moved = std::move(row);
    EXPECT_FALSE(moved.unit().isNull());
  }
  EXPECT_EQ(watch.deleted, 1);
}

}  // namespace
}  // namespace tessel::test
