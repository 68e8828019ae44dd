#pragma once

#include <optional>
#include <string>

namespace tessel {

/// The message of a refused write, where there is one.
using FailureMessage = std::optional<std::string>;

/// Whether SQLite refused a write because of a unique index; only its message tells.
bool isUniqueFailure(const std::string& message);

/// ObjectNotUnique for the columns that the message of a unique failure names, such as "Unit.measure_id,Unit.label", or
/// for none that is known.
[[noreturn]] void throwNotUnique(const FailureMessage& message);

}  // namespace tessel
