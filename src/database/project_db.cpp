#include <tessel/project_db.h>

#include <sqlite3.h>

#include <odb/database.hxx>
#include <odb/sqlite/connection.hxx>

#include "database/odb_errors.h"
#include "database/open_database.h"
#include "database/project_db_impl.h"
#include "database/schema.h"

namespace tessel {
namespace {

std::shared_ptr<ProjectDb> handleOn(const OdString& filename, OpenResult opened) {
  if (!opened.database) return nullptr;
  auto db = std::make_shared<ProjectDb>(ProjectDb::CtorData{filename, opened.database.get(), opened.isNew});
  static_cast<void>(opened.database.release());  // The handle has it now.
  loadProjectRecord(*db);
  return db;
}

}  // namespace

std::shared_ptr<ProjectDb> ProjectDb::create(const OdString& filename) {
  return handleOn(filename, openDatabase(filename, OpenFlags::Create));
}

std::shared_ptr<ProjectDb> ProjectDb::open(const OdString& filename, bool readOnly) {
  return handleOn(filename, openDatabase(filename, readOnly ? OpenFlags::ReadOnly : 0));
}

ProjectDb::ProjectDb(const CtorData& data)
    : impl_(new Impl{this,
                     data.filename,
                     data.isNew,
                     std::unique_ptr<odb::sqlite::database>(data.database),
                     {},
                     &defaultReactor()}) {}

ProjectDb::~ProjectDb() = default;

const OdString& ProjectDb::filename() const { return impl_->filename; }
unsigned long long ProjectDb::version() const { return impl_->database->schema_version(schemaName); }

bool ProjectDb::isReadOnly() const {
  try {
    return sqlite3_db_readonly(impl_->database->connection()->handle(), nullptr) != 0;
  } catch (const odb::exception& error) {
    translateOdbException(error);
  }
}

bool ProjectDb::isNew() const { return impl_->isNew; }

void ProjectDb::setReactor(Reactor* reactor) { impl_->reactor = reactor ? reactor : &defaultReactor(); }

Project& ProjectDb::project() { return impl_->project; }
const Project& ProjectDb::project() const { return impl_->project; }

ProjectDb::Impl& ProjectDb::impl() { return *impl_; }
const ProjectDb::Impl& ProjectDb::impl() const { return *impl_; }

}  // namespace tessel
