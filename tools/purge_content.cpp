#include "purge_content.h"

#include <algorithm>

#include <tessel/exceptions.h>

#include "classes.h"
#include "columns.h"
#include "object_names.h"

namespace tessel::tool {
namespace {

/// Nothing refers to what goes next. The library would begin with entity types and definitions, which sets refer to.
constexpr ObjectType purgeOrder[] = {
  ObjectType::Story,           ObjectType::Building,          ObjectType::Site,
  ObjectType::PropertySet,     ObjectType::EntityType,        ObjectType::PropertyDefinition,
  ObjectType::ValueDefinition, ObjectType::PropertyNamespace, ObjectType::Unit,
  ObjectType::Measure,
};

class Purge {
public:
  Purge(ProjectDb& db, PurgeReport& report) : db_(db), report_(report) {}

  void removeAll(ObjectType type) {
    forClass(type, [&](auto tag) { removeAll<typename decltype(tag)::type>(); });
  }

private:
  template <typename T>
  void removeAll() {
    const unsigned long long before = db_.count<T>();
    try {
      removeEach<T>();
    } catch (...) {
      countRemoved<T>(before);
      throw;
    }
    report_.unreadable += countRemoved<T>(before) - keptOf(ObjectTraits<T>::type);
  }

  /// All at once, which ends at the first that cannot go; then the others one by one, which tells those that cannot go from
  /// a file that cannot be written.
  template <typename T>
  void removeEach() {
    try {
      db_.purge<T>();
      return;
    } catch (const DatabaseException&) {
      // Nothing refers to a set, and one by one they would take their definitions along.
      if constexpr (std::is_same_v<T, PropertySet>) throw;
    }
    std::vector<TsSmartPtr<T>> objects;
    db_.get(objects);
    for (const auto& object : objects) {
      const ObjectKey key{ObjectTraits<T>::type, object->id()};
      if (db_.remove<T>(object->id()).outcome == RemoveResult::Removed) continue;
      report_.kept.push_back({key, nameOf(*object), reasonOf(*object)});
    }
  }

  /// Returns how many are left.
  template <typename T>
  unsigned long long countRemoved(unsigned long long before) {
    const unsigned long long left = db_.count<T>();
    if (left < before) report_.removed[ObjectTraits<T>::type] = before - left;
    if (left > 0) report_.complete = false;
    return left;
  }

  unsigned long long keptOf(ObjectType type) const {
    const auto isOfType = [&](const KeptObject& object) { return object.key.type == type; };
    return static_cast<unsigned long long>(std::count_if(report_.kept.begin(), report_.kept.end(), isOfType));
  }

  template <typename T>
  KeptObject::Reason reasonOf(const T&) const {
    return KeptObject::Referred;
  }

  KeptObject::Reason reasonOf(const Unit& unit) const {
    const auto standard = db_.defaultUnit(unit.measure()->name());
    bool inUse = standard && standard->id() == unit.id();
    forEachColumn([&](const char*, auto getter) {
      const auto ofColumn = db_.columnUnit(getter);
      inUse = inUse || (ofColumn && ofColumn->id() == unit.id());
    });
    return inUse ? KeptObject::UnitInUse : KeptObject::Referred;
  }

  /// Of a measure the units tell: if all that are left must stay, so must the measure.
  KeptObject::Reason reasonOf(const Measure& measure) const {
    UnitCriteria ofMeasure;
    ofMeasure.measure_id = measure.id();
    std::vector<TsSmartPtr<Unit>> units;
    db_.get(units, ofMeasure);
    for (const auto& unit : units) {
      if (reasonOf(*unit) == KeptObject::Referred) return KeptObject::Referred;
    }
    return KeptObject::UnitInUse;
  }

  ProjectDb& db_;
  PurgeReport& report_;
};

}  // namespace

void purgeContent(ProjectDb& db, const std::set<ObjectType>& types, PurgeReport& report) {
  Purge purge(db, report);
  for (const ObjectType type : purgeOrder) {
    if (types.count(type) > 0) purge.removeAll(type);
  }
}

}  // namespace tessel::tool
