#include <tessel/id_mapping.h>

#include <functional>

namespace tessel {

bool IdMapping::KeyLess::operator()(const Key& a, const Key& b) const {
  if (a.source != b.source) return std::less<const ProjectDb*>()(a.source, b.source);
  return a.type != b.type ? a.type < b.type : a.id < b.id;
}

IdMapping::IdMapping(const std::shared_ptr<const ProjectDb>& destination) : IdMapping(destination.get()) {}
IdMapping::IdMapping(const ProjectDb* destination) : destination_(destination) {}

bool IdMapping::has(const Key& key) const { return entries_.count(key) > 0; }

bool IdMapping::get(const Key& key, Value& value) const {
  const auto entry = entries_.find(key);
  if (entry == entries_.end()) return false;
  value = entry->second;
  return true;
}

void IdMapping::set(const Key& key, const Value& value) { entries_.insert_or_assign(key, value); }

bool IdMapping::erase(const Key& key) { return entries_.erase(key) > 0; }

}  // namespace tessel
