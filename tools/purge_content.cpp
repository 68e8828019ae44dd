#include "purge_content.h"

#include <tessel/exceptions.h>

#include "classes.h"
#include "columns.h"
#include "object_ids.h"
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
    countRemoved<T>(before);
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
    std::set<unsigned int> stuck;
    for (const unsigned int id : idsOf<T>(db_)) {
      if (db_.remove<T>(id).outcome != RemoveResult::Removed) stuck.insert(id);
    }
    reportKept<T>(stuck);
  }

  template <typename T>
  void reportKept(std::set<unsigned int> stuck) {
    std::vector<TsSmartPtr<T>> objects;
    db_.get(objects);
    for (const auto& object : objects) {
      if (stuck.erase(object->id()) == 0) continue;
      report_.kept.push_back({{ObjectTraits<T>::type, object->id()}, nameOf(*object), reasonOf(*object)});
    }
    report_.unreadable += stuck.size();
  }

  template <typename T>
  void countRemoved(unsigned long long before) {
    const unsigned long long left = db_.count<T>();
    if (left < before) report_.removed[ObjectTraits<T>::type] = before - left;
    if (left > 0) report_.complete = false;
  }

  template <typename T>
  KeptObject::Reason reasonOf(const T&) const {
    return KeptObject::Referred;
  }

  /// Whether the look-up finds this very unit. One that throws leads to a unit that the file lacks, and so to another.
  template <typename LookUp>
  bool isFoundBy(const Unit& unit, LookUp lookUp) const {
    try {
      const auto found = lookUp();
      return found && found->id() == unit.id();
    } catch (const DatabaseException&) {
      return false;
    }
  }

  KeptObject::Reason reasonOf(const Unit& unit) const {
    bool inUse = isFoundBy(unit, [&] { return db_.defaultUnit(unit.measure()->name()); });
    forEachColumn(
      [&](const char*, auto getter) { inUse = inUse || isFoundBy(unit, [&] { return db_.columnUnit(getter); }); });
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
