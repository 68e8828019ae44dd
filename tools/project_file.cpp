#include "project_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <unistd.h>
#include <utf8.h>

#include <tessel/exceptions.h>
#include <tessel/inspect.h>
#include <tessel/transaction.h>

#include "file_kind.h"

namespace tessel::tool {
namespace {

namespace fs = std::filesystem;

enum class Wanted { Existing, ExistingOrNew };

[[noreturn]] void refuse(const std::string& path, const std::string& why) {
  throw Failure("tessel: " + path + ": " + why);
}

fs::path folderOf(const fs::path& path) { return path.has_parent_path() ? path.parent_path() : fs::path("."); }

std::string whyNotMade(const fs::path& path) {
  const fs::path folder = folderOf(path);
  std::error_code error;
  if (!fs::is_directory(folder, error)) return "There is no folder '" + folder.string() + "'.";
  const bool allowed = ::access(folder.c_str(), W_OK | X_OK) == 0;
  return "The file cannot be made" + (allowed ? std::string(".") : ": " + std::string(std::strerror(errno)) + ".");
}

bool isDevice(const std::string& path) {
  std::error_code unknown;
  return fs::is_other(fs::status(path, unknown));
}

/// SQLite makes a journal beside whatever it changes.
bool lacksRoomForJournal(const std::string& path) {
  std::error_code unknown;
  return fs::exists(path, unknown) && ::access(folderOf(path).c_str(), W_OK | X_OK) != 0;
}

/// Neither a null handle nor an exception of SQLite tells a person why a file cannot be used, so the file itself has to.
/// `otherwise` is for a file in which nothing is found that explains it.
std::string whyRefused(const std::string& path, Wanted wanted, const std::string& otherwise) {
  const Inspection found = inspect(databaseName(path));
  if (wanted == Wanted::ExistingOrNew && found.state == FileState::Missing) return whyNotMade(path);
  if (found.state == FileState::NotADatabase && looksLikeXml(path)) {
    return "this is an XML document and no project file; 'tessel import' reads it into one";
  }
  if (found.outcome != OpenOutcome::Opens && isDevice(path)) return "this is a device or a pipe and no project file";
  return found.outcome == OpenOutcome::Opens ? otherwise : found.text.toUtf8();
}

template <typename Open>
std::shared_ptr<ProjectDb> opened(const std::string& path, Wanted wanted, Open open) {
  std::string failure = "The file could not be opened just now.";
  try {
    if (auto db = open(databaseName(path))) return db;
  } catch (const Failure&) {
    throw;
  } catch (...) {
    failure = currentErrorText();
  }
  refuse(path, whyRefused(path, wanted, failure));
}

/// Nobody wants the tables of a project among those of another program for a mistyped name. An empty file is nobody's.
void refuseOtherDatabase(const std::string& path) {
  if (inspect(databaseName(path)).state != FileState::NoProject || !isDatabaseFile(path)) return;
  refuse(path, "this is an SQLite database of another program; --force puts a project into it");
}

/// Writes the project record over itself, and takes that back: whatever keeps the file from being written shows before
/// the work begins, and not as the loss of one object after the other.
void tryToWrite(const std::shared_ptr<ProjectDb>& db) {
  Transaction trial(db, Transaction::BeginCurrent);
  db->saveProject();
  trial.rollback();
}

std::shared_ptr<ProjectDb> writable(const std::string& path, std::shared_ptr<ProjectDb> db, const std::string& done) {
  if (db->isReadOnly()) refuse(path, "this file can only be read");
  try {
    tryToWrite(db);
  } catch (const DatabaseException&) {
    if (lacksRoomForJournal(path)) refuse(path, whyWorkFailed(path));
    refuse(path, "another program is using the file, or the disk is full; nothing was " + done + "; try again");
  } catch (...) {
    refuse(path, currentErrorText());
  }
  return db;
}

}  // namespace

bool canBeWritten(const std::shared_ptr<ProjectDb>& db) {
  try {
    tryToWrite(db);
    return true;
  } catch (...) {
    return false;
  }
}

OdString databaseName(const std::string& path) {
  if (path.empty()) throw Failure("tessel: the name of a project file must not be empty");
  if (path == "-") refuse(path, "a project is kept in a file and not in a pipe; a file of this name is './-'");
  if (path == ":memory:") refuse(path, "this is the name of a database that is gone at once, and of no file");
  if (path.rfind("file:", 0) == 0) refuse(path, "a project file is named by its path and not by a URI");
  if (utf8::find_invalid(path.begin(), path.end()) != path.end()) {
    refuse(path, "the name of a project file must be UTF-8");
  }
  return OdString::fromUtf8(path);
}

std::shared_ptr<ProjectDb> openProject(const std::string& path, bool readOnly) {
  return opened(path, Wanted::Existing, [&](const OdString& name) { return ProjectDb::open(name, readOnly); });
}

std::shared_ptr<ProjectDb> createProject(const std::string& path, bool force) {
  return opened(path, Wanted::ExistingOrNew, [&](const OdString& name) {
    if (force) return ProjectDb::create(name);
    if (auto db = ProjectDb::open(name, false)) return db;
    refuseOtherDatabase(path);
    return ProjectDb::create(name);
  });
}

std::shared_ptr<ProjectDb> openForWriting(const std::string& path, const std::string& done) {
  return writable(path, openProject(path, false), done);
}

std::shared_ptr<ProjectDb> createForWriting(const std::string& path, bool force, const std::string& done) {
  return writable(path, createProject(path, force), done);
}

std::string whyWorkFailed(const std::string& path) {
  const std::string text = currentErrorText();
  try {
    throw;
  } catch (const DatabaseException&) {
    if (lacksRoomForJournal(path)) return "the folder of the file can only be read, so the file cannot be changed";
  } catch (...) {
    // That is told by its text.
  }
  return text;
}

}  // namespace tessel::tool
