#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

#include <sqlite3.h>

namespace tessel::test {

/// Writes down the SQL that runs on every connection which is opened while it lives, whoever opens it, and knows these
/// connections. So it must be there before the database that it is to watch:
///
///   SqlTrace sql;
///   auto db = ProjectDb::create(...);
///   sql.clear();
///   ... EXPECT_EQ(sql.beginningWith("SAVEPOINT").size(), 0U);
///
/// Parameters are not filled in, and each run of white space is one blank. There is one trace at a time.
class SqlTrace {
public:
  SqlTrace();
  SqlTrace(const SqlTrace&) = delete;
  SqlTrace& operator=(const SqlTrace&) = delete;
  ~SqlTrace();

  /// In the order in which they were begun.
  std::vector<std::string> statements() const;
  std::vector<std::string> beginningWith(const std::string& words) const;

  /// The first word of each.
  std::vector<std::string> verbs() const;

  /// Forgets the statements, not the connections.
  void clear();

  /// Those that are still open, the oldest first. For tests that act behind the library's back.
  std::vector<sqlite3*> connections() const;

  /// Runs SQL on all open connections, for instance a ROLLBACK. Whether a connection refuses it is not looked at.
  void onEachConnection(const std::string& sql) const;

private:
  static int connected(sqlite3* connection, char** message, const void* functions);
  static int event(unsigned type, void* trace, void* subject, void* detail);

  void add(sqlite3* connection);
  void remove(const sqlite3* connection);
  void add(const char* statement);

  mutable std::mutex mutex_;
  std::vector<sqlite3*> connections_;
  std::vector<std::string> statements_;
};

/// The first column of the first row of a query on a raw connection, as text; "NULL" without a value or a row.
std::string scalar(sqlite3* connection, const std::string& sql);

}  // namespace tessel::test
