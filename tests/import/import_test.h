#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tessel/project_db_import.h>
#include <tessel/spatial.h>
#include <tessel/units.h>

#include "support/message_log.h"
#include "support/printers.h"
#include "support/samples.h"

namespace tessel::test {

/// A new project file, and documents that are imported into it.
class ImportTest : public ::testing::Test {
protected:
  ImportRun import(const std::wstring& document, unsigned int parsing = pugi::parse_default) {
    return importText(db, document, options, parsing);
  }

  /// As `import`, with "id" as the id of a row.
  ImportRun update(const std::wstring& document) {
    ProjectDb::ImportOptions updating = options;
    updating.updateExisting = true;
    return importText(db, document, updating);
  }

  /// What is in the file, as another connection sees it, in the order of the ids.
  std::vector<std::string> column(const std::string& table, const std::string& name) const {
    return project.raw().column("SELECT \"" + name + "\" FROM \"" + table + "\" ORDER BY \"id\"");
  }
  std::vector<std::string> sites() const { return column("tessel_Site", "name"); }
  std::vector<std::string> buildings() const { return column("tessel_Building", "name"); }
  std::vector<std::string> units() const { return column("tessel_Unit", "name"); }

  /// Without those that each new file has.
  std::vector<std::string> measures() const {
    return project.raw().column("SELECT \"name\" FROM \"tessel_Measure\" WHERE \"name\" NOT IN "
                                "('LENGTH', 'AREA', 'VOLUME', 'MASS') ORDER BY \"id\"");
  }

  unsigned int idOf(const std::string& table, const std::string& name) const {
    return static_cast<unsigned int>(
      project.raw().scalarInt("SELECT \"id\" FROM \"" + table + "\" WHERE \"name\" = '" + name + "'"));
  }

  SampleProject project;
  const std::shared_ptr<ProjectDb> db = project.db;
  ProjectDb::ImportOptions options;
};

/// All rows of all tables, to see whether anything has changed.
inline std::vector<std::string> dumpOf(RawFile file) {
  std::vector<std::string> lines;
  for (const std::string& table : file.tables()) {
    for (const RawFile::Row& row : file.rows("SELECT * FROM \"" + table + "\"")) {
      std::string line = table;
      for (const std::string& value : row) line += "|" + value;
      lines.push_back(line);
    }
  }
  return lines;
}

}  // namespace tessel::test
