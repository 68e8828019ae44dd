// Files of earlier builds, opened as a host opens them.

#include <ostream>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <odb/exceptions.hxx>

#include <tessel/project.h>
#include <tessel/project_db.h>
#include <tessel/spatial.h>
#include <tessel/transaction.h>
#include <tessel/units.h>

#include "database/files.h"
#include "database/migrated.h"
#include "support/faulty_vfs.h"
#include "support/old_files.h"
#include "support/printers.h"
#include "support/raw_file.h"
#include "support/table_content.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using ::testing::Bool;
using ::testing::Combine;
using ::testing::ElementsAre;
using ::testing::Range;
using ::testing::Values;
using Rows = RawFile::Rows;

class OldFiles : public ::testing::Test {
protected:
  std::shared_ptr<ProjectDb> open(bool readOnly = false) { return ProjectDb::open(odPath(path), readOnly); }
  std::shared_ptr<ProjectDb> create() { return ProjectDb::create(odPath(path)); }

  Content write(const OldFile& file) {
    file.write(path);
    return contentOf(path);
  }

  // However it is opened, the file does not open and is left byte for byte.
  template <typename Error>
  void expectFailure() {
    const std::string before = bytesOf(path);
    EXPECT_THROW(open(), Error);
    EXPECT_THROW(open(true), Error);
    EXPECT_THROW(create(), Error);
    EXPECT_TRUE(sameBytes(bytesOf(path), before));
    EXPECT_FALSE(std::filesystem::exists(path + "-journal"));
    EXPECT_FALSE(isOpen(path));
  }

  // The file does not open, but is of the current version afterwards.
  void expectMigrationInVain(const Content& before) {
    EXPECT_THROW(open(), odb::object_not_persistent);
    expectMigrated(path, before);
    const std::string bytes = bytesOf(path);
    EXPECT_THROW(create(), odb::object_not_persistent);
    EXPECT_TRUE(sameBytes(bytesOf(path), bytes));
  }

  TempFolder folder;
  std::string path = folder.path("old.tessel");
};

std::string versionName(const ::testing::TestParamInfo<int>& info) { return std::to_string(info.param); }

// Every version.

class OldVersion : public OldFiles, public ::testing::WithParamInterface<std::tuple<int, bool>> {
protected:
  OldFile file() const {
    const auto [version, imperial] = GetParam();
    OldFile file(version);
    if (imperial) file.imperial();
    return file.withContent();
  }
};

INSTANTIATE_TEST_SUITE_P(From, OldVersion, Combine(Range(1000, 1010), Bool()), [](const auto& instance) {
  return std::to_string(std::get<0>(instance.param)) + (std::get<1>(instance.param) ? "imperial" : "metric");
});

TEST_P(OldVersion, OpensAtTheCurrentOneWithEveryValue) {
  const Content before = write(file());
  {
    const auto db = open();
    ASSERT_TRUE(db);
    EXPECT_EQ(db->version(), 1010U);
    EXPECT_FALSE(db->isNew());
    EXPECT_FALSE(db->isReadOnly());
  }
  expectMigrated(path, before);
}

TEST_P(OldVersion, IsMigratedByCreateTooAndIsNotNewThen) {
  const Content before = write(file());
  EXPECT_FALSE(create()->isNew());
  expectMigrated(path, before);
}

TEST_P(OldVersion, IsMigratedOnDiskEvenForReading) {
  const Content before = write(file());
  {
    const auto db = open(true);
    ASSERT_TRUE(db);
    EXPECT_EQ(db->version(), 1010U);
    EXPECT_TRUE(db->isReadOnly());
  }
  expectMigrated(path, before);
}

TEST_P(OldVersion, IsMigratedOnceOnly) {
  write(file());
  open();
  const std::string bytes = bytesOf(path);
  open();
  create();
  EXPECT_TRUE(sameBytes(bytesOf(path), bytes));
}

// The content as a host sees it.

class OldContent : public OldFiles, public ::testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(From, OldContent, Range(1000, 1010), versionName);

TEST_P(OldContent, HasItsSpatialObjects) {
  OldFile(GetParam()).withContent().write(path);
  const auto db = open();
  const OdString longName(GetParam() >= 1005 ? L"Hill side" : L"");
  const auto site = db->get<Site>(NameKey(L"Hill"));
  ASSERT_TRUE(site);
  EXPECT_EQ(site->town(), u"V\u00E4xj\u00F6");
  EXPECT_EQ(site->long_name(), longName);
  EXPECT_EQ(site->ref_elevation(), 12.5);
  EXPECT_EQ(site->buildable_area(), 300.25);
  ASSERT_EQ(site->buildings().size(), 1U);
  const auto building = site->buildings()[0];
  EXPECT_EQ(building->name(), L"House");
  EXPECT_EQ(building->year_of_construction(), L"1999");
  EXPECT_TRUE(building->is_landmarked());
  EXPECT_EQ(building->number_of_storeys(), 2U);
  ASSERT_EQ(building->stories().size(), 2U);
  EXPECT_EQ(building->stories()[1]->name(), L"Floor 4");
  EXPECT_EQ(building->stories()[1]->elevation(), 2.75);
  EXPECT_FALSE(building->stories()[1]->above_ground());
}

TEST_P(OldContent, HasItsProject) {
  OldFile(GetParam()).withContent().write(path);
  const auto db = open();
  const Project& project = db->project();
  const bool hasFolders = GetParam() >= 1009;
  EXPECT_EQ(project.name(), L"Project 1");
  ASSERT_TRUE(project.site());
  EXPECT_EQ(project.site()->name(), L"Hill");
  EXPECT_EQ(project.models_folder(), hasFolders ? L"models" : L"");
  EXPECT_EQ(project.sheet_set().filename, L"") << "a NULL reads as empty text";
  EXPECT_EQ(project.sheet_margins_metric().page_left, hasFolders ? 20 : 0);
  EXPECT_EQ(project.master_drawings().size(), hasFolders ? 1U : 0U);
  ASSERT_EQ(project.sheet_categories().size(), hasFolders ? 1U : 0U);
  if (hasFolders) {
    EXPECT_EQ(project.sheet_categories()[0].number_width, 3);
  }
}

TEST_P(OldContent, CanBeWorkedOn) {
  OldFile(GetParam()).withContent().write(path);
  {
    const auto db = open();
    const auto site = db->get<Site>(NameKey(L"Hill"));
    site->set_long_name(L"Hill of the harbour");
    db->save(site);
    db->save(Story::create(site->buildings()[0], L"Roof", 6.5));
    db->project().set_models_folder(L"drawings");
    db->saveProject();
  }
  const auto db = open();
  EXPECT_EQ(db->count<Story>(), 3U);
  EXPECT_EQ(db->project().models_folder(), L"drawings");
  EXPECT_EQ(db->project().site()->long_name(), L"Hill of the harbour");
}

TEST_F(OldFiles, From1000TheUnitsOfTheColumnsAreTheMetricOnes) {
  OldFile(1000).withContent().write(path);
  const auto db = open();
  EXPECT_EQ(db->columnUnit(&Site::ref_elevation)->label(), L"mm");
  EXPECT_EQ(db->columnUnit(&Story::net_area_planned)->label(), L"m^2");
  EXPECT_EQ(db->defaultUnit(L"LENGTH")->scale(), 0.001);
  EXPECT_EQ(db->count<Measure>(), 2U);
}

TEST_F(OldFiles, From1000TheUnitsOfTheColumnsAreTheImperialOnes) {
  OldFile(1000).imperial().withContent().write(path);
  const auto db = open();
  EXPECT_EQ(db->columnUnit(&Site::ref_elevation)->label(), L"in");
  EXPECT_EQ(db->columnUnit(&Story::net_area_planned)->label(), L"ft^2");
  EXPECT_EQ(db->defaultUnit(L"AREA")->scale(), 0.09290304);
  EXPECT_EQ(db->get<Site>(NameKey(L"Hill"))->ref_elevation(), 12.5) << "the number stays, it is in inches";
}

TEST_F(OldFiles, From1001OnTheMetaRowSaysNothingMore) {
  OldFile(1001).imperial().withContent().write(path);
  const auto db = open();
  EXPECT_EQ(db->columnUnit(&Site::ref_elevation)->label(), L"mm");
  EXPECT_FALSE(db->columnUnit(&Story::net_area_planned));
  EXPECT_EQ(db->count<Measure>(), 2U);
}

TEST_F(OldFiles, AFileWithNothingButItsProjectOpens) {
  for (int version = 1000; version < 1010; ++version) {
    const Content before = write(OldFile(version));
    EXPECT_TRUE(open()) << version;
    expectMigrated(path, before);
    std::filesystem::remove(path);
  }
}

// Spaces.

class OldSpaces : public OldFiles, public ::testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(From, OldSpaces, Values(1006, 1007), versionName);

TEST_P(OldSpaces, AreGoneForGoodAndNothingElseIs) {
  const Content before = write(OldFile(GetParam()).withSpaces());
  ASSERT_EQ(before.at("tessel_Space").rows.size(), 2U);
  {
    const auto db = open();
    ASSERT_TRUE(db);
    EXPECT_EQ(db->count<SpatialStructure>(), 4U);
    EXPECT_EQ(db->count<Story>(), 2U);
  }
  expectMigrated(path, before);
  EXPECT_EQ(RawFile(path).scalarInt("SELECT count(*) FROM tessel_SpatialStructure WHERE id IN (5, 6)"), 0);
}

// The project row.

class OldProjectRow : public OldFiles, public ::testing::WithParamInterface<int> {
protected:
  OldFile file() const { return OldFile(GetParam()).withContent(); }
};

class Before1002 : public OldProjectRow {};
class From1002On : public OldProjectRow {};

INSTANTIATE_TEST_SUITE_P(From, Before1002, Range(1000, 1002), versionName);
INSTANTIATE_TEST_SUITE_P(From, From1002On, Range(1002, 1010), versionName);

TEST_P(Before1002, OfAnotherIdIsMovedToId1) {
  Content before = write(file().projects({7}));
  EXPECT_EQ(open()->project().name(), L"Project 7");
  before.at("tessel_Project").rows[0][0] = "1";
  expectMigrated(path, before);
}

TEST_P(Before1002, ThatIsMissingFailsAndLeavesTheFile) {
  write(file().projects({}));
  expectFailure<odb::database_exception>();
}

TEST_P(Before1002, OfWhichThereAreSeveralIsLeftAlone) { expectMigrationInVain(write(file().projects({3, 7}))); }

TEST_P(Before1002, OfWhichThereAreSeveralOneWithId1Opens) {
  const Content before = write(file().projects({1, 7}));
  EXPECT_EQ(open()->project().name(), L"Project 1");
  expectMigrated(path, before);
}

TEST_P(From1002On, OfAnotherIdIsNotFound) { expectMigrationInVain(write(file().projects({7}))); }

TEST_P(From1002On, ThatIsMissingIsNotFound) { expectMigrationInVain(write(file().projects({}))); }

TEST_P(From1002On, OfWhichThereAreSeveralOneWithId1Opens) {
  const Content before = write(file().projects({1, 7}));
  EXPECT_EQ(open()->project().name(), L"Project 1");
  expectMigrated(path, before);
}

// Failures in the middle.

TEST_F(OldFiles, AtVersion1000WithoutItsMetaTableFailsWithTheTextOfSqlite) {
  write(OldFile(1000).withContent());
  RawFile(path).exec("DROP TABLE tessel_Meta");
  expectFailure<std::runtime_error>();
  try {
    open();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "no such table: tessel_Meta");
  }
}

struct Obstacle {
  const char* name;
  int version;
  const char* sql;
};

void PrintTo(const Obstacle& obstacle, std::ostream* out) { *out << obstacle.sql; }

class OldFileWithObstacle : public OldFiles, public ::testing::WithParamInterface<Obstacle> {};

// One for each step, so that every earlier step has been done when it fails.
INSTANTIATE_TEST_SUITE_P(At, OldFileWithObstacle,
                         Values(Obstacle{"1001", 1000, "CREATE TABLE tessel_PropertySet_entity_types (a)"},
                                Obstacle{"1003", 1001, "ALTER TABLE tessel_PropertyNamespace ADD COLUMN revision"},
                                Obstacle{"1004", 1001, "ALTER TABLE tessel_PropertyDefinition ADD COLUMN type_spec2"},
                                Obstacle{"1005", 1001, "ALTER TABLE tessel_Story ADD COLUMN long_name"},
                                Obstacle{"1006", 1001, "CREATE TABLE tessel_Space (a)"},
                                Obstacle{"1007", 1001, "CREATE TABLE tessel_PropertySet_value_definitions (a)"},
                                Obstacle{"1008", 1007, "DROP TABLE tessel_SpatialStructure"},
                                Obstacle{"1009", 1001, "CREATE TABLE tessel_Project_sheet_categories (a)"},
                                Obstacle{"1010", 1001, "ALTER TABLE tessel_PropertySet ADD COLUMN ifc_name"}),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(OldFileWithObstacle, FailsAndIsLeftByteForByte) {
  OldFile(GetParam().version).withContent().write(path);
  RawFile(path).exec(GetParam().sql);
  expectFailure<odb::database_exception>();
}

TEST_F(OldFiles, BelowTheOldestVersionAreRefusedAndLeft) {
  write(OldFile(1000).withContent());
  RawFile(path).exec("UPDATE schema_version SET version = 999");
  const std::string before = bytesOf(path);
  EXPECT_FALSE(open());
  EXPECT_FALSE(open(true));
  EXPECT_FALSE(create());
  EXPECT_TRUE(sameBytes(bytesOf(path), before));
}

TEST_F(OldFiles, ThatAnotherConnectionIsReadingFailAtTheEndAndAreLeft) {
  write(OldFile(1007).withSpaces());
  const std::string before = bytesOf(path);
  {
    RawFile reader(path);
    reader.exec("BEGIN; SELECT * FROM schema_version");
    EXPECT_THROW(open(), odb::timeout);
    EXPECT_TRUE(sameBytes(bytesOf(path), before));
  }
  EXPECT_TRUE(open());
}

TEST_F(OldFiles, ThatAnotherConnectionIsWritingFailAndAreLeft) {
  write(OldFile(1007).withSpaces());
  const std::string before = bytesOf(path);
  {
    RawFile writer(path);
    writer.exec("BEGIN IMMEDIATE");
    EXPECT_THROW(open(), odb::timeout);
  }
  EXPECT_TRUE(sameBytes(bytesOf(path), before));
  EXPECT_TRUE(open());
}

TEST_F(OldFiles, AreLeftWithinATransactionOfTheThread) {
  write(OldFile(1000).withContent());
  const auto other = ProjectDb::create(odPath(folder.path("other.tessel")));
  const Transaction transaction(other, Transaction::BeginCurrent);
  expectFailure<odb::already_in_transaction>();
}

// Files that cannot be written.

class OldReadOnly : public OldFiles, public ::testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(From, OldReadOnly, Range(1000, 1010), versionName);

TEST_P(OldReadOnly, FailsOnAFileThatMayNotBeWritten) {
  OldFile(GetParam()).withContent().write(path);
  protectFromWriting(path);
  const OrdinaryUser user;
  expectFailure<odb::database_exception>();
}

TEST_P(OldReadOnly, FailsThroughAVfsThatRefusesToWrite) {
  OldFile(GetParam()).withContent().write(path);
  const std::string before = bytesOf(path);
  FaultyVfs vfs("own", folder.path());
  vfs.protectFromWriting(true);
  EXPECT_THROW(ProjectDb::open(L"own://old.tessel", false), odb::database_exception);
  EXPECT_THROW(ProjectDb::open(L"own://old.tessel", true), odb::database_exception);
  EXPECT_THROW(ProjectDb::create(L"own://old.tessel"), odb::database_exception);
  EXPECT_TRUE(sameBytes(bytesOf(path), before));
}

TEST_F(OldFiles, OnceMigratedAFileOpensFromAReadOnlyPlace) {
  write(OldFile(1005).withContent());
  open();
  protectFromWriting(path);
  const OrdinaryUser user;
  const auto db = open();
  ASSERT_TRUE(db);
  EXPECT_TRUE(db->isReadOnly());
  EXPECT_EQ(db->count<Story>(), 2U);
}

}  // namespace
}  // namespace tessel::test
