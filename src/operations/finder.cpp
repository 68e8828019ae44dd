#include "operations/finder.h"

#include <optional>

#include <odb/sqlite/database.hxx>

#include "database/connection_lock.h"
#include "database/project_db_impl.h"
#include "operations/all_traits.h"
#include "operations/prepared_query.h"

namespace tessel {
namespace {

odb::sqlite::database& databaseOf(const ProjectDb& db) { return *db.impl().database; }

struct RowId {
  unsigned int id;
};

template <typename T, typename = void>
struct HasNameView : std::false_type {};
template <typename T>
struct HasNameView<T, std::void_t<typename ClassTraits<T>::NameView>> : std::true_type {};

/// What a report calls a row. "%ud" is no slip to be mended: hosts know the text as "Unit:12d".
template <typename T>
OdString rowName(odb::sqlite::database& database, unsigned int id) {
  if constexpr (HasNameView<T>::value) {
    using View = typename ClassTraits<T>::NameView;
    for (const View& row : database.query<View>(odb::query<T>::id == id)) return row.name;
    return {};
  } else {
    return OdString::format(L"%ls:%ud", ClassTraits<T>::className, id);
  }
}

}  // namespace

template <typename T>
TsSmartPtr<T> Finder<T>::byId(unsigned int id) const {
  if (id == 0) return {};
  const ConnectionLock lock;
  return databaseOf(db_).template load<T>(id);
}

/// ODB loads no object of an abstract class by id, but it does so by query.
template <>
TsSmartPtr<SpatialStructure> Finder<SpatialStructure>::byId(unsigned int id) const {
  if (id == 0) return {};
  using Query = odb::query<SpatialStructure>;
  auto query = preparedQuery<SpatialStructure>(
    RowId{id}, [](const RowId& key) { return Condition(Query::id == Query::_ref(key.id)); });
  odb::result<SpatialStructure> rows = query.execute();
  auto row = rows.begin();
  if (row == rows.end()) throw odb::object_not_persistent();
  return row.load();
}

template <typename T>
bool Finder<T>::hasRow(unsigned int id) const {
  using View = typename ClassTraits<T>::IdView;
  return !databaseOf(db_).template query<View>(odb::query<View>(odb::query<T>::id == id)).empty();
}

template <typename T>
template <typename Key>
TsSmartPtr<T> Finder<T>::byKey(const Key& key) const {
  unsigned int failed = 0;
  {
    const ConnectionLock lock;
    auto query = preparedQuery<T>(key, &ClassTraits<T>::matches);
    odb::result<T> rows = query.execute();
    for (auto row = rows.begin(); row != rows.end(); ++row) {
      try {
        return row.load();
      } catch (const odb::object_not_persistent&) {
        failed = row.id();
        break;
      }
    }
  }
  // Told only now, because the reactor may use the same query.
  if (failed != 0) reportFailedLoad(failed);
  return {};
}

template <typename T>
template <typename Key>
bool Finder<T>::exists(const Key& key) const {
  using View = typename ClassTraits<T>::IdView;
  auto query = preparedQuery<View>(key, &ClassTraits<T>::matches);
  odb::result<View> rows = query.execute();
  return !rows.empty();
}

template <typename T>
void Finder<T>::list(std::vector<TsSmartPtr<T>>& objects, const Criteria& criteria) const {
  using Traits = ClassTraits<T>;
  const Condition condition = Traits::order(Traits::condition(criteria), criteria);
  std::optional<ConnectionLock> lock(std::in_place);
  odb::result<T> rows = databaseOf(db_).template query<T>(odb::query<T>(condition));
  for (auto row = rows.begin(); row != rows.end(); ++row) {
    try {
      objects.push_back(row.load());
    } catch (const odb::object_not_persistent&) {
      lock.reset();
      reportFailedLoad(row.id());
      lock.emplace();
    }
  }
}

template <typename T>
unsigned long long Finder<T>::count(const Criteria& criteria) const {
  using View = typename ClassTraits<T>::CountView;
  return databaseOf(db_).template query_value<View>(odb::query<View>(ClassTraits<T>::condition(criteria))).count;
}

template <typename T>
void Finder<T>::reportFailedLoad(unsigned int id) const {
  const OdString name = rowName<T>(databaseOf(db_), id);
  db_.impl().reactor->onLoadFailed(db_.shared_from_this(), {ObjectTraits<T>::type, id}, name);
}

template class Finder<SpatialStructure>;
template class Finder<Site>;
template class Finder<Building>;
template class Finder<Story>;
template class Finder<EntityType>;
template class Finder<PropertyNamespace>;
template class Finder<PropertyDefinition>;
template class Finder<ValueDefinition>;
template class Finder<PropertySet>;
template class Finder<Measure>;
template class Finder<Unit>;

template TsSmartPtr<Site> Finder<Site>::byKey(const NameKey&) const;
template TsSmartPtr<Building> Finder<Building>::byKey(const NameObjectKey<Site>&) const;
template TsSmartPtr<Story> Finder<Story>::byKey(const NameObjectKey<Building>&) const;
template TsSmartPtr<EntityType> Finder<EntityType>::byKey(const NameKey&) const;
template TsSmartPtr<PropertyNamespace> Finder<PropertyNamespace>::byKey(const NameKey&) const;
template TsSmartPtr<PropertyDefinition>
Finder<PropertyDefinition>::byKey(const NameObjectKey<PropertyNamespace>&) const;
template TsSmartPtr<ValueDefinition> Finder<ValueDefinition>::byKey(const NameObjectKey<PropertyNamespace>&) const;
template TsSmartPtr<PropertySet> Finder<PropertySet>::byKey(const NameObjectKey<PropertyNamespace>&) const;
template TsSmartPtr<Measure> Finder<Measure>::byKey(const NameKey&) const;
template TsSmartPtr<Unit> Finder<Unit>::byKey(const NameKey&) const;

template bool Finder<Site>::exists(const NameKey&) const;
template bool Finder<Building>::exists(const NameObjectKey<Site>&) const;
template bool Finder<Story>::exists(const NameObjectKey<Building>&) const;
template bool Finder<EntityType>::exists(const NameKey&) const;
template bool Finder<PropertyNamespace>::exists(const NameKey&) const;
template bool Finder<PropertyDefinition>::exists(const NameObjectKey<PropertyNamespace>&) const;
template bool Finder<ValueDefinition>::exists(const NameObjectKey<PropertyNamespace>&) const;
template bool Finder<PropertySet>::exists(const NameObjectKey<PropertyNamespace>&) const;

}  // namespace tessel
