#include <utility>

#include "tools/paused_program.h"

namespace tessel::test {
namespace {

using ::testing::AnyOf;

constexpr int interrupted = 130;

/// Sends signals to an import that stands still in the middle of a document.
class Interruption : public PausedProgram {
protected:
  Interruption() {
    tessel({"create", "a.tessel"});
    write("a.xml", longWarnings());
  }

  long long siteCount() const { return raw("a.tessel").count("tessel_Site"); }
};

class InterruptionBy : public Interruption, public ::testing::WithParamInterface<int> {};

TEST_P(InterruptionBy, LeavesNothingOfTheDocument) {
  start("import a.tessel a.xml");
  send(GetParam());
  EXPECT_THAT(finish(), Reports(interrupted, "tessel: a.tessel: interrupted; nothing was imported\n"));
  EXPECT_FALSE(exists("a.tessel-journal"));
  EXPECT_EQ(siteCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptionBy, ::testing::Values(SIGINT, SIGTERM));

class InterruptionByTwo : public Interruption, public ::testing::WithParamInterface<std::pair<int, int>> {};

TEST_P(InterruptionByTwo, EndsTheProgramAtOnce) {
  start("import a.tessel a.xml");
  send(GetParam().first);
  send(GetParam().second);
  EXPECT_THAT(finish().status, AnyOf(-SIGINT, -SIGTERM));  // Which one comes first is up to the system.
  EXPECT_EQ(siteCount(), 0);
}

// Two equal ones may become one on their way.
INSTANTIATE_TEST_SUITE_P(Signals, InterruptionByTwo,
                         ::testing::Values(std::pair(SIGINT, SIGTERM), std::pair(SIGTERM, SIGINT)));

TEST_F(Interruption, KeepsTheDocumentsBefore) {
  write("1.xml", "<p><building><name>b</name><site><name>s</name></site></building></p>");
  start("import a.tessel 1.xml a.xml");
  send(SIGINT);
  EXPECT_THAT(finish(), Reports(interrupted, "tessel: a.tessel: interrupted; only 1 of 2 documents was imported\n"));
  EXPECT_EQ(siteCount(), 1);
}

TEST_F(Interruption, WithUpdateDoesNotPromiseTooMuch) {
  start("import --update a.tessel a.xml");
  send(SIGINT);
  EXPECT_THAT(finish(), Reports(interrupted, "tessel: a.tessel: interrupted; nothing was imported, but for what was "
                                             "removed and what stood in front of it\n"));
}

TEST_F(Interruption, IsNoneWhereTheSignalIsIgnored) {
  start("import a.tessel a.xml", "trap '' INT; ");
  send(SIGINT);
  EXPECT_THAT(finish(), Reports(0, "a.tessel: 1 document imported, 0 errors, 5000 warnings\n"));
  EXPECT_EQ(siteCount(), 2);
}

}  // namespace
}  // namespace tessel::test
