#include "tools/program.h"

namespace tessel::test {
namespace {

class Create : public Program {};

TEST_F(Create, MakesAnEmptyProject) {
  EXPECT_THAT(tessel({"create", "a.tessel"}), Prints("a.tessel: new project, schema version 1010\n"));
  EXPECT_EQ(raw("a.tessel").count("tessel_Project"), 1);
  EXPECT_EQ(raw("a.tessel").count("tessel_SpatialStructure"), 0);
}

TEST_F(Create, LeavesAProjectAsItIs) {
  tessel({"create", "a.tessel"});
  raw("a.tessel").exec("UPDATE tessel_Project SET name = 'Harbour'");
  const std::string before = read("a.tessel");
  EXPECT_THAT(tessel({"create", "a.tessel"}), Prints("a.tessel: holds a project already, schema version 1010\n"));
  EXPECT_EQ(read("a.tessel"), before);
}

TEST_F(Create, TakesAnyUnicodeFileName) {
  const std::string name = "Stra\xC3\x9F"
                           "e \xF0\x9F\x8F\xA0.tessel";
  EXPECT_THAT(tessel({"create", name}), Prints(name + ": new project, schema version 1010\n"));
  EXPECT_TRUE(exists(name));
}

/// A database of another program is not taken for a project file by mistake.
class OtherDatabase : public Program {
protected:
  OtherDatabase() {
    RawFile(path("a.db"), RawFile::Access::create).exec("CREATE TABLE mine (x); INSERT INTO mine VALUES (7)");
    tessel({"import", "a.tessel", houseDocument});
  }

  /// Each command that can make a project file.
  static std::vector<std::vector<std::string>> commands() {
    return {{"create", "a.db"}, {"import", "a.db", houseDocument}, {"copy", "a.tessel", "a.db"}};
  }
};

TEST_F(OtherDatabase, IsRefused) {
  const std::string before = read("a.db");
  for (const auto& words : commands()) {
    EXPECT_THAT(tessel(words), Reports(3, "tessel: a.db: this is an SQLite database of another program; --force puts "
                                          "a project into it\n"))
      << words.front();
  }
  EXPECT_TRUE(read("a.db") == before);
}

TEST_F(OtherDatabase, TakesAProjectByForce) {
  const std::string before = read("a.db");
  for (auto words : commands()) {
    write("a.db", before);
    words.insert(words.begin() + 1, "--force");
    EXPECT_EQ(tessel(words).status, 0) << words.front();
    EXPECT_EQ(raw("a.db").count("tessel_Project"), 1) << words.front();
    EXPECT_EQ(raw("a.db").scalarInt("SELECT x FROM mine"), 7) << words.front();
  }
}

TEST_F(OtherDatabase, IsNotWhatAnEmptyFileIs) {
  write("a.db", "");
  EXPECT_THAT(tessel({"create", "a.db"}), Prints("a.db: new project, schema version 1010\n"));
}

TEST_F(OtherDatabase, IsNoMoreOneOnceAProjectIsInIt) {
  tessel({"create", "--force", "a.db"});
  for (const auto& words : commands()) {
    EXPECT_EQ(tessel(words).err.find("another program"), std::string::npos) << words.front();
  }
}

}  // namespace
}  // namespace tessel::test
