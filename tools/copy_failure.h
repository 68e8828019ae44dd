#pragma once

#include <string>

#include <tessel/copy_report.h>
#include <tessel/id_mapping.h>
#include <tessel/project_db.h>
#include <tessel/reactors.h>

namespace tessel::tool {

/// Why an object of a class that was to be copied did not come along.
std::string whyLeftBehind(const LeftBehind& object, const ProjectDb& source, const ProjectDb& destination);

/// Why a copy ended with the exception that is being handled: names the object that could not be copied where that can
/// be found out. To be called in a catch block, in the transaction of the copy.
std::string whyCopyFailed(const ProjectDb& source, const ProjectDb& destination, const IdMapping& mapping,
                          const ReactorLog& log);

}  // namespace tessel::tool
