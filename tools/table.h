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

/// One line for each row, with the cells below each other, two spaces apart. A column without a text takes no room. On a
/// terminal the widest columns are shortened until the lines fit, but never to fewer than eight characters: a line that
/// is too long says more than a name of which nothing is left.
std::vector<std::string> linesOf(const Table& table, const std::string& indent = "");

/// Prints these lines.
void printTable(const Table& table, const std::string& indent = "");

}  // namespace tessel::tool
