#pragma once

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tools/program.h"

namespace tessel::test {

/// Runs the program with nobody reading what it says on standard error, so that a program with more to say than a pipe
/// holds stands still until `finish`.
class PausedProgram : public Program {
protected:
  PausedProgram() = default;
  ~PausedProgram() override {
    if (child_ > 0) {
      ::kill(child_, SIGKILL);
      ::waitpid(child_, nullptr, 0);
    }
    if (errors_ >= 0) ::close(errors_);
  }

  /// A document with more warnings than a pipe holds behind the element in front, and a site at the end.
  static std::string longWarnings(const std::string& front = "<site><name>first</name></site>") {
    std::string document = "<p>" + front;
    for (int i = 0; i < 5000; ++i) {
      document += "<bridge/>";
    }
    return document + "<site><name>last</name></site></p>";
  }

  /// Returns when the program has begun to speak. A shell hands its own process on to the program, so that what
  /// `preparation` says of signals holds for it.
  void start(const std::string& words, const std::string& preparation = "") {
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) fail("making a pipe");
    errors_ = pipe[0];
    const std::string command = preparation + "exec '" TESSEL_PROGRAM "' " + words;
    child_ = ::fork();
    if (child_ == 0) becomeShell(command, pipe[1]);
    ::close(pipe[1]);
    if (child_ < 0) fail("starting the program");
    waitForErrors();
  }

  void send(int signal) const { ::kill(child_, signal); }

  /// Lets the program go on to its end. Its status is negative if a signal ended it, which no shell's status could tell
  /// from one of its own. Its errors are without the warnings that made it stand still.
  ProcessResult finish() {
    ProcessResult result;
    result.err = withoutWarnings(readErrors());
    int status = 0;
    if (::waitpid(child_, &status, 0) != child_) fail("waiting for the program");
    child_ = -1;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return result;
  }

private:
  [[noreturn]] static void fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

  [[noreturn]] void becomeShell(const std::string& command, int err) const {
    ::signal(SIGINT, SIG_DFL);  // A shell lets what it runs in the background ignore it.
    ::dup2(err, STDERR_FILENO);
    if (::chdir(folder.path().c_str()) == 0) ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    std::_Exit(127);
  }

  void waitForErrors() const {
    constexpr int minute = 60000;
    pollfd errors{errors_, POLLIN, 0};
    if (::poll(&errors, 1, minute) != 1 || (errors.revents & POLLIN) == 0) {
      throw std::runtime_error("the program says nothing");
    }
  }

  std::string readErrors() const {
    std::string text;
    std::array<char, 4096> block{};
    for (ssize_t count = 0; (count = ::read(errors_, block.data(), block.size())) > 0;) {
      text.append(block.data(), static_cast<std::size_t>(count));
    }
    return text;
  }

  static std::string withoutWarnings(const std::string& text) {
    std::istringstream lines(text);
    std::string others;
    for (std::string line; std::getline(lines, line);) {
      if (line.find("warning: Unknown object type 'bridge'") == std::string::npos) others += line + "\n";
    }
    return others;
  }

  pid_t child_ = -1;
  int errors_ = -1;
};

}  // namespace tessel::test
