#include <tessel/tessel.h>

#include "tools/program.h"

namespace tessel::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// The commands that list something, in JSON. The file has two stories in one building, and lengths in millimetres.
class Json : public Program {
protected:
  void SetUp() override {
    write("a.xml",
          "<p><measure><name>LENGTH</name><length>1</length></measure>"
          "<unit><name>millimetre</name><label>m.10^-3</label><scale>0.001</scale><measure name='LENGTH'/></unit>"
          "<unit><name>yard</name><label>yd</label><scale>0.9144</scale><measure name='LENGTH'/></unit>"
          "<default_unit name='millimetre'/>"
          "<site id='1'><name>塔 \"A\"</name><ref_elevation>12.5</ref_elevation></site>"
          "<building id='2'><site id='1'/><name>House</name></building>"
          "<story><building id='2'/><name>Loft</name><elevation>2500</elevation></story>"
          "<story><building id='2'/><name>Ground</name><elevation>-0.5</elevation></story></p>");
    ASSERT_EQ(tessel({"import", "a.tessel", "a.xml"}).status, 0);
    raw("a.tessel").exec("UPDATE tessel_Unit SET name = NULL WHERE label = 'yd'");
  }

  JsonMembers json(std::vector<std::string> words) {
    words.push_back("--json");
    const ProcessResult result = tessel(words);
    EXPECT_THAT(result.err, IsEmpty());
    status = result.status;
    return jsonOf(result);
  }

  int status = -1;
};

TEST_F(Json, OfTheTreeHasIdsElevationsAndUnits) {
  raw("a.tessel").exec("UPDATE tessel_Project SET name = 'Harbour'");
  const JsonMembers expected = {
    {"project", "Harbour"},
    {"sites.0.id", "1"},
    {"sites.0.name", "塔 \"A\""},
    {"sites.0.ref_elevation", "12.5"},
    {"sites.0.unit", "m.10^-3"},
    {"sites.0.buildings.0.id", "2"},
    {"sites.0.buildings.0.name", "House"},
    {"sites.0.buildings.0.elevation_of_ref_height", "0"},
    {"sites.0.buildings.0.unit", "m.10^-3"},
    {"sites.0.buildings.0.stories.0.id", "4"},
    {"sites.0.buildings.0.stories.0.name", "Ground"},
    {"sites.0.buildings.0.stories.0.elevation", "-0.5"},
    {"sites.0.buildings.0.stories.0.unit", "m.10^-3"},
    {"sites.0.buildings.0.stories.1.id", "3"},
    {"sites.0.buildings.0.stories.1.name", "Loft"},
    {"sites.0.buildings.0.stories.1.elevation", "2500"},
    {"sites.0.buildings.0.stories.1.unit", "m.10^-3"},
  };
  EXPECT_EQ(json({"tree", "a.tessel"}), expected);
  EXPECT_EQ(status, 0);
}

TEST_F(Json, OfATreeWithoutUnitsSaysThatTheyAreNotKnown) {
  raw("a.tessel").exec("DELETE FROM tessel_ColumnUnit WHERE \"table\" <> 'Story'");
  const JsonMembers tree = json({"tree", "a.tessel"});
  EXPECT_EQ(tree.at("sites.0.unit"), "null");
  EXPECT_EQ(tree.at("sites.0.buildings.0.unit"), "null");
  EXPECT_EQ(tree.at("sites.0.buildings.0.stories.0.unit"), "m.10^-3");
}

TEST_F(Json, OfAnEmptyTreeHasAnEmptyList) {
  tessel({"create", "b.tessel"});
  EXPECT_THAT(tessel({"tree", "--json", "b.tessel"}), Prints("{\"project\": \"\", \"sites\": []}\n"));
}

TEST_F(Json, HasNoInfinity) {
  raw("a.tessel").exec("UPDATE tessel_Story SET elevation = 9e999 WHERE name = 'Loft'");
  EXPECT_EQ(json({"tree", "a.tessel"}).at("sites.0.buildings.0.stories.1.elevation"), "null");
}

TEST_F(Json, OfUnitsHasDimensionsDefaultsAndColumns) {
  JsonMembers units = json({"units", "a.tessel"});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(units.at("0.name"), "AREA");
  EXPECT_EQ(units.at("0.dimensions.length"), "2");
  EXPECT_EQ(units.at("1.name"), "LENGTH");
  EXPECT_EQ(units.at("1.id"), "1");
  EXPECT_EQ(units.at("1.dimensions.length"), "1");
  for (const char* name :
       {"mass", "time", "temperature", "electric_current", "luminous_intensity", "amount_of_substance"}) {
    EXPECT_EQ(units.at(std::string("1.dimensions.") + name), "0") << name;
  }
  EXPECT_EQ(units.at("1.units.0.label"), "m.10^-3");
  EXPECT_EQ(units.at("1.units.0.name"), "millimetre");
  EXPECT_EQ(units.at("1.units.0.id"), "1");
  EXPECT_EQ(units.at("1.units.0.scale"), "0.001");
  EXPECT_EQ(units.at("1.units.0.default"), "true");
  EXPECT_EQ(units.at("1.units.0.columns.0"), "site.ref_elevation");
  EXPECT_EQ(units.at("1.units.1.label"), "yd");
  EXPECT_EQ(units.at("1.units.1.scale"), "0.9144");
  EXPECT_EQ(units.at("1.units.1.default"), "false");
  EXPECT_EQ(units.count("1.units.1.name"), 0U) << "it has none";
  EXPECT_EQ(units.count("1.units.1.columns.0"), 0U);
}

TEST_F(Json, OfTheCatalogueHasIdsToRemoveBy) {
  write("b.xml", "<p><propertynamespace id='1'>ns</propertynamespace><propertyset><namespace id='1'/><name>Set</name>"
                 "<property_definition><name>one</name><type>Double</type></property_definition>"
                 "<property_definition><name>two</name><type>Double</type></property_definition></propertyset></p>");
  ASSERT_EQ(tessel({"import", "a.tessel", "b.xml"}).status, 0);
  const JsonMembers catalogue = json({"catalogue", "a.tessel"});
  EXPECT_EQ(catalogue.at("0.id"), "1");
  EXPECT_EQ(catalogue.at("0.sets.0.property_definitions.1.name"), "two");
  EXPECT_EQ(catalogue.at("0.sets.0.property_definitions.1.id"), "2");
  EXPECT_EQ(json({"remove", "a.tessel", "propertyset", catalogue.at("0.sets.0.id")}).at("0.outcome"), "removed");
  EXPECT_EQ(raw("a.tessel").count("tessel_PropertySet"), 0);
}

TEST_F(Json, OfARemovalHasTheOutcomeOfEachId) {
  const JsonMembers expected = {
    {"0.kind", "story"}, {"0.id", "4"},  {"0.outcome", "removed"},
    {"1.kind", "story"}, {"1.id", "99"}, {"1.outcome", "missing"},
  };
  EXPECT_EQ(json({"remove", "a.tessel", "story", "4", "99"}), expected);
  EXPECT_EQ(status, 1);
  EXPECT_EQ(json({"remove", "a.tessel", "site", "1"}).at("0.outcome"), "in use");
  EXPECT_EQ(status, 1);
  json({"remove", "a.tessel", "story", "3"});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(raw("a.tessel").count("tessel_Story"), 0);
}

TEST_F(Json, OfAPurgeHasTheCountOfEachKind) {
  const JsonMembers stuck = {
    {"kept.0.kind", "site"},          {"kept.0.id", "1"},  {"kept.0.name", "塔 \"A\""},
    {"kept.0.reason", "referred to"}, {"unreadable", "0"}, {"complete", "false"},
  };
  EXPECT_EQ(json({"purge", "a.tessel", "site"}), stuck);
  EXPECT_EQ(status, 1);
  const JsonMembers gone = {
    {"removed.building", "1"}, {"removed.story", "2"}, {"unreadable", "0"}, {"complete", "true"}};
  EXPECT_EQ(json({"purge", "a.tessel", "story", "building"}), gone);
  EXPECT_EQ(status, 0);
}

TEST_F(Json, OfAFileThatCannotBeUsedIsNothing) {
  for (const char* command : {"tree", "units", "catalogue"}) {
    EXPECT_THAT(tessel({command, "--json", "none.tessel"}), Reports(3, HasSubstr("There is no such file."))) << command;
  }
}

}  // namespace
}  // namespace tessel::test
