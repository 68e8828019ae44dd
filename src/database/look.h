#pragma once

#include <string>

#include "database/location.h"
#include "database/sqlite_handle.h"

namespace tessel {

/// A file, opened for a look that leaves no trace: neither in it nor beside it. Only SQLite touches the file, for closing
/// it by other means would take away the locks that this process holds on it.
class Look {
public:
  /// Whether it worked is told by `result`.
  explicit Look(const Location& location);

  int result() const noexcept { return connection_.result(); }

  /// For reading only.
  sqlite3* connection() const noexcept { return connection_.handle(); }

  /// Whether a part of the content stands in a write-ahead log, or a rollback journal beside one. The connection must
  /// not be read then: that would write to the log's index. A mere rollback journal shows when the file is read.
  bool isUnsettled() const noexcept { return isUnsettled_; }

  /// Whether SQLite could open the file for writing.
  bool isWritable() const;

  /// Whether SQLite could make a journal beside the file, as far as the permissions of the folder tell.
  bool isFolderWritable() const;

  /// Whether anybody has a transaction under way that has begun to write.
  bool isReserved() const;

  /// How else to open the file so that it is left alone.
  const std::string& name() const noexcept { return name_; }
  int flags() const noexcept { return flags_; }

private:
  void openWithoutLog();

  Location location_;
  std::string name_;
  int flags_;
  Connection connection_;
  bool isUnsettled_ = false;
};

}  // namespace tessel
