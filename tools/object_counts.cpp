#include "object_counts.h"

#include <tessel/definitions.h>
#include <tessel/property_set.h>
#include <tessel/spatial.h>
#include <tessel/units.h>

namespace tessel::tool {
namespace {

template <typename T>
unsigned long long countOf(const ProjectDb& db) {
  return db.count<T>();
}

struct Row {
  std::string_view className;
  unsigned long long (*count)(const ProjectDb& db);
};

constexpr Row rows[] = {
  {"Measure", countOf<Measure>},
  {"Unit", countOf<Unit>},
  {"PropertyNamespace", countOf<PropertyNamespace>},
  {"EntityType", countOf<EntityType>},
  {"PropertyDefinition", countOf<PropertyDefinition>},
  {"ValueDefinition", countOf<ValueDefinition>},
  {"PropertySet", countOf<PropertySet>},
  {"Site", countOf<Site>},
  {"Building", countOf<Building>},
  {"Story", countOf<Story>},
};

}  // namespace

std::vector<ObjectCount> countObjects(const ProjectDb& db) {
  std::vector<ObjectCount> counts;
  for (const Row& row : rows) {
    counts.push_back({row.className, row.count(db)});
  }
  return counts;
}

}  // namespace tessel::tool
