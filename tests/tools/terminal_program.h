#pragma once

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>
#include <vector>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tools/program.h"

namespace tessel::test {

/// What a program showed on a terminal, with "\n" where a line ended.
struct TerminalResult {
  int status = -1;
  std::string shown;
};

/// Runs the program with all its streams on a terminal that understands colours.
class TerminalProgram : public Program {
protected:
  /// Columns of 0 are those of a terminal that does not know its size.
  TerminalResult onTerminal(std::vector<std::string> words, unsigned short columns = 80) const {
    words.insert(words.begin(), TESSEL_PROGRAM);
    const winsize size = {24, columns, 0, 0};
    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, &size);
    if (child < 0) throw std::system_error(errno, std::generic_category(), "opening a terminal");
    if (child == 0) becomeProgram(words);
    TerminalResult result;
    result.shown = readLines(terminal);
    ::close(terminal);
    int status = 0;
    ::waitpid(child, &status, 0);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return result;
  }

private:
  [[noreturn]] void becomeProgram(const std::vector<std::string>& command) const {
    if (::chdir(folder.path().c_str()) != 0) std::_Exit(127);
    std::vector<char*> words;
    for (const std::string& word : command) {
      words.push_back(const_cast<char*>(word.c_str()));
    }
    words.push_back(nullptr);
    ::execv(words[0], words.data());
    std::_Exit(127);
  }

  /// A terminal ends with an error when the program has gone, and gives "\r\n" for each end of a line.
  static std::string readLines(int terminal) {
    std::string text;
    std::array<char, 4096> block{};
    for (ssize_t count = 0; (count = ::read(terminal, block.data(), block.size())) > 0;) {
      text.append(block.data(), static_cast<std::size_t>(count));
    }
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) {
      text.erase(at, 1);
    }
    return text;
  }
};

inline void PrintTo(const TerminalResult& result, std::ostream* out) {
  *out << "status " << result.status << "\n-- shown:\n" << result.shown;
}

/// It ended well and showed exactly this.
MATCHER_P(Shows, text, "") {
  return arg.status == 0 && ::testing::ExplainMatchResult(text, arg.shown, result_listener);
}

}  // namespace tessel::test
