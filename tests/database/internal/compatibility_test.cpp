#include "database/compatibility.h"

#include <gtest/gtest.h>

#include "database/schema.h"
#include "database/sqlite_handle.h"

namespace tessel {
namespace {

// Both functions take a bare connection, so a database in memory serves.
class Compatibility : public ::testing::Test {
protected:
  Compatibility() {
    sqlite3_open(":memory:", &connection);
    sqlite3_exec(connection, "BEGIN", nullptr, nullptr, nullptr);
  }
  ~Compatibility() override { sqlite3_close(connection); }

  void exec(const char* sql) {
    ASSERT_EQ(sqlite3_exec(connection, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(connection);
  }

  void versionTable(const std::string& more) {
    exec(("CREATE TABLE schema_version (name TEXT NOT NULL PRIMARY KEY, version INTEGER NOT NULL, "
          "migration INTEGER NOT NULL" +
          more + ")")
           .c_str());
  }

  std::int64_t number(const char* sql) {
    Statement statement(connection, sql);
    return statement.step() ? statement.columnInt64(0) : -1;
  }

  int columns() { return Statement(connection, "SELECT * FROM schema_version").columnCount(); }

  std::string errorOf(void (*operation)(sqlite3*)) {
    try {
      operation(connection);
    } catch (const database_error& error) {
      return error.what();
    }
    return "no error";
  }

  sqlite3* connection = nullptr;
};

void read(sqlite3* connection) { readCompatibility(connection); }

constexpr const char* ours = "SELECT compatibility FROM schema_version WHERE name = 'tessel'";

TEST_F(Compatibility, SetAddsTheColumnToTheFormOfOdb) {
  versionTable("");
  exec("INSERT INTO schema_version VALUES ('tessel', 1005, 0)");
  setCompatibility(connection);
  EXPECT_EQ(columns(), 4);
  EXPECT_EQ(number(ours), 1000);
  EXPECT_EQ(number("SELECT \"notnull\" = 1 AND dflt_value = '0' AND type = 'INTEGER' "
                   "FROM pragma_table_info('schema_version') WHERE name = 'compatibility'"),
            1);
  EXPECT_EQ(number("SELECT version FROM schema_version"), 1005);
}

TEST_F(Compatibility, SetReplacesTheValueThatStoodThere) {
  versionTable(", compatibility INTEGER NOT NULL DEFAULT 0");
  exec("INSERT INTO schema_version VALUES ('tessel', 1010, 0, 1009)");
  setCompatibility(connection);
  EXPECT_EQ(columns(), 4);
  EXPECT_EQ(number(ours), 1000);
}

TEST_F(Compatibility, SetLeavesTheRowsOfOtherSchemas) {
  versionTable("");
  exec("INSERT INTO schema_version VALUES ('tessel', 1010, 0), ('other', 3, 0)");
  setCompatibility(connection);
  EXPECT_EQ(number("SELECT compatibility FROM schema_version WHERE name = 'other'"), 0);
}

TEST_F(Compatibility, SetMakesTheTableButNoRow) {
  setCompatibility(connection);
  EXPECT_EQ(columns(), 4);
  EXPECT_EQ(number("SELECT count(*) FROM schema_version"), 0);
  EXPECT_EQ(number("SELECT group_concat(name || type || \"notnull\" || pk) = "
                   "'nameTEXT11,versionINTEGER10,migrationINTEGER10,compatibilityINTEGER10' "
                   "FROM pragma_table_info('schema_version')"),
            1);
}

TEST_F(Compatibility, SetAddsNothingToATableOfMoreColumns) {
  versionTable(", a, b");
  EXPECT_EQ(errorOf(&setCompatibility), "no such column: compatibility");
  EXPECT_EQ(columns(), 5);
}

TEST_F(Compatibility, SetDoesNotLookAtTheResultOfTheUpdate) {
  versionTable(", compatibility INTEGER NOT NULL DEFAULT 0");
  exec("INSERT INTO schema_version VALUES ('tessel', 1010, 0, 7);"
       "CREATE TRIGGER stop BEFORE UPDATE ON schema_version BEGIN SELECT RAISE(ABORT, 'stopped'); END");
  EXPECT_EQ(errorOf(&setCompatibility), "no error");
  EXPECT_EQ(number(ours), 7);
}

TEST_F(Compatibility, SetFailsIfItsUpdateEndsTheTransaction) {
  versionTable(", compatibility INTEGER NOT NULL DEFAULT 0");
  exec("INSERT INTO schema_version VALUES ('tessel', 1010, 0, 7); COMMIT; BEGIN;"
       "CREATE TRIGGER stop BEFORE UPDATE ON schema_version BEGIN SELECT RAISE(ROLLBACK, 'stopped'); END;"
       "COMMIT; BEGIN");
  EXPECT_EQ(errorOf(&setCompatibility), "stopped");
  EXPECT_EQ(number(ours), 7);
}

TEST_F(Compatibility, SeveralVersionsAreSeen) {
  exec("CREATE TABLE schema_version (name, version, migration); INSERT INTO schema_version VALUES ('tessel', 1, 0),"
       "('other', 2, 0), ('other', 3, 0)");
  EXPECT_FALSE(hasSeveralVersions(connection));
  exec("INSERT INTO schema_version VALUES ('tessel', 1, 0)");
  EXPECT_TRUE(hasSeveralVersions(connection));
}

TEST_F(Compatibility, NoVersionTableHoldsNoSeveralVersions) { EXPECT_FALSE(hasSeveralVersions(connection)); }

TEST_F(Compatibility, ReadGivesTheValueOfOurRow) {
  versionTable(", compatibility INTEGER NOT NULL DEFAULT 0");
  exec("INSERT INTO schema_version VALUES ('other', 1, 0, 5), ('tessel', 1011, 0, 1011)");
  EXPECT_EQ(readCompatibility(connection), 1011U);
}

TEST_F(Compatibility, ReadGivesZeroWithoutARow) {
  versionTable(", compatibility INTEGER NOT NULL DEFAULT 0");
  EXPECT_EQ(readCompatibility(connection), 0U);
}

TEST_F(Compatibility, ANegativeValueReadsAsAVeryHighOne) {
  versionTable(", compatibility INTEGER NOT NULL DEFAULT 0");
  exec("INSERT INTO schema_version VALUES ('tessel', 1011, 0, -1)");
  EXPECT_EQ(readCompatibility(connection), 0xFFFFFFFFFFFFFFFFU);
}

TEST_F(Compatibility, ReadWithoutTheColumnFailsWithTheTextOfSqlite) {
  versionTable("");
  EXPECT_EQ(errorOf(&read), "no such column: compatibility");
}

TEST_F(Compatibility, ReadWithoutTheTableFailsWithTheTextOfSqlite) {
  EXPECT_EQ(errorOf(&read), "no such table: schema_version");
}

TEST_F(Compatibility, ReadThatFailsAtItsRowTellsWhy) {
  exec("CREATE VIEW schema_version AS SELECT 'tessel' AS name, abs(-9223372036854775807 - 1) AS compatibility");
  EXPECT_EQ(errorOf(&read), "integer overflow");
}

TEST_F(Compatibility, TheErrorIsARuntimeErrorForHostsThatDoNotKnowItsName) {
  EXPECT_THROW(readCompatibility(connection), std::runtime_error);
}

}  // namespace
}  // namespace tessel
