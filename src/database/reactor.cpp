#include <tessel/exceptions.h>
#include <tessel/project_db_reactor.h>

#include "database/project_db_impl.h"

namespace tessel {

ProjectDb::Reactor::~Reactor() = default;

SaveResolution ProjectDb::Reactor::onNameNotUnique(ObjectInfo&) { throw ObjectNotUnique(L"name"); }

void ProjectDb::Reactor::onSaved(const std::shared_ptr<const ProjectDb>&, const ObjectKey&, SaveResolution) {}

RemoveResolution ProjectDb::Reactor::onRemove(const std::shared_ptr<const ProjectDb>&, const ObjectKey&) {
  return RemoveResolution::Remove;
}

void ProjectDb::Reactor::onLoadFailed(const std::shared_ptr<const ProjectDb>&, const ObjectKey&, const OdString&) {}

ProjectDb::Reactor& defaultReactor() {
  static ProjectDb::Reactor reactor;
  return reactor;
}

}  // namespace tessel
