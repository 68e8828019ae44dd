#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace tessel::test {

/// A fresh empty folder, removed with all its content when the test ends.
class TempFolder {
public:
  TempFolder() : folder_(make()) {}
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  std::string path() const { return folder_; }
  std::string path(const std::string& name) const { return folder_ + "/" + name; }

private:
  static std::string make() {
    std::string name = (std::filesystem::temp_directory_path() / "tessel-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
      throw std::system_error(errno, std::generic_category(), name);
    }
    return name;
  }

  std::string folder_;
};

}  // namespace tessel::test
