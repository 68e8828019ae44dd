#include "support/table_content.h"

namespace tessel::test {
namespace {

std::string list(const std::vector<std::string>& names) {
  std::string result;
  for (const std::string& name : names) {
    result += (result.empty() ? "\"" : ", \"") + name + "\"";
  }
  return result;
}

}  // namespace

Content readContent(RawFile& file) {
  Content content;
  for (const std::string& table : file.tables()) {
    const auto columns = file.columns(table);
    content[table] = {columns, readRows(file, table, columns)};
  }
  return content;
}

RawFile::Rows readRows(RawFile& file, const std::string& table, const std::vector<std::string>& columns) {
  return file.rows("SELECT " + list(columns) + " FROM \"" + table + "\" ORDER BY rowid");
}

std::string describe(const Content& content) {
  std::string text;
  for (const auto& [table, rows] : content) {
    text += table + ": " + list(rows.columns) + "\n";
    for (const auto& row : rows.rows) {
      text += "  " + list(row) + "\n";
    }
  }
  return text;
}

}  // namespace tessel::test
