#pragma once

#include <memory>

#include <odb/sqlite/database.hxx>

#include <tessel/project.h>
#include <tessel/project_db.h>
#include <tessel/project_db_reactor.h>

namespace tessel {

struct ProjectDb::CtorData {
  OdString filename;
  odb::sqlite::database* database;  ///< Goes over to the handle.
  bool isNew;
};

struct ProjectDb::Impl {
  ProjectDb* self;
  OdString filename;  ///< As the host gave it.
  bool isNew;
  std::unique_ptr<odb::sqlite::database> database;
  Project project;
  Reactor* reactor;  ///< Never null.
};

/// The reactor of every database that has no other.
ProjectDb::Reactor& defaultReactor();

/// Fills the record of a new handle from its row. odb::object_not_persistent if there is none.
void loadProjectRecord(ProjectDb& db);

}  // namespace tessel
