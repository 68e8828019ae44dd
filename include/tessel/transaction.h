#pragma once

#include <memory>

#include <tessel/export.h>
#include <tessel/fwd.h>

namespace tessel {

/// A transaction of the host on one project file. It keeps the database open as long as it lives.
///
///     Transaction transaction(db, Transaction::BeginCurrent);
///     site->save(db);
///     building->save(db);  // one commit for both, and both or neither
///     transaction.commit();
///
/// A thread has at most one current transaction. The operations of ProjectDb join it if it is one of their own
/// database; otherwise they begin and commit one for themselves, which is slower. A transaction that is destroyed
/// before it was committed is rolled back. Rolling back restores the file, never the objects in memory.
///
/// Members that begin or finish a transaction or ask for the current one let the exceptions of ODB pass, for instance
/// odb::sqlite::database_exception for a file that has gone, odb::transaction_already_finalized and
/// odb::not_in_transaction.
class TESSEL_API Transaction {
public:
  /// How a transaction starts.
  enum Init : int {
    NoBegin = 0,       ///< Finalized until `reset`.
    Begin = 1,         ///< Begins, but is not the thread's current transaction.
    BeginCurrent = 2,  ///< Begins and is the thread's current transaction.
  };

  /// `db` must not be null. AlreadyInTransaction if it is to be the current one and the thread has one already.
  Transaction(const std::shared_ptr<ProjectDb>& db, Init init);

  /// Rolls back what is not finalized.
  ~Transaction();

  // The persistence layer finds the way back to this very object.
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// The database given at construction.
  const std::shared_ptr<ProjectDb>& projectDb() const;

  /// Whether there is nothing to commit: before a begin, and after commit or rollback.
  bool finalized() const;

  /// End the transaction: what was written is durable, or gone from the file. If it was the current
  /// one of the calling thread, that has none afterwards.
  ///@{
  void commit();
  void rollback();
  ///@}

  /// Begins a new transaction of the file on this object, which rolls back what it still had open.
  /// AlreadyInTransaction as in the constructor; the object then stays as it was.
  void reset(bool makeCurrent);

  /// Makes this the current transaction of the calling thread. To hand a transaction to another thread, clear it on
  /// the first one.
  void makeCurrent();

  /// The current transaction of the calling thread.
  ///@{
  static bool hasCurrent();
  static Transaction& current();
  static void current(Transaction& transaction);
  ///@}

  /// The thread has no current transaction afterwards; the transaction itself stays open.
  static void clearCurrent();

private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tessel
