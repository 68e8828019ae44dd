#pragma once

#include "project_files.h"

namespace tessel::benchmarks {

/// The files that work on property sets starts from.
class CatalogueFiles {
public:
  explicit CatalogueFiles(int setCount);

  static constexpr unsigned int propertyNamespace = 1;
  static constexpr unsigned int entityType = 1;
  static constexpr unsigned int unit = 1;
  static constexpr int definitionsOfEach = 10;

  int setCount() const { return setCount_; }

  /// A namespace, an entity type and a unit.
  std::string withoutSets() const { return folder_.path("without.tessel"); }
  std::string withSets() const { return folder_.path("with.tessel"); }

private:
  Folder folder_;
  int setCount_;
};

}  // namespace tessel::benchmarks
