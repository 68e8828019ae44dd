#include "yardstick_session.h"

#include <boost/uuid/uuid_io.hpp>

namespace tessel::benchmarks::yardstick {
namespace {

template <typename Part>
std::string listed(const std::vector<std::string>& columns, Part&& part) {
  std::string list;
  for (const std::string& column : columns) list += (list.empty() ? "" : ", ") + part('"' + column + '"');
  return list;
}

}  // namespace

Connection openProject(const std::string& path, int furtherFlags) {
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX | SQLITE_OPEN_PRIVATECACHE;
  Connection connection(path, flags | furtherFlags);
  connection.execute("PRAGMA foreign_keys=ON");
  return connection;
}

Session::Session(const std::string& path)
    : connection_(openProject(path)), begin_(connection_, "BEGIN"), commit_(connection_, "COMMIT"),
      rollback_(connection_, "ROLLBACK") {}

Savepoint::Savepoint(Session& session) : session_(session), name_("'" + to_string(session.newName_()) + "'") {
  execute("SAVEPOINT ");
}

std::string insertInto(const Table& table) {
  return "INSERT INTO \"" + table.name + "\" (" + listed(table.columns, [](const std::string& c) { return c; }) +
         ") VALUES (" + listed(table.columns, [](const std::string&) { return std::string("?"); }) + ")";
}

std::string updateOf(const Table& table) {
  const std::vector<std::string> values(table.columns.begin() + 1, table.columns.end());
  return "UPDATE \"" + table.name + "\" SET " + listed(values, [](const std::string& c) { return c + "=?"; }) +
         " WHERE \"id\"=?";
}

std::string selectFrom(const Table& table, const std::string& condition) {
  const auto qualified = [&](const std::string& column) { return '"' + table.name + "\"." + column; };
  return "SELECT " + listed(table.columns, qualified) + " FROM \"" + table.name + "\" " + condition;
}

std::string selectById(const Table& table) { return selectFrom(table, "WHERE \"" + table.name + "\".\"id\"=?"); }

}  // namespace tessel::benchmarks::yardstick
