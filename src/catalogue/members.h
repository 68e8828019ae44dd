#pragma once

#include <algorithm>

#include "catalogue/property_set_impl.h"

namespace tessel {

// The operations on the members of a set, once for property definitions, value definitions and entity types. `members` is
// the vector of the set that they work on.

template <typename Members>
typename Members::const_iterator findMember(const Members& members, const OdString& name) {
  return std::find_if(members.begin(), members.end(), [&name](const auto& member) { return member->name() == name; });
}

template <typename Members>
typename Members::const_iterator eraseMember(PropertySet::Impl& set, Members& members,
                                             typename Members::const_iterator pos) {
  set.dirty = true;
  return members.erase(pos);
}

template <typename Members>
void eraseIfFound(PropertySet::Impl& set, Members& members, typename Members::const_iterator pos) {
  if (pos != members.end()) eraseMember(set, members, pos);
}

/// Whether the member went in: a set has a name once.
template <typename Members>
bool insertMember(PropertySet::Impl& set, Members& members, typename Members::const_iterator pos,
                  const typename Members::value_type& member) {
  if (findMember(members, member->name()) != members.end()) return false;
  set.dirty = true;
  members.insert(pos, member);
  return true;
}

// Of definitions only. Their namespace is matched by its name, so that objects of two loads go together.

template <typename Definition>
bool isOfNamespace(const PropertySet::Impl& set, const Definition& definition) {
  const auto nameOf = [](const TsSmartPtr<const PropertyNamespace>& ns) { return ns ? ns->name() : OdString(); };
  return nameOf(definition.ns()) == nameOf(set.ns);
}

template <typename Members>
bool insertDefinition(PropertySet::Impl& set, Members& members, typename Members::const_iterator pos,
                      const typename Members::value_type& definition) {
  return definition && isOfNamespace(set, *definition) && insertMember(set, members, pos, definition);
}

/// The new definition, or null if the set has one of that name.
template <typename Definition, typename Members>
TsSmartPtr<Definition> insertNewDefinition(PropertySet::Impl& set, Members& members,
                                           typename Members::const_iterator pos, const OdString& name,
                                           const PropertyType& type) {
  TsSmartPtr<Definition> definition = Definition::create(set.ns, name, type);
  if (!insertDefinition(set, members, pos, definition)) definition.reset();
  return definition;
}

/// A saved definition may be in memory several times, so it is its name that counts; an unsaved one is only itself.
template <typename Members>
void removeDefinition(PropertySet::Impl& set, Members& members, const typename Members::value_type& definition) {
  if (!definition || !isOfNamespace(set, *definition)) return;
  const auto pos = definition->id() != 0 ? findMember(members, definition->name())
                                         : std::find(members.cbegin(), members.cend(), definition);
  eraseIfFound(set, members, pos);
}

template <typename Members>
void clearMembers(PropertySet::Impl& set, Members& members) {
  set.dirty = true;
  members.clear();
}

}  // namespace tessel
