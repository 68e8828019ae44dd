#include <exception>

#include <sqlite3.h>

#include <odb/sqlite/database.hxx>
#include <odb/sqlite/exceptions.hxx>

#include <tessel/mapping-odb.hxx>

#include <tessel/definitions.h>
#include <tessel/project.h>
#include <tessel/project_db.h>
#include <tessel/property_set.h>
#include <tessel/spatial.h>
#include <tessel/units.h>

#include "database/operation.h"
#include "database/project_db_impl.h"
#include "operations/class_list.h"
#include "operations/saver.h"

namespace tessel {
namespace {

/// Carries an exception of ODB past the translation that all others undergo.
struct RefusedRow {
  std::exception_ptr reason;
};

/// What the copies have in common. A copy is many saves that share a transaction, a mapping and what is known of units.
class Copy {
public:
  Copy(ProjectDb& destination, const ProjectDb& source, IdMapping& mapping)
      : destination_(destination), source_(source), mapping_(mapping) {}

  template <typename T>
  void copyClass() {
    std::vector<TsSmartPtr<T>> objects;
    source_.get(objects);
    for (const TsSmartPtr<T>& object : objects) Saver<T>(destination_, mapping_, units_).save(object);
  }

  void copyDefaultUnits() {
    for (const auto& row : sourceRows<DefaultUnit>()) {
      const TsSmartPtr<const Unit> unit = saveReferenced(row->unit());
      const TsSmartPtr<const Measure> measure = saveReferenced(row->measure());
      insert(DefaultUnit(measure, unit));
    }
  }

  void copyColumnUnits() {
    for (const auto& row : sourceRows<ColumnUnit>()) {
      insert(ColumnUnit(row->table(), row->column(), saveReferenced(row->unit())));
    }
  }

  void copyProjectRecord() {
    destination_.project() = source_.project();
    saveProjectRecord(destination_, mapping_, units_);
  }

private:
  /// All at once, so that the source is not kept locked while the destination is written.
  template <typename Row>
  std::vector<std::shared_ptr<Row>> sourceRows() const {
    return readOperation(source_, [this] {
      std::vector<std::shared_ptr<Row>> rows;
      odb::result<Row> found = source_.impl().database->query<Row>();
      for (auto row = found.begin(); row != found.end(); ++row) rows.push_back(row.load());
      return rows;
    });
  }

  template <typename T>
  TsSmartPtr<const T> saveReferenced(const TsSmartPtr<const T>& object) {
    return Saver<T>(destination_, mapping_, units_).saveConst(object);
  }

  /// Nobody is asked about these rows: one that is in the way ends the copy. ODB's exception says so, ours would not.
  template <typename Row>
  void insert(Row&& row) {
    requireTransaction();
    try {
      destination_.impl().database->persist(row);
    } catch (const odb::object_already_persistent&) {
      throw RefusedRow{std::current_exception()};
    } catch (const odb::sqlite::database_exception& error) {
      if (error.error() != SQLITE_CONSTRAINT) throw;
      throw RefusedRow{std::current_exception()};
    }
    advanceUnitClock();
  }

  ProjectDb& destination_;
  const ProjectDb& source_;
  IdMapping& mapping_;
  ColumnUnits units_;
};

/// Nothing comes from nowhere, and nothing need come from the file itself. The source is held for the time of the copy: a
/// reactor may let go of it.
template <typename Body>
void copyInto(ProjectDb& destination, std::shared_ptr<const ProjectDb> source, IdMapping& mapping, Body&& body) {
  if (!source || source.get() == &destination) return;
  try {
    writeOperation(destination, [&] {
      Copy copy(destination, *source, mapping);
      body(copy);
    });
  } catch (const RefusedRow& row) {
    std::rethrow_exception(row.reason);
  }
}

}  // namespace

template <typename T>
void ProjectDb::copyAll(const std::shared_ptr<const ProjectDb>& source, IdMapping& mapping) {
  copyInto(*this, source, mapping, [](Copy& copy) { copy.copyClass<T>(); });
}

void ProjectDb::copyAll(const std::shared_ptr<const ProjectDb>& source, IdMapping& mapping) {
  copyInto(*this, source, mapping, [](Copy& copy) {
    forEachClass(SavedClasses(), [&](auto tag) { copy.copyClass<typename decltype(tag)::type>(); });
    copy.copyDefaultUnits();
  });
}

void ProjectDb::copyAll(const std::shared_ptr<const ProjectDb>& source) {
  IdMapping mapping(nullptr);
  copyAll(source, mapping);
}

void ProjectDb::copyMeta(const std::shared_ptr<const ProjectDb>& source, IdMapping& mapping) {
  copyInto(*this, source, mapping, [](Copy& copy) {
    copy.copyColumnUnits();
    copy.copyProjectRecord();
  });
}

void ProjectDb::copyMeta(const std::shared_ptr<const ProjectDb>& source) {
  IdMapping mapping(nullptr);
  copyMeta(source, mapping);
}

template void ProjectDb::copyAll<Site>(const std::shared_ptr<const ProjectDb>&, IdMapping&);
template void ProjectDb::copyAll<Building>(const std::shared_ptr<const ProjectDb>&, IdMapping&);
template void ProjectDb::copyAll<Story>(const std::shared_ptr<const ProjectDb>&, IdMapping&);
template void ProjectDb::copyAll<EntityType>(const std::shared_ptr<const ProjectDb>&, IdMapping&);
template void ProjectDb::copyAll<PropertyNamespace>(const std::shared_ptr<const ProjectDb>&, IdMapping&);
template void ProjectDb::copyAll<PropertyDefinition>(const std::shared_ptr<const ProjectDb>&, IdMapping&);
template void ProjectDb::copyAll<ValueDefinition>(const std::shared_ptr<const ProjectDb>&, IdMapping&);
template void ProjectDb::copyAll<PropertySet>(const std::shared_ptr<const ProjectDb>&, IdMapping&);
template void ProjectDb::copyAll<Measure>(const std::shared_ptr<const ProjectDb>&, IdMapping&);
template void ProjectDb::copyAll<Unit>(const std::shared_ptr<const ProjectDb>&, IdMapping&);

}  // namespace tessel
