#pragma once

#include <tessel/project_db.h>

#include "classes.h"

namespace tessel::tool {

/// How many objects of that kind the project has.
inline unsigned long long countObjects(const ProjectDb& db, ObjectType type) {
  return forClass(type, [&](auto tag) { return db.count<typename decltype(tag)::type>(); });
}

}  // namespace tessel::tool
