#include "database/open_database.h"

#include <sqlite3.h>

#include <odb/database.hxx>
#include <odb/exceptions.hxx>
#include <odb/schema-catalog.hxx>
#include <odb/sqlite/connection.hxx>
#include <odb/sqlite/exceptions.hxx>
#include <odb/sqlite/transaction.hxx>

#include "database/compatibility.h"
#include "database/location.h"
#include "database/schema.h"
#include "database/seed.h"

namespace tessel {
namespace {

using DatabasePointer = std::unique_ptr<odb::sqlite::database>;

DatabasePointer connectTo(const Location& location, int sqliteFlags) {
  const bool foreignKeys = true;
  return std::make_unique<odb::sqlite::database>(location.file, sqliteFlags, foreignKeys, location.vfs);
}

int writingFlags(int flags) {
  constexpr int always = SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX | SQLITE_OPEN_PRIVATECACHE;
  const bool create = (flags & (OpenFlags::Create | OpenFlags::ReadOnly)) == OpenFlags::Create;
  return create ? always | SQLITE_OPEN_CREATE : always;
}

void seed(odb::sqlite::connection& connection) {
  odb::sqlite::database& database = connection.database();
  const bool dropLeftovers = true;
  odb::schema_catalog::create_schema(database, schemaName, dropLeftovers);
  setCompatibility(connection.handle());
  persistDefaultProject(database);
  persistBaseMeasures(database);
  database.execute("INSERT INTO \"tessel_Meta\" (\"id\") VALUES (0)");
}

/// Whether this build may use a file of a later one as it stands.
bool isCompatible(odb::sqlite::connection& connection) {
  return readCompatibility(connection.handle()) <= currentVersion;
}

bool migrate(odb::sqlite::connection& connection, unsigned long long version) {
  odb::sqlite::database& database = connection.database();
  if (version < odb::schema_catalog::base_version(database, schemaName)) return false;
  odb::schema_catalog::migrate(database, 0, schemaName);
  setCompatibility(connection.handle());
  return true;
}

/// Makes the file one of the current version, if that can be and is wanted.
Readiness prepare(odb::sqlite::connection& connection, int flags) {
  if (hasSeveralVersions(connection.handle())) return Readiness::Refused;
  odb::sqlite::database& database = connection.database();
  const unsigned long long version = database.schema_version(schemaName);
  if (version == 0) {
    if (!(flags & OpenFlags::Create)) return Readiness::Refused;
    seed(connection);
    return Readiness::New;
  }
  const unsigned long long current = odb::schema_catalog::current_version(database, schemaName);
  const bool usable =
    version == current || (version < current ? migrate(connection, version) : isCompatible(connection));
  return usable ? Readiness::Ready : Readiness::Refused;
}

/// The file is not really opened before the first connection to it.
bool canConnect(odb::sqlite::database& database) {
  try {
    database.connection();
    return true;
  } catch (const odb::database_exception&) {
    return false;
  }
}

}  // namespace

// The migration moves rows between tables, so foreign keys are off meanwhile; SQLite changes that only outside a
// transaction.
Readiness prepareInTransaction(odb::sqlite::database& database, int flags) {
  const odb::sqlite::connection_ptr connection = database.connection();
  connection->execute("PRAGMA foreign_keys=OFF");
  odb::sqlite::transaction transaction(connection->begin());
  const Readiness readiness = prepare(*connection, flags);
  if (readiness == Readiness::Refused) return readiness;
  transaction.commit();
  connection->execute("PRAGMA foreign_keys=ON");
  return readiness;
}

OpenResult openDatabase(const OdString& path, int flags) {
  const Location location = locationOf(path);
  DatabasePointer database = connectTo(location, writingFlags(flags));
  if (!canConnect(*database)) return {};
  const Readiness readiness = prepareInTransaction(*database, flags);
  if (readiness == Readiness::Refused) return {};
  // ODB remembers the version. If it had to ask later, it would do so in the thread's current transaction, whichever file
  // that is of.
  const auto version = database->schema_version_migration(schemaName);
  if (flags & OpenFlags::ReadOnly) {
    database.reset();
    database = connectTo(location, SQLITE_OPEN_READONLY);
    database->schema_version_migration(version, schemaName);
  }
  return {std::move(database), readiness == Readiness::New};
}

}  // namespace tessel
