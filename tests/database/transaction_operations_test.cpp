// How the operations of a database join the transactions of the host, and how those of several databases and threads live
// side by side.

#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <odb/exceptions.hxx>

#include <tessel/exceptions.h>

#include "database/transactions.h"
#include "support/printers.h"
#include "support/sql_trace.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;

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
