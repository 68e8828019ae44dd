#include <tessel/definitions.h>
#include <tessel/property_set.h>
#include <tessel/spatial.h>
#include <tessel/units.h>

#include "object/object_access.h"

namespace tessel {
namespace {

/// Registers the runtime classes when the library is loaded, in this order, and removes them when it is unloaded, in the
/// reverse one. A host may already have registered one by hand.
template <typename T>
struct Registration {
  Registration() {
    if (!T::desc()) T::rxInit();
  }
  ~Registration() { ObjectAccess::dropClass<T>(); }
};

const Registration<Object> object;
const Registration<Measure> measure;
const Registration<Unit> unit;
const Registration<EntityType> entityType;
const Registration<PropertyNamespace> propertyNamespace;
const Registration<AbstractDefinition> abstractDefinition;
const Registration<PropertyDefinition> propertyDefinition;
const Registration<ValueDefinition> valueDefinition;
const Registration<PropertySet> propertySet;
const Registration<SpatialStructure> spatialStructure;
const Registration<Site> site;
const Registration<Building> building;
const Registration<Story> story;

}  // namespace
}  // namespace tessel
