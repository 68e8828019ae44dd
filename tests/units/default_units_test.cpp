#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/recording_reactor.h"
#include "support/sql_trace.h"
#include "units/default_units.h"

namespace tessel::test {
namespace {

TEST_F(DefaultUnits, AreNotThereInANewFile) {
  EXPECT_TRUE(project.db->defaultUnit(L"LENGTH").isNull());
  EXPECT_TRUE(project.db->columnUnit(&Site::ref_elevation).isNull());
  EXPECT_EQ(project.count("tessel_Unit"), 0);
  EXPECT_EQ(project.count("tessel_DefaultUnit"), 0);
  EXPECT_EQ(project.count("tessel_ColumnUnit"), 0);
}

TEST_F(DefaultUnits, OfANewFileBelongToFourMeasures) {
  EXPECT_EQ(project.raw().rows("SELECT * FROM tessel_Measure ORDER BY id"),
            (Rows{{"1", "LENGTH", "", "1", "0", "0", "0", "0", "0", "0"},
                  {"2", "AREA", "", "2", "0", "0", "0", "0", "0", "0"},
                  {"3", "VOLUME", "", "3", "0", "0", "0", "0", "0", "0"},
                  {"4", "MASS", "", "0", "1", "0", "0", "0", "0", "0"}}));
}

TEST_F(DefaultUnits, FirstOneOfLengthBecomesTheUnitOfFiveColumns) {
  project.db->setDefaultUnit(metre());
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
  EXPECT_EQ(defaultRows(), (Rows{{"LENGTH", "m"}}));
  EXPECT_EQ(columnRows(), lengthColumns("m"));
  EXPECT_EQ(labelOf(&Site::ref_elevation), L"m");
  EXPECT_EQ(labelOf(&Site::building_height_limit), L"m");
  EXPECT_EQ(labelOf(&Building::elevation_of_ref_height), L"m");
  EXPECT_EQ(labelOf(&Building::elevation_of_terrain), L"m");
  EXPECT_EQ(labelOf(&Story::elevation), L"m");
  EXPECT_EQ(labelOf(&Site::total_area), L"none");
}

TEST_F(DefaultUnits, FirstOneOfAreaBecomesTheUnitOfFiveOtherColumns) {
  project.db->setDefaultUnit(unitOf(L"AREA", L"m^2", 1));
  EXPECT_EQ(columnRows(), areaColumns("m^2"));
  EXPECT_EQ(labelOf(&Site::buildable_area), L"m^2");
  EXPECT_EQ(labelOf(&Site::total_area), L"m^2");
  EXPECT_EQ(labelOf(&Building::gross_planned_area), L"m^2");
  EXPECT_EQ(labelOf(&Story::gross_area_planned), L"m^2");
  EXPECT_EQ(labelOf(&Story::net_area_planned), L"m^2");
  EXPECT_EQ(labelOf(&Story::elevation), L"none");
}

TEST_F(DefaultUnits, LaterOneChangesTheDefaultOnly) {
  project.db->setDefaultUnit(metre());
  project.db->setDefaultUnit(millimetre());
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"mm");
  EXPECT_EQ(defaultRows(), (Rows{{"LENGTH", "mm"}}));
  EXPECT_EQ(labelOf(&Story::elevation), L"m");
  EXPECT_EQ(columnRows(), lengthColumns("m"));
}

TEST_F(DefaultUnits, OfVolumeHaveNoColumns) {
  project.db->setDefaultUnit(unitOf(L"VOLUME", L"m^3", 1));
  EXPECT_EQ(labelOfDefault(L"VOLUME"), L"m^3");
  EXPECT_EQ(project.count("tessel_ColumnUnit"), 0);
}

TEST_F(DefaultUnits, OfAMeasureInLowerCaseHaveNoColumns) {
  project.db->setDefaultUnit(Unit::create(L"m", 1, Measure::create(L"length", 1, 0, 0, 0, 0, 0, 0)));
  EXPECT_EQ(labelOfDefault(L"length"), L"m");
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"none");
  EXPECT_EQ(project.count("tessel_ColumnUnit"), 0);
}

TEST_F(DefaultUnits, AreAskedForByTheVeryNameOfTheMeasure) {
  project.db->setDefaultUnit(metre());
  for (const wchar_t* const name : {L"length", L"Length", L"LENGTH ", L"LENGT%", L""}) {
    EXPECT_TRUE(project.db->defaultUnit(name).isNull());
  }
}

TEST_F(DefaultUnits, AreAskedForByANameInAnyScript) {
  for (const OdString& name : {OdString(L"L\u00C4NGE"), OdString(L"\u0434\u043B\u0438\u043D\u0430"),
                               OdString(L"\u9577\u3055"), OdString(u"\U0001F4CF \"it's\" %_;--")}) {
    const auto unit = Unit::create(name, 1, Measure::create(name, 1, 0, 0, 0, 0, 0, 0));
    project.db->setDefaultUnit(unit);
    const auto found = project.db->defaultUnit(name);
    ASSERT_TRUE(found) << name.toUtf8();
    EXPECT_EQ(found->id(), unit->id());
    EXPECT_TRUE(project.db->defaultUnit(name + L" ").isNull());
  }
}

// The name of the measure decides, whatever it measures.
TEST_F(DefaultUnits, DoNotLookAtTheDimensionOfTheMeasure) {
  project.raw().exec("UPDATE tessel_Measure SET mass = 3 WHERE name = 'LENGTH'");
  project.db->setDefaultUnit(metre());
  EXPECT_EQ(columnRows(), lengthColumns("m"));
}

TEST_F(DefaultUnits, StayAsTheyAreForNull) {
  project.db->setDefaultUnit(metre());
  project.db->setDefaultUnit(nullptr);
  EXPECT_EQ(defaultRows(), (Rows{{"LENGTH", "m"}}));
  EXPECT_EQ(columnRows(), lengthColumns("m"));
}

TEST_F(DefaultUnits, AreSavedFirst) {
  const auto unit = Unit::create(L"foot", L"ft", 0.3048, Measure::create(L"DEPTH", 1, 0, 0, 0, 0, 0, 0));
  project.db->setDefaultUnit(unit);
  EXPECT_NE(unit->id(), 0U);
  EXPECT_FALSE(unit->isDirty());
  EXPECT_EQ(unit->projectDb(), project.db);
  EXPECT_EQ(project.row("tessel_Unit", unit->id()), valuesOf(*unit));
  EXPECT_EQ(defaultRows(), (Rows{{"DEPTH", "ft"}}));
}

TEST_F(DefaultUnits, GiveWayToTheUnitThatTheFileHas) {
  const auto existing = project.db->save(metre());
  project.db->setDefaultUnit(metre());
  EXPECT_EQ(project.count("tessel_Unit"), 1);
  EXPECT_EQ(project.db->defaultUnit(L"LENGTH")->id(), existing->id());
}

TEST_F(DefaultUnits, GiveWayToTheMeasureThatTheFileHas) {
  project.db->setDefaultUnit(Unit::create(L"m", 1, Measure::create(L"LENGTH", 1, 0, 0, 0, 0, 0, 0)));
  EXPECT_EQ(project.count("tessel_Measure"), 4);
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
  EXPECT_EQ(columnRows(), lengthColumns("m"));
}

TEST_F(DefaultUnits, AreCopiedFromAnotherFile) {
  SampleProject other;
  const auto foreign = other.db->save(Unit::create(L"ft", 0.3048, Measure::create(L"LENGTH", 1, 0, 0, 0, 0, 0, 0)));
  project.db->setDefaultUnit(foreign);
  EXPECT_EQ(foreign->projectDb(), other.db);
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"ft");
  EXPECT_EQ(project.db->defaultUnit(L"LENGTH")->projectDb(), project.db);
}

TEST_F(DefaultUnits, DoNotWriteTheChangesOfAUnitOfThisFile) {
  const auto unit = project.db->save(metre());
  unit->set_label(L"changed");
  project.db->setDefaultUnit(unit);
  EXPECT_TRUE(unit->isDirty());
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
}

TEST_F(DefaultUnits, ComeAsNewCleanObjectsOfThisFile) {
  project.db->setDefaultUnit(metre());
  const auto unit = project.db->defaultUnit(L"LENGTH");
  EXPECT_NE(unit, project.db->defaultUnit(L"LENGTH"));
  EXPECT_FALSE(unit->isDirty());
  EXPECT_EQ(unit->projectDb(), project.db);
  EXPECT_EQ(unit->measure()->name(), L"LENGTH");
}

TEST_F(DefaultUnits, ConvertNoStoredNumbers) {
  const auto site = Site::create(L"Harbour");
  site->set_ref_elevation(12.5);
  project.db->save(site);
  project.db->setDefaultUnit(metre());
  project.db->setDefaultUnit(millimetre());
  EXPECT_EQ(project.row("tessel_Site", site->id()).at("ref_elevation"), "12.5");
}

TEST_F(DefaultUnits, AreCommittedByThemselves) {
  project.db->setDefaultUnit(metre());
  project.reopen();
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
  EXPECT_EQ(labelOf(&Story::elevation), L"m");
}

TEST_F(DefaultUnits, JoinATransactionOfTheHost) {
  {
    Transaction transaction(project.db, Transaction::BeginCurrent);
    project.db->setDefaultUnit(metre());
    EXPECT_FALSE(transaction.finalized());
    EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
    transaction.rollback();
  }
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"none");
  EXPECT_EQ(project.count("tessel_ColumnUnit"), 0);
}

TEST_F(DefaultUnits, AreToldToTheReactorOfTheFileAsSavesOnly) {
  RecordingReactor reactor(project.db);
  const auto unit = Unit::create(L"ft", 0.3048, Measure::create(L"DEPTH", 1, 0, 0, 0, 0, 0, 0));
  project.db->setDefaultUnit(unit);
  const std::vector<RecordingReactor::Saved> expected = {
    {project.db.get(), {ObjectType::Measure, unit->measure()->id()}, SaveResolution::Created},
    {project.db.get(), {ObjectType::Unit, unit->id()}, SaveResolution::Created}};
  EXPECT_EQ(reactor.saved, expected);
  project.db->defaultUnit(L"DEPTH");
  EXPECT_EQ(reactor.calls.size(), 2U);
}

TEST_F(DefaultUnits, AreReadWhileATransactionOfAnotherFileIsCurrent) {
  project.db->setDefaultUnit(metre());
  SampleProject other;
  Transaction transaction(other.db, Transaction::BeginCurrent);
  EXPECT_EQ(labelOfDefault(L"LENGTH"), L"m");
  EXPECT_EQ(labelOf(&Story::elevation), L"m");
  EXPECT_TRUE(other.db->defaultUnit(L"LENGTH").isNull());
  EXPECT_EQ(&Transaction::current(), &transaction);
}

double noColumn(const Site&) { return 0; }

/// A getter that no column belongs to.
struct HostSite : Site {
  double area() const { return noColumn(*this); }
};

TEST_F(DefaultUnits, AreUnknownForAGetterOfNoColumn) {
  project.db->setDefaultUnit(metre());
  EXPECT_TRUE(project.db->columnUnit<Site>(static_cast<double (Site::*)() const>(&HostSite::area)).isNull());
  EXPECT_TRUE(project.db->columnUnit<Site>(nullptr).isNull());
  EXPECT_TRUE(project.db->columnUnit<Building>(nullptr).isNull());
  EXPECT_TRUE(project.db->columnUnit<Story>(nullptr).isNull());
}

TEST(DefaultUnitsStatements, AreNoneForNullAndForAGetterOfNoColumn) {
  SqlTrace sql;
  const SampleProject project;
  sql.clear();
  project.db->setDefaultUnit(nullptr);
  project.db->columnUnit<Site>(nullptr);
  EXPECT_EQ(sql.statements(), std::vector<std::string>());
  project.db->columnUnit(&Site::total_area);
  EXPECT_NE(sql.statements(), std::vector<std::string>()) << "what is traced must be what is asked";
}

TEST(DefaultUnitsStatements, ThatReadAskOnceAndCommitNothing) {
  SqlTrace sql;
  const SampleProject project;
  const auto measure = project.db->get<Measure>(NameKey(L"LENGTH"));
  project.db->setDefaultUnit(Unit::create(L"m", 1, measure));
  sql.clear();
  project.db->defaultUnit(L"LENGTH");
  project.db->columnUnit(&Site::ref_elevation);
  EXPECT_TRUE(sql.beginningWith("COMMIT").empty());
  EXPECT_EQ(sql.beginningWith("SELECT").size(), 4U) << "the unit and its measure, for each";
}

TEST(DefaultUnitsStatements, OfALaterOneUpdateTheRow) {
  SqlTrace sql;
  const SampleProject project;
  const auto measure = project.db->get<Measure>(NameKey(L"LENGTH"));
  project.db->setDefaultUnit(Unit::create(L"m", 1, measure));
  const auto millimetre = project.db->save(Unit::create(L"mm", 0.001, measure));
  sql.clear();
  project.db->setDefaultUnit(millimetre);
  EXPECT_EQ(sql.beginningWith("UPDATE \"tessel_DefaultUnit\" SET").size(), 1U);
  EXPECT_TRUE(sql.beginningWith("DELETE").empty());
  EXPECT_TRUE(sql.beginningWith("INSERT").empty());
  EXPECT_EQ(sql.beginningWith("COMMIT").size(), 1U);
}

TEST_F(DefaultUnits, OfAColumnAreFoundByTableAndColumnExactly) {
  const auto unit = project.db->save(metre());
  const std::string id = std::to_string(unit->id());
  project.raw().exec("INSERT INTO tessel_ColumnUnit (\"table\", \"column\", unit_id) VALUES ('story', 'elevation', " +
                     id + "), ('Building', 'elevation', " + id + ")");
  EXPECT_TRUE(project.db->columnUnit(&Story::elevation).isNull());
}

}  // namespace
}  // namespace tessel::test
