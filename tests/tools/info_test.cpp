#include "support/old_files.h"
#include "tools/program.h"
#include "tools/strict_json.h"

namespace tessel::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

class Info : public Program {
protected:
  Info() { tessel({"create", "a.tessel"}); }

  JsonMembers json(const std::string& name = "a.tessel") {
    std::string out = tessel({"info", "--json", name}).out;
    EXPECT_THAT(out, EndsWith("}\n"));
    out.resize(out.size() - 1);
    EXPECT_EQ(out.find('\n'), std::string::npos);
    return StrictJson::read(out);
  }
};

TEST_F(Info, TellsOfANewFile) {
  EXPECT_THAT(tessel({"info", "a.tessel"}), Prints("file            a.tessel\n"
                                                   "schema version  1010\n"
                                                   "new             no\n"
                                                   "read only       no\n"
                                                   "project\n"
                                                   "Measure         4\n"
                                                   "Unit            0\n"
                                                   "Site            0\n"
                                                   "Building        0\n"
                                                   "Story           0\n"));
}

TEST_F(Info, JsonSaysTheSame) {
  const JsonMembers expected = {
    {"file", "a.tessel"},      {"schema_version", "1010"}, {"new", "false"},      {"read_only", "false"},
    {"project", ""},           {"objects.Measure", "4"},   {"objects.Unit", "0"}, {"objects.Site", "0"},
    {"objects.Building", "0"}, {"objects.Story", "0"},
  };
  EXPECT_EQ(json(), expected);
}

TEST_F(Info, CountsTheObjectsOfEachClass) {
  tessel({"import", "a.tessel", houseDocument});
  const JsonMembers members = json();
  EXPECT_EQ(members.at("objects.Measure"), "4");
  EXPECT_EQ(members.at("objects.Unit"), "3");
  EXPECT_EQ(members.at("objects.Site"), "1");
  EXPECT_EQ(members.at("objects.Building"), "1");
  EXPECT_EQ(members.at("objects.Story"), "2");
  EXPECT_THAT(tessel({"info", "a.tessel"}), Prints(HasSubstr("Story           2\n")));
}

TEST_F(Info, ProjectNameMayHoldAnything) {
  const std::string name = "\"Haus\" \\ \xF0\x9D\x92\xB3\xE2\x82\xAC\n\t\x1B[31m\x7F\xC2\x9B\b";
  raw("a.tessel").exec("UPDATE tessel_Project SET name = '" + name + "'");
  EXPECT_EQ(json().at("project"), name);
  EXPECT_THAT(tessel({"info", "a.tessel"}),
              Prints(HasSubstr(
                "project         \"Haus\" \\ \xF0\x9D\x92\xB3\xE2\x82\xAC\\n\\t\\u001b[31m\\u007f\\u009b\\u0008\n")));
}

TEST_F(Info, OlderFileIsBroughtUpToDate) {
  OldFile(1000).withContent().write(path("old.tessel"));
  const JsonMembers members = json("old.tessel");
  EXPECT_EQ(members.at("schema_version"), "1010");
  EXPECT_EQ(members.at("project"), "Project 1");
  EXPECT_EQ(members.at("objects.Story"), "2");
  EXPECT_EQ(raw("old.tessel").scalarInt("SELECT version FROM schema_version"), 1010);
}

TEST_F(Info, WritesNothing) {
  tessel({"import", "a.tessel", houseDocument});
  const std::string before = read("a.tessel");
  EXPECT_EQ(tessel({"info", "a.tessel"}).status, 0);
  EXPECT_EQ(read("a.tessel"), before);
}

}  // namespace
}  // namespace tessel::test
