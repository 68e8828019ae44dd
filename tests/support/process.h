#pragma once

#include <string>
#include <vector>

namespace tessel::test {

/// How a program ended and what it printed.
struct ProcessResult {
  int status = -1;  ///< The exit status; 128 and the number of the signal if a signal ended it.
  std::string out;
  std::string err;
};

struct ProcessOptions {
  std::string folder;            ///< The working directory; empty for that of the test.
  std::string out;               ///< A file to which standard output goes instead of the result.
  bool errIsTerminal = false;    ///< Standard error is a terminal; line ends come back as "\r\n" then.
  bool permissionsHold = false;  ///< Permissions of files bind the program even when the test runs as root.
};

/// Runs a program to its end, without standard input. The command's first word is its path. Throws std::system_error if
/// it cannot be started.
ProcessResult runProcess(const std::vector<std::string>& command, const ProcessOptions& options = {});

}  // namespace tessel::test
