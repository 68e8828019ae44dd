#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <sqlite3.h>

namespace tessel::test {

/// An SQLite VFS on top of the default one that fails on demand, registered in this process under a name as long as it
/// lives. Files are reached through it by a path of the form "name://file":
///
///   FaultyVfs disk("disk", folder.path());
///   auto db = ProjectDb::create(OdString::fromUtf8(disk.path("house.tessel")));
///   disk.failWrites(SQLITE_FULL);
///   ... the database sees a full disk ...
///   disk.repair();
///
/// It serves rollback journals, not WAL. A database that was opened through it must be closed before it goes.
class FaultyVfs {
public:
  /// File names that are not absolute are of this folder.
  FaultyVfs(const std::string& name, const std::string& folder);
  FaultyVfs(const FaultyVfs&) = delete;
  FaultyVfs& operator=(const FaultyVfs&) = delete;
  ~FaultyVfs();

  std::string path(const std::string& file) const { return name_ + "://" + file; }

  // The result of each such operation from now on; SQLITE_OK lets it happen.
  void failWrites(int result) { writeResult_ = result; }
  void failReads(int result) { readResult_ = result; }
  void failSyncs(int result) { syncResult_ = result; }

  /// Lets this many writes pass before `failWrites` takes effect.
  void letPass(int writes) { writesToPass_ = writes; }

  /// Called before each write, sync, truncation and deletion, of journals too.
  void beforeWrite(std::function<void()> hook) { hook_ = std::move(hook); }

  /// As for a file of somebody else: what is to be opened for writing is opened read-only.
  void protectFromWriting(bool on) { isProtected_ = on; }

  /// All is well again.
  void repair();

  /// The names by which database files were asked for, as SQLite was given them, and the flags they were opened with.
  std::vector<std::string> askedNames() const;
  std::vector<int> openingFlags() const;

  /// How many writes, syncs and truncations were asked for.
  int writes() const { return writes_; }

private:
  struct File;
  struct Methods;

  void countWrite();
  bool failsWrite();
  std::string resolved(const char* name) const;

  sqlite3_vfs* base_;
  sqlite3_vfs vfs_;
  std::string name_;
  std::string folder_;
  std::atomic<int> writeResult_{SQLITE_OK};
  std::atomic<int> readResult_{SQLITE_OK};
  std::atomic<int> syncResult_{SQLITE_OK};
  std::atomic<int> writesToPass_{0};
  std::atomic<int> writes_{0};
  std::atomic<bool> isProtected_{false};
  std::function<void()> hook_;
  mutable std::mutex mutex_;
  std::vector<std::string> askedNames_;
  std::vector<int> openingFlags_;
};

}  // namespace tessel::test
