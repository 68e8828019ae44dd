#include "database/trial.h"

#include <memory>
#include <utility>

#include <odb/exceptions.hxx>
#include <odb/sqlite/connection-factory.hxx>
#include <odb/sqlite/connection.hxx>
#include <odb/sqlite/database.hxx>
#include <odb/sqlite/exceptions.hxx>

#include "database/open_database.h"
#include "database/project_db_impl.h"
#include "database/transaction_scope.h"

namespace tessel {
namespace {

using DatabasePointer = std::unique_ptr<odb::sqlite::database>;

/// One that is gone with its only connection. SQLite keeps it in memory while it is small.
DatabasePointer temporaryDatabase() {
  std::unique_ptr<odb::sqlite::connection_factory> single(new odb::sqlite::single_connection_factory);
  return std::make_unique<odb::sqlite::database>("", SQLITE_OPEN_READWRITE, true, "", std::move(single));
}

void copy(sqlite3* source, sqlite3* target) {
  constexpr int allPages = -1;
  sqlite3_backup* const backup = sqlite3_backup_init(target, "main", source, "main");
  if (!backup) throw database_error(target);
  sqlite3_backup_step(backup, allPages);
  if (sqlite3_backup_finish(backup) != SQLITE_OK) throw database_error(target);
}

std::int64_t count(sqlite3* connection, const char* projects) {
  Statement select(connection, projects);
  return select.step() ? select.columnInt64(0) : 0;
}

/// In the words of who knows project files, where the failure is a common one. Else in those of who failed.
std::string reasonOf(const std::exception& error, sqlite3* connection) {
  try {
    if (count(connection, R"(SELECT count(*) FROM "tessel_Project")") == 0) return "it has no project record";
    if (dynamic_cast<const odb::object_not_persistent*>(&error)) {
      const bool first = count(connection, R"(SELECT count(*) FROM "tessel_Project" WHERE "id"=1)") != 0;
      return first ? "the site of its project record is not there" : "none of its project records has the id 1";
    }
  } catch (const database_error&) {
    // Then the table is what is wrong, and the failure says so.
  }
  const auto* const failure = dynamic_cast<const odb::sqlite::database_exception*>(&error);
  return failure ? failure->message() : error.what();
}

/// The end of every opening.
Trial tryRecord(DatabasePointer database) {
  const auto db = std::make_shared<ProjectDb>(ProjectDb::CtorData{OdString(), database.get(), false});
  static_cast<void>(database.release());  // The handle has it now.
  try {
    loadProjectRecord(*db);
    return {OpenOutcome::Opens, {}};
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    return {OpenOutcome::Throws, reasonOf(error, db->impl().database->connection()->handle())};
  }
}

}  // namespace

Trial tryOpening(const Look& look, const Location& location) {
  return tryRecord(std::make_unique<odb::sqlite::database>(look.name(), look.flags(), true, location.vfs));
}

Trial tryMigration(const Look& look) {
  SetAside setAside;
  setAside.take();
  DatabasePointer database = temporaryDatabase();
  copy(look.handle(), database->connection()->handle());
  try {
    prepareInTransaction(*database, 0);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    return {OpenOutcome::Throws, reasonOf(error, database->connection()->handle())};
  }
  Trial trial = tryRecord(std::move(database));
  if (trial.outcome == OpenOutcome::Throws) trial.outcome = OpenOutcome::ThrowsAfterMigration;
  return trial;
}

}  // namespace tessel
