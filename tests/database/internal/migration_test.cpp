#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <odb/exceptions.hxx>

#include "database/internal/catalogue_run.h"
#include "database/sqlite_handle.h"
#include "support/expected_schema.h"
#include "support/old_files.h"
#include "support/raw_file.h"
#include "support/table_content.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Range;
using ::testing::UnorderedElementsAreArray;
using Rows = RawFile::Rows;

Content contentOf(const std::string& path) {
  RawFile file(path, RawFile::Access::readOnly);
  return readContent(file);
}

std::string wholeFile(const std::string& path) { return describe(contentOf(path)); }

// What a migrated file has in place of the lines of a new one: a row that exists cannot take a NOT NULL
// column.
std::vector<std::string> migratedLines(const ExpectedTable& table) {
  std::vector<std::string> lines = table.lines;
  for (std::string& line : lines) {
    for (const char* name : {"models_folder", "sheets_folder", "sheet_set_filename"}) {
      if (line == std::string("column ") + name + " TEXT NOT NULL") line = std::string("column ") + name + " TEXT";
    }
  }
  return lines;
}

class Migration : public ::testing::Test {
protected:
  std::string write(const OldFile& file) {
    file.write(path);
    return path;
  }

  RawFile migrated(const OldFile& file) {
    migrateFile(write(file));
    return RawFile(path);
  }

  TempFolder folder;
  std::string path = folder.path("old.tessel");
};

class MigrationFrom : public Migration, public ::testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(Version, MigrationFrom, Range(1000, 1010),
                         [](const auto& instance) { return std::to_string(instance.param); });

TEST_P(MigrationFrom, GivesTheTablesOfANewFile) {
  RawFile file = migrated(OldFile(GetParam()).withContent());
  std::vector<std::string> names;
  for (const ExpectedTable& table : expectedSchema()) {
    names.push_back(table.name);
    // Columns that came later stand at the end, so the order differs from that of a new file.
    EXPECT_THAT(describeTable(file, table.name), UnorderedElementsAreArray(migratedLines(table))) << table.name;
  }
  EXPECT_THAT(file.tables(), UnorderedElementsAreArray(names));
  EXPECT_THAT(file.rows("SELECT type, name FROM sqlite_master WHERE type NOT IN ('table', 'index')"), IsEmpty());
}

TEST_P(MigrationFrom, KeepsTheValues) {
  const Content before = contentOf(write(OldFile(GetParam()).withContent()));
  migrateFile(path);
  RawFile file(path);
  for (const auto& [table, content] : before) {
    if (table == "schema_version" || table == "tessel_Space") continue;
    EXPECT_EQ(readRows(file, table, content.columns), content.rows) << table;
  }
}

TEST_P(MigrationFrom, WritesTheVersionRow) {
  EXPECT_EQ(migrated(OldFile(GetParam())).rows("SELECT * FROM schema_version"),
            (Rows{{"tessel", "1010", "0", "1000"}}));
}

TEST_P(MigrationFrom, LeavesNoForeignKeyWithoutItsRow) {
  EXPECT_THAT(migrated(OldFile(GetParam()).withContent()).rows("PRAGMA foreign_key_check"), IsEmpty());
}

TEST_P(MigrationFrom, IsSeenByOdbAtOnce) {
  onSchema(write(OldFile(GetParam())), [](auto& database, sqlite3*) {
    EXPECT_EQ(database.schema_version("tessel"), static_cast<unsigned long long>(GetParam()));
    odb::schema_catalog::migrate(database, 0, "tessel");
    EXPECT_EQ(database.schema_version("tessel"), 1010U);
    EXPECT_FALSE(database.schema_migration("tessel"));
  });
}

TEST_F(Migration, ReplacesAnyCompatibility) {
  write(OldFile(1008));
  RawFile(path).exec("ALTER TABLE schema_version ADD COLUMN compatibility INTEGER NOT NULL DEFAULT 1007");
  migrateFile(path);
  EXPECT_EQ(RawFile(path).scalarInt("SELECT compatibility FROM schema_version"), 1000);
}

TEST_F(Migration, LeavesRowsOfOtherSchemasInTheVersionTable) {
  write(OldFile(1008));
  RawFile(path).exec("INSERT INTO schema_version VALUES ('other', 3, 0)");
  migrateFile(path);
  EXPECT_EQ(RawFile(path).rows("SELECT name, version, migration FROM schema_version WHERE name = 'other'"),
            (Rows{{"other", "3", "0"}}));
}

// One step at a time, as the catalogue runs it.

TEST_F(Migration, AStepIsMarkedFromItsStartToItsEnd) {
  onSchema(write(OldFile(1002)), [](auto& database, sqlite3* handle) {
    const auto versionRow = [handle] {
      Statement select(handle, "SELECT version * 10 + migration FROM schema_version");
      return select.step() ? select.columnInt64(0) : 0;
    };
    odb::schema_catalog::migrate_schema_pre(database, 1003, "tessel");
    EXPECT_EQ(versionRow(), 10031);
    odb::schema_catalog::migrate_schema_post(database, 1003, "tessel");
    EXPECT_EQ(versionRow(), 10030);
  });
}

TEST_F(Migration, EachStatementOfAStepRunsOnceAndInOrder) {
  onSchema(write(OldFile(1004)), [](auto& database, sqlite3*) {
    StatementLog log(database);
    odb::schema_catalog::migrate_schema_pre(database, 1005, "tessel");
    odb::schema_catalog::migrate_schema_post(database, 1005, "tessel");
    EXPECT_THAT(
      log.statements(),
      ElementsAre("ALTER TABLE \"tessel_Site\" ADD COLUMN \"long_name\" TEXT NOT NULL DEFAULT ''",
                  "ALTER TABLE \"tessel_Building\" ADD COLUMN \"long_name\" TEXT NOT NULL DEFAULT ''",
                  "ALTER TABLE \"tessel_Story\" ADD COLUMN \"long_name\" TEXT NOT NULL DEFAULT ''",
                  "UPDATE \"schema_version\" SET \"version\" = 1005, \"migration\" = 1 WHERE \"name\" = 'tessel'",
                  "UPDATE \"schema_version\" SET \"migration\" = 0 WHERE \"name\" = 'tessel'"));
  });
}

TEST_F(Migration, To1001MakesTheTablesInTheirOrder) {
  onSchema(write(OldFile(1000)),
           [](auto& database, sqlite3*) { odb::schema_catalog::migrate_schema_pre(database, 1001, "tessel"); });
  RawFile file(path);
  EXPECT_THAT(file.column("SELECT name FROM sqlite_master WHERE name NOT LIKE 'sqlite%' AND rowid > "
                          "(SELECT rowid FROM sqlite_master WHERE name = 'tessel_Meta') ORDER BY rowid"),
              ElementsAre("tessel_Measure", "tessel_Measure_name_i", "tessel_Unit", "tessel_Unit_name_i",
                          "tessel_Unit_measure_label_i", "tessel_ColumnUnit", "tessel_ColumnUnit_table_column_i",
                          "tessel_DefaultUnit", "tessel_EntityType", "tessel_EntityType_name_i",
                          "tessel_PropertyNamespace", "tessel_PropertyNamespace_name_i",
                          "tessel_PropertyNamespace_label_i", "tessel_PropertyDefinition",
                          "tessel_PropertyDefinition_name_ns_i", "tessel_PropertySet", "tessel_PropertySet_name_ns_i",
                          "tessel_PropertySet_label_i", "tessel_PropertySet_property_definitions",
                          "tessel_PropertySet_property_definitions_object_id_i",
                          "tessel_PropertySet_property_definitions_index_i", "tessel_PropertySet_entity_types",
                          "tessel_PropertySet_entity_types_object_id_i", "tessel_PropertySet_entity_types_index_i"));
}

TEST_F(Migration, To1001MakesThreeTablesInTheirOlderForm) {
  onSchema(write(OldFile(1000)),
           [](auto& database, sqlite3*) { odb::schema_catalog::migrate_schema_pre(database, 1001, "tessel"); });
  RawFile file(path);
  EXPECT_THAT(file.columns("tessel_PropertyNamespace"), ElementsAre("id", "name", "label", "editable", "visible"));
  EXPECT_THAT(file.columns("tessel_PropertySet"),
              ElementsAre("id", "namespace_id", "name", "label", "per_instance", "visible"));
  EXPECT_THAT(
    describeTable(file, "tessel_PropertyDefinition"),
    ElementsAre("column id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT", "column namespace_id INTEGER NOT NULL",
                "column name TEXT NOT NULL", "column label TEXT", "column description TEXT NOT NULL DEFAULT ''",
                "column type_structure INTEGER NOT NULL DEFAULT 1",
                "column type_value_type INTEGER NOT NULL DEFAULT 11", "column type_key_type INTEGER NOT NULL DEFAULT 0",
                "column type_spec TEXT NOT NULL DEFAULT ''", "column unit_id INTEGER",
                "column default_value TEXT NOT NULL DEFAULT ''", "column ifc_name TEXT",
                "column visible INTEGER NOT NULL DEFAULT 1",
                "foreign key namespace_id_fk (namespace_id) to tessel_PropertyNamespace (id) deferred",
                "foreign key unit_id_fk (unit_id) to tessel_Unit (id) deferred",
                "unique index tessel_PropertyDefinition_name_ns_i (name, namespace_id)"));
}

// The next version of 1009 is that of today, which no `OldFile` has.
class MigrationStep : public MigrationFrom {};

INSTANTIATE_TEST_SUITE_P(From, MigrationStep, Range(1000, 1009),
                         [](const auto& instance) { return std::to_string(instance.param); });

TEST_P(MigrationStep, LeavesTheTablesOfTheNextVersionInTheirOrder) {
  const int version = GetParam();
  const auto next = static_cast<odb::schema_version>(version) + 1;
  onSchema(write(OldFile(version)),
           [next](auto& database, sqlite3*) { odb::schema_catalog::migrate_schema(database, next, "tessel"); });
  const std::string other = folder.path("next.tessel");
  OldFile(version + 1).write(other);
  RawFile stepped(path), typed(other);
  EXPECT_EQ(stepped.tables(), typed.tables());
  for (const std::string& table : typed.tables()) {
    EXPECT_EQ(describeTable(stepped, table), describeTable(typed, table)) << table;
  }
}

// The project row

TEST_F(Migration, To1002MovesTheOnlyProjectRowToId1) {
  RawFile file = migrated(OldFile(1001).projects({7}));
  EXPECT_EQ(file.rows("SELECT id, name FROM tessel_Project"), (Rows{{"1", "Project 7"}}));
}

TEST_F(Migration, To1002LeavesSeveralProjectRowsAlone) {
  EXPECT_THAT(migrated(OldFile(1001).projects({3, 7})).column("SELECT id FROM tessel_Project"), ElementsAre("3", "7"));
}

TEST_F(Migration, After1002AProjectRowKeepsItsId) {
  EXPECT_THAT(migrated(OldFile(1002).projects({7})).column("SELECT id FROM tessel_Project"), ElementsAre("7"));
}

TEST_F(Migration, To1002FailsOnAFileWithoutProjectRowAndLeavesItAsItWas) {
  const std::string before = wholeFile(write(OldFile(1001).projects({}).withContent()));
  EXPECT_THROW(migrateFile(path), odb::exception);
  EXPECT_EQ(wholeFile(path), before);
}

TEST_F(Migration, To1002FailsOnAFileWithoutProjectTable) {
  write(OldFile(1001));
  RawFile(path).exec("DROP TABLE tessel_Project");
  EXPECT_THROW(migrateFile(path), database_error);
}

TEST_F(Migration, To1009LeavesTheFolderTextsNullAndTheMarginsZero) {
  RawFile file = migrated(OldFile(1008));
  EXPECT_EQ(file.rows("SELECT models_folder, sheets_folder, sheet_set_filename, sheet_margins_metric_page_left, "
                      "sheet_margins_imperial_label_space FROM tessel_Project"),
            (Rows{{"NULL", "NULL", "NULL", "0.0", "0.0"}}));
}

TEST_F(Migration, NewColumnsOfOldRowsHoldTheirDefaults) {
  RawFile file = migrated(OldFile(1002).withContent());
  EXPECT_THAT(file.column("SELECT revision FROM tessel_PropertyNamespace"), ElementsAre("0"));
  EXPECT_EQ(file.rows("SELECT ifc_type, type_spec2 FROM tessel_PropertyDefinition"), (Rows{{"NULL", ""}}));
  EXPECT_THAT(file.column("SELECT ifc_name FROM tessel_PropertySet"), ElementsAre("NULL"));
  EXPECT_THAT(file.column("SELECT long_name FROM tessel_Story"), ElementsAre("", ""));
}

// Spaces

class MigrationOfSpaces : public MigrationFrom {};

INSTANTIATE_TEST_SUITE_P(Version, MigrationOfSpaces, ::testing::Values(1006, 1007),
                         [](const auto& instance) { return std::to_string(instance.param); });

TEST_P(MigrationOfSpaces, TakesThemOutWithTheirRootRowsOnly) {
  RawFile file = migrated(OldFile(GetParam()).withSpaces());
  EXPECT_FALSE(file.hasTable("tessel_Space"));
  EXPECT_EQ(file.rows("SELECT id, typeid FROM tessel_SpatialStructure ORDER BY id"),
            (Rows{{"1", "tessel::Site"}, {"2", "tessel::Building"}, {"3", "tessel::Story"}, {"4", "tessel::Story"}}));
  EXPECT_EQ(file.count("tessel_Story"), 2);
}

TEST_P(MigrationOfSpaces, IdsOfSpacesAreNotGivenOutAgain) {
  RawFile file = migrated(OldFile(GetParam()).withSpaces());
  file.exec("INSERT INTO tessel_SpatialStructure (typeid) VALUES ('tessel::Story')");
  EXPECT_EQ(file.scalarInt("SELECT max(id) FROM tessel_SpatialStructure"), 7);
}

TEST_P(MigrationOfSpaces, AReferenceToASpaceFromElsewhereStopsNothing) {
  write(OldFile(GetParam()).withSpaces());
  RawFile(path).exec("CREATE TABLE other (space INTEGER REFERENCES tessel_Space (id)); INSERT INTO other VALUES (5)");
  EXPECT_NO_THROW(migrateFile(path));
  EXPECT_EQ(RawFile(path).scalarInt("SELECT space FROM other"), 5);
}

TEST_F(Migration, SpacesComeAndGoInOneRun) {
  onSchema(write(OldFile(1005)), [](auto& database, sqlite3*) {
    StatementLog log(database);
    odb::schema_catalog::migrate(database, 0, "tessel");
    EXPECT_EQ(log.after("CREATE TABLE \"tessel_Space\"").size(), 1U);
    EXPECT_EQ(log.after("DROP TABLE \"tessel_Space\"").size(), 1U);
  });
  EXPECT_FALSE(RawFile(path).hasTable("tessel_Space"));
}

TEST_F(Migration, SpacesAreThereWhileDataOf1008IsMigrated) {
  onSchema(write(OldFile(1007).withSpaces()), [](auto& database, sqlite3* handle) {
    odb::schema_catalog::migrate_schema_pre(database, 1008, "tessel");
    Statement select(handle, "SELECT count(*) FROM tessel_Space");
    ASSERT_TRUE(select.step());
    EXPECT_EQ(select.columnInt64(0), 2);
  });
}

// Failures

TEST_F(Migration, AFailingStatementLeavesTheFileAsItWas) {
  write(OldFile(1004).withContent());
  RawFile(path).exec("ALTER TABLE tessel_Project ADD COLUMN sheets_folder TEXT");
  const std::string before = wholeFile(path);
  EXPECT_THROW(migrateFile(path), odb::database_exception);
  EXPECT_EQ(wholeFile(path), before);
}

TEST_F(Migration, To1001FailsWithoutTheMetaTable) {
  write(OldFile(1000).withContent());
  RawFile(path).exec("DROP TABLE tessel_Meta");
  const std::string before = wholeFile(path);
  try {
    migrateFile(path);
    FAIL() << "there is nothing to read the units from";
  } catch (const database_error& error) {
    EXPECT_STREQ(error.what(), "no such table: tessel_Meta");
  }
  EXPECT_EQ(wholeFile(path), before);
}

TEST_F(Migration, To1001FailsIfTheMetaRowCannotBeRead) {
  write(OldFile(1000));
  RawFile(path).exec("DROP TABLE tessel_Meta;"
                     "CREATE VIEW tessel_Meta AS SELECT abs(-9223372036854775807 - 1) AS unit");
  EXPECT_THROW(migrateFile(path), database_error);
}

TEST_F(Migration, To1002FailsIfTheProjectRowsCannotBeCounted) {
  write(OldFile(1001));
  RawFile(path).exec("DROP TABLE tessel_Project; CREATE VIEW tessel_Project AS "
                     "SELECT 1 AS id WHERE abs(-9223372036854775807 - 1) > 0");
  EXPECT_THROW(migrateFile(path), database_error);
}

// The units of a file from before the catalogue

Rows unitsOf(RawFile& file) {
  return file.rows("SELECT m.name, m.length, u.label, u.scale, d.unit_id = u.id FROM tessel_Unit u "
                   "JOIN tessel_Measure m ON m.id = u.measure_id JOIN tessel_DefaultUnit d ON d.measure_id = m.id "
                   "ORDER BY u.id");
}

const Rows metricUnits = {{"LENGTH", "1", "mm", "0.001", "1"}, {"AREA", "2", "m^2", "1.0", "1"}};
const Rows imperialUnits = {{"LENGTH", "1", "in", "0.0254", "1"}, {"AREA", "2", "ft^2", "0.09290304", "1"}};

TEST_F(Migration, To1001MakesAnImperialFileImperial) {
  RawFile file = migrated(OldFile(1000).imperial());
  EXPECT_EQ(unitsOf(file), imperialUnits);
}

TEST_F(Migration, To1001TakesAnyOtherNumberForMetric) {
  for (int value : {1, 2, -1}) {
    RawFile file = migrated(OldFile(1000).metaUnit(value));
    EXPECT_EQ(unitsOf(file), metricUnits) << value;
    std::filesystem::remove(path);
  }
}

TEST_F(Migration, To1001TakesAnEmptyMetaTableForMetric) {
  RawFile file = migrated(OldFile(1000).withoutMetaRow());
  EXPECT_EQ(unitsOf(file), metricUnits);
}

TEST_F(Migration, To1001WritesTheUnitsOfTheTenColumnsInTheirOrder) {
  RawFile file = migrated(OldFile(1000));
  EXPECT_EQ(file.rows("SELECT c.\"table\", c.\"column\", u.label FROM tessel_ColumnUnit c "
                      "JOIN tessel_Unit u ON u.id = c.unit_id ORDER BY c.id"),
            (Rows{{"Site", "ref_elevation", "mm"},
                  {"Site", "building_height_limit", "mm"},
                  {"Building", "elevation_of_ref_height", "mm"},
                  {"Building", "elevation_of_terrain", "mm"},
                  {"Story", "elevation", "mm"},
                  {"Site", "buildable_area", "m^2"},
                  {"Site", "total_area", "m^2"},
                  {"Building", "gross_planned_area", "m^2"},
                  {"Story", "gross_area_planned", "m^2"},
                  {"Story", "net_area_planned", "m^2"}}));
}

TEST_F(Migration, To1001WritesNoVolumeAndNoMass) {
  EXPECT_THAT(migrated(OldFile(1000)).column("SELECT name FROM tessel_Measure ORDER BY id"),
              ElementsAre("LENGTH", "AREA"));
}

TEST_F(Migration, To1001DoesNotTouchTheNumbersOfAnImperialFile) {
  RawFile file = migrated(OldFile(1000).imperial().withContent());
  EXPECT_EQ(file.scalarText("SELECT ref_elevation FROM tessel_Site"), "12.5");
  EXPECT_EQ(file.scalarText("SELECT gross_area_planned FROM tessel_Story"), "120.0");
}

}  // namespace
}  // namespace tessel::test
