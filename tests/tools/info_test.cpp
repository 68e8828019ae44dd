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
  EXPECT_THAT(tessel({"info", "a.tessel"}), Prints("file                a.tessel\n"
                                                   "schema version      1010\n"
                                                   "compatibility       1000\n"
                                                   "read only           no\n"
                                                   "project\n"
                                                   "measure             4\n"
                                                   "unit                0\n"
                                                   "propertynamespace   0\n"
                                                   "entitytype          0\n"
                                                   "propertydefinition  0\n"
                                                   "valuedefinition     0\n"
                                                   "propertyset         0\n"
                                                   "site                0\n"
                                                   "building            0\n"
                                                   "story               0\n"));
}

TEST_F(Info, JsonSaysTheSame) {
  const JsonMembers expected = {
    {"file", "a.tessel"},
    {"schema_version", "1010"},
    {"compatibility", "1000"},
    {"read_only", "false"},
    {"project", ""},
    {"objects.measure", "4"},
    {"objects.unit", "0"},
    {"objects.propertynamespace", "0"},
    {"objects.entitytype", "0"},
    {"objects.propertydefinition", "0"},
    {"objects.valuedefinition", "0"},
    {"objects.propertyset", "0"},
    {"objects.site", "0"},
    {"objects.building", "0"},
    {"objects.story", "0"},
  };
  EXPECT_EQ(json(), expected);
}

// Another number of each class, so that none can be taken for another.
TEST_F(Info, CountsTheObjectsOfEachClass) {
  std::string document = "<p><propertynamespace id='1'>n</propertynamespace><site id='1'><name>s</name></site>"
                         "<building id='1'><site id='1'/><name>b</name></building>";
  const auto add = [&](int count, const std::string& before, const std::string& after) {
    for (int i = 0; i < count; ++i) {
      document += before + std::to_string(i) + after;
    }
  };
  add(1, "<unit><measure name='MASS'/><label>u</label><name>", "</name></unit>");
  add(1, "<propertynamespace>", "</propertynamespace>");
  add(3, "<entitytype>", "</entitytype>");
  add(5, "<propertydefinition><namespace id='1'/><name>", "</name></propertydefinition>");
  add(6, "<valuedefinition><namespace id='1'/><name>", "</name></valuedefinition>");
  add(7, "<propertyset><namespace id='1'/><name>", "</name></propertyset>");
  add(7, "<site><name>", "</name></site>");
  add(8, "<building><site id='1'/><name>", "</name></building>");
  add(10, "<story><building id='1'/><name>", "</name></story>");
  write("a.xml", document + "</p>");
  ASSERT_EQ(tessel({"import", "a.tessel", "a.xml"}).status, 0);

  const JsonMembers members = json();
  EXPECT_EQ(members.at("objects.unit"), "1");
  EXPECT_EQ(members.at("objects.propertynamespace"), "2");
  EXPECT_EQ(members.at("objects.entitytype"), "3");
  EXPECT_EQ(members.at("objects.measure"), "4");
  EXPECT_EQ(members.at("objects.propertydefinition"), "5");
  EXPECT_EQ(members.at("objects.valuedefinition"), "6");
  EXPECT_EQ(members.at("objects.propertyset"), "7");
  EXPECT_EQ(members.at("objects.site"), "8");
  EXPECT_EQ(members.at("objects.building"), "9");
  EXPECT_EQ(members.at("objects.story"), "10");
  EXPECT_THAT(tessel({"info", "a.tessel"}), Prints(HasSubstr("\nstory               10\n")));
}

TEST_F(Info, ProjectNameMayHoldAnything) {
  const std::string name = "\"Haus\" \\ \xF0\x9D\x92\xB3\xE2\x82\xAC\n\t\x1B[31m\x7F\xC2\x9B\b";
  raw("a.tessel").exec("UPDATE tessel_Project SET name = '" + name + "'");
  EXPECT_EQ(json().at("project"), name);
  EXPECT_THAT(
    tessel({"info", "a.tessel"}),
    Prints(HasSubstr(
      "project             \"Haus\" \\ \xF0\x9D\x92\xB3\xE2\x82\xAC\\n\\t\\u001b[31m\\u007f\\u009b\\u0008\n")));
}

TEST_F(Info, OlderFileIsBroughtUpToDate) {
  OldFile(1000).withContent().write(path("old.tessel"));
  const JsonMembers members = json("old.tessel");
  EXPECT_EQ(members.at("schema_version"), "1010");
  EXPECT_EQ(members.at("project"), "Project 1");
  EXPECT_EQ(members.at("objects.story"), "2");
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
