#include "support/old_schema.h"
#include "support/raw_file.h"
#include "yardstick.h"

namespace tessel::benchmarks {
namespace {

using yardstick::openProject;
using Texts = std::vector<std::string>;

constexpr int baseVersion = 1000;
constexpr int currentVersion = 1010;

/// The tables and indexes in their order. `schema_version` is made apart.
Texts schemaOf(const std::string& projectFile) {
  return test::RawFile(projectFile, test::RawFile::Access::readOnly)
    .column("SELECT sql FROM sqlite_master WHERE sql IS NOT NULL AND name NOT IN ('schema_version', 'sqlite_sequence') "
            "ORDER BY rowid");
}

Texts tablesOf(const std::string& projectFile) {
  return test::RawFile(projectFile, test::RawFile::Access::readOnly)
    .column("SELECT name FROM sqlite_master WHERE type = 'table' AND name LIKE 'tessel!_%' ESCAPE '!' "
            "ORDER BY rowid DESC");
}

/// What the step to `version` adds to the one before. The tests write old files by the same texts.
Texts stepTo(int version) {
  if (version == currentVersion) return {R"(ALTER TABLE "tessel_PropertySet" ADD COLUMN "ifc_name" TEXT NULL)"};
  const Texts before = test::oldSchema(version - 1);
  const Texts after = test::oldSchema(version);
  return {after.begin() + static_cast<std::ptrdiff_t>(before.size()), after.end()};
}

void createVersionTable(const Connection& connection) {
  connection.execute(R"(CREATE TABLE IF NOT EXISTS "schema_version" ("name" TEXT NOT NULL PRIMARY KEY,
  "version" INTEGER NOT NULL, "migration" INTEGER NOT NULL))");
}

void setCompatibility(const Connection& connection) {
  createVersionTable(connection);
  Statement(connection, "SELECT * FROM schema_version");
  connection.execute(R"(ALTER TABLE "schema_version" ADD COLUMN "compatibility" INTEGER NOT NULL DEFAULT 0)");
  connection.execute("UPDATE schema_version SET compatibility=1000 WHERE name='tessel'");
}

int versionOf(const Connection& connection) {
  Statement query(connection, R"(SELECT "version", "migration" FROM "schema_version" WHERE "name"='tessel')");
  int version = 0;
  if (query.step()) query.read(version);
  return version;
}

class MeasureWriter {
public:
  explicit MeasureWriter(const Connection& connection)
      : connection_(connection), insert_(connection, R"(INSERT INTO "tessel_Measure" ("id", "name", "description",
  "length", "mass", "time", "thermodynamic_temperature", "electric_current", "luminous_intensity",
  "amount_of_substance") VALUES (?, ?, '', ?, ?, 0, 0, 0, 0, 0))") {}

  int insert(const std::string& name, int length, int mass) {
    insert_.run(nullptr, name, length, mass);
    return static_cast<int>(sqlite3_last_insert_rowid(connection_.get()));
  }

private:
  const Connection& connection_;
  Statement insert_;
};

void seed(const Connection& connection, const Texts& tables, const Texts& schema) {
  for (const std::string& table : tables) connection.execute("DROP TABLE IF EXISTS \"" + table + "\"");
  createVersionTable(connection);
  connection.execute(R"(DELETE FROM "schema_version" WHERE "name"='tessel')");
  for (const std::string& statement : schema) connection.execute(statement);
  createVersionTable(connection);
  connection.execute(R"(INSERT OR IGNORE INTO "schema_version" ("name", "version", "migration")
  VALUES ('tessel', 1010, 0))");
  setCompatibility(connection);
  connection.execute(R"(INSERT INTO "tessel_Project" ("id", "name", "site_id", "models_folder", "sheets_folder",
  "sheet_set_filename") VALUES (1, '', NULL, '', '', ''))");
  MeasureWriter measures(connection);
  measures.insert("LENGTH", 1, 0);
  measures.insert("AREA", 2, 0);
  measures.insert("VOLUME", 3, 0);
  measures.insert("MASS", 0, 1);
  connection.execute(R"(INSERT INTO "tessel_Meta" ("id") VALUES (0))");
}

/// To 1001: a measure with one unit, which is its default.
int insertMeasureWithUnit(const Connection& connection, MeasureWriter& measures, const std::string& name, int length,
                          const std::string& label, double scale) {
  const int measure = measures.insert(name, length, 0);
  Statement(connection, R"(INSERT INTO "tessel_Unit" ("id", "name", "label", "scale", "measure_id")
  VALUES (?, NULL, ?, ?, ?))")
    .run(nullptr, label, scale, measure);
  const int unit = static_cast<int>(sqlite3_last_insert_rowid(connection.get()));
  Statement(connection, R"(INSERT INTO "tessel_DefaultUnit" ("measure_id", "unit_id") VALUES (?, ?))")
    .run(measure, unit);
  return unit;
}

void insertColumnUnits(const Connection& connection, int unit,
                       const std::vector<std::pair<std::string, std::string>>& columns) {
  Statement insert(connection, R"(INSERT INTO "tessel_ColumnUnit" ("id", "table", "column", "unit_id")
  VALUES (?, ?, ?, ?))");
  for (const auto& [table, column] : columns) insert.run(nullptr, table, column, unit);
}

void insertUnits(const Connection& connection) {
  Statement query(connection, R"(SELECT "unit" FROM "tessel_Meta")");
  bool metric = true;
  if (query.step()) query.read(metric);
  query.reset();
  MeasureWriter measures(connection);
  const int length =
    insertMeasureWithUnit(connection, measures, "LENGTH", 1, metric ? "mm" : "in", metric ? 0.001 : 0.0254);
  const int area =
    insertMeasureWithUnit(connection, measures, "AREA", 2, metric ? "m^2" : "ft^2", metric ? 1.0 : 0.09290304);
  insertColumnUnits(connection, length,
                    {{"Site", "ref_elevation"},
                     {"Site", "building_height_limit"},
                     {"Building", "elevation_of_ref_height"},
                     {"Building", "elevation_of_terrain"},
                     {"Story", "elevation"}});
  insertColumnUnits(connection, area,
                    {{"Site", "buildable_area"},
                     {"Site", "total_area"},
                     {"Building", "gross_planned_area"},
                     {"Story", "gross_area_planned"},
                     {"Story", "net_area_planned"}});
}

void numberProject(const Connection& connection) {
  Statement query(connection, R"(SELECT count(*) FROM "tessel_Project")");
  int count = 0;
  if (query.step()) query.read(count);
  query.reset();
  if (count == 1) connection.execute(R"(UPDATE "tessel_Project" SET "id"=1)");
}

void runStep(const Connection& connection, int version, const Texts& statements) {
  for (const std::string& statement : statements) connection.execute(statement);
  connection.execute(R"(UPDATE "schema_version" SET "version" = )" + std::to_string(version) +
                     R"(, "migration" = 1 WHERE "name" = 'tessel')");
  if (version == 1001) insertUnits(connection);
  if (version == 1002) numberProject(connection);
  connection.execute(R"(UPDATE "schema_version" SET "migration" = 0 WHERE "name" = 'tessel')");
}

void require(bool condition) {
  if (!condition) throw std::runtime_error("the file is not of the expected version");
}

/// The one record that every open handle holds.
void loadProjectRecord(const Connection& connection) {
  connection.execute("BEGIN");
  Statement query(connection, R"(SELECT "name", "site_id", ifnull("models_folder", ''), ifnull("sheets_folder", ''),
  ifnull("sheet_set_filename", ''), "sheet_margins_metric_page_left", "sheet_margins_metric_page_right",
  "sheet_margins_metric_page_top", "sheet_margins_metric_page_bottom", "sheet_margins_metric_between",
  "sheet_margins_metric_label_space", "sheet_margins_imperial_page_left", "sheet_margins_imperial_page_right",
  "sheet_margins_imperial_page_top", "sheet_margins_imperial_page_bottom", "sheet_margins_imperial_between",
  "sheet_margins_imperial_label_space" FROM "tessel_Project" WHERE "id"=?)");
  query.bind(1);
  require(query.step());
  std::string name, models, sheets, sheetSet;
  int site = 0;
  double margins[12];
  query.read(name, site, models, sheets, sheetSet, margins[0], margins[1], margins[2], margins[3], margins[4],
             margins[5], margins[6], margins[7], margins[8], margins[9], margins[10], margins[11]);
  query.reset();

  Statement drawings(connection, R"(SELECT "index", "filename" FROM "tessel_Project_master_drawings"
  WHERE "object_id"=? ORDER BY "index")");
  drawings.bind(1);
  while (drawings.step()) {
  }
  drawings.reset();
  Statement categories(connection, R"(SELECT "index", "name", "prefix", "number_start", "number_width"
  FROM "tessel_Project_sheet_categories" WHERE "object_id"=? ORDER BY "index")");
  categories.bind(1);
  while (categories.step()) {
  }
  categories.reset();
  connection.execute("ROLLBACK");
}

/// The frame of each opening. Foreign keys are off while the version is looked at and the file is made or migrated.
template <typename Prepare>
void openAndPrepare(const std::string& path, int furtherFlags, Prepare&& prepare) {
  const Connection connection = openProject(path, furtherFlags);
  connection.execute("PRAGMA foreign_keys=OFF");
  connection.execute("BEGIN");
  prepare(connection);
  connection.execute("COMMIT");
  connection.execute("PRAGMA foreign_keys=ON");
  loadProjectRecord(connection);
}

}  // namespace

YardstickFile::Schema::Schema(const std::string& projectFile)
    : tables(tablesOf(projectFile)), statements(schemaOf(projectFile)) {}

void YardstickFile::create(const std::string& path, const Schema& schema) {
  openAndPrepare(path, SQLITE_OPEN_CREATE, [&](const Connection& connection) {
    bool hasTable = true;
    try {
      versionOf(connection);
    } catch (const std::runtime_error&) {
      hasTable = false;
    }
    require(!hasTable);
    seed(connection, schema.tables, schema.statements);
  });
}

void YardstickFile::open(const std::string& path) {
  openAndPrepare(path, 0, [](const Connection& connection) { require(versionOf(connection) == currentVersion); });
}

YardstickFile::Migration::Migration() {
  for (int version = baseVersion + 1; version <= currentVersion; ++version) steps[version] = stepTo(version);
}

void YardstickFile::migrate(const std::string& path, const Migration& migration) {
  openAndPrepare(path, 0, [&](const Connection& connection) {
    require(versionOf(connection) == baseVersion);
    for (const auto& [version, statements] : migration.steps) runStep(connection, version, statements);
    setCompatibility(connection);
  });
}

}  // namespace tessel::benchmarks
