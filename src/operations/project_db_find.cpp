#include <tessel/project_db.h>

#include <tessel/definitions.h>
#include <tessel/property_set.h>
#include <tessel/spatial.h>
#include <tessel/units.h>

#include <odb/exceptions.hxx>

#include "database/operation.h"
#include "operations/finder.h"

namespace tessel {

// A dangling id is a mistake of the caller and not an answer, so unlike other look-ups this one lets ODB's exception for
// a missing row pass.
template <typename T>
TsSmartPtr<T> ProjectDb::get(unsigned int id) {
  if (id == 0) return {};
  try {
    TransactionScope scope(*this);
    return Finder<T>(*this).byId(id);
  } catch (const odb::object_not_persistent&) {
    throw;
  } catch (const odb::exception& error) {
    translateOdbException(error);
  }
}

template <typename T>
TsSmartPtr<T> ProjectDb::get(const NameKey& key) {
  return readOperation(*this, [&] { return Finder<T>(*this).byKey(key); });
}

template <typename T, typename Owner>
TsSmartPtr<T> ProjectDb::get(const NameObjectKey<Owner>& key) {
  return readOperation(*this, [&] { return Finder<T>(*this).byKey(key); });
}

template <typename T>
void ProjectDb::get(std::vector<TsSmartPtr<T>>& objects,
                    const typename ObjectTraits<T>::criteria_type& criteria) const {
  readOperation(*this, [&] { Finder<T>(*this).list(objects, criteria); });
}

template <typename T>
unsigned long long ProjectDb::count(const typename ObjectTraits<T>::criteria_type& criteria) const {
  return readOperation(*this, [&] { return Finder<T>(*this).count(criteria); });
}

template TsSmartPtr<SpatialStructure> ProjectDb::get(unsigned int);
template TsSmartPtr<Site> ProjectDb::get(unsigned int);
template TsSmartPtr<Building> ProjectDb::get(unsigned int);
template TsSmartPtr<Story> ProjectDb::get(unsigned int);
template TsSmartPtr<EntityType> ProjectDb::get(unsigned int);
template TsSmartPtr<PropertyNamespace> ProjectDb::get(unsigned int);
template TsSmartPtr<PropertyDefinition> ProjectDb::get(unsigned int);
template TsSmartPtr<ValueDefinition> ProjectDb::get(unsigned int);
template TsSmartPtr<PropertySet> ProjectDb::get(unsigned int);
template TsSmartPtr<Measure> ProjectDb::get(unsigned int);
template TsSmartPtr<Unit> ProjectDb::get(unsigned int);

template TsSmartPtr<Site> ProjectDb::get(const NameKey&);
template TsSmartPtr<Building> ProjectDb::get(const NameObjectKey<Site>&);
template TsSmartPtr<Story> ProjectDb::get(const NameObjectKey<Building>&);
template TsSmartPtr<EntityType> ProjectDb::get(const NameKey&);
template TsSmartPtr<PropertyNamespace> ProjectDb::get(const NameKey&);
template TsSmartPtr<PropertyDefinition> ProjectDb::get(const NameObjectKey<PropertyNamespace>&);
template TsSmartPtr<ValueDefinition> ProjectDb::get(const NameObjectKey<PropertyNamespace>&);
template TsSmartPtr<PropertySet> ProjectDb::get(const NameObjectKey<PropertyNamespace>&);
template TsSmartPtr<Measure> ProjectDb::get(const NameKey&);
template TsSmartPtr<Unit> ProjectDb::get(const NameKey&);

template void ProjectDb::get(std::vector<TsSmartPtr<SpatialStructure>>&, const SpatialStructureCriteria&) const;
template void ProjectDb::get(std::vector<TsSmartPtr<Site>>&, const NameCriteria&) const;
template void ProjectDb::get(std::vector<TsSmartPtr<Building>>&, const BuildingCriteria&) const;
template void ProjectDb::get(std::vector<TsSmartPtr<Story>>&, const StoryCriteria&) const;
template void ProjectDb::get(std::vector<TsSmartPtr<EntityType>>&, const NameCriteria&) const;
template void ProjectDb::get(std::vector<TsSmartPtr<PropertyNamespace>>&, const NameCriteria&) const;
template void ProjectDb::get(std::vector<TsSmartPtr<PropertyDefinition>>&, const PropertyDefinitionCriteria&) const;
template void ProjectDb::get(std::vector<TsSmartPtr<ValueDefinition>>&, const ValueDefinitionCriteria&) const;
template void ProjectDb::get(std::vector<TsSmartPtr<PropertySet>>&, const PropertySetCriteria&) const;
template void ProjectDb::get(std::vector<TsSmartPtr<Measure>>&, const NameCriteria&) const;
template void ProjectDb::get(std::vector<TsSmartPtr<Unit>>&, const UnitCriteria&) const;

template unsigned long long ProjectDb::count<SpatialStructure>(const SpatialStructureCriteria&) const;
template unsigned long long ProjectDb::count<Site>(const NameCriteria&) const;
template unsigned long long ProjectDb::count<Building>(const BuildingCriteria&) const;
template unsigned long long ProjectDb::count<Story>(const StoryCriteria&) const;
template unsigned long long ProjectDb::count<EntityType>(const NameCriteria&) const;
template unsigned long long ProjectDb::count<PropertyNamespace>(const NameCriteria&) const;
template unsigned long long ProjectDb::count<PropertyDefinition>(const PropertyDefinitionCriteria&) const;
template unsigned long long ProjectDb::count<ValueDefinition>(const ValueDefinitionCriteria&) const;
template unsigned long long ProjectDb::count<PropertySet>(const PropertySetCriteria&) const;
template unsigned long long ProjectDb::count<Measure>(const NameCriteria&) const;
template unsigned long long ProjectDb::count<Unit>(const UnitCriteria&) const;

}  // namespace tessel
