#include "database/unit_clock.h"

#include <atomic>

namespace tessel {
namespace {

std::atomic<std::uint64_t> ticks{0};

}  // namespace

std::uint64_t unitClock() { return ticks.load(std::memory_order_relaxed); }
void advanceUnitClock() { ticks.fetch_add(1, std::memory_order_relaxed); }

}  // namespace tessel
