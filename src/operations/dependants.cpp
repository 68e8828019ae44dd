#include "operations/dependants.h"

#include <odb/sqlite/database.hxx>

#include <tessel/definitions.h>
#include <tessel/mapping-odb.hxx>

#include "database/project_db_impl.h"

namespace tessel {
namespace {

// A member that was never saved has no row to go.
template <typename Members>
void addMembers(std::set<ObjectKey>& keys, ObjectType type, const Members& members) {
  for (const auto& member : members) {
    if (member->id() != 0) keys.insert({type, member->id()});
  }
}

template <typename View>
void addRows(std::set<ObjectKey>& keys, ObjectType type, const ProjectDb& db, unsigned int setId) {
  const odb::query<View> ofSet(odb::query<PropertySet>::id == setId);
  for (const View& row : db.impl().database->query<View>(ofSet)) keys.insert({type, row.id});
}

}  // namespace

template <>
std::set<ObjectKey> dependantsOf(const PropertySet& set) {
  std::set<ObjectKey> keys;
  addMembers(keys, ObjectType::PropertyDefinition, set.property_definitions());
  addMembers(keys, ObjectType::ValueDefinition, set.value_definitions());
  return keys;
}

template <>
std::set<ObjectKey> dependantsOf<PropertySet>(const ProjectDb& db, unsigned int id) {
  std::set<ObjectKey> keys;
  addRows<PropertySetDefinitionView>(keys, ObjectType::PropertyDefinition, db, id);
  addRows<PropertySetValDefinitionView>(keys, ObjectType::ValueDefinition, db, id);
  return keys;
}

}  // namespace tessel
