#pragma once

#include <memory>
#include <string>

#include <tessel/platform/od_string.h>
#include <tessel/project_db.h>

#include "failures.h"

namespace tessel::tool {

/// Opens a project file as ProjectDb::open does. Throws Failure with the reason if there is no handle.
std::shared_ptr<ProjectDb> openProject(const std::string& path, bool readOnly);

/// Opens a project file, and makes it first if it is missing. Throws Failure with the reason if there is no handle, or if
/// the file is an SQLite database of another program and not forced to hold a project as well.
std::shared_ptr<ProjectDb> createProject(const std::string& path, bool force);

/// Opens an existing project file to be changed. Throws Failure also if it cannot be written, be it for its permissions
/// or because another program is using it: "nothing was DONE" then.
std::shared_ptr<ProjectDb> openForWriting(const std::string& path, const std::string& done);

/// The same for a file that is made first if it is missing.
std::shared_ptr<ProjectDb> createForWriting(const std::string& path, bool force, const std::string& done);

/// Whether an open file can be written at this moment.
bool canBeWritten(const std::shared_ptr<ProjectDb>& db);

/// The path as the library takes it. Throws Failure for one that is empty, not UTF-8, or the name of no file.
OdString databaseName(const std::string& path);

/// Why work on an open file failed, for the exception that is being handled. To be called in a catch block.
std::string whyWorkFailed(const std::string& path);

/// Works on an open file. What that throws becomes a Failure that names the file.
template <typename Work>
void onFile(const std::string& path, Work work) {
  try {
    work();
  } catch (...) {
    throw Failure("tessel: " + path + ": " + whyWorkFailed(path));
  }
}

}  // namespace tessel::tool
