#pragma once

#include <memory>

#include <tessel/export.h>
#include <tessel/fwd.h>
#include <tessel/id_mapping.h>
#include <tessel/object_type.h>
#include <tessel/platform/od_string.h>
#include <tessel/project_db.h>
#include <tessel/removal.h>

namespace tessel {

/// Decides what happens when a name is taken or a row is to be removed, and hears of what is saved. Hosts derive from it
/// and override what they care for. All operations are called on the thread that works on the database, inside the
/// running transaction; an exception that leaves one ends the operation under way and reaches the host unchanged.
class TESSEL_API ProjectDb::Reactor {
public:
  /// The clash that `onNameNotUnique` is asked about; it lives only as long as that call.
  struct TESSEL_API ObjectInfo {
    /// The database that is saved into.
    virtual const std::shared_ptr<ProjectDb>& database() const = 0;

    /// The class of the object whose name is taken.
    virtual ObjectType objectType() const = 0;

    /// The candidate, at first the name that is taken.
    virtual OdString name() const = 0;

    /// Makes `name` the candidate and returns whether it is free.
    virtual bool setName(const OdString& name) = 0;

  protected:
    ~ObjectInfo() = default;
  };

  Reactor() = default;
  Reactor(const Reactor&) = default;
  Reactor& operator=(const Reactor&) = default;
  virtual ~Reactor();

  /// The name of an object is taken. `Renamed` gives it the candidate of `info`; a namespace cannot be renamed. A save
  /// asks six times at most and then throws ObjectNotUnique. Measures, units and labels never come here.
  /// By default throws ObjectNotUnique for "name".
  virtual SaveResolution onNameNotUnique(ObjectInfo& info);

  /// An object was visited by a save, after all that it refers to.
  virtual void onSaved(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key, SaveResolution resolution);

  /// A row is to be removed. By default it may be.
  virtual RemoveResolution onRemove(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key);

  /// A row could not be loaded because a row that it refers to is missing. `name` is its name, for a class without a
  /// name of its own a text with its class and id.
  virtual void onLoadFailed(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key, const OdString& name);
};

}  // namespace tessel
