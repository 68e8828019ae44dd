// The host's transactions, and how the operations of a database join them.

#include <thread>

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
#include "support/printers.h"
#include "support/raw_file.h"
#include "support/sql_trace.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Transactions : public ::testing::Test {
protected:
  void TearDown() override { EXPECT_FALSE(Transaction::hasCurrent()); }

  // What another connection sees, that is what has been committed.
  static long long sitesIn(const std::string& file) { return RawFile(file).count("tessel_Site"); }
  long long sites() const { return sitesIn(path); }

  // A building whose site has no row: SQLite notices at the commit.
  static void saveDangling(const std::shared_ptr<ProjectDb>& target) {
    target->save(Building::create(Site::create(), L"House"));
  }

  TempFolder folder;
  std::string path = folder.path("house.tessel");
  std::shared_ptr<ProjectDb> db = ProjectDb::create(odPath(path));
};

// Beginning.

TEST_F(Transactions, WithoutBeginOneStandsFinalized) {
  const Transaction transaction(db, Transaction::NoBegin);
  EXPECT_TRUE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_EQ(transaction.projectDb(), db);
}

TEST_F(Transactions, ResetBeginsAndMakesCurrent) {
  Transaction transaction(db, Transaction::NoBegin);
  transaction.reset(true);
  EXPECT_FALSE(transaction.finalized());
  ASSERT_TRUE(Transaction::hasCurrent());
  EXPECT_EQ(&Transaction::current(), &transaction);
}

TEST_F(Transactions, ResetBeginsWithoutMakingCurrent) {
  Transaction transaction(db, Transaction::NoBegin);
  transaction.reset(false);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(Transactions, BeginIsNotCurrent) {
  const Transaction transaction(db, Transaction::Begin);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_EQ(transaction.projectDb(), db);
}

TEST_F(Transactions, BeginCurrentIsCurrent) {
  const Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_FALSE(transaction.finalized());
  ASSERT_TRUE(Transaction::hasCurrent());
  EXPECT_EQ(&Transaction::current(), &transaction);
}

TEST_F(Transactions, AnyOtherValueBeginsToo) {
  const Transaction transaction(db, static_cast<Transaction::Init>(3));
  EXPECT_FALSE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(Transactions, BeginsInTheFileAtOnce) {
  SqlTrace sql;
  const auto traced = ProjectDb::open(odPath(path), false);
  sql.clear();
  const Transaction transaction(traced, Transaction::Begin);
  EXPECT_THAT(sql.statements(), ElementsAre("BEGIN"));
}

// One current transaction for a thread.

TEST_F(Transactions, ASecondCurrentOneIsRefused) {
  Transaction first(db, Transaction::BeginCurrent);
  try {
    const Transaction second(db, Transaction::BeginCurrent);
    ADD_FAILURE();
  } catch (const TransactionException& error) {
    EXPECT_NE(dynamic_cast<const AlreadyInTransaction*>(&error), nullptr);
    EXPECT_STREQ(error.what(), L"Transaction already in progress in this thread");
  }
  EXPECT_EQ(&Transaction::current(), &first);
  db->save(Site::create(L"Hill"));
  first.commit();
  EXPECT_EQ(sites(), 1);
}

TEST_F(Transactions, ASecondCurrentOneIsRefusedForAnotherDatabaseToo) {
  const auto other = ProjectDb::create(odPath(folder.path("other.tessel")));
  const Transaction first(db, Transaction::BeginCurrent);
  EXPECT_THROW(Transaction(other, Transaction::BeginCurrent), AlreadyInTransaction);
}

TEST_F(Transactions, ARefusedResetLeavesTheObjectFinalizedAndUsable) {
  const Transaction first(db, Transaction::BeginCurrent);
  Transaction second(db, Transaction::NoBegin);
  EXPECT_THROW(second.reset(true), AlreadyInTransaction);
  EXPECT_TRUE(second.finalized());
  EXPECT_EQ(&Transaction::current(), &first);
  second.reset(false);
  EXPECT_FALSE(second.finalized());
}

TEST_F(Transactions, BesideTheCurrentOneAnotherMayBegin) {
  const Transaction first(db, Transaction::BeginCurrent);
  const Transaction second(db, Transaction::Begin);
  EXPECT_FALSE(second.finalized());
  EXPECT_EQ(&Transaction::current(), &first);
}

TEST_F(Transactions, WithoutACurrentOneTheExceptionOfOdbPasses) {
  EXPECT_THROW(Transaction::current(), odb::not_in_transaction);
}

TEST_F(Transactions, ClearCurrentLeavesTheTransactionOpen) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  Transaction::clearCurrent();
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_FALSE(transaction.finalized());
  transaction.commit();
  EXPECT_EQ(sites(), 1);
}

TEST_F(Transactions, ClearCurrentWithoutACurrentOneDoesNothing) {
  Transaction::clearCurrent();
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(Transactions, MakeCurrentPutsItInThePlaceOfAnother) {
  Transaction first(db, Transaction::BeginCurrent);
  Transaction second(db, Transaction::Begin);
  second.makeCurrent();
  EXPECT_EQ(&Transaction::current(), &second);
  Transaction::current(first);
  EXPECT_EQ(&Transaction::current(), &first);
  EXPECT_FALSE(second.finalized());
}

// Ending.

TEST_F(Transactions, CommitIsDurableAndFinalizes) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(sites(), 0) << "a write within the host's transaction does not commit";
  transaction.commit();
  EXPECT_EQ(sites(), 1);
  EXPECT_TRUE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(Transactions, RollbackTakesTheWritesBack) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(db->count<Site>(), 1U);
  transaction.rollback();
  EXPECT_TRUE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_EQ(db->count<Site>(), 0U);
  EXPECT_EQ(sites(), 0);
}

TEST_F(Transactions, RollbackDoesNotRestoreObjects) {
  const auto site = Site::create(L"Hill");
  db->project().set_name(L"Harbour");
  {
    Transaction transaction(db, Transaction::BeginCurrent);
    db->save(site);
    db->saveProject();
    transaction.rollback();
  }
  EXPECT_NE(site->id(), 0U);
  EXPECT_FALSE(site->isDirty());
  EXPECT_EQ(site->projectDb(), db);
  EXPECT_EQ(db->project().name(), L"Harbour");
  EXPECT_EQ(RawFile(path).scalarText("SELECT name FROM tessel_Project"), "");
}

TEST_F(Transactions, WhatIsFinishedCannotBeFinishedAgain) {
  Transaction transaction(db, Transaction::BeginCurrent);
  transaction.commit();
  EXPECT_THROW(transaction.commit(), odb::transaction_already_finalized);
  EXPECT_THROW(transaction.rollback(), odb::transaction_already_finalized);
  transaction.reset(false);
  transaction.rollback();
  EXPECT_THROW(transaction.commit(), odb::transaction_already_finalized);
  EXPECT_THROW(transaction.rollback(), odb::transaction_already_finalized);
}

TEST_F(Transactions, WhatNeverBeganCannotBeFinished) {
  Transaction transaction(db, Transaction::NoBegin);
  EXPECT_THROW(transaction.commit(), odb::transaction_already_finalized);
  EXPECT_THROW(transaction.rollback(), odb::transaction_already_finalized);
}

TEST_F(Transactions, AFinishedOneBeginsAnewByReset) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  transaction.commit();
  transaction.reset(true);
  db->save(Site::create(L"Vale"));
  transaction.rollback();
  transaction.reset(true);
  db->save(Site::create(L"Shore"));
  transaction.commit();
  EXPECT_THAT(RawFile(path).column("SELECT name FROM tessel_Site ORDER BY name"), ElementsAre("Hill", "Shore"));
}

TEST_F(Transactions, ResetOfAnActiveOneRollsBackAndBeginsAnew) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  transaction.reset(true);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(db->count<Site>(), 0U);
}

TEST_F(Transactions, DestroyingRollsBack) {
  {
    const Transaction transaction(db, Transaction::BeginCurrent);
    db->save(Site::create(L"Hill"));
  }
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_EQ(db->count<Site>(), 0U);
  EXPECT_NO_THROW(RawFile(path).exec("BEGIN EXCLUSIVE; ROLLBACK")) << "no lock is left";
}

TEST_F(Transactions, AnExceptionOnItsWayRollsBack) {
  EXPECT_THROW(
    {
      const Transaction transaction(db, Transaction::BeginCurrent);
      db->save(Site::create(L"Hill"));
      throw std::runtime_error("host");
    },
    std::runtime_error);
  EXPECT_EQ(sites(), 0);
}

TEST_F(Transactions, DestroyingOneThatIsNotCurrentLeavesTheCurrentOne) {
  Transaction first(db, Transaction::BeginCurrent);
  { const Transaction second(db, Transaction::Begin); }
  EXPECT_EQ(&Transaction::current(), &first);
  EXPECT_FALSE(first.finalized());
}

TEST_F(Transactions, ACommitThatFailsPassesTheExceptionOfOdbAndRollsBack) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  saveDangling(db);
  EXPECT_THROW(transaction.commit(), odb::database_exception);
  EXPECT_TRUE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_EQ(sites(), 0);
  EXPECT_NO_THROW(RawFile(path).exec("BEGIN EXCLUSIVE; ROLLBACK"));
}

TEST_F(Transactions, AfterACommitThatFailedTheObjectBeginsAnew) {
  Transaction transaction(db, Transaction::BeginCurrent);
  saveDangling(db);
  EXPECT_THROW(transaction.commit(), odb::database_exception);
  transaction.reset(true);
  db->save(Site::create(L"Hill"));
  transaction.commit();
  EXPECT_EQ(sites(), 1);
}

// Holding the database.

TEST_F(Transactions, ATransactionKeepsItsDatabaseOpen) {
  auto transaction = std::make_unique<Transaction>(db, Transaction::BeginCurrent);
  db.reset();
  transaction->projectDb()->save(Site::create(L"Hill"));
  transaction->commit();
  EXPECT_TRUE(isOpen(path));
  transaction.reset();
  EXPECT_FALSE(isOpen(path));
  EXPECT_EQ(sites(), 1);
}

TEST_F(Transactions, TheLastOwnerRollsBackAndClosesTheFile) {
  {
    const Transaction transaction(db, Transaction::BeginCurrent);
    db.reset();
    transaction.projectDb()->save(Site::create(L"Hill"));
  }
  EXPECT_FALSE(isOpen(path));
  EXPECT_EQ(sites(), 0);
}

TEST_F(Transactions, TheLastOwnerClosesTheFileWithoutBeingCurrent) {
  {
    const Transaction transaction(db, Transaction::Begin);
    db.reset();
  }
  EXPECT_FALSE(isOpen(path));
}

// The connection stays with the transaction then.
TEST_F(Transactions, TheLastOwnerClosesTheFileAfterACommitThatFailed) {
  {
    Transaction transaction(db, Transaction::BeginCurrent);
    saveDangling(db);
    db.reset();
    EXPECT_THROW(transaction.commit(), odb::database_exception);
  }
  EXPECT_FALSE(isOpen(path));
}

TEST_F(Transactions, TheLastOwnerClosesTheFileAfterSqliteHasRolledBack) {
  db.reset();
  SqlTrace sql;
  {
    const Transaction transaction(ProjectDb::open(odPath(path), false), Transaction::BeginCurrent);
    sql.onEachConnection("ROLLBACK");
  }
  EXPECT_FALSE(isOpen(path));
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(Transactions, TheLastOwnerClosesTheFileAfterARollbackThatFailed) {
  db.reset();
  SqlTrace sql;
  {
    Transaction transaction(ProjectDb::open(odPath(path), false), Transaction::BeginCurrent);
    sql.onEachConnection("ROLLBACK");
    EXPECT_THROW(transaction.rollback(), odb::database_exception);
    EXPECT_TRUE(transaction.finalized());
  }
  EXPECT_FALSE(isOpen(path));
}

// Joining.

TEST_F(Transactions, OperationsBesideATransactionThatIsNotCurrentCommitAtOnce) {
  Transaction transaction(db, Transaction::Begin);
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(sites(), 1);
  transaction.rollback();
  EXPECT_EQ(sites(), 1);
}

TEST_F(Transactions, OperationsWithoutATransactionCommitAtOnce) {
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(sites(), 1);
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(Transactions, OperationsOfTheSameHandleSeeWhatIsNotCommitted) {
  const Transaction transaction(db, Transaction::BeginCurrent);
  const auto site = db->save(Site::create(L"Hill"));
  EXPECT_TRUE(db->get<Site>(site->id()));
  EXPECT_TRUE(db->get<Site>(NameKey(L"Hill")));
  EXPECT_EQ(db->count<Site>(), 1U);
}

TEST_F(Transactions, AFailedOperationLeavesTheHostsTransactionActive) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  EXPECT_THROW(db->save(Site::create(L"Hill")), ObjectNotUnique);
  EXPECT_THROW(db->get<Site>(99), odb::object_not_persistent);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(&Transaction::current(), &transaction);
  db->save(Site::create(L"Vale"));
  transaction.commit();
  EXPECT_EQ(sites(), 2);
}

TEST_F(Transactions, AFailedOperationOfItsOwnLeavesNoTransaction) {
  db->save(Site::create(L"Hill"));
  EXPECT_THROW(db->save(Site::create(L"Hill")), ObjectNotUnique);
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_NO_THROW(RawFile(path).exec("BEGIN EXCLUSIVE; ROLLBACK"));
}

TEST_F(Transactions, AnOwnCommitThatFailsIsADatabaseExceptionAndLeavesNoTrace) {
  EXPECT_THROW(saveDangling(db), DatabaseException);
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_EQ(RawFile(path).count("tessel_SpatialStructure"), 0);
  EXPECT_NO_THROW(RawFile(path).exec("BEGIN EXCLUSIVE; ROLLBACK"));
}

class TracedTransactions : public Transactions {
protected:
  void SetUp() override { db->save(Site::create(L"Hill")); }

  SqlTrace sql;
  std::shared_ptr<ProjectDb> traced = ProjectDb::open(odPath(path), false);
};

TEST_F(TracedTransactions, AReadOfItsOwnBeginsAndNeverCommits) {
  sql.clear();
  traced->count<Site>();
  EXPECT_THAT(sql.verbs(), ElementsAre("BEGIN", "SELECT", "ROLLBACK"));
}

TEST_F(TracedTransactions, AWriteOfItsOwnCommits) {
  sql.clear();
  traced->save(Site::create(L"Vale"));
  EXPECT_THAT(sql.verbs(), ElementsAre("BEGIN", "SAVEPOINT", "INSERT", "INSERT", "RELEASE", "COMMIT"));
}

TEST_F(TracedTransactions, JoiningIssuesNoStatement) {
  Transaction transaction(traced, Transaction::BeginCurrent);
  sql.clear();
  traced->count<Site>();
  EXPECT_THAT(sql.verbs(), ElementsAre("SELECT"));
  sql.clear();
  traced->save(Site::create(L"Vale"));
  EXPECT_THAT(sql.verbs(), ElementsAre("SAVEPOINT", "INSERT", "INSERT", "RELEASE"));
  sql.clear();
  transaction.commit();
  EXPECT_THAT(sql.statements(), ElementsAre("COMMIT"));
}

TEST_F(TracedTransactions, AFailedWriteOfItsOwnRollsBack) {
  sql.clear();
  EXPECT_THROW(traced->save(Site::create(L"Hill")), ObjectNotUnique);
  EXPECT_EQ(sql.beginningWith("COMMIT").size(), 0U);
  EXPECT_EQ(sql.statements().back(), "ROLLBACK");
}

// Two databases.

class TwoDatabases : public Transactions {
protected:
  std::string otherPath = folder.path("other.tessel");
  std::shared_ptr<ProjectDb> other = ProjectDb::create(odPath(otherPath));
};

TEST_F(TwoDatabases, AWriteToTheOtherCommitsAtOnceAndTheCurrentOneComesBack) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  other->save(Site::create(L"Vale"));
  EXPECT_EQ(sitesIn(otherPath), 1);
  EXPECT_EQ(sites(), 0);
  ASSERT_TRUE(Transaction::hasCurrent());
  EXPECT_EQ(&Transaction::current(), &transaction);
  transaction.rollback();
  EXPECT_EQ(sitesIn(otherPath), 1);
  EXPECT_EQ(sites(), 0);
}

TEST_F(TwoDatabases, AReadOfTheOtherPutsTheCurrentOneBack) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(other->count<Site>(), 0U);
  EXPECT_FALSE(other->get<Site>(NameKey(L"Hill")));
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_EQ(db->count<Site>(), 1U);
}

TEST_F(TwoDatabases, AFailureInTheOtherPutsTheCurrentOneBack) {
  other->save(Site::create(L"Vale"));
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THROW(other->save(Site::create(L"Vale")), ObjectNotUnique);
  EXPECT_THROW(saveDangling(other), DatabaseException);
  EXPECT_THROW(other->get<Site>(99), odb::object_not_persistent);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_FALSE(transaction.finalized());
}

TEST_F(TwoDatabases, TwoHandlesOnOneFileAreTwoDatabases) {
  const auto second = ProjectDb::open(odPath(path), false);
  Transaction transaction(db, Transaction::BeginCurrent);
  second->save(Site::create(L"Hill"));
  EXPECT_EQ(sites(), 1) << "the second handle has a transaction of its own";
  EXPECT_EQ(&Transaction::current(), &transaction);
}

TEST_F(TwoDatabases, TransactionsOfBothTakeTurnsAsTheCurrentOne) {
  Transaction first(db, Transaction::BeginCurrent);
  Transaction second(other, Transaction::Begin);
  db->save(Site::create(L"Hill"));
  second.makeCurrent();
  other->save(Site::create(L"Vale"));
  first.makeCurrent();
  db->save(Site::create(L"Shore"));
  first.commit();
  EXPECT_FALSE(Transaction::hasCurrent());
  second.makeCurrent();
  second.commit();
  EXPECT_EQ(sites(), 2);
  EXPECT_EQ(sitesIn(otherPath), 1);
}

// A busy file.

TEST_F(Transactions, AWriteToALockedFileIsADatabaseExceptionAndTheTransactionStays) {
  RawFile blocker(path);
  blocker.exec("BEGIN IMMEDIATE");
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THROW(db->save(Site::create(L"Hill")), DatabaseException);
  EXPECT_FALSE(transaction.finalized());
  blocker.exec("ROLLBACK");
  db->save(Site::create(L"Hill"));
  transaction.commit();
  EXPECT_EQ(sites(), 1);
}

// The second connection cannot be opened, for the file has been moved away under the first.
TEST_F(Transactions, ABeginThatFailsUnderAnOperationIsADatabaseException) {
  db = ProjectDb::open(odPath(path), false);
  const Transaction busy(db, Transaction::Begin);
  std::filesystem::rename(path, path + ".moved");
  EXPECT_THROW(db->save(Site::create(L"Hill")), DatabaseException);
  EXPECT_THROW(db->count<Site>(), DatabaseException);
  EXPECT_THROW(db->get<Site>(NameKey(L"Hill")), DatabaseException);
  EXPECT_THROW(db->get<Site>(1), DatabaseException);
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(TwoDatabases, ABeginThatFailsPutsTheCurrentOneBack) {
  db = ProjectDb::open(odPath(path), false);
  const Transaction busy(db, Transaction::Begin);
  Transaction transaction(other, Transaction::BeginCurrent);
  std::filesystem::rename(path, path + ".moved");
  EXPECT_THROW(db->count<Site>(), DatabaseException);
  ASSERT_TRUE(Transaction::hasCurrent());
  EXPECT_EQ(&Transaction::current(), &transaction);
}

// Threads.

TEST_F(Transactions, TheCurrentOneIsThatOfTheThread) {
  const Transaction transaction(db, Transaction::BeginCurrent);
  bool hasCurrent = true;
  std::thread([&hasCurrent] {
    hasCurrent = Transaction::hasCurrent();
    Transaction::clearCurrent();
  }).join();
  EXPECT_FALSE(hasCurrent);
  EXPECT_TRUE(Transaction::hasCurrent());
}

TEST_F(Transactions, ATransactionCanBeHandedToAnotherThread) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  Transaction::clearCurrent();
  std::thread([this, &transaction] {
    transaction.makeCurrent();
    db->save(Site::create(L"Vale"));
    transaction.commit();
  }).join();
  EXPECT_TRUE(transaction.finalized());
  EXPECT_EQ(sites(), 2);
}

TEST_F(TwoDatabases, TwoThreadsWorkOnTwoHandlesAtOnce) {
  const auto work = [](const std::shared_ptr<ProjectDb>& target) {
    for (int i = 0; i < 20; ++i) {
      Transaction transaction(target, Transaction::BeginCurrent);
      const auto site = target->save(Site::create(OdString::format(L"Site %d", i)));
      target->save(Building::create(site, L"House"));
      EXPECT_TRUE(target->get<Site>(NameKey(site->name())));
      if (i % 2 == 0) transaction.commit();
    }
  };
  std::thread first(work, db);
  std::thread second(work, other);
  first.join();
  second.join();
  EXPECT_EQ(sites(), 10);
  EXPECT_EQ(sitesIn(otherPath), 10);
}

}  // namespace
}  // namespace tessel::test
