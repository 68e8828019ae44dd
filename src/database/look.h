#pragma once

#include <optional>
#include <string>

#include "database/location.h"
#include "database/sqlite_handle.h"

namespace tessel {

/// A file, opened for a look that leaves no trace in it or beside it. Only SQLite touches the file: whoever closes it by
/// other means takes away the locks that this process holds on it.
class Look {
public:
  /// Whether SQLite could open the file is told by `result`. All else is for a file that it could open.
  explicit Look(const Location& location);

  int result() const noexcept { return connection().result(); }

  /// For reading only; also there if the file could not be opened.
  sqlite3* handle() const noexcept { return connection().handle(); }

  /// Whether the file is one that is worked on by way of a write-ahead log.
  bool isLogged() const noexcept { return isLogged_; }

  /// Whether there is such a log, and a part of the content in it. To read that would write to the log's index, so the
  /// connection must be left alone then. A mere rollback journal shows as an error when the file is read.
  bool hasLog() const noexcept { return hasLog_; }

  /// Whether permissions let the file be written, and a journal beside it be made, or a log be used.
  bool isWritable() const;

  /// Whether permissions let the file be read by way of a log: it can be made, or it is there already with its index.
  bool isLogReadable() const;

  /// Whether anybody else has begun to write and not finished.
  bool isBeingWritten() const;

  /// By what name and flags a further connection leaves the file alone, too.
  const std::string& name() const noexcept { return name_; }
  int flags() const noexcept { return flags_; }

private:
  const Connection& connection() const noexcept { return reader_ ? *reader_ : writer_; }
  void reopenWithoutLog(const Location& location);
  bool isFolderWritable() const;

  /// Says whether SQLite can open and write the file. It runs no statement, and so reads and locks nothing.
  Connection writer_;
  std::optional<Connection> reader_;
  std::string name_;
  int flags_;
  bool isLogged_ = false;
  bool hasLog_ = false;
};

}  // namespace tessel
