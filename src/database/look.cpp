#include "database/look.h"

#include <array>
#include <filesystem>
#include <string_view>

#include <unistd.h>

namespace tessel {
namespace {

template <typename T>
T* fileControl(sqlite3* connection, int operation) {
  T* result = nullptr;
  sqlite3_file_control(connection, "main", operation, &result);
  return result;
}

/// Null for a database without a file.
sqlite3_file* fileOf(sqlite3* connection) {
  sqlite3_file* const file = fileControl<sqlite3_file>(connection, SQLITE_FCNTL_FILE_POINTER);
  return file && file->pMethods ? file : nullptr;
}

/// Asks the file system. False where the VFS has none.
bool hasAccess(sqlite3* connection, const char* path, int access) {
  sqlite3_vfs* const vfs = fileControl<sqlite3_vfs>(connection, SQLITE_FCNTL_VFS_POINTER);
  int result = 0;
  return vfs && vfs->xAccess(vfs, path, access, &result) == SQLITE_OK && result != 0;
}

/// The file's own word, in byte 19 of its header, for how it is to be read. Asked of the file and not of the database,
/// which would open the log for the answer.
bool saysThatItIsLogged(sqlite3* connection) {
  constexpr std::size_t readVersion = 19;
  constexpr unsigned char byLog = 2;
  sqlite3_file* const file = fileOf(connection);
  if (!file) return false;
  std::array<unsigned char, readVersion + 1> header{};
  const int result = file->pMethods->xRead(file, header.data(), header.size(), 0);
  return result == SQLITE_OK && header[readVersion] == byLog;
}

/// An empty journal counts as none.
bool hasJournal(sqlite3* connection) {
  const char* const file = sqlite3_db_filename(connection, "main");
  return hasAccess(connection, sqlite3_filename_wal(file), SQLITE_ACCESS_EXISTS) ||
         hasAccess(connection, sqlite3_filename_journal(file), SQLITE_ACCESS_EXISTS);
}

/// Whether the log and its index are both there and allow what is asked: "-shm" is how SQLite names the index.
template <typename Allows>
bool isLogOpen(sqlite3* connection, Allows allows) {
  const char* const file = sqlite3_db_filename(connection, "main");
  return allows(sqlite3_filename_wal(file)) && allows((std::string(file) + "-shm").c_str());
}

std::string escaped(std::string_view path) {
  std::string result;
  for (const char byte : path) {
    if (byte == '%')
      result += "%25";
    else if (byte == '?')
      result += "%3f";
    else if (byte == '#')
      result += "%23";
    else
      result += byte;
  }
  return result;
}

/// As a URI, for only these can say that the file does not change. That makes SQLite pass over locks and journals.
std::string immutableName(sqlite3* connection) {
  const std::string path = sqlite3_db_filename(connection, "main");
  const char* const scheme = path.front() == '/' ? "file://" : "file:";
  return scheme + escaped(path) + "?immutable=1";
}

}  // namespace

Look::Look(const Location& location)
    : writer_(location.file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_PRIVATECACHE, location.vfs), name_(location.file),
      flags_(SQLITE_OPEN_READONLY | SQLITE_OPEN_PRIVATECACHE) {
  if (writer_.result() != SQLITE_OK) return;
  reader_.emplace(name_, flags_, location.vfs);
  if (reader_->result() != SQLITE_OK) return;
  isLogged_ = saysThatItIsLogged(handle());
  if (isLogged_) reopenWithoutLog(location);
}

void Look::reopenWithoutLog(const Location& location) {
  hasLog_ = hasJournal(handle());
  if (hasLog_) return;
  // Without a log all is in the file, and nobody is changing it.
  name_ = immutableName(handle());
  flags_ |= SQLITE_OPEN_URI;
  reader_.emplace(name_, flags_, location.vfs);
}

bool Look::isWritable() const {
  if (sqlite3_db_readonly(writer_.handle(), "main") != 0) return false;
  return isFolderWritable() || (isLogged_ && isLogOpen(handle(), [this](const char* path) {
                                  return hasAccess(handle(), path, SQLITE_ACCESS_READWRITE);
                                }));
}

// A VFS can be asked for reading and writing at once only, and here reading is enough.
bool Look::isLogReadable() const {
  return isFolderWritable() || isLogOpen(handle(), [](const char* path) { return ::access(path, R_OK) == 0; });
}

bool Look::isFolderWritable() const {
  const std::filesystem::path file(sqlite3_db_filename(handle(), "main"));
  const std::string folder = file.parent_path();
  // A folder that the file system does not know is the business of the VFS.
  return !hasAccess(handle(), folder.c_str(), SQLITE_ACCESS_EXISTS) ||
         hasAccess(handle(), folder.c_str(), SQLITE_ACCESS_READWRITE);
}

bool Look::isBeingWritten() const {
  sqlite3_file* const file = fileOf(handle());
  int result = 0;
  return file && file->pMethods->xCheckReservedLock(file, &result) == SQLITE_OK && result != 0;
}

}  // namespace tessel
