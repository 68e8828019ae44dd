#pragma once

#include <string>
#include <vector>

#include <tessel/tessel.h>

#include "support/recording_reactor.h"
#include "support/samples.h"

namespace tessel::test {

using Type = PropertyType::Type;

/// The names of objects, in their order.
template <typename Objects>
std::vector<OdString> namesOf(const Objects& objects) {
  std::vector<OdString> names;
  for (const auto& object : objects) names.push_back(object->name());
  return names;
}

template <typename Objects>
std::vector<unsigned int> idsOf(const Objects& objects) {
  std::vector<unsigned int> ids;
  for (const auto& object : objects) ids.push_back(object->id());
  return ids;
}

/// What a look-up with these criteria finds.
template <typename T>
std::vector<OdString> namesFound(const ProjectDb& db, const typename ObjectTraits<T>::criteria_type& criteria = {}) {
  std::vector<TsSmartPtr<T>> found;
  db.get(found, criteria);
  return namesOf(found);
}

}  // namespace tessel::test
