#pragma once

#include <string>
#include <string_view>

#include <odb/database.hxx>

namespace tessel {

/// A savepoint of the thread's current transaction on a database, under a random name.
///
/// After some faults, such as a full disk, SQLite has rolled the whole transaction back and no savepoint is left. So the
/// statements that run while an exception is on its way ignore their own failure; an explicit call reports it. There is
/// no savepoint without a transaction in the file: odb::sqlite::forced_rollback if SQLite has ended it.
class Savepoint {
public:
  explicit Savepoint(odb::database& database);

  /// Releases what was not released; a failure is ignored.
  ~Savepoint();

  Savepoint(const Savepoint&) = delete;
  Savepoint& operator=(const Savepoint&) = delete;

  /// Takes the savepoint off the stack and keeps what was done since; once only.
  void release();

  /// Undoes what was done since. The savepoint stays on the stack, as SQLite has it, and is still to be released. After
  /// the release nothing happens.
  void rollback();

private:
  void execute(std::string_view verb);

  odb::database& database_;
  std::string name_;
  bool released_ = false;
};

/// Rolls back to the savepoint unless the work was marked as done; a failure is ignored.
class SavepointGuard {
public:
  explicit SavepointGuard(Savepoint& savepoint) : savepoint_(savepoint) {}
  ~SavepointGuard();

  SavepointGuard(const SavepointGuard&) = delete;
  SavepointGuard& operator=(const SavepointGuard&) = delete;

  void setDone() { done_ = true; }

private:
  Savepoint& savepoint_;
  bool done_ = false;
};

}  // namespace tessel
