#include "catalogue_files.h"
#include "compare.h"
#include "comparisons.h"
#include "copy_files.h"
#include "library.h"
#include "project_document.h"
#include "yardstick.h"

namespace tessel::benchmarks {
namespace {

constexpr int setCount = 500;

const CatalogueFiles& catalogueFiles() {
  static const CatalogueFiles instance(setCount);
  return instance;
}

template <typename File>
void saveSets(benchmark::State& state) {
  const Folder folder(inMemory());
  const auto texts = setTexts<typename File::Text>(setCount, CatalogueFiles::definitionsOfEach);
  const auto path = [&] { return copied(catalogueFiles().withoutSets(), folder.path("saved.tessel")); };
  timeOnNew<File>(state, path, [&](File& file) { file.saveSets(texts); });
}

template <typename File>
struct LoadedSets {
  explicit LoadedSets(const std::string& path) : file(path), sets(file.sets()) {}

  File file;
  std::vector<typename File::Set> sets;
};

template <typename File>
void changeSets(benchmark::State& state) {
  const Folder folder(inMemory());
  const auto texts = changedSetTexts<typename File::Text>(setCount);
  const auto path = [&] { return copied(catalogueFiles().withSets(), folder.path("changed.tessel")); };
  timeOnNew<LoadedSets<File>>(state, path,
                              [&](LoadedSets<File>& loaded) { loaded.file.changeSets(loaded.sets, texts); });
}

template <typename File>
void importDocument(benchmark::State& state) {
  static const pugi::xml_document document = projectDocument(importedProject);
  const Folder folder(inMemory());
  LibraryFile::create(folder.path("new.tessel"));
  const auto path = [&] { return copied(folder.path("new.tessel"), folder.path("imported.tessel")); };
  timeOnNew<File>(state, path, [&](File& file) { file.importDocument(document.document_element()); });
}

template <typename File>
void copyAll(benchmark::State& state) {
  static const CopyFiles files(copiedProject);
  const Folder folder(inMemory());
  File source(files.source());
  const auto path = [&] { return copied(files.destination(), folder.path("copied.tessel")); };
  timeOnNew<File>(state, path, [&](File& file) { file.copyAll(source); });
}

}  // namespace

void compareCatalogue() {
  compare("save_500_new_sets_of_10_new_definitions", 1.15, &saveSets<LibraryFile>, &saveSets<YardstickFile>);
  compare("save_500_changed_sets", 1.15, &changeSets<LibraryFile>, &changeSets<YardstickFile>);
}

void compareImportAndCopy() {
  compare("import_500_sets_and_2000_stories", 1.0, &importDocument<LibraryFile>, &importDocument<YardstickFile>);
  compare("copy_500_sets_and_20000_stories", 0.8, &copyAll<LibraryFile>, &copyAll<YardstickFile>);
}

}  // namespace tessel::benchmarks
