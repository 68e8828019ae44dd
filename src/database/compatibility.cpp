#include "database/compatibility.h"

#include "database/schema.h"
#include "database/sqlite_handle.h"

namespace tessel {
namespace {

constexpr int columnsOfOdb = 3;

int columnsOfVersionTable(sqlite3* connection) {
  return Statement(connection, "SELECT * FROM schema_version").columnCount();
}

}  // namespace

void setCompatibility(sqlite3* connection) {
  executeIgnoringResult(connection, R"(CREATE TABLE IF NOT EXISTS "schema_version" (
  "name" TEXT NOT NULL PRIMARY KEY,
  "version" INTEGER NOT NULL,
  "migration" INTEGER NOT NULL,
  "compatibility" INTEGER NOT NULL DEFAULT 0))");
  if (columnsOfVersionTable(connection) == columnsOfOdb) {
    executeIgnoringResult(connection,
                          R"(ALTER TABLE "schema_version"  ADD COLUMN "compatibility" INTEGER NOT NULL DEFAULT 0)");
  }
  Statement update(connection, "UPDATE schema_version  SET compatibility=?  WHERE name=?");
  update.bind(1, writtenCompatibility);
  update.bind(2, schemaName);
  // No row is no fault, and a file that refuses to be written has refused the schema's own statements before.
  update.stepIgnoringResult();
}

bool hasSeveralVersions(sqlite3* connection) {
  try {
    Statement select(connection, "SELECT 1 FROM \"schema_version\" WHERE \"name\"=? LIMIT 1 OFFSET 1");
    select.bind(1, schemaName);
    return select.step();
  } catch (const database_error&) {
    return false;
  }
}

std::uint64_t readCompatibility(sqlite3* connection) {
  Statement select(connection, "SELECT compatibility FROM schema_version WHERE name=?");
  select.bind(1, schemaName);
  return select.step() ? static_cast<std::uint64_t>(select.columnInt64(0)) : 0;
}

}  // namespace tessel
