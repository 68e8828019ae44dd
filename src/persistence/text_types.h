#pragma once

#include <optional>

#include <tessel/platform/od_string.h>

#include "persistence/traits.h"

namespace tessel {

using OptionalText = std::optional<OdString>;

}  // namespace tessel

#ifdef ODB_COMPILER
#pragma db value(OdString) type("TEXT")
#endif
