#include "tools/program.h"

namespace tessel::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

constexpr int doneWithErrors = 1;
constexpr int wrongUsage = 2;

/// On the sample catalogue, whose sets refer to entity types and definitions.
class PurgeCommand : public Program {
protected:
  void SetUp() override { tessel({"import", "a.tessel", TESSEL_EXAMPLES "/ifc-common-elements.xml"}); }

  ProcessResult purge(std::vector<std::string> words) {
    words.insert(words.begin(), {"purge", "a.tessel"});
    return tessel(words);
  }

  long long count(const std::string& table) const { return raw("a.tessel").count("tessel_" + table); }
};

TEST_F(PurgeCommand, WithoutKindsAsksForThem) {
  const std::string before = read("a.tessel");
  EXPECT_THAT(purge({}),
              Reports(wrongUsage, "tessel purge: no kind is named; --all removes the objects of all kinds\n"));
  EXPECT_THAT(purge({"--all", "site"}), Reports(wrongUsage, StartsWith("tessel purge: either kinds or --all ")));
  EXPECT_THAT(tessel({"purge"}), Reports(wrongUsage, StartsWith("tessel purge: a project file is needed;")));
  EXPECT_TRUE(read("a.tessel") == before);
}

TEST_F(PurgeCommand, TakesKindsInAnyOrderAndCase) {
  EXPECT_THAT(purge({"Building", "STORY"}), Prints("building: 1 removed\nstory: 2 removed\n"));
  EXPECT_EQ(count("Site"), 1);
}

TEST_F(PurgeCommand, OfAllLeavesNothing) {
  tessel({"create", "b.tessel"});
  EXPECT_THAT(tessel({"purge", "--all", "b.tessel"}), Prints("measure: 4 removed\n"));
  EXPECT_EQ(raw("b.tessel").count("tessel_Measure"), 0);
}

TEST_F(PurgeCommand, OfAllKeepsWhatTheNumbersOfTheFileNeed) {
  const ProcessResult result = purge({"--all"});
  EXPECT_EQ(result.status, doneWithErrors);
  EXPECT_EQ(result.err,
            "a.tessel: 2 units and 2 measures stay: default units and units of columns cannot be removed\n");
  EXPECT_EQ(result.out, "site: 1 removed\n"
                        "building: 1 removed\n"
                        "story: 2 removed\n"
                        "measure: 9 removed\n"
                        "unit: 10 removed\n"
                        "propertynamespace: 1 removed\n"
                        "propertyset: 62 removed\n"
                        "propertydefinition: 223 removed\n"
                        "entitytype: 35 removed\n");
  for (const char* table : {"Story", "PropertySet", "PropertyDefinition", "EntityType", "PropertyNamespace"}) {
    EXPECT_EQ(count(table), 0) << table;
  }
  EXPECT_EQ(count("Unit"), 2);
  EXPECT_EQ(count("Measure"), 2);
}

TEST_F(PurgeCommand, AUnitOfAColumnStaysAlsoWhenItIsNoDefaultAnyMore) {
  tessel({"set-default-unit", "a.tessel", "metre"});
  EXPECT_EQ(purge({"--all"}).err,
            "a.tessel: 3 units and 2 measures stay: default units and units of columns cannot be removed\n");
}

TEST_F(PurgeCommand, OneMeasureAloneIsOne) {
  write("a.xml", "<p><unit><name>gram</name><label>g</label><scale>0.001</scale><measure name='MASS'/></unit>"
                 "<default_unit name='gram'/></p>");
  ASSERT_EQ(tessel({"import", "b.tessel", "a.xml"}).status, 0);
  EXPECT_EQ(tessel({"purge", "b.tessel", "measure"}).err,
            "b.tessel: 1 measure stays: default units and units of columns cannot be removed\n");
}

TEST_F(PurgeCommand, NamesWhatAnotherObjectRefersTo) {
  EXPECT_THAT(purge({"site"}),
              Reports(doneWithErrors, "a.tessel: site 'Default' stays: another object refers to it\n"));
  const ProcessResult types = purge({"entitytype"});
  EXPECT_EQ(types.status, doneWithErrors);
  EXPECT_THAT(types.err, HasSubstr("a.tessel: entitytype 'IfcBeam' stays: another object refers to it\n"));
  EXPECT_EQ(count("Site"), 1);
  EXPECT_EQ(count("EntityType"), 35);
}

TEST_F(PurgeCommand, GoesOnBehindWhatStays) {
  raw("a.tessel")
    .exec("DELETE FROM tessel_PropertySet_entity_types WHERE entity_type_id <> "
          "(SELECT id FROM tessel_EntityType WHERE name = 'IfcBeam')");
  const ProcessResult result = purge({"entitytype"});
  EXPECT_EQ(result.out, "entitytype: 34 removed\n");
  EXPECT_EQ(result.err, "a.tessel: entitytype 'IfcBeam' stays: another object refers to it\n");
}

TEST_F(PurgeCommand, AUnitOfADefinitionIsNamed) {
  const ProcessResult result = purge({"unit"});
  EXPECT_THAT(result.err, AllOf(HasSubstr("a.tessel: unit 'radian' stays: another object refers to it\n"),
                                HasSubstr("a.tessel: 2 units stay: "), Not(HasSubstr("'millimetre'"))));
}

TEST_F(PurgeCommand, OfSetsLeavesTheirDefinitions) {
  EXPECT_THAT(purge({"propertyset"}), Prints("propertyset: 62 removed\n"));
  EXPECT_EQ(count("PropertyDefinition"), 223);
  EXPECT_THAT(purge({"entitytype"}), Prints("entitytype: 35 removed\n"));
}

TEST_F(PurgeCommand, TellsOfWhatCannotBeRead) {
  raw("a.tessel")
    .exec("PRAGMA foreign_keys = OFF; UPDATE tessel_Story SET building_id = 77 WHERE name = 'Roof';"
          "INSERT INTO tessel_SpatialStructure (id, typeid) VALUES (90, 'tessel::Building');"
          "INSERT INTO tessel_Building (id, site_id, name) VALUES (90, 91, 'Castle in the air');"
          "UPDATE tessel_Story SET building_id = 90 WHERE name = 'Ground Floor'");
  const ProcessResult result = purge({"building"});
  EXPECT_EQ(result.status, doneWithErrors);
  EXPECT_EQ(result.out, "building: 1 removed\n");
  EXPECT_EQ(result.err, "a.tessel: 1 object stays whose references lead nowhere\n");
  EXPECT_EQ(jsonOf(purge({"--json", "building"})).at("unreadable"), "1");
}

TEST_F(PurgeCommand, BehindWhatStaysAlsoTakesWhatCannotBeRead) {
  raw("a.tessel")
    .exec("INSERT INTO tessel_SpatialStructure (id, typeid) VALUES (90, 'tessel::Building');"
          "INSERT INTO tessel_Building (id, site_id, name) VALUES (90, 91, 'Castle in the air')");
  const ProcessResult result = purge({"building"});
  EXPECT_EQ(result.status, doneWithErrors);
  EXPECT_EQ(result.out, "building: 1 removed\n");
  EXPECT_THAT(result.err, MatchesRegex("a.tessel: building '[^']*' stays: another object refers to it\n"));
}

TEST_F(PurgeCommand, AsJsonTellsWhyObjectsStay) {
  const ProcessResult result = purge({"--json", "unit"});
  EXPECT_THAT(result.out, AllOf(HasSubstr("\"name\": \"radian\", \"reason\": \"referred to\"}"),
                                HasSubstr("\"name\": \"millimetre\", \"reason\": \"unit in use\"}"),
                                HasSubstr("\"unreadable\": 0, \"complete\": false}")));
}

TEST_F(PurgeCommand, TellsWhyUnitsStayAlsoIfDefaultUnitsAreLost) {
  raw("a.tessel").exec("UPDATE tessel_DefaultUnit SET unit_id = 777");
  EXPECT_THAT(purge({"unit"}).err,
              AllOf(HasSubstr("a.tessel: unit 'metre' stays: another object refers to it\n"),
                    HasSubstr("a.tessel: 2 units stay: default units and units of columns cannot be removed\n")));
}

TEST_F(PurgeCommand, TellsWhyUnitsStayAlsoIfUnitsOfColumnsAreLost) {
  raw("a.tessel").exec("UPDATE tessel_ColumnUnit SET unit_id = 777");
  EXPECT_THAT(purge({"unit"}).err,
              HasSubstr("a.tessel: 2 units stay: default units and units of columns cannot be removed\n"));
}

}  // namespace
}  // namespace tessel::test
