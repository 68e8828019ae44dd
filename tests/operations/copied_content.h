#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "support/table_content.h"

namespace tessel::test {

/// The content of a file in words that hold in any file: ids are replaced by the names of the objects that they stand
/// for, and the rows of each table are in the order of their texts. So two files that say the same are equal, whatever
/// ids their rows have:
///
///   EXPECT_EQ(NamedContent(source.raw()).tables(), NamedContent(destination.raw()).tables());
class NamedContent {
public:
  using Tables = std::map<std::string, std::vector<std::string>>;

  explicit NamedContent(RawFile file) : file_(std::move(file)), content_(readContent(file_)) {
    for (const auto& [table, rows] : content_) references_[table] = referencesOf(table);
  }

  const Tables& tables() {
    if (!tables_.empty()) return tables_;
    for (const auto& [table, content] : content_) {
      std::vector<std::string>& lines = tables_[table];
      for (const RawFile::Row& row : content.rows) lines.push_back(lineOf(table, row));
      std::sort(lines.begin(), lines.end());
    }
    return tables_;
  }

private:
  /// By column, the table that its ids are of.
  using References = std::map<std::string, std::string>;

  References referencesOf(const std::string& table) {
    References references;
    for (const RawFile::Row& key : file_.rows("PRAGMA foreign_key_list(\"" + table + "\")"))
      references[key[3]] = key[2];
    return references;
  }

  std::string lineOf(const std::string& table, const RawFile::Row& row) {
    const std::vector<std::string>& columns = content_.at(table).columns;
    const References& references = references_.at(table);
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (columns[i] == "id") continue;
      const auto reference = references.find(columns[i]);
      const bool isId = reference != references.end() && row[i] != "NULL";
      line += columns[i] + "=" + (isId ? nameOf(reference->second, row[i]) : row[i]) + "|";
    }
    return line;
  }

  /// What tells the object of a row from all others of its table: its name, or else its label, within its owner.
  const std::string& nameOf(const std::string& table, const std::string& id) {
    std::map<std::string, std::string>& names = names_[table];
    if (names.empty()) {
      const TableContent& content = content_.at(table);
      for (const RawFile::Row& row : content.rows) names[valueOf(content, row, "id")] = rowName(table, row);
    }
    return names.at(id);
  }

  std::string rowName(const std::string& table, const RawFile::Row& row) {
    static const std::map<std::string, std::string> owners = {{"tessel_Building", "site_id"},
                                                              {"tessel_Story", "building_id"},
                                                              {"tessel_Unit", "measure_id"},
                                                              {"tessel_PropertyDefinition", "namespace_id"},
                                                              {"tessel_ValueDefinition", "namespace_id"},
                                                              {"tessel_PropertySet", "namespace_id"}};
    const TableContent& content = content_.at(table);
    const std::string name = valueOf(content, row, table == "tessel_Unit" ? "label" : "name");
    const auto owner = owners.find(table);
    if (owner == owners.end()) return name;
    return nameOf(references_.at(table).at(owner->second), valueOf(content, row, owner->second)) + "/" + name;
  }

  static const std::string& valueOf(const TableContent& content, const RawFile::Row& row, const std::string& column) {
    const auto found = std::find(content.columns.begin(), content.columns.end(), column);
    return row.at(static_cast<std::size_t>(found - content.columns.begin()));
  }

  RawFile file_;
  Content content_;
  std::map<std::string, References> references_;
  std::map<std::string, std::map<std::string, std::string>> names_;
  Tables tables_;
};

}  // namespace tessel::test
