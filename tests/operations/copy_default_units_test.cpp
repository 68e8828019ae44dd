// Default units go with all objects of a file.

#include <gmock/gmock.h>

#include <odb/exceptions.hxx>

#include "operations/copying.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Row = RawFile::Row;

/// Measure, label of the unit and the measure of the unit.
RawFile::Rows defaultsOf(RawFile file) {
  return file.rows("SELECT m.name, u.label, um.name FROM tessel_DefaultUnit d "
                   "LEFT JOIN tessel_Measure m ON m.id = d.measure_id LEFT JOIN tessel_Unit u ON u.id = d.unit_id "
                   "LEFT JOIN tessel_Measure um ON um.id = u.measure_id ORDER BY m.name");
}

class CopyDefaultUnits : public Copying {
protected:
  /// So that neither measures nor units have the same ids in both files.
  CopyDefaultUnits() {
    db->save(unitOf(db, L"MASS", L"g", 0.001));
    other->save(Measure::create(L"ANGLE", 0, 0, 0, 0, 0, 0, 0));
    startWatching();
  }
};

TEST_F(CopyDefaultUnits, ArriveWithTheirUnitsAndMeasures) {
  other->setDefaultUnit(Unit::create(L"s", 1, Measure::create(L"TIME", 0, 0, 1, 0, 0, 0, 0)));
  useUnit(other, L"VOLUME", L"l", 0.001);
  const Unchanged source(otherProject);
  db->copyAll(other);
  EXPECT_THAT(defaultsOf(project.raw()), ElementsAre(Row{"TIME", "s", "TIME"}, Row{"VOLUME", "l", "VOLUME"}));
  EXPECT_THAT(project.raw().rows("PRAGMA foreign_key_check"), IsEmpty());
  const auto litre = db->defaultUnit(L"VOLUME");
  ASSERT_TRUE(litre);
  EXPECT_EQ(litre->label(), L"l");
  EXPECT_EQ(litre->scale(), 0.001);
  EXPECT_EQ(litre->projectDb(), db);
}

TEST_F(CopyDefaultUnits, AUnitThatADefinitionUsesTooArrivesOnce) {
  useUnit(other, L"VOLUME", L"l", 0.001);
  const auto definition = PropertyDefinition::create(PropertyNamespace::create(L"Common"), L"Content");
  definition->set_unit(other->defaultUnit(L"VOLUME"));
  other->save(definition);
  startWatching();
  db->copyAll(other);
  EXPECT_THAT(project.raw().column("SELECT label FROM tessel_Unit WHERE label = 'l'"), ElementsAre("l"));
  EXPECT_EQ(project.raw().scalarText("SELECT unit_id FROM tessel_PropertyDefinition"),
            project.raw().scalarText("SELECT unit_id FROM tessel_DefaultUnit"));
  EXPECT_EQ(std::count_if(reactor.saved.begin(), reactor.saved.end(),
                          [](const Saved& saved) { return saved.key.type == ObjectType::Unit; }),
            1);
}

TEST_F(CopyDefaultUnits, TheTwinOfAUnitStandsForIt) {
  const auto litre = db->save(unitOf(db, L"VOLUME", L"l", 0.001));
  useUnit(other, L"VOLUME", L"l", 0.001);
  db->copyAll(other);
  EXPECT_EQ(idOf(db->defaultUnit(L"VOLUME")), litre->id());
  EXPECT_EQ(rows("tessel_Unit"), 2);
}

// By then all units and measures have arrived, so the mapping is made to forget them. The measure of the row is another
// one than that of the unit.
TEST_F(CopyDefaultUnits, AreSavedUnitFirstAndThenTheMeasure) {
  useUnit(other, L"VOLUME", L"l", 0.001);
  const auto litre = other->defaultUnit(L"VOLUME");
  const auto last = other->save(Measure::create(L"WEIGHT", 0, 1, 0, 0, 0, 0, 0));
  otherProject.raw().exec("UPDATE tessel_DefaultUnit SET measure_id = " + std::to_string(last->id()));
  IdMapping mapping(db);
  std::vector<ObjectType> order;
  bool isForgotten = false;
  reactor.whenSaved = [&](const Saved& saved) {
    if (isForgotten) order.push_back(saved.key.type);
    if (!isForgotten && mapping.erase({ObjectType::Measure, last->id(), other.get()}))
      isForgotten = mapping.erase({ObjectType::Unit, litre->id(), other.get()});
  };
  db->copyAll(other, mapping);
  EXPECT_THAT(order, ElementsAre(ObjectType::Unit, ObjectType::Measure));
  EXPECT_THAT(defaultsOf(project.raw()), ElementsAre(Row{"WEIGHT", "l", "VOLUME"}));
}

// Unlike the first default that a host sets.
TEST_F(CopyDefaultUnits, DoNotBecomeTheUnitsOfColumns) {
  useUnit(other, L"LENGTH", L"mm", 0.001);
  db->copyAll(other);
  EXPECT_THAT(defaultsOf(project.raw()), ElementsAre(Row{"LENGTH", "mm", "LENGTH"}));
  EXPECT_EQ(rows("tessel_ColumnUnit"), 0);
  EXPECT_FALSE(db->columnUnit(&Site::ref_elevation));
}

TEST_F(CopyDefaultUnits, TheLatestOfTheSourceCounts) {
  useUnit(other, L"LENGTH", L"mm", 0.001);
  useUnit(other, L"LENGTH", L"cm", 0.01);
  db->copyAll(other);
  EXPECT_EQ(labelOf(db->defaultUnit(L"LENGTH")), L"cm");
}

TEST_F(CopyDefaultUnits, OfOtherMeasuresStayAsTheyAre) {
  useUnit(db, L"MASS", L"kg", 1);
  useUnit(other, L"VOLUME", L"l", 0.001);
  db->copyAll(other);
  EXPECT_THAT(defaultsOf(project.raw()), ElementsAre(Row{"MASS", "kg", "MASS"}, Row{"VOLUME", "l", "VOLUME"}));
}

TEST_F(CopyDefaultUnits, ARowWithoutAUnitArrivesWithoutOne) {
  useUnit(other, L"VOLUME", L"l", 0.001);
  otherProject.raw().exec("UPDATE tessel_DefaultUnit SET unit_id = NULL");
  db->copyAll(other);
  EXPECT_THAT(defaultsOf(project.raw()), ElementsAre(Row{"VOLUME", "NULL", "NULL"}));
  EXPECT_FALSE(db->defaultUnit(L"VOLUME"));
}

TEST_F(CopyDefaultUnits, DoNotGoWithASingleClass) {
  useUnit(other, L"VOLUME", L"l", 0.001);
  IdMapping mapping(db);
  db->copyAll<Unit>(other, mapping);
  db->copyAll<Measure>(other, mapping);
  EXPECT_EQ(rows("tessel_DefaultUnit"), 0);
  EXPECT_THAT(project.raw().column("SELECT label FROM tessel_Unit WHERE label = 'l'"), ElementsAre("l"));
}

// A row in the way.

// The measure is the key of the row, and of a key that is taken ODB says no more.
TEST_F(CopyDefaultUnits, ARowInTheWayEndsTheCopyWithTheExceptionOfOdb) {
  useUnit(db, L"VOLUME", L"m^3", 1);
  useUnit(other, L"VOLUME", L"l", 0.001);
  other->save(Site::create(L"Hill"));
  const Unchanged source(otherProject);
  const Unchanged destination(project);
  EXPECT_THROW(db->copyAll(other), odb::object_already_persistent);
}

TEST_F(CopyDefaultUnits, TheSameUnitIsInTheWayTooAndNothingIsKept) {
  useUnit(db, L"VOLUME", L"l", 0.001);
  useUnit(other, L"VOLUME", L"l", 0.001);
  other->save(EntityType::create(L"Door"));
  const Unchanged destination(project);
  EXPECT_THROW(db->copyAll(other), odb::exception);
}

TEST_F(CopyDefaultUnits, TheReactorIsNotAskedAboutTheRow) {
  useUnit(db, L"VOLUME", L"l", 0.001);
  useUnit(other, L"VOLUME", L"l", 0.001);
  startWatching();
  reactor.otherwise(SaveResolution::Kept);
  EXPECT_THROW(db->copyAll(other), odb::exception);
  EXPECT_THAT(reactor.clashes, IsEmpty());
}

TEST_F(CopyDefaultUnits, WithinATransactionOfTheHostWhatCameBeforeTheRowInTheWayStays) {
  useUnit(db, L"VOLUME", L"m^3", 1);
  useUnit(other, L"MASS", L"t", 1000);
  useUnit(other, L"VOLUME", L"l", 0.001);
  other->save(Site::create(L"Hill"));
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THROW(db->copyAll(other), odb::exception);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(&Transaction::current(), &transaction);
  db->save(Site::create(L"Vale"));
  transaction.commit();
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill", "Vale"));
  EXPECT_EQ(labelOf(db->defaultUnit(L"VOLUME")), L"m^3");
}

TEST_F(CopyDefaultUnits, OfASecondCopyAreInTheWayOfThemselves) {
  useUnit(other, L"VOLUME", L"l", 0.001);
  IdMapping mapping(db);
  db->copyAll(other, mapping);
  const Unchanged destination(project);
  EXPECT_THROW(db->copyAll(other, mapping), odb::exception);
}

// The file of the source is at fault, and that is no row in the way.
TEST_F(CopyDefaultUnits, ARowThatRefersToNothingEndsTheCopy) {
  useUnit(other, L"VOLUME", L"l", 0.001);
  otherProject.raw().exec("UPDATE tessel_DefaultUnit SET unit_id = 4711");
  other->save(Site::create(L"Hill"));
  const Unchanged source(otherProject);
  const Unchanged destination(project);
  EXPECT_THROW(db->copyAll(other), DatabaseException);
}

}  // namespace
}  // namespace tessel::test
