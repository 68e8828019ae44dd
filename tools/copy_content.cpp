#include "copy_content.h"

#include <stdexcept>

#include <tessel/project.h>
#include <tessel/reactors.h>
#include <tessel/transaction.h>

#include "classes.h"
#include "columns.h"
#include "copy_failure.h"
#include "object_names.h"

namespace tessel::tool {
namespace {

/// What refers to others goes first and brings them along.
constexpr ObjectType copyOrder[] = {
  ObjectType::Story,       ObjectType::Building,           ObjectType::Site,
  ObjectType::EntityType,  ObjectType::PropertyDefinition, ObjectType::ValueDefinition,
  ObjectType::PropertySet, ObjectType::PropertyNamespace,  ObjectType::Unit,
  ObjectType::Measure,
};

bool hasColumnUnits(const ProjectDb& db) {
  bool found = false;
  forEachColumn([&](const char*, auto getter) { found = found || db.columnUnit(getter); });
  return found;
}

/// The ready answers, and in front of them a log that knows which question got none.
class Answers {
public:
  Answers(const std::shared_ptr<ProjectDb>& db, OnClash onClash) : db_(db), log_(answerTo(onClash)) {
    db_->setReactor(&log_);
  }
  ~Answers() { db_->setReactor(nullptr); }
  Answers(const Answers&) = delete;
  Answers& operator=(const Answers&) = delete;

  const ReactorLog& log() const { return log_; }

private:
  ProjectDb::Reactor* answerTo(OnClash onClash) {
    switch (onClash) {
    case OnClash::Keep:
      return &keep_;
    case OnClash::Overwrite:
      return &overwrite_;
    case OnClash::Rename:
      return &rename_;
    case OnClash::Fail:
      break;
    }
    return nullptr;
  }

  std::shared_ptr<ProjectDb> db_;
  KeepExisting keep_;
  OverwriteExisting overwrite_;
  RenameIncoming rename_{&keep_};  // A namespace cannot be renamed.
  ReactorLog log_;
};

class Copy {
public:
  Copy(const std::shared_ptr<ProjectDb>& source, const std::shared_ptr<ProjectDb>& destination,
       const CopyWishes& wishes)
      : source_(source), destination_(destination), wishes_(wishes), mapping_(destination) {}

  CopyReport run() {
    // Units first: they decide whether numbers can be copied.
    takeOverMeta();
    if (isWished(ObjectType::Unit)) takeOverDefaultUnits();
    copyObjects();
    countObjects();
    listLeftBehind();
    if (wishes_.list) listObjects();
    return report_;
  }

  const IdMapping& mapping() const { return mapping_; }

private:
  bool isWished(ObjectType type) const { return wishes_.types.count(type) > 0; }

  void takeOverMeta() {
    const bool hasUnits = hasColumnUnits(*source_);
    if (wishes_.meta || (wishes_.everything && destination_->isNew())) {
      refuseColumnsOfBoth();
      destination_->copyMeta(source_, mapping_);
      report_.projectRecord = true;
      report_.columnUnits = hasUnits;
    } else if (hasUnits && !hasColumnUnits(*destination_) && wishesNumbers()) {
      copyColumnUnits();
      report_.columnUnits = true;
    }
  }

  bool wishesNumbers() const {
    return isWished(ObjectType::Site) || isWished(ObjectType::Building) || isWished(ObjectType::Story);
  }

  /// What ODB says of such a row is nothing for people.
  void refuseColumnsOfBoth() const {
    forEachColumn([&](const char* name, auto getter) {
      if (source_->columnUnit(getter) && destination_->columnUnit(getter)) {
        throw std::runtime_error("--meta cannot give " + std::string(name) + " a unit, for it has one already");
      }
    });
  }

  /// Column units come only together with the project record. setDefaultUnit would write them as well, but not the same
  /// ones where the source's default unit has changed since, and none where the destination has a default unit. So the
  /// source's handle is lent the destination's own record, in memory: it is written over itself, and the site of the
  /// source's record, for which nobody may have asked, does not come along.
  void copyColumnUnits() {
    Project record;
    record = source_->project();
    source_->project() = destination_->project();
    destination_->copyMeta(source_, mapping_);
    source_->project() = record;
  }

  /// A default unit of the destination stays: its people are used to it. ODB would end the copy there.
  void takeOverDefaultUnits() {
    std::vector<TsSmartPtr<Measure>> measures;
    source_->get(measures);
    for (const auto& measure : measures) {
      const TsSmartPtr<const Unit> unit = source_->defaultUnit(measure->name());
      if (!unit || destination_->defaultUnit(measure->name())) continue;
      destination_->setDefaultUnit(destination_->save(unit, mapping_));
      report_.defaultUnits.push_back(measure->name());
    }
  }

  void copyObjects() {
    for (const ObjectType type : copyOrder) {
      if (!isWished(type)) continue;
      forClass(type, [&](auto tag) { destination_->copyAll<typename decltype(tag)::type>(source_, mapping_); });
    }
  }

  /// Calls `body(key, value)` for each object of the source that has arrived.
  template <typename Body>
  void forEachArrived(Body body) const {
    for (const auto& [key, value] : mapping_) {
      if (key.source == source_.get()) body(ObjectKey{key.type, key.id}, value);
    }
  }

  void countObjects() {
    forEachArrived([&](const ObjectKey& key, const IdMapping::Value& value) {
      CopyCounts& counts = report_.counts[key.type];
      switch (value.resolution) {
      case SaveResolution::Kept:
        ++counts.kept;
        break;
      case SaveResolution::Overwritten:
        ++counts.overwritten;
        break;
      case SaveResolution::Created:
      case SaveResolution::Renamed:
        ++counts.created;
        break;
      }
    });
  }

  void listLeftBehind() {
    for (const LeftBehind& object : leftBehind(*source_, *destination_, mapping_)) {
      if (!isWished(object.key.type)) continue;
      report_.leftBehind.push_back(object);
      ++report_.counts[object.key.type].leftBehind;
    }
  }

  void listObjects() {
    ObjectNames names(*source_);
    ObjectNames newNames(*destination_);
    report_.objects.emplace();
    forEachArrived([&](const ObjectKey& key, const IdMapping::Value& value) {
      report_.objects->push_back({key, names.of(key), value.id, newNames.of({key.type, value.id}), value.resolution});
    });
  }

  std::shared_ptr<ProjectDb> source_;
  std::shared_ptr<ProjectDb> destination_;
  const CopyWishes& wishes_;
  IdMapping mapping_;
  CopyReport report_;
};

}  // namespace

CopyReport copyContent(const std::shared_ptr<ProjectDb>& source, const std::shared_ptr<ProjectDb>& destination,
                       const CopyWishes& wishes) {
  Answers answers(destination, wishes.onClash);
  Transaction transaction(destination, Transaction::BeginCurrent);
  Copy copy(source, destination, wishes);
  try {
    CopyReport report = copy.run();
    transaction.commit();
    return report;
  } catch (...) {
    // While the transaction lasts, because what decided may be something that was copied.
    throw std::runtime_error(whyCopyFailed(*source, *destination, copy.mapping(), answers.log()));
  }
}

}  // namespace tessel::tool
