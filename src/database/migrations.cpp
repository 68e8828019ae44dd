#include <array>
#include <utility>

#include <odb/database.hxx>
#include <odb/schema-catalog-impl.hxx>

#include "database/schema.h"
#include "database/tables.h"

namespace tessel {
namespace {

// Tables as they were when their step brought them in. They differ from today's, which later steps have
// altered.
namespace former {

constexpr Table propertyNamespace = {
  "tessel_PropertyNamespace",
  {R"(CREATE TABLE "tessel_PropertyNamespace" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "name" TEXT NOT NULL,
  "label" TEXT NULL,
  "editable" INTEGER NOT NULL DEFAULT 1,
  "visible" INTEGER NOT NULL DEFAULT 1))",
   R"(CREATE UNIQUE INDEX "tessel_PropertyNamespace_name_i" ON "tessel_PropertyNamespace" ("name"))",
   R"(CREATE UNIQUE INDEX "tessel_PropertyNamespace_label_i" ON "tessel_PropertyNamespace" ("label"))"},
};

constexpr Table propertyDefinition = {
  "tessel_PropertyDefinition",
  {R"(CREATE TABLE "tessel_PropertyDefinition" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "namespace_id" INTEGER NOT NULL,
  "name" TEXT NOT NULL,
  "label" TEXT NULL,
  "description" TEXT NOT NULL DEFAULT '',
  "type_structure" INTEGER NOT NULL DEFAULT 1,
  "type_value_type" INTEGER NOT NULL DEFAULT 11,
  "type_key_type" INTEGER NOT NULL DEFAULT 0,
  "type_spec" TEXT NOT NULL DEFAULT '',
  "unit_id" INTEGER NULL,
  "default_value" TEXT NOT NULL DEFAULT '',
  "ifc_name" TEXT NULL,
  "visible" INTEGER NOT NULL DEFAULT 1,
  CONSTRAINT "namespace_id_fk" FOREIGN KEY ("namespace_id")
    REFERENCES "tessel_PropertyNamespace" ("id") DEFERRABLE INITIALLY DEFERRED,
  CONSTRAINT "unit_id_fk" FOREIGN KEY ("unit_id")
    REFERENCES "tessel_Unit" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_PropertyDefinition_name_ns_i"
  ON "tessel_PropertyDefinition" ("name", "namespace_id"))"},
};

constexpr Table propertySet = {
  "tessel_PropertySet",
  {R"(CREATE TABLE "tessel_PropertySet" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "namespace_id" INTEGER NOT NULL,
  "name" TEXT NOT NULL,
  "label" TEXT NULL,
  "per_instance" INTEGER NOT NULL DEFAULT 0,
  "visible" INTEGER NOT NULL DEFAULT 1,
  CONSTRAINT "namespace_id_fk" FOREIGN KEY ("namespace_id")
    REFERENCES "tessel_PropertyNamespace" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_PropertySet_name_ns_i" ON "tessel_PropertySet" ("name", "namespace_id"))",
   R"(CREATE UNIQUE INDEX "tessel_PropertySet_label_i" ON "tessel_PropertySet" ("label"))"},
};

// Lived from 1006 to 1008. No class of today reads it.
constexpr Table space = {
  "tessel_Space",
  {R"(CREATE TABLE "tessel_Space" (
  "id" INTEGER NOT NULL PRIMARY KEY,
  "parent_id" INTEGER NOT NULL,
  "name" TEXT NOT NULL,
  "long_name" TEXT NOT NULL DEFAULT '',
  "description" TEXT NOT NULL DEFAULT '',
  "category" TEXT NOT NULL DEFAULT '',
  "floor_covering" TEXT NOT NULL DEFAULT '',
  "wall_covering" TEXT NOT NULL DEFAULT '',
  "ceiling_covering" TEXT NOT NULL DEFAULT '',
  "skirting_board" TEXT NOT NULL DEFAULT '',
  "gross_planned_area" REAL NOT NULL DEFAULT 0,
  "net_planned_area" REAL NOT NULL DEFAULT 0,
  "publicly_accessible" INTEGER NOT NULL DEFAULT 0,
  "handicap_accessible" INTEGER NOT NULL DEFAULT 0,
  "concealed_flooring" INTEGER NOT NULL DEFAULT 0,
  "concealed_ceiling" INTEGER NOT NULL DEFAULT 0,
  CONSTRAINT "id_fk" FOREIGN KEY ("id")
    REFERENCES "tessel_SpatialStructure" ("id") ON DELETE CASCADE,
  CONSTRAINT "parent_id_fk" FOREIGN KEY ("parent_id")
    REFERENCES "tessel_SpatialStructure" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_Space_parent_name_i" ON "tessel_Space" ("parent_id", "name"))"},
};

}  // namespace former

struct Step {
  odb::schema_version version;
  std::initializer_list<const char*> alterations;
  std::initializer_list<const Table*> newTables;
  std::initializer_list<const char*> cleanUp;
};

// What each version changed in the tables, from the one after the base version on. Rows are the business of
// database/data_migrations.cpp. A step that has gone out is never edited; a change of the format is a new
// step.
constexpr Step steps[] = {
  {1001,
   {},
   {&tables::measure, &tables::unit, &tables::columnUnit, &tables::defaultUnit, &tables::entityType,
    &former::propertyNamespace, &former::propertyDefinition, &former::propertySet,
    &tables::propertySetPropertyDefinitions, &tables::propertySetEntityTypes},
   {}},
  {1002, {}, {}, {}},
  {1003,
   {R"(ALTER TABLE "tessel_PropertyNamespace" ADD COLUMN "revision" INTEGER NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_PropertyDefinition" ADD COLUMN "ifc_type" INTEGER NULL)"},
   {},
   {}},
  {1004, {R"(ALTER TABLE "tessel_PropertyDefinition" ADD COLUMN "type_spec2" TEXT NOT NULL DEFAULT '')"}, {}, {}},
  {1005,
   {R"(ALTER TABLE "tessel_Site" ADD COLUMN "long_name" TEXT NOT NULL DEFAULT '')",
    R"(ALTER TABLE "tessel_Building" ADD COLUMN "long_name" TEXT NOT NULL DEFAULT '')",
    R"(ALTER TABLE "tessel_Story" ADD COLUMN "long_name" TEXT NOT NULL DEFAULT '')"},
   {},
   {}},
  {1006, {}, {&former::space}, {}},
  {1007, {}, {&tables::valueDefinition, &tables::propertySetValueDefinitions}, {}},
  // Spaces leave the file for good. Foreign keys are off while a file is migrated, so their root rows do not
  // go by themselves, and a reference to a space from elsewhere stops nothing.
  {1008,
   {},
   {},
   {R"(DELETE FROM "tessel_SpatialStructure" WHERE "id" IN (SELECT "id" FROM "tessel_Space"))",
    R"(DROP TABLE "tessel_Space")"}},
  // The three texts are nullable, other than in a new file: a row that exists cannot take a NOT NULL column
  // without a default. A NULL is read as empty text.
  {1009,
   {R"(ALTER TABLE "tessel_Project" ADD COLUMN "models_folder" TEXT NULL)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheets_folder" TEXT NULL)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_set_filename" TEXT NULL)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_metric_page_left" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_metric_page_right" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_metric_page_top" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_metric_page_bottom" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_metric_between" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_metric_label_space" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_imperial_page_left" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_imperial_page_right" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_imperial_page_top" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_imperial_page_bottom" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_imperial_between" REAL NOT NULL DEFAULT 0)",
    R"(ALTER TABLE "tessel_Project" ADD COLUMN "sheet_margins_imperial_label_space" REAL NOT NULL DEFAULT 0)"},
   {&tables::projectMasterDrawings, &tables::projectSheetCategories},
   {}},
  {1010, {R"(ALTER TABLE "tessel_PropertySet" ADD COLUMN "ifc_name" TEXT NULL)"}, {}, {}},
};

constexpr std::size_t stepCount = std::size(steps);

constexpr bool stepsAreWithoutGap() {
  for (std::size_t i = 0; i < stepCount; ++i) {
    if (steps[i].version != baseVersion + 1 + i) {
      return false;
    }
  }
  return baseVersion + stepCount == currentVersion;
}
static_assert(stepsAreWithoutGap(), "each version from the base to the current one needs its step");

void execute(odb::database& database, std::initializer_list<const char*> statements) {
  for (const char* statement : statements) {
    database.execute(statement);
  }
}

void updateVersionRow(odb::database& database, const std::string& assignments) {
  database.execute(R"(UPDATE "schema_version" SET )" + assignments + R"( WHERE "name" = ')" + schemaName + "'");
}

void changeTables(odb::database& database, const Step& step) {
  execute(database, step.alterations);
  for (const Table* table : step.newTables) {
    createTable(database, *table);
  }
}

// The catalogue calls this with pass 1 and then, if the answer is true, with pass 2: both before the data
// migrations of the version, and both again after them.
template <std::size_t index>
bool migrateStep(odb::database& database, unsigned short pass, bool pre) {
  constexpr const Step& step = steps[index];
  if (pre && pass == 1) {
    changeTables(database, step);
  } else if (pre) {
    updateVersionRow(database, R"("version" = )" + std::to_string(step.version) + R"(, "migration" = 1)");
  } else if (pass == 2) {
    execute(database, step.cleanUp);
    updateVersionRow(database, R"("migration" = 0)");
  }
  return pass == 1;
}

using Entry = odb::schema_catalog_migrate_entry;

template <std::size_t... index>
std::array<Entry, sizeof...(index)> registerSteps(std::index_sequence<index...>) {
  return {{Entry(odb::id_sqlite, schemaName.c_str(), steps[index].version, &migrateStep<index>)...}};
}

// The base version has no function: its entry only tells the catalogue where migration can begin.
const Entry baseEntry(odb::id_sqlite, schemaName.c_str(), baseVersion, nullptr);
const auto stepEntries = registerSteps(std::make_index_sequence<stepCount>());

}  // namespace
}  // namespace tessel
