#pragma once

#include <tessel/platform/od_string.h>

namespace tessel {

/// The specification of an enumeration with the values of `current` first, and behind them those of `old` that it lacks:
/// importing adds values to an enumeration and never takes any away. Both are JSON objects; `current` itself is the answer
/// if one of the two is no enumeration, or if there is no old one.
///
/// ReadError if one of the two is no JSON, KeyError without the key "type" or "values", ValueError where those are of
/// another kind. `current` is not looked at if there is no old one.
OdString mergeEnumSpec(const OdString& current, const OdString& old);

}  // namespace tessel
