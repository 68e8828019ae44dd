#pragma once

namespace tessel::benchmarks {

/// Registers each piece of work for the library and for the yardstick.
void registerComparisons();

// Its parts, by subject.
void compareStories();
void compareWholeFiles();
void compareCatalogue();
void compareImportAndCopy();

}  // namespace tessel::benchmarks
