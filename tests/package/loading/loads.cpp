// Loads a plug-in that uses the library, opens a project with it and unloads it, again and again. The memory in use must
// not grow after the first rounds. This program links nothing of the library, so nothing but the plug-in asks for it.
//
//   loads PLUGIN FOLDER ROUNDS [LIBRARY...]
//
// Each LIBRARY is loaded first and kept, as by a program that uses it for something else.
//
// Run it with GLIBC_TUNABLES=glibc.malloc.tcache_count=0: what the C library keeps for reuse in its thread caches counts
// as in use, and these caches fill for hundreds of rounds.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include <dlfcn.h>
#include <malloc.h>

namespace {

constexpr int warmUp = 110;
/// From time to time the file goes, so that the next round makes it: tables are made from what loading has registered.
constexpr int roundsPerFile = 100;
/// Less than the smallest piece of memory for each round.
constexpr std::size_t tolerancePerRound = 8;

using UseProject = bool (*)(const char* file);

struct Memory {
  std::size_t allocated = 0;  ///< Bytes that malloc has handed out.
  std::size_t mappings = 0;   ///< Lines of the process's memory map.
};

Memory memoryInUse() {
  Memory memory;
  const struct mallinfo2 info = mallinfo2();
  memory.allocated = info.uordblks + info.hblkhd;
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    ++memory.mappings;
  }
  return memory;
}

void require(bool condition, const std::string& what) {
  if (!condition) throw std::runtime_error(what);
}

void* load(const char* library) {
  void* const handle = dlopen(library, RTLD_NOW | RTLD_GLOBAL);
  if (!handle) throw std::runtime_error(dlerror());
  return handle;
}

void loadAndUse(const char* plugin, const std::string& file) {
  void* const handle = load(plugin);
  const auto useProject = reinterpret_cast<UseProject>(dlsym(handle, "useProject"));
  require(useProject, "the plug-in has no function useProject");
  require(useProject(file.c_str()), file + " could not be opened");
  require(dlclose(handle) == 0, "the plug-in could not be unloaded");
}

void run(const char* plugin, const std::string& file, int begin, int end) {
  for (int round = begin; round < end; ++round) {
    if (round % roundsPerFile == 0) std::remove(file.c_str());
    loadAndUse(plugin, file);
  }
}

void checkMemory(const char* plugin, const std::string& file, int rounds) {
  require(rounds > warmUp, "too few rounds");
  run(plugin, file, 0, warmUp);
  const Memory before = memoryInUse();
  run(plugin, file, warmUp, rounds);
  const Memory after = memoryInUse();
  std::cout << "after " << warmUp << " and " << rounds << " rounds: " << before.allocated << " and " << after.allocated
            << " bytes allocated, " << before.mappings << " and " << after.mappings << " mappings\n";
  const std::size_t tolerance = tolerancePerRound * static_cast<std::size_t>(rounds - warmUp);
  require(after.allocated <= before.allocated + tolerance, "the memory in use grows with each loading");
  require(after.mappings <= before.mappings, "the number of mappings grows");
}

}  // namespace

int main(int argc, char** argv) {
  try {
    require(argc >= 4, "usage: loads PLUGIN FOLDER ROUNDS [LIBRARY...]");
    for (int i = 4; i < argc; ++i) {
      load(argv[i]);
    }
    checkMemory(argv[1], std::string(argv[2]) + "/loaded.tessel", std::atoi(argv[3]));
  } catch (const std::exception& error) {
    std::cerr << "loads: " << error.what() << "\n";
    return 1;
  }
}
