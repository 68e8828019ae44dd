#pragma once

#include <cstdint>

#include <tessel/export.h>

namespace tessel {

/// The class of a persistent object. The numbers are part of the interface: keys carry them. 0 and 1 stand for no
/// class, and the place of EntityType between the two kinds of definition is as it has always been.
enum class ObjectType : std::int32_t {
  SpatialStructure = 2,
  Site = 3,
  Building = 4,
  Story = 5,
  Measure = 6,
  Unit = 7,
  PropertyNamespace = 8,
  PropertySet = 9,
  PropertyDefinition = 10,
  EntityType = 11,
  ValueDefinition = 12,
  AbstractDefinition = 13,
};

/// Names a row without loading it.
struct ObjectKey {
  ObjectType type;  ///< The class, in which the id is unique.
  unsigned int id;  ///< The row's id in its file; 0 for an object that has no row.
};

/// The same class and id; which file the row is in does not count.
///@{
inline bool operator==(const ObjectKey& a, const ObjectKey& b) { return a.type == b.type && a.id == b.id; }
inline bool operator!=(const ObjectKey& a, const ObjectKey& b) { return !(a == b); }
///@}

/// Type first, as a signed value, then the id.
inline bool operator<(const ObjectKey& a, const ObjectKey& b) {
  return a.type != b.type ? a.type < b.type : a.id < b.id;
}

}  // namespace tessel
