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

TEST_F(Create, MakesAProjectOfAnotherDatabase) {
  RawFile(path("a.db"), RawFile::Access::create).exec("CREATE TABLE mine (x); INSERT INTO mine VALUES (7)");
  EXPECT_THAT(tessel({"create", "a.db"}), Prints("a.db: new project, schema version 1010\n"));
  EXPECT_EQ(raw("a.db").scalarInt("SELECT x FROM mine"), 7);
}

}  // namespace
}  // namespace tessel::test
