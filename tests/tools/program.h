#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/process.h"
#include "support/raw_file.h"
#include "support/temp_folder.h"
#include "tools/strict_json.h"

namespace tessel::test {

inline const std::string houseDocument = TESSEL_EXAMPLES "/house.xml";

/// Runs the program in a fresh folder, so that files are named without one.
class Program : public ::testing::Test {
protected:
  /// What is shown on a terminal must not depend on that of the developer.
  Program() {
    ::setenv("TERM", "xterm", 1);
    ::unsetenv("NO_COLOR");
    ::unsetenv("COLUMNS");
  }

  ProcessResult tessel(std::vector<std::string> words, ProcessOptions options = {}) {
    words.insert(words.begin(), TESSEL_PROGRAM);
    options.folder = folder.path();
    return runProcess(words, options);
  }

  std::string path(const std::string& name) const { return folder.path(name); }
  bool exists(const std::string& name) const { return std::filesystem::exists(path(name)); }

  void write(const std::string& name, std::string_view bytes) const {
    std::ofstream(path(name), std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

  std::string read(const std::string& name) const {
    std::ostringstream bytes;
    bytes << std::ifstream(path(name), std::ios::binary).rdbuf();
    return bytes.str();
  }

  RawFile raw(const std::string& name) const { return RawFile(path(name)); }

  TempFolder folder;
};

/// The members of JSON output, which must be one line.
inline JsonMembers jsonOf(const ProcessResult& result) {
  EXPECT_EQ(result.out.find('\n') + 1, result.out.size()) << "not one line";
  return StrictJson::read(std::string_view(result.out).substr(0, result.out.find('\n')));
}

inline void PrintTo(const ProcessResult& result, std::ostream* out) {
  *out << "status " << result.status << "\n-- out:\n" << result.out << "\n-- err:\n" << result.err;
}

/// It ended well, printed exactly this, and nothing on standard error.
MATCHER_P(Prints, text, "") {
  return arg.status == 0 && arg.err.empty() && ::testing::ExplainMatchResult(text, arg.out, result_listener);
}

/// It ended with this status, printed exactly this on standard error, and nothing else.
MATCHER_P2(Reports, status, text, "") {
  return arg.status == status && arg.out.empty() && ::testing::ExplainMatchResult(text, arg.err, result_listener);
}

}  // namespace tessel::test
