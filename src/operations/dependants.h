#pragma once

#include <set>

#include <tessel/project_db.h>
#include <tessel/property_set.h>

namespace tessel {

/// The rows that are to go along with a removed one: none, for most classes. The rows of an object are those that it refers
/// to in memory; those of an id are in the file, and are asked for while its row is still there.
template <typename T>
std::set<ObjectKey> dependantsOf(const T&) {
  return {};
}
template <typename T>
std::set<ObjectKey> dependantsOf(const ProjectDb&, unsigned int) {
  return {};
}

/// A set takes its property and value definitions along.
template <>
std::set<ObjectKey> dependantsOf(const PropertySet& set);
template <>
std::set<ObjectKey> dependantsOf<PropertySet>(const ProjectDb& db, unsigned int id);

}  // namespace tessel
