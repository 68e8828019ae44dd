#pragma once

namespace tessel::benchmarks {

/// Whether library and yardstick write the same rows and read the same objects, without which their times say nothing.
/// What differs is told on standard error.
bool bothDoTheSame();

}  // namespace tessel::benchmarks
