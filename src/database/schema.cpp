#include "database/schema.h"

#include <odb/database.hxx>
#include <odb/schema-catalog-impl.hxx>

#include "database/tables.h"

namespace tessel {
namespace {

// A table comes after those it refers to.
constexpr const Table* creationOrder[] = {
  &tables::measure,
  &tables::unit,
  &tables::columnUnit,
  &tables::defaultUnit,
  &tables::spatialStructure,
  &tables::site,
  &tables::building,
  &tables::story,
  &tables::project,
  &tables::projectMasterDrawings,
  &tables::projectSheetCategories,
  &tables::entityType,
  &tables::propertyNamespace,
  &tables::propertyDefinition,
  &tables::valueDefinition,
  &tables::propertySet,
  &tables::propertySetPropertyDefinitions,
  &tables::propertySetValueDefinitions,
  &tables::propertySetEntityTypes,
  &tables::meta,
};

// Only tables with names of ours go: the file may hold others that are not our business.
void dropTables(odb::database& database) {
  for (auto table = std::rbegin(creationOrder); table != std::rend(creationOrder); ++table) {
    database.execute("DROP TABLE IF EXISTS \"" + std::string((*table)->name) + "\"");
  }
  createTable(database, tables::schemaVersion);
  database.execute(R"(DELETE FROM "schema_version" WHERE "name" = ')" + schemaName + "'");
}

void createTables(odb::database& database) {
  for (const Table* table : creationOrder) {
    createTable(database, *table);
  }
}

void writeVersionRow(odb::database& database) {
  createTable(database, tables::schemaVersion);
  database.execute(R"(INSERT OR IGNORE INTO "schema_version" ("name", "version", "migration") VALUES (')" + schemaName +
                   "', " + std::to_string(currentVersion) + ", 0)");
}

// The catalogue calls this with pass 1, and with pass 2 if the answer to the first is true.
bool createSchema(odb::database& database, unsigned short pass, bool drop) {
  if (drop) {
    if (pass == 2) {
      dropTables(database);
    }
  } else if (pass == 1) {
    createTables(database);
  } else {
    writeVersionRow(database);
  }
  return pass == 1;
}

const odb::schema_catalog_create_entry createEntry(odb::id_sqlite, schemaName.c_str(), &createSchema);

}  // namespace
}  // namespace tessel
