#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include <sys/fsuid.h>
#include <unistd.h>

#include <tessel/platform/od_string.h>

namespace tessel::test {

inline OdString odPath(const std::string& path) { return OdString::fromUtf8(path); }

inline std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeBytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

/// Whether this process holds the file open.
inline bool isOpen(const std::string& path) {
  for (const auto& link : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    if (std::filesystem::read_symlink(link.path(), gone) == path) return true;
  }
  return false;
}

/// While it lives, the permissions of files bind this thread, also when the tests run as root.
class OrdinaryUser {
public:
  OrdinaryUser() {
    if (geteuid() == 0) setfsuid(nobody);
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() {
    if (geteuid() == 0) setfsuid(0);
  }

private:
  static constexpr uid_t nobody = 65534;
};

/// Makes a file that everybody may read and nobody may write.
inline void protectFromWriting(const std::string& path) {
  using std::filesystem::perms;
  std::filesystem::permissions(std::filesystem::path(path).parent_path(), perms::all);
  std::filesystem::permissions(path, perms::owner_read | perms::group_read | perms::others_read);
}

/// Makes a folder the working directory while it lives.
class WorkingFolder {
public:
  explicit WorkingFolder(const std::string& path) : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(path);
  }
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;
  ~WorkingFolder() {
    std::error_code ignored;
    std::filesystem::current_path(before_, ignored);
  }

private:
  std::filesystem::path before_;
};

}  // namespace tessel::test
