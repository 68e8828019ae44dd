// Copying the column units and the project record.

#include <gmock/gmock.h>

#include <odb/exceptions.hxx>

#include <tessel/project.h>

#include "operations/copying.h"
#include "units/column_rows.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* recordTables[] = {"tessel_Project_master_drawings", "tessel_Project_sheet_categories"};

class CopyMeta : public Copying {
protected:
  CopyMeta() {
    db->save(makeSample<Site>(8));
    db->save(unitOf(db, L"MASS", L"g", 0.001));
    useUnit(other, L"LENGTH", L"mm", 0.001);
    useUnit(other, L"AREA", L"m^2", 1);
    foreignSite = makeSample<Site>(1);
    fill(other->project(), L"source");
    other->project().set_site(foreignSite);
    other->saveProject();
    foreignSite = other->project().site();
    startWatching();
  }

  static void fill(Project& project, const wchar_t* name) {
    project.set_name(name);
    project.set_models_folder(L"models \u4E2D");
    project.set_sheets_folder(L"sheets 'it'");
    project.set_sheet_set(Project::SheetSet(L"set.dst"));
    project.set_sheet_margins_metric() = {1.125, 2.125, 3.125, 4.125, 5.125, 6.125};
    project.set_sheet_margins_imperial() = {11.125, 12.125, 13.125, 14.125, 15.125, 16.125};
    project.set_master_drawings() = {Project::MasterDrawing(L"second"), Project::MasterDrawing(L"first")};
    project.set_sheet_categories() = {SheetCategory(L"Sections", L"B", 200, 4), SheetCategory(L"Plans", L"A", -1, -1)};
  }

  static std::map<std::string, std::string> recordOf(const SampleProject& file) {
    auto record = file.row("tessel_Project", 1);
    record.erase("site_id");
    return record;
  }

  static RawFile::Rows containerOf(const SampleProject& file, const std::string& table) {
    return file.raw().rows("SELECT * FROM " + table + " ORDER BY \"index\"");
  }

  static std::string siteNameOf(const SampleProject& file) {
    return file.raw().scalarText("SELECT s.name FROM tessel_Project p LEFT JOIN tessel_Site s ON s.id = p.site_id");
  }

  RawFile::Rows columnRows(const SampleProject& file) {
    RawFile raw = file.raw();
    return columnRowsOf(raw);
  }

  TsSmartPtr<Site> foreignSite;
};

TEST_F(CopyMeta, FromNowhereOrFromItselfDoesNothing) {
  const Unchanged destination(project);
  IdMapping mapping(db);
  db->copyMeta(nullptr, mapping);
  db->copyMeta(nullptr);
  db->copyMeta(db, mapping);
  db->copyMeta(db);
  EXPECT_EQ(mapping.size(), 0U);
  EXPECT_THAT(reactor.calls, IsEmpty());
  EXPECT_THAT(sql.statements(), IsEmpty());
}

TEST_F(CopyMeta, BringsTheUnitsOfTheColumns) {
  db->copyMeta(other);
  EXPECT_EQ(columnRows(project), columnRows(otherProject));
  EXPECT_EQ(rows("tessel_ColumnUnit"), 10);
  EXPECT_THAT(project.raw().rows("PRAGMA foreign_key_check"), IsEmpty());
  const auto unit = db->columnUnit(&Story::elevation);
  ASSERT_TRUE(unit);
  EXPECT_EQ(unit->label(), L"mm");
  EXPECT_EQ(unit->projectDb(), db);
}

TEST_F(CopyMeta, BringsNoDefaultUnits) {
  db->copyMeta(other);
  EXPECT_EQ(rows("tessel_DefaultUnit"), 0);
  EXPECT_FALSE(db->defaultUnit(L"LENGTH"));
}

TEST_F(CopyMeta, BringsTheProjectRecordWithAllThatIsInIt) {
  const Unchanged source(otherProject);
  db->copyMeta(other);
  EXPECT_EQ(recordOf(project), recordOf(otherProject));
  for (const char* const table : recordTables) {
    EXPECT_EQ(containerOf(project, table), containerOf(otherProject, table));
    EXPECT_EQ(containerOf(project, table).size(), 2U);
  }
  EXPECT_EQ(rows("tessel_Project"), 1);
}

TEST_F(CopyMeta, BringsTheSiteOfTheRecordUnderItsOwnId) {
  db->copyMeta(other);
  EXPECT_EQ(siteNameOf(project), foreignSite->name().toUtf8());
  ASSERT_TRUE(db->project().site());
  EXPECT_NE(db->project().site()->id(), foreignSite->id());
  EXPECT_EQ(rows("tessel_Site"), 2);
}

TEST_F(CopyMeta, TheRecordInMemoryIsTheNewOne) {
  db->copyMeta(other);
  const Project& record = db->project();
  EXPECT_EQ(record.name(), L"source");
  ASSERT_TRUE(record.site());
  EXPECT_EQ(record.site()->projectDb(), db);
  EXPECT_TRUE(*record.site() == *foreignSite) << "the numbers have the same units in both files";
  EXPECT_TRUE(record.sheet_margins_metric() == other->project().sheet_margins_metric());
  EXPECT_TRUE(record.sheet_margins_imperial() == other->project().sheet_margins_imperial());
  EXPECT_TRUE(record.master_drawings() == other->project().master_drawings());
  EXPECT_TRUE(record.sheet_categories() == other->project().sheet_categories());
  EXPECT_EQ(record.sheet_set().filename, L"set.dst");
  EXPECT_EQ(other->project().site(), foreignSite) << "the source keeps its own";
}

TEST_F(CopyMeta, TheRecordThatWasThereIsReplaced) {
  fill(db->project(), L"destination");
  db->project().set_master_drawings() = {Project::MasterDrawing(L"a"), Project::MasterDrawing(L"b"),
                                         Project::MasterDrawing(L"c")};
  db->project().set_site(db->save(Site::create(L"Vale")));
  db->saveProject();
  db->copyMeta(other);
  EXPECT_EQ(recordOf(project), recordOf(otherProject));
  EXPECT_EQ(containerOf(project, "tessel_Project_master_drawings").size(), 2U);
  EXPECT_EQ(siteNameOf(project), foreignSite->name().toUtf8());
  EXPECT_EQ(rows("tessel_Site"), 3) << "its site stays in the file";
}

TEST_F(CopyMeta, ASourceWithoutASiteLeavesNone) {
  other->project().set_site(nullptr);
  db->project().set_site(db->save(Site::create(L"Vale")));
  db->saveProject();
  db->copyMeta(other);
  EXPECT_EQ(siteNameOf(project), "NULL");
  EXPECT_FALSE(db->project().site());
}

// It is the record in memory that is copied, as the source would save it.
TEST_F(CopyMeta, ChangesOfTheSourcesRecordNeedNotBeSaved) {
  const Unchanged source(otherProject);
  other->project().set_name(L"changed");
  db->copyMeta(other);
  EXPECT_THAT(inFile("name", "Project"), ElementsAre("changed"));
}

TEST_F(CopyMeta, TheMappingHoldsTheUnitsAndTheSite) {
  IdMapping mapping(db);
  db->copyMeta(other, mapping);
  ASSERT_TRUE(db->project().site());
  EXPECT_EQ(mapping.size(), 5U) << "two measures, two units and the site";
  EXPECT_EQ(mapped(mapping, *foreignSite).id, db->project().site()->id());
  const auto unit = other->columnUnit(&Site::ref_elevation);
  EXPECT_EQ(mapped(mapping, *unit).id, idOf(db->columnUnit(&Site::ref_elevation)));
  EXPECT_EQ(mapped(mapping, *unit->measure()).resolution, SaveResolution::Kept);
}

TEST_F(CopyMeta, TheReactorHearsOfEachObjectOnce) {
  db->copyMeta(other);
  std::vector<ObjectType> types;
  for (const Saved& saved : reactor.saved) types.push_back(saved.key.type);
  EXPECT_THAT(
    types, ElementsAre(ObjectType::Measure, ObjectType::Unit, ObjectType::Measure, ObjectType::Unit, ObjectType::Site));
}

TEST_F(CopyMeta, WithOneMappingAllObjectsFollow) {
  other->save(Story::create(Building::create(foreignSite, L"House"), L"Ground", 2750));
  IdMapping mapping(db);
  db->copyMeta(other, mapping);
  db->copyAll(other, mapping);
  EXPECT_THAT(reactor.clashes, IsEmpty());
  ASSERT_TRUE(db->project().site());
  EXPECT_EQ(rows("tessel_Site"), 2);
  EXPECT_THAT(inFile("elevation", "Story"), ElementsAre("2750.0"));
  EXPECT_THAT(inFile("site_id", "Building"), ElementsAre(std::to_string(db->project().site()->id())));
  EXPECT_EQ(idOf(db->defaultUnit(L"LENGTH")), idOf(db->columnUnit(&Story::elevation)));
}

TEST_F(CopyMeta, AUnitMergesWithItsTwin) {
  const auto millimetre = db->save(unitOf(db, L"LENGTH", L"mm", 0.001));
  db->copyMeta(other);
  EXPECT_EQ(idOf(db->columnUnit(&Site::ref_elevation)), millimetre->id());
}

TEST_F(CopyMeta, IsOneTransaction) {
  db->copyMeta(other);
  EXPECT_EQ(sql.beginningWith("COMMIT").size(), 1U);
}

TEST_F(CopyMeta, WithinATransactionOfTheHostNothingIsCommitted) {
  const Unchanged destination(project);
  Transaction transaction(db, Transaction::BeginCurrent);
  db->copyMeta(other);
  EXPECT_EQ(&Transaction::current(), &transaction);
  transaction.rollback();
  EXPECT_EQ(db->project().name(), L"source") << "a rollback restores the file and nothing in memory";
}

TEST_F(CopyMeta, ATransactionOfTheSourceIsSetAside) {
  Transaction transaction(other, Transaction::BeginCurrent);
  db->copyMeta(other);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_EQ(rows("tessel_ColumnUnit"), 10);
  transaction.rollback();
}

// A column of the destination that has a unit.

TEST_F(CopyMeta, AColumnUnitInTheWayEndsTheCopyWithTheExceptionOfOdb) {
  useUnit(db, L"LENGTH", L"mm", 0.001);
  fill(db->project(), L"destination");
  db->saveProject();
  const Unchanged source(otherProject);
  const Unchanged destination(project);
  try {
    db->copyMeta(other);
    ADD_FAILURE();
  } catch (const odb::exception& error) {
    EXPECT_THAT(error.what(), HasSubstr("tessel_ColumnUnit.table, tessel_ColumnUnit.column"));
  }
  EXPECT_EQ(db->project().name(), L"destination") << "the record was not yet reached";
}

TEST_F(CopyMeta, ASecondCopyIsInTheWayOfItself) {
  IdMapping mapping(db);
  db->copyMeta(other, mapping);
  const Unchanged destination(project);
  EXPECT_THROW(db->copyMeta(other, mapping), odb::exception);
}

TEST_F(CopyMeta, WithinATransactionOfTheHostItGoesOnAfterARowInTheWay) {
  useUnit(db, L"AREA", L"m^2", 1);
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THROW(db->copyMeta(other), odb::exception);
  EXPECT_FALSE(transaction.finalized());
  db->save(Site::create(L"Vale"));
  transaction.commit();
  EXPECT_EQ(db->count<Site>(), 2U);
  EXPECT_EQ(labelOf(db->columnUnit(&Story::elevation)), L"mm") << "those rows came first";
}

TEST_F(CopyMeta, UnitsOfOtherColumnsAreNotInTheWay) {
  otherProject.raw().exec("DELETE FROM tessel_ColumnUnit WHERE \"table\" <> 'Story'");
  useUnit(db, L"LENGTH", L"m", 1);
  project.raw().exec("DELETE FROM tessel_ColumnUnit WHERE \"table\" = 'Story'");
  db->copyMeta(other);
  EXPECT_EQ(labelOf(db->columnUnit(&Story::elevation)), L"mm");
  EXPECT_EQ(labelOf(db->columnUnit(&Site::ref_elevation)), L"m");
}

// The site of the record.

TEST_F(CopyMeta, ASiteThatCannotBeConvertedIsMissingInTheRecord) {
  otherProject.raw().exec("DELETE FROM tessel_ColumnUnit");
  useUnit(db, L"LENGTH", L"m", 1);
  startWatching();
  db->copyMeta(other);
  EXPECT_EQ(siteNameOf(project), "NULL");
  EXPECT_FALSE(db->project().site());
  EXPECT_THAT(inFile("name", "Project"), ElementsAre("source"));
  EXPECT_THAT(reactor.calls, IsEmpty());
}

TEST_F(CopyMeta, ASiteThatClashesEndsTheCopy) {
  db->save(makeSample<Site>(1));
  const Unchanged destination(project);
  EXPECT_THROW(db->copyMeta(other), ObjectNotUnique);
}

TEST_F(CopyMeta, ASiteThatClashesIsAskedFor) {
  const auto own = makeSample<Site>(1);
  own->set_town(L"Bergen");
  db->save(own);
  reactor.answer({SaveResolution::Kept});
  db->copyMeta(other);
  ASSERT_TRUE(db->project().site());
  EXPECT_EQ(db->project().site()->id(), own->id());
  EXPECT_EQ(project.row("tessel_Project", 1).at("site_id"), std::to_string(own->id()));
  EXPECT_EQ(project.row("tessel_Site", own->id()).at("town"), "Bergen");
}

}  // namespace
}  // namespace tessel::test
