#pragma once

#include <odb/exception.hxx>

namespace tessel {

/// Throws what a host sees of a failure of the persistence layer: ForcedRollback if the whole transaction is gone,
/// DatabaseException otherwise. The text of the caught exception is dropped.
[[noreturn]] void translateOdbException(const odb::exception& error);

}  // namespace tessel
