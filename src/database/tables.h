#pragma once

#include <initializer_list>

namespace odb {
class database;
}

namespace tessel {

/// The statements that make one table and then its indexes, in this order. All texts are literals.
struct Table {
  const char* name;
  std::initializer_list<const char*> statements;
};

/// Runs the statements on the thread's current transaction. An ODB exception tells the first that failed.
void createTable(odb::database& database, const Table& table);

/// The tables of the current version. The class mappings name the same columns, and a test holds the two
/// together.
///
/// A migration step that brings in a table as it stands today refers to it here. When a table changes, its
/// old form moves into the steps that made it: what a step writes must never change.
namespace tables {

extern const Table measure;
extern const Table unit;
extern const Table columnUnit;
extern const Table defaultUnit;
extern const Table spatialStructure;
extern const Table site;
extern const Table building;
extern const Table story;
extern const Table project;
extern const Table projectMasterDrawings;
extern const Table projectSheetCategories;
extern const Table entityType;
extern const Table propertyNamespace;
extern const Table propertyDefinition;
extern const Table valueDefinition;
extern const Table propertySet;
extern const Table propertySetPropertyDefinitions;
extern const Table propertySetValueDefinitions;
extern const Table propertySetEntityTypes;
extern const Table meta;

/// `schema_version` in ODB's form, to which `setCompatibility` adds our column. Nothing happens if it is
/// there.
extern const Table schemaVersion;

}  // namespace tables
}  // namespace tessel
