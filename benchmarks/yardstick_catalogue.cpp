#include "yardstick_catalogue.h"

namespace tessel::benchmarks::yardstick {
namespace {

const Table namespaceTable{"tessel_PropertyNamespace", {"id", "name", "label", "editable", "visible", "revision"}};
const Table entityTypeTable{"tessel_EntityType", {"id", "name"}};
const Table definitionTable{"tessel_PropertyDefinition",
                            {"id", "name", "label", "description", "unit_id", "ifc_name", "ifc_type", "type_structure",
                             "type_value_type", "type_key_type", "visible", "namespace_id", "type_spec", "type_spec2",
                             "default_value"}};
const Table valueDefinitionTable{"tessel_ValueDefinition",
                                 {"id", "name", "label", "description", "unit_id", "ifc_name", "ifc_type",
                                  "type_structure", "type_value_type", "type_key_type", "visible", "namespace_id",
                                  "value_spec"}};
const Table setTable{"tessel_PropertySet",
                     {"id", "namespace_id", "name", "label", "per_instance", "ifc_name", "visible"}};

/// The rows of a set in one of its lists.
Table members(const std::string& list, const std::string& column) {
  return {"tessel_PropertySet_" + list, {"object_id", "index", column}};
}

const Table properties = members("property_definitions", "property_definition_id");
const Table values = members("value_definitions", "value_definition_id");
const Table entityTypesOfSet = members("entity_types", "entity_type_id");

std::string listOf(const Table& table) { return selectFrom(table, "ORDER BY \"" + table.name + "\".\"name\""); }

std::string named(const Table& table) { return selectFrom(table, "WHERE \"" + table.name + "\".\"name\"=?"); }

std::string membersOf(const Table& list) {
  return "SELECT \"index\", \"" + list.columns.back() + "\" FROM \"" + list.name +
         R"(" WHERE "object_id"=? ORDER BY "index")";
}

std::string deleteFrom(const Table& list) { return "DELETE FROM \"" + list.name + R"(" WHERE "object_id"=?)"; }

void read(const Statement& row, Namespace& ns) {
  row.read(ns.id, ns.name, ns.label, ns.editable, ns.visible, ns.revision);
}

void read(const Statement& row, EntityType& type) { row.read(type.id, type.name); }

template <typename Record>
std::unique_ptr<Record> firstOf(Statement& query) {
  if (!query.step()) return nullptr;
  auto record = std::make_unique<Record>();
  read(query, *record);
  return record;
}

template <typename Record>
std::unique_ptr<Record> byId(Statement& query, unsigned int id) {
  query.bind(id);
  auto record = firstOf<Record>(query);
  query.reset();
  return record;
}

template <typename Record>
std::vector<Record> allOf(const Session& session, const Table& table) {
  Statement list(session.connection(), listOf(table));
  std::vector<Record> records;
  while (list.step()) read(list, records.emplace_back());
  return records;
}

}  // namespace

CatalogueTables::CatalogueTables(Session& session, UnitTables& units)
    : session_(session), units_(units), findNamespace_(session.connection(), selectById(namespaceTable)),
      findEntityType_(session.connection(), selectById(entityTypeTable)),
      findDefinition_(session.connection(), selectById(definitionTable)),
      listProperties_(session.connection(), membersOf(properties)),
      listValues_(session.connection(), membersOf(values)),
      listEntityTypes_(session.connection(), membersOf(entityTypesOfSet)),
      insertNamespace_(session.connection(), insertInto(namespaceTable)),
      insertEntityType_(session.connection(), insertInto(entityTypeTable)),
      insertDefinition_(session.connection(), insertInto(definitionTable)),
      insertSet_(session.connection(), insertInto(setTable)),
      insertProperty_(session.connection(), insertInto(properties)),
      insertEntityTypeOfSet_(session.connection(), insertInto(entityTypesOfSet)),
      updateSet_(session.connection(), updateOf(setTable)),
      deleteProperties_(session.connection(), deleteFrom(properties)),
      deleteValues_(session.connection(), deleteFrom(values)),
      deleteEntityTypes_(session.connection(), deleteFrom(entityTypesOfSet)) {}

std::unique_ptr<Namespace> CatalogueTables::ns(unsigned int id) { return byId<Namespace>(findNamespace_, id); }

std::unique_ptr<EntityType> CatalogueTables::entityType(unsigned int id) {
  return byId<EntityType>(findEntityType_, id);
}

std::unique_ptr<Definition> CatalogueTables::definition(unsigned int id) {
  findDefinition_.bind(id);
  check(session_.connection().get(), findDefinition_.step());
  auto definition = std::make_unique<Definition>(definitionOf(findDefinition_));
  findDefinition_.reset();
  return definition;
}

std::unique_ptr<Namespace> CatalogueTables::namespaceNamed(const Text& name) {
  static const std::string text = named(namespaceTable);
  Statement query(session_.connection(), text);
  query.bind(name);
  return firstOf<Namespace>(query);
}

std::unique_ptr<EntityType> CatalogueTables::entityTypeNamed(const Text& name) {
  static const std::string text = named(entityTypeTable);
  Statement query(session_.connection(), text);
  query.bind(name);
  return firstOf<EntityType>(query);
}

bool CatalogueTables::hasSet(const Text& name, unsigned int ns) {
  static const std::string text = named(setTable) + R"( AND "tessel_PropertySet"."namespace_id"=?)";
  Statement query(session_.connection(), text);
  query.bind(name, ns);
  return query.step();
}

std::vector<Namespace> CatalogueTables::namespaces() { return allOf<Namespace>(session_, namespaceTable); }

std::vector<EntityType> CatalogueTables::entityTypes() { return allOf<EntityType>(session_, entityTypeTable); }

std::vector<Definition> CatalogueTables::definitions() {
  Statement list(session_.connection(), listOf(definitionTable));
  std::vector<Definition> result;
  while (list.step()) result.push_back(definitionOf(list));
  return result;
}

std::vector<PropertySet> CatalogueTables::sets() {
  Statement list(session_.connection(), listOf(setTable));
  std::vector<PropertySet> result;
  while (list.step()) result.push_back(setOf(list));
  return result;
}

bool CatalogueTables::hasValueDefinitions() {
  return Statement(session_.connection(), listOf(valueDefinitionTable)).step();
}

Definition CatalogueTables::definitionOf(const Statement& row) {
  Definition d;
  std::optional<unsigned int> unit;
  unsigned int owner = 0;
  row.read(d.id, d.name, d.label, d.description, unit, d.ifc_name, d.ifc_type, d.type.structure, d.type.value_type,
           d.type.key_type, d.visible, owner, d.type_spec, d.type_spec2, d.default_value);
  if (unit) d.unit = units_.unit(*unit);
  d.ns = ns(owner);
  return d;
}

PropertySet CatalogueTables::setOf(const Statement& row) {
  PropertySet set;
  unsigned int owner = 0;
  row.read(set.id, owner, set.name, set.label, set.per_instance, set.ifc_name, set.visible);
  set.ns = ns(owner);
  for (unsigned int id : members(listProperties_, set.id)) set.property_definitions.push_back(definition(id));
  if (!members(listValues_, set.id).empty()) throw std::runtime_error("no work here has definitions of values");
  for (unsigned int id : members(listEntityTypes_, set.id)) set.entity_types.push_back(entityType(id));
  return set;
}

std::vector<unsigned int> CatalogueTables::members(Statement& list, unsigned int set) {
  std::vector<unsigned int> ids;
  unsigned int index = 0;
  list.bind(set);
  while (list.step()) list.read(index, ids.emplace_back());
  list.reset();
  return ids;
}

void CatalogueTables::insert(Namespace& ns) {
  Savepoint savepoint(session_);
  insertNamespace_.run(nullptr, ns.name, ns.label, ns.editable, ns.visible, ns.revision);
  ns.id = session_.lastId();
  savepoint.release();
}

void CatalogueTables::insert(EntityType& type) {
  Savepoint savepoint(session_);
  insertEntityType_.run(nullptr, type.name);
  type.id = session_.lastId();
  savepoint.release();
}

void CatalogueTables::insert(Definition& d) {
  Savepoint savepoint(session_);
  const std::optional<unsigned int> unit = d.unit ? std::optional(d.unit->id) : std::nullopt;
  insertDefinition_.run(nullptr, d.name, d.label, d.description, unit, d.ifc_name, d.ifc_type, d.type.structure,
                        d.type.value_type, d.type.key_type, d.visible, d.ns->id, d.type_spec, d.type_spec2,
                        d.default_value);
  d.id = session_.lastId();
  savepoint.release();
}

void CatalogueTables::insert(PropertySet& set) {
  insertNewDefinitions(set);
  Savepoint savepoint(session_);
  insertSet_.run(nullptr, set.ns->id, set.name, set.label, set.per_instance, set.ifc_name, set.visible);
  set.id = session_.lastId();
  insertMembers(set);
  savepoint.release();
}

/// The order in a list is told by its rows alone, so all of them are written anew.
void CatalogueTables::update(PropertySet& set) {
  insertNewDefinitions(set);
  Savepoint savepoint(session_);
  updateSet_.run(set.ns->id, set.name, set.label, set.per_instance, set.ifc_name, set.visible, set.id);
  deleteProperties_.run(set.id);
  deleteValues_.run(set.id);
  deleteEntityTypes_.run(set.id);
  insertMembers(set);
  savepoint.release();
}

void CatalogueTables::insertNewDefinitions(PropertySet& set) {
  for (const auto& definition : set.property_definitions) {
    if (definition->id == 0) insert(*definition);
  }
}

void CatalogueTables::insertMembers(const PropertySet& set) {
  unsigned int index = 0;
  for (const auto& definition : set.property_definitions) insertProperty_.run(set.id, index++, definition->id);
  index = 0;
  for (const auto& type : set.entity_types) insertEntityTypeOfSet_.run(set.id, index++, type->id);
}

}  // namespace tessel::benchmarks::yardstick
