#include "support/old_files.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

#include "support/old_schema.h"
#include "support/raw_file.h"

namespace tessel::test {
namespace {

// A column and its value as it stands in a statement.
using Values = std::vector<std::pair<std::string, std::string>>;

/// Writes rows; a column that the version does not have yet is left out by its `since`.
class Writer {
public:
  Writer(RawFile& file, int version) : file_(file), version_(version) {}

  int version() const { return version_; }

  void insert(const std::string& table, const Values& values, const Values& later = {}, int since = 0) {
    std::string columns, literals;
    append(values, columns, literals);
    if (version_ >= since) append(later, columns, literals);
    file_.exec("INSERT INTO \"" + table + "\" (" + columns + ") VALUES (" + literals + ")");
  }

  void exec(const std::string& sql) { file_.exec(sql); }

private:
  static void append(const Values& values, std::string& columns, std::string& literals) {
    for (const auto& [column, literal] : values) {
      columns += (columns.empty() ? "\"" : ", \"") + column + "\"";
      literals += (literals.empty() ? "" : ", ") + literal;
    }
  }

  RawFile& file_;
  int version_;
};

void insertSpatial(Writer& writer) {
  writer.exec("INSERT INTO tessel_SpatialStructure (id, typeid) VALUES (1, 'tessel::Site'), (2, 'tessel::Building'), "
              "(3, 'tessel::Story'), (4, 'tessel::Story')");
  writer.insert("tessel_Site",
                {{"id", "1"},
                 {"name", "'Hill'"},
                 {"description", "'steep'"},
                 {"site_type", "'urban'"},
                 {"ref_elevation", "12.5"},
                 {"land_title_number", "'LT 7'"},
                 {"internal_location", "'gate 2'"},
                 {"address_lines", "'Main Road 1'"},
                 {"postal_box", "'99'"},
                 {"town", "'Växjö'"},
                 {"region", "'South'"},
                 {"postal_code", "'352 30'"},
                 {"country", "'Sweden'"},
                 {"buildable_area", "300.25"},
                 {"total_area", "512"},
                 {"building_height_limit", "33.125"}},
                {{"long_name", "'Hill side'"}}, 1005);
  writer.insert("tessel_Building",
                {{"id", "2"},
                 {"site_id", "1"},
                 {"name", "'House'"},
                 {"description", "'brick'"},
                 {"elevation_of_ref_height", "13.5"},
                 {"elevation_of_terrain", "12"},
                 {"internal_location", "'left'"},
                 {"address_lines", "'Main Road 1a'"},
                 {"postal_box", "'98'"},
                 {"town", "'Lund'"},
                 {"region", "'Scania'"},
                 {"postal_code", "'222 21'"},
                 {"country", "'SE'"},
                 {"building_id", "'B-1'"},
                 {"is_permanent_id", "1"},
                 {"main_fire_use", "'office'"},
                 {"ancillary_fire_use", "'store'"},
                 {"sprinkler_protection", "1"},
                 {"sprinkler_protection_automatic", "1"},
                 {"occupancy_type", "'B'"},
                 {"gross_planned_area", "250"},
                 {"number_of_storeys", "2"},
                 {"year_of_construction", "'1999'"},
                 {"is_landmarked", "1"}},
                {{"long_name", "'House of brick'"}}, 1005);
  for (const char* id : {"3", "4"}) {
    writer.insert("tessel_Story",
                  {{"id", id},
                   {"building_id", "2"},
                   {"name", std::string("'Floor ") + id + "'"},
                   {"description", "'as built'"},
                   {"elevation", "2.75"},
                   {"entrance_level", "1"},
                   {"above_ground", "0"},
                   {"sprinkler_protection", "1"},
                   {"sprinkler_protection_automatic", "1"},
                   {"gross_area_planned", "120"},
                   {"net_area_planned", "101.5"}},
                  {{"long_name", "'The floor'"}}, 1005);
  }
}

void insertUnits(Writer& writer) {
  writer.exec("INSERT INTO tessel_Measure (id, name, description, length, mass, time) VALUES "
              "(1, 'LENGTH', 'how long', 1, 0, 0), (2, 'FORCE', 'how strong', 1, 1, -2)");
  writer.exec("INSERT INTO tessel_Unit (id, name, label, scale, measure_id) VALUES (1, NULL, 'mm', 0.001, 1), "
              "(2, 'metre', 'm', 1, 1), (3, NULL, 'N', 1, 2)");
  writer.exec("INSERT INTO tessel_DefaultUnit (measure_id, unit_id) VALUES (1, 2), (2, NULL)");
  writer.exec("INSERT INTO tessel_ColumnUnit (id, \"table\", \"column\", unit_id) VALUES "
              "(1, 'Site', 'ref_elevation', 1), (2, 'Story', 'elevation', 1)");
}

void insertCatalogue(Writer& writer) {
  writer.exec("INSERT INTO tessel_EntityType (id, name) VALUES (4, 'Door'), (5, 'Wall')");
  writer.insert("tessel_PropertyNamespace",
                {{"id", "1"}, {"name", "'fire'"}, {"label", "'Fire'"}, {"editable", "0"}, {"visible", "0"}},
                {{"revision", "8"}}, 1003);
  writer.insert("tessel_PropertyDefinition", {{"id", "2"},
                                              {"namespace_id", "1"},
                                              {"name", "'rating'"},
                                              {"label", "'Rating'"},
                                              {"description", "'minutes'"},
                                              {"type_structure", "1"},
                                              {"type_value_type", "3"},
                                              {"type_key_type", "2"},
                                              {"type_spec", "'spec'"},
                                              {"unit_id", "3"},
                                              {"default_value", "'30'"},
                                              {"ifc_name", "'FireRating'"},
                                              {"visible", "0"}});
  if (writer.version() >= 1003) writer.exec("UPDATE tessel_PropertyDefinition SET ifc_type = 5");
  if (writer.version() >= 1004) writer.exec("UPDATE tessel_PropertyDefinition SET type_spec2 = '{}'");
  writer.exec("INSERT INTO tessel_PropertySet (id, namespace_id, name, label, per_instance, visible) VALUES "
              "(3, 1, 'doors', 'Doors', 1, 0)");
  writer.exec("INSERT INTO tessel_PropertySet_property_definitions (object_id, \"index\", property_definition_id) "
              "VALUES (3, 0, 2)");
  writer.exec("INSERT INTO tessel_PropertySet_entity_types (object_id, \"index\", entity_type_id) VALUES "
              "(3, 0, 5), (3, 1, 4)");
}

void insertValueDefinition(Writer& writer) {
  writer.insert("tessel_ValueDefinition", {{"id", "6"},
                                           {"name", "'width'"},
                                           {"label", "'Width'"},
                                           {"description", "'clear'"},
                                           {"unit_id", "1"},
                                           {"ifc_name", "'Width'"},
                                           {"ifc_type", "4"},
                                           {"type_structure", "2"},
                                           {"type_value_type", "2"},
                                           {"type_key_type", "1"},
                                           {"visible", "0"},
                                           {"namespace_id", "1"},
                                           {"value_spec", "'0..'"}});
  writer.exec("INSERT INTO tessel_PropertySet_value_definitions (object_id, \"index\", value_definition_id) "
              "VALUES (3, 0, 6)");
}

void updateProjects(Writer& writer) {
  writer.exec("UPDATE tessel_Project SET site_id = 1");
  if (writer.version() < 1009) return;
  writer.exec("UPDATE tessel_Project SET models_folder = 'models', sheets_folder = 'sheets', "
              "sheet_margins_metric_page_left = 20, sheet_margins_imperial_label_space = 0.5");
  writer.exec("INSERT INTO tessel_Project_master_drawings (object_id, \"index\", filename) "
              "SELECT id, 0, 'plan.dwg' FROM tessel_Project");
  writer.exec("INSERT INTO tessel_Project_sheet_categories (object_id, \"index\", name, prefix, number_start, "
              "number_width) SELECT id, 0, 'Plans', 'P', 10, 3 FROM tessel_Project");
}

void insertContent(Writer& writer) {
  insertSpatial(writer);
  if (writer.version() >= 1001) {
    insertUnits(writer);
    insertCatalogue(writer);
  }
  if (writer.version() >= 1007) insertValueDefinition(writer);
  updateProjects(writer);
}

void insertSpaces(Writer& writer) {
  writer.exec("INSERT INTO tessel_SpatialStructure (id, typeid) VALUES (5, 'tessel::Space'), (6, 'tessel::Space')");
  writer.exec("INSERT INTO tessel_Space (id, parent_id, name, category) VALUES (5, 3, 'Hall', 'public'), "
              "(6, 5, 'Corner', '')");
}

}  // namespace

OldFile::OldFile(int version) : version_(version) {
  if (version < 1000 || version > 1009) throw std::invalid_argument("no old version: " + std::to_string(version));
}

OldFile& OldFile::metaUnit(int value) {
  metaValues_ = "(0, " + std::to_string(value) + ")";
  return *this;
}

OldFile& OldFile::withoutMetaRow() {
  metaValues_.clear();
  return *this;
}

OldFile& OldFile::projects(const std::vector<int>& ids) {
  projects_ = ids;
  return *this;
}

OldFile& OldFile::withContent() {
  content_ = true;
  return *this;
}

OldFile& OldFile::withSpaces() {
  if (version_ < 1006 || version_ > 1007) throw std::invalid_argument("no spaces in " + std::to_string(version_));
  spaces_ = true;
  return withContent();
}

void OldFile::write(const std::string& path) const {
  if (std::filesystem::exists(path)) throw std::invalid_argument(path + " is there already");
  RawFile file(path, RawFile::Access::create);
  file.exec("BEGIN");
  for (const std::string& statement : oldSchema(version_)) {
    file.exec(statement);
  }
  file.exec("INSERT INTO schema_version (name, version, migration) VALUES ('tessel', " + std::to_string(version_) +
            ", 0)");
  if (!metaValues_.empty()) file.exec("INSERT INTO tessel_Meta (id, unit) VALUES " + metaValues_);
  for (int id : projects_) {
    file.exec("INSERT INTO tessel_Project (id, name, site_id) VALUES (" + std::to_string(id) + ", 'Project " +
              std::to_string(id) + "', NULL)");
  }
  Writer writer(file, version_);
  if (content_) insertContent(writer);
  if (spaces_) insertSpaces(writer);
  file.exec("COMMIT");
}

}  // namespace tessel::test
