#include "database/data_migrations.h"

#include <odb/schema-catalog-impl.hxx>
#include <odb/schema-catalog.hxx>
#include <odb/sqlite/connection.hxx>
#include <odb/sqlite/transaction.hxx>

#include "database/schema.h"
#include "database/seed.h"
#include "database/sqlite_handle.h"

namespace tessel {
namespace {

sqlite3* currentConnection() { return odb::sqlite::transaction::current().connection().handle(); }

MeasureSystem readMeasureSystem(sqlite3* connection) {
  Statement select(connection, R"(SELECT "unit" FROM "tessel_Meta")");
  return select.step() && select.columnInt64(0) == 0 ? MeasureSystem::imperial : MeasureSystem::metric;
}

std::int64_t countProjectRows(sqlite3* connection) {
  Statement select(connection, R"(SELECT count(*) FROM "tessel_Project")");
  return select.step() ? select.columnInt64(0) : 0;
}

template <odb::schema_version version>
using MigrationEntry = odb::data_migration_entry<version, baseVersion>;

const MigrationEntry<1001> metaUnitEntry(&migrateMetaUnit, schemaName);
const MigrationEntry<1002> projectRowEntry(&migrateProjectRow, schemaName);

}  // namespace

void migrateMetaUnit(odb::database& database) {
  persistMigratedUnits(database, readMeasureSystem(currentConnection()));
}

void migrateProjectRow(odb::database& database) {
  sqlite3* connection = currentConnection();
  const std::int64_t rows = countProjectRows(connection);
  if (rows == 0) {
    // The row names columns that come only with 1009, so such a file does not open. That is known and kept.
    persistDefaultProject(database);
  } else if (rows == 1) {
    executeIgnoringResult(connection, R"(UPDATE "tessel_Project" SET "id"=1)");
  }
}

}  // namespace tessel
