#pragma once

#include "project_document.h"
#include "project_files.h"

namespace tessel::benchmarks {

/// The files that a copy starts from. Both say in which units their columns are, and these are not the same.
class CopyFiles {
public:
  explicit CopyFiles(const ProjectSize& size);

  std::string source() const { return folder_.path("source.tessel"); }
  /// Without objects, but for the units of the columns.
  std::string destination() const { return folder_.path("destination.tessel"); }

private:
  Folder folder_;
};

}  // namespace tessel::benchmarks
