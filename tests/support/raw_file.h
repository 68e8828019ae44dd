#pragma once

#include <memory>
#include <string>
#include <vector>

#include <sqlite3.h>

namespace tessel::test {

/// A project file as plain SQLite shows it, for tests in which the file itself is the contract. Foreign keys
/// are off unless a test switches them on. What SQLite refuses is a std::runtime_error with its text.
class RawFile {
public:
  enum class Access { readWrite, readOnly, create };
  using Row = std::vector<std::string>;
  using Rows = std::vector<Row>;

  /// Only `Access::create` makes a file that is not there.
  explicit RawFile(const std::string& path, Access access = Access::readWrite);

  /// One statement or several.
  void exec(const std::string& sql);

  /// All values as SQLite turns them into text, NULL as "NULL".
  Rows rows(const std::string& sql);

  /// The first column of each row.
  std::vector<std::string> column(const std::string& sql);

  /// The first column of the first row; without a row this throws.
  std::string scalarText(const std::string& sql);
  long long scalarInt(const std::string& sql);

  long long count(const std::string& table);

  /// In the order in which they were made; without SQLite's own.
  std::vector<std::string> tables();
  bool hasTable(const std::string& name);
  std::vector<std::string> columns(const std::string& table);

private:
  struct Close {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close(handle); }
  };

  std::unique_ptr<sqlite3, Close> handle_;
};

/// The table as lines of text, one for each column, foreign key and index, in the order of the file:
///   "column name TEXT NOT NULL", with PRIMARY KEY, AUTOINCREMENT and DEFAULT where they stand
///   "foreign key unit_id_fk (unit_id) to tessel_Unit (id) deferred", or "cascade"
///   "unique index tessel_Unit_name_i (name)"
std::vector<std::string> describeTable(RawFile& file, const std::string& table);

}  // namespace tessel::test
