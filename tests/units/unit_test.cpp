#include <array>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

// What units have in common with all other classes is tested in tests/object/class_*_test.cpp.

namespace tessel::test {
namespace {

TsSmartPtr<Measure> lengthMeasure() { return Measure::create(L"DISTANCE", 1, 0, 0, 0, 0, 0, 0); }

class UnitInFile : public ::testing::Test {
protected:
  TsSmartPtr<Unit> cleanWithoutName() { return project.db->save(Unit::create(L"m", 1.0, lengthMeasure())); }
  TsSmartPtr<Unit> cleanWithName(const OdString& name) {
    return project.db->save(Unit::create(name, L"m", 1.0, lengthMeasure()));
  }
  std::string nameInFile(const Unit& unit) const { return project.row("tessel_Unit", unit.id()).at("name"); }

  SampleProject project;
};

TEST(Unit, IsCreatedWithoutAName) {
  const auto measure = lengthMeasure();
  const auto unit = Unit::create(L"m", 1.0, measure);
  EXPECT_FALSE(unit->has_name());
  EXPECT_TRUE(unit->name().isEmpty());
  EXPECT_EQ(unit->label(), L"m");
  EXPECT_EQ(unit->scale(), 1.0);
  EXPECT_EQ(unit->measure(), measure);
  EXPECT_TRUE(unit->isDirty());
}

TEST(Unit, IsCreatedWithANameEvenIfItIsEmpty) {
  const auto unit = Unit::create(L"", L"m", 1.0, lengthMeasure());
  EXPECT_TRUE(unit->has_name());
  EXPECT_TRUE(unit->name().isEmpty());
  EXPECT_EQ(unit->label(), L"m");
}

TEST(Unit, HasTypeSeven) { EXPECT_EQ(static_cast<int>(Unit::staticTesselType()), 7); }

TEST(Unit, IsCreatedWithoutAnyCheck) {
  for (const double scale : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    const auto unit = Unit::create(L"", scale, nullptr);
    EXPECT_TRUE(unit->measure().isNull());
    EXPECT_TRUE(unit->isDirty());
  }
}

TEST(Unit, HoldsItsMeasure) {
  struct Watch : ObjectReactor {
    int deleted = 0;
    void onObjectDeleted(Object*) override { ++deleted; }
  } watch;
  auto measure = lengthMeasure();
  measure->addReactor(&watch);
  auto unit = Unit::create(L"m", 1.0, measure);
  measure.reset();
  EXPECT_EQ(watch.deleted, 0);
  EXPECT_EQ(unit->measure()->name(), L"DISTANCE");
  unit.reset();
  EXPECT_EQ(watch.deleted, 1);
}

TEST(Unit, ForwardsTheExponentsOfItsMeasure) {
  const auto unit = Unit::create(L"x", 1.0, Measure::create(L"ALL", 1, 2, 3, 4, 5, 6, 7));
  EXPECT_EQ((std::array<short, 7>{unit->length(), unit->mass(), unit->time(), unit->thermodynamic_temperature(),
                                  unit->electric_current(), unit->luminous_intensity(), unit->amount_of_substance()}),
            (std::array<short, 7>{1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(UnitInFile, KeepsAnAbsentNameAsNull) {
  const auto unit = cleanWithoutName();
  EXPECT_EQ(nameInFile(*unit), "NULL");
  EXPECT_FALSE(project.db->get<Unit>(unit->id())->has_name());
}

TEST_F(UnitInFile, KeepsAnEmptyNameAsEmptyText) {
  const auto unit = cleanWithName(L"");
  EXPECT_EQ(nameInFile(*unit), "");
  EXPECT_TRUE(project.db->get<Unit>(unit->id())->has_name());
}

TEST_F(UnitInFile, IsMarkedByClearingANameThatIsAbsent) {
  const auto unit = cleanWithoutName();
  unit->clear_name();
  EXPECT_TRUE(unit->isDirty());
  EXPECT_FALSE(unit->has_name());
}

TEST_F(UnitInFile, IsMarkedByClearingItsName) {
  const auto unit = cleanWithName(L"metre");
  unit->clear_name();
  EXPECT_TRUE(unit->isDirty());
  EXPECT_FALSE(unit->has_name());
  EXPECT_TRUE(unit->name().isEmpty());
  unit->save();
  EXPECT_EQ(nameInFile(*unit), "NULL");
}

TEST_F(UnitInFile, IsMarkedByAnEmptyNameWhereThereWasNone) {
  const auto unit = cleanWithoutName();
  unit->set_name(L"");
  EXPECT_TRUE(unit->isDirty());
  EXPECT_TRUE(unit->has_name());
  unit->save();
  EXPECT_EQ(nameInFile(*unit), "");
}

TEST_F(UnitInFile, IsNotMarkedByTheEmptyNameThatItHas) {
  const auto unit = cleanWithName(L"");
  unit->set_name(L"");
  EXPECT_FALSE(unit->isDirty());
}

TEST_F(UnitInFile, WithoutMeasureIsRefused) {
  const auto unit = Unit::create(L"m", 1.0, nullptr);
  EXPECT_THROW(project.db->save(unit), DatabaseException);
  EXPECT_EQ(unit->id(), 0U);
  EXPECT_TRUE(unit->isDirty());
  EXPECT_EQ(project.count("tessel_Unit"), 0);
}

TEST_F(UnitInFile, WithoutMeasureLeavesEarlierWorkOfTheHostIntact) {
  Transaction transaction(project.db, Transaction::BeginCurrent);
  const auto earlier = cleanWithName(L"metre");
  EXPECT_THROW(project.db->save(Unit::create(L"m", 1.0, nullptr)), DatabaseException);
  transaction.commit();
  EXPECT_EQ(nameInFile(*earlier), "metre");
}

TEST_F(UnitInFile, WithAScaleThatIsNoNumberIsRefused) {
  const auto unit = Unit::create(L"m", std::numeric_limits<double>::quiet_NaN(), lengthMeasure());
  EXPECT_THROW(project.db->save(unit), DatabaseException);
  EXPECT_EQ(project.count("tessel_Unit"), 0);
  EXPECT_EQ(project.db->get<Measure>(NameKey(L"DISTANCE")), nullptr);
}

TEST_F(UnitInFile, KeepsEveryOtherScale) {
  using Limits = std::numeric_limits<double>;
  int number = 0;
  for (const double scale : {0.0, -1.0, 1e-300, Limits::max(), Limits::infinity(), -Limits::infinity()}) {
    const auto unit = project.db->save(Unit::create(OdString::format(L"u%d", ++number), scale, lengthMeasure()));
    EXPECT_EQ(project.db->get<Unit>(unit->id())->scale(), scale);
  }
}

TEST_F(UnitInFile, MayShareALabelWithAUnitOfAnotherMeasure) {
  const auto first = cleanWithoutName();
  const auto second = project.db->save(Unit::create(L"m", 1.0, Measure::create(L"MOLALITY", 0, -1, 0, 0, 0, 0, 1)));
  EXPECT_NE(first->id(), second->id());
  EXPECT_EQ(project.count("tessel_Unit"), 2);
}

TEST_F(UnitInFile, MayBeOneOfManyWithoutAName) {
  const auto measure = lengthMeasure();
  project.db->save(Unit::create(L"m", 1.0, measure));
  project.db->save(Unit::create(L"km", 1000.0, measure));
  EXPECT_EQ(project.count("tessel_Unit"), 2);
}

TEST(UnitEquality, LooksAtThePresenceOfTheNameAndNotAtItsText) {
  const auto measure = lengthMeasure();
  const auto metre = Unit::create(L"metre", L"m", 1.0, measure);
  const auto meter = Unit::create(L"meter", L"m", 1.0, measure);
  const auto nameless = Unit::create(L"m", 1.0, measure);
  const auto emptyName = Unit::create(L"", L"m", 1.0, measure);
  EXPECT_TRUE(*metre == *meter);
  EXPECT_TRUE(*metre == *emptyName);
  EXPECT_FALSE(*metre == *nameless);
  EXPECT_FALSE(*nameless == *emptyName);
  EXPECT_TRUE(*nameless == *Unit::create(L"m", 1.0, measure));
}

TEST(UnitEquality, FailsForAScaleThatIsNoNumberEvenWithTheUnitItself) {
  const auto unit = Unit::create(L"m", std::numeric_limits<double>::quiet_NaN(), lengthMeasure());
  EXPECT_FALSE(*unit == *unit);
  EXPECT_TRUE(*unit != *unit);
}

TEST(UnitEquality, ComparesScalesExactly) {
  const auto measure = lengthMeasure();
  const double next = std::nextafter(0.1, 1.0);
  EXPECT_FALSE(*Unit::create(L"m", 0.1, measure) == *Unit::create(L"m", next, measure));
}

TEST(UnitEquality, TakesUnitsWithoutMeasureForEqual) {
  EXPECT_TRUE(*Unit::create(L"m", 1.0, nullptr) == *Unit::create(L"m", 1.0, nullptr));
  EXPECT_FALSE(*Unit::create(L"m", 1.0, nullptr) == *Unit::create(L"m", 1.0, lengthMeasure()));
  EXPECT_FALSE(*Unit::create(L"m", 1.0, lengthMeasure()) == *Unit::create(L"m", 1.0, nullptr));
}

TEST(UnitEquality, ComparesDifferentMeasuresByTheirFields) {
  const auto unit = Unit::create(L"m", 1.0, lengthMeasure());
  EXPECT_TRUE(*unit == *Unit::create(L"m", 1.0, lengthMeasure()));
  EXPECT_FALSE(*unit == *Unit::create(L"m", 1.0, Measure::create(L"HEIGHT", 1, 0, 0, 0, 0, 0, 0)));
}

TEST(UnitClone, KeepsThePresenceOfTheName) {
  EXPECT_FALSE(Unit::create(L"m", 1.0, lengthMeasure())->cloneObject()->has_name());
  EXPECT_TRUE(Unit::create(L"", L"m", 1.0, lengthMeasure())->cloneObject()->has_name());
}

TEST(UnitClone, RefersToTheMeasureOfItsSource) {
  const auto unit = Unit::create(L"m", 1.0, lengthMeasure());
  EXPECT_EQ(unit->cloneObject()->measure(), unit->measure());
}

}  // namespace
}  // namespace tessel::test
