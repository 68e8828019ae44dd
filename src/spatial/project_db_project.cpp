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

void ProjectDb::saveProject() {
  writeOperation(*this, [this] {
    IdMapping mapping(this);
    const TsSmartPtr<Site> saved = Saver<Site>(*this, mapping).save(project().site());
    project().set_site(saved);
    impl_->database->update(project());
    project().impl().dirty = false;
  });
}

}  // namespace tessel
