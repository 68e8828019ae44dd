#include <tessel/project_db.h>

#include <tessel/definitions.h>
#include <tessel/property_set.h>
#include <tessel/spatial.h>
#include <tessel/units.h>

#include "database/operation.h"
#include "operations/saver.h"

namespace tessel {

// A save without a result has written nothing, so there is nothing to commit.

template <typename T>
TsSmartPtr<T> ProjectDb::save(const TsSmartPtr<T>& object, IdMapping& mapping) {
  ColumnUnits units;
  return writeOperation(*this, [&] { return Saver<T>(*this, mapping, units).save(object); });
}

template <typename T>
TsSmartPtr<const T> ProjectDb::save(const TsSmartPtr<const T>& object, IdMapping& mapping) {
  ColumnUnits units;
  return writeOperation(*this, [&] { return Saver<T>(*this, mapping, units).saveConst(object); });
}

template TsSmartPtr<Site> ProjectDb::save(const TsSmartPtr<Site>&, IdMapping&);
template TsSmartPtr<Building> ProjectDb::save(const TsSmartPtr<Building>&, IdMapping&);
template TsSmartPtr<Story> ProjectDb::save(const TsSmartPtr<Story>&, IdMapping&);
template TsSmartPtr<EntityType> ProjectDb::save(const TsSmartPtr<EntityType>&, IdMapping&);
template TsSmartPtr<PropertyNamespace> ProjectDb::save(const TsSmartPtr<PropertyNamespace>&, IdMapping&);
template TsSmartPtr<PropertyDefinition> ProjectDb::save(const TsSmartPtr<PropertyDefinition>&, IdMapping&);
template TsSmartPtr<ValueDefinition> ProjectDb::save(const TsSmartPtr<ValueDefinition>&, IdMapping&);
template TsSmartPtr<PropertySet> ProjectDb::save(const TsSmartPtr<PropertySet>&, IdMapping&);
template TsSmartPtr<Measure> ProjectDb::save(const TsSmartPtr<Measure>&, IdMapping&);
template TsSmartPtr<Unit> ProjectDb::save(const TsSmartPtr<Unit>&, IdMapping&);

template TsSmartPtr<const Site> ProjectDb::save<Site>(const TsSmartPtr<const Site>&, IdMapping&);
template TsSmartPtr<const Building> ProjectDb::save<Building>(const TsSmartPtr<const Building>&, IdMapping&);
template TsSmartPtr<const Story> ProjectDb::save<Story>(const TsSmartPtr<const Story>&, IdMapping&);
template TsSmartPtr<const EntityType> ProjectDb::save<EntityType>(const TsSmartPtr<const EntityType>&, IdMapping&);
template TsSmartPtr<const PropertyNamespace>
ProjectDb::save<PropertyNamespace>(const TsSmartPtr<const PropertyNamespace>&, IdMapping&);
template TsSmartPtr<const PropertyDefinition>
ProjectDb::save<PropertyDefinition>(const TsSmartPtr<const PropertyDefinition>&, IdMapping&);
template TsSmartPtr<const ValueDefinition> ProjectDb::save<ValueDefinition>(const TsSmartPtr<const ValueDefinition>&,
                                                                            IdMapping&);
template TsSmartPtr<const PropertySet> ProjectDb::save<PropertySet>(const TsSmartPtr<const PropertySet>&, IdMapping&);
template TsSmartPtr<const Measure> ProjectDb::save<Measure>(const TsSmartPtr<const Measure>&, IdMapping&);
template TsSmartPtr<const Unit> ProjectDb::save<Unit>(const TsSmartPtr<const Unit>&, IdMapping&);

}  // namespace tessel
