#include "project_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <tessel/inspect.h>
#include <unistd.h>
#include <utf8.h>

#include "file_kind.h"

namespace tessel::tool {
namespace {

namespace fs = std::filesystem;

enum class Wanted { Existing, ExistingOrNew };

[[noreturn]] void refuse(const std::string& path, const std::string& why) {
  throw Failure("tessel: " + path + ": " + why);
}

std::string whyNotMade(const fs::path& path) {
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  std::error_code error;
  if (!fs::is_directory(folder, error)) return "There is no folder '" + folder.string() + "'.";
  const bool allowed = ::access(folder.c_str(), W_OK | X_OK) == 0;
  return "The file cannot be made" + (allowed ? std::string(".") : ": " + std::string(std::strerror(errno)) + ".");
}

/// Neither a null handle nor an exception of SQLite tells a person why a file cannot be used, so the file itself has to.
/// `otherwise` is for a file in which nothing is found that explains it.
std::string whyRefused(const std::string& path, Wanted wanted, const std::string& otherwise) {
  const Inspection found = inspect(databaseName(path));
  if (wanted == Wanted::ExistingOrNew && found.state == FileState::Missing) return whyNotMade(path);
  if (found.state == FileState::NotADatabase && looksLikeXml(path)) {
    return "this is an XML document and no project file; 'tessel import' reads it into one";
  }
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

std::shared_ptr<ProjectDb> writable(const std::string& path, std::shared_ptr<ProjectDb> db) {
  if (db->isReadOnly()) refuse(path, "this file can only be read");
  return db;
}

}  // namespace

OdString databaseName(const std::string& path) {
  if (path.empty()) throw Failure("tessel: the name of a project file must not be empty");
  if (utf8::find_invalid(path.begin(), path.end()) != path.end()) {
    refuse(path, "the name of a project file must be UTF-8");
  }
  return OdString::fromUtf8(path);
}

std::shared_ptr<ProjectDb> openProject(const std::string& path, bool readOnly) {
  return opened(path, Wanted::Existing, [&](const OdString& name) { return ProjectDb::open(name, readOnly); });
}

std::shared_ptr<ProjectDb> createProject(const std::string& path) {
  return opened(path, Wanted::ExistingOrNew, &ProjectDb::create);
}

std::shared_ptr<ProjectDb> openForWriting(const std::string& path) { return writable(path, openProject(path, false)); }

std::shared_ptr<ProjectDb> createForWriting(const std::string& path) { return writable(path, createProject(path)); }

}  // namespace tessel::tool
