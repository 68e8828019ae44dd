#include "growth.h"

#include <algorithm>
#include <ctime>
#include <functional>
#include <iomanip>
#include <memory>
#include <string>
#include <vector>

#include "copy_files.h"
#include "library.h"
#include "project_document.h"
#include "project_files.h"

namespace tessel::benchmarks {
namespace {

constexpr int objectCounts[] = {1000, 10000, 100000};
constexpr double mostGrowth = 1.2;
constexpr int rounds = 5;
/// Of the small sizes, so that their times are no worse known than those of the largest.
constexpr int runsOfEachRound = 10;

/// Does the work once and returns its processor time in microseconds.
using Run = std::function<double()>;

template <typename Work>
double microsecondsOf(Work&& work) {
  const std::clock_t begin = std::clock();
  work();
  return 1e6 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

Run importOf(const ProjectSize& size) {
  const auto document = std::make_shared<pugi::xml_document>(projectDocument(size));
  return [document] {
    const Folder folder(inMemory());
    LibraryFile::create(folder.path("imported.tessel"));
    LibraryFile file(folder.path("imported.tessel"));
    return microsecondsOf([&] { file.importDocument(document->document_element()); });
  };
}

Run copyOf(const ProjectSize& size) {
  const auto files = std::make_shared<CopyFiles>(size);
  return [files] {
    const Folder folder(inMemory());
    LibraryFile source(files->source());
    LibraryFile destination(copied(files->destination(), folder.path("copied.tessel")));
    return microsecondsOf([&] { destination.copyAll(source); });
  };
}

struct Measurement {
  int objects;
  Run run;
  std::vector<double> times;

  void measure() {
    const int runs = objects < objectCounts[2] / 2 ? runsOfEachRound : 1;
    for (int i = 0; i < runs; ++i) times.push_back(run());
  }

  double timeOfOne() {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle / objects;
  }
};

/// The sizes take turns, so that a slow time of the machine meets all of them.
bool printWork(std::ostream& out, const std::string& work, const ProjectSize& mix, Run (*runOf)(const ProjectSize&)) {
  std::vector<Measurement> measurements;
  for (int count : objectCounts) {
    const ProjectSize size = mix.scaledTo(count);
    measurements.push_back({size.objects(), runOf(size), {}});
  }
  for (int round = 0; round < rounds; ++round) {
    for (Measurement& measurement : measurements) measurement.measure();
  }
  bool kept = true;
  const double first = measurements.front().timeOfOne();
  for (Measurement& measurement : measurements) {
    const double ratio = measurement.timeOfOne() / first;
    kept &= ratio <= mostGrowth;
    out << work << " of " << std::setw(6) << measurement.objects << " objects, time of one: " << std::fixed
        << std::setprecision(1) << std::setw(6) << measurement.timeOfOne() << " us" << std::setprecision(2)
        << std::setw(7) << ratio << (ratio <= mostGrowth ? "" : "  missed") << std::endl;
  }
  return kept;
}

}  // namespace

bool printGrowth(std::ostream& out) {
  const bool importKept = printWork(out, "import", importedProject, &importOf);
  return printWork(out, "copy", copiedProject, &copyOf) && importKept;
}

}  // namespace tessel::benchmarks
