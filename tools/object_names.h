#pragma once

#include <map>
#include <set>
#include <type_traits>
#include <vector>

#include <tessel/project_db.h>
#include <tessel/units.h>

#include "classes.h"

namespace tessel::tool {

/// What people call an object: a unit without a name by its label.
template <typename T>
OdString nameOf(const T& object) {
  if constexpr (std::is_same_v<T, Unit>) {
    if (!object.has_name()) return object.label();
  }
  return object.name();
}

/// The names of the objects of a file, read class by class when one of the class is first asked for.
class ObjectNames {
public:
  explicit ObjectNames(const ProjectDb& db) : db_(db) {}

  /// Empty for an object that cannot be loaded.
  OdString of(const ObjectKey& key) {
    if (read_.insert(key.type).second) forClass(key.type, [&](auto tag) { read<typename decltype(tag)::type>(); });
    return names_[key];
  }

private:
  template <typename T>
  void read() {
    std::vector<TsSmartPtr<T>> objects;
    db_.get(objects);
    for (const auto& object : objects) {
      names_[{ObjectTraits<T>::type, object->id()}] = nameOf(*object);
    }
  }

  const ProjectDb& db_;
  std::set<ObjectType> read_;
  std::map<ObjectKey, OdString> names_;
};

}  // namespace tessel::tool
