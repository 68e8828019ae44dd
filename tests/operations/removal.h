#pragma once

#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "operations/operations.h"

namespace tessel {

inline bool operator==(const RemoveResult& a, const RemoveResult& b) { return a.outcome == b.outcome; }
inline void PrintTo(const RemoveResult& result, std::ostream* out) { *out << "outcome " << result.outcome; }
inline void PrintTo(const ObjectKey& key, std::ostream* out) {
  *out << "type " << static_cast<int>(key.type) << " id " << key.id;
}

}  // namespace tessel

namespace tessel::test {

using Results = std::map<ObjectKey, RemoveResult>;

constexpr RemoveResult removed{RemoveResult::Removed};
constexpr RemoveResult refused{RemoveResult::Refused};

/// A file whose reactor writes down what is removed.
class Removal : public ReactingProject {
protected:
  bool hasRow(const std::string& table, unsigned int id) const {
    return project.raw().scalarInt("SELECT count(*) FROM \"" + table + "\" WHERE id = " + std::to_string(id)) == 1;
  }

  template <typename T>
  std::set<unsigned int> idsOf() const {
    std::vector<TsSmartPtr<T>> objects;
    project.db->get(objects);
    std::set<unsigned int> ids;
    for (const auto& object : objects) ids.insert(object->id());
    return ids;
  }

  /// The keys that the reactor was offered.
  std::vector<ObjectKey> offered() const {
    std::vector<ObjectKey> keys;
    for (const auto& removal : reactor.removals) keys.push_back(removal.key);
    return keys;
  }

  void refuse(const ObjectKey& key) {
    reactor.whenRemoved = [key](const RecordingReactor::Removal& removal) {
      return removal.key == key ? RemoveResolution::Refuse : RemoveResolution::Remove;
    };
  }
};

}  // namespace tessel::test
