#include "database/transaction_impl.h"

#include <odb/exceptions.hxx>
#include <odb/sqlite/database.hxx>

#include <tessel/exceptions.h>

#include "database/project_db_impl.h"
#include "object/current_database.h"

namespace tessel {

Transaction::Transaction(const std::shared_ptr<ProjectDb>& db, Init init) : impl_(std::make_unique<Impl>(this, db)) {
  if (init != NoBegin) reset(init == BeginCurrent);
}

// The database must outlive what is rolled back in it, and this may be its last owner. A transaction whose commit or
// rollback failed still has its connection, for which the database would wait for ever.
Transaction::~Transaction() {
  const std::shared_ptr<ProjectDb> db = impl_->projectDb;
  const Impl::End end(*impl_);
  impl_.reset();
}

const std::shared_ptr<ProjectDb>& Transaction::projectDb() const { return impl_->projectDb; }
bool Transaction::finalized() const { return impl_->finalized(); }

void Transaction::commit() {
  const Impl::End end(*impl_);
  impl_->commit();
}

void Transaction::rollback() {
  const Impl::End end(*impl_);
  impl_->rollback();
}

void Transaction::reset(bool makeCurrent) {
  // Asked beforehand, because ODB rolls back what this object still had open before it refuses. If that is the current one,
  // it makes room for the next.
  const bool isBusy = hasCurrent() && (finalized() || &odb::transaction::current() != impl_.get());
  if (makeCurrent && isBusy) throw AlreadyInTransaction();
  const Impl::End end(*impl_);
  impl_->reset(impl_->projectDb->impl().database->begin(), makeCurrent);
  impl_->changesBefore = impl_->changes();
}

void Transaction::makeCurrent() { odb::transaction::current(*impl_); }

bool Transaction::hasCurrent() { return odb::transaction::has_current(); }
Transaction& Transaction::current() { return *static_cast<Impl&>(odb::transaction::current()).owner; }
void Transaction::current(Transaction& transaction) { transaction.makeCurrent(); }
void Transaction::clearCurrent() { odb::transaction::reset_current(); }

std::weak_ptr<ProjectDb> currentProjectDb() { return Transaction::current().projectDb(); }

}  // namespace tessel
