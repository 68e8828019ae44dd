#include "table.h"

#include <algorithm>
#include <iomanip>

namespace tessel::benchmarks {
namespace {

constexpr int workWidth = 46;
constexpr int numberWidth = 11;

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

std::string spaced(std::string name) {
  std::replace(name.begin(), name.end(), '_', ' ');
  return name;
}

}  // namespace

bool Table::ReportContext(const Context&) {
  GetOutputStream() << std::left << std::setw(workWidth) << "work" << std::right << std::setw(numberWidth)
                    << "tessel ms" << std::setw(numberWidth) << "other ms" << std::setw(numberWidth) << "ratio"
                    << std::setw(numberWidth) << "aim"
                    << "\n";
  return true;
}

void Table::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration) continue;
    const std::string name = run.run_name.function_name;
    const auto sideBegin = name.rfind('/'), workBegin = name.find('/');
    if (workBegin == sideBegin) continue;
    Work& work = workOf(name.substr(workBegin + 1, sideBegin - workBegin - 1));
    const std::string sideName = name.substr(sideBegin + 1);
    const auto aim = run.counters.find("aim");
    if (aim != run.counters.end()) work.aim = aim->second.value;
    auto side = std::find_if(work.sides.begin(), work.sides.end(), [&](const Side& s) { return s.name == sideName; });
    if (side == work.sides.end()) side = work.sides.insert(side, {sideName, run.family_index, {}});
    // A disk makes the process wait, which costs no processor time.
    const bool byTheClock = run.run_name.time_type == "real_time";
    side->times.push_back(byTheClock ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime());
  }
}

Table::Work& Table::workOf(const std::string& name) {
  const auto found = std::find_if(works_.begin(), works_.end(), [&](const Work& w) { return w.name == name; });
  if (found != works_.end()) return *found;
  works_.push_back({name, 0, {}});
  return works_.back();
}

void Table::Finalize() {
  const auto byPlace = [](const Side& left, const Side& right) { return left.place < right.place; };
  for (Work& work : works_) std::sort(work.sides.begin(), work.sides.end(), byPlace);
  std::sort(works_.begin(), works_.end(),
            [&](const Work& left, const Work& right) { return byPlace(left.sides.front(), right.sides.front()); });
  for (const Work& work : works_) print(work);
}

void Table::print(const Work& work) {
  if (work.sides.size() != 2) return;
  const double ours = median(work.sides[0].times), other = median(work.sides[1].times);
  const bool kept = work.aim == 0 || ours / other <= work.aim;
  if (!kept) ++missed_;
  GetOutputStream() << std::left << std::setw(workWidth) << spaced(work.name) << std::right << std::fixed
                    << std::setprecision(1) << std::setw(numberWidth) << ours << std::setw(numberWidth) << other
                    << std::setprecision(2) << std::setw(numberWidth) << ours / other << std::setw(numberWidth)
                    << work.aim << (kept ? "" : "  missed") << std::endl;
}

}  // namespace tessel::benchmarks
