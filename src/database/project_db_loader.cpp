#include <tessel/project_db_loader.h>

namespace tessel {
namespace {

/// A path ends at its terminator, as it does for SQLite, and so does its key.
OdString keyOf(const OdString& path) {
  OdString key(path.c_str());
  key.replace(u'\\', u'/');
  return key;
}

}  // namespace

ProjectDbLoader& ProjectDbLoader::instance() {
  static ProjectDbLoader loader;
  return loader;
}

ProjectDbLoader::ProjectDbLoader() = default;
ProjectDbLoader::~ProjectDbLoader() = default;

std::shared_ptr<ProjectDb> ProjectDbLoader::find(const OdString& path) const {
  const auto entry = databases_.find(keyOf(path));
  return entry == databases_.end() ? nullptr : entry->second.lock();
}

ProjectDbLoader::Result ProjectDbLoader::create(const OdString& path) {
  if (auto db = find(path)) return {std::move(db), false};
  return enlist(path, ProjectDb::create(path));
}

ProjectDbLoader::Result ProjectDbLoader::open(const OdString& path, bool readOnly) {
  if (auto db = find(path)) return {std::move(db), false};
  return enlist(path, ProjectDb::open(path, readOnly));
}

void ProjectDbLoader::setReactor(ProjectDb::Reactor* reactor) {
  for (const auto& [key, entry] : databases_) {
    if (const auto db = entry.lock()) db->setReactor(reactor);
  }
  reactor_ = reactor;
}

ProjectDbLoader::Result ProjectDbLoader::enlist(const OdString& path, std::shared_ptr<ProjectDb> db) {
  if (!db) return {nullptr, false};
  db->setReactor(reactor_);
  databases_[keyOf(path)] = db;
  return {std::move(db), true};
}

}  // namespace tessel
