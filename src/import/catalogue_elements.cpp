#include <tessel/project_db.h>

#include "catalogue/definition_impl.h"
#include "catalogue/property_set_impl.h"
#include "import/element_traits.h"
#include "import/enum_merge.h"
#include "import/named_reference.h"

namespace tessel {
namespace {

/// The fields that both kinds of definition have.
template <typename Impl>
bool readDefinition(const FieldReader& reader, Impl& definition) {
  return reader.required(L"name", definition.name) && reader.optional(L"label", definition.label) &&
         reader.optional(L"description", definition.description) && reader.nullable(L"unit", definition.unit) &&
         reader.optional(L"ifc_name", definition.ifc_name) && reader.optional(L"ifc_type", definition.ifc_type) &&
         reader.optional(L"type", definition.type) && reader.optional(L"visible", definition.visible, true) &&
         reader.definitionNamespace(definition.ns);
}

/// The definition of that name in the namespace of the set that is being read. The attribute "namespace" never steers the
/// search, it is only told when nothing was found.
template <typename T>
TsSmartPtr<T> findDefinition(ImportContext& run, const pugi::xml_node& element, const ElementContext& field) {
  const pugi::xml_attribute attribute = element.attribute(L"name");
  if (!attribute) return {};
  const OdString name = attribute.value();
  const PropertySet* const set = field.set();
  if (set && set->ns()) {
    const TsSmartPtr<PropertyNamespace> ns = run.db.get<PropertyNamespace>(NameKey(set->ns()->name()));
    const TsSmartPtr<T> found = ns ? run.db.get<T>(NameObjectKey<PropertyNamespace>(name, ns->id())) : nullptr;
    if (found) return found;
  }
  const OdString ns = element.attribute(L"namespace").value();
  throw UnresolvedReference{searchByName(name) + u" and namespace '" + ns + u"'"};
}

/// A faulty namespace is told here already, under the bare tag, and once more when the fields are read.
template <typename T>
TsSmartPtr<T> findByNameAndNamespace(ImportContext& run, const pugi::xml_node& element) {
  const OdString name = element.child(L"name").text().get();
  if (name.isEmpty()) return {};
  const ElementContext object{nullptr, ObjectTraits<T>::type, nullptr, ElementPath(ElementTraits<T>::tag),
                              true,    element.offset_debug()};
  TsSmartPtr<PropertyNamespace> ns;
  if (!readReference(run, element.child(L"namespace"), ns, object)) return {};
  return run.db.get<T>(NameObjectKey<PropertyNamespace>(name, ns->id()));
}

/// Adds a member to a list unless it holds an equal one already.
template <typename T>
auto addingTo(std::vector<TsSmartPtr<const T>>& members) {
  return [&members](const TsSmartPtr<T>& added) {
    for (const TsSmartPtr<const T>& member : members) {
      if (*member == *added) return;
    }
    members.push_back(added);
  };
}

}  // namespace

bool ElementTraits<EntityType>::readFields(const FieldReader& reader, EntityType& type) {
  return reader.nameOrText(type.impl().name);
}

TsSmartPtr<EntityType> ElementTraits<EntityType>::findByAttributes(ImportContext& run, const pugi::xml_node& element,
                                                                   const ElementContext&) {
  return findByName<EntityType>(run, element);
}

bool ElementTraits<PropertyNamespace>::readFields(const FieldReader& reader, PropertyNamespace& object) {
  PropertyNamespace::Impl& ns = object.impl();
  return reader.nameOrText(ns.name) && reader.optional(L"label", ns.label) &&
         reader.optional(L"editable", ns.editable, true) && reader.optional(L"visible", ns.visible, true) &&
         reader.optional(L"revision", ns.revision, 0u);
}

TsSmartPtr<PropertyNamespace> ElementTraits<PropertyNamespace>::findByAttributes(ImportContext& run,
                                                                                 const pugi::xml_node& element,
                                                                                 const ElementContext&) {
  return findByName<PropertyNamespace>(run, element);
}

bool ElementTraits<PropertyDefinition>::readFields(const FieldReader& reader, PropertyDefinition& object) {
  PropertyDefinition::Impl& definition = object.impl();
  const OdString oldSpec = definition.type_spec2;
  const bool success = readDefinition(reader, definition) && reader.optional(L"type_spec", definition.type_spec) &&
                       reader.optional(L"type_spec2", definition.type_spec2) &&
                       reader.optional(L"default_value", definition.default_value);
  if (success) object.set_type_spec2(mergeEnumSpec(definition.type_spec2, oldSpec));
  return success;
}

TsSmartPtr<PropertyDefinition> ElementTraits<PropertyDefinition>::findByAttributes(ImportContext& run,
                                                                                   const pugi::xml_node& element,
                                                                                   const ElementContext& field) {
  return findDefinition<PropertyDefinition>(run, element, field);
}

TsSmartPtr<PropertyDefinition> ElementTraits<PropertyDefinition>::findExisting(ImportContext& run,
                                                                               const pugi::xml_node& element) {
  return findByNameAndNamespace<PropertyDefinition>(run, element);
}

bool ElementTraits<ValueDefinition>::readFields(const FieldReader& reader, ValueDefinition& object) {
  ValueDefinition::Impl& definition = object.impl();
  return readDefinition(reader, definition) && reader.optional(L"value_spec", definition.value_spec);
}

TsSmartPtr<ValueDefinition> ElementTraits<ValueDefinition>::findByAttributes(ImportContext& run,
                                                                             const pugi::xml_node& element,
                                                                             const ElementContext& field) {
  return findDefinition<ValueDefinition>(run, element, field);
}

/// Property definitions and entity types are added to what an existing set holds. Value definitions replace it.
bool ElementTraits<PropertySet>::readFields(const FieldReader& reader, PropertySet& object) {
  PropertySet::Impl& set = object.impl();
  const auto replaceValueDefinitions = [&] {
    set.value_definitions.clear();
    return reader.each<ValueDefinition>(
      L"value_definition", [&](const TsSmartPtr<ValueDefinition>& added) { set.value_definitions.push_back(added); });
  };
  return reader.required(L"namespace", set.ns) && reader.required(L"name", set.name) &&
         reader.optional(L"label", set.label) &&
         reader.each<PropertyDefinition>(L"property_definition", addingTo(set.property_definitions)) &&
         replaceValueDefinitions() && reader.optional(L"per_instance", set.per_instance, false) &&
         reader.each<EntityType>(L"entity_type", addingTo(set.entity_types)) &&
         reader.optional(L"ifc_name", set.ifc_name) && reader.optional(L"visible", set.visible, true);
}

TsSmartPtr<PropertySet> ElementTraits<PropertySet>::findExisting(ImportContext& run, const pugi::xml_node& element) {
  return findByNameAndNamespace<PropertySet>(run, element);
}

}  // namespace tessel
