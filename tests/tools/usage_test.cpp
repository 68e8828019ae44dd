#include "tools/program.h"

namespace tessel::test {
namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

constexpr int wrongUsage = 2;
constexpr int unusable = 3;

class Usage : public Program {};
class UsageOfCommand : public Program, public ::testing::WithParamInterface<const char*> {};

TEST_F(Usage, NoCommandIsWrong) {
  EXPECT_THAT(tessel({}), Reports(wrongUsage, "tessel: a command is needed; see 'tessel --help'\n"));
}

TEST_F(Usage, UnknownCommandIsWrong) {
  EXPECT_THAT(tessel({"demolish", "a.tessel"}),
              Reports(wrongUsage, "tessel: there is no command 'demolish'; see 'tessel --help'\n"));
}

TEST_F(Usage, WordsThatAreNoTextAreShownAsBytes) {
  EXPECT_THAT(tessel({"\xFF\x1B[2J\xC3\xA9"}),
              Reports(wrongUsage, "tessel: there is no command '\\xff\\u001b[2J\xC3\xA9'; see 'tessel --help'\n"));
}

TEST_F(Usage, HelpListsTheCommands) {
  EXPECT_THAT(tessel({"--help"}), Prints(AllOf(StartsWith("usage: tessel COMMAND"), ContainsRegex("\n  create +[a-z]"),
                                               ContainsRegex("\n  info +[a-z]"), ContainsRegex("\n  tree +[a-z]"),
                                               ContainsRegex("\n  import +[a-z]"))));
  EXPECT_EQ(tessel({"-h"}).out, tessel({"--help"}).out);
}

TEST_F(Usage, HelpIsACommandAsWell) {
  EXPECT_THAT(tessel({"help"}), Prints(tessel({"--help"}).out));
  EXPECT_THAT(tessel({"help", "--help"}), Prints(tessel({"--help"}).out));
  EXPECT_THAT(tessel({"help", "copy"}), Prints(tessel({"copy", "--help"}).out));
  EXPECT_THAT(tessel({"help", "cpoy"}),
              Reports(wrongUsage, "tessel: there is no command 'cpoy'; did you mean 'copy'?\n"));
  EXPECT_THAT(tessel({"help", "copy", "tree"}), Reports(wrongUsage, StartsWith("tessel: only one command ")));
}

TEST_F(Usage, NoLineOfTheHelpIsTooWideForATerminal) {
  std::vector<std::string> topics = {"--help"};
  std::istringstream list(tessel({"--help"}).out);
  for (std::string line; std::getline(list, line);) {
    if (line.compare(0, 2, "  ") == 0) topics.push_back(line.substr(2, line.find(' ', 2) - 2));
  }
  ASSERT_EQ(topics.size(), 12U);
  for (const std::string& topic : topics) {
    std::istringstream help(tessel({topic, "--help"}).out);
    for (std::string line; std::getline(help, line);) {
      EXPECT_LE(line.size(), 80U) << line;
    }
  }
}

TEST_F(Usage, VersionIsOneLine) {
  EXPECT_THAT(tessel({"--version"}), Prints(MatchesRegex("tessel [0-9]+\\.[0-9]+\\.[0-9]+\n")));
}

TEST_P(UsageOfCommand, HelpBeginsWithItsSynopsis) {
  const std::string start = "usage: tessel " + std::string(GetParam()) + " ";
  EXPECT_THAT(tessel({GetParam(), "--help"}), Prints(AllOf(StartsWith(start), HasSubstr(" FILE"), HasSubstr("\n\n"))));
}

TEST_P(UsageOfCommand, HelpIsGivenWhateverElseIsSaid) {
  EXPECT_THAT(tessel({GetParam(), "--colour", "x", "-h", "y"}), Prints(StartsWith("usage: ")));
  EXPECT_FALSE(exists("x"));
}

TEST_P(UsageOfCommand, UnknownOptionIsWrong) {
  const std::string name = GetParam();
  EXPECT_THAT(
    tessel({name, "a.tessel", "--colour=red"}),
    Reports(wrongUsage, "tessel " + name + ": there is no option '--colour'; see 'tessel " + name + " --help'\n"));
  EXPECT_FALSE(exists("a.tessel"));
}

TEST_P(UsageOfCommand, MissingFileNameIsWrong) {
  EXPECT_THAT(tessel({GetParam()}), Reports(wrongUsage, HasSubstr(": a project file ")));
}

INSTANTIATE_TEST_SUITE_P(Commands, UsageOfCommand, ::testing::Values("create", "info", "tree", "import"));

TEST_F(Usage, SecondFileIsWrongWhereOneIsWanted) {
  EXPECT_THAT(tessel({"create", "a.tessel", "b.tessel"}),
              Reports(wrongUsage, "tessel create: only one project file is wanted; see 'tessel create --help'\n"));
  EXPECT_FALSE(exists("a.tessel"));
}

TEST_F(Usage, ImportWithoutADocumentIsWrong) {
  EXPECT_THAT(tessel({"import", "a.tessel"}),
              Reports(wrongUsage, StartsWith("tessel import: a project file and at least one document are needed;")));
}

TEST_F(Usage, OptionWithoutItsValueIsWrong) {
  EXPECT_THAT(tessel({"import", "a.tessel", "b.xml", "--types"}),
              Reports(wrongUsage, StartsWith("tessel import: the option '--types' needs a value;")));
}

TEST_F(Usage, OptionWithAValueItDoesNotTakeIsWrong) {
  EXPECT_THAT(tessel({"info", "--json=yes", "a.tessel"}),
              Reports(wrongUsage, StartsWith("tessel info: the option '--json' takes no value;")));
}

TEST_F(Usage, TwoDashesEndTheOptions) {
  EXPECT_THAT(tessel({"create", "--", "--help"}), Prints("--help: new project, schema version 1010\n"));
  EXPECT_TRUE(exists("--help"));
}

TEST_F(Usage, OptionsMayFollowTheFile) {
  tessel({"create", "a.tessel"});
  EXPECT_THAT(tessel({"info", "a.tessel", "--json"}), Prints(StartsWith("{")));
}

TEST_F(Usage, OutputThatCannotBeWrittenIsAnError) {
  ProcessOptions full;
  full.out = "/dev/full";
  EXPECT_THAT(tessel({"--help"}, full), Reports(unusable, "tessel: standard output cannot be written\n"));
}

}  // namespace
}  // namespace tessel::test
