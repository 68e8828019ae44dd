#include <sqlite3.h>

#include <odb/sqlite/exceptions.hxx>

#include <tessel/definitions.h>
#include <tessel/exceptions.h>
#include <tessel/project_db.h>
#include <tessel/property_set.h>
#include <tessel/spatial.h>
#include <tessel/units.h>

#include "database/operation.h"
#include "operations/class_list.h"
#include "operations/remover.h"

namespace tessel {
namespace {

/// Removing one row: a refusal by the foreign keys is an outcome and no exception.
template <typename Body>
RemoveResult removeOne(ProjectDb& db, Body&& body) {
  try {
    TransactionScope scope(db);
    scope.requireLive();
    return body();
  } catch (const odb::sqlite::database_exception& error) {
    if (error.error() == SQLITE_CONSTRAINT) return {RemoveResult::InUse};
    translateOdbException(error);
  } catch (const odb::exception& error) {
    translateOdbException(error);
  }
}

/// Removing several rows: each is committed on its own, and the transaction of the scope goes on.
template <typename Body>
void removeMany(ProjectDb& db, Body&& body) {
  try {
    TransactionScope scope(db);
    scope.requireLive();
    body(scope.current());
    scope.commitOwn();
  } catch (const odb::exception& error) {
    translateOdbException(error);
  }
}

template <typename T>
void purgeClass(ProjectDb& db, Transaction& transaction, RemoveResults& results) {
  Remover<T> remover(db);
  remover.removeEach(remover.allIds(), transaction, results);
}

}  // namespace

template <typename T>
RemoveResult ProjectDb::remove(const TsSmartPtr<T>& object) {
  if (!object) throw ObjectNotFound();
  return removeOne(*this, [&] { return Remover<T>(*this).remove(object); });
}

template <typename T>
RemoveResult ProjectDb::remove(unsigned int id) {
  return removeOne(*this, [&] { return Remover<T>(*this).remove(id); });
}

template <typename T>
void ProjectDb::remove(const std::set<unsigned int>& ids, RemoveResults& results) {
  removeMany(*this, [&](Transaction& transaction) { Remover<T>(*this).removeEach(ids, transaction, results); });
}

void ProjectDb::remove(const std::set<ObjectKey>& keys, RemoveResults& results) {
  removeMany(*this, [&](Transaction& transaction) { removeKeys(*this, keys, transaction, results); });
}

void ProjectDb::remove(const std::set<ObjectKey>& keys) {
  RemoveResults results;
  remove(keys, results);
}

template <typename T>
void ProjectDb::purge(RemoveResults& results) {
  removeMany(*this, [&](Transaction& transaction) { purgeClass<T>(*this, transaction, results); });
}

void ProjectDb::purge(const std::set<ObjectType>& types, RemoveResults& results) {
  removeMany(*this, [&](Transaction& transaction) {
    forEachClass(SavedClasses(), [&](auto tag) {
      using T = typename decltype(tag)::type;
      if (types.count(ObjectTraits<T>::type) > 0) purgeClass<T>(*this, transaction, results);
    });
  });
}

void ProjectDb::purge(const std::set<ObjectType>& types) {
  RemoveResults results;
  purge(types, results);
}

void ProjectDb::purge(RemoveResults& results) { purge(typesOf(SavedClasses()), results); }

void ProjectDb::purge() {
  RemoveResults results;
  purge(results);
}

template RemoveResult ProjectDb::remove(const TsSmartPtr<SpatialStructure>&);
template RemoveResult ProjectDb::remove(const TsSmartPtr<Site>&);
template RemoveResult ProjectDb::remove(const TsSmartPtr<Building>&);
template RemoveResult ProjectDb::remove(const TsSmartPtr<Story>&);
template RemoveResult ProjectDb::remove(const TsSmartPtr<EntityType>&);
template RemoveResult ProjectDb::remove(const TsSmartPtr<PropertyNamespace>&);
template RemoveResult ProjectDb::remove(const TsSmartPtr<PropertyDefinition>&);
template RemoveResult ProjectDb::remove(const TsSmartPtr<ValueDefinition>&);
template RemoveResult ProjectDb::remove(const TsSmartPtr<PropertySet>&);
template RemoveResult ProjectDb::remove(const TsSmartPtr<Measure>&);
template RemoveResult ProjectDb::remove(const TsSmartPtr<Unit>&);

template RemoveResult ProjectDb::remove<SpatialStructure>(unsigned int);
template RemoveResult ProjectDb::remove<Site>(unsigned int);
template RemoveResult ProjectDb::remove<Building>(unsigned int);
template RemoveResult ProjectDb::remove<Story>(unsigned int);
template RemoveResult ProjectDb::remove<EntityType>(unsigned int);
template RemoveResult ProjectDb::remove<PropertyNamespace>(unsigned int);
template RemoveResult ProjectDb::remove<PropertyDefinition>(unsigned int);
template RemoveResult ProjectDb::remove<ValueDefinition>(unsigned int);
template RemoveResult ProjectDb::remove<PropertySet>(unsigned int);
template RemoveResult ProjectDb::remove<Measure>(unsigned int);
template RemoveResult ProjectDb::remove<Unit>(unsigned int);

template void ProjectDb::remove<SpatialStructure>(const std::set<unsigned int>&, RemoveResults&);
template void ProjectDb::remove<Site>(const std::set<unsigned int>&, RemoveResults&);
template void ProjectDb::remove<Building>(const std::set<unsigned int>&, RemoveResults&);
template void ProjectDb::remove<Story>(const std::set<unsigned int>&, RemoveResults&);
template void ProjectDb::remove<EntityType>(const std::set<unsigned int>&, RemoveResults&);
template void ProjectDb::remove<PropertyNamespace>(const std::set<unsigned int>&, RemoveResults&);
template void ProjectDb::remove<PropertyDefinition>(const std::set<unsigned int>&, RemoveResults&);
template void ProjectDb::remove<ValueDefinition>(const std::set<unsigned int>&, RemoveResults&);
template void ProjectDb::remove<PropertySet>(const std::set<unsigned int>&, RemoveResults&);
template void ProjectDb::remove<Measure>(const std::set<unsigned int>&, RemoveResults&);
template void ProjectDb::remove<Unit>(const std::set<unsigned int>&, RemoveResults&);

template void ProjectDb::purge<SpatialStructure>(RemoveResults&);
template void ProjectDb::purge<Site>(RemoveResults&);
template void ProjectDb::purge<Building>(RemoveResults&);
template void ProjectDb::purge<Story>(RemoveResults&);
template void ProjectDb::purge<EntityType>(RemoveResults&);
template void ProjectDb::purge<PropertyNamespace>(RemoveResults&);
template void ProjectDb::purge<PropertyDefinition>(RemoveResults&);
template void ProjectDb::purge<ValueDefinition>(RemoveResults&);
template void ProjectDb::purge<PropertySet>(RemoveResults&);
template void ProjectDb::purge<Measure>(RemoveResults&);
template void ProjectDb::purge<Unit>(RemoveResults&);

}  // namespace tessel
