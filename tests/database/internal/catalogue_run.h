#pragma once

#include <string>
#include <vector>

#include <odb/database.hxx>
#include <odb/schema-catalog.hxx>
#include <odb/sqlite/connection.hxx>
#include <odb/sqlite/database.hxx>
#include <odb/sqlite/transaction.hxx>
#include <odb/tracer.hxx>

#include "database/compatibility.h"
#include "database/schema.h"

namespace tessel::test {

/// Runs `work(database, handle)` on the file as the opening of a project does: in one transaction that is the
/// thread's current one, with foreign keys off. What leaves `work` rolls back.
template <typename Work>
void onSchema(const std::string& path, Work work) {
  odb::sqlite::database database(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, true);
  odb::sqlite::connection_ptr connection = database.connection();
  connection->execute("PRAGMA foreign_keys=OFF");
  odb::sqlite::transaction transaction(connection->begin());
  work(database, connection->handle());
  transaction.commit();
}

inline void createFile(const std::string& path) {
  onSchema(path, [](odb::sqlite::database& database, sqlite3* handle) {
    odb::schema_catalog::create_schema(database, schemaName, true);
    setCompatibility(handle);
  });
}

inline void migrateFile(const std::string& path) {
  onSchema(path, [](odb::sqlite::database& database, sqlite3* handle) {
    odb::schema_catalog::migrate(database, 0, schemaName);
    setCompatibility(handle);
  });
}

/// The statements that ODB runs while it lives, in their order.
class StatementLog : public odb::tracer {
public:
  explicit StatementLog(odb::database& database) : database_(database) { database.tracer(*this); }
  StatementLog(const StatementLog&) = delete;
  StatementLog& operator=(const StatementLog&) = delete;
  ~StatementLog() override { database_.tracer(nullptr); }

  using odb::tracer::execute;
  void execute(odb::connection&, const char* statement) override { statements_.emplace_back(statement); }

  const std::vector<std::string>& statements() const { return statements_; }

  /// Those that begin with `words`, without these words.
  std::vector<std::string> after(const std::string& words) const {
    std::vector<std::string> result;
    for (const std::string& statement : statements_) {
      if (statement.compare(0, words.size(), words) == 0) result.push_back(statement.substr(words.size()));
    }
    return result;
  }

private:
  odb::database& database_;
  std::vector<std::string> statements_;
};

}  // namespace tessel::test
