// Copies into a file whose disk fails.
//
// After a full disk or an I/O error SQLite may roll back on its own. Rows that were written without a look at that would
// be committed at once, one by one.

#include <gmock/gmock.h>

#include <odb/exceptions.hxx>

#include <tessel/project.h>

#include "operations/copying.h"
#include "support/faulty_vfs.h"

namespace tessel::test {
namespace {

class CopyToFaultyDisk : public ::testing::TestWithParam<int> {
protected:
  CopyToFaultyDisk() {
    const auto building = Building::create(Site::create(L"Hill"), L"House");
    source.db->save(Story::create(building, L"Ground", 2.5));
    useUnit(source.db, L"LENGTH", L"m", 1);
    useUnit(source.db, L"VOLUME", L"l", 0.001);
    source.db->project().set_name(L"Harbour");
    source.db->saveProject();
    // The same unit is here already, so that the rows which use it could stand alone.
    db->save(unitOf(db, L"LENGTH", L"m", 1));
    db->save(unitOf(db, L"VOLUME", L"l", 0.001));
  }
  void TearDown() override { EXPECT_FALSE(Transaction::hasCurrent()); }

  void fail() { disk.failWrites(GetParam()); }

  /// Lets the disk fail under a save of the reactor, which takes no notice, once an object of the class was saved.
  void failUnnoticedAt(ObjectType type, int number = 1) {
    reactor.whenSaved = [this, type, number, seen = 0](const Saved& saved) mutable {
      if (saved.key.type != type || ++seen != number) return;
      fail();
      EXPECT_THROW(db->save(EntityType::create(L"Door")), DatabaseException);
      disk.repair();
    };
  }

  TempFolder folder;
  std::string path = folder.path("copy.tessel");
  FaultyVfs disk{"faulty-copy", folder.path()};
  SampleProject source;
  std::shared_ptr<ProjectDb> db = ProjectDb::create(L"faulty-copy://copy.tessel");
  RecordingReactor reactor{db};
};

INSTANTIATE_TEST_SUITE_P(Disk, CopyToFaultyDisk, ::testing::Values(SQLITE_FULL, SQLITE_IOERR_WRITE),
                         [](const auto& fault) { return fault.param == SQLITE_FULL ? "IsFull" : "HasAnError"; });

TEST_P(CopyToFaultyDisk, AtEveryPointTheFileKeepsAllOrNothing) {
  int failures = 0;
  for (bool copied = false; !copied;) {
    SCOPED_TRACE(failures);
    ASSERT_LT(failures, 200);
    IdMapping mapping(db);
    disk.letPass(failures);
    fail();
    Transaction transaction(db, Transaction::BeginCurrent);
    try {
      db->copyMeta(source.db, mapping);
      db->copyAll(source.db, mapping);
      transaction.commit();
      copied = true;
    } catch (const DatabaseException&) {
      ++failures;
    } catch (const odb::exception&) {
      ++failures;
    }
    disk.repair();
    if (!copied) {
      if (!transaction.finalized()) {
        try {
          transaction.rollback();
        } catch (const odb::exception&) {
          // It has gone already.
        }
      }
      EXPECT_EQ(RawFile(path).count("tessel_Story"), 0);
      EXPECT_EQ(RawFile(path).count("tessel_ColumnUnit"), 0);
    }
  }
  EXPECT_GT(failures, 1);
  EXPECT_EQ(RawFile(path).count("tessel_Story"), 1);
  EXPECT_EQ(RawFile(path).count("tessel_DefaultUnit"), 2);
  EXPECT_EQ(RawFile(path).scalarText("PRAGMA integrity_check"), "ok");
}

TEST_P(CopyToFaultyDisk, ACopyThatFailsLeavesNoTraceAndSucceedsLater) {
  fail();
  EXPECT_THROW(db->copyAll(source.db), DatabaseException);
  EXPECT_THROW(db->copyMeta(source.db), DatabaseException);
  disk.repair();
  EXPECT_EQ(RawFile(path).count("tessel_Site"), 0);
  db->copyAll(source.db);
  EXPECT_EQ(RawFile(path).count("tessel_DefaultUnit"), 2);
}

// A reactor that swallows the failure of a save of its own must not get pieces of the copy committed.

TEST_P(CopyToFaultyDisk, AFailureThatAReactorSwallowsEndsTheCopyOfTheObjectsToo) {
  RawFile(source.path()).exec("DELETE FROM tessel_ColumnUnit");
  failUnnoticedAt(ObjectType::Site);
  EXPECT_THROW(db->copyAll(source.db), ForcedRollback);
  EXPECT_EQ(RawFile(path).count("tessel_SpatialStructure"), 0);
}

TEST_P(CopyToFaultyDisk, AFailureAtTheLastObjectEndsTheCopyBeforeTheDefaultUnits) {
  failUnnoticedAt(ObjectType::Measure, 4);
  EXPECT_THROW(db->copyAll(source.db), ForcedRollback);
  EXPECT_EQ(RawFile(path).count("tessel_SpatialStructure"), 0);
  EXPECT_EQ(RawFile(path).count("tessel_DefaultUnit"), 0);
}

TEST_P(CopyToFaultyDisk, AFailureAtAUnitEndsTheCopyBeforeTheColumnUnits) {
  failUnnoticedAt(ObjectType::Unit);
  EXPECT_THROW(db->copyMeta(source.db), ForcedRollback);
  EXPECT_EQ(RawFile(path).count("tessel_ColumnUnit"), 0);
  EXPECT_EQ(RawFile(path).scalarText("SELECT name FROM tessel_Project"), "");
}

TEST_P(CopyToFaultyDisk, AFailureAtTheSiteEndsTheCopyBeforeTheRecord) {
  source.db->project().set_site(source.db->get<Site>(NameKey(L"Hill")));
  db->save(Site::create(L"Hill"));
  reactor.otherwise(SaveResolution::Kept);
  failUnnoticedAt(ObjectType::Site);
  RawFile(source.path()).exec("DELETE FROM tessel_ColumnUnit");
  EXPECT_THROW(db->copyMeta(source.db), ForcedRollback);
  EXPECT_EQ(RawFile(path).scalarText("SELECT name FROM tessel_Project"), "");
  EXPECT_EQ(RawFile(path).scalarText("SELECT site_id FROM tessel_Project"), "NULL");
}

TEST_P(CopyToFaultyDisk, WhatIsGoneTakesNoCopyAnyMore) {
  Transaction transaction(db, Transaction::BeginCurrent);
  fail();
  EXPECT_THROW(db->save(EntityType::create(L"Door")), DatabaseException);
  disk.repair();
  EXPECT_THROW(db->copyAll(source.db), ForcedRollback);
  EXPECT_THROW(db->copyAll<Site>(source.db), ForcedRollback);
  EXPECT_THROW(db->copyMeta(source.db), ForcedRollback);
  EXPECT_EQ(RawFile(path).count("tessel_Site"), 0);
}

}  // namespace
}  // namespace tessel::test
