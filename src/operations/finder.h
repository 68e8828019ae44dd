#pragma once

#include <vector>

#include <tessel/definitions.h>
#include <tessel/object_traits.h>
#include <tessel/project_db.h>
#include <tessel/property_set.h>
#include <tessel/spatial.h>
#include <tessel/units.h>

namespace tessel {

/// The look-ups of one class. All work in the thread's current transaction on the database and let the exceptions of ODB
/// pass; the public operations open the transaction and translate.
template <typename T>
class Finder {
public:
  using Criteria = typename ObjectTraits<T>::criteria_type;

  explicit Finder(const ProjectDb& db) : db_(db) {}

  /// Null for id 0; odb::object_not_persistent if there is no such row or it is one of another class.
  TsSmartPtr<T> byId(unsigned int id) const;

  /// Whether there is such a row, be it one that cannot be loaded.
  bool hasRow(unsigned int id) const;

  /// Null if there is no such row, or if it cannot be loaded, which the reactor is told.
  template <typename Key>
  TsSmartPtr<T> byKey(const Key& key) const;

  template <typename Key>
  bool exists(const Key& key) const;

  /// Appends; rows that cannot be loaded are left out, and the reactor is told.
  void list(std::vector<TsSmartPtr<T>>& objects, const Criteria& criteria) const;

  unsigned long long count(const Criteria& criteria) const;

private:
  void reportFailedLoad(unsigned int id) const;

  const ProjectDb& db_;
};

}  // namespace tessel
