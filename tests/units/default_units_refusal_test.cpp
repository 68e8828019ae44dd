#include <string>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "units/default_units.h"

// Default units that cannot be set, columns that keep the unit that they have, and rows that something is missing from.

namespace tessel::test {
namespace {

TEST_F(DefaultUnits, SkipAColumnThatHasItsUnit) {
  const auto inch = project.db->save(unitOf(L"LENGTH", L"in", 0.0254));
  project.raw().exec("INSERT INTO tessel_ColumnUnit (\"table\", \"column\", unit_id) VALUES "
                     "('Building', 'elevation_of_ref_height', " +
                     std::to_string(inch->id()) + ")");
  project.db->setDefaultUnit(metre());
  Rows expected = lengthColumns("m");
  expected.erase(expected.begin() + 2);
  expected.insert(expected.begin(), {"Building", "elevation_of_ref_height", "in"});
  EXPECT_EQ(columnRows(), expected);
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
}

TEST_F(DefaultUnits, SkipAColumnInATransactionOfTheHostToo) {
  const auto inch = project.db->save(unitOf(L"LENGTH", L"in", 0.0254));
  project.raw().exec("INSERT INTO tessel_ColumnUnit (\"table\", \"column\", unit_id) VALUES ('Story', 'elevation', " +
                     std::to_string(inch->id()) + ")");
  Transaction transaction(project.db, Transaction::BeginCurrent);
  project.db->setDefaultUnit(metre());
  ASSERT_FALSE(transaction.finalized());
  transaction.commit();
  EXPECT_EQ(project.count("tessel_ColumnUnit"), 5);
}

TEST_F(DefaultUnits, WithoutAMeasureAreRefusedAndLeaveNoTrace) {
  EXPECT_THROW(project.db->setDefaultUnit(Unit::create(L"m", 1, nullptr)), DatabaseException);
  EXPECT_EQ(project.count("tessel_Unit"), 0);
  EXPECT_EQ(project.count("tessel_DefaultUnit"), 0);
}

TEST_F(DefaultUnits, ThatClashWithoutATwinAreRefusedAndLeaveNoTrace) {
  project.db->setDefaultUnit(metre());
  EXPECT_THROW(project.db->setDefaultUnit(unitOf(L"LENGTH", L"m", 2)), ObjectNotUnique);
  EXPECT_EQ(defaultRows(), (Rows{{"LENGTH", "m"}}));
  EXPECT_EQ(project.db->defaultUnit(L"LENGTH")->scale(), 1);
}

/// The file takes no such statement any more; whatever it changed is undone.
class RefusedDefaultUnits : public DefaultUnits {
protected:
  void refuse(const std::string& statement) {
    const std::string name = "refused" + std::to_string(++triggers_);
    project.raw().exec("CREATE TRIGGER " + name + " BEFORE " + statement +
                       " BEGIN SELECT RAISE(ABORT, 'refused'); END");
  }

private:
  int triggers_ = 0;
};

TEST_F(RefusedDefaultUnits, StayTheOldOnes) {
  project.db->setDefaultUnit(metre());
  refuse("UPDATE ON tessel_DefaultUnit");
  refuse("INSERT ON tessel_DefaultUnit");
  EXPECT_THROW(project.db->setDefaultUnit(millimetre()), DatabaseException);
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
  EXPECT_EQ(project.count("tessel_Unit"), 1);
}

// What a refused operation has begun must not be in the way of the host's commit.
TEST_F(RefusedDefaultUnits, StayTheOldOnesInATransactionOfTheHostThatIsCommitted) {
  project.db->setDefaultUnit(metre());
  refuse("UPDATE ON tessel_DefaultUnit");
  refuse("INSERT ON tessel_DefaultUnit");
  Transaction transaction(project.db, Transaction::BeginCurrent);
  const auto site = project.db->save(Site::create(L"Harbour"));
  EXPECT_THROW(project.db->setDefaultUnit(millimetre()), DatabaseException);
  ASSERT_FALSE(transaction.finalized());
  transaction.commit();
  EXPECT_EQ(defaultRows(), (Rows{{"LENGTH", "m"}}));
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
  EXPECT_EQ(columnRows(), lengthColumns("m"));
  EXPECT_EQ(project.row("tessel_Site", site->id()).at("name"), "Harbour");
}

TEST_F(RefusedDefaultUnits, OfColumnsDoNotKeepTheDefaultFromBeingSet) {
  refuse("INSERT ON tessel_ColumnUnit");
  project.db->setDefaultUnit(metre());
  EXPECT_EQ(defaultRows(), (Rows{{"LENGTH", "m"}}));
  EXPECT_EQ(project.count("tessel_ColumnUnit"), 0);
}

TEST_F(RefusedDefaultUnits, OfOneColumnDoNotKeepTheOthersFromBeingSet) {
  refuse("INSERT ON tessel_ColumnUnit WHEN NEW.\"column\" = 'building_height_limit'");
  Transaction transaction(project.db, Transaction::BeginCurrent);
  project.db->setDefaultUnit(metre());
  transaction.commit();
  Rows expected = lengthColumns("m");
  expected.erase(expected.begin() + 1);
  EXPECT_EQ(columnRows(), expected);
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
}

// Rows without a unit are no fault: the column may be NULL.
TEST_F(DefaultUnits, MayBeARowWithoutAUnit) {
  project.raw().exec("INSERT INTO tessel_DefaultUnit (measure_id, unit_id) VALUES (1, NULL)");
  EXPECT_TRUE(project.db->defaultUnit(L"LENGTH").isNull());
}

TEST_F(DefaultUnits, ReplaceARowWithoutAUnitAndLeaveTheColumns) {
  project.raw().exec("INSERT INTO tessel_DefaultUnit (measure_id, unit_id) VALUES (1, NULL)");
  project.db->setDefaultUnit(metre());
  EXPECT_EQ(defaultRows(), (Rows{{"LENGTH", "m"}}));
  EXPECT_EQ(project.count("tessel_ColumnUnit"), 0) << "only the first row of a measure fixes its columns";
}

TEST_F(DefaultUnits, WhoseUnitIsMissingFromTheFileAreAnError) {
  project.db->setDefaultUnit(metre());
  project.raw().exec("DELETE FROM tessel_Unit");
  EXPECT_THROW(project.db->defaultUnit(L"LENGTH"), DatabaseException);
  EXPECT_THROW(project.db->columnUnit(&Story::elevation), DatabaseException);
}

// A question that fails leaves nothing behind that the next one would stumble over.
TEST_F(DefaultUnits, WhoseMeasureIsMissingFromTheFileAreAnErrorOnlyWhileItIs) {
  project.db->setDefaultUnit(metre());
  project.db->setDefaultUnit(unitOf(L"AREA", L"m^2", 1));
  project.raw().exec("UPDATE tessel_Unit SET measure_id = 99 WHERE label = 'm'");
  for (int i = 0; i < 2; ++i) {
    EXPECT_THROW(project.db->defaultUnit(L"LENGTH"), DatabaseException);
    EXPECT_EQ(labelOfDefault(L"AREA"), L"m^2");
    EXPECT_THROW(project.db->columnUnit(&Story::elevation), DatabaseException);
    EXPECT_EQ(labelOf(&Site::total_area), L"m^2");
  }
  EXPECT_FALSE(Transaction::hasCurrent());
  project.raw().exec("UPDATE tessel_Unit SET measure_id = 1 WHERE label = 'm'");
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
  EXPECT_EQ(labelOf(&Story::elevation), L"m");
}

}  // namespace
}  // namespace tessel::test
