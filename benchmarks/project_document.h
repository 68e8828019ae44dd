#pragma once

#include <pugixml.hpp>

namespace tessel::benchmarks {

/// How much there is in a project.
struct ProjectSize {
  int sets = 0;
  int buildings = 0;
  int stories = 0;

  static constexpr int definitionsOfEach = 10;

  /// All that grows with the project; one site, namespace, entity type and unit come on top.
  int objects() const { return sets * (1 + definitionsOfEach) + buildings + stories; }

  /// The same mix with about so many objects.
  ProjectSize scaledTo(int objectCount) const;
};

// What the measured work is about.
constexpr ProjectSize importedProject{500, 100, 2000};
constexpr ProjectSize copiedProject{500, 100, 20000};

/// A parsed document for a new file.
pugi::xml_document projectDocument(const ProjectSize& size);

}  // namespace tessel::benchmarks
