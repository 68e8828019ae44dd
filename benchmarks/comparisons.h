#pragma once

namespace tessel::benchmarks {

/// Registers each piece of work twice, as "compare/<work>/library" and "compare/<work>/yardstick". The counter "aim" of
/// both is the ratio of the two times that the library is to keep to.
void registerComparisons();

}  // namespace tessel::benchmarks
