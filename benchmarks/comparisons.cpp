#include "comparisons.h"

#include <malloc.h>

#include "compare.h"
#include "library.h"
#include "project_files.h"
#include "yardstick.h"

namespace tessel::benchmarks {
namespace {

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
  const auto path = [&] { return copied(files().withBuilding(), folder.path("saved.tessel")); };
  timeOnNew<File>(state, path, [&](File& file) { file.saveStories(ProjectFiles::building, names); });
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
void sitesByKey(benchmark::State& state) {
  File file(files().withStories());
  const auto name = textOf<typename File::Text>(ProjectFiles::siteName);
  typename File::Transaction transaction(file);
  for (auto _ : state) {
    for (int i = 0; i < storyCount; ++i) benchmark::DoNotOptimize(file.site(name));
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
  const auto path = [&] { return copied(files().withStories(), folder.path("removed.tessel")); };
  timeOnNew<File>(state, path, [](File& file) {
    for (unsigned int i = 0; i < removedCount; ++i) file.removeStory(ProjectFiles::firstStory + i);
  });
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

template <typename File>
Body removalIn(std::string (*parent)()) {
  return [=](benchmark::State& state) { removeStories<File>(state, parent()); };
}

}  // namespace

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

void compareStories() {
  compare("save_20000_new_stories", 1.15, &saveStories<LibraryFile>, &saveStories<YardstickFile>);
  compare("load_20000_stories", 1.45, &loadStories<LibraryFile>, &loadStories<YardstickFile>);
  compare("20000_look-ups_by_id", 1.5, &storiesById<LibraryFile>, &storiesById<YardstickFile>);
  compare("20000_look-ups_by_key_of_a_site", 0.25, &sitesByKey<LibraryFile>, &sitesByKey<YardstickFile>);
  // Two thirds of this are the building and its site, which both sides load; only the query is prepared once or each time.
  compare("20000_look-ups_by_key_of_a_story", 0.4, &storiesByKey<LibraryFile>, &storiesByKey<YardstickFile>);
  compare("20000_look-ups_of_a_default_unit", 1.5, &defaultUnits<LibraryFile>, &defaultUnits<YardstickFile>);
  compare("20000_look-ups_of_a_column_unit", 1.5, &columnUnits<LibraryFile>, &columnUnits<YardstickFile>);
  compare("remove_2000_stories_in_memory", 1.3, removalIn<LibraryFile>(&inMemory), removalIn<YardstickFile>(&inMemory));
  compareByTheClock("remove_2000_stories_on_disk", 1.1, removalIn<LibraryFile>(&onDisk),
                    removalIn<YardstickFile>(&onDisk));
}

void registerComparisons() {
  compareStories();
  compareCatalogue();
  compareImportAndCopy();
  compareWholeFiles();
}

}  // namespace tessel::benchmarks
