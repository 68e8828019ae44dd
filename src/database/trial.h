#pragma once

#include <string>

#include <tessel/inspect.h>

#include "database/look.h"

namespace tessel {

/// How an opening ended that was tried out.
struct Trial {
  OpenOutcome outcome;
  std::string reason;  ///< Why it did not open; may hold text of the file.
};

/// Does what an opening does with a file that needs no migration.
Trial tryOpening(const Look& look, const Location& location);

/// Does what an opening does with a file of an older version, in a temporary copy of it. `database_error` if it cannot
/// be copied.
Trial tryMigration(const Look& look);

}  // namespace tessel
