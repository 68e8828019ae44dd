#include "tools/program.h"

namespace tessel::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr int wrongUsage = 2;
constexpr int unusable = 3;

/// What the program says to somebody who has just begun.
class Hint : public Program {};

TEST_F(Hint, ACommandThatIsNearlyRightIsSuggested) {
  const std::pair<const char*, const char*> typos[] = {
    {"imprt", "import"},      {"TREE", "tree"},       {"unit", "units"}, {"rmeove", "remove"}, {"inf", "info"},
    {"catalog", "catalogue"}, {"inspekt", "inspect"}, {"tere", "tree"},  {"hlep", "--help"},   {"version", "--version"},
  };
  for (const auto& [wrong, right] : typos) {
    EXPECT_THAT(tessel({wrong}), Reports(wrongUsage, "tessel: there is no command '" + std::string(wrong) +
                                                       "'; did you mean '" + right + "'?\n"));
  }
}

TEST_F(Hint, AWordThatIsFarFromAllIsNotGuessedAt) {
  for (const std::string& word : {std::string("x"), std::string("list"), std::string(), std::string(100000, 'x')}) {
    EXPECT_THAT(tessel({word}),
                Reports(wrongUsage, "tessel: there is no command '" + word + "'; see 'tessel --help'\n"));
  }
}

TEST_F(Hint, AnOptionThatIsNearlyRightIsSuggested) {
  EXPECT_THAT(tessel({"--versoin"}),
              Reports(wrongUsage, "tessel: there is no option '--versoin'; did you mean '--version'?\n"));
  EXPECT_THAT(tessel({"info", "--jsn", "a.tessel"}),
              Reports(wrongUsage, "tessel info: there is no option '--jsn'; did you mean '--json'?\n"));
  EXPECT_THAT(tessel({"import", "--mesage=json", "a.tessel", "a.xml"}),
              Reports(wrongUsage, "tessel import: there is no option '--mesage'; did you mean '--messages'?\n"));
}

TEST_F(Hint, AKindThatIsNearlyRightIsSuggestedBesidesTheList) {
  for (const char* wrong : {"storey", "Storys", "stories"}) {
    EXPECT_THAT(tessel({"purge", "a.tessel", wrong}),
                Reports(wrongUsage, StartsWith("tessel purge: there is no kind '" + std::string(wrong) +
                                               "'; did you mean 'story'? These are all: measure, unit, ")));
  }
  EXPECT_THAT(tessel({"purge", "a.tessel", "roof"}).err, Not(HasSubstr("did you mean")));
}

TEST_F(Hint, AUnitMayHaveBeenCalledByItsLabelOrAlmostByItsName) {
  tessel({"import", "a.tessel", houseDocument});
  for (const char* wrong : {"mm", "milimeter"}) {
    EXPECT_THAT(tessel({"set-default-unit", "a.tessel", wrong}),
                Reports(unusable, "tessel: a.tessel: there is no unit '" + std::string(wrong) +
                                    "'; did you mean 'millimetre'?\n"));
  }
}

TEST_F(Hint, AnIdIsFoundInTheJson) {
  EXPECT_THAT(tessel({"remove", "a.tessel", "story", "Roof"}),
              Reports(wrongUsage, "tessel remove: 'Roof' is no id of an object; tree, units and "
                                  "catalogue tell the ids with --json\n"));
}

TEST_F(Hint, ADocumentIsNoProjectFile) {
  const std::string line =
    "tessel: a.xml: this is an XML document and no project file; 'tessel import' reads it into one\n";
  for (const char* start : {"<p>", "\xEF\xBB\xBF<?xml version='1.0'?>", " \n<p>"}) {
    write("a.xml", start + std::string(2000, ' ') + "</p>");
    for (const char* command : {"tree", "info", "units", "create"}) {
      EXPECT_THAT(tessel({command, "a.xml"}), Reports(unusable, line)) << command;
    }
  }
}

TEST_F(Hint, TheProjectFileComesFirst) {
  const std::string line = "tessel: a.xml: this is an XML document; the project file comes in front of the documents\n";
  write("a.xml", "<p/>");
  write("b.xml", "<p/>");
  tessel({"create", "a.tessel"});
  for (const char* second : {"a.tessel", "none.tessel", "b.xml"}) {
    EXPECT_THAT(tessel({"import", "a.xml", second}), Reports(unusable, line)) << second;
  }
  EXPECT_EQ(read("a.xml"), "<p/>");
}

TEST_F(Hint, AProjectFileIsNoDocument) {
  tessel({"create", "a.tessel"});
  EXPECT_THAT(tessel({"import", "b.tessel", "a.tessel"}),
              Reports(unusable, "tessel: a.tessel: this is a database and no XML document; 'tessel copy' copies from "
                                "one to another\n"));
  EXPECT_FALSE(exists("b.tessel"));
}

}  // namespace
}  // namespace tessel::test
