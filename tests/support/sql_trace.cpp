#include "support/sql_trace.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <stdexcept>

namespace tessel::test {
namespace {

// SQLite calls the function for new connections without a context.
std::atomic<SqlTrace*> current{nullptr};

using Extension = void (*)();

std::string withSingleBlanks(const char* text) {
  std::string result;
  for (; *text != '\0'; ++text) {
    const bool blank = std::isspace(static_cast<unsigned char>(*text)) != 0;
    if (!blank) result += *text;
    if (blank && !result.empty() && result.back() != ' ') result += ' ';
  }
  return result;
}

}  // namespace

SqlTrace::SqlTrace() {
  SqlTrace* none = nullptr;
  if (!current.compare_exchange_strong(none, this)) throw std::logic_error("there is a trace already");
  sqlite3_auto_extension(reinterpret_cast<Extension>(&SqlTrace::connected));
}

SqlTrace::~SqlTrace() {
  sqlite3_cancel_auto_extension(reinterpret_cast<Extension>(&SqlTrace::connected));
  for (sqlite3* const connection : connections()) {
    sqlite3_trace_v2(connection, 0, nullptr, nullptr);
  }
  current = nullptr;
}

std::vector<std::string> SqlTrace::statements() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return statements_;
}

std::vector<std::string> SqlTrace::beginningWith(const std::string& words) const {
  std::vector<std::string> result;
  for (const std::string& statement : statements()) {
    if (statement.compare(0, words.size(), words) == 0) result.push_back(statement);
  }
  return result;
}

std::vector<std::string> SqlTrace::verbs() const {
  std::vector<std::string> result;
  for (const std::string& statement : statements()) {
    result.push_back(statement.substr(0, statement.find(' ')));
  }
  return result;
}

void SqlTrace::clear() {
  const std::lock_guard<std::mutex> lock(mutex_);
  statements_.clear();
}

std::vector<sqlite3*> SqlTrace::connections() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return connections_;
}

void SqlTrace::onEachConnection(const std::string& sql) const {
  for (sqlite3* const connection : connections()) {
    sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr);
  }
}

int SqlTrace::connected(sqlite3* connection, char**, const void*) {
  current.load()->add(connection);
  return SQLITE_OK;
}

int SqlTrace::event(unsigned type, void* trace, void* subject, void* detail) {
  auto& self = *static_cast<SqlTrace*>(trace);
  if (type == SQLITE_TRACE_CLOSE) self.remove(static_cast<const sqlite3*>(subject));
  if (type == SQLITE_TRACE_STMT) self.add(static_cast<const char*>(detail));
  return 0;
}

void SqlTrace::add(sqlite3* connection) {
  sqlite3_trace_v2(connection, SQLITE_TRACE_STMT | SQLITE_TRACE_CLOSE, &SqlTrace::event, this);
  const std::lock_guard<std::mutex> lock(mutex_);
  connections_.push_back(connection);
}

void SqlTrace::remove(const sqlite3* connection) {
  const std::lock_guard<std::mutex> lock(mutex_);
  connections_.erase(std::remove(connections_.begin(), connections_.end(), connection), connections_.end());
}

void SqlTrace::add(const char* statement) {
  const std::lock_guard<std::mutex> lock(mutex_);
  statements_.push_back(withSingleBlanks(statement));
}

std::string scalar(sqlite3* connection, const std::string& sql) {
  std::string result = "NULL";
  const auto keepFirst = [](void* text, int, char** values, char**) {
    if (values[0] != nullptr) *static_cast<std::string*>(text) = values[0];
    return 1;  // No further rows.
  };
  const int code = sqlite3_exec(connection, sql.c_str(), keepFirst, &result, nullptr);
  if (code != SQLITE_OK && code != SQLITE_ABORT) throw std::runtime_error(sqlite3_errmsg(connection));
  return result;
}

}  // namespace tessel::test
