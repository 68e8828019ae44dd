#pragma once

#include "catalogue/definition_impl.h"
#include "catalogue/property_set_impl.h"
#include "object/object_access.h"
#include "operations/class_traits.h"

namespace tessel {

template <>
struct ClassTraits<EntityType> : NamedInFile<EntityType>, Overwritable<EntityType> {
  using IdView = EntityTypeIdView;
  using CountView = EntityTypeCountView;
  using NameView = EntityTypeNameView;
};

template <>
struct ClassTraits<PropertyNamespace> : NamedInFile<PropertyNamespace>, Overwritable<PropertyNamespace> {
  using IdView = PropertyNamespaceIdView;
  using CountView = PropertyNamespaceCountView;
  using NameView = PropertyNamespaceNameView;

  /// A namespace cannot take another name, so the new one is dropped. The next attempt clashes again, and a reactor that
  /// always renames ends in ObjectNotUnique.
  static void rename(PropertyNamespace&, const OdString&) {}
};

/// Classes that are named within a namespace.
template <typename T>
struct NamedInNamespace : NamedInOwner<T, PropertyNamespace>, Overwritable<T> {
  using Query = odb::query<T>;

  static const TsSmartPtr<const PropertyNamespace>& ownerOf(const T& object) { return object.ns(); }
  static const auto& ownerColumn() { return Query::ns; }
};

/// What both kinds of definition have in common.
template <typename T>
struct DefinitionTraits : NamedInNamespace<T> {
  using Query = odb::query<T>;

  template <typename Criteria>
  static Condition condition(const Criteria& criteria) {
    return textCondition(Query::name, criteria.name) && ownerCondition(Query::ns, criteria.namespace_id) &&
           ifcNameCondition(Query::ifc_name, Query::name, criteria.ifc_name) && typeCondition(criteria.type);
  }

  template <typename Criteria>
  static Condition order(const Condition& condition, const Criteria&) {
    return orderedBy(condition, Query::name);
  }

  /// The asymmetry is meant: a definition whose namespace was only found to be there already is not written again.
  template <typename Impl, typename Save>
  static void references(Impl& definition, Save&& save) {
    save(definition.ns, Replaced::KeepsFlag);
    save(definition.unit, Replaced::MarksDirty);
  }

private:
  /// A type that is not undefined altogether is compared in all its parts.
  static Condition typeCondition(const PropertyType& type) {
    if (type == PropertyType()) return Condition(true);
    const auto& columns = Query::type;
    return columns.structure == type.structure && columns.value_type == type.value_type &&
           columns.key_type == type.key_type;
  }
};

template <>
struct ClassTraits<PropertyDefinition> : DefinitionTraits<PropertyDefinition> {
  using IdView = PropertyDefinitionIdView;
  using CountView = PropertyDefinitionCountView;
  using NameView = PropertyDefinitionNameView;
};

template <>
struct ClassTraits<ValueDefinition> : DefinitionTraits<ValueDefinition> {
  using IdView = ValueDefinitionIdView;
  using CountView = ValueDefinitionCountView;
  using NameView = ValueDefinitionNameView;

  /// Overwriting brings only what both kinds of definition have: the value's own specification stays as the file has it.
  static void overwrite(ValueDefinition& existing, const ValueDefinition& incoming) {
    ObjectAccess::assign<AbstractDefinition>(existing, incoming);
  }
};

template <>
struct ClassTraits<PropertySet> : NamedInNamespace<PropertySet> {
  using Query = odb::query<PropertySet>;
  using IdView = PropertySetIdView;
  using CountView = PropertySetCountView;
  using NameView = PropertySetNameView;

  static Condition condition(const PropertySetCriteria& criteria) {
    return textCondition(Query::name, criteria.name) && ownerCondition(Query::ns, criteria.namespace_id);
  }
  static Condition order(const Condition& condition, const PropertySetCriteria&) {
    return orderedBy(condition, Query::name);
  }

  /// A clean set stays clean even if a member was resolved to another object, so that it is not rewritten.
  template <typename Save>
  static void references(PropertySet::Impl& set, Save&& save) {
    save(set.ns, Replaced::KeepsFlag);
    for (auto& definition : set.property_definitions) save(definition, Replaced::KeepsFlag);
    for (auto& definition : set.value_definitions) save(definition, Replaced::KeepsFlag);
    for (auto& type : set.entity_types) save(type, Replaced::KeepsFlag);
  }
};

}  // namespace tessel
