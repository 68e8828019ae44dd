#include <regex>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <odb/exceptions.hxx>
#include <odb/sqlite/database.hxx>
#include <odb/sqlite/exceptions.hxx>
#include <odb/sqlite/transaction.hxx>

#include "database/savepoint.h"
#include "support/faulty_vfs.h"
#include "support/raw_file.h"
#include "support/sql_trace.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Savepoints : public ::testing::Test {
protected:
  Savepoints() {
    database.execute("CREATE TABLE notes (text)");
    sql.clear();
  }

  void write(const std::string& text) { database.execute("INSERT INTO notes VALUES ('" + text + "')"); }

  /// What stands in the table as the transaction sees it.
  std::string notes() { return scalar(connection(), "SELECT group_concat(text) FROM notes"); }

  sqlite3* connection() { return sql.connections().at(0); }

  /// The savepoint statements; what is not one is left out.
  std::vector<std::string> statements() const {
    std::vector<std::string> result;
    for (const std::string& statement : sql.statements()) {
      if (statement.find("SAVEPOINT") != std::string::npos) result.push_back(statement);
    }
    return result;
  }

  /// The name in the only "SAVEPOINT" statement so far.
  std::string quotedName() const { return sql.beginningWith("SAVEPOINT ").at(0).substr(10); }

  /// As after a full disk: SQLite has ended the transaction without being asked.
  void loseTransaction() { ASSERT_EQ(sqlite3_exec(connection(), "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK); }

  TempFolder folder;
  SqlTrace sql;
  odb::sqlite::database database{folder.path("notes.db"), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE};
  odb::sqlite::transaction transaction{database.begin()};
};

// The statements.

TEST_F(Savepoints, TheNameIsARandomUuidInQuotes) {
  const Savepoint savepoint(database);
  ASSERT_EQ(statements().size(), 1U);
  EXPECT_TRUE(std::regex_match(
    statements()[0], std::regex("SAVEPOINT '[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}'")))
    << statements()[0];
}

TEST_F(Savepoints, NoTwoNamesAreTheSame) {
  std::set<std::string> names;
  for (int i = 0; i < 200; ++i) {
    sql.clear();
    const Savepoint savepoint(database);
    names.insert(quotedName());
  }
  EXPECT_EQ(names.size(), 200U);
}

TEST_F(Savepoints, ReleaseRunsOnce) {
  Savepoint savepoint(database);
  const std::string name = quotedName();
  sql.clear();
  savepoint.release();
  savepoint.release();
  EXPECT_THAT(sql.statements(), ElementsAre("RELEASE SAVEPOINT " + name));
}

TEST_F(Savepoints, TheDestructorReleases) {
  std::string name;
  {
    const Savepoint savepoint(database);
    name = quotedName();
    sql.clear();
  }
  EXPECT_THAT(sql.statements(), ElementsAre("RELEASE SAVEPOINT " + name));
}

TEST_F(Savepoints, TheDestructorDoesNotReleaseAgain) {
  {
    Savepoint savepoint(database);
    savepoint.release();
    sql.clear();
  }
  EXPECT_THAT(sql.statements(), IsEmpty());
}

TEST_F(Savepoints, RollbackTwiceRunsTheStatementTwice) {
  Savepoint savepoint(database);
  const std::string rollback = "ROLLBACK TO SAVEPOINT " + quotedName();
  sql.clear();
  savepoint.rollback();
  savepoint.rollback();
  EXPECT_THAT(sql.statements(), ElementsAre(rollback, rollback));
}

TEST_F(Savepoints, RollbackAfterTheReleaseRunsNothing) {
  Savepoint savepoint(database);
  savepoint.release();
  sql.clear();
  savepoint.rollback();
  EXPECT_THAT(sql.statements(), IsEmpty());
}

TEST_F(Savepoints, AfterARollbackItIsStillToBeReleased) {
  Savepoint savepoint(database);
  const std::string name = quotedName();
  savepoint.rollback();
  sql.clear();
  savepoint.release();
  EXPECT_THAT(sql.statements(), ElementsAre("RELEASE SAVEPOINT " + name));
}

// Their effect.

TEST_F(Savepoints, RollbackUndoesWhatWasDoneSinceAndNoMore) {
  write("before");
  Savepoint savepoint(database);
  write("since");
  savepoint.rollback();
  EXPECT_EQ(notes(), "before");
  write("later");
  savepoint.release();
  EXPECT_EQ(notes(), "before,later");
}

TEST_F(Savepoints, TheDestructorKeepsWhatWasDone) {
  {
    const Savepoint savepoint(database);
    write("since");
  }
  transaction.commit();
  EXPECT_EQ(RawFile(folder.path("notes.db")).count("notes"), 1);
}

TEST_F(Savepoints, AnExceptionOnItsWayDoesNotUndoWhatWasDone) {
  EXPECT_THROW(
    {
      const Savepoint savepoint(database);
      write("since");
      throw std::runtime_error("work");
    },
    std::runtime_error);
  EXPECT_EQ(notes(), "since");
}

TEST_F(Savepoints, CanBeNested) {
  Savepoint outer(database);
  write("outer");
  {
    Savepoint inner(database);
    write("inner");
    inner.rollback();
  }
  EXPECT_EQ(notes(), "outer");
  outer.rollback();
  EXPECT_EQ(notes(), "NULL");
}

// The guard.

TEST_F(Savepoints, TheGuardUndoes) {
  Savepoint savepoint(database);
  {
    const SavepointGuard guard(savepoint);
    write("since");
  }
  EXPECT_EQ(notes(), "NULL");
}

TEST_F(Savepoints, TheGuardUndoesUnderAnException) {
  Savepoint savepoint(database);
  EXPECT_THROW(
    {
      const SavepointGuard guard(savepoint);
      write("since");
      throw std::runtime_error("work");
    },
    std::runtime_error);
  EXPECT_EQ(notes(), "NULL");
}

TEST_F(Savepoints, TheGuardLeavesWhatIsDone) {
  Savepoint savepoint(database);
  sql.clear();
  {
    SavepointGuard guard(savepoint);
    guard.setDone();
  }
  EXPECT_THAT(sql.statements(), IsEmpty());
}

TEST_F(Savepoints, TheGuardRunsNothingAfterTheRelease) {
  Savepoint savepoint(database);
  {
    const SavepointGuard guard(savepoint);
    savepoint.release();
    sql.clear();
  }
  EXPECT_THAT(sql.statements(), IsEmpty());
}

// When the transaction is gone.

TEST_F(Savepoints, AReleaseThatFailsThrows) {
  Savepoint savepoint(database);
  loseTransaction();
  EXPECT_THROW(savepoint.release(), odb::database_exception);
}

TEST_F(Savepoints, ARollbackThatFailsThrows) {
  Savepoint savepoint(database);
  loseTransaction();
  EXPECT_THROW(savepoint.rollback(), odb::database_exception);
}

TEST_F(Savepoints, AReleaseThatFailedIsTriedAgain) {
  Savepoint savepoint(database);
  loseTransaction();
  EXPECT_THROW(savepoint.release(), odb::database_exception);
  EXPECT_THROW(savepoint.release(), odb::database_exception);
}

TEST_F(Savepoints, TheDestructorKeepsItsFailureToItself) {
  EXPECT_NO_THROW({
    const Savepoint savepoint(database);
    loseTransaction();
  });
}

TEST_F(Savepoints, TheGuardKeepsItsFailureToItself) {
  EXPECT_NO_THROW({
    Savepoint savepoint(database);
    const SavepointGuard guard(savepoint);
    loseTransaction();
  });
}

TEST_F(Savepoints, AFailureDoesNotReplaceTheExceptionOnItsWay) {
  try {
    Savepoint savepoint(database);
    const SavepointGuard guard(savepoint);
    loseTransaction();
    throw std::runtime_error("the reason");
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "the reason");
  }
}

TEST_F(Savepoints, AReleaseThatFailsUnderTheGuardIsTheExceptionThatArrives) {
  EXPECT_THROW(
    {
      Savepoint savepoint(database);
      const SavepointGuard guard(savepoint);
      loseTransaction();
      savepoint.release();
    },
    odb::database_exception);
}

// Without a transaction around it a savepoint would begin one, and its release would commit.
TEST_F(Savepoints, WithoutATransactionInTheFileThereIsNoSavepoint) {
  loseTransaction();
  EXPECT_THROW(Savepoint{database}, odb::sqlite::forced_rollback);
  EXPECT_NE(sqlite3_get_autocommit(connection()), 0);
}

TEST_F(Savepoints, AFullDatabaseEndsTheTransactionUnderASavepoint) {
  transaction.commit();
  transaction.reset(database.begin());
  const std::string pages = scalar(connection(), "PRAGMA page_count");
  scalar(connection(), "PRAGMA max_page_count=" + pages);
  write("before");
  try {
    Savepoint savepoint(database);
    const SavepointGuard guard(savepoint);
    for (;;) write(std::string(1000, 'x'));
  } catch (const odb::sqlite::database_exception& error) {
    EXPECT_EQ(error.error(), SQLITE_FULL);
  }
  EXPECT_NE(sqlite3_get_autocommit(connection()), 0) << "the transaction is gone";
  EXPECT_EQ(notes(), "NULL");
}

class SavepointsOnAFaultyDisk : public ::testing::Test {
protected:
  TempFolder folder;
  SqlTrace sql;
  FaultyVfs disk{"faulty", folder.path()};
  odb::sqlite::database database{"notes.db", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, true, "faulty"};
};

TEST_F(SavepointsOnAFaultyDisk, AnErrorOfTheDiskArrivesAsItIs) {
  for (const int fault : {SQLITE_FULL, SQLITE_IOERR_WRITE}) {
    odb::sqlite::transaction transaction(database.begin());
    database.execute("CREATE TABLE IF NOT EXISTS notes (text)");
    transaction.commit();
    transaction.reset(database.begin());
    disk.failWrites(fault);
    try {
      Savepoint savepoint(database);
      const SavepointGuard guard(savepoint);
      database.execute("INSERT INTO notes VALUES ('x')");
      ADD_FAILURE();
    } catch (const odb::sqlite::database_exception& error) {
      EXPECT_EQ(error.error(), fault & 0xFF);
    }
    EXPECT_NE(sqlite3_get_autocommit(sql.connections().at(0)), 0) << "the transaction is gone";
    disk.repair();
  }
}

}  // namespace
}  // namespace tessel::test
