#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include <sqlite3.h>

namespace tessel::benchmarks {

/// As much of SQLite's C interface as the yardstick needs, at no cost of its own. What SQLite refuses is a
/// std::runtime_error.

inline void check(sqlite3* connection, bool good) {
  if (!good) throw std::runtime_error(sqlite3_errmsg(connection));
}

class Connection {
public:
  Connection(const std::string& path, int flags) {
    sqlite3* handle = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
    handle_.reset(handle);
    check(handle, result == SQLITE_OK);
  }

  sqlite3* get() const { return handle_.get(); }

  /// One statement, prepared for this call only.
  void execute(const std::string& text) const {
    check(get(), sqlite3_exec(get(), text.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
  }

private:
  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close(handle); }
  };

  std::unique_ptr<sqlite3, Close> handle_;
};

/// A prepared statement. Parameters and columns are taken in their order; a bound text must live until the statement has
/// run.
class Statement {
public:
  Statement(const Connection& connection, const std::string& text) {
    sqlite3_stmt* handle = nullptr;
    const int length = static_cast<int>(text.size());
    const int result = sqlite3_prepare_v2(connection.get(), text.data(), length, &handle, nullptr);
    handle_.reset(handle);
    check(connection.get(), result == SQLITE_OK);
  }

  template <typename... Values>
  void bind(const Values&... values) {
    int parameter = 0;
    (bindOne(++parameter, values), ...);
  }

  /// True if there is a row to read.
  bool step() {
    const int result = sqlite3_step(handle_.get());
    check(sqlite3_db_handle(handle_.get()), result == SQLITE_ROW || result == SQLITE_DONE);
    return result == SQLITE_ROW;
  }

  template <typename... Fields>
  void read(Fields&... fields) const {
    int column = 0;
    (readOne(column++, fields), ...);
  }

  void reset() { sqlite3_reset(handle_.get()); }

  /// Runs a statement that gives no rows.
  template <typename... Values>
  void run(const Values&... values) {
    bind(values...);
    step();
    reset();
  }

  /// As `run`, but false if a constraint refuses the row.
  template <typename... Values>
  bool tryRun(const Values&... values) {
    bind(values...);
    const int result = sqlite3_step(handle_.get());
    check(sqlite3_db_handle(handle_.get()), result == SQLITE_DONE || result == SQLITE_CONSTRAINT);
    reset();
    return result == SQLITE_DONE;
  }

  /// The first row of a statement that stands for one row; false if there is none.
  template <typename Value, typename... Fields>
  bool find(const Value& key, Fields&... fields) {
    bind(key);
    const bool found = step();
    if (found) read(fields...);
    reset();
    return found;
  }

private:
  struct Finalize {
    void operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }
  };

  void bindOne(int parameter, std::nullptr_t) { sqlite3_bind_null(handle_.get(), parameter); }
  void bindOne(int parameter, bool value) { sqlite3_bind_int64(handle_.get(), parameter, value); }
  void bindOne(int parameter, int value) { sqlite3_bind_int64(handle_.get(), parameter, value); }
  void bindOne(int parameter, unsigned int value) { sqlite3_bind_int64(handle_.get(), parameter, value); }
  void bindOne(int parameter, double value) { sqlite3_bind_double(handle_.get(), parameter, value); }
  void bindOne(int parameter, const std::string& value) {
    sqlite3_bind_text(handle_.get(), parameter, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
  }
  template <typename Value>
  void bindOne(int parameter, const std::optional<Value>& value) {
    value ? bindOne(parameter, *value) : bindOne(parameter, nullptr);
  }

  void readOne(int column, bool& field) const { field = sqlite3_column_int64(handle_.get(), column) != 0; }
  void readOne(int column, int& field) const { field = sqlite3_column_int(handle_.get(), column); }
  void readOne(int column, unsigned int& field) const {
    field = static_cast<unsigned int>(sqlite3_column_int64(handle_.get(), column));
  }
  void readOne(int column, double& field) const { field = sqlite3_column_double(handle_.get(), column); }
  void readOne(int column, std::string& field) const {
    const unsigned char* const text = sqlite3_column_text(handle_.get(), column);
    const int length = sqlite3_column_bytes(handle_.get(), column);
    field.assign(reinterpret_cast<const char*>(text), static_cast<std::size_t>(length));
  }
  template <typename Field>
  void readOne(int column, std::optional<Field>& field) const {
    field.reset();
    if (sqlite3_column_type(handle_.get(), column) != SQLITE_NULL) readOne(column, field.emplace());
  }

  std::unique_ptr<sqlite3_stmt, Finalize> handle_;
};

}  // namespace tessel::benchmarks
