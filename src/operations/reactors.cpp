#include <tessel/reactors.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include <tessel/property_set.h>

#include "database/project_db_impl.h"

namespace tessel {
namespace {

constexpr std::u16string_view namePlaceholder = u"{name}";
constexpr std::u16string_view numberPlaceholder = u"{number}";

bool beginsWith(std::u16string_view text, std::u16string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

/// In one go, so that a name is not searched for placeholders itself.
OdString candidate(const OdString& pattern, const OdString& name, int number) {
  OdString text;
  for (std::u16string_view rest = pattern.view(); !rest.empty();) {
    if (beginsWith(rest, namePlaceholder)) {
      text += name;
      rest.remove_prefix(namePlaceholder.size());
    } else if (beginsWith(rest, numberPlaceholder)) {
      text += OdString::fromUtf8(std::to_string(number));
      rest.remove_prefix(numberPlaceholder.size());
    } else {
      text += rest.front();
      rest.remove_prefix(1);
    }
  }
  return text;
}

TsSmartPtr<PropertyNamespace> namespaceNamed(const ProjectDb* db, const OdString& name) {
  if (!db) return {};
  NameCriteria criteria;
  criteria.name.equals(name);
  std::vector<TsSmartPtr<PropertyNamespace>> found;
  db->get(found, criteria);
  return found.empty() ? nullptr : found.front();
}

template <typename T>
bool isIn(const ProjectDb& db, unsigned int namespaceId, const OdString& name) {
  typename ObjectTraits<T>::criteria_type criteria;
  criteria.name.equals(name);
  criteria.namespace_id = namespaceId;
  return db.count<T>(criteria) > 0;
}

bool isIn(const ProjectDb& db, unsigned int namespaceId, ObjectType type, const OdString& name) {
  switch (type) {
  case ObjectType::PropertyDefinition:
    return isIn<PropertyDefinition>(db, namespaceId, name);
  case ObjectType::ValueDefinition:
    return isIn<ValueDefinition>(db, namespaceId, name);
  case ObjectType::PropertySet:
    return isIn<PropertySet>(db, namespaceId, name);
  default:
    return false;
  }
}

SaveResolution overwriteIf(bool condition) { return condition ? SaveResolution::Overwritten : SaveResolution::Kept; }

}  // namespace

ForwardingReactor::ForwardingReactor(Reactor* next) : next_(next ? next : &defaultReactor()) {}

SaveResolution ForwardingReactor::onNameNotUnique(ObjectInfo& info) { return next_->onNameNotUnique(info); }

void ForwardingReactor::onSaved(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key,
                                SaveResolution resolution) {
  next_->onSaved(db, key, resolution);
}

RemoveResolution ForwardingReactor::onRemove(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key) {
  return next_->onRemove(db, key);
}

void ForwardingReactor::onLoadFailed(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key,
                                     const OdString& name) {
  next_->onLoadFailed(db, key, name);
}

SaveResolution KeepExisting::onNameNotUnique(ObjectInfo&) { return SaveResolution::Kept; }

SaveResolution OverwriteExisting::onNameNotUnique(ObjectInfo&) { return SaveResolution::Overwritten; }

RenameIncoming::RenameIncoming(Reactor* next) : RenameIncoming(L"{name} ({number})", next) {}

RenameIncoming::RenameIncoming(const OdString& pattern, Reactor* next) : ForwardingReactor(next), pattern_(pattern) {
  if (pattern.find(numberPlaceholder) == OdString::npos) throw std::invalid_argument("a pattern without {number}");
}

SaveResolution RenameIncoming::onNameNotUnique(ObjectInfo& info) {
  // The new name would be dropped, and the same question come again.
  if (info.objectType() == ObjectType::PropertyNamespace) return ForwardingReactor::onNameNotUnique(info);

  const OdString taken = info.name();
  int number = 2;
  while (!info.setName(candidate(pattern_, taken, number))) ++number;
  return SaveResolution::Renamed;
}

OverwriteIfNewer::OverwriteIfNewer(const std::shared_ptr<const ProjectDb>& source, Reactor* next)
    : ForwardingReactor(next), source_(source) {}

SaveResolution OverwriteIfNewer::onNameNotUnique(ObjectInfo& info) {
  switch (info.objectType()) {
  case ObjectType::PropertyNamespace:
    return overwriteIf(isNamespaceNewer(*info.database(), info.name()));
  case ObjectType::PropertyDefinition:
  case ObjectType::ValueDefinition:
  case ObjectType::PropertySet:
    return overwriteIf(isContentNewer(info.objectType(), info.name()));
  default:
    return ForwardingReactor::onNameNotUnique(info);
  }
}

bool OverwriteIfNewer::isNamespaceNewer(ProjectDb& destination, const OdString& name) {
  const auto known = decisions_.find(name);
  if (known != decisions_.end()) return known->second.isNewer;

  const TsSmartPtr<PropertyNamespace> incoming = namespaceNamed(source_.get(), name);
  const TsSmartPtr<PropertyNamespace> existing = namespaceNamed(&destination, name);
  if (!incoming || !existing) return false;
  const bool isNewer = incoming->revision() > existing->revision();
  decisions_.emplace(name, Decision{incoming->id(), isNewer});
  return isNewer;
}

/// What an object refers to is saved before it, so its namespace has been asked about, unless that is a new one here;
/// but then nothing in it can clash.
bool OverwriteIfNewer::isContentNewer(ObjectType type, const OdString& name) const {
  bool found = false;
  for (const auto& [namespaceName, decision] : decisions_) {
    if (!isIn(*source_, decision.sourceId, type, name)) continue;
    if (!decision.isNewer) return false;
    found = true;
  }
  return found;
}

// The records are reached by their numbers, because an answer may be found by further saves and removals.

SaveResolution ReactorLog::onNameNotUnique(ObjectInfo& info) {
  const std::size_t number = questions_.size();
  questions_.push_back({info.objectType(), info.name(), {}, {}});
  const SaveResolution answer = ForwardingReactor::onNameNotUnique(info);
  questions_[number].answer = answer;
  if (answer == SaveResolution::Renamed) questions_[number].newName = info.name();
  return answer;
}

void ReactorLog::onSaved(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key, SaveResolution resolution) {
  saved_.push_back({key, resolution});
  ForwardingReactor::onSaved(db, key, resolution);
}

RemoveResolution ReactorLog::onRemove(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key) {
  const std::size_t number = removals_.size();
  removals_.push_back({key, {}});
  const RemoveResolution answer = ForwardingReactor::onRemove(db, key);
  removals_[number].answer = answer;
  return answer;
}

void ReactorLog::onLoadFailed(const std::shared_ptr<const ProjectDb>& db, const ObjectKey& key, const OdString& name) {
  failedLoads_.push_back({key, name});
  ForwardingReactor::onLoadFailed(db, key, name);
}

void ReactorLog::clear() {
  questions_.clear();
  saved_.clear();
  removals_.clear();
  failedLoads_.clear();
}

}  // namespace tessel
