#include "operations/saver.h"

#include <sqlite3.h>

#include <odb/sqlite/database.hxx>
#include <odb/sqlite/exceptions.hxx>

#include <tessel/exceptions.h>

#include "database/connection_lock.h"
#include "database/project_db_impl.h"
#include "database/savepoint.h"
#include "database/unit_clock.h"
#include "object/object_access.h"
#include "operations/all_traits.h"
#include "operations/clash.h"
#include "operations/finder.h"

namespace tessel {
namespace {

/// How often a write that clashes is tried: once, and once more after each of six answers.
constexpr int maximumAttempts = 7;

/// Holds the id of an object as it was, until the insert has succeeded. A refused insert may have set it already: the
/// row of a spatial object is in two tables, and the first of them hands out the id.
template <typename Impl>
class IdGuard {
public:
  explicit IdGuard(Impl& impl) : impl_(impl), id_(impl.id) {}
  ~IdGuard() {
    if (!inserted_) impl_.id = id_;
  }
  IdGuard(const IdGuard&) = delete;
  IdGuard& operator=(const IdGuard&) = delete;

  void setInserted() { inserted_ = true; }

private:
  Impl& impl_;
  unsigned int id_;
  bool inserted_ = false;
};

}  // namespace

template <typename T>
TsSmartPtr<T> Saver<T>::save(const TsSmartPtr<T>& object) {
  if (!object) return {};
  const std::shared_ptr<const ProjectDb> source = object->projectDb();
  const IdMapping::Key key = keyOf(*object, source.get());
  if (!source || source.get() == &db_) return saveWorkingObject(object, key);
  if (const auto known = mapped(key)) return *known;
  return saveWorkingObject(copyOf(*object, *source), key);
}

template <typename T>
TsSmartPtr<const T> Saver<T>::saveConst(const TsSmartPtr<const T>& object) {
  if (!object) return {};
  const std::shared_ptr<const ProjectDb> source = object->projectDb();
  const IdMapping::Key key = keyOf(*object, source.get());
  if (source.get() == &db_) {
    mapping_.set(key, {object->id(), SaveResolution::Kept});
    return object;
  }
  if (object->id() != 0) {
    if (const auto known = mapped(key)) return *known;
  }
  if (source) return saveWorkingObject(copyOf(*object, *source), key);
  // New objects reach the file also through constant references, and then get their id.
  return saveWorkingObject(const_cast<T*>(object.get()), key);
}

template <typename T>
IdMapping::Key Saver<T>::keyOf(const T& object, const ProjectDb* source) const {
  return {ObjectTraits<T>::type, object.id(), source};
}

/// Nothing if the mapping does not know the object; null if it knows it as one without a row.
template <typename T>
std::optional<TsSmartPtr<T>> Saver<T>::mapped(const IdMapping::Key& key) const {
  IdMapping::Value value;
  if (!mapping_.get(key, value)) return {};
  try {
    return Finder<T>(db_).byId(value.id);
  } catch (const odb::object_not_persistent&) {
    throw ObjectNotFound();
  }
}

/// Null if the numbers cannot be converted to the units of this file's columns.
template <typename T>
TsSmartPtr<T> Saver<T>::copyOf(const T& object, const ProjectDb& source) const {
  const TsSmartPtr<T> copy = object.cloneObject();
  try {
    convertColumnUnits(*copy, source, db_, units_);
  } catch (const UnitException&) {
    return {};
  }
  return copy;
}

template <typename T>
TsSmartPtr<T> Saver<T>::saveWorkingObject(TsSmartPtr<T> object, const IdMapping::Key& key) {
  if (!object) return {};
  saveReferences(*object);
  const SaveResolution resolution = object->isDirty() ? write(object) : SaveResolution::Kept;
  mapping_.set(key, {object->id(), resolution});
  db_.impl().reactor->onSaved(db_.shared_from_this(), {key.type, object->id()}, resolution);
  return object;
}

template <typename T>
void Saver<T>::saveReferences(T& object) {
  auto& impl = object.impl();
  ClassTraits<T>::references(impl, [this, &impl](auto& reference, Replaced effect) {
    using Target = std::remove_const_t<typename std::decay_t<decltype(reference)>::element_type>;
    auto saved = Saver<Target>(db_, mapping_, units_).saveConst(reference);
    if (saved == reference) return;
    reference = saved;
    if (effect == Replaced::MarksDirty) impl.dirty = true;
  });
}

/// A clash shows in SQLite's refusal, not by a query ahead of each insert, so that ordinary writes cost no statement more.
template <typename T>
SaveResolution Saver<T>::write(TsSmartPtr<T>& object) {
  Savepoint savepoint(*db_.impl().database);
  for (int attempt = 1;; ++attempt) {
    FailureMessage failure;
    try {
      SavepointGuard guard(savepoint);
      const SaveResolution resolution = writeRow(object);
      guard.setDone();
      object->impl().dirty = false;
      savepoint.release();
      return resolution;
    } catch (const odb::object_already_persistent&) {
      // It has no text.
    } catch (const odb::sqlite::database_exception& error) {
      if (error.error() != SQLITE_CONSTRAINT || !isUniqueFailure(error.message())) throw;
      failure = error.message();
    }
    if (attempt == maximumAttempts) throwNotUnique(failure);
    if (resolveNameClash(db_, object, failure) == SaveResolution::Kept) {
      savepoint.release();
      return SaveResolution::Kept;
    }
  }
}

/// Asked anew at each attempt: overwriting turns an insert into an update of another object.
template <typename T>
SaveResolution Saver<T>::writeRow(const TsSmartPtr<T>& object) {
  const ConnectionLock lock;
  const bool exists = object->projectDb() != nullptr;
  if (exists) {
    updateRow(*object);
  } else {
    insertRow(object);
  }
  if constexpr (std::is_same_v<T, Unit> || std::is_same_v<T, Measure>) advanceUnitClock();
  return exists ? SaveResolution::Overwritten : SaveResolution::Created;
}

template <typename T>
void Saver<T>::insertRow(const TsSmartPtr<T>& object) {
  IdGuard guard(object->impl());
  // By pointer, which enters the object in a running session if its class takes part in sessions.
  db_.impl().database->persist(object);
  guard.setInserted();
  object->impl().projectDb = db_.shared_from_this();
}

template <typename T>
void Saver<T>::updateRow(T& object) {
  try {
    db_.impl().database->update(object);
  } catch (const odb::object_not_persistent&) {
    throw ObjectNotFound();
  }
}

template class Saver<Site>;
template class Saver<Building>;
template class Saver<Story>;
template class Saver<EntityType>;
template class Saver<PropertyNamespace>;
template class Saver<PropertyDefinition>;
template class Saver<ValueDefinition>;
template class Saver<PropertySet>;
template class Saver<Measure>;
template class Saver<Unit>;

}  // namespace tessel
