#include "tools/copy_program.h"

namespace tessel::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr int doneWithErrors = 1;

class CopyCommand : public CopyProgram {
protected:
  std::vector<std::string> names(const std::string& table) const {
    return raw("b.tessel").column("SELECT name FROM tessel_" + table + " ORDER BY name");
  }

  std::vector<std::string> columnUnits() const {
    return raw("b.tessel").column(R"(
      SELECT c."table" || '.' || c."column" || ' ' || u.label
      FROM tessel_ColumnUnit AS c JOIN tessel_Unit AS u ON u.id = c.unit_id ORDER BY c.id)");
  }

  /// The label.
  std::string defaultUnit(const std::string& measure) const {
    const auto labels = raw("b.tessel").column(R"(
      SELECT u.label FROM tessel_DefaultUnit AS d
      JOIN tessel_Unit AS u ON u.id = d.unit_id JOIN tessel_Measure AS m ON m.id = d.measure_id
      WHERE m.name = ')" + measure + "'");
    return labels.empty() ? "none" : labels.front();
  }

  /// Its name and that of its site.
  RawFile::Row projectRecord() const {
    const std::string sql =
      "SELECT p.name, s.name FROM tessel_Project AS p LEFT JOIN tessel_Site AS s ON s.id = p.site_id";
    return raw("b.tessel").rows(sql).front();
  }
};

TEST_F(CopyCommand, IntoANewFileBringsEverythingAndCountsIt) {
  const ProcessResult result = copy({"a.tessel", "b.tessel"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "kind                created  kept  overwritten  left behind\n"
                        "site                      1     0            0            0\n"
                        "building                  1     0            0            0\n"
                        "story                     2     0            0            0\n"
                        "measure                   7     4            0            0\n"
                        "unit                     12     0            0            0\n"
                        "propertynamespace         1     0            0            0\n"
                        "propertyset              62     0            0            0\n"
                        "propertydefinition      223     0            0            0\n"
                        "entitytype               35     0            0            0\n");
  EXPECT_EQ(result.err, "b.tessel: took over the units of the columns of a.tessel\n"
                        "b.tessel: took over the project record of a.tessel\n"
                        "b.tessel: took over the default units of a.tessel for AREA, LENGTH\n");
  for (const char* command : {"tree", "units", "catalogue"}) {
    EXPECT_EQ(shown(command, "b.tessel"), shown(command, "a.tessel")) << command;
  }
}

TEST_F(CopyCommand, IntoANewFileBringsTheProjectRecordAndItsSite) {
  change("a.tessel", "UPDATE tessel_Project SET name = 'Harbour', site_id = (SELECT id FROM tessel_Site)");
  EXPECT_EQ(copy({"a.tessel", "b.tessel"}).status, 0);
  EXPECT_THAT(projectRecord(), ElementsAre("Harbour", "Default"));
}

TEST_F(CopyCommand, KeepLeavesWhatIsThere) {
  duplicate("b.tessel");
  change("b.tessel", "UPDATE tessel_Story SET elevation = 2700 WHERE name = 'Roof'");
  EXPECT_THAT(copy({"--on-clash", "keep", "a.tessel", "b.tessel"}),
              Prints(AllOf(HasSubstr("story                     0     2            0            0\n"),
                           HasSubstr("unit                      0    12            0            0\n"),
                           HasSubstr("propertyset               0    62            0            0\n"))));
  EXPECT_THAT(shown("tree", "b.tessel"), HasSubstr("2700 mm  Roof"));
}

TEST_F(CopyCommand, OverwriteGivesTheIncomingValues) {
  duplicate("b.tessel");
  change("b.tessel", "UPDATE tessel_Story SET elevation = 2700 WHERE name = 'Roof'");
  EXPECT_THAT(copy({"--on-clash=overwrite", "a.tessel", "b.tessel"}),
              Prints(AllOf(HasSubstr("story                     0     0            2            0\n"),
                           HasSubstr("measure                   0    11            0            0\n"),
                           HasSubstr("propertyset               0     0           62            0\n"))));
  EXPECT_THAT(shown("tree", "b.tessel"), HasSubstr("2500 mm  Roof"));
}

TEST_F(CopyCommand, RenameNumbersTheIncomingObjects) {
  duplicate("b.tessel");
  EXPECT_EQ(copy({"--on-clash", "rename", "a.tessel", "b.tessel"}).status, 0);
  EXPECT_EQ(shown("tree", "b.tessel"), "site Default (0 mm)\n"
                                       "└── building Building (0 mm)\n"
                                       "    ├──    0 mm  Ground Floor\n"
                                       "    └── 2500 mm  Roof\n"
                                       "site Default (2) (0 mm)\n"
                                       "└── building Building (0 mm)\n"
                                       "    ├──    0 mm  Ground Floor\n"
                                       "    └── 2500 mm  Roof\n");
}

TEST_F(CopyCommand, RenameKeepsNamespaces) {
  duplicate("b.tessel");
  EXPECT_THAT(copy({"--on-clash", "rename", "--only", "propertyset", "a.tessel", "b.tessel"}),
              Prints(AllOf(HasSubstr("\npropertynamespace         0     1 "),
                           HasSubstr("\npropertyset              62     0 "))));
  EXPECT_THAT(names("PropertyNamespace"), ElementsAre("IFC4"));
  EXPECT_THAT(names("PropertySet"), Contains("Pset_DoorCommon (2)"));
}

TEST_F(CopyCommand, NumbersAreConvertedToTheUnitsOfTheDestination) {
  importHouseInMetres("b.tessel");
  EXPECT_EQ(copy({"a.tessel", "b.tessel"}).status, 0);
  EXPECT_THAT(shown("tree", "b.tessel"), AllOf(HasSubstr("2.5 m  Roof"), HasSubstr("3 m  Loft")));
}

TEST_F(CopyCommand, DefaultUnitsStayAndMissingOnesAreTakenOver) {
  importHouseInMetres("b.tessel");
  tessel({"set-default-unit", "a.tessel", "kilogram"});
  const ProcessResult result = copy({"a.tessel", "b.tessel"});
  EXPECT_EQ(result.err, "b.tessel: took over the default units of a.tessel for AREA, MASS\n");
  EXPECT_THAT(result.out, HasSubstr("\nunit                     11     1 "));
  EXPECT_EQ(defaultUnit("LENGTH"), "m");
  EXPECT_EQ(defaultUnit("AREA"), "m^2");
  EXPECT_EQ(defaultUnit("MASS"), "kg");
}

// A file that is there, but whose columns have no units.

TEST_F(CopyCommand, ColumnUnitsAreTakenOverAsTheyAreAndNotFromTheDefaultUnits) {
  tessel({"create", "b.tessel"});
  tessel({"set-default-unit", "a.tessel", "metre"});
  const ProcessResult result = copy({"a.tessel", "b.tessel"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "b.tessel: took over the units of the columns of a.tessel\n"
                        "b.tessel: took over the default units of a.tessel for AREA, LENGTH\n");
  EXPECT_THAT(columnUnits(), ElementsAre("Site.ref_elevation mm", "Site.building_height_limit mm",
                                         "Building.elevation_of_ref_height mm", "Building.elevation_of_terrain mm",
                                         "Story.elevation mm", "Site.buildable_area m^2", "Site.total_area m^2",
                                         "Building.gross_planned_area m^2", "Story.gross_area_planned m^2",
                                         "Story.net_area_planned m^2"));
  EXPECT_EQ(defaultUnit("LENGTH"), "m");
}

TEST_F(CopyCommand, TheProjectRecordOfAFileThatIsThereStays) {
  change("a.tessel", "UPDATE tessel_Project SET name = 'Harbour', site_id = (SELECT id FROM tessel_Site)");
  write("1.xml", "<p><site><name>Hill</name></site></p>");
  tessel({"import", "b.tessel", "1.xml"});
  change("b.tessel", "UPDATE tessel_Project SET name = 'Mine', site_id = (SELECT id FROM tessel_Site)");
  const ProcessResult result = copy({"a.tessel", "b.tessel"});
  EXPECT_THAT(result.err, StartsWith("b.tessel: took over the units of the columns of a.tessel\n"));
  EXPECT_THAT(result.out, HasSubstr("\nsite                      1     0 "))
    << "the site that is there is no part of it";
  EXPECT_THAT(projectRecord(), ElementsAre("Mine", "Hill"));
  EXPECT_THAT(names("Site"), ElementsAre("Default", "Hill"));
}

TEST_F(CopyCommand, TheSiteOfTheSourcesRecordComesOnlyWithTheRecord) {
  write("1.xml", "<p><site><name>Empty</name></site></p>");
  tessel({"import", "a.tessel", "1.xml"});
  change("a.tessel", "UPDATE tessel_Project SET site_id = (SELECT id FROM tessel_Site WHERE name = 'Empty')");
  EXPECT_EQ(copy({"--only", "building", "a.tessel", "b.tessel"}).status, 0);
  EXPECT_THAT(names("Site"), ElementsAre("Default"));
  EXPECT_EQ(columnUnits().size(), 10U);
}

TEST_F(CopyCommand, ColumnUnitsAreNotNeededForACatalogue) {
  EXPECT_THAT(copy({"--only", "propertyset", "a.tessel", "b.tessel"}), Prints(Not(HasSubstr("site"))));
  EXPECT_THAT(columnUnits(), IsEmpty());
  EXPECT_EQ(names("PropertySet").size(), 62U);
}

TEST_F(CopyCommand, MetaReplacesTheProjectRecord) {
  change("a.tessel", "UPDATE tessel_Project SET name = 'Harbour', site_id = (SELECT id FROM tessel_Site)");
  tessel({"create", "b.tessel"});
  const ProcessResult result = copy({"--meta", "--only", "entitytype", "a.tessel", "b.tessel"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "b.tessel: took over the units of the columns of a.tessel\n"
                        "b.tessel: took over the project record of a.tessel\n");
  EXPECT_THAT(projectRecord(), ElementsAre("Harbour", "Default"));
  EXPECT_THAT(names("Building"), IsEmpty());
}

TEST_F(CopyCommand, OnlyBringsSomeClassesAndWhatTheyReferTo) {
  change("a.tessel", "UPDATE tessel_Project SET name = 'Harbour'");
  EXPECT_EQ(copy({"--only", "story,entitytype", "a.tessel", "b.tessel"}).out,
            "kind        created  kept  overwritten  left behind\n"
            "site              1     0            0            0\n"
            "building          1     0            0            0\n"
            "story             2     0            0            0\n"
            "measure           0     2            0            0\n"
            "unit              2     0            0            0\n"
            "entitytype       35     0            0            0\n");
  EXPECT_EQ(defaultUnit("LENGTH"), "none");
  EXPECT_THAT(projectRecord(), ElementsAre("", "NULL"));
}

TEST_F(CopyCommand, ListTellsOldAndNewIdsAndOutcomes) {
  duplicate("b.tessel");
  change("a.tessel", "UPDATE tessel_Story SET name = 'Ground' || char(10) || 'Floor' WHERE name = 'Ground Floor'");
  EXPECT_THAT(copy({"--list", "--only", "story,propertynamespace", "--on-clash", "rename", "a.tessel", "b.tessel"}),
              Prints("kind               old id  new id  outcome  name\n"
                     "site               1       5       created  Default -> Default (2)\n"
                     "building           2       6       created  Building\n"
                     "story              3       7       created  Ground\\nFloor\n"
                     "story              4       8       created  Roof\n"
                     "propertynamespace  1       1       kept     IFC4\n"
                     "\n"
                     "kind               created  kept  overwritten  left behind\n"
                     "site                     1     0            0            0\n"
                     "building                 1     0            0            0\n"
                     "story                    2     0            0            0\n"
                     "propertynamespace        0     1            0            0\n"));
}

TEST_F(CopyCommand, JsonIsOneObjectOnOneLine) {
  write("1.xml", "<p><entitytype>IfcDoor</entitytype></p>");
  tessel({"import", "one.tessel", "1.xml"});
  tessel({"import", "b.tessel", "1.xml"});
  EXPECT_THAT(copy({"--json", "--list", "--only", "entitytype", "--on-clash", "rename", "one.tessel", "b.tessel"}),
              Prints("{\"source\": \"one.tessel\", \"destination\": \"b.tessel\", \"column_units\": false, "
                     "\"project_record\": false, \"default_units\": [], \"counts\": {\"entitytype\": {"
                     "\"created\": 1, \"kept\": 0, \"overwritten\": 0, \"left_behind\": 0}}, \"left_behind\": [], "
                     "\"objects\": [{\"kind\": \"entitytype\", \"id\": 1, \"new_id\": 2, \"outcome\": \"created\", "
                     "\"name\": \"IfcDoor\", \"new_name\": \"IfcDoor (2)\"}]}\n"));
}

TEST_F(CopyCommand, JsonNamesDefaultUnitsAndGivesNoListUnasked) {
  EXPECT_THAT(copy({"--json", "a.tessel", "b.tessel"}),
              Prints(AllOf(HasSubstr("\"project_record\": true, \"default_units\": [\"AREA\", \"LENGTH\"], "),
                           EndsWith("\"left_behind\": []}\n"))));
}

TEST_F(CopyCommand, NothingToCopyIsSaid) {
  tessel({"create", "empty.tessel"});
  for (const char* form : {"--only=story", "--list"}) {
    EXPECT_THAT(copy({form, "--only", "story", "empty.tessel", "b.tessel"}), Prints("(nothing to copy)\n"));
  }
  EXPECT_THAT(copy({"--json", "--list", "--only", "story", "empty.tessel", "b.tessel"}),
              Prints(HasSubstr("\"counts\": {}, \"left_behind\": [], \"objects\": []}")));
}

// What stays behind.

TEST_F(CopyCommand, WithoutAUnitInTheSourceObjectsStayBehind) {
  importHouseInMetres("h.tessel");
  duplicate("b.tessel");
  const ProcessResult result = copy({"h.tessel", "b.tessel"});
  EXPECT_EQ(result.status, doneWithErrors);
  EXPECT_EQ(result.err,
            "h.tessel: story 3 'Loft' stays behind: story.gross_area_planned has no unit in h.tessel\n"
            "h.tessel: building 2 'House' stays behind: building.gross_planned_area has no unit in h.tessel\n"
            "h.tessel: site 1 'Hill' stays behind: site.buildable_area has no unit in h.tessel\n");
  EXPECT_THAT(result.out, StartsWith("kind      created  kept  overwritten  left behind\n"
                                     "site            0     0            0            1\n"));
  EXPECT_THAT(names("Site"), ElementsAre("Default"));
}

TEST_F(CopyCommand, WithoutAUnitInTheDestinationObjectsStayBehind) {
  duplicate("b.tessel");
  change("b.tessel", "DELETE FROM tessel_ColumnUnit WHERE \"table\" = 'Story'");
  EXPECT_THAT(copy({"--only", "story", "a.tessel", "b.tessel"}),
              AllOf(Field(&ProcessResult::status, doneWithErrors),
                    Field(&ProcessResult::err,
                          "a.tessel: story 3 'Ground Floor' stays behind: story.elevation has no unit in b.tessel\n"
                          "a.tessel: story 4 'Roof' stays behind: story.elevation has no unit in b.tessel\n")));
}

TEST_F(CopyCommand, UnitsOfOtherDimensionsKeepObjectsBehind) {
  duplicate("b.tessel");
  change("b.tessel", "UPDATE tessel_ColumnUnit SET unit_id = (SELECT id FROM tessel_Unit WHERE label = 'kg') "
                     "WHERE \"column\" = 'net_area_planned'");
  EXPECT_THAT(
    copy({"--only", "story", "a.tessel", "b.tessel"}).err,
    EndsWith("a.tessel: story 4 'Roof' stays behind: the units of story.net_area_planned in the two files are of "
             "different dimensions\n"));
}

TEST_F(CopyCommand, AnObjectThatCannotBeLoadedStaysBehind) {
  change("a.tessel", "UPDATE tessel_Story SET building_id = 4711 WHERE name = 'Roof'");
  const ProcessResult result = copy({"--json", "a.tessel", "b.tessel"});
  EXPECT_EQ(result.status, doneWithErrors);
  EXPECT_EQ(result.err, "");
  EXPECT_THAT(result.out, EndsWith("\"left_behind\": [{\"kind\": \"story\", \"id\": 4, \"name\": \"Roof\", \"reason\": "
                                   "\"it refers to something that is missing\"}]}\n"));
  EXPECT_THAT(names("Story"), ElementsAre("Ground Floor"));
}

TEST_F(CopyCommand, WhatWasNotAskedForIsNotLeftBehind) {
  change("a.tessel", "UPDATE tessel_Story SET building_id = 4711 WHERE name = 'Roof'");
  EXPECT_EQ(copy({"--only", "entitytype", "a.tessel", "b.tessel"}).status, 0);
}

}  // namespace
}  // namespace tessel::test
