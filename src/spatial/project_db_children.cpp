#include <odb/session.hxx>
#include <odb/sqlite/database.hxx>

#include <tessel/mapping-odb.hxx>

#include "database/operation.h"
#include "database/project_db_impl.h"
#include "spatial/spatial_impl.h"

namespace tessel {
namespace {

/// A session of its own. One that is current already, of the host or of a call further up the stack, comes back
/// afterwards.
class SessionScope {
public:
  SessionScope() : setAside_(odb::session::current_pointer()) { odb::session::current(session_); }
  ~SessionScope() { odb::session::current_pointer(setAside_); }
  SessionScope(const SessionScope&) = delete;
  SessionScope& operator=(const SessionScope&) = delete;

private:
  odb::session* setAside_;
  odb::session session_{false};
};

/// The children of an object that has a row. A session makes them all refer to this very parent and not to a copy each.
template <typename Child, typename Parent>
std::vector<TsSmartPtr<Child>> childrenOf(const Parent& parent,
                                          typename ObjectTraits<Child>::criteria_type (*criteria)(unsigned int)) {
  std::vector<TsSmartPtr<Child>> children;
  const std::shared_ptr<ProjectDb> db = parent.projectDb();
  if (!db) return children;
  const SessionScope session;
  odb::database& database = *db->impl().database;
  const TsSmartPtr<SpatialStructure> self(const_cast<Parent*>(&parent));
  odb::session::_cache_insert<SpatialStructure>(database, parent.id(), self);
  db->get(children, criteria(parent.id()));
  return children;
}

}  // namespace

std::vector<TsSmartPtr<Building>> Site::buildings() const {
  return childrenOf<Building>(*this, [](unsigned int id) { return BuildingCriteria{{}, id}; });
}

std::vector<TsSmartPtr<Story>> Building::stories() const {
  return childrenOf<Story>(*this, [](unsigned int id) { return StoryCriteria{{}, id}; });
}

}  // namespace tessel
