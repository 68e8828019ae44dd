#include "support/faulty_vfs.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace tessel::test {

/// What SQLite has for an open file: the head that it knows, and behind the struct the file of the VFS below.
struct FaultyVfs::File {
  sqlite3_file head;
  FaultyVfs* vfs;

  sqlite3_file* base() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

/// The operations that SQLite calls. Those on files pass everything on but what is to fail.
struct FaultyVfs::Methods {
  static File& of(sqlite3_file* file) { return *reinterpret_cast<File*>(file); }
  static sqlite3_file* base(sqlite3_file* file) { return of(file).base(); }
  static FaultyVfs& of(sqlite3_vfs* vfs) { return *static_cast<FaultyVfs*>(vfs->pAppData); }
  static sqlite3_vfs* base(sqlite3_vfs* vfs) { return of(vfs).base_; }

  static int close(sqlite3_file* file) { return base(file)->pMethods->xClose(base(file)); }

  static int read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
    const int fault = of(file).vfs->readResult_;
    return fault != SQLITE_OK ? fault : base(file)->pMethods->xRead(base(file), data, size, offset);
  }

  static int write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
    FaultyVfs& vfs = *of(file).vfs;
    if (vfs.failsWrite()) return vfs.writeResult_;
    return base(file)->pMethods->xWrite(base(file), data, size, offset);
  }

  static int truncate(sqlite3_file* file, sqlite3_int64 size) {
    of(file).vfs->countWrite();
    return base(file)->pMethods->xTruncate(base(file), size);
  }

  static int sync(sqlite3_file* file, int flags) {
    of(file).vfs->countWrite();
    const int fault = of(file).vfs->syncResult_;
    return fault != SQLITE_OK ? fault : base(file)->pMethods->xSync(base(file), flags);
  }

  static int fileSize(sqlite3_file* file, sqlite3_int64* size) {
    return base(file)->pMethods->xFileSize(base(file), size);
  }
  static int lock(sqlite3_file* file, int level) { return base(file)->pMethods->xLock(base(file), level); }
  static int unlock(sqlite3_file* file, int level) { return base(file)->pMethods->xUnlock(base(file), level); }
  static int checkReservedLock(sqlite3_file* file, int* result) {
    return base(file)->pMethods->xCheckReservedLock(base(file), result);
  }
  static int fileControl(sqlite3_file* file, int operation, void* argument) {
    return base(file)->pMethods->xFileControl(base(file), operation, argument);
  }
  static int sectorSize(sqlite3_file* file) { return base(file)->pMethods->xSectorSize(base(file)); }
  static int deviceCharacteristics(sqlite3_file*) { return 0; }

  static int open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    FaultyVfs& self = of(vfs);
    File& opened = *new (file) File{{nullptr}, &self};
    if (flags & SQLITE_OPEN_MAIN_DB) {
      const std::lock_guard<std::mutex> lock(self.mutex_);
      self.openingFlags_.push_back(flags);
    }
    if (self.isProtected_ && (flags & SQLITE_OPEN_MAIN_DB)) {
      flags = (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
    }
    const int result = self.base_->xOpen(self.base_, name, opened.base(), flags, outFlags);
    if (opened.base()->pMethods != nullptr) opened.head.pMethods = &table;
    return result;
  }

  static int remove(sqlite3_vfs* vfs, const char* name, int sync) {
    if (of(vfs).hook_) of(vfs).hook_();
    return base(vfs)->xDelete(base(vfs), name, sync);
  }
  static int access(sqlite3_vfs* vfs, const char* name, int flags, int* result) {
    return base(vfs)->xAccess(base(vfs), name, flags, result);
  }

  static int fullPathname(sqlite3_vfs* vfs, const char* name, int size, char* path) {
    FaultyVfs& self = of(vfs);
    {
      const std::lock_guard<std::mutex> lock(self.mutex_);
      self.askedNames_.emplace_back(name);
    }
    return self.base_->xFullPathname(self.base_, self.resolved(name).c_str(), size, path);
  }

  static int randomness(sqlite3_vfs* vfs, int size, char* data) {
    return base(vfs)->xRandomness(base(vfs), size, data);
  }
  static int sleep(sqlite3_vfs* vfs, int microseconds) { return base(vfs)->xSleep(base(vfs), microseconds); }
  static int currentTime(sqlite3_vfs* vfs, double* time) { return base(vfs)->xCurrentTime(base(vfs), time); }
  static int getLastError(sqlite3_vfs* vfs, int size, char* text) {
    return base(vfs)->xGetLastError(base(vfs), size, text);
  }

  static const sqlite3_io_methods table;
};

const sqlite3_io_methods FaultyVfs::Methods::table = {
  1,
  &close,
  &read,
  &write,
  &truncate,
  &sync,
  &fileSize,
  &lock,
  &unlock,
  &checkReservedLock,
  &fileControl,
  &sectorSize,
  &deviceCharacteristics,
  nullptr,
  nullptr,
  nullptr,
  nullptr,  // Shared memory, for WAL.
  nullptr,
  nullptr,  // Mapped memory.
};

FaultyVfs::FaultyVfs(const std::string& name, const std::string& folder)
    : base_(sqlite3_vfs_find(nullptr)), vfs_(), name_(name), folder_(folder) {
  vfs_.iVersion = 1;
  vfs_.szOsFile = static_cast<int>(sizeof(File)) + base_->szOsFile;
  vfs_.mxPathname = base_->mxPathname;
  vfs_.zName = name_.c_str();
  vfs_.pAppData = this;
  vfs_.xOpen = &Methods::open;
  vfs_.xDelete = &Methods::remove;
  vfs_.xAccess = &Methods::access;
  vfs_.xFullPathname = &Methods::fullPathname;
  vfs_.xRandomness = &Methods::randomness;
  vfs_.xSleep = &Methods::sleep;
  vfs_.xCurrentTime = &Methods::currentTime;
  vfs_.xGetLastError = &Methods::getLastError;
  if (sqlite3_vfs_register(&vfs_, 0) != SQLITE_OK) throw std::runtime_error("the VFS cannot be registered");
}

FaultyVfs::~FaultyVfs() { sqlite3_vfs_unregister(&vfs_); }

void FaultyVfs::repair() {
  writeResult_ = SQLITE_OK;
  readResult_ = SQLITE_OK;
  syncResult_ = SQLITE_OK;
  writesToPass_ = 0;
  isProtected_ = false;
}

std::vector<std::string> FaultyVfs::askedNames() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return askedNames_;
}

std::vector<int> FaultyVfs::openingFlags() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return openingFlags_;
}

void FaultyVfs::countWrite() {
  ++writes_;
  if (hook_) hook_();
}

bool FaultyVfs::failsWrite() {
  countWrite();
  return writeResult_ != SQLITE_OK && writesToPass_-- <= 0;
}

std::string FaultyVfs::resolved(const char* name) const { return name[0] == '/' ? name : folder_ + "/" + name; }

}  // namespace tessel::test
