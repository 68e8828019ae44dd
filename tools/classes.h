#pragma once

#include <tessel/definitions.h>
#include <tessel/object_type.h>
#include <tessel/property_set.h>
#include <tessel/spatial.h>
#include <tessel/units.h>

#include "failures.h"

namespace tessel::tool {

template <typename T>
struct ClassTag {
  using type = T;
};

/// Calls `body(ClassTag<T>())` for the class of that type, which must be one of the ten that can be saved.
template <typename Body>
auto forClass(ObjectType type, Body body) {
  switch (type) {
  case ObjectType::Site:
    return body(ClassTag<Site>());
  case ObjectType::Building:
    return body(ClassTag<Building>());
  case ObjectType::Story:
    return body(ClassTag<Story>());
  case ObjectType::Measure:
    return body(ClassTag<Measure>());
  case ObjectType::Unit:
    return body(ClassTag<Unit>());
  case ObjectType::PropertyNamespace:
    return body(ClassTag<PropertyNamespace>());
  case ObjectType::PropertySet:
    return body(ClassTag<PropertySet>());
  case ObjectType::PropertyDefinition:
    return body(ClassTag<PropertyDefinition>());
  case ObjectType::ValueDefinition:
    return body(ClassTag<ValueDefinition>());
  case ObjectType::EntityType:
    return body(ClassTag<EntityType>());
  default:
    throw UsageError("objects of this class cannot be named");
  }
}

}  // namespace tessel::tool
