#include "database/odb_errors.h"

#include <odb/sqlite/exceptions.hxx>

#include <tessel/exceptions.h>

namespace tessel {

void translateOdbException(const odb::exception& error) {
  if (dynamic_cast<const odb::sqlite::forced_rollback*>(&error)) throw ForcedRollback();
  throw DatabaseException();
}

}  // namespace tessel
