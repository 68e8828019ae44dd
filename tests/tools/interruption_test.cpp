#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include "tools/program.h"

namespace tessel::test {
namespace {

constexpr int interrupted = 130;

/// Sends signals to an import while it writes.
class Interruption : public Program {
protected:
  /// A document that the import has a warning for behind the first site.
  static std::string sites(int count) {
    std::string document = "<p><site><name>first</name></site><bridge/>";
    for (int i = 1; i < count; ++i) {
      document += "<site><name>" + std::to_string(i) + "</name></site>";
    }
    return document + "</p>";
  }

  /// A shell hands its own process on to the program, so that what it says of signals holds for it.
  void start(const std::string& words, const std::string& preparation = "") {
    const std::string command = preparation + "exec '" TESSEL_PROGRAM "' " + words + " 2>errors";
    child_ = ::fork();
    if (child_ < 0) throw std::system_error(errno, std::generic_category(), "starting the program");
    if (child_ > 0) return;
    ::signal(SIGINT, SIG_DFL);  // A shell lets what it runs in the background ignore it.
    if (::chdir(folder.path().c_str()) == 0) ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    std::_Exit(127);
  }

  /// Until the program is in the middle of such a document.
  void waitForWarning() {
    using namespace std::chrono_literals;
    const auto end = std::chrono::steady_clock::now() + 60s;
    while (read("errors").find(warning) == std::string::npos) {
      ASSERT_LT(std::chrono::steady_clock::now(), end);
      std::this_thread::sleep_for(1ms);
    }
  }

  /// What was told behind the warning.
  std::string lastWords() const {
    const std::string errors = read("errors");
    return errors.substr(std::min(errors.size(), errors.find(warning) + warning.size()));
  }

  void send(int signal) const { ::kill(child_, signal); }

  int status() const {
    int status = 0;
    ::waitpid(child_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;  // No status of a shell, which cannot tell a signal from 130.
  }

  long long siteCount() const { return raw("a.tessel").count("tessel_Site"); }

private:
  const std::string warning = "warning: Unknown object type 'bridge'\n";
  pid_t child_ = -1;
};

class InterruptionBy : public Interruption, public ::testing::WithParamInterface<int> {};

TEST_P(InterruptionBy, LeavesNothingOfTheDocument) {
  tessel({"create", "a.tessel"});
  write("a.xml", sites(100000));
  start("import a.tessel a.xml");
  waitForWarning();
  send(GetParam());
  EXPECT_EQ(status(), interrupted);
  EXPECT_EQ(lastWords(), "tessel: a.tessel: interrupted; nothing was imported\n");
  EXPECT_FALSE(exists("a.tessel-journal"));
  EXPECT_EQ(siteCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptionBy, ::testing::Values(SIGINT, SIGTERM));

TEST_F(Interruption, KeepsTheDocumentsBefore) {
  tessel({"create", "a.tessel"});
  write("1.xml", "<p><building><name>b</name><site><name>s</name></site></building></p>");
  write("2.xml", sites(100000));
  start("import a.tessel 1.xml 2.xml");
  waitForWarning();
  send(SIGINT);
  EXPECT_EQ(status(), interrupted);
  EXPECT_EQ(lastWords(), "tessel: a.tessel: interrupted; only 1 of 2 documents was imported\n");
  EXPECT_EQ(siteCount(), 1);
}

TEST_F(Interruption, WithUpdateDoesNotPromiseTooMuch) {
  tessel({"create", "a.tessel"});
  write("a.xml", sites(100000));
  start("import --update a.tessel a.xml");
  waitForWarning();
  send(SIGINT);
  EXPECT_EQ(status(), interrupted);
  EXPECT_EQ(lastWords(), "tessel: a.tessel: interrupted; nothing was imported, but for what was removed and what "
                         "stood in front of it\n");
}

TEST_F(Interruption, IsNoneWhereTheSignalIsIgnored) {
  tessel({"create", "a.tessel"});
  write("a.xml", sites(20000));
  start("import a.tessel a.xml", "trap '' INT; ");
  waitForWarning();
  send(SIGINT);
  EXPECT_EQ(status(), 0);
  EXPECT_EQ(siteCount(), 20000);
}

}  // namespace
}  // namespace tessel::test
