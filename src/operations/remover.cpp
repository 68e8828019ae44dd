#include "operations/remover.h"

#include <typeinfo>

#include <odb/sqlite/database.hxx>

#include "database/project_db_impl.h"
#include "database/transaction_scope.h"
#include "operations/all_traits.h"
#include "operations/class_list.h"
#include "operations/dependants.h"

namespace tessel {
namespace {

/// Once the owner is gone, and as a batch of its own: if one is in use elsewhere, that is an exception.
void removeDependants(ProjectDb& db, const std::set<ObjectKey>& dependants) {
  if (!dependants.empty()) db.remove(dependants);
}

/// An object may be of a class derived from the one that it is removed as; its own class decides which rows go.
template <typename T>
void eraseObject(odb::sqlite::database& database, const T& object) {
  if (typeid(object) == typeid(T)) {
    database.erase<T>(object.id());
  } else {
    database.erase(object);
  }
}

}  // namespace

template <typename T>
bool Remover<T>::isRefused(unsigned int id) {
  const ObjectKey key{ObjectTraits<T>::type, id};
  return db_.impl().reactor->onRemove(db_.shared_from_this(), key) != RemoveResolution::Remove;
}

template <typename T>
RemoveResult Remover<T>::remove(const TsSmartPtr<T>& object) {
  if (isRefused(object->id())) return {RemoveResult::Refused};
  const std::set<ObjectKey> dependants = dependantsOf(*object);
  requireTransaction();
  eraseObject(*db_.impl().database, *object);
  Transaction::current().commit();
  object->impl().projectDb.reset();
  object->impl().id = 0;
  removeDependants(db_, dependants);
  return {RemoveResult::Removed};
}

template <typename T>
RemoveResult Remover<T>::remove(unsigned int id) {
  const std::set<ObjectKey> dependants = dependantsOf<T>(db_, id);
  const RemoveResult result = removeRow(id);
  if (result.outcome == RemoveResult::Removed) removeDependants(db_, dependants);
  return result;
}

template <typename T>
RemoveResult Remover<T>::removeRow(unsigned int id) {
  if (isRefused(id)) return {RemoveResult::Refused};
  requireTransaction();
  db_.impl().database->template erase<T>(id);
  Transaction::current().commit();
  return {RemoveResult::Removed};
}

template <typename T>
void Remover<T>::removeEach(const std::set<unsigned int>& ids, Transaction& transaction, RemoveResults& results) {
  for (const unsigned int id : ids) {
    const RemoveResult result = removeRow(id);
    if (transaction.finalized()) transaction.reset(true);
    results[{ObjectTraits<T>::type, id}] = result;
  }
}

template <typename T>
std::set<unsigned int> Remover<T>::allIds() const {
  using View = typename ClassTraits<T>::IdView;
  std::set<unsigned int> ids;
  for (const View& row : db_.impl().database->template query<View>()) ids.insert(row.id);
  return ids;
}

void removeKeys(ProjectDb& db, const std::set<ObjectKey>& keys, Transaction& transaction, RemoveResults& results) {
  forEachClass(SavedClasses(), [&](auto tag) {
    using T = typename decltype(tag)::type;
    std::set<unsigned int> ids;
    for (const ObjectKey& key : keys) {
      if (key.type == ObjectTraits<T>::type) ids.insert(key.id);
    }
    Remover<T>(db).removeEach(ids, transaction, results);
  });
}

template class Remover<SpatialStructure>;
template class Remover<Site>;
template class Remover<Building>;
template class Remover<Story>;
template class Remover<EntityType>;
template class Remover<PropertyNamespace>;
template class Remover<PropertyDefinition>;
template class Remover<ValueDefinition>;
template class Remover<PropertySet>;
template class Remover<Measure>;
template class Remover<Unit>;

}  // namespace tessel
