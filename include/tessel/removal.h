#pragma once

#include <cstdint>

namespace tessel {

/// The answer of a reactor to a removal.
enum class RemoveResolution : std::int32_t { Remove = 0, Refuse = 1 };

/// What became of a row that was to be removed.
struct RemoveResult {
  /// The numbers are part of the interface.
  enum Outcome : std::int32_t {
    Removed = 0,  ///< For good: it is committed.
    Refused = 1,  ///< By the reactor; the row is untouched.
    InUse = 3,    ///< Another row refers to it, and the transaction is gone.
  };

  Outcome outcome = Removed;  ///< Of this row; see ProjectDb::remove.
};

}  // namespace tessel
