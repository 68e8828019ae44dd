#pragma once

#include <type_traits>
#include <utility>

#include "database/odb_errors.h"
#include "database/transaction_scope.h"

namespace tessel {

/// The form of a public operation that reads: it works in a TransactionScope and never commits, and no exception of the
/// persistence layer leaves it.
template <typename Body>
auto readOperation(const ProjectDb& db, Body&& body) {
  try {
    // A transaction belongs to the handle as a whole; reading changes nothing that its users could see.
    TransactionScope scope(const_cast<ProjectDb&>(db));
    return std::forward<Body>(body)();
  } catch (const odb::exception& error) {
    translateOdbException(error);
  }
}

/// The form of a public operation that writes: it commits what the scope has begun, and leaves a joined transaction to
/// its owner.
template <typename Body>
auto writeOperation(ProjectDb& db, Body&& body) {
  try {
    TransactionScope scope(db);
    scope.requireLive();
    if constexpr (std::is_void_v<decltype(body())>) {
      body();
      scope.commitOwn();
    } else {
      auto result = body();
      // An operation without a result has done nothing.
      if (result) scope.commitOwn();
      return result;
    }
  } catch (const odb::exception& error) {
    translateOdbException(error);
  }
}

}  // namespace tessel
