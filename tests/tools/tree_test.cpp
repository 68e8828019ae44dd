#include <tessel/tessel.h>

#include "tools/program.h"

namespace tessel::test {
namespace {

class Tree : public Program {
protected:
  Tree() : db(ProjectDb::create(OdString::fromUtf8(path("a.tessel")))) {}

  TsSmartPtr<Site> site(const char* name) { return db->save(Site::create(OdString::fromUtf8(name))); }
  TsSmartPtr<Building> building(const TsSmartPtr<Site>& owner, const char* name) {
    return db->save(Building::create(owner, OdString::fromUtf8(name)));
  }
  void story(const TsSmartPtr<Building>& owner, const char* name, double elevation) {
    db->save(Story::create(owner, OdString::fromUtf8(name), elevation));
  }

  ProcessResult tree() {
    db.reset();
    return tessel({"tree", "a.tessel"});
  }

  std::shared_ptr<ProjectDb> db;
};

TEST_F(Tree, OfAnEmptyProject) { EXPECT_THAT(tree(), Prints("(no site)\n")); }

TEST_F(Tree, BeginsWithTheProjectName) {
  db->project().set_name(L"Harbour");
  db->saveProject();
  EXPECT_THAT(tree(), Prints("project Harbour\n(no site)\n"));
}

TEST_F(Tree, ShowsSitesAndBuildingsByNameAndStoriesFromTheBottomUp) {
  const auto west = site("West");
  const auto east = site("East");
  const auto tower = building(east, "Tower");
  building(west, "Shed");
  const auto barn = building(east, "Barn");
  story(tower, "Top", 6000);
  story(tower, "Cellar", -2500);
  story(tower, "Ground", 0);
  story(barn, "Floor", 12);
  story(barn, "Loft", 3000);
  EXPECT_THAT(tree(), Prints("site East (0)\n"
                             "├── building Barn (0)\n"
                             "│   ├──   12  Floor\n"
                             "│   └── 3000  Loft\n"
                             "└── building Tower (0)\n"
                             "    ├── -2500  Cellar\n"
                             "    ├──     0  Ground\n"
                             "    └──  6000  Top\n"
                             "site West (0)\n"
                             "└── building Shed (0)\n"));
}

TEST_F(Tree, ShowsElevationsOfSiteAndBuilding) {
  const auto harbour = site("Harbour");
  harbour->set_ref_elevation(12.25);
  harbour->save();
  const auto tower = building(harbour, "Tower");
  tower->set_elevation_of_ref_height(-3);
  tower->save();
  EXPECT_THAT(tree(), Prints("site Harbour (12.25)\n└── building Tower (-3)\n"));
}

TEST_F(Tree, ElevationsOfABuildingHaveEqualDecimals) {
  const auto tower = building(site("A"), "B");
  story(tower, "1", -0.5);
  story(tower, "2", 2.125);
  story(tower, "3", 10);
  EXPECT_THAT(tree(), Prints("site A (0)\n"
                             "└── building B (0)\n"
                             "    ├── -0.500  1\n"
                             "    ├──  2.125  2\n"
                             "    └── 10.000  3\n"));
}

TEST_F(Tree, NumbersAreTheShortestThatReadBack) {
  const auto tower = building(site("A"), "B");
  story(tower, "1", -1e300);
  story(tower, "2", 0);
  story(tower, "3", 0.1);
  story(tower, "4", 1e20);
  EXPECT_THAT(tree(), Prints("site A (0)\n"
                             "└── building B (0)\n"
                             "    ├── -1e+300  1\n"
                             "    ├──     0.0  2\n"
                             "    ├──     0.1  3\n"
                             "    └──   1e+20  4\n"));
}

TEST_F(Tree, UnitStandsBehindTheNumberWhereTheFileKnowsIt) {
  const auto length = db->get<Measure>(NameKey(L"LENGTH"));
  db->setDefaultUnit(Unit::create(L"millimetre", L"m.10^-3", 0.001, length));
  const auto tower = building(site("A"), "B");
  story(tower, "Ground", 0);
  story(tower, "First", 2500);
  EXPECT_THAT(tree(), Prints("site A (0 m·10-3)\n"
                             "└── building B (0 m·10-3)\n"
                             "    ├──    0 m·10-3  Ground\n"
                             "    └── 2500 m·10-3  First\n"));
}

TEST_F(Tree, NamesOfAnyScriptComeAsTheyAre) {
  const auto tower = building(site("Bjørnevåg \xF0\x9F\x8F\x9D"), "\xE5\xA1\x94 \xD7\x91\xD7\x99\xD7\xAA");
  story(tower, "e\xCC\x81tage \xF0\x9D\x92\xB3", 0);
  EXPECT_THAT(tree(), Prints("site Bjørnevåg \xF0\x9F\x8F\x9D (0)\n"
                             "└── building \xE5\xA1\x94 \xD7\x91\xD7\x99\xD7\xAA (0)\n"
                             "    └── 0  e\xCC\x81tage \xF0\x9D\x92\xB3\n"));
}

TEST_F(Tree, NamesCanNeitherBreakLinesNorCommandTheTerminal) {
  building(site("a\nb"), "\x1B[2Jc\td\r\x07");
  EXPECT_THAT(tree(), Prints("site a\\nb (0)\n└── building \\u001b[2Jc\\td\\r\\u0007 (0)\n"));
}

TEST_F(Tree, WritesNothing) {
  building(site("A"), "B");
  db.reset();
  const std::string before = read("a.tessel");
  EXPECT_EQ(tree().status, 0);
  EXPECT_EQ(read("a.tessel"), before);
}

}  // namespace
}  // namespace tessel::test
