#pragma once

#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include <sqlite3.h>

#include <tessel/export.h>

namespace tessel {

/// SQLite refused a statement that goes past ODB. The text is SQLite's own for the connection.
class TESSEL_API database_error : public std::runtime_error {
public:
  explicit database_error(sqlite3* connection)
      : std::runtime_error(sqlite3_errmsg(connection)), code_(sqlite3_errcode(connection) & 0xFF) {}

  /// The primary result code.
  int code() const noexcept { return code_; }

private:
  int code_;
};

/// `database_error` if SQLite has ended the transaction, as it does by itself after a full disk or an I/O error. What is
/// written then would be committed at once, statement by statement, so whoever ignores a failure asks here.
inline void requireTransaction(sqlite3* connection) {
  if (sqlite3_get_autocommit(connection)) throw database_error(connection);
}

/// A connection of our own, beside those of ODB; closed with it.
class Connection {
public:
  /// Whether it worked is told by `result`.
  Connection(const std::string& file, int flags, const std::string& vfs) {
    sqlite3* handle = nullptr;
    result_ = sqlite3_open_v2(file.c_str(), &handle, flags, vfs.empty() ? nullptr : vfs.c_str());
    handle_.reset(handle);
    if (!handle) throw std::bad_alloc();
  }

  int result() const noexcept { return result_; }

  /// Also there if the file could not be opened: it knows why.
  sqlite3* handle() const noexcept { return handle_.get(); }

private:
  struct Close {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close(handle); }
  };

  int result_ = SQLITE_OK;
  std::unique_ptr<sqlite3, Close> handle_;
};

/// One prepared statement on a connection that outlives it; finalized with it.
/// Each operation throws `database_error` unless told otherwise.
class Statement {
public:
  Statement(sqlite3* connection, const char* text) {
    sqlite3_stmt* handle = nullptr;
    if (sqlite3_prepare_v2(connection, text, -1, &handle, nullptr) != SQLITE_OK) {
      throw database_error(connection);
    }
    handle_.reset(handle);
  }

  /// Parameters are counted from 1.
  void bind(int parameter, std::int64_t value) { check(sqlite3_bind_int64(handle_.get(), parameter, value)); }

  void bind(int parameter, const std::string& value) {
    check(sqlite3_bind_text(handle_.get(), parameter, value.c_str(), static_cast<int>(value.size()), SQLITE_TRANSIENT));
  }

  /// True if there is a row to read.
  bool step() {
    const int result = sqlite3_step(handle_.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
      throw database_error(sqlite3_db_handle(handle_.get()));
    }
    return result == SQLITE_ROW;
  }

  /// As `executeIgnoringResult`.
  void stepIgnoringResult() {
    static_cast<void>(sqlite3_step(handle_.get()));
    requireTransaction(sqlite3_db_handle(handle_.get()));
  }

  /// The number of columns that a row would have, known before the first step.
  int columnCount() const noexcept { return sqlite3_column_count(handle_.get()); }

  /// Columns are counted from 0. There must be a row.
  std::int64_t columnInt64(int column) const noexcept { return sqlite3_column_int64(handle_.get(), column); }

private:
  struct Finalize {
    void operator()(sqlite3_stmt* handle) const noexcept { sqlite3_finalize(handle); }
  };

  void check(int result) const {
    if (result != SQLITE_OK) {
      throw database_error(sqlite3_db_handle(handle_.get()));
    }
  }

  std::unique_ptr<sqlite3_stmt, Finalize> handle_;
};

/// For statements of a transaction whose failure is an answer too, unless it has ended the transaction.
inline void executeIgnoringResult(sqlite3* connection, const char* text) {
  static_cast<void>(sqlite3_exec(connection, text, nullptr, nullptr, nullptr));
  requireTransaction(connection);
}

}  // namespace tessel
