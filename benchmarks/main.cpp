#include <iostream>
#include <string>

#include <benchmark/benchmark.h>

#include "comparisons.h"
#include "growth.h"
#include "peak_memory.h"
#include "rows_check.h"
#include "table.h"

// tessel_benchmarks [options of Google Benchmark]     prints a table; status 1 if a ratio misses its aim
// tessel_benchmarks --check                           whether library and yardstick do the same work
// tessel_benchmarks --per-element                     what one object costs in imports and copies of several sizes;
//                                                     status 1 if it costs more in a larger one
// tessel_benchmarks --peak-memory N                   kB that the process has needed at most to save N stories
int main(int argc, char** argv) {
  using namespace tessel::benchmarks;
  const std::string option = argc > 1 ? argv[1] : "";
  if (option == "--check") return bothDoTheSame() ? 0 : 1;
  if (option == "--per-element") return printGrowth(std::cout) ? 0 : 1;
  if (option == "--peak-memory" && argc == 3) {
    std::cout << peakOfBulkSave(std::stoi(argv[2])) << "\n";
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  registerComparisons();
  Table table;
  benchmark::RunSpecifiedBenchmarks(&table);
  return table.missed() == 0 ? 0 : 1;
}
