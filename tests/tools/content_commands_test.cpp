#include "tools/program.h"
#include "tools/strict_json.h"

namespace tessel::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string sampleDocument = TESSEL_EXAMPLES "/ifc-common-elements.xml";

/// The commands that show or change the content of a file, on the sample catalogue.
class ContentCommands : public Program {
protected:
  void SetUp() override { tessel({"import", "a.tessel", sampleDocument}); }

  long long count(const std::string& table) const { return raw("a.tessel").count(table); }
};

TEST_F(ContentCommands, UnitsShowsDimensionsLabelsDefaultsAndColumns) {
  const std::string out = tessel({"units", "a.tessel"}).out;
  EXPECT_THAT(out, HasSubstr("AREA (length 2)\n  m²  square metre  1  default\n      keeps site.buildable_area\n"));
  EXPECT_THAT(out, HasSubstr("LENGTH (length 1)\n  m   metre       1\n  mm  millimetre  0.001  default\n"));
  EXPECT_THAT(out, HasSubstr("      keeps story.elevation\n"));
  EXPECT_THAT(out, HasSubstr("PLANEANGLE (no dimension)\n  rad  radian  1\n"));
}

TEST_F(ContentCommands, SetDefaultUnitChangesTheDefaultAndNotTheColumns) {
  EXPECT_THAT(tessel({"set-default-unit", "a.tessel", "metre"}), Prints("The default unit of LENGTH is metre.\n"));
  EXPECT_THAT(tessel({"units", "a.tessel"}).out,
              HasSubstr("  m   metre       1      default\n  mm  millimetre  0.001\n      keeps site.ref_elevation\n"));
}

TEST_F(ContentCommands, SetDefaultUnitTellsOfAnUnknownName) {
  EXPECT_THAT(tessel({"set-default-unit", "a.tessel", "yard"}), Reports(3, HasSubstr("there is no unit 'yard'")));
  EXPECT_EQ(2, tessel({"set-default-unit", "a.tessel"}).status);
}

TEST_F(ContentCommands, RemoveTellsTheOutcomeOfEachId) {
  const ProcessResult stories = tessel({"remove", "a.tessel", "story", "4", "99"});
  EXPECT_EQ("story 4: removed\nstory 99: there is no such object\n", stories.out);
  EXPECT_EQ(1, stories.status);
  EXPECT_EQ(1, count("tessel_Story"));
}

TEST_F(ContentCommands, RemoveTellsWhatIsInUse) {
  const ProcessResult site = tessel({"remove", "a.tessel", "site", "1"});
  EXPECT_EQ("site 1: in use\n", site.out);
  EXPECT_EQ(1, site.status);
  EXPECT_EQ(1, count("tessel_Site"));
}

TEST_F(ContentCommands, RemoveTellsThatADefinitionOfASetStays) {
  write("a.xml", "<p><propertynamespace id='1'>n</propertynamespace>"
                 "<propertydefinition id='2'><name>d</name><namespace id='1'/></propertydefinition>"
                 "<propertyset><namespace id='1'/><name>A</name><property_definition id='2'/></propertyset>"
                 "<propertyset><namespace id='1'/><name>B</name><property_definition id='2'/></propertyset></p>");
  ASSERT_EQ(tessel({"import", "b.tessel", "a.xml"}).status, 0);
  const ProcessResult result = tessel({"remove", "b.tessel", "propertyset", "1", "2"});
  EXPECT_EQ(result.out, "propertyset 1: removed, but definitions of it could not be\n"
                        "propertyset 2: removed\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(raw("b.tessel").count("tessel_PropertyDefinition"), 0);
}

TEST_F(ContentCommands, RemoveTakesWhatCannotBeRead) {
  raw("a.tessel").exec("UPDATE tessel_Story SET building_id = 77 WHERE id = 4");
  EXPECT_THAT(tessel({"remove", "a.tessel", "story", "4"}), Prints("story 4: removed\n"));
  EXPECT_EQ(1, count("tessel_Story"));
}

TEST_F(ContentCommands, RemoveTellsOfARowThatCannotBeRemoved) {
  raw("a.tessel")
    .exec("UPDATE tessel_Story SET building_id = 77 WHERE id = 4;"
          "CREATE TRIGGER t BEFORE DELETE ON tessel_Story BEGIN SELECT * FROM missing; END");
  EXPECT_THAT(tessel({"remove", "a.tessel", "story", "4"}),
              Reports(3, StartsWith("tessel: a.tessel: the file could not be read or written; ")));
}

TEST_F(ContentCommands, RemoveRefusesWrongWords) {
  EXPECT_EQ(2, tessel({"remove", "a.tessel", "story"}).status);
  EXPECT_EQ(2, tessel({"remove", "a.tessel", "storey", "1"}).status);
  EXPECT_EQ(2, tessel({"remove", "a.tessel", "story", "0"}).status);
  EXPECT_EQ(2, tessel({"remove", "a.tessel", "story", "1x"}).status);
  EXPECT_EQ(2, count("tessel_Story"));
}

TEST_F(ContentCommands, CatalogueShowsSetsAndTheirDefinitions) {
  EXPECT_THAT(tessel({"catalogue", "--set", "Pset_DoorCommon", "a.tessel"}),
              Prints(AllOf(StartsWith("namespace IFC4 (revision 0)\n  Pset_DoorCommon: IfcDoor\n"
                                      "    Reference             String             IfcSimpleValue_Identifier\n"),
                           HasSubstr("    Infiltration          Double  m³·s-1     "
                                     "IfcDerivedMeasureValue_VolumetricFlowRateMeasure\n"))));
}

TEST_F(ContentCommands, CatalogueShowsAnIfcNameThatIsAnotherOne) {
  EXPECT_THAT(tessel({"catalogue", "a.tessel"}).out, HasSubstr("Array of String"));
}

TEST_F(ContentCommands, CatalogueShowsANamespaceThatIsThere) {
  EXPECT_THAT(tessel({"catalogue", "--namespace", "IFC4", "a.tessel"}), Prints(StartsWith("namespace IFC4 ")));
  tessel({"create", "b.tessel"});
  EXPECT_THAT(tessel({"catalogue", "b.tessel"}), Prints("")) << "nobody has asked for a name";
}

TEST_F(ContentCommands, CatalogueTellsOfAnUnknownName) {
  for (const std::string form : {"--json", "--"}) {
    EXPECT_THAT(tessel({"catalogue", "--namespace", "foo", form, "a.tessel"}),
                Reports(3, "tessel: a.tessel: there is no namespace 'foo'\n"));
    EXPECT_THAT(tessel({"catalogue", "--set", "foo", form, "a.tessel"}),
                Reports(3, "tessel: a.tessel: there is no set 'foo'\n"));
  }
  EXPECT_THAT(tessel({"catalogue", "--namespace", "IFC4", "--set", "foo", "a.tessel"}),
              Reports(3, "tessel: a.tessel: there is no set 'foo' in the namespace 'IFC4'\n"));
}

TEST_F(ContentCommands, CatalogueInJsonIsOneLine) {
  std::string out = tessel({"catalogue", "--set", "Pset_DoorCommon", "--json", "a.tessel"}).out;
  EXPECT_THAT(out, StartsWith("[{\"name\": \"IFC4\", \"revision\": 0, \"sets\": [{\"name\": \"Pset_DoorCommon\""));
  EXPECT_EQ(out.size() - 1, out.find('\n'));
}

TEST_F(ContentCommands, InspectTellsWhetherAFileOpens) {
  EXPECT_THAT(tessel({"inspect", "a.tessel"}), Prints("a.tessel: Version 1010, the current one.\n"));
  const ProcessResult missing = tessel({"inspect", "b.tessel"});
  EXPECT_EQ("b.tessel: There is no such file.\n", missing.out);
  EXPECT_EQ(1, missing.status);
}

TEST_F(ContentCommands, InspectInJsonGivesVersionAndCompatibility) {
  std::string out = tessel({"inspect", "--json", "a.tessel"}).out;
  out.resize(out.size() - 1);
  const JsonMembers expected = {
    {"file", "a.tessel"},
    {"state", "current"},
    {"opening", "opens"},
    {"schema_version", "1010"},
    {"compatibility", "1000"},
    {"lost_spaces", "0"},
    {"text", "Version 1010, the current one."},
  };
  EXPECT_EQ(expected, StrictJson::read(out));
}

}  // namespace
}  // namespace tessel::test
