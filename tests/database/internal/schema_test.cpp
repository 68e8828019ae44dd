#include "database/schema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "database/internal/catalogue_run.h"
#include "support/expected_schema.h"
#include "support/raw_file.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Rows = RawFile::Rows;

std::vector<std::string> expectedTables() {
  std::vector<std::string> names;
  for (const ExpectedTable& table : expectedSchema()) {
    names.push_back(table.name);
  }
  return names;
}

class Schema : public ::testing::Test {
protected:
  RawFile created() {
    createFile(path);
    return RawFile(path);
  }

  void exec(const std::string& sql) { RawFile(path, RawFile::Access::create).exec(sql); }

  TempFolder folder;
  std::string path = folder.path("a.tessel");
};

class SchemaTable : public Schema, public ::testing::WithParamInterface<ExpectedTable> {};

TEST_P(SchemaTable, HasTheseColumnsKeysAndIndexesAndNoOthers) {
  RawFile file = created();
  EXPECT_THAT(describeTable(file, GetParam().name), ElementsAreArray(GetParam().lines));
}

INSTANTIATE_TEST_SUITE_P(NewFile, SchemaTable, ::testing::ValuesIn(expectedSchema()),
                         [](const auto& instance) { return instance.param.name; });

TEST_F(Schema, NewFileHoldsTheTablesInTheirOrder) {
  EXPECT_THAT(created().tables(), ElementsAreArray(expectedTables()));
}

TEST_F(Schema, NewFileHoldsNothingButTablesAndIndexes) {
  EXPECT_THAT(created().rows("SELECT type, name FROM sqlite_master WHERE type NOT IN ('table', 'index')"), IsEmpty());
}

TEST_F(Schema, EachTableIsFollowedByItsIndexes) {
  std::string last;
  for (const auto& row : created().rows("SELECT type, name, tbl_name FROM sqlite_master WHERE name NOT LIKE 'sqlite%' "
                                        "ORDER BY rowid")) {
    if (row[0] == "table") last = row[1];
    EXPECT_EQ(row[2], last) << row[1];
  }
}

TEST_F(Schema, NewFileHasNoRowButThatOfTheVersion) {
  RawFile file = created();
  for (const std::string& table : file.tables()) {
    EXPECT_EQ(file.count(table), table == "schema_version" ? 1 : 0) << table;
  }
}

TEST_F(Schema, VersionRowOfANewFile) {
  EXPECT_EQ(created().rows("SELECT * FROM schema_version"), (Rows{{"tessel", "1010", "0", "1000"}}));
}

TEST_F(Schema, CatalogueWritesTheVersionInTheThreeColumnsOfOdb) {
  onSchema(path, [](auto& database, sqlite3*) { odb::schema_catalog::create_schema(database, "tessel", true); });
  RawFile file(path);
  EXPECT_THAT(file.columns("schema_version"), ElementsAre("name", "version", "migration"));
  EXPECT_EQ(file.rows("SELECT * FROM schema_version"), (Rows{{"tessel", "1010", "0"}}));
}

TEST_F(Schema, CatalogueKnowsTheVersions) {
  odb::sqlite::database database(path);
  EXPECT_EQ(odb::schema_catalog::current_version(database, "tessel"), 1010U);
  EXPECT_EQ(odb::schema_catalog::base_version(database, "tessel"), 1000U);
}

TEST_F(Schema, OdbReadsTheVersionOfANewFile) {
  createFile(path);
  odb::sqlite::database database(path);
  EXPECT_EQ(database.schema_version("tessel"), 1010U);
  EXPECT_FALSE(database.schema_migration("tessel"));
}

TEST_F(Schema, OdbReadsVersionZeroWithoutTheTableOrItsRow) {
  exec("CREATE TABLE other (a)");
  EXPECT_EQ(odb::sqlite::database(path).schema_version("tessel"), 0U);
  exec("CREATE TABLE schema_version (name TEXT, version INTEGER, migration INTEGER)");
  EXPECT_EQ(odb::sqlite::database(path).schema_version("tessel"), 0U);
}

TEST_F(Schema, LeftoversOfOurTablesAreReplaced) {
  exec("CREATE TABLE tessel_Measure (id INTEGER, a TEXT); INSERT INTO tessel_Measure VALUES (9, 'x');"
       "CREATE TABLE tessel_Meta (b); INSERT INTO tessel_Meta VALUES (1)");
  RawFile file = created();
  EXPECT_EQ(file.count("tessel_Measure"), 0);
  EXPECT_EQ(file.columns("tessel_Measure").size(), 10U);
  EXPECT_THAT(file.columns("tessel_Meta"), ElementsAre("id", "unit"));
}

TEST_F(Schema, EveryTableOfOursIsReplaced) {
  createFile(path);
  for (const std::string& table : expectedTables()) {
    if (table != "schema_version") exec("ALTER TABLE \"" + table + "\" ADD COLUMN leftover");
  }
  RawFile file = created();
  for (const ExpectedTable& table : expectedSchema()) {
    EXPECT_THAT(describeTable(file, table.name), ElementsAreArray(table.lines)) << table.name;
  }
}

TEST_F(Schema, TablesThatAreNotOursStay) {
  exec("CREATE TABLE other (a); INSERT INTO other VALUES (7);"
       "CREATE TABLE tessel_Other (a); INSERT INTO tessel_Other VALUES (8)");
  RawFile file = created();
  EXPECT_EQ(file.scalarInt("SELECT a FROM other"), 7);
  EXPECT_EQ(file.scalarInt("SELECT a FROM tessel_Other"), 8);
}

TEST_F(Schema, OnlyOurVersionRowIsReplaced) {
  exec("CREATE TABLE schema_version (name TEXT NOT NULL PRIMARY KEY, version INTEGER NOT NULL, migration "
       "INTEGER NOT "
       "NULL); INSERT INTO schema_version VALUES ('tessel', 3, 1), ('other', 5, 1)");
  EXPECT_EQ(created().rows("SELECT * FROM schema_version ORDER BY name"),
            (Rows{{"other", "5", "1", "0"}, {"tessel", "1010", "0", "1000"}}));
}

TEST_F(Schema, WithoutDropAVersionRowThatIsThereStays) {
  exec("CREATE TABLE schema_version (name TEXT NOT NULL PRIMARY KEY, version INTEGER NOT NULL, migration "
       "INTEGER NOT "
       "NULL); INSERT INTO schema_version VALUES ('tessel', 3, 1)");
  onSchema(path, [](auto& database, sqlite3*) { odb::schema_catalog::create_schema(database, "tessel", false); });
  RawFile file(path);
  EXPECT_EQ(file.rows("SELECT * FROM schema_version"), (Rows{{"tessel", "3", "1"}}));
  EXPECT_TRUE(file.hasTable("tessel_Meta"));
}

TEST_F(Schema, DropAloneLeavesTheVersionTableWithoutOurRow) {
  createFile(path);
  onSchema(path, [](auto& database, sqlite3*) { odb::schema_catalog::drop_schema(database, "tessel"); });
  RawFile file(path);
  EXPECT_THAT(file.tables(), ElementsAre("schema_version"));
  EXPECT_EQ(file.count("schema_version"), 0);
}

TEST_F(Schema, DropMakesTheVersionTableWhereThereIsNone) {
  onSchema(path, [](auto& database, sqlite3*) { odb::schema_catalog::drop_schema(database, "tessel"); });
  EXPECT_THAT(RawFile(path).columns("schema_version"), ElementsAre("name", "version", "migration"));
}

TEST_F(Schema, DropGoesFromTheTableThatRefersToTheOneReferredTo) {
  onSchema(path, [](auto& database, sqlite3*) {
    StatementLog log(database);
    odb::schema_catalog::drop_schema(database, "tessel");
    EXPECT_THAT(
      log.after("DROP TABLE IF EXISTS "),
      ElementsAre("\"tessel_Meta\"", "\"tessel_PropertySet_entity_types\"", "\"tessel_PropertySet_value_definitions\"",
                  "\"tessel_PropertySet_property_definitions\"", "\"tessel_PropertySet\"", "\"tessel_ValueDefinition\"",
                  "\"tessel_PropertyDefinition\"", "\"tessel_PropertyNamespace\"", "\"tessel_EntityType\"",
                  "\"tessel_Project_sheet_categories\"", "\"tessel_Project_master_drawings\"", "\"tessel_Project\"",
                  "\"tessel_Story\"", "\"tessel_Building\"", "\"tessel_Site\"", "\"tessel_SpatialStructure\"",
                  "\"tessel_DefaultUnit\"", "\"tessel_ColumnUnit\"", "\"tessel_Unit\"", "\"tessel_Measure\""));
  });
}

TEST_F(Schema, EachStatementOfTheDropRunsOnce) {
  onSchema(path, [](auto& database, sqlite3*) {
    StatementLog log(database);
    odb::schema_catalog::drop_schema(database, "tessel");
    ASSERT_EQ(log.statements().size(), 22U);
    EXPECT_THAT(log.statements()[20], StartsWith("CREATE TABLE IF NOT EXISTS \"schema_version\""));
    EXPECT_EQ(log.statements()[21], "DELETE FROM \"schema_version\" WHERE \"name\" = 'tessel'");
  });
}

// What the keys and indexes do, beyond being there.

class SchemaRules : public Schema {
protected:
  SchemaRules() {
    createFile(path);
    file = std::make_unique<RawFile>(path);
    file->exec("PRAGMA foreign_keys=ON");
    file->exec("INSERT INTO tessel_Measure (id, name) VALUES (1, 'LENGTH'), (2, 'AREA')");
  }

  std::unique_ptr<RawFile> file;
};

TEST_F(SchemaRules, UnitsMayLackANameButNotShareALabelWithinOneMeasure) {
  file->exec("INSERT INTO tessel_Unit (name, label, measure_id) VALUES (NULL, 'mm', 1), (NULL, 'm', 1)");
  file->exec("INSERT INTO tessel_Unit (name, label, measure_id) VALUES ('other measure', 'mm', 2)");
  EXPECT_THROW(file->exec("INSERT INTO tessel_Unit (name, label, measure_id) VALUES ('new', 'mm', 1)"),
               std::runtime_error);
  EXPECT_EQ(file->count("tessel_Unit"), 3);
}

TEST_F(SchemaRules, LabelsOfNamespacesAndSetsMayBeMissingOnManyRows) {
  file->exec("INSERT INTO tessel_PropertyNamespace (id, name) VALUES (1, 'a'), (2, 'b')");
  file->exec("INSERT INTO tessel_PropertySet (namespace_id, name) VALUES (1, 'a'), (1, 'b')");
  file->exec("UPDATE tessel_PropertyNamespace SET label = 'x' WHERE id = 1");
  EXPECT_THROW(file->exec("UPDATE tessel_PropertyNamespace SET label = 'x' WHERE id = 2"), std::runtime_error);
}

TEST_F(SchemaRules, AClashIsToldInTheWordsThatTheSavePipelineLooksFor) {
  try {
    file->exec("INSERT INTO tessel_Measure (name) VALUES ('AREA')");
    FAIL() << "the name is taken";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), StartsWith("UNIQUE constraint failed:"));
  }
}

TEST_F(SchemaRules, DeletingARootRowDeletesTheSite) {
  file->exec("INSERT INTO tessel_SpatialStructure VALUES (1, 'tessel::Site'), (2, 'tessel::Site');"
             "INSERT INTO tessel_Site (id, name) VALUES (1, 'a'), (2, 'b');"
             "DELETE FROM tessel_SpatialStructure WHERE id = 1");
  EXPECT_THAT(file->column("SELECT id FROM tessel_Site"), ElementsAre("2"));
}

TEST_F(SchemaRules, DeletingASiteThatABuildingNeedsFailsAtCommit) {
  file->exec("INSERT INTO tessel_SpatialStructure VALUES (1, 'tessel::Site'), (2, 'tessel::Building');"
             "INSERT INTO tessel_Site (id, name) VALUES (1, 'a');"
             "INSERT INTO tessel_Building (id, site_id, name) VALUES (2, 1, 'b')");
  file->exec("BEGIN");
  EXPECT_NO_THROW(file->exec("DELETE FROM tessel_Site"));
  EXPECT_THROW(file->exec("COMMIT"), std::runtime_error);
  file->exec("ROLLBACK");
  EXPECT_EQ(file->count("tessel_Site"), 1);
}

TEST_F(SchemaRules, WithinATransactionRowsComeInAnyOrder) {
  file->exec("BEGIN; INSERT INTO tessel_Unit (label, measure_id) VALUES ('kg', 3);"
             "INSERT INTO tessel_Measure (id, name) VALUES (3, 'MASS'); COMMIT");
  EXPECT_EQ(file->count("tessel_Unit"), 1);
}

TEST_F(SchemaRules, DeletingAPropertySetEmptiesItsContainersAndLeavesTheDefinitions) {
  file->exec("INSERT INTO tessel_PropertyNamespace (id, name) VALUES (1, 'a');"
             "INSERT INTO tessel_PropertyDefinition (id, name, namespace_id) VALUES (1, 'p', 1);"
             "INSERT INTO tessel_ValueDefinition (id, name, namespace_id) VALUES (1, 'v', 1);"
             "INSERT INTO tessel_EntityType (id, name) VALUES (1, 'Door');"
             "INSERT INTO tessel_PropertySet (id, name, namespace_id) VALUES (1, 's', 1), (2, 't', 1);"
             "INSERT INTO tessel_PropertySet_property_definitions VALUES (1, 0, 1), (2, 0, 1);"
             "INSERT INTO tessel_PropertySet_value_definitions VALUES (1, 0, 1), (2, 0, 1);"
             "INSERT INTO tessel_PropertySet_entity_types VALUES (1, 0, 1), (2, 0, 1);"
             "DELETE FROM tessel_PropertySet WHERE id = 1");
  for (const char* container : {"property_definitions", "value_definitions", "entity_types"}) {
    EXPECT_THAT(file->column(std::string("SELECT object_id FROM tessel_PropertySet_") + container), ElementsAre("2"))
      << container;
  }
  EXPECT_EQ(file->count("tessel_PropertyDefinition"), 1);
  EXPECT_EQ(file->count("tessel_ValueDefinition"), 1);
  EXPECT_EQ(file->count("tessel_EntityType"), 1);
}

TEST_F(SchemaRules, DeletingTheProjectEmptiesItsContainers) {
  file->exec("INSERT INTO tessel_Project (id, name, site_id, models_folder, sheets_folder, sheet_set_filename) "
             "VALUES (1, '', NULL, '', '', '');"
             "INSERT INTO tessel_Project_master_drawings VALUES (1, 0, 'a.dwg');"
             "INSERT INTO tessel_Project_sheet_categories (object_id, \"index\", name, prefix) VALUES (1, 0, 'a', "
             "'A');"
             "DELETE FROM tessel_Project");
  EXPECT_EQ(file->count("tessel_Project_master_drawings"), 0);
  EXPECT_EQ(file->count("tessel_Project_sheet_categories"), 0);
}

TEST_F(SchemaRules, IdsAreNeverUsedAgain) {
  for (const std::string table : {"tessel_Measure", "tessel_SpatialStructure", "tessel_EntityType"}) {
    const std::string column = table == "tessel_SpatialStructure" ? "typeid" : "name";
    const std::string insert = "INSERT INTO " + table + " (id, " + column + ") VALUES (NULL, 'last')";
    file->exec(insert);
    const long long last = file->scalarInt("SELECT max(id) FROM " + table);
    file->exec("DELETE FROM " + table + " WHERE id = " + std::to_string(last));
    file->exec(insert);
    EXPECT_EQ(file->scalarInt("SELECT max(id) FROM " + table), last + 1) << table;
  }
}

TEST_F(SchemaRules, TheFolderTextsOfAProjectMayNotBeNull) {
  const std::vector<std::string> columns = {"models_folder", "sheets_folder", "sheet_set_filename"};
  for (const std::string& column : columns) {
    std::string values;
    for (const std::string& each : columns) {
      values += each == column ? ", NULL" : ", ''";
    }
    EXPECT_THROW(file->exec("INSERT INTO tessel_Project (id, name, models_folder, sheets_folder, sheet_set_filename) "
                            "VALUES (1, ''" +
                            values + ")"),
                 std::runtime_error)
      << column;
  }
}

}  // namespace
}  // namespace tessel::test
