#include "compare.h"

namespace tessel::benchmarks {
namespace {

/// Each iteration is the whole work, so one is a measurement; what asks for medians asks for repetitions.
benchmark::internal::Benchmark* add(const std::string& name, double aim, const Body& body) {
  return benchmark::RegisterBenchmark(name.c_str(),
                                      [=](benchmark::State& state) {
                                        body(state);
                                        state.counters["aim"] = aim;
                                      })
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
}

}  // namespace

void compare(const std::string& work, double aim, const Body& library, const Body& yardstick) {
  add("compare/" + work + "/library", aim, library);
  add("compare/" + work + "/yardstick", aim, yardstick);
}

void compareByTheClock(const std::string& work, double aim, const Body& library, const Body& yardstick) {
  add("compare/" + work + "/library", aim, library)->UseRealTime();
  add("compare/" + work + "/yardstick", aim, yardstick)->UseRealTime();
}

}  // namespace tessel::benchmarks
