#pragma once

#include <memory>

#include <odb/sqlite/database.hxx>

#include <tessel/platform/od_string.h>

namespace tessel {

/// Bits for `openDatabase`.
struct OpenFlags {
  static constexpr int Create = 1;
  static constexpr int ReadOnly = 2;
};

struct OpenResult {
  std::unique_ptr<odb::sqlite::database> database;  ///< Null if the file was refused.
  bool isNew = false;                               ///< Whether this call has made the project.
};

enum class Readiness { Refused, Ready, New };

/// Checks the version of an open file, and creates or migrates it where that is asked for and allowed, in one
/// transaction. ODB exceptions and `database_error` pass; the file is as it was then.
Readiness prepareInTransaction(odb::sqlite::database& database, int flags);

/// Opens the file at `path`, checks its version, and creates or migrates it where that is asked for and allowed. The
/// first phase is always read-write, so a file that needs it is migrated even if it is then handed out read-only.
/// ODB exceptions and `database_error` pass; the file is as it was then.
OpenResult openDatabase(const OdString& path, int flags);

}  // namespace tessel
