#include "support/process.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessel::test {
namespace {

constexpr int cannotStart = 127;

[[noreturn]] void fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

class Descriptor {
public:
  explicit Descriptor(int number) : number_(number) {
    if (number < 0) fail("opening a descriptor");
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }

  int number() const { return number_; }
  void close() {
    if (number_ >= 0) ::close(number_);
    number_ = -1;
  }

private:
  int number_;
};

int openTemporary() {
  std::string name = (std::filesystem::temp_directory_path() / "tessel-output-XXXXXX").string();
  const int number = ::mkostemp(name.data(), O_CLOEXEC);
  if (number >= 0) ::unlink(name.c_str());
  return number;
}

int openTerminal() {
  const int number = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (number < 0 || ::grantpt(number) != 0 || ::unlockpt(number) != 0) fail("opening a terminal");
  return number;
}

/// Until its end; the end of a terminal whose other side has gone is an error.
std::string readAll(int number) {
  std::string text;
  std::array<char, 4096> block{};
  for (ssize_t count = 0; (count = ::read(number, block.data(), block.size())) > 0;) {
    text.append(block.data(), static_cast<std::size_t>(count));
  }
  return text;
}

/// Root passes all permissions by two capabilities; without them it is the owner of its files and no more.
void dropCapabilities() {
  if (::geteuid() != 0) return;
  if (::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0) != 0) std::_Exit(cannotStart);
  if (::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0) != 0) std::_Exit(cannotStart);
}

[[noreturn]] void becomeProgram(const std::vector<std::string>& command, const ProcessOptions& options, int out,
                                int err) {
  const int null = ::open("/dev/null", O_RDONLY);
  ::dup2(null, STDIN_FILENO);
  ::dup2(out, STDOUT_FILENO);
  ::dup2(err, STDERR_FILENO);
  if (!options.folder.empty() && ::chdir(options.folder.c_str()) != 0) std::_Exit(cannotStart);
  if (options.permissionsHold) dropCapabilities();
  std::vector<char*> words;
  for (const std::string& word : command) {
    words.push_back(const_cast<char*>(word.c_str()));
  }
  words.push_back(nullptr);
  ::execv(words[0], words.data());
  std::_Exit(cannotStart);
}

int statusOf(pid_t child) {
  int status = 0;
  if (::waitpid(child, &status, 0) != child) fail("waiting for the program");
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::string readFromStart(const Descriptor& file) {
  ::lseek(file.number(), 0, SEEK_SET);
  return readAll(file.number());
}

}  // namespace

ProcessResult runProcess(const std::vector<std::string>& command, const ProcessOptions& options) {
  const Descriptor out(options.out.empty() ? openTemporary() : ::open(options.out.c_str(), O_WRONLY | O_CLOEXEC));
  const Descriptor terminal(options.errIsTerminal ? openTerminal() : openTemporary());
  Descriptor err(options.errIsTerminal ? ::open(::ptsname(terminal.number()), O_RDWR | O_NOCTTY | O_CLOEXEC)
                                       : ::dup(terminal.number()));
  const pid_t child = ::fork();
  if (child < 0) fail("starting the program");
  if (child == 0) becomeProgram(command, options, out.number(), err.number());
  err.close();

  ProcessResult result;
  // A terminal holds little, so it is read while the program runs.
  if (options.errIsTerminal) result.err = readAll(terminal.number());
  result.status = statusOf(child);
  if (!options.errIsTerminal) result.err = readFromStart(terminal);
  if (options.out.empty()) result.out = readFromStart(out);
  if (result.status == cannotStart) throw std::system_error(ENOEXEC, std::generic_category(), command.front());
  return result;
}

}  // namespace tessel::test
