#pragma once

#include <memory>

#include <odb/transaction.hxx>

#include <tessel/transaction.h>

namespace tessel {

/// The transaction of the persistence layer, which knows the way back to ours.
class Transaction::Impl : public odb::transaction {
public:
  Impl(Transaction* transactionOwner, const std::shared_ptr<ProjectDb>& db) : owner(transactionOwner), projectDb(db) {}
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  Transaction* owner;
  std::shared_ptr<ProjectDb> projectDb;
};

}  // namespace tessel
