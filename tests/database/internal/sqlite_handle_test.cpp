#include "database/sqlite_handle.h"

#include <gtest/gtest.h>

namespace tessel {
namespace {

class Sqlite : public ::testing::Test {
protected:
  Sqlite() {
    sqlite3_open(":memory:", &connection);
    sqlite3_exec(connection, "BEGIN", nullptr, nullptr, nullptr);
  }
  ~Sqlite() override { EXPECT_EQ(sqlite3_close(connection), SQLITE_OK) << "a statement is still open"; }

  template <typename Operation>
  std::string errorOf(Operation operation) {
    try {
      operation();
    } catch (const database_error& error) {
      return error.what();
    }
    return "no error";
  }

  sqlite3* connection = nullptr;
};

TEST_F(Sqlite, AStatementThatCannotBePreparedTellsWhy) {
  EXPECT_EQ(errorOf([this] { Statement(connection, "SELECT a FROM missing"); }), "no such table: missing");
}

TEST_F(Sqlite, AStepThatFailsTellsWhy) {
  Statement statement(connection, "SELECT abs(-9223372036854775807 - 1)");
  EXPECT_EQ(errorOf([&] { statement.step(); }), "integer overflow");
}

TEST_F(Sqlite, AFailingStepCanBeIgnored) {
  Statement statement(connection, "SELECT abs(-9223372036854775807 - 1)");
  EXPECT_NO_THROW(statement.stepIgnoringResult());
}

TEST_F(Sqlite, AParameterThatIsNotThereIsAnError) {
  Statement statement(connection, "SELECT ?");
  EXPECT_EQ(errorOf([&] { statement.bind(2, std::int64_t{1}); }), "column index out of range");
  EXPECT_EQ(errorOf([&] { statement.bind(2, std::string("a")); }), "column index out of range");
}

TEST_F(Sqlite, ParametersArriveUnchanged) {
  Statement statement(connection, "SELECT ?, length(?) + (? = 'Växjö')");
  statement.bind(1, std::int64_t{-9223372036854775807});
  statement.bind(2, std::string(3, 'x'));
  statement.bind(3, std::string("Växjö"));
  ASSERT_TRUE(statement.step());
  EXPECT_EQ(statement.columnInt64(0), -9223372036854775807);
  EXPECT_EQ(statement.columnInt64(1), 4);
  EXPECT_FALSE(statement.step());
}

TEST_F(Sqlite, ColumnsAreCountedWithoutAStep) { EXPECT_EQ(Statement(connection, "SELECT 1, 2, 3").columnCount(), 3); }

TEST_F(Sqlite, AFailingTextCanBeIgnored) { EXPECT_NO_THROW(executeIgnoringResult(connection, "DROP TABLE missing")); }

TEST_F(Sqlite, AFailureThatHasEndedTheTransactionCannotBeIgnored) {
  constexpr const char* ending = "INSERT OR ROLLBACK INTO made VALUES (NULL)";
  sqlite3_exec(connection, "COMMIT; CREATE TABLE made (a NOT NULL); BEGIN", nullptr, nullptr, nullptr);
  EXPECT_EQ(errorOf([this] { executeIgnoringResult(connection, ending); }), "NOT NULL constraint failed: made.a");
  sqlite3_exec(connection, "BEGIN", nullptr, nullptr, nullptr);
  Statement statement(connection, ending);
  EXPECT_EQ(errorOf([&] { statement.stepIgnoringResult(); }), "NOT NULL constraint failed: made.a");
}

TEST_F(Sqlite, AnIgnoredResultIsStillExecuted) {
  executeIgnoringResult(connection, "CREATE TABLE made (a)");
  EXPECT_EQ(Statement(connection, "SELECT * FROM made").columnCount(), 1);
}

}  // namespace
}  // namespace tessel
