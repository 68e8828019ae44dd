// What remains of a transaction when the disk fails under it.
//
// After a full disk or an I/O error SQLite may roll back on its own. The transaction of the host then looks active, and
// whatever were written in it would be committed at once, piece by piece.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <odb/exceptions.hxx>
#include <odb/sqlite/exceptions.hxx>

#include <tessel/exceptions.h>
#include <tessel/project.h>
#include <tessel/project_db.h>
#include <tessel/spatial.h>
#include <tessel/transaction.h>
#include <tessel/units.h>

#include "database/files.h"
#include "support/faulty_vfs.h"
#include "support/printers.h"
#include "support/raw_file.h"
#include "support/recording_reactor.h"
#include "support/sql_trace.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FaultyDisk : public ::testing::Test {
protected:
  FaultyDisk() { db->save(Site::create(L"Hill")); }
  void TearDown() override { EXPECT_FALSE(Transaction::hasCurrent()); }

  /// What a healthy computer reads from the file.
  std::vector<std::string> inFile(const std::string& column, const std::string& table) {
    disk.repair();
    return RawFile(path).column("SELECT \"" + column + "\" FROM \"tessel_" + table + "\" ORDER BY 1");
  }

  void expectOnlyTheHill() {
    EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill"));
    EXPECT_THAT(inFile("name", "Building"), IsEmpty());
    EXPECT_THAT(inFile("id", "SpatialStructure"), ElementsAre("1"));
    EXPECT_EQ(RawFile(path).scalarText("PRAGMA integrity_check"), "ok");
  }

  bool isInTransaction() const {
    for (sqlite3* const connection : sql.connections()) {
      if (sqlite3_get_autocommit(connection) == 0) return true;
    }
    return false;
  }

  TempFolder folder;
  std::string path = folder.path("house.tessel");
  FaultyVfs disk{"faulty", folder.path()};
  SqlTrace sql;
  std::shared_ptr<ProjectDb> db = ProjectDb::create(L"faulty://house.tessel");
};

class FailingWrites : public FaultyDisk, public ::testing::WithParamInterface<int> {
protected:
  void fail() { disk.failWrites(GetParam()); }

  /// One write of a host's transaction succeeds, the next takes the whole transaction down; then the disk is well again.
  void loseHalfATransaction() {
    db->save(Site::create(L"Vale"));
    fail();
    EXPECT_THROW(db->save(Building::create(db->get<Site>(1), L"House")), DatabaseException);
    ASSERT_FALSE(isInTransaction()) << "SQLite was expected to roll back";
    disk.repair();
  }
};

INSTANTIATE_TEST_SUITE_P(Disk, FailingWrites, ::testing::Values(SQLITE_FULL, SQLITE_IOERR_WRITE),
                         [](const auto& fault) { return fault.param == SQLITE_FULL ? "IsFull" : "HasAnError"; });

// Operations of their own.

TEST_P(FailingWrites, AnOwnWriteIsADatabaseExceptionAndLeavesNoTrace) {
  fail();
  EXPECT_THROW(db->save(Site::create(L"Vale")), DatabaseException);
  EXPECT_THROW(db->save(Story::create(Building::create(db->get<Site>(1)))), DatabaseException);
  EXPECT_FALSE(isInTransaction());
  expectOnlyTheHill();
}

TEST_P(FailingWrites, TheSameHandleWritesAgainLater) {
  fail();
  EXPECT_THROW(db->save(Site::create(L"Vale")), DatabaseException);
  disk.repair();
  db->save(Site::create(L"Shore"));
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill", "Shore"));
}

TEST_P(FailingWrites, TheHandleCanBeClosed) {
  fail();
  EXPECT_THROW(db->save(Site::create(L"Vale")), DatabaseException);
  db.reset();
  EXPECT_FALSE(isOpen(path));
}

TEST_P(FailingWrites, AtEveryPointOfASaveTheFileKeepsAllOrNothing) {
  const auto site = db->get<Site>(1);
  for (int pass = 0; pass < 60; ++pass) {
    SCOPED_TRACE(pass);
    const OdString name = OdString::format(L"House %d", pass);
    disk.letPass(pass);
    fail();
    bool saved = true;
    try {
      db->save(Story::create(Building::create(site, name), L"Ground", 0));
    } catch (const DatabaseException&) {
      saved = false;
    }
    disk.repair();
    EXPECT_FALSE(isInTransaction());
    RawFile file(path);
    EXPECT_EQ(file.scalarInt("SELECT count(*) FROM tessel_Building WHERE name = '" + name.toUtf8() + "'"), saved);
    EXPECT_EQ(file.count("tessel_Building"), file.count("tessel_Story"));
    EXPECT_EQ(file.scalarText("PRAGMA integrity_check"), "ok");
    if (saved) break;
  }
  EXPECT_EQ(RawFile(path).count("tessel_Building"), 1) << "in the end all writes pass";
}

// Operations that have joined a transaction of the host.

TEST_P(FailingWrites, TheTransactionLooksActiveAndIsGone) {
  Transaction transaction(db, Transaction::BeginCurrent);
  loseHalfATransaction();
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(&Transaction::current(), &transaction);
  expectOnlyTheHill();
}

TEST_P(FailingWrites, EveryFurtherWriteIsAForcedRollback) {
  const TsSmartPtr<Site> hill = db->get<Site>(1);
  const TsSmartPtr<const Measure> length = db->get<Measure>(NameKey(L"LENGTH"));
  Transaction transaction(db, Transaction::BeginCurrent);
  loseHalfATransaction();
  const std::string before = bytesOf(path);

  EXPECT_THROW(db->save(Site::create(L"Shore")), ForcedRollback);
  EXPECT_THROW(db->save(TsSmartPtr<const Site>(Site::create(L"Shore"))), ForcedRollback);
  EXPECT_THROW(Site::create(L"Shore")->save(db), ForcedRollback);
  hill->set_town(L"Bergen");
  EXPECT_THROW(hill->save(), ForcedRollback);
  db->project().set_name(L"Harbour");
  EXPECT_THROW(db->saveProject(), ForcedRollback);
  EXPECT_THROW(db->setDefaultUnit(Unit::create(L"m", 1, length)), ForcedRollback);
  EXPECT_THROW(db->remove(hill), ForcedRollback);
  EXPECT_THROW(db->remove<Site>(1), ForcedRollback);
  EXPECT_THROW(db->purge(), ForcedRollback);

  EXPECT_EQ(bytesOf(path), before);
  expectOnlyTheHill();
}

TEST_P(FailingWrites, ACommitOfWhatIsGonePassesTheExceptionOfOdb) {
  Transaction transaction(db, Transaction::BeginCurrent);
  loseHalfATransaction();
  EXPECT_THROW(transaction.commit(), odb::database_exception);
  EXPECT_TRUE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
  expectOnlyTheHill();
}

TEST_P(FailingWrites, ARollbackOfWhatIsGonePassesTheExceptionOfOdbAndTheObjectBeginsAnew) {
  Transaction transaction(db, Transaction::BeginCurrent);
  loseHalfATransaction();
  EXPECT_THROW(transaction.rollback(), odb::database_exception);
  EXPECT_TRUE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
  transaction.reset(true);
  db->save(Site::create(L"Shore"));
  transaction.commit();
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill", "Shore"));
}

TEST_P(FailingWrites, WhatIsGoneCanBeDestroyedAndTheWorkDoneAgain) {
  {
    const Transaction transaction(db, Transaction::BeginCurrent);
    loseHalfATransaction();
  }
  EXPECT_FALSE(Transaction::hasCurrent());
  Transaction again(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Vale"));
  db->save(Building::create(db->get<Site>(1), L"House"));
  again.commit();
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill", "Vale"));
  EXPECT_THAT(inFile("name", "Building"), ElementsAre("House"));
}

TEST_P(FailingWrites, TheLastOwnerOfTheDatabaseCanBeDestroyed) {
  {
    const Transaction transaction(db, Transaction::BeginCurrent);
    loseHalfATransaction();
    db.reset();
  }
  EXPECT_FALSE(isOpen(path));
  expectOnlyTheHill();
}

// A reactor that swallows the failure of a save of its own must not get the rest of the outer save committed.
TEST_P(FailingWrites, AFailureThatAReactorSwallowsEndsTheOuterSaveToo) {
  RecordingReactor reactor(db);
  bool once = true;
  reactor.whenSaved = [&](const RecordingReactor::Saved&) {
    if (!std::exchange(once, false)) return;
    fail();
    EXPECT_THROW(db->save(Measure::create(L"TIME", 0, 0, 1, 0, 0, 0, 0)), DatabaseException);
    disk.repair();
  };
  const auto building = Building::create(Site::create(L"Vale"), L"House");
  EXPECT_THROW(db->save(building), ForcedRollback);
  expectOnlyTheHill();
}

// Commits.

TEST_F(FaultyDisk, AnOwnCommitThatFailsIsADatabaseExceptionAndLeavesNoTrace) {
  disk.failSyncs(SQLITE_IOERR_FSYNC);
  EXPECT_THROW(db->save(Site::create(L"Vale")), DatabaseException);
  EXPECT_FALSE(isInTransaction());
  expectOnlyTheHill();
  db->save(Site::create(L"Shore"));
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill", "Shore"));
}

TEST_F(FaultyDisk, ACommitOfTheHostThatFailsLeavesNoTraceAndNoTransaction) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Vale"));
  disk.failSyncs(SQLITE_IOERR_FSYNC);
  EXPECT_THROW(transaction.commit(), odb::database_exception);
  EXPECT_TRUE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_FALSE(isInTransaction());
  expectOnlyTheHill();
  transaction.reset(true);
  db->save(Site::create(L"Shore"));
  transaction.commit();
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill", "Shore"));
}

// Reads.

TEST_F(FaultyDisk, AReadThatFailsIsADatabaseException) {
  disk.failReads(SQLITE_IOERR_READ);
  std::vector<TsSmartPtr<Site>> sites;
  EXPECT_THROW(db->get<Site>(1), DatabaseException);
  EXPECT_THROW(db->get<Site>(NameKey(L"Hill")), DatabaseException);
  EXPECT_THROW(db->get(sites), DatabaseException);
  EXPECT_THROW(db->count<Site>(), DatabaseException);
  EXPECT_THAT(sites, IsEmpty());
  disk.repair();
  EXPECT_EQ(db->count<Site>(), 1U);
}

TEST_F(FaultyDisk, AFailureWhileAFileIsMadePassesTheExceptionOfOdbAndLeavesNoProject) {
  disk.failWrites(SQLITE_FULL);
  EXPECT_THROW(ProjectDb::create(L"faulty://new.tessel"), odb::database_exception);
  disk.repair();
  EXPECT_EQ(bytesOf(folder.path("new.tessel")), "");
  EXPECT_FALSE(isOpen(folder.path("new.tessel")));
  EXPECT_TRUE(ProjectDb::create(L"faulty://new.tessel")->isNew());
}

TEST_F(FaultyDisk, AFailureAtEveryPointOfMakingAFileLeavesNoneOrAWholeOne) {
  for (int pass = 0;; ++pass) {
    SCOPED_TRACE(pass);
    ASSERT_LT(pass, 500);
    const std::string name = "new" + std::to_string(pass) + ".tessel";
    disk.letPass(pass);
    disk.failWrites(SQLITE_FULL);
    std::shared_ptr<ProjectDb> made;
    try {
      made = ProjectDb::create(odPath("faulty://" + name));
    } catch (const odb::database_exception&) {
    } catch (const std::runtime_error&) {
      // What goes past ODB.
    }
    disk.repair();
    if (made) break;
    EXPECT_FALSE(isOpen(folder.path(name)));
    EXPECT_FALSE(ProjectDb::open(odPath("faulty://" + name), false)) << "nothing of it is a project";
  }
}

// Under a running look-up.

/// SQLite lets look-ups run on after a rollback, unless that takes back a change of the schema.
class RollsBackOnFailedLoad : public ProjectDb::Reactor {
public:
  explicit RollsBackOnFailedLoad(const SqlTrace& sql) : sql_(sql) {}
  void onLoadFailed(const std::shared_ptr<const ProjectDb>&, const ObjectKey&, const OdString&) override {
    sql_.onEachConnection("CREATE TABLE passing (x); ROLLBACK");
  }

private:
  const SqlTrace& sql_;
};

TEST_F(FaultyDisk, ARollbackUnderARunningLookupIsAForcedRollback) {
  for (const wchar_t* name : {L"A", L"B", L"C"}) db->save(Building::create(db->get<Site>(1), name));
  RawFile(path).exec("UPDATE tessel_Building SET site_id = 99 WHERE name = 'A'");
  RollsBackOnFailedLoad reactor(sql);
  db->setReactor(&reactor);
  Transaction transaction(db, Transaction::BeginCurrent);
  std::vector<TsSmartPtr<SpatialStructure>> objects;
  EXPECT_THROW(db->get(objects), ForcedRollback);
  EXPECT_THROW(db->save(Site::create(L"Vale")), ForcedRollback);
  db->setReactor(nullptr);
}

}  // namespace
}  // namespace tessel::test
