#pragma once

#include <odb/transaction.hxx>

#include <tessel/transaction.h>

namespace tessel {

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
  /// A current transaction of another database. It may be one that the host made without us, so it is not looked into.
  struct SetAside {
    odb::transaction* saved = nullptr;
    ~SetAside() {
      if (saved) odb::transaction::current(*saved);
    }
  };

  Transaction own_;
  SetAside setAside_;
  Transaction* current_ = nullptr;
};

}  // namespace tessel
