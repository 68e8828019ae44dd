#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <tessel/export.h>
#include <tessel/fwd.h>
#include <tessel/id_mapping.h>
#include <tessel/object_type.h>
#include <tessel/platform/od_string.h>
#include <tessel/project_db_reactor.h>
#include <tessel/removal.h>

/// @file
/// Ready answers to clashes, to be installed as they are or put in front of one another. Each hands on to `next` what
/// it does not answer itself; without a `next` that is treated as in a database without a reactor. `next` belongs to
/// the host, who keeps it alive.
///
///     KeepExisting keep;
///     RenameIncoming rename(&keep);  // keeps the namespaces
///     ReactorLog log(&rename);
///     db->setReactor(&log);
///     db->copyAll(source);
///     db->setReactor(nullptr);
///     for (const auto& question : log.questions()) show(question.name, question.newName);
///
/// No reactor is asked about measures and units, which merge with their like, nor about a taken label: that fails. But
/// when an object that the file has already is changed to a taken label, the question comes, under the object's own
/// name.

namespace tessel {

/// Hands everything on; the base of the others.
class TESSEL_API ForwardingReactor : public ProjectDb::Reactor {
public:
  /// Hands on to `next`, or to the default one if there is none.
  explicit ForwardingReactor(Reactor* next = nullptr);

  SaveResolution onNameNotUnique(ObjectInfo& info) override;
  void onSaved(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key, SaveResolution resolution) override;
  RemoveResolution onRemove(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key) override;
  void onLoadFailed(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key, const OdString& name) override;

private:
  Reactor* next_;  ///< Never null.
};

/// Keeps what is there.
class TESSEL_API KeepExisting : public ForwardingReactor {
public:
  using ForwardingReactor::ForwardingReactor;

  SaveResolution onNameNotUnique(ObjectInfo& info) override;
};

/// Overwrites what is there. If that cannot be written, for instance because a third object has the incoming label, it
/// is asked again until the save gives up with ObjectNotUnique.
class TESSEL_API OverwriteExisting : public ForwardingReactor {
public:
  using ForwardingReactor::ForwardingReactor;

  SaveResolution onNameNotUnique(ObjectInfo& info) override;
};

/// Gives the incoming object the first free name of a row such as "Wall (2)", "Wall (3)" and so on, where "Wall" is the
/// name that was taken, whatever it ends in. An object of another file keeps its name there.
///
/// A namespace cannot be renamed, so the questions about namespaces go to `next`.
class TESSEL_API RenameIncoming : public ForwardingReactor {
public:
  /// As the pattern "{name} ({number})".
  explicit RenameIncoming(Reactor* next = nullptr);

  /// In the pattern "{name}" stands for the name that was taken and "{number}" for the numbers from 2 on. Both may
  /// stand there more than once. Throws std::invalid_argument for a pattern without "{number}", which makes only one
  /// name.
  explicit RenameIncoming(const OdString& pattern, Reactor* next = nullptr);

  SaveResolution onNameNotUnique(ObjectInfo& info) override;

private:
  OdString pattern_;
};

/// Overwrites a namespace and what is in it if the source of a copy has a later revision of the namespace, and keeps
/// what is there otherwise. All other classes go to `next`: a copied catalogue needs one that answers for entity
/// types.
///
///     KeepExisting keep;
///     OverwriteIfNewer newer(source, &keep);
///     db->setReactor(&newer);
///     db->copyAll<PropertySet>(source);
///     db->setReactor(nullptr);
///
/// The revisions in the two files are compared as numbers when a namespace is first asked about, and that decision
/// stays: afterwards the revision may have been overwritten. So make a new one for each destination and whenever a
/// file has changed, and use it from the first copy on if several share a mapping, because a mapped namespace is not
/// asked about.
///
/// A clash does not tell the namespace of a definition or set. If the source has that name in several of the
/// namespaces that were asked about so far, it is overwritten only if all of these are newer. So something of a newer
/// namespace may be kept, but nothing of another one is overwritten. What the source does not have is kept.
class TESSEL_API OverwriteIfNewer : public ForwardingReactor {
public:
  /// Shares the source; of none nothing is newer.
  explicit OverwriteIfNewer(const std::shared_ptr<const ProjectDb>& source, Reactor* next = nullptr);

  SaveResolution onNameNotUnique(ObjectInfo& info) override;

private:
  struct Decision {
    unsigned int sourceId;  ///< Of the namespace.
    bool isNewer;
  };

  bool isNamespaceNewer(ProjectDb& destination, const OdString& name);
  bool isContentNewer(ObjectType type, const OdString& name) const;

  std::shared_ptr<const ProjectDb> source_;
  std::map<OdString, Decision> decisions_;  ///< By the name of the namespace.
};

/// Writes down all that it hears, and hands it on to be answered. For one thread at a time.
class TESSEL_API ReactorLog : public ForwardingReactor {
public:
  /// A taken name, and what was decided.
  struct Question {
    ObjectType type;                       ///< The class of the incoming object.
    OdString name;                         ///< The name that was taken.
    std::optional<SaveResolution> answer;  ///< None if an exception took its place.
    OdString newName;                      ///< What the incoming object is to be called; empty unless it was `Renamed`.
  };
  /// An object that a save has visited.
  struct Saved {
    ObjectKey key;              ///< Of the row that stands for it.
    SaveResolution resolution;  ///< What became of it.
  };
  /// A row that was to be removed.
  struct Removal {
    ObjectKey key;                           ///< Of the row.
    std::optional<RemoveResolution> answer;  ///< None if an exception took its place.
  };
  /// A row that could not be loaded.
  struct FailedLoad {
    ObjectKey key;  ///< Of the row.
    OdString name;  ///< As `onLoadFailed` is told.
  };

  using ForwardingReactor::ForwardingReactor;

  /// Each in the order of the calls. The references are good until the next call.
  ///@{
  const std::vector<Question>& questions() const { return questions_; }
  const std::vector<Saved>& saved() const { return saved_; }
  const std::vector<Removal>& removals() const { return removals_; }
  const std::vector<FailedLoad>& failedLoads() const { return failedLoads_; }
  ///@}

  /// Forgets all four lists.
  void clear();

  SaveResolution onNameNotUnique(ObjectInfo& info) override;
  void onSaved(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key, SaveResolution resolution) override;
  RemoveResolution onRemove(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key) override;
  void onLoadFailed(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key, const OdString& name) override;

private:
  std::vector<Question> questions_;
  std::vector<Saved> saved_;
  std::vector<Removal> removals_;
  std::vector<FailedLoad> failedLoads_;
};

}  // namespace tessel
