#include "peak_memory.h"

#include <fstream>
#include <string>

#include <tessel/tessel.h>

#include "project_files.h"

namespace tessel::benchmarks {
namespace {

long peakOfProcess() {
  std::ifstream status("/proc/self/status");
  long kilobytes = 0;
  for (std::string word; status >> word;) {
    if (word == "VmHWM:") status >> kilobytes;
  }
  return kilobytes;
}

}  // namespace

long peakOfBulkSave(int storyCount) {
  const ProjectFiles files(0);
  const auto db = ProjectDb::open(OdString::fromUtf8(files.withBuilding()), false);
  const TsSmartPtr<const Building> building = db->get<Building>(ProjectFiles::building);
  Transaction transaction(db, Transaction::BeginCurrent);
  for (int i = 0; i < storyCount; ++i) {
    db->save(Story::create(building, OdString::fromUtf8("Story " + std::to_string(i)), i));
  }
  transaction.commit();
  return peakOfProcess();
}

}  // namespace tessel::benchmarks
