#pragma once

#include <string>
#include <vector>

#include <boost/uuid/random_generator.hpp>

#include "sqlite.h"

namespace tessel::benchmarks::yardstick {

/// A connection with the flags and the setting that each project file is opened with.
Connection openProject(const std::string& path, int furtherFlags = 0);

/// An open project file, with the statements that all work on it shares.
class Session {
public:
  explicit Session(const std::string& path);

  const Connection& connection() const { return connection_; }

  unsigned int lastId() const { return static_cast<unsigned int>(sqlite3_last_insert_rowid(connection_.get())); }

private:
  friend class Transaction;
  friend class Savepoint;

  Connection connection_;
  Statement begin_, commit_, rollback_;
  boost::uuids::random_generator newName_;
};

/// Is rolled back unless it is committed.
class Transaction {
public:
  explicit Transaction(Session& session) : session_(&session) { session_->begin_.run(); }
  ~Transaction() {
    if (session_) session_->rollback_.run();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void commit() {
    session_->commit_.run();
    session_ = nullptr;
  }

private:
  Session* session_;
};

/// Each object is written under a savepoint of its own, whose name is random: so one that clashes can be undone alone.
class Savepoint {
public:
  explicit Savepoint(Session& session);

  void rollback() { execute("ROLLBACK TO SAVEPOINT "); }
  void release() { execute("RELEASE SAVEPOINT "); }

private:
  void execute(const char* verb) { Statement(session_.connection(), verb + name_).step(); }

  Session& session_;
  std::string name_;
};

/// A table of the format, from which the texts of its statements follow. The column "id" comes first.
struct Table {
  std::string name;
  std::vector<std::string> columns;
};

std::string insertInto(const Table& table);
std::string updateOf(const Table& table);
std::string selectFrom(const Table& table, const std::string& condition = "");
std::string selectById(const Table& table);

}  // namespace tessel::benchmarks::yardstick
