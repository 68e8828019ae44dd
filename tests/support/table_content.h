#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/raw_file.h"

namespace tessel::test {

/// The rows of a table with the names of their columns, so that the same columns can be read again later.
struct TableContent {
  std::vector<std::string> columns;
  RawFile::Rows rows;
};

/// By the names of the tables.
using Content = std::map<std::string, TableContent>;

/// All tables but SQLite's own.
Content readContent(RawFile& file);

/// The rows in the order of their keys.
RawFile::Rows readRows(RawFile& file, const std::string& table, const std::vector<std::string>& columns);

/// All that as one text.
std::string describe(const Content& content);

}  // namespace tessel::test
