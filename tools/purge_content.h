#pragma once

#include <map>
#include <set>
#include <vector>

#include <tessel/object_type.h>
#include <tessel/platform/od_string.h>
#include <tessel/project_db.h>

namespace tessel::tool {

/// An object that could not be removed.
struct KeptObject {
  enum Reason {
    Referred,   ///< Another object refers to it.
    UnitInUse,  ///< It is a default unit, the unit of a column, or the measure of such a unit.
  };

  ObjectKey key;
  OdString name;
  Reason reason;
};

/// What has become of the objects that were to go.
struct PurgeReport {
  std::map<ObjectType, unsigned long long> removed;  ///< Without the kinds of which nothing went.
  std::vector<KeptObject> kept;
  unsigned long long unreadable = 0;  ///< Objects that stay as well, but cannot be loaded and so not be named.
  bool complete = true;               ///< Whether all are gone.
};

/// Removes all objects of these kinds, those first that nothing else refers to. What went before an exception is told in
/// the report.
void purgeContent(ProjectDb& db, const std::set<ObjectType>& types, PurgeReport& report);

}  // namespace tessel::tool
