#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace tessel::test {

/// What a project file of the current version holds, written out by hand and on purpose not taken from the
/// library: the tables in their order, each as the lines that `describeTable` must give for it.
struct ExpectedTable {
  std::string name;
  std::vector<std::string> lines;
};

/// The name of the table stands in the names of the tests that have it as parameter.
inline void PrintTo(const ExpectedTable& table, std::ostream* out) { *out << table.name; }

const std::vector<ExpectedTable>& expectedSchema();

}  // namespace tessel::test
