#pragma once

#include <string_view>
#include <vector>

#include <tessel/project_db.h>

namespace tessel::tool {

struct ObjectCount {
  std::string_view className;
  unsigned long long count;
};

/// How many objects of each class the project has; what others refer to comes first.
std::vector<ObjectCount> countObjects(const ProjectDb& db);

}  // namespace tessel::tool
