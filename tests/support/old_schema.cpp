#include "support/old_schema.h"

#include <iterator>

namespace tessel::test {
namespace {

using Texts = std::vector<std::string>;

// The kinds of columns and keys that the format has. Each gives the text that stands in the table's
// statement.

std::string quoted(const std::string& name) { return '"' + name + '"'; }

std::string generatedId() { return "\"id\" INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT"; }
std::string plainId(const std::string& name = "id") { return quoted(name) + " INTEGER NOT NULL PRIMARY KEY"; }
std::string text(const std::string& name) { return quoted(name) + " TEXT NOT NULL"; }
std::string emptyText(const std::string& name) { return text(name) + " DEFAULT ''"; }
std::string nullableText(const std::string& name) { return quoted(name) + " TEXT NULL"; }
std::string real(const std::string& name) { return quoted(name) + " REAL NOT NULL DEFAULT 0"; }
std::string integer(const std::string& name) { return quoted(name) + " INTEGER NOT NULL"; }
std::string integer(const std::string& name, int value) { return integer(name) + " DEFAULT " + std::to_string(value); }
std::string nullableInteger(const std::string& name) { return quoted(name) + " INTEGER NULL"; }

std::string key(const std::string& column, const std::string& table, const std::string& rule) {
  return "CONSTRAINT " + quoted(column + "_fk") + " FOREIGN KEY (" + quoted(column) + ") REFERENCES " + quoted(table) +
         " (\"id\") " + rule;
}
std::string reference(const std::string& column, const std::string& table) {
  return key(column, table, "DEFERRABLE INITIALLY DEFERRED");
}
std::string owner(const std::string& column, const std::string& table) {
  return key(column, table, "ON DELETE CASCADE");
}

std::string joined(const Texts& texts) {
  std::string result;
  for (const std::string& part : texts) {
    result += (result.empty() ? "" : ", ") + part;
  }
  return result;
}

std::string table(const std::string& name, const Texts& parts) {
  return "CREATE TABLE " + quoted(name) + " (" + joined(parts) + ")";
}

std::string index(const std::string& kind, const std::string& name, const std::string& table, const Texts& columns) {
  Texts names;
  for (const std::string& column : columns) {
    names.push_back(quoted(column));
  }
  return "CREATE " + kind + " " + quoted(table + "_" + name) + " ON " + quoted(table) + " (" + joined(names) + ")";
}

std::string unique(const std::string& name, const std::string& table, const Texts& columns) {
  return index("UNIQUE INDEX", name, table, columns);
}

std::string add(const std::string& table, const std::string& column) {
  return "ALTER TABLE " + quoted(table) + " ADD COLUMN " + column;
}

Texts concatenated(std::initializer_list<Texts> lists) {
  Texts all;
  for (const Texts& list : lists) {
    all.insert(all.end(), list.begin(), list.end());
  }
  return all;
}

Texts container(const std::string& name, const std::string& ownerTable, const Texts& columns,
                const Texts& references = {}) {
  return {
    table(name, concatenated(
                  {{integer("object_id"), integer("index")}, columns, {owner("object_id", ownerTable)}, references})),
    index("INDEX", "object_id_i", name, {"object_id"}), index("INDEX", "index_i", name, {"index"})};
}

Texts addressColumns() {
  return {emptyText("internal_location"),
          emptyText("address_lines"),
          emptyText("postal_box"),
          emptyText("town"),
          emptyText("region"),
          emptyText("postal_code"),
          emptyText("country")};
}

Texts base() {
  return {
    table("schema_version",
          {"\"name\" TEXT NOT NULL PRIMARY KEY", "\"version\" INTEGER NOT NULL", "\"migration\" INTEGER NOT NULL"}),
    table("tessel_SpatialStructure", {generatedId(), text("typeid")}),
    table("tessel_Site", concatenated({{plainId(), text("name"), emptyText("description"), emptyText("site_type"),
                                        real("ref_elevation"), emptyText("land_title_number")},
                                       addressColumns(),
                                       {real("buildable_area"), real("total_area"), real("building_height_limit"),
                                        owner("id", "tessel_SpatialStructure")}})),
    unique("name_i", "tessel_Site", {"name"}),
    table("tessel_Building",
          concatenated(
            {{plainId(), integer("site_id"), text("name"), emptyText("description"), real("elevation_of_ref_height"),
              real("elevation_of_terrain")},
             addressColumns(),
             {emptyText("building_id"), integer("is_permanent_id", 0), emptyText("main_fire_use"),
              emptyText("ancillary_fire_use"), integer("sprinkler_protection", 0),
              integer("sprinkler_protection_automatic", 0), emptyText("occupancy_type"), real("gross_planned_area"),
              integer("number_of_storeys", 1), emptyText("year_of_construction"), integer("is_landmarked", 0),
              owner("id", "tessel_SpatialStructure"), reference("site_id", "tessel_Site")}})),
    unique("site_name_i", "tessel_Building", {"site_id", "name"}),
    table("tessel_Story",
          {plainId(), integer("building_id"), text("name"), emptyText("description"), real("elevation"),
           integer("entrance_level", 0), integer("above_ground", 1), integer("sprinkler_protection", 0),
           integer("sprinkler_protection_automatic", 0), real("gross_area_planned"), real("net_area_planned"),
           owner("id", "tessel_SpatialStructure"), reference("building_id", "tessel_Building")}),
    unique("building_name_i", "tessel_Story", {"building_id", "name"}),
    table("tessel_Project",
          {plainId(), text("name"), nullableInteger("site_id") + " DEFAULT 0", reference("site_id", "tessel_Site")}),
    unique("name_i", "tessel_Project", {"name"}),
    table("tessel_Meta", {plainId(), integer("unit", 1)}),
  };
}

Texts unitTables() {
  return {
    table("tessel_Measure",
          {generatedId(), text("name"), emptyText("description"), integer("length", 0), integer("mass", 0),
           integer("time", 0), integer("thermodynamic_temperature", 0), integer("electric_current", 0),
           integer("luminous_intensity", 0), integer("amount_of_substance", 0)}),
    unique("name_i", "tessel_Measure", {"name"}),
    table("tessel_Unit", {generatedId(), nullableText("name"), text("label"), "\"scale\" REAL NOT NULL DEFAULT 1",
                          integer("measure_id"), reference("measure_id", "tessel_Measure")}),
    unique("name_i", "tessel_Unit", {"name"}),
    unique("measure_label_i", "tessel_Unit", {"measure_id", "label"}),
    table("tessel_ColumnUnit",
          {generatedId(), text("table"), text("column"), integer("unit_id"), reference("unit_id", "tessel_Unit")}),
    unique("table_column_i", "tessel_ColumnUnit", {"table", "column"}),
    table("tessel_DefaultUnit", {plainId("measure_id"), nullableInteger("unit_id"),
                                 reference("measure_id", "tessel_Measure"), reference("unit_id", "tessel_Unit")}),
  };
}

Texts catalogueTables() {
  return {
    table("tessel_EntityType", {generatedId(), text("name")}),
    unique("name_i", "tessel_EntityType", {"name"}),
    table("tessel_PropertyNamespace",
          {generatedId(), text("name"), nullableText("label"), integer("editable", 1), integer("visible", 1)}),
    unique("name_i", "tessel_PropertyNamespace", {"name"}),
    unique("label_i", "tessel_PropertyNamespace", {"label"}),
    table("tessel_PropertyDefinition",
          {generatedId(), integer("namespace_id"), text("name"), nullableText("label"), emptyText("description"),
           integer("type_structure", 1), integer("type_value_type", 11), integer("type_key_type", 0),
           emptyText("type_spec"), nullableInteger("unit_id"), emptyText("default_value"), nullableText("ifc_name"),
           integer("visible", 1), reference("namespace_id", "tessel_PropertyNamespace"),
           reference("unit_id", "tessel_Unit")}),
    unique("name_ns_i", "tessel_PropertyDefinition", {"name", "namespace_id"}),
    table("tessel_PropertySet",
          {generatedId(), integer("namespace_id"), text("name"), nullableText("label"), integer("per_instance", 0),
           integer("visible", 1), reference("namespace_id", "tessel_PropertyNamespace")}),
    unique("name_ns_i", "tessel_PropertySet", {"name", "namespace_id"}),
    unique("label_i", "tessel_PropertySet", {"label"}),
  };
}

Texts step1001() {
  return concatenated(
    {unitTables(), catalogueTables(),
     container("tessel_PropertySet_property_definitions", "tessel_PropertySet", {integer("property_definition_id")},
               {reference("property_definition_id", "tessel_PropertyDefinition")}),
     container("tessel_PropertySet_entity_types", "tessel_PropertySet", {integer("entity_type_id")},
               {reference("entity_type_id", "tessel_EntityType")})});
}

Texts step1003() {
  return {add("tessel_PropertyNamespace", integer("revision", 0)),
          add("tessel_PropertyDefinition", nullableInteger("ifc_type"))};
}

Texts step1004() { return {add("tessel_PropertyDefinition", emptyText("type_spec2"))}; }

Texts step1005() {
  return {add("tessel_Site", emptyText("long_name")), add("tessel_Building", emptyText("long_name")),
          add("tessel_Story", emptyText("long_name"))};
}

Texts step1006() {
  return {
    table("tessel_Space",
          {plainId(), integer("parent_id"), text("name"), emptyText("long_name"), emptyText("description"),
           emptyText("category"), emptyText("floor_covering"), emptyText("wall_covering"),
           emptyText("ceiling_covering"), emptyText("skirting_board"), real("gross_planned_area"),
           real("net_planned_area"), integer("publicly_accessible", 0), integer("handicap_accessible", 0),
           integer("concealed_flooring", 0), integer("concealed_ceiling", 0), owner("id", "tessel_SpatialStructure"),
           reference("parent_id", "tessel_SpatialStructure")}),
    unique("parent_name_i", "tessel_Space", {"parent_id", "name"}),
  };
}

Texts step1007() {
  return concatenated(
    {{table("tessel_ValueDefinition",
            {generatedId(), text("name"), nullableText("label"), emptyText("description"), nullableInteger("unit_id"),
             nullableText("ifc_name"), nullableInteger("ifc_type"), integer("type_structure", 1),
             integer("type_value_type", 11), integer("type_key_type", 0), integer("visible", 1),
             integer("namespace_id"), emptyText("value_spec"), reference("unit_id", "tessel_Unit"),
             reference("namespace_id", "tessel_PropertyNamespace")}),
      unique("name_ns_i", "tessel_ValueDefinition", {"name", "namespace_id"})},
     container("tessel_PropertySet_value_definitions", "tessel_PropertySet", {integer("value_definition_id")},
               {reference("value_definition_id", "tessel_ValueDefinition")})});
}

Texts step1008() {
  return {"DELETE FROM \"tessel_SpatialStructure\" WHERE \"id\" IN (SELECT \"id\" FROM \"tessel_Space\")",
          "DROP TABLE \"tessel_Space\""};
}

Texts step1009() {
  Texts columns = {nullableText("models_folder"), nullableText("sheets_folder"), nullableText("sheet_set_filename")};
  for (const char* system : {"metric", "imperial"}) {
    for (const char* margin : {"page_left", "page_right", "page_top", "page_bottom", "between", "label_space"}) {
      columns.push_back(real(std::string("sheet_margins_") + system + "_" + margin));
    }
  }
  Texts statements;
  for (const std::string& column : columns) {
    statements.push_back(add("tessel_Project", column));
  }
  return concatenated(
    {statements, container("tessel_Project_master_drawings", "tessel_Project", {text("filename")}),
     container("tessel_Project_sheet_categories", "tessel_Project",
               {text("name"), text("prefix"), integer("number_start", 0), integer("number_width", -1)})});
}

}  // namespace

std::vector<std::string> oldSchema(int version) {
  // Step 1002 is about the project row only.
  const Texts steps[] = {step1001(), {},         step1003(), step1004(), step1005(),
                         step1006(), step1007(), step1008(), step1009()};
  Texts statements = base();
  for (int step = 1001; step <= version; ++step) {
    const Texts& next = steps[step - 1001];
    statements.insert(statements.end(), next.begin(), next.end());
  }
  return statements;
}

}  // namespace tessel::test
