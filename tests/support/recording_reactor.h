#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <tessel/exceptions.h>
#include <tessel/project_db.h>
#include <tessel/project_db_reactor.h>

#include "support/printers.h"

namespace tessel::test {

/// Writes down every call that a database makes of its reactor, and answers as it was told:
///
///   RecordingReactor reactor(db);
///   reactor.answer({SaveResolution::Kept});           // the first clash; later ones as `otherwise`
///   reactor.rename({L"Site 2", L"Site 3"});           // or: tries these candidates, one for each question
///   ... EXPECT_EQ(reactor.saved.size(), 1U);
///
/// Without further words a clash throws ObjectNotUnique for "name", and a removal is allowed, as by default.
class RecordingReactor : public ProjectDb::Reactor {
public:
  struct Clash {
    const ProjectDb* database;
    ObjectType type;
    OdString name;  ///< The candidate as the question came.
  };
  struct Saved {
    const ProjectDb* database;
    ObjectKey key;
    SaveResolution resolution;
  };
  struct Removal {
    const ProjectDb* database;
    ObjectKey key;
  };
  struct FailedLoad {
    const ProjectDb* database;
    ObjectKey key;
    OdString name;
  };
  using ClashAnswer = std::function<SaveResolution(ObjectInfo&)>;
  using SavedAnswer = std::function<void(const Saved&)>;
  using RemovalAnswer = std::function<RemoveResolution(const Removal&)>;

  RecordingReactor() = default;

  /// Installs itself. The host of a reactor keeps it alive, so it takes itself out again at its end.
  explicit RecordingReactor(const std::shared_ptr<ProjectDb>& db) : database_(db) { db->setReactor(this); }
  RecordingReactor(const RecordingReactor&) = delete;
  RecordingReactor& operator=(const RecordingReactor&) = delete;
  ~RecordingReactor() override {
    if (const auto db = database_.lock()) db->setReactor(nullptr);
  }

  /// The answers to the next clashes, in their order.
  void answer(const std::vector<SaveResolution>& resolutions) {
    for (const SaveResolution resolution : resolutions) {
      answers_.push_back([resolution](ObjectInfo&) { return resolution; });
    }
  }

  /// Answers each of the next clashes with `Renamed` and one of the names, whether it is free or not; what `setName`
  /// said is in `nameWasFree`.
  void rename(const std::vector<OdString>& names) {
    for (const OdString& name : names) {
      answers_.push_back([this, name](ObjectInfo& info) {
        nameWasFree.push_back(info.setName(name));
        return SaveResolution::Renamed;
      });
    }
  }

  /// The answer to the next clash, written out.
  void answer(ClashAnswer next) { answers_.push_back(std::move(next)); }

  /// What comes when there are no answers left.
  void otherwise(SaveResolution resolution) {
    otherwise_ = [resolution](ObjectInfo&) { return resolution; };
  }
  void otherwise(ClashAnswer answer) { otherwise_ = std::move(answer); }

  /// Forgets what was recorded; the answers stay.
  void clear() {
    clashes.clear();
    saved.clear();
    removals.clear();
    failedLoads.clear();
    nameWasFree.clear();
    calls.clear();
  }

  std::vector<Clash> clashes;
  std::vector<Saved> saved;
  std::vector<Removal> removals;
  std::vector<FailedLoad> failedLoads;
  std::vector<bool> nameWasFree;

  /// The names of the operations in the order of the calls.
  std::vector<std::string> calls;

  /// Called after the record was made; may throw.
  SavedAnswer whenSaved;
  RemovalAnswer whenRemoved;

  SaveResolution onNameNotUnique(ObjectInfo& info) override {
    calls.emplace_back("onNameNotUnique");
    clashes.push_back({info.database().get(), info.objectType(), info.name()});
    if (used_ < answers_.size()) return answers_[used_++](info);
    if (otherwise_) return otherwise_(info);
    return Reactor::onNameNotUnique(info);
  }

  void onSaved(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key, SaveResolution resolution) override {
    calls.emplace_back("onSaved");
    saved.push_back({db.get(), key, resolution});
    if (whenSaved) whenSaved(saved.back());
  }

  RemoveResolution onRemove(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key) override {
    calls.emplace_back("onRemove");
    removals.push_back({db.get(), key});
    return whenRemoved ? whenRemoved(removals.back()) : Reactor::onRemove(db, key);
  }

  void onLoadFailed(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key, const OdString& name) override {
    calls.emplace_back("onLoadFailed");
    failedLoads.push_back({db.get(), key, name});
  }

private:
  std::weak_ptr<ProjectDb> database_;
  std::vector<ClashAnswer> answers_;
  std::size_t used_ = 0;
  ClashAnswer otherwise_;
};

inline bool operator==(const RecordingReactor::Clash& a, const RecordingReactor::Clash& b) {
  return a.database == b.database && a.type == b.type && a.name == b.name;
}
inline bool operator==(const RecordingReactor::Saved& a, const RecordingReactor::Saved& b) {
  return a.database == b.database && a.key == b.key && a.resolution == b.resolution;
}
inline bool operator==(const RecordingReactor::Removal& a, const RecordingReactor::Removal& b) {
  return a.database == b.database && a.key == b.key;
}
inline bool operator==(const RecordingReactor::FailedLoad& a, const RecordingReactor::FailedLoad& b) {
  return a.database == b.database && a.key == b.key && a.name == b.name;
}

inline std::ostream& operator<<(std::ostream& out, const RecordingReactor::Clash& clash) {
  out << "type " << static_cast<int>(clash.type) << " name ";
  PrintTo(clash.name, &out);
  return out;
}
inline std::ostream& operator<<(std::ostream& out, const RecordingReactor::Saved& saved) {
  return out << "type " << static_cast<int>(saved.key.type) << " id " << saved.key.id << " resolution "
             << static_cast<int>(saved.resolution);
}
inline std::ostream& operator<<(std::ostream& out, const RecordingReactor::Removal& removal) {
  return out << "type " << static_cast<int>(removal.key.type) << " id " << removal.key.id;
}
inline std::ostream& operator<<(std::ostream& out, const RecordingReactor::FailedLoad& load) {
  out << "type " << static_cast<int>(load.key.type) << " id " << load.key.id << " name ";
  PrintTo(load.name, &out);
  return out;
}

}  // namespace tessel::test
