#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace tessel::tool {

/// The texts of one line of a table.
using Cells = std::vector<std::string>;

struct Table {
  std::vector<Cells> rows;
  bool hasHeading = false;        ///< The first row is one.
  std::set<std::size_t> numbers;  ///< Columns that are never shortened: half a number is another number.
};

/// Prints lines with their cells below each other, two spaces apart. A column without a text takes no room. On a
/// terminal the widest columns are shortened until the lines fit.
void printTable(const Table& table, const std::string& indent = "");

}  // namespace tessel::tool
