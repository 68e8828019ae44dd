#pragma once

#include <set>

#include <tessel/object_traits.h>

namespace tessel {

template <typename... Classes>
struct ClassList {};

/// A class as a value, to be handed to a function once for each class of a list.
template <typename T>
struct ClassTag {
  using type = T;
};

/// Calls `body(ClassTag<T>())` for each class in turn.
template <typename... Classes, typename Body>
void forEachClass(ClassList<Classes...>, Body&& body) {
  (body(ClassTag<Classes>()), ...);
}

template <typename... Classes>
std::set<ObjectType> typesOf(ClassList<Classes...>) {
  return {ObjectTraits<Classes>::type...};
}

/// The classes that can be saved, those that refer to others first. Removing, copying and the tags of the import go in
/// this order: a story goes before its building, and a copied story brings its building along.
using SavedClasses = ClassList<Story, Building, Site, EntityType, PropertyDefinition, ValueDefinition, PropertySet,
                               PropertyNamespace, Unit, Measure>;

}  // namespace tessel
