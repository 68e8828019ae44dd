#pragma once

#include <memory>

#include <odb/sqlite/connection.hxx>
#include <odb/transaction.hxx>
#include <sqlite3.h>

#include <tessel/transaction.h>

#include "database/unit_clock.h"

namespace tessel {

/// The transaction of the persistence layer, which knows the way back to ours.
class Transaction::Impl : public odb::transaction {
public:
  Impl(Transaction* transactionOwner, const std::shared_ptr<ProjectDb>& db) : owner(transactionOwner), projectDb(db) {}
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  /// Stands around whatever ends the transaction, and advances the clock if it has written anything.
  class End {
  public:
    explicit End(Impl& impl) : hasWritten_(!impl.finalized() && impl.changes() != impl.changesBefore) {}
    ~End() {
      if (hasWritten_) advanceUnitClock();
    }
    End(const End&) = delete;
    End& operator=(const End&) = delete;

  private:
    bool hasWritten_;
  };

  /// How many rows the connection has written so far, in all its transactions.
  int changes() { return sqlite3_total_changes(static_cast<odb::sqlite::connection&>(connection()).handle()); }

  Transaction* owner;
  std::shared_ptr<ProjectDb> projectDb;
  int changesBefore = 0;
};

}  // namespace tessel
