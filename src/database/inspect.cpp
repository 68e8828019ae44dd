#include <tessel/inspect.h>

#include <cerrno>
#include <new>
#include <system_error>

#include "database/compatibility.h"
#include "database/look.h"
#include "database/schema.h"
#include "database/trial.h"

namespace tessel {
namespace {

std::string numbered(unsigned long long version) { return "Version " + std::to_string(version); }

/// What SQLite says may name things of the file, in any bytes.
OdString lineOf(const std::string& text) {
  OdString line;
  line.reserve(text.size());
  for (const char byte : text) line += byte >= ' ' && byte <= '~' ? static_cast<char16_t>(byte) : u'?';
  return line;
}

Inspection withoutVersion(FileState state, OpenOutcome outcome, const std::string& text) {
  Inspection found;
  found.state = state;
  found.outcome = outcome;
  found.text = lineOf(text);
  return found;
}

/// A path that SQLite cannot open at all.
Inspection unopened(sqlite3* connection) {
  const int error = sqlite3_system_errno(connection);
  if (sqlite3_errcode(connection) == SQLITE_CANTOPEN && (error == ENOENT || error == ENOTDIR)) {
    return withoutVersion(FileState::Missing, OpenOutcome::Refuses, "There is no such file.");
  }
  const std::string reason = error ? std::generic_category().message(error) : sqlite3_errmsg(connection);
  return withoutVersion(FileState::Unreachable, OpenOutcome::Refuses, "The file cannot be opened: " + reason + ".");
}

Inspection unsettled(bool canSettle) {
  return withoutVersion(
    FileState::Unsettled, canSettle ? OpenOutcome::Unknown : OpenOutcome::Throws,
    canSettle ? "A part of the file stands in a journal beside it, which the next opening settles."
              : "A part of the file stands in a journal beside it, which permissions keep from being settled.");
}

/// A file that SQLite has opened but cannot read.
Inspection unread(const database_error& error, const Look& look) {
  switch (error.code()) {
  case SQLITE_NOMEM:
    throw std::bad_alloc();
  case SQLITE_BUSY:
  case SQLITE_LOCKED:
    return withoutVersion(FileState::Locked, OpenOutcome::Throws, "The file is being written elsewhere.");
  case SQLITE_READONLY:  // It would have to be written to be read.
    return unsettled(look.isWritable());
  case SQLITE_NOTADB:
    return withoutVersion(FileState::NotADatabase, OpenOutcome::Throws, "The file is no SQLite database.");
  default:
    return withoutVersion(FileState::Damaged, OpenOutcome::Throws,
                          std::string("The file cannot be read: ") + error.what() + ".");
  }
}

/// As ODB asks for it, which takes a name that is no column of the table for a text.
unsigned long long readVersion(sqlite3* connection) {
  try {
    Statement select(connection, R"(SELECT "version", "migration" FROM "schema_version" WHERE "name" = ?)");
    select.bind(1, schemaName);
    return select.step() ? static_cast<unsigned long long>(select.columnInt64(0)) : 0;
  } catch (const database_error& error) {
    if (error.code() == SQLITE_ERROR && std::string(error.what()).rfind("no such table:", 0) == 0) return 0;
    throw;
  }
}

/// Older files do not have the column, and nobody asks them for it.
unsigned long long compatibilityIfAny(sqlite3* connection) {
  try {
    return readCompatibility(connection);
  } catch (const database_error&) {
    return 0;
  }
}

unsigned long long countSpaces(sqlite3* connection, unsigned long long version) {
  constexpr unsigned long long first = 1006, last = 1007;
  if (version < first || version > last) return 0;
  try {
    Statement select(connection, R"(SELECT count(*) FROM "tessel_Space")");
    return select.step() ? static_cast<unsigned long long>(select.columnInt64(0)) : 0;
  } catch (const database_error&) {
    return 0;  // What is wrong with the table shows when the migration is tried.
  }
}

std::string lossOf(unsigned long long spaces) {
  if (spaces == 0) return {};
  return spaces == 1 ? " 1 space will be lost." : " " + std::to_string(spaces) + " spaces will be lost.";
}

void setMigration(Inspection& found, const Trial& trial) {
  const std::string version = numbered(found.version), current = std::to_string(currentVersion);
  found.outcome = trial.outcome;
  if (trial.outcome == OpenOutcome::Throws) {
    found.lostSpaces = 0;
    found.text = lineOf(version + " cannot be brought up to " + current + ": " + trial.reason + ".");
  } else if (trial.outcome == OpenOutcome::Opens) {
    found.text = lineOf(version + " will be brought up to " + current + "." + lossOf(found.lostSpaces));
  } else {
    found.text = lineOf(version + " will be brought up to " + current + ", but does not open then: " + trial.reason +
                        "." + lossOf(found.lostSpaces));
  }
}

void judgeOlder(Inspection& found, const Look& look) {
  found.compatibility = compatibilityIfAny(look.handle());
  if (found.version < baseVersion) {
    found.state = FileState::TooOld;
    found.text = lineOf(numbered(found.version) + " is too old: the oldest that can be brought up to date is " +
                        std::to_string(baseVersion) + ".");
    return;
  }
  found.state = FileState::Outdated;
  found.lostSpaces = countSpaces(look.handle(), found.version);
  if (!look.isWritable()) {
    setMigration(found, {OpenOutcome::Throws, "it cannot be written"});
  } else if (look.isBeingWritten()) {
    found.state = FileState::Locked;
    setMigration(found, {OpenOutcome::Throws, "it is being written elsewhere"});
  } else {
    setMigration(found, tryMigration(look));
  }
}

void judgeUsable(Inspection& found, const Look& look, const Location& location) {
  const Trial trial = tryOpening(look, location);
  const std::string version = numbered(found.version);
  found.outcome = trial.outcome;
  if (trial.outcome == OpenOutcome::Throws) {
    found.text = lineOf(version + " does not open: " + trial.reason + ".");
  } else if (found.state == FileState::Current) {
    found.text = lineOf(version + ", the current one.");
  } else {
    found.text =
      lineOf(version + " is later than " + std::to_string(currentVersion) + ", but says that it can be used.");
  }
}

void judgeLater(Inspection& found, const Look& look, const Location& location) {
  found.state = FileState::Newer;
  try {
    found.compatibility = readCompatibility(look.handle());
  } catch (const database_error& error) {
    found.outcome = OpenOutcome::Throws;
    found.text = lineOf(numbered(found.version) + " does not say which library can use it: " + error.what() + ".");
    return;
  }
  if (found.compatibility <= currentVersion) return judgeUsable(found, look, location);
  found.state = FileState::TooNew;
  found.text = lineOf(numbered(found.version) + " needs a library of version " + std::to_string(found.compatibility) +
                      " or later; this one has " + std::to_string(currentVersion) + ".");
}

Inspection judge(const Look& look, const Location& location) {
  if (hasSeveralVersions(look.handle())) {
    return withoutVersion(FileState::Damaged, OpenOutcome::Refuses, "The database says several versions.");
  }
  Inspection found;
  found.version = readVersion(look.handle());
  if (found.version == 0) {
    return withoutVersion(FileState::NoProject, OpenOutcome::Refuses, "The database has no project.");
  }
  if (found.version < currentVersion) {
    judgeOlder(found, look);
  } else if (found.version > currentVersion) {
    judgeLater(found, look, location);
  } else {
    found.state = FileState::Current;
    found.compatibility = compatibilityIfAny(look.handle());
    judgeUsable(found, look, location);
  }
  return found;
}

}  // namespace

Inspection inspect(const OdString& path) {
  const Location location = locationOf(path);
  const Look look(location);
  if (look.result() != SQLITE_OK) return unopened(look.handle());
  if (look.hasLog()) return unsettled(look.isLogReadable());
  if (look.isLogged() && !look.isLogReadable()) {
    return withoutVersion(FileState::Unreachable, OpenOutcome::Throws,
                          "The file needs a write-ahead log, which cannot be made beside it.");
  }
  try {
    return judge(look, location);
  } catch (const database_error& error) {
    return unread(error, look);
  }
}

}  // namespace tessel
