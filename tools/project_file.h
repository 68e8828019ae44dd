#pragma once

#include <memory>
#include <string>

#include <tessel/project_db.h>

namespace tessel::tool {

/// Opens a project file as ProjectDb::open does. Throws Failure with the reason if there is no handle.
std::shared_ptr<ProjectDb> openProject(const std::string& path, bool readOnly);

/// Opens a project file, and makes it first if it is missing. Throws Failure with the reason if there is no handle.
std::shared_ptr<ProjectDb> createProject(const std::string& path);

}  // namespace tessel::tool
