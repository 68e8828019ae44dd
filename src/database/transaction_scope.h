#pragma once

#include <odb/transaction.hxx>

#include <tessel/transaction.h>

namespace tessel {

/// Puts the thread's current transaction aside, if there is one, until its own end. That may be a transaction which the
/// host made without us, so it is not looked into.
class SetAside {
public:
  SetAside() = default;
  SetAside(const SetAside&) = delete;
  SetAside& operator=(const SetAside&) = delete;
  ~SetAside() {
    if (saved_) odb::transaction::current(*saved_);
  }

  void take() {
    if (!odb::transaction::has_current()) return;
    saved_ = &odb::transaction::current();
    odb::transaction::reset_current();
  }

private:
  odb::transaction* saved_ = nullptr;
};

/// The transaction that an operation of ProjectDb works in, for as long as it lives on the operation's stack: the
/// thread's current one if that is on the same database, or else one of its own. A current transaction on any other
/// database is set aside meanwhile, so one file can be read while another is written.
class TransactionScope {
public:
  /// std::bad_weak_ptr if the database is not held by a shared pointer.
  explicit TransactionScope(ProjectDb& db);

  /// Puts back what was set aside, and rolls back what was begun and not committed.
  ~TransactionScope() = default;

  TransactionScope(const TransactionScope&) = delete;
  TransactionScope& operator=(const TransactionScope&) = delete;

  /// Finalized if the scope has joined.
  Transaction& own() { return own_; }
  Transaction& current() { return *current_; }

  /// After a full disk or an I/O error SQLite may have rolled back a transaction that its owner takes for active. What
  /// is written then would be committed at once, statement by statement. ForcedRollback in such a case.
  void requireLive() const;

  /// Commits if the scope has begun a transaction and it is still open.
  void commitOwn();

private:
  Transaction own_;
  SetAside setAside_;
  Transaction* current_ = nullptr;
};

/// To be asked before a write that has no Savepoint around it, once a reactor of the host has run: throws
/// odb::sqlite::forced_rollback if the thread's current transaction is none in SQLite any more.
void requireTransaction();

}  // namespace tessel
