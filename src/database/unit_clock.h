#pragma once

#include <cstdint>

namespace tessel {

/// Goes on whenever column units that have been read may read differently now: when a row of a measure, a unit or a column
/// unit is written, and when a transaction ends that has written anything. One clock serves the whole process, because a
/// file may be open in several handles.
std::uint64_t unitClock();
void advanceUnitClock();

}  // namespace tessel
