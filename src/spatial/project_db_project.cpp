#include <odb/sqlite/database.hxx>

#include <tessel/mapping-odb.hxx>

#include "database/operation.h"
#include "database/project_db_impl.h"
#include "database/seed.h"
#include "operations/saver.h"
#include "spatial/project_impl.h"

namespace tessel {

void persistDefaultProject(odb::database& database) {
  Project project;
  static_cast<odb::sqlite::database&>(database).persist(project);
}

void loadProjectRecord(ProjectDb& db) {
  TransactionScope scope(db);
  Project& project = db.project();
  db.impl().database->load(project.impl().id, project);
}

void saveProjectRecord(ProjectDb& db, IdMapping& mapping, ColumnUnits& units) {
  Project& project = db.project();
  const TsSmartPtr<Site> saved = Saver<Site>(db, mapping, units).save(project.site());
  project.set_site(saved);
  requireTransaction();
  db.impl().database->update(project);
  project.impl().dirty = false;
}

void ProjectDb::saveProject() {
  writeOperation(*this, [this] {
    IdMapping mapping(this);
    ColumnUnits units;
    saveProjectRecord(*this, mapping, units);
  });
}

}  // namespace tessel
