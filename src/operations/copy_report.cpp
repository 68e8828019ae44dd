#include <tessel/copy_report.h>

#include <algorithm>
#include <tuple>

#include <odb/sqlite/database.hxx>

#include <tessel/exceptions.h>
#include <tessel/project_db.h>
#include <tessel/unit_conversion.h>

#include "database/operation.h"
#include "database/project_db_impl.h"
#include "operations/all_traits.h"
#include "operations/class_list.h"
#include "operations/finder.h"
#include "operations/prepared_query.h"
#include "units/dimensioned_columns.h"

namespace tessel {
namespace {

/// What keeps the objects of a class from being copied.
struct Obstacle {
  LeftBehindReason reason;
  OdString column;
};

/// Whether a number can be converted does not depend on the number, so any will do.
template <typename T>
Obstacle obstacleOf(const ProjectDb& source, const ProjectDb& destination) {
  if constexpr (hasDimensionedColumns<T>) {
    for (const DimensionedColumn<T>& column : DimensionedColumns<T>::columns) {
      const TsSmartPtr<const Unit> from = source.columnUnit<T>(column.getter);
      const TsSmartPtr<const Unit> to = destination.columnUnit<T>(column.getter);
      try {
        convertUnit(0, from.get(), to.get());
      } catch (const UnitConversionNotPossible&) {
        return {from ? LeftBehindReason::NoUnitInDestination : LeftBehindReason::NoUnitInSource, column.name};
      } catch (const InvalidUnitConversion&) {
        return {LeftBehindReason::DimensionsDiffer, column.name};
      }
    }
  }
  return {LeftBehindReason::NotCopied, {}};
}

struct NamedRow {
  unsigned int id;
};

template <typename T>
OdString nameOf(const ProjectDb&, unsigned int id) {
  using Query = odb::query<T>;
  auto query = preparedQuery<typename ClassTraits<T>::NameView>(
    NamedRow{id}, [](const NamedRow& row) { return Condition(Query::id == Query::_ref(row.id)); });
  auto rows = query.execute();
  const auto row = rows.begin();
  return row == rows.end() ? OdString() : row->name;
}

/// A unit need not have a name, and what it is called instead is in no view. One that cannot be loaded stays nameless.
template <>
OdString nameOf<Unit>(const ProjectDb& source, unsigned int id) {
  try {
    const TsSmartPtr<Unit> unit = Finder<Unit>(source).byId(id);
    return unit->has_name() ? unit->name() : unit->label();
  } catch (const odb::object_not_persistent&) {
    return {};
  }
}

/// In the order of their names, and of their ids where names are equal. Only the ids of the rest are read.
template <typename T>
std::vector<LeftBehind> objectsWithoutEntry(const ProjectDb& source, const IdMapping& mapping) {
  std::vector<LeftBehind> objects = readOperation(source, [&] {
    std::vector<ObjectKey> keys;
    for (const auto& row : source.impl().database->query<typename ClassTraits<T>::IdView>()) {
      const ObjectKey key{ObjectTraits<T>::type, row.id};
      if (!mapping.has({key.type, key.id, &source})) keys.push_back(key);
    }
    std::vector<LeftBehind> named;
    for (const ObjectKey& key : keys) {
      named.push_back({key, nameOf<T>(source, key.id), LeftBehindReason::NotCopied, {}});
    }
    return named;
  });
  std::sort(objects.begin(), objects.end(),
            [](const LeftBehind& a, const LeftBehind& b) { return std::tie(a.name, a.key) < std::tie(b.name, b.key); });
  return objects;
}

}  // namespace

// The two files are read by turns, never one within an operation on the other: that would set aside a transaction of
// the host and not see what was written in it.
std::vector<LeftBehind> leftBehind(const ProjectDb& source, const ProjectDb& destination, const IdMapping& mapping) {
  std::vector<LeftBehind> list;
  forEachClass(SavedClasses(), [&](auto tag) {
    using T = typename decltype(tag)::type;
    const std::vector<LeftBehind> objects = objectsWithoutEntry<T>(source, mapping);
    if (objects.empty()) return;
    const Obstacle obstacle = obstacleOf<T>(source, destination);
    for (const LeftBehind& object : objects) {
      list.push_back({object.key, object.name, obstacle.reason, obstacle.column});
    }
  });
  return list;
}

}  // namespace tessel
