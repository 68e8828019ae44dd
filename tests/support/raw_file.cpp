#include "support/raw_file.h"

#include <regex>
#include <stdexcept>

namespace tessel::test {
namespace {

int openFlags(RawFile::Access access) {
  switch (access) {
  case RawFile::Access::readOnly:
    return SQLITE_OPEN_READONLY;
  case RawFile::Access::create:
    return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  default:
    return SQLITE_OPEN_READWRITE;
  }
}

int appendRow(void* rows, int count, char** values, char**) {
  RawFile::Row row;
  for (int i = 0; i < count; ++i) {
    row.emplace_back(values[i] == nullptr ? "NULL" : values[i]);
  }
  static_cast<RawFile::Rows*>(rows)->push_back(std::move(row));
  return 0;
}

std::string quoted(const std::string& text) { return "'" + text + "'"; }

std::string joined(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) {
    result += (result.empty() ? "" : ", ") + text;
  }
  return result;
}

std::string statementOf(RawFile& file, const std::string& name) {
  return file.scalarText("SELECT sql FROM sqlite_master WHERE name = " + quoted(name));
}

std::string describeColumn(const RawFile::Row& row, bool autoincrement) {
  const std::string &name = row[1], &type = row[2], &notNull = row[3], &value = row[4], &key = row[5], &hidden = row[6];
  std::string line = "column " + name + " " + type + (notNull == "1" ? " NOT NULL" : "");
  if (key != "0") line += std::string(" PRIMARY KEY") + (autoincrement ? " AUTOINCREMENT" : "");
  if (key > "1") line += " part " + key;
  if (value != "NULL") line += " DEFAULT " + value;
  if (hidden != "0") line += " hidden";
  return line;
}

// SQLite tells what a foreign key does, but neither its name nor whether it is deferred: these are in the
// table's text.
struct KeyText {
  std::string name;
  bool deferred;
};

KeyText findKeyText(const std::string& tableText, const std::string& column) {
  static const std::regex form(
    R"re(CONSTRAINT "(\w+)"\s+FOREIGN KEY\s+\("(\w+)"\)\s+REFERENCES "\w+"\s+\("\w+"\)([^,)]*))re");
  for (std::sregex_iterator match(tableText.begin(), tableText.end(), form), end; match != end; ++match) {
    if ((*match)[2] == column) {
      return {(*match)[1], (*match)[3].str().find("DEFERRABLE INITIALLY DEFERRED") != std::string::npos};
    }
  }
  return {"without a name", false};
}

std::string describeForeignKey(const RawFile::Row& row, const std::string& tableText) {
  const std::string &table = row[2], &from = row[3], &to = row[4], &onUpdate = row[5], &onDelete = row[6];
  const KeyText text = findKeyText(tableText, from);
  std::string line = "foreign key " + text.name + " (" + from + ") to " + table + " (" + to + ")";
  if (text.deferred) line += " deferred";
  if (onDelete == "CASCADE") line += " cascade";
  if (onDelete != "CASCADE" && onDelete != "NO ACTION") line += " on delete " + onDelete;
  if (onUpdate != "NO ACTION") line += " on update " + onUpdate;
  return line;
}

std::string describeIndex(RawFile& file, const std::string& table, const std::string& index) {
  const RawFile::Row flags =
    file.rows("SELECT \"unique\", partial FROM pragma_index_list(" + quoted(table) + ") WHERE name = " + quoted(index))
      .at(0);
  const auto columns = file.column("SELECT name || iif(\"desc\", ' DESC', '') || iif(coll = 'BINARY', '', ' ' || coll) "
                                   "FROM pragma_index_xinfo(" +
                                   quoted(index) + ") WHERE key ORDER BY seqno");
  return (flags[0] == "1" ? "unique index " : "index ") + index + " (" + joined(columns) + ")" +
         (flags[1] == "1" ? " partial" : "");
}

}  // namespace

RawFile::RawFile(const std::string& path, Access access) {
  sqlite3* handle = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &handle, openFlags(access), nullptr);
  handle_.reset(handle);
  if (result != SQLITE_OK) throw std::runtime_error(path + ": " + sqlite3_errstr(result));
}

void RawFile::exec(const std::string& sql) { rows(sql); }

RawFile::Rows RawFile::rows(const std::string& sql) {
  Rows result;
  if (sqlite3_exec(handle_.get(), sql.c_str(), &appendRow, &result, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(handle_.get()));
  }
  return result;
}

std::vector<std::string> RawFile::column(const std::string& sql) {
  std::vector<std::string> result;
  for (const Row& row : rows(sql)) {
    result.push_back(row.at(0));
  }
  return result;
}

std::string RawFile::scalarText(const std::string& sql) { return rows(sql).at(0).at(0); }

long long RawFile::scalarInt(const std::string& sql) { return std::stoll(scalarText(sql)); }

long long RawFile::count(const std::string& table) { return scalarInt("SELECT count(*) FROM \"" + table + "\""); }

std::vector<std::string> RawFile::tables() {
  return column("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' "
                "ORDER BY rowid");
}

bool RawFile::hasTable(const std::string& name) {
  return scalarInt("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = " + quoted(name)) != 0;
}

std::vector<std::string> RawFile::columns(const std::string& table) {
  return column("SELECT name FROM pragma_table_info(" + quoted(table) + ") ORDER BY cid");
}

std::vector<std::string> describeTable(RawFile& file, const std::string& table) {
  const std::string text = statementOf(file, table);
  const bool autoincrement = text.find("AUTOINCREMENT") != std::string::npos;
  std::vector<std::string> lines;
  for (const auto& row : file.rows("SELECT * FROM pragma_table_xinfo(" + quoted(table) + ") ORDER BY cid")) {
    lines.push_back(describeColumn(row, autoincrement));
  }
  // SQLite counts the keys from the last one.
  for (const auto& row : file.rows("SELECT * FROM pragma_foreign_key_list(" + quoted(table) + ") ORDER BY id DESC")) {
    lines.push_back(describeForeignKey(row, text));
  }
  // It lists the indexes from the last one, too.
  for (const auto& index : file.column("SELECT name FROM pragma_index_list(" + quoted(table) +
                                       ") WHERE origin <> 'pk' ORDER BY seq DESC")) {
    lines.push_back(describeIndex(file, table, index));
  }
  return lines;
}

}  // namespace tessel::test
