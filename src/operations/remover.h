#pragma once

#include <map>
#include <set>

#include <tessel/project_db.h>

#include "database/transaction_scope.h"

namespace tessel {

using RemoveResults = std::map<ObjectKey, RemoveResult>;

/// Removes rows of one class. All work in the transaction of an open scope, which they commit after each row: only a
/// commit tells whether a row is in use. The exceptions of ODB pass.
template <typename T>
class Remover {
public:
  explicit Remover(ProjectDb& db) : db_(db) {}

  /// Leaves the current transaction finalized, unless the reactor refused.
  RemoveResult remove(const TsSmartPtr<T>& object);
  RemoveResult remove(unsigned int id);

  /// Leaves the current transaction live.
  void removeEach(const std::set<unsigned int>& ids, Transaction& transaction, RemoveResults& results);

  std::set<unsigned int> allIds() const;

private:
  bool isRefused(unsigned int id);
  RemoveResult removeRow(unsigned int id);

  ProjectDb& db_;
};

/// Removes the rows of the keys class by class, those that refer to others first.
void removeKeys(ProjectDb& db, const std::set<ObjectKey>& keys, Transaction& transaction, RemoveResults& results);

}  // namespace tessel
