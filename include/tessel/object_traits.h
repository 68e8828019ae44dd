#pragma once

#include <tessel/criteria.h>
#include <tessel/fwd.h>
#include <tessel/object_type.h>

namespace tessel {

/// What templates need to know of a class of persistent objects: its ObjectType and the criteria of its look-ups.
template <typename T>
struct ObjectTraits;

/// Base of all specialisations. They are empty, and assigning them does nothing.
template <ObjectType Type, typename Criteria>
struct ObjectTraitsOf {
  static constexpr ObjectType type = Type;  ///< As `T::staticTesselType()`.
  using criteria_type = Criteria;           ///< What `ProjectDb::get` and `ProjectDb::count` take.
};

template <>
struct ObjectTraits<SpatialStructure> : ObjectTraitsOf<ObjectType::SpatialStructure, SpatialStructureCriteria> {};
template <>
struct ObjectTraits<Site> : ObjectTraitsOf<ObjectType::Site, NameCriteria> {};
template <>
struct ObjectTraits<Building> : ObjectTraitsOf<ObjectType::Building, BuildingCriteria> {};
template <>
struct ObjectTraits<Story> : ObjectTraitsOf<ObjectType::Story, StoryCriteria> {};
template <>
struct ObjectTraits<EntityType> : ObjectTraitsOf<ObjectType::EntityType, NameCriteria> {};
template <>
struct ObjectTraits<PropertyNamespace> : ObjectTraitsOf<ObjectType::PropertyNamespace, NameCriteria> {};
template <>
struct ObjectTraits<PropertyDefinition> : ObjectTraitsOf<ObjectType::PropertyDefinition, PropertyDefinitionCriteria> {};
template <>
struct ObjectTraits<ValueDefinition> : ObjectTraitsOf<ObjectType::ValueDefinition, ValueDefinitionCriteria> {};
template <>
struct ObjectTraits<PropertySet> : ObjectTraitsOf<ObjectType::PropertySet, PropertySetCriteria> {};
template <>
struct ObjectTraits<Measure> : ObjectTraitsOf<ObjectType::Measure, NameCriteria> {};
template <>
struct ObjectTraits<Unit> : ObjectTraitsOf<ObjectType::Unit, UnitCriteria> {};

}  // namespace tessel
