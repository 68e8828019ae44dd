#pragma once

#include <set>

#include <tessel/project_db.h>
#include <tessel/project_db_reactor.h>

namespace tessel::tool {

/// Notes the ids of the objects that are to be removed, and lets none of them go.
class RemovalLog : public ProjectDb::Reactor {
public:
  RemoveResolution onRemove(const std::shared_ptr<const ProjectDb>&, const ObjectKey& key) override {
    ids.insert(key.id);
    return RemoveResolution::Refuse;
  }

  std::set<unsigned int> ids;
};

/// The ids of all objects of a class, also of those that cannot be loaded, of which nothing else tells. For a database
/// without a reactor.
template <typename T>
std::set<unsigned int> idsOf(ProjectDb& db) {
  struct Installed {
    Installed(ProjectDb& where, RemovalLog& log) : db(where) { db.setReactor(&log); }
    ~Installed() { db.setReactor(nullptr); }
    ProjectDb& db;
  };
  RemovalLog log;
  const Installed installed(db, log);
  db.purge<T>();
  return log.ids;
}

}  // namespace tessel::tool
