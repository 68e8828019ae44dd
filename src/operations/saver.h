#pragma once

#include <optional>

#include <tessel/id_mapping.h>
#include <tessel/project_db.h>

#include "operations/column_units.h"

namespace tessel {

/// The one road of an object of one class into a file, be it new, changed, or of another file. It works in the thread's
/// current transaction on the database; the public operations open that and translate the exceptions of ODB.
template <typename T>
class Saver {
public:
  Saver(ProjectDb& db, IdMapping& mapping, ColumnUnits& units) : db_(db), mapping_(mapping), units_(units) {}

  /// The object that stands for `object` in this file. Null for null, and if the numbers of an object of another file
  /// cannot be converted.
  TsSmartPtr<T> save(const TsSmartPtr<T>& object);

  /// The same for something that is merely referred to: an object of this file is not written, even if it is dirty.
  TsSmartPtr<const T> saveConst(const TsSmartPtr<const T>& object);

private:
  IdMapping::Key keyOf(const T& object, const ProjectDb* source) const;
  std::optional<TsSmartPtr<T>> mapped(const IdMapping::Key& key) const;
  TsSmartPtr<T> copyOf(const T& object, const ProjectDb& source) const;
  TsSmartPtr<T> saveWorkingObject(TsSmartPtr<T> object, const IdMapping::Key& key);
  void saveReferences(T& object);
  SaveResolution write(TsSmartPtr<T>& object);
  SaveResolution writeRow(const TsSmartPtr<T>& object);
  void insertRow(const TsSmartPtr<T>& object);
  void updateRow(T& object);

  ProjectDb& db_;
  IdMapping& mapping_;
  ColumnUnits& units_;
};

/// The same for the project record, of which each file has one.
void saveProjectRecord(ProjectDb& db, IdMapping& mapping, ColumnUnits& units);

}  // namespace tessel
