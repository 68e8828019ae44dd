#include "database/tables.h"

#include <odb/database.hxx>

namespace tessel {

void createTable(odb::database& database, const Table& table) {
  for (const char* statement : table.statements) {
    database.execute(statement);
  }
}

namespace tables {

// References between objects are deferred: rows of one transaction come in any order and are checked at
// commit. Only ownership cascades, from a root row to its derived row and from an owner to its containers.

constexpr Table measure = {
  "tessel_Measure",
  {R"(CREATE TABLE "tessel_Measure" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "name" TEXT NOT NULL,
  "description" TEXT NOT NULL DEFAULT '',
  "length" INTEGER NOT NULL DEFAULT 0,
  "mass" INTEGER NOT NULL DEFAULT 0,
  "time" INTEGER NOT NULL DEFAULT 0,
  "thermodynamic_temperature" INTEGER NOT NULL DEFAULT 0,
  "electric_current" INTEGER NOT NULL DEFAULT 0,
  "luminous_intensity" INTEGER NOT NULL DEFAULT 0,
  "amount_of_substance" INTEGER NOT NULL DEFAULT 0))",
   R"(CREATE UNIQUE INDEX "tessel_Measure_name_i" ON "tessel_Measure" ("name"))"},
};

// The name may be NULL on any number of rows, for NULL is equal to nothing in a unique index.
constexpr Table unit = {
  "tessel_Unit",
  {R"(CREATE TABLE "tessel_Unit" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "name" TEXT NULL,
  "label" TEXT NOT NULL,
  "scale" REAL NOT NULL DEFAULT 1,
  "measure_id" INTEGER NOT NULL,
  CONSTRAINT "measure_id_fk" FOREIGN KEY ("measure_id")
    REFERENCES "tessel_Measure" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_Unit_name_i" ON "tessel_Unit" ("name"))",
   R"(CREATE UNIQUE INDEX "tessel_Unit_measure_label_i" ON "tessel_Unit" ("measure_id", "label"))"},
};

// Here "table" is the class name without our prefix.
constexpr Table columnUnit = {
  "tessel_ColumnUnit",
  {R"(CREATE TABLE "tessel_ColumnUnit" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "table" TEXT NOT NULL,
  "column" TEXT NOT NULL,
  "unit_id" INTEGER NOT NULL,
  CONSTRAINT "unit_id_fk" FOREIGN KEY ("unit_id")
    REFERENCES "tessel_Unit" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_ColumnUnit_table_column_i" ON "tessel_ColumnUnit" ("table", "column"))"},
};

constexpr Table defaultUnit = {
  "tessel_DefaultUnit",
  {R"(CREATE TABLE "tessel_DefaultUnit" (
  "measure_id" INTEGER NOT NULL PRIMARY KEY,
  "unit_id" INTEGER NULL,
  CONSTRAINT "measure_id_fk" FOREIGN KEY ("measure_id")
    REFERENCES "tessel_Measure" ("id") DEFERRABLE INITIALLY DEFERRED,
  CONSTRAINT "unit_id_fk" FOREIGN KEY ("unit_id")
    REFERENCES "tessel_Unit" ("id") DEFERRABLE INITIALLY DEFERRED))"},
};

// Hands out the ids of sites, buildings and stories, and names the class of each.
constexpr Table spatialStructure = {
  "tessel_SpatialStructure",
  {R"(CREATE TABLE "tessel_SpatialStructure" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "typeid" TEXT NOT NULL))"},
};

constexpr Table site = {
  "tessel_Site",
  {R"(CREATE TABLE "tessel_Site" (
  "id" INTEGER NOT NULL PRIMARY KEY,
  "name" TEXT NOT NULL,
  "long_name" TEXT NOT NULL DEFAULT '',
  "description" TEXT NOT NULL DEFAULT '',
  "site_type" TEXT NOT NULL DEFAULT '',
  "ref_elevation" REAL NOT NULL DEFAULT 0,
  "land_title_number" TEXT NOT NULL DEFAULT '',
  "internal_location" TEXT NOT NULL DEFAULT '',
  "address_lines" TEXT NOT NULL DEFAULT '',
  "postal_box" TEXT NOT NULL DEFAULT '',
  "town" TEXT NOT NULL DEFAULT '',
  "region" TEXT NOT NULL DEFAULT '',
  "postal_code" TEXT NOT NULL DEFAULT '',
  "country" TEXT NOT NULL DEFAULT '',
  "buildable_area" REAL NOT NULL DEFAULT 0,
  "total_area" REAL NOT NULL DEFAULT 0,
  "building_height_limit" REAL NOT NULL DEFAULT 0,
  CONSTRAINT "id_fk" FOREIGN KEY ("id")
    REFERENCES "tessel_SpatialStructure" ("id") ON DELETE CASCADE))",
   R"(CREATE UNIQUE INDEX "tessel_Site_name_i" ON "tessel_Site" ("name"))"},
};

// "building_id" is a text that the authorities give, no reference.
constexpr Table building = {
  "tessel_Building",
  {R"(CREATE TABLE "tessel_Building" (
  "id" INTEGER NOT NULL PRIMARY KEY,
  "site_id" INTEGER NOT NULL,
  "name" TEXT NOT NULL,
  "long_name" TEXT NOT NULL DEFAULT '',
  "description" TEXT NOT NULL DEFAULT '',
  "elevation_of_ref_height" REAL NOT NULL DEFAULT 0,
  "elevation_of_terrain" REAL NOT NULL DEFAULT 0,
  "internal_location" TEXT NOT NULL DEFAULT '',
  "address_lines" TEXT NOT NULL DEFAULT '',
  "postal_box" TEXT NOT NULL DEFAULT '',
  "town" TEXT NOT NULL DEFAULT '',
  "region" TEXT NOT NULL DEFAULT '',
  "postal_code" TEXT NOT NULL DEFAULT '',
  "country" TEXT NOT NULL DEFAULT '',
  "building_id" TEXT NOT NULL DEFAULT '',
  "is_permanent_id" INTEGER NOT NULL DEFAULT 0,
  "main_fire_use" TEXT NOT NULL DEFAULT '',
  "ancillary_fire_use" TEXT NOT NULL DEFAULT '',
  "sprinkler_protection" INTEGER NOT NULL DEFAULT 0,
  "sprinkler_protection_automatic" INTEGER NOT NULL DEFAULT 0,
  "occupancy_type" TEXT NOT NULL DEFAULT '',
  "gross_planned_area" REAL NOT NULL DEFAULT 0,
  "number_of_storeys" INTEGER NOT NULL DEFAULT 1,
  "year_of_construction" TEXT NOT NULL DEFAULT '',
  "is_landmarked" INTEGER NOT NULL DEFAULT 0,
  CONSTRAINT "id_fk" FOREIGN KEY ("id")
    REFERENCES "tessel_SpatialStructure" ("id") ON DELETE CASCADE,
  CONSTRAINT "site_id_fk" FOREIGN KEY ("site_id")
    REFERENCES "tessel_Site" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_Building_site_name_i" ON "tessel_Building" ("site_id", "name"))"},
};

constexpr Table story = {
  "tessel_Story",
  {R"(CREATE TABLE "tessel_Story" (
  "id" INTEGER NOT NULL PRIMARY KEY,
  "building_id" INTEGER NOT NULL,
  "name" TEXT NOT NULL,
  "long_name" TEXT NOT NULL DEFAULT '',
  "description" TEXT NOT NULL DEFAULT '',
  "elevation" REAL NOT NULL DEFAULT 0,
  "entrance_level" INTEGER NOT NULL DEFAULT 0,
  "above_ground" INTEGER NOT NULL DEFAULT 1,
  "sprinkler_protection" INTEGER NOT NULL DEFAULT 0,
  "sprinkler_protection_automatic" INTEGER NOT NULL DEFAULT 0,
  "gross_area_planned" REAL NOT NULL DEFAULT 0,
  "net_area_planned" REAL NOT NULL DEFAULT 0,
  CONSTRAINT "id_fk" FOREIGN KEY ("id")
    REFERENCES "tessel_SpatialStructure" ("id") ON DELETE CASCADE,
  CONSTRAINT "building_id_fk" FOREIGN KEY ("building_id")
    REFERENCES "tessel_Building" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_Story_building_name_i" ON "tessel_Story" ("building_id", "name"))"},
};

// The key is not generated: the one row has id 1 in every file. The folders and the file name are NOT NULL
// here only; a migrated file has them nullable, for a row that exists cannot take them without a default.
constexpr Table project = {
  "tessel_Project",
  {R"(CREATE TABLE "tessel_Project" (
  "id" INTEGER NOT NULL PRIMARY KEY,
  "name" TEXT NOT NULL,
  "site_id" INTEGER NULL DEFAULT 0,
  "models_folder" TEXT NOT NULL,
  "sheets_folder" TEXT NOT NULL,
  "sheet_set_filename" TEXT NOT NULL,
  "sheet_margins_metric_page_left" REAL NOT NULL DEFAULT 0,
  "sheet_margins_metric_page_right" REAL NOT NULL DEFAULT 0,
  "sheet_margins_metric_page_top" REAL NOT NULL DEFAULT 0,
  "sheet_margins_metric_page_bottom" REAL NOT NULL DEFAULT 0,
  "sheet_margins_metric_between" REAL NOT NULL DEFAULT 0,
  "sheet_margins_metric_label_space" REAL NOT NULL DEFAULT 0,
  "sheet_margins_imperial_page_left" REAL NOT NULL DEFAULT 0,
  "sheet_margins_imperial_page_right" REAL NOT NULL DEFAULT 0,
  "sheet_margins_imperial_page_top" REAL NOT NULL DEFAULT 0,
  "sheet_margins_imperial_page_bottom" REAL NOT NULL DEFAULT 0,
  "sheet_margins_imperial_between" REAL NOT NULL DEFAULT 0,
  "sheet_margins_imperial_label_space" REAL NOT NULL DEFAULT 0,
  CONSTRAINT "site_id_fk" FOREIGN KEY ("site_id")
    REFERENCES "tessel_Site" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_Project_name_i" ON "tessel_Project" ("name"))"},
};

constexpr Table projectMasterDrawings = {
  "tessel_Project_master_drawings",
  {R"(CREATE TABLE "tessel_Project_master_drawings" (
  "object_id" INTEGER NOT NULL,
  "index" INTEGER NOT NULL,
  "filename" TEXT NOT NULL,
  CONSTRAINT "object_id_fk" FOREIGN KEY ("object_id")
    REFERENCES "tessel_Project" ("id") ON DELETE CASCADE))",
   R"(CREATE INDEX "tessel_Project_master_drawings_object_id_i" ON "tessel_Project_master_drawings" ("object_id"))",
   R"(CREATE INDEX "tessel_Project_master_drawings_index_i" ON "tessel_Project_master_drawings" ("index"))"},
};

constexpr Table projectSheetCategories = {
  "tessel_Project_sheet_categories",
  {R"(CREATE TABLE "tessel_Project_sheet_categories" (
  "object_id" INTEGER NOT NULL,
  "index" INTEGER NOT NULL,
  "name" TEXT NOT NULL,
  "prefix" TEXT NOT NULL,
  "number_start" INTEGER NOT NULL DEFAULT 0,
  "number_width" INTEGER NOT NULL DEFAULT -1,
  CONSTRAINT "object_id_fk" FOREIGN KEY ("object_id")
    REFERENCES "tessel_Project" ("id") ON DELETE CASCADE))",
   R"(CREATE INDEX "tessel_Project_sheet_categories_object_id_i" ON "tessel_Project_sheet_categories" ("object_id"))",
   R"(CREATE INDEX "tessel_Project_sheet_categories_index_i" ON "tessel_Project_sheet_categories" ("index"))"},
};

constexpr Table entityType = {
  "tessel_EntityType",
  {R"(CREATE TABLE "tessel_EntityType" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "name" TEXT NOT NULL))",
   R"(CREATE UNIQUE INDEX "tessel_EntityType_name_i" ON "tessel_EntityType" ("name"))"},
};

constexpr Table propertyNamespace = {
  "tessel_PropertyNamespace",
  {R"(CREATE TABLE "tessel_PropertyNamespace" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "name" TEXT NOT NULL,
  "label" TEXT NULL,
  "editable" INTEGER NOT NULL DEFAULT 1,
  "visible" INTEGER NOT NULL DEFAULT 1,
  "revision" INTEGER NOT NULL DEFAULT 0))",
   R"(CREATE UNIQUE INDEX "tessel_PropertyNamespace_name_i" ON "tessel_PropertyNamespace" ("name"))",
   R"(CREATE UNIQUE INDEX "tessel_PropertyNamespace_label_i" ON "tessel_PropertyNamespace" ("label"))"},
};

constexpr Table propertyDefinition = {
  "tessel_PropertyDefinition",
  {R"(CREATE TABLE "tessel_PropertyDefinition" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "name" TEXT NOT NULL,
  "label" TEXT NULL,
  "description" TEXT NOT NULL DEFAULT '',
  "unit_id" INTEGER NULL,
  "ifc_name" TEXT NULL,
  "ifc_type" INTEGER NULL,
  "type_structure" INTEGER NOT NULL DEFAULT 1,
  "type_value_type" INTEGER NOT NULL DEFAULT 11,
  "type_key_type" INTEGER NOT NULL DEFAULT 0,
  "visible" INTEGER NOT NULL DEFAULT 1,
  "namespace_id" INTEGER NOT NULL,
  "type_spec" TEXT NOT NULL DEFAULT '',
  "type_spec2" TEXT NOT NULL DEFAULT '',
  "default_value" TEXT NOT NULL DEFAULT '',
  CONSTRAINT "unit_id_fk" FOREIGN KEY ("unit_id")
    REFERENCES "tessel_Unit" ("id") DEFERRABLE INITIALLY DEFERRED,
  CONSTRAINT "namespace_id_fk" FOREIGN KEY ("namespace_id")
    REFERENCES "tessel_PropertyNamespace" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_PropertyDefinition_name_ns_i"
  ON "tessel_PropertyDefinition" ("name", "namespace_id"))"},
};

constexpr Table valueDefinition = {
  "tessel_ValueDefinition",
  {R"(CREATE TABLE "tessel_ValueDefinition" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "name" TEXT NOT NULL,
  "label" TEXT NULL,
  "description" TEXT NOT NULL DEFAULT '',
  "unit_id" INTEGER NULL,
  "ifc_name" TEXT NULL,
  "ifc_type" INTEGER NULL,
  "type_structure" INTEGER NOT NULL DEFAULT 1,
  "type_value_type" INTEGER NOT NULL DEFAULT 11,
  "type_key_type" INTEGER NOT NULL DEFAULT 0,
  "visible" INTEGER NOT NULL DEFAULT 1,
  "namespace_id" INTEGER NOT NULL,
  "value_spec" TEXT NOT NULL DEFAULT '',
  CONSTRAINT "unit_id_fk" FOREIGN KEY ("unit_id")
    REFERENCES "tessel_Unit" ("id") DEFERRABLE INITIALLY DEFERRED,
  CONSTRAINT "namespace_id_fk" FOREIGN KEY ("namespace_id")
    REFERENCES "tessel_PropertyNamespace" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_ValueDefinition_name_ns_i" ON "tessel_ValueDefinition" ("name", "namespace_id"))"},
};

constexpr Table propertySet = {
  "tessel_PropertySet",
  {R"(CREATE TABLE "tessel_PropertySet" (
  "id" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  "namespace_id" INTEGER NOT NULL,
  "name" TEXT NOT NULL,
  "label" TEXT NULL,
  "per_instance" INTEGER NOT NULL DEFAULT 0,
  "ifc_name" TEXT NULL,
  "visible" INTEGER NOT NULL DEFAULT 1,
  CONSTRAINT "namespace_id_fk" FOREIGN KEY ("namespace_id")
    REFERENCES "tessel_PropertyNamespace" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE UNIQUE INDEX "tessel_PropertySet_name_ns_i" ON "tessel_PropertySet" ("name", "namespace_id"))",
   R"(CREATE UNIQUE INDEX "tessel_PropertySet_label_i" ON "tessel_PropertySet" ("label"))"},
};

constexpr Table propertySetPropertyDefinitions = {
  "tessel_PropertySet_property_definitions",
  {R"(CREATE TABLE "tessel_PropertySet_property_definitions" (
  "object_id" INTEGER NOT NULL,
  "index" INTEGER NOT NULL,
  "property_definition_id" INTEGER NOT NULL,
  CONSTRAINT "object_id_fk" FOREIGN KEY ("object_id")
    REFERENCES "tessel_PropertySet" ("id") ON DELETE CASCADE,
  CONSTRAINT "property_definition_id_fk" FOREIGN KEY ("property_definition_id")
    REFERENCES "tessel_PropertyDefinition" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE INDEX "tessel_PropertySet_property_definitions_object_id_i"
  ON "tessel_PropertySet_property_definitions" ("object_id"))",
   R"(CREATE INDEX "tessel_PropertySet_property_definitions_index_i"
  ON "tessel_PropertySet_property_definitions" ("index"))"},
};

constexpr Table propertySetValueDefinitions = {
  "tessel_PropertySet_value_definitions",
  {R"(CREATE TABLE "tessel_PropertySet_value_definitions" (
  "object_id" INTEGER NOT NULL,
  "index" INTEGER NOT NULL,
  "value_definition_id" INTEGER NOT NULL,
  CONSTRAINT "object_id_fk" FOREIGN KEY ("object_id")
    REFERENCES "tessel_PropertySet" ("id") ON DELETE CASCADE,
  CONSTRAINT "value_definition_id_fk" FOREIGN KEY ("value_definition_id")
    REFERENCES "tessel_ValueDefinition" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE INDEX "tessel_PropertySet_value_definitions_object_id_i"
  ON "tessel_PropertySet_value_definitions" ("object_id"))",
   R"(CREATE INDEX "tessel_PropertySet_value_definitions_index_i"
  ON "tessel_PropertySet_value_definitions" ("index"))"},
};

constexpr Table propertySetEntityTypes = {
  "tessel_PropertySet_entity_types",
  {R"(CREATE TABLE "tessel_PropertySet_entity_types" (
  "object_id" INTEGER NOT NULL,
  "index" INTEGER NOT NULL,
  "entity_type_id" INTEGER NOT NULL,
  CONSTRAINT "object_id_fk" FOREIGN KEY ("object_id")
    REFERENCES "tessel_PropertySet" ("id") ON DELETE CASCADE,
  CONSTRAINT "entity_type_id_fk" FOREIGN KEY ("entity_type_id")
    REFERENCES "tessel_EntityType" ("id") DEFERRABLE INITIALLY DEFERRED))",
   R"(CREATE INDEX "tessel_PropertySet_entity_types_object_id_i" ON "tessel_PropertySet_entity_types" ("object_id"))",
   R"(CREATE INDEX "tessel_PropertySet_entity_types_index_i" ON "tessel_PropertySet_entity_types" ("index"))"},
};

// From the time before the unit catalogue; only the migration to 1001 reads it.
constexpr Table meta = {
  "tessel_Meta",
  {R"(CREATE TABLE "tessel_Meta" (
  "id" INTEGER NOT NULL PRIMARY KEY,
  "unit" INTEGER NOT NULL DEFAULT 1))"},
};

constexpr Table schemaVersion = {
  "schema_version",
  {R"(CREATE TABLE IF NOT EXISTS "schema_version" (
  "name" TEXT NOT NULL PRIMARY KEY,
  "version" INTEGER NOT NULL,
  "migration" INTEGER NOT NULL))"},
};

}  // namespace tables
}  // namespace tessel
