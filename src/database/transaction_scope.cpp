#include "database/transaction_scope.h"

#include <sqlite3.h>

#include <odb/sqlite/connection.hxx>
#include <odb/sqlite/exceptions.hxx>
#include <odb/sqlite/transaction.hxx>

#include <tessel/exceptions.h>

#include "database/project_db_impl.h"

namespace tessel {
namespace {

bool isCurrentOn(const ProjectDb& db) {
  return odb::transaction::has_current() && &odb::transaction::current().database() == db.impl().database.get();
}

/// Whether SQLite still has the thread's current transaction.
bool stands() { return !sqlite3_get_autocommit(odb::sqlite::transaction::current().connection().handle()); }

}  // namespace

TransactionScope::TransactionScope(ProjectDb& db) : own_(db.shared_from_this(), Transaction::NoBegin) {
  if (!isCurrentOn(db)) {
    setAside_.take();
    own_.reset(true);
  }
  current_ = &Transaction::current();
}

void TransactionScope::requireLive() const {
  if (!stands()) throw ForcedRollback();
}

void TransactionScope::commitOwn() {
  if (!own_.finalized()) own_.commit();
}

void requireTransaction() {
  if (!stands()) throw odb::sqlite::forced_rollback();
}

}  // namespace tessel
