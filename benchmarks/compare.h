#pragma once

#include <functional>
#include <string>

#include <benchmark/benchmark.h>

namespace tessel::benchmarks {

using Body = std::function<void(benchmark::State&)>;

/// Registers a piece of work as "compare/<work>/library" and "compare/<work>/yardstick". The counter "aim" of both is the
/// ratio of the two times that the library is to keep to.
void compare(const std::string& work, double aim, const Body& library, const Body& yardstick);

/// The same for work that makes the process wait for a disk, which costs no processor time.
void compareByTheClock(const std::string& work, double aim, const Body& library, const Body& yardstick);

/// Times `work` on a `Subject`, which is made anew from a path each time. Neither making it nor closing it counts.
template <typename Subject, typename MakePath, typename Work>
void timeOnNew(benchmark::State& state, MakePath&& makePath, Work&& work) {
  for (auto _ : state) {
    state.PauseTiming();
    {
      Subject subject(makePath());
      state.ResumeTiming();
      work(subject);
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

}  // namespace tessel::benchmarks
