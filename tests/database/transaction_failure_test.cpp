// Files that are locked, and files that are gone when a transaction is to begin.

#include <filesystem>

#include <gtest/gtest.h>

#include <odb/sqlite/exceptions.hxx>

#include <tessel/exceptions.h>

#include "database/transactions.h"
#include "support/printers.h"

namespace tessel::test {
namespace {

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

/// The first connection is busy and the second cannot be opened, for the file has been moved away under the first.
class UnopenableFile : public TwoDatabases {
protected:
  UnopenableFile() { std::filesystem::rename(path, moved); }

  void moveBack() const { std::filesystem::rename(moved, path); }

  // `create` would make another file in its place.
  const std::shared_ptr<ProjectDb>& opened() { return db = ProjectDb::open(odPath(path), false); }

  std::string moved = path + ".moved";
  Transaction busy{opened(), Transaction::Begin};
};

TEST_F(UnopenableFile, IsADatabaseExceptionUnderAnOperation) {
  EXPECT_THROW(db->save(Site::create(L"Hill")), DatabaseException);
  EXPECT_THROW(db->count<Site>(), DatabaseException);
  EXPECT_THROW(db->get<Site>(NameKey(L"Hill")), DatabaseException);
  EXPECT_THROW(db->get<Site>(1), DatabaseException);
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(UnopenableFile, PutsTheCurrentTransactionOfAnotherBack) {
  Transaction transaction(other, Transaction::BeginCurrent);
  EXPECT_THROW(db->count<Site>(), DatabaseException);
  ASSERT_TRUE(Transaction::hasCurrent());
  EXPECT_EQ(&Transaction::current(), &transaction);
}

// Whoever begins a transaction deals with the persistence layer, so its exception says what was wrong.
TEST_F(UnopenableFile, PassesTheExceptionOfOdbFromABeginOfTheHost) {
  EXPECT_THROW(Transaction(db, Transaction::Begin), odb::database_exception);
  EXPECT_THROW(Transaction(db, Transaction::BeginCurrent), odb::database_exception);
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(UnopenableFile, LeavesATransactionThatDidNotBeginFinalizedAndUsable) {
  Transaction transaction(db, Transaction::NoBegin);
  EXPECT_THROW(transaction.reset(true), odb::database_exception);
  EXPECT_TRUE(transaction.finalized());
  EXPECT_FALSE(Transaction::hasCurrent());
  moveBack();
  transaction.reset(true);
  EXPECT_EQ(&Transaction::current(), &transaction);
}

TEST_F(UnopenableFile, CannotBeAskedWhetherItIsReadOnly) {
  EXPECT_THROW((void)db->isReadOnly(), DatabaseException);
  moveBack();
  EXPECT_FALSE(db->isReadOnly());
}

}  // namespace
}  // namespace tessel::test
