#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace tessel::benchmarks {

/// Prints one line for each pair of benchmarks called "compare/<work>/<ours>" and "compare/<work>/<other>", of which ours is
/// registered first: the median time of each, their ratio, and the ratio to keep to, which the counter "aim" of ours tells.
class Table : public benchmark::BenchmarkReporter {
public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

  /// How many ratios are above their aim.
  int missed() const { return missed_; }

private:
  struct Side {
    std::string name;
    std::int64_t place = 0;  ///< Among all benchmarks that are registered. They are reported in any order.
    std::vector<double> times;
  };
  struct Work {
    std::string name;
    double aim = 0;
    std::vector<Side> sides;
  };

  Work& workOf(const std::string& name);
  void print(const Work& work);

  std::vector<Work> works_;
  int missed_ = 0;
};

}  // namespace tessel::benchmarks
