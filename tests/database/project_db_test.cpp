// The life of a handle: how a path becomes an open project file, and what is refused.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <odb/exceptions.hxx>
#include <odb/sqlite/exceptions.hxx>
#include <utf8.h>

#include <tessel/exceptions.h>
#include <tessel/project.h>
#include <tessel/project_db.h>
#include <tessel/spatial.h>
#include <tessel/transaction.h>

#include "database/files.h"
#include "support/expected_schema.h"
#include "support/printers.h"
#include "support/raw_file.h"
#include "support/sql_trace.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Row = RawFile::Row;

class Lifecycle : public ::testing::Test {
protected:
  std::shared_ptr<ProjectDb> create() { return ProjectDb::create(odPath(path)); }
  std::shared_ptr<ProjectDb> open(bool readOnly = false) { return ProjectDb::open(odPath(path), readOnly); }

  RawFile raw() { return RawFile(path, RawFile::Access::create); }

  // A project file that nobody has open, changed by SQL.
  void makeProject(const std::string& changes = "") {
    ASSERT_TRUE(create());
    raw().exec(changes);
  }

  // None of the three ways to open takes the file or changes it.
  void expectRefused() {
    const std::string before = bytesOf(path);
    EXPECT_FALSE(create());
    EXPECT_FALSE(open());
    EXPECT_FALSE(open(true));
    EXPECT_EQ(bytesOf(path), before);
    EXPECT_FALSE(isOpen(path));
  }

  template <typename Error>
  void expectThrown() {
    const std::string before = bytesOf(path);
    EXPECT_THROW(create(), Error);
    EXPECT_THROW(open(), Error);
    EXPECT_THROW(open(true), Error);
    EXPECT_EQ(bytesOf(path), before);
    EXPECT_FALSE(isOpen(path));
    EXPECT_FALSE(Transaction::hasCurrent());
  }

  TempFolder folder;
  std::string path = folder.path("house.tessel");
};

// A new file.

TEST_F(Lifecycle, CreateMakesAProjectWhereThereIsNoFile) {
  const auto db = create();
  ASSERT_TRUE(db);
  EXPECT_TRUE(db->isNew());
  EXPECT_FALSE(db->isReadOnly());
  EXPECT_EQ(db->version(), 1010U);
  EXPECT_EQ(db->filename(), odPath(path));
}

TEST_F(Lifecycle, ANewFileSaysItsVersionAndCompatibility) {
  makeProject();
  EXPECT_THAT(raw().rows("SELECT name, version, migration, compatibility FROM schema_version"),
              ElementsAre(Row{"tessel", "1010", "0", "1000"}));
}

TEST_F(Lifecycle, ANewFileHasTheFourMeasuresInTheirOrder) {
  makeProject();
  EXPECT_THAT(raw().rows("SELECT * FROM tessel_Measure ORDER BY id"),
              ElementsAre(Row{"1", "LENGTH", "", "1", "0", "0", "0", "0", "0", "0"},
                          Row{"2", "AREA", "", "2", "0", "0", "0", "0", "0", "0"},
                          Row{"3", "VOLUME", "", "3", "0", "0", "0", "0", "0", "0"},
                          Row{"4", "MASS", "", "0", "1", "0", "0", "0", "0", "0"}));
}

TEST_F(Lifecycle, ANewFileHasABlankProjectRow) {
  makeProject();
  EXPECT_THAT(raw().rows("SELECT * FROM tessel_Project"),
              ElementsAre(Row{"1", "", "NULL", "", "", "", "0.0", "0.0", "0.0", "0.0", "0.0", "0.0", "0.0", "0.0",
                              "0.0", "0.0", "0.0", "0.0"}));
}

TEST_F(Lifecycle, ANewFileHasAMetaRowWithTheUnitOfTheColumnsDefault) {
  makeProject();
  EXPECT_THAT(raw().rows("SELECT id, unit FROM tessel_Meta"), ElementsAre(Row{"0", "1"}));
}

TEST_F(Lifecycle, ANewFileHasNoOtherRows) {
  makeProject();
  RawFile file = raw();
  for (const ExpectedTable& table : expectedSchema()) {
    const bool seeded = table.name == "schema_version" || table.name == "tessel_Measure" ||
                        table.name == "tessel_Project" || table.name == "tessel_Meta";
    if (!seeded) {
      EXPECT_EQ(file.count(table.name), 0) << table.name;
    }
  }
}

TEST_F(Lifecycle, CreateTakesAnEmptyFileForANewOne) {
  writeBytes(path, "");
  const auto db = create();
  ASSERT_TRUE(db);
  EXPECT_TRUE(db->isNew());
}

TEST_F(Lifecycle, CreateMakesAProjectInADatabaseWithoutOne) {
  raw().exec("CREATE TABLE notes (text TEXT); INSERT INTO notes VALUES ('mine')");
  EXPECT_TRUE(create()->isNew());
  EXPECT_EQ(raw().scalarText("SELECT text FROM notes"), "mine");
  EXPECT_EQ(raw().count("tessel_Measure"), 4);
}

TEST_F(Lifecycle, CreateDropsLeftoversThatNoVersionRowStandsFor) {
  makeProject("DELETE FROM schema_version; INSERT INTO tessel_EntityType (name) VALUES ('IfcWall'); "
              "UPDATE tessel_Project SET name = 'left over'");
  EXPECT_TRUE(create()->isNew());
  EXPECT_EQ(raw().count("tessel_EntityType"), 0);
  EXPECT_EQ(raw().scalarText("SELECT name FROM tessel_Project"), "");
}

TEST_F(Lifecycle, CreateTakesAVersionRowOfZeroForNone) {
  makeProject("UPDATE schema_version SET version = 0; INSERT INTO tessel_EntityType (name) VALUES ('IfcWall')");
  const auto db = create();
  ASSERT_TRUE(db);
  EXPECT_TRUE(db->isNew());
  EXPECT_EQ(db->version(), 1010U);
  EXPECT_EQ(raw().count("tessel_EntityType"), 0);
  EXPECT_THAT(raw().rows("SELECT name, version, migration, compatibility FROM schema_version"),
              ElementsAre(Row{"tessel", "1010", "0", "1000"}));
}

TEST_F(Lifecycle, CreateKeepsTheVersionRowsOfOthers) {
  raw().exec("CREATE TABLE schema_version (name TEXT NOT NULL PRIMARY KEY, version INTEGER NOT NULL, "
             "migration INTEGER NOT NULL); INSERT INTO schema_version VALUES ('other', 7, 0)");
  EXPECT_TRUE(create()->isNew());
  EXPECT_THAT(raw().column("SELECT name || version FROM schema_version ORDER BY name"),
              ElementsAre("other7", "tessel1010"));
}

// An existing file.

TEST_F(Lifecycle, CreateOnAProjectFileOpensItAndAddsNothing) {
  makeProject("INSERT INTO tessel_EntityType (name) VALUES ('IfcWall')");
  const std::string before = bytesOf(path);
  const auto db = create();
  ASSERT_TRUE(db);
  EXPECT_FALSE(db->isNew());
  EXPECT_EQ(db->version(), 1010U);
  EXPECT_EQ(bytesOf(path), before);
}

TEST_F(Lifecycle, OpenIsNeverNew) {
  makeProject();
  EXPECT_FALSE(open()->isNew());
  EXPECT_FALSE(open(true)->isNew());
}

TEST_F(Lifecycle, OpenWritesNothingToACurrentFile) {
  makeProject("UPDATE schema_version SET compatibility = 1009");
  const std::string before = bytesOf(path);
  EXPECT_TRUE(open());
  EXPECT_EQ(bytesOf(path), before);
}

TEST_F(Lifecycle, OpenForReadingRefusesToWrite) {
  makeProject();
  const auto db = open(true);
  EXPECT_TRUE(db->isReadOnly());
  EXPECT_THROW(db->save(Site::create(L"Hill")), DatabaseException);
  EXPECT_EQ(raw().count("tessel_Site"), 0);
}

TEST_F(Lifecycle, OpenForWritingWrites) {
  makeProject();
  const auto db = open();
  EXPECT_FALSE(db->isReadOnly());
  EXPECT_TRUE(db->save(Site::create(L"Hill")));
  EXPECT_EQ(raw().count("tessel_Site"), 1);
}

TEST_F(Lifecycle, AHandleHoldsTheProjectRecordOfItsFile) {
  makeProject("UPDATE tessel_Project SET name = 'Harbour'");
  EXPECT_EQ(create()->project().name(), L"Harbour");
  EXPECT_EQ(open()->project().name(), L"Harbour");
  EXPECT_EQ(open(true)->project().name(), L"Harbour");
}

TEST_F(Lifecycle, TwoHandlesOnOneFileAreTwo) {
  makeProject();
  const auto first = open();
  const auto second = open();
  EXPECT_NE(first, second);
  first->save(Site::create(L"Hill"));
  EXPECT_EQ(second->count<Site>(), 1U);
}

// What is refused with a null handle.

TEST_F(Lifecycle, OpenOnAMissingFileIsNullAndLeavesNoFile) {
  EXPECT_FALSE(open());
  EXPECT_FALSE(open(true));
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(Lifecycle, AMissingFolderIsRefused) {
  path = folder.path("nowhere") + "/house.tessel";
  EXPECT_FALSE(create());
  EXPECT_FALSE(open());
  EXPECT_FALSE(open(true));
  EXPECT_FALSE(std::filesystem::exists(folder.path("nowhere")));
}

TEST_F(Lifecycle, AFolderIsRefused) {
  std::filesystem::create_directory(path);
  EXPECT_FALSE(create());
  EXPECT_FALSE(open());
  EXPECT_FALSE(open(true));
}

TEST_F(Lifecycle, WithoutTheRightToCreateAFileCreateIsRefused) {
  std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_exec | std::filesystem::perms::others_exec);
  {
    const OrdinaryUser user;
    EXPECT_FALSE(create());
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(Lifecycle, OpenOnAnEmptyDatabaseIsNullAndLeavesItEmpty) {
  writeBytes(path, "");
  EXPECT_FALSE(open());
  EXPECT_FALSE(open(true));
  EXPECT_EQ(bytesOf(path), "");
}

TEST_F(Lifecycle, OpenOnADatabaseWithoutAProjectIsNullAndLeavesItAsItWas) {
  raw().exec("CREATE TABLE notes (text TEXT)");
  const std::string before = bytesOf(path);
  EXPECT_FALSE(open());
  EXPECT_FALSE(open(true));
  EXPECT_EQ(bytesOf(path), before);
}

TEST_F(Lifecycle, OpenOnAProjectWithoutItsVersionRowIsNull) {
  makeProject("DELETE FROM schema_version");
  EXPECT_FALSE(open());
  EXPECT_FALSE(open(true));
}

TEST_F(Lifecycle, OpenTakesAVersionRowOfZeroForNone) {
  makeProject("UPDATE schema_version SET version = 0");
  const std::string before = bytesOf(path);
  EXPECT_FALSE(open());
  EXPECT_FALSE(open(true));
  EXPECT_EQ(bytesOf(path), before);
}

TEST_F(Lifecycle, AVersionBelowTheOldestThatCanBeMigratedIsRefused) {
  makeProject("UPDATE schema_version SET version = 999");
  expectRefused();
}

TEST_F(Lifecycle, VersionOneIsRefused) {
  makeProject("UPDATE schema_version SET version = 1");
  expectRefused();
}

TEST_F(Lifecycle, ALaterVersionThatNeedsALaterBuildIsRefused) {
  makeProject("UPDATE schema_version SET version = 1011, compatibility = 1011");
  expectRefused();
}

TEST_F(Lifecycle, CompatibilityIsComparedUnsigned) {
  makeProject("UPDATE schema_version SET version = 1011, compatibility = -1");
  expectRefused();
}

TEST_F(Lifecycle, CompatibilityCountsOnlyForLaterVersions) {
  makeProject("UPDATE schema_version SET compatibility = 5000");
  EXPECT_TRUE(open());
}

// Files of later builds.

class LaterFile : public Lifecycle, public ::testing::WithParamInterface<int> {
protected:
  void SetUp() override {
    makeProject("UPDATE schema_version SET version = 1011, compatibility = " + std::to_string(GetParam()));
    before = bytesOf(path);
  }
  void TearDown() override { EXPECT_EQ(bytesOf(path), before); }

  std::string before;
};

TEST_P(LaterFile, IsOpenedUntouchedIfItSaysItIsCompatible) {
  const auto db = open();
  ASSERT_TRUE(db);
  EXPECT_EQ(db->version(), 1011U);
  EXPECT_FALSE(db->isNew());
  EXPECT_FALSE(db->isReadOnly());
}

TEST_P(LaterFile, IsOpenedUntouchedForReading) {
  const auto db = open(true);
  ASSERT_TRUE(db);
  EXPECT_EQ(db->version(), 1011U);
  EXPECT_TRUE(db->isReadOnly());
}

TEST_P(LaterFile, IsOpenedUntouchedByCreate) {
  const auto db = create();
  ASSERT_TRUE(db);
  EXPECT_EQ(db->version(), 1011U);
  EXPECT_FALSE(db->isNew());
}

INSTANTIATE_TEST_SUITE_P(Compatibility, LaterFile, ::testing::Values(0, 1000, 1010));

TEST_F(Lifecycle, ALaterVersionWithoutTheCompatibilityColumnFailsWithTheTextOfSqlite) {
  makeProject("UPDATE schema_version SET version = 1011; ALTER TABLE schema_version DROP COLUMN compatibility");
  try {
    open();
    ADD_FAILURE();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "no such column: compatibility");
  }
  EXPECT_FALSE(isOpen(path));
  EXPECT_FALSE(Transaction::hasCurrent());
}

// What passes as an exception of ODB.

TEST_F(Lifecycle, AFileThatIsNoDatabaseThrows) {
  writeBytes(path, std::string(4096, 'x'));
  expectThrown<odb::database_exception>();
}

TEST_F(Lifecycle, AFileWithoutItsProjectRowThrows) {
  makeProject("DELETE FROM tessel_Project");
  expectThrown<odb::object_not_persistent>();
}

TEST_F(Lifecycle, AProjectRowWithAnotherIdDoesNotCount) {
  makeProject("UPDATE tessel_Project SET id = 2");
  expectThrown<odb::object_not_persistent>();
}

TEST_F(Lifecycle, ALockedFileThrows) {
  makeProject();
  RawFile file = raw();
  file.exec("BEGIN EXCLUSIVE");
  EXPECT_THROW(create(), odb::timeout);
  EXPECT_THROW(open(), odb::timeout);
  EXPECT_THROW(open(true), odb::timeout);
  file.exec("ROLLBACK");
  EXPECT_TRUE(open());
}

class OpenInTransaction : public Lifecycle {
protected:
  void SetUp() override { makeProject(); }

  std::string other = folder.path("other.tessel");
  std::shared_ptr<ProjectDb> otherDb = ProjectDb::create(odPath(other));
};

TEST_F(OpenInTransaction, ThrowsAndLeavesBothFilesAsTheyWere) {
  const std::string before = bytesOf(path), otherBefore = bytesOf(other);
  Transaction transaction(otherDb, Transaction::BeginCurrent);
  EXPECT_THROW(create(), odb::already_in_transaction);
  EXPECT_THROW(open(), odb::already_in_transaction);
  EXPECT_THROW(open(true), odb::already_in_transaction);
  EXPECT_EQ(bytesOf(path), before);
  EXPECT_EQ(bytesOf(other), otherBefore);
}

TEST_F(OpenInTransaction, LeavesTheCurrentTransactionInUse) {
  Transaction transaction(otherDb, Transaction::BeginCurrent);
  EXPECT_THROW(open(), odb::already_in_transaction);
  ASSERT_TRUE(Transaction::hasCurrent());
  EXPECT_EQ(&Transaction::current(), &transaction);
  otherDb->save(Site::create(L"Hill"));
  transaction.commit();
  EXPECT_EQ(RawFile(other).count("tessel_Site"), 1);
  EXPECT_FALSE(isOpen(path));
}

TEST_F(OpenInTransaction, IsNoMatterIfTheTransactionIsNotCurrent) {
  Transaction transaction(otherDb, Transaction::Begin);
  EXPECT_TRUE(open());
}

TEST_F(OpenInTransaction, ARefusedPathIsStillRefused) {
  Transaction transaction(otherDb, Transaction::BeginCurrent);
  path = folder.path("missing.tessel");
  EXPECT_FALSE(open());
}

// Read-only files.

TEST_F(Lifecycle, AFileThatMayNotBeWrittenOpensReadOnly) {
  makeProject();
  protectFromWriting(path);
  const OrdinaryUser user;
  EXPECT_TRUE(create()->isReadOnly());
  EXPECT_TRUE(open()->isReadOnly());
  EXPECT_TRUE(open(true)->isReadOnly());
  EXPECT_EQ(open()->version(), 1010U);
  EXPECT_THROW(open()->save(Site::create(L"Hill")), DatabaseException);
}

// Questions to a handle.

TEST_F(Lifecycle, AskingTheVersionNeedsNoTransaction) {
  makeProject();
  EXPECT_EQ(open()->version(), 1010U);
  EXPECT_EQ(open(true)->version(), 1010U);
}

TEST_F(Lifecycle, TheVersionIsThatOfTheOwnFileEvenInATransactionOfAnother) {
  makeProject("UPDATE schema_version SET version = 1011, compatibility = 1000");
  const auto db = open(true);
  const auto other = ProjectDb::create(odPath(folder.path("other.tessel")));
  const Transaction transaction(other, Transaction::BeginCurrent);
  EXPECT_EQ(db->version(), 1011U);
  EXPECT_EQ(other->version(), 1010U);
}

TEST_F(Lifecycle, IsReadOnlyCanBeAskedWithinATransaction) {
  makeProject();
  const auto db = open(true);
  const Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_TRUE(db->isReadOnly());
}

// Paths.

TEST_F(Lifecycle, ThePathOnDiskIsUtf8) {
  path = folder.path(u8"Gr\u00F6\u00DFe \u4E2D \U0001F3E0.tessel");
  const OdString name = odPath(path);
  const auto db = create();
  ASSERT_TRUE(db);
  EXPECT_EQ(db->filename(), name);
  EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(Lifecycle, APathThatIsNoUtf16Throws) {
  const OdString name = odPath(folder.path("x")) + OdString(u"\xD800", 1);
  EXPECT_THROW(ProjectDb::create(name), utf8::invalid_utf16);
  try {
    ProjectDb::open(name, false);
    ADD_FAILURE();
  } catch (const utf8::invalid_utf16& error) {
    EXPECT_STREQ(error.what(), "Invalid UTF-16");
  }
}

TEST_F(Lifecycle, APathOfOneOrTwoBytesIsAPlainFileName) {
  const WorkingFolder working(folder.path());
  for (const std::string name : {"a", ":", "ab", "a:"}) {
    const auto db = ProjectDb::create(odPath(name));
    ASSERT_TRUE(db) << name;
    EXPECT_EQ(db->filename(), odPath(name));
    EXPECT_TRUE(std::filesystem::exists(folder.path(name))) << name;
  }
}

// The end of a handle.

TEST_F(Lifecycle, TheFileIsClosedWithTheLastPointer) {
  auto db = create();
  const auto second = db;
  db.reset();
  EXPECT_TRUE(isOpen(path));
  EXPECT_EQ(second->count<Measure>(), 4U);
  std::weak_ptr<ProjectDb> weak = second;
  const_cast<std::shared_ptr<ProjectDb>&>(second).reset();
  EXPECT_TRUE(weak.expired());
  EXPECT_FALSE(isOpen(path));
}

TEST_F(Lifecycle, ObjectsDoNotKeepTheFileOpen) {
  auto db = create();
  const auto site = db->save(Site::create(L"Hill"));
  EXPECT_EQ(site->projectDb(), db);
  db.reset();
  EXPECT_FALSE(isOpen(path));
  EXPECT_FALSE(site->projectDb());
  EXPECT_EQ(site->name(), L"Hill");
}

TEST_F(Lifecycle, ClosingWritesNothing) {
  auto db = create();
  const std::string before = bytesOf(path);
  db->project().set_name(L"never saved");
  db.reset();
  EXPECT_EQ(bytesOf(path), before);
}

TEST_F(Lifecycle, AnOpenHandleHoldsNoLock) {
  const auto db = create();
  db->count<Site>();
  EXPECT_NO_THROW(raw().exec("BEGIN EXCLUSIVE; ROLLBACK"));
}

// The statements of an opening.

TEST_F(Lifecycle, ForeignKeysAreOffOnlyWhileTheFileIsPrepared) {
  SqlTrace sql;
  const auto db = create();
  const auto statements = sql.statements();
  const auto position = [&statements](const std::string& statement) {
    return std::find(statements.begin(), statements.end(), statement) - statements.begin();
  };
  EXPECT_LT(position("PRAGMA foreign_keys=OFF"), position("BEGIN"));
  EXPECT_LT(position("BEGIN"), position("COMMIT"));
  EXPECT_EQ(statements.back(), "ROLLBACK") << "the project record is only read";
  ASSERT_FALSE(sql.connections().empty());
  for (sqlite3* const connection : sql.connections()) EXPECT_EQ(scalar(connection, "PRAGMA foreign_keys"), "1");
}

TEST_F(Lifecycle, ForeignKeysAreOnWhenReadingOnly) {
  makeProject();
  SqlTrace sql;
  const auto db = open(true);
  ASSERT_EQ(sql.connections().size(), 1U) << "the first, writing one is closed";
  EXPECT_EQ(scalar(sql.connections()[0], "PRAGMA foreign_keys"), "1");
}

TEST_F(Lifecycle, ConnectionsForWritingAreInFullMutexMode) {
  SqlTrace sql;
  const auto db = create();
  ASSERT_FALSE(sql.connections().empty());
  for (sqlite3* const connection : sql.connections()) EXPECT_NE(sqlite3_db_mutex(connection), nullptr);
}

TEST_F(Lifecycle, OpeningReadsTheVersionOnceAndWritesNothing) {
  makeProject();
  SqlTrace sql;
  const auto db = open();
  EXPECT_EQ(sql.beginningWith("SELECT \"version\"").size(), 1U);
  for (const std::string& statement : sql.statements()) {
    EXPECT_THAT(statement, ::testing::AnyOf(StartsWith("PRAGMA"), StartsWith("SELECT"), "BEGIN", "COMMIT", "ROLLBACK"));
  }
}

}  // namespace
}  // namespace tessel::test
