#include "project_file.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include <odb/exceptions.hxx>
#include <unistd.h>
#include <utf8.h>

namespace tessel::tool {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view sqliteHeader("SQLite format 3\0", 16);
constexpr std::string_view vfsSeparator = "://";

enum class Content { Unreadable, Empty, Sqlite, Other };

Content contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return Content::Unreadable;
  std::array<char, sqliteHeader.size()> begin{};
  file.read(begin.data(), begin.size());
  if (file.gcount() == 0) return Content::Empty;
  const std::string_view read(begin.data(), static_cast<std::size_t>(file.gcount()));
  return read == sqliteHeader ? Content::Sqlite : Content::Other;
}

enum class Wanted { Existing, ExistingOrNew };

std::string whyMissing(const fs::path& path, Wanted wanted) {
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  std::error_code error;
  if (!fs::is_directory(folder, error)) return "there is no folder '" + folder.string() + "'";
  if (wanted == Wanted::ExistingOrNew && ::access(folder.c_str(), W_OK | X_OK) != 0) {
    return "the file cannot be made: " + std::string(std::strerror(errno));
  }
  return "there is no such file";
}

std::string whyContentRefused(const fs::path& path) {
  if (::access(path.c_str(), R_OK) != 0) return std::strerror(errno);
  switch (contentOf(path)) {
  case Content::Empty:
    return "the file is empty, and no project";
  case Content::Other:
    return "this is no project file: it is not even a database";
  default:
    break;
  }
  return "this database holds no project, or one that is too old or too new for this version of tessel";
}

/// A handle that is null does not say why, so the file has to.
std::string whyRefused(const std::string& path, Wanted wanted) {
  const std::size_t separator = path.find(vfsSeparator);
  if (separator != std::string::npos) {
    return "SQLite cannot open it by the VFS '" + path.substr(0, separator) + "', or it is no project of this version";
  }
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return whyMissing(path, wanted);
  if (error) return error.message();
  if (fs::is_directory(status)) return "this is a folder";
  if (!fs::is_regular_file(status)) return "this is no ordinary file";
  return whyContentRefused(path);
}

[[noreturn]] void refuse(const std::string& path, const std::string& why) {
  throw Failure("tessel: " + path + ": " + why);
}

OdString databaseName(const std::string& path) {
  if (path.empty()) throw Failure("tessel: the name of a project file must not be empty");
  if (utf8::find_invalid(path.begin(), path.end()) != path.end()) {
    refuse(path, "the name of a project file must be UTF-8");
  }
  return OdString::fromUtf8(path);
}

template <typename Open>
std::shared_ptr<ProjectDb> opened(const std::string& path, Wanted wanted, Open open) {
  const OdString name = databaseName(path);
  std::shared_ptr<ProjectDb> db;
  try {
    db = open(name);
  } catch (const odb::timeout&) {
    refuse(path, "another program has locked the file");
  } catch (const odb::object_not_persistent&) {
    refuse(path, "its project record is missing");
  } catch (const std::exception& error) {
    refuse(path, contentOf(path) == Content::Other ? whyContentRefused(path) : error.what());
  }
  if (!db) refuse(path, whyRefused(path, wanted));
  return db;
}

}  // namespace

std::shared_ptr<ProjectDb> openProject(const std::string& path, bool readOnly) {
  return opened(path, Wanted::Existing, [&](const OdString& name) { return ProjectDb::open(name, readOnly); });
}

std::shared_ptr<ProjectDb> createProject(const std::string& path) {
  return opened(path, Wanted::ExistingOrNew, &ProjectDb::create);
}

}  // namespace tessel::tool
