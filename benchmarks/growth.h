#pragma once

#include <ostream>

namespace tessel::benchmarks {

/// Prints what one object costs the library in an import and in a copy of 1000, 10,000 and 100,000 objects. False if one
/// costs a fifth more than in the smallest.
bool printGrowth(std::ostream& out);

}  // namespace tessel::benchmarks
