#pragma once

#include <algorithm>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/raw_file.h"
#include "support/table_content.h"

namespace tessel::test {

/// Compares whole files without printing them.
inline ::testing::AssertionResult sameBytes(const std::string& actual, const std::string& expected) {
  if (actual == expected) return ::testing::AssertionSuccess();
  const auto first = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end()).first;
  return ::testing::AssertionFailure() << "the " << actual.size() << " bytes differ from the expected "
                                       << expected.size() << " at " << (first - actual.begin());
}

inline Content contentOf(const std::string& path) {
  RawFile file(path, RawFile::Access::readOnly);
  return readContent(file);
}

/// What a migration keeps: everything but spaces.
inline RawFile::Rows rowsThatStay(const std::string& table, const TableContent& content) {
  RawFile::Rows rows;
  for (const RawFile::Row& row : content.rows) {
    const bool isSpace = table == "tessel_SpatialStructure" && row.at(1) == "tessel::Space";
    if (!isSpace) rows.push_back(row);
  }
  return rows;
}

/// The file is of the current version, sound, and has every value that it had before.
inline void expectMigrated(const std::string& path, const Content& before) {
  RawFile file(path);
  EXPECT_EQ(file.rows("SELECT * FROM schema_version"), (RawFile::Rows{{"tessel", "1010", "0", "1000"}}));
  EXPECT_EQ(file.scalarText("PRAGMA integrity_check"), "ok");
  EXPECT_THAT(file.rows("PRAGMA foreign_key_check"), ::testing::IsEmpty());
  EXPECT_FALSE(file.hasTable("tessel_Space"));
  for (const auto& [table, content] : before) {
    if (table == "schema_version" || table == "tessel_Space") continue;
    EXPECT_EQ(readRows(file, table, content.columns), rowsThatStay(table, content)) << table;
  }
}

}  // namespace tessel::test
