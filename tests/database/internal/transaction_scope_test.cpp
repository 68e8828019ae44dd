#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <odb/exceptions.hxx>
#include <odb/sqlite/database.hxx>
#include <odb/sqlite/exceptions.hxx>
#include <odb/sqlite/transaction.hxx>

#include <tessel/exceptions.h>
#include <tessel/project_db.h>
#include <tessel/spatial.h>

#include "database/files.h"
#include "database/odb_errors.h"
#include "database/project_db_impl.h"
#include "database/transaction_scope.h"
#include "support/printers.h"
#include "support/raw_file.h"
#include "support/sql_trace.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

class Scope : public ::testing::Test {
protected:
  void TearDown() override { EXPECT_FALSE(odb::transaction::has_current()); }

  static void note(ProjectDb& db) { db.impl().database->execute("INSERT INTO tessel_EntityType (name) VALUES ('x')"); }
  long long notes() const { return RawFile(path).count("tessel_EntityType"); }

  TempFolder folder;
  std::string path = folder.path("house.tessel");
  std::shared_ptr<ProjectDb> db = ProjectDb::create(odPath(path));
  std::shared_ptr<ProjectDb> other = ProjectDb::create(odPath(folder.path("other.tessel")));
};

TEST_F(Scope, BeginsATransactionOfItsOwnIfNoneIsCurrent) {
  TransactionScope scope(*db);
  EXPECT_FALSE(scope.own().finalized());
  EXPECT_EQ(&scope.current(), &scope.own());
  EXPECT_EQ(&Transaction::current(), &scope.own());
  EXPECT_EQ(scope.own().projectDb(), db);
}

TEST_F(Scope, RollsItsOwnBackAtItsEnd) {
  {
    TransactionScope scope(*db);
    note(*db);
  }
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_EQ(notes(), 0);
}

TEST_F(Scope, KeepsWhatItsOwnHasCommitted) {
  {
    TransactionScope scope(*db);
    note(*db);
    scope.commitOwn();
    EXPECT_TRUE(scope.own().finalized());
  }
  EXPECT_EQ(notes(), 1);
}

TEST_F(Scope, CommittingTwiceIsNoError) {
  TransactionScope scope(*db);
  scope.commitOwn();
  EXPECT_NO_THROW(scope.commitOwn());
}

TEST_F(Scope, JoinsTheCurrentTransactionOfItsDatabase) {
  Transaction transaction(db, Transaction::BeginCurrent);
  {
    TransactionScope scope(*db);
    EXPECT_TRUE(scope.own().finalized());
    EXPECT_EQ(&scope.current(), &transaction);
    note(*db);
    scope.commitOwn();
    EXPECT_FALSE(transaction.finalized()) << "the host decides";
  }
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_EQ(notes(), 0);
  transaction.commit();
  EXPECT_EQ(notes(), 1);
}

TEST_F(Scope, ScopesWithinScopesShareTheOutermost) {
  TransactionScope outer(*db);
  {
    TransactionScope inner(*db);
    EXPECT_EQ(&inner.current(), &outer.own());
    note(*db);
    inner.commitOwn();
  }
  EXPECT_FALSE(outer.own().finalized());
  EXPECT_EQ(notes(), 0);
}

TEST_F(Scope, SetsATransactionOfAnotherDatabaseAside) {
  Transaction transaction(other, Transaction::BeginCurrent);
  {
    TransactionScope scope(*db);
    EXPECT_EQ(&Transaction::current(), &scope.own());
    note(*db);
    scope.commitOwn();
    EXPECT_FALSE(transaction.finalized());
  }
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_EQ(notes(), 1);
}

TEST_F(Scope, PutsTheOtherBackWhenItRollsBack) {
  Transaction transaction(other, Transaction::BeginCurrent);
  {
    TransactionScope scope(*db);
    note(*db);
  }
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_EQ(notes(), 0);
}

TEST_F(Scope, GoesToAndFroBetweenTwoDatabases) {
  TransactionScope first(*db);
  {
    TransactionScope second(*other);
    {
      TransactionScope third(*db);
      EXPECT_NE(&third.current(), &first.current()) << "the first is set aside, not current";
    }
    EXPECT_EQ(&Transaction::current(), &second.own());
  }
  EXPECT_EQ(&Transaction::current(), &first.own());
}

TEST_F(Scope, NeedsADatabaseInASharedPointer) {
  const auto database = std::make_unique<odb::sqlite::database>(path, SQLITE_OPEN_READWRITE);
  auto connected = std::make_unique<odb::sqlite::database>(path, SQLITE_OPEN_READWRITE);
  ProjectDb alone(ProjectDb::CtorData{odPath(path), connected.release(), false});
  EXPECT_THROW(TransactionScope{alone}, std::bad_weak_ptr);
  EXPECT_THROW(alone.count<Site>(), std::bad_weak_ptr);
  EXPECT_THROW(alone.save(Site::create(L"Hill")), std::bad_weak_ptr);
}

TEST_F(Scope, RequireLiveAcceptsAnActiveTransaction) {
  TransactionScope scope(*db);
  EXPECT_NO_THROW(scope.requireLive());
}

class TracedScope : public Scope {
protected:
  SqlTrace sql;
  std::shared_ptr<ProjectDb> traced = ProjectDb::open(odPath(path), false);
};

TEST_F(TracedScope, RequireLiveThrowsWhenSqliteHasEndedTheTransaction) {
  Transaction transaction(traced, Transaction::BeginCurrent);
  sql.onEachConnection("ROLLBACK");
  {
    TransactionScope scope(*traced);
    EXPECT_THROW(scope.requireLive(), ForcedRollback);
  }
  EXPECT_EQ(&Transaction::current(), &transaction);
}

TEST_F(TracedScope, ABeginThatFailsPutsTheOtherBack) {
  Transaction transaction(other, Transaction::BeginCurrent);
  sql.onEachConnection("BEGIN");
  EXPECT_THROW(TransactionScope{*traced}, odb::database_exception);
  ASSERT_TRUE(Transaction::hasCurrent());
  EXPECT_EQ(&Transaction::current(), &transaction);
  sql.onEachConnection("ROLLBACK");
}

// Reading and writing a small database of the host, which is none of ours.
class ForeignTransaction : public Scope {
protected:
  ForeignTransaction() {
    foreign.execute("CREATE TABLE notes (text)");
    foreign.execute("INSERT INTO notes VALUES ('host')");
  }
  void TearDown() override {
    expectCurrent();
    transaction.commit();
    EXPECT_EQ(RawFile(folder.path("foreign.db")).count("notes"), 1);
    Scope::TearDown();
  }

  void expectCurrent() {
    ASSERT_TRUE(odb::transaction::has_current());
    EXPECT_EQ(&odb::transaction::current(), &transaction);
  }

  odb::sqlite::database foreign{folder.path("foreign.db"), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE};
  odb::sqlite::transaction transaction{foreign.begin()};
};

TEST_F(ForeignTransaction, IsSetAsideForAWriteThatIsCommitted) {
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(RawFile(path).count("tessel_Site"), 1);
  expectCurrent();
}

TEST_F(ForeignTransaction, IsSetAsideForReads) {
  EXPECT_EQ(db->count<Site>(), 0U);
  EXPECT_FALSE(db->get<Site>(NameKey(L"Hill")));
  std::vector<TsSmartPtr<Site>> sites;
  db->get(sites);
  expectCurrent();
  EXPECT_THROW(db->get<Site>(7), odb::object_not_persistent);
}

TEST_F(ForeignTransaction, IsPutBackAfterAFailure) {
  db->save(Site::create(L"Hill"));
  EXPECT_THROW(db->save(Site::create(L"Hill")), ObjectNotUnique);
  expectCurrent();
  EXPECT_THROW(db->save(Building::create(Site::create(), L"House")), DatabaseException);
}

TEST_F(ForeignTransaction, IsLeftAloneByOperationsThatNeedNone) {
  EXPECT_FALSE(db->get<Site>(0));
  EXPECT_EQ(db->version(), 1010U);
  EXPECT_FALSE(db->isReadOnly());
}

TEST_F(ForeignTransaction, DoesNotKeepTheVersionOfAHandleForReadingFromBeingItsOwn) {
  odb::transaction::reset_current();
  const auto reading = ProjectDb::open(odPath(path), true);
  odb::transaction::current(transaction);
  EXPECT_EQ(reading->version(), 1010U);
}

TEST_F(ForeignTransaction, RefusesATransactionOfTheHostOnOurs) {
  EXPECT_THROW(Transaction(db, Transaction::BeginCurrent), AlreadyInTransaction);
  const Transaction beside(db, Transaction::Begin);
  EXPECT_FALSE(beside.finalized());
}

// Translation.

template <typename Error>
std::wstring translated(const odb::exception& error) {
  try {
    translateOdbException(error);
  } catch (const Error& result) {
    return result.what();
  } catch (...) {
  }
  return L"another exception";
}

TEST(TranslateOdbException, ForcedRollback) {
  EXPECT_EQ(translated<ForcedRollback>(odb::sqlite::forced_rollback()), L"Forced rollback");
  EXPECT_EQ(translated<Recoverable>(odb::sqlite::forced_rollback()), L"Forced rollback");
}

TEST(TranslateOdbException, AnyOtherIsADatabaseExceptionWithoutItsText) {
  const std::wstring text = L"Project database exception";
  EXPECT_EQ(translated<DatabaseException>(odb::sqlite::database_exception(SQLITE_FULL, SQLITE_FULL, "disk")), text);
  EXPECT_EQ(translated<DatabaseException>(odb::sqlite::database_exception(SQLITE_CONSTRAINT, 19, "UNIQUE")), text);
  EXPECT_EQ(translated<DatabaseException>(odb::object_not_persistent()), text);
  EXPECT_EQ(translated<DatabaseException>(odb::object_already_persistent()), text);
  EXPECT_EQ(translated<DatabaseException>(odb::already_in_transaction()), text);
  EXPECT_EQ(translated<DatabaseException>(odb::timeout()), text);
  EXPECT_EQ(translated<DatabaseException>(odb::deadlock()), text);
  EXPECT_EQ(translated<DatabaseException>(odb::null_pointer()), text);
}

TEST(TranslateOdbException, ADatabaseExceptionIsNotRecoverable) {
  EXPECT_EQ(translated<Recoverable>(odb::timeout()), L"another exception");
}

}  // namespace
}  // namespace tessel::test
