#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "operations/operations.h"

namespace tessel::test {

/// The names of what is found, in the order in which it is found.
template <typename T>
std::vector<std::string> namesOf(const std::vector<TsSmartPtr<T>>& objects) {
  std::vector<std::string> names;
  for (const auto& object : objects) names.push_back(object->name().toUtf8());
  return names;
}

/// The names of what meets criteria, of which there must be as many as are counted.
template <typename T>
std::vector<std::string> found(const ProjectDb& db, const typename ObjectTraits<T>::criteria_type& criteria = {}) {
  std::vector<TsSmartPtr<T>> objects;
  db.get(objects, criteria);
  EXPECT_EQ(db.count<T>(criteria), objects.size());
  return namesOf(objects);
}

}  // namespace tessel::test
