// The host's transactions: how they begin and end, and what they hold.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <odb/exceptions.hxx>
#include <odb/sqlite/exceptions.hxx>

#include <tessel/exceptions.h>
#include <tessel/project.h>

#include "database/transactions.h"
#include "support/printers.h"
#include "support/sql_trace.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;

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

TEST_F(Transactions, ARefusedResetLeavesAnActiveOneActiveWithItsWork) {
  Transaction first(db, Transaction::Begin);
  first.makeCurrent();
  db->save(Site::create(L"Hill"));
  Transaction::clearCurrent();
  const Transaction second(db, Transaction::BeginCurrent);
  EXPECT_THROW(first.reset(true), AlreadyInTransaction);
  EXPECT_FALSE(first.finalized());
  EXPECT_EQ(&Transaction::current(), &second);
  first.commit();
  EXPECT_EQ(sites(), 1);
  EXPECT_EQ(&Transaction::current(), &second);
}

TEST_F(Transactions, AFinalizedOneThatWasMadeCurrentCannotBeginAsTheCurrentOne) {
  Transaction transaction(db, Transaction::NoBegin);
  transaction.makeCurrent();
  EXPECT_THROW(transaction.reset(true), AlreadyInTransaction);
  EXPECT_TRUE(transaction.finalized());
  Transaction::clearCurrent();
  transaction.reset(true);
  EXPECT_EQ(&Transaction::current(), &transaction);
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

}  // namespace
}  // namespace tessel::test
