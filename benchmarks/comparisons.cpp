#include "comparisons.h"

#include <filesystem>
#include <functional>
#include <malloc.h>

#include <benchmark/benchmark.h>

#include "library.h"
#include "project_files.h"
#include "yardstick.h"

namespace tessel::benchmarks {
namespace {

using Body = std::function<void(benchmark::State&)>;

constexpr int storyCount = 20000;
constexpr int removedCount = 2000;
constexpr int createdCount = 20;
constexpr int openedCount = 100;

const ProjectFiles& files() {
  static const ProjectFiles instance(storyCount);
  return instance;
}

template <typename File>
void saveStories(benchmark::State& state) {
  const Folder folder(inMemory());
  const auto names = storyNames<typename File::Text>(storyCount);
  for (auto _ : state) {
    state.PauseTiming();
    {
      File file(copied(files().withBuilding(), folder.path("saved.tessel")));
      state.ResumeTiming();
      file.saveStories(ProjectFiles::building, names);
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

template <typename File>
void loadStories(benchmark::State& state) {
  File file(files().withStories());
  typename File::Transaction transaction(file);
  for (auto _ : state) {
    auto stories = file.stories();
    benchmark::DoNotOptimize(stories);
    state.PauseTiming();
    stories.clear();
    ::malloc_trim(0);
    state.ResumeTiming();
  }
}

template <typename File>
void storiesById(benchmark::State& state) {
  File file(files().withStories());
  typename File::Transaction transaction(file);
  for (auto _ : state) {
    for (unsigned int i = 0; i < storyCount; ++i) benchmark::DoNotOptimize(file.story(ProjectFiles::firstStory + i));
  }
}

template <typename File>
void storiesByKey(benchmark::State& state) {
  File file(files().withStories());
  const auto names = storyNames<typename File::Text>(storyCount);
  typename File::Transaction transaction(file);
  for (auto _ : state) {
    for (const auto& name : names) benchmark::DoNotOptimize(file.story(name, ProjectFiles::building));
  }
}

template <typename File>
void defaultUnits(benchmark::State& state) {
  File file(files().withStories());
  typename File::Transaction transaction(file);
  for (auto _ : state) {
    for (int i = 0; i < storyCount; ++i) benchmark::DoNotOptimize(file.defaultLengthUnit());
  }
}

template <typename File>
void columnUnits(benchmark::State& state) {
  File file(files().withStories());
  typename File::Transaction transaction(file);
  for (auto _ : state) {
    for (int i = 0; i < storyCount; ++i) benchmark::DoNotOptimize(file.elevationUnit());
  }
}

template <typename File>
void removeStories(benchmark::State& state, const std::string& parent) {
  const Folder folder(parent);
  for (auto _ : state) {
    state.PauseTiming();
    {
      File file(copied(files().withStories(), folder.path("removed.tessel")));
      state.ResumeTiming();
      for (unsigned int i = 0; i < removedCount; ++i) file.removeStory(ProjectFiles::firstStory + i);
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

template <typename Create>
void createFiles(benchmark::State& state, Create&& create) {
  for (auto _ : state) {
    state.PauseTiming();
    {
      const Folder folder(inMemory());
      state.ResumeTiming();
      for (int i = 0; i < createdCount; ++i) create(folder.path(std::to_string(i)));
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

template <typename Open>
void openFiles(benchmark::State& state, Open&& open) {
  const std::string path = files().withStories();
  for (auto _ : state) {
    for (int i = 0; i < openedCount; ++i) open(path);
  }
}

template <typename Migrate>
void migrateFile(benchmark::State& state, Migrate&& migrate) {
  const Folder folder(inMemory());
  for (auto _ : state) {
    state.PauseTiming();
    const std::string path = copied(files().old(), folder.path("old.tessel"));
    state.ResumeTiming();
    migrate(path);
  }
}

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

void compare(const std::string& work, double aim, const Body& library, const Body& yardstick) {
  add("compare/" + work + "/library", aim, library);
  add("compare/" + work + "/yardstick", aim, yardstick);
}

/// A disk makes the process wait, which costs no processor time.
void compareByTheClock(const std::string& work, double aim, const Body& library, const Body& yardstick) {
  add("compare/" + work + "/library", aim, library)->UseRealTime();
  add("compare/" + work + "/yardstick", aim, yardstick)->UseRealTime();
}

template <typename File>
Body removalIn(std::string (*parent)()) {
  return [=](benchmark::State& state) { removeStories<File>(state, parent()); };
}

void compareWholeFiles() {
  compare(
    "create_a_file_(20_times)", 1.25, [](auto& state) { createFiles(state, &LibraryFile::create); },
    [](auto& state) {
      const YardstickFile::Schema schema(files().withBuilding());
      createFiles(state, [&](const std::string& path) { YardstickFile::create(path, schema); });
    });
  compare(
    "open_a_file_(100_times)", 1.5, [](auto& state) { openFiles(state, &LibraryFile::open); },
    [](auto& state) { openFiles(state, &YardstickFile::open); });
  compare(
    "migrate_20000_stories_from_1000_to_1010", 1.1, [](auto& state) { migrateFile(state, &LibraryFile::open); },
    [](auto& state) {
      const YardstickFile::Migration migration;
      migrateFile(state, [&](const std::string& path) { YardstickFile::migrate(path, migration); });
    });
}

}  // namespace

void registerComparisons() {
  compare("save_20000_new_stories", 1.15, &saveStories<LibraryFile>, &saveStories<YardstickFile>);
  compare("load_20000_stories", 1.45, &loadStories<LibraryFile>, &loadStories<YardstickFile>);
  compare("20000_look-ups_by_id", 1.5, &storiesById<LibraryFile>, &storiesById<YardstickFile>);
  compare("20000_look-ups_by_key", 0.25, &storiesByKey<LibraryFile>, &storiesByKey<YardstickFile>);
  compare("20000_look-ups_of_a_default_unit", 1.5, &defaultUnits<LibraryFile>, &defaultUnits<YardstickFile>);
  compare("20000_look-ups_of_a_column_unit", 1.5, &columnUnits<LibraryFile>, &columnUnits<YardstickFile>);
  compareWholeFiles();
  compare("remove_2000_stories_in_memory", 1.3, removalIn<LibraryFile>(&inMemory), removalIn<YardstickFile>(&inMemory));
  compareByTheClock("remove_2000_stories_on_disk", 1.1, removalIn<LibraryFile>(&onDisk),
                    removalIn<YardstickFile>(&onDisk));
}

}  // namespace tessel::benchmarks
