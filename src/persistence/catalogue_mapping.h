#pragma once

#include "catalogue/definition_impl.h"
#include "catalogue/property_set_impl.h"
#include "persistence/text_types.h"

namespace tessel {

using NamespaceReference = TsSmartPtr<const PropertyNamespace>;
using OptionalUnitReference = TsSmartPtr<const Unit>;
using OptionalIfcType = std::optional<IfcType>;

}  // namespace tessel

#ifdef ODB_COMPILER

#pragma db object(tessel::EntityType) table("EntityType") session callback(init)
#pragma db member(tessel::EntityType::impl_) transient
#pragma db member(tessel::EntityType::id_) virtual(unsigned int) column("id") get(impl().id) set(impl().id) id auto
#pragma db member(tessel::EntityType::name_) virtual(OdString) column("name") get(impl().name) set(impl().name)

#pragma db object(tessel::PropertyNamespace) table("PropertyNamespace") session callback(init)
#pragma db member(tessel::PropertyNamespace::impl_) transient
#pragma db member(tessel::PropertyNamespace::id_) virtual(unsigned int) column("id") get(impl().id) set(impl().id) \
  id auto
#pragma db member(tessel::PropertyNamespace::name_) virtual(OdString) column("name") get(impl().name) set(impl().name)
#pragma db member(tessel::PropertyNamespace::label_) virtual(tessel::OptionalText) column("label") get(impl().label) \
  set(impl().label)
#pragma db member(tessel::PropertyNamespace::editable_) virtual(bool) column("editable") get(impl().editable) \
  set(impl().editable)
#pragma db member(tessel::PropertyNamespace::visible_) virtual(bool) column("visible") get(impl().visible) \
  set(impl().visible)
#pragma db member(tessel::PropertyNamespace::revision_) virtual(unsigned int) column("revision") get(impl().revision) \
  set(impl().revision)

#pragma db value(tessel::PropertyType)

// The fields that both definitions have; each of the two classes has a table of its own.
#pragma db object(tessel::AbstractDefinition) abstract
#pragma db member(tessel::AbstractDefinition::impl_) transient
#pragma db member(tessel::AbstractDefinition::id_) virtual(unsigned int) column("id") get(impl().id) set(impl().id) \
  id auto
#pragma db member(tessel::AbstractDefinition::name_) virtual(OdString) column("name") get(impl().name) set(impl().name)
#pragma db member(tessel::AbstractDefinition::label_) virtual(tessel::OptionalText) column("label") get(impl().label) \
  set(impl().label)
#pragma db member(tessel::AbstractDefinition::description_) virtual(OdString) column("description") \
  get(impl().description) set(impl().description)
#pragma db member(tessel::AbstractDefinition::unit_) virtual(tessel::OptionalUnitReference) column("unit_id") \
  get(impl().unit) set(impl().unit) null
#pragma db member(tessel::AbstractDefinition::ifc_name_) virtual(tessel::OptionalText) column("ifc_name") \
  get(impl().ifc_name) set(impl().ifc_name)
#pragma db member(tessel::AbstractDefinition::ifc_type_) virtual(tessel::OptionalIfcType) column("ifc_type") \
  get(impl().ifc_type) set(impl().ifc_type)
#pragma db member(tessel::AbstractDefinition::type_) virtual(tessel::PropertyType) column("type_") get(impl().type) \
  set(impl().type)
#pragma db member(tessel::AbstractDefinition::visible_) virtual(bool) column("visible") get(impl().visible) \
  set(impl().visible)

#pragma db object(tessel::PropertyDefinition) table("PropertyDefinition") session callback(init)
#pragma db member(tessel::PropertyDefinition::ns_) virtual(tessel::NamespaceReference) column("namespace_id") \
  get(impl().ns) set(impl().ns) not_null
#pragma db member(tessel::PropertyDefinition::type_spec_) virtual(OdString) column("type_spec") get(impl().type_spec) \
  set(impl().type_spec)
#pragma db member(tessel::PropertyDefinition::type_spec2_) virtual(OdString) column("type_spec2") \
  get(impl().type_spec2) set(impl().type_spec2)
#pragma db member(tessel::PropertyDefinition::default_value_) virtual(OdString) column("default_value") \
  get(impl().default_value) set(impl().default_value)

#pragma db object(tessel::ValueDefinition) table("ValueDefinition") session callback(init)
#pragma db member(tessel::ValueDefinition::ns_) virtual(tessel::NamespaceReference) column("namespace_id") \
  get(impl().ns) set(impl().ns) not_null
#pragma db member(tessel::ValueDefinition::value_spec_) virtual(OdString) column("value_spec") get(impl().value_spec) \
  set(impl().value_spec)

#pragma db object(tessel::PropertySet) table("PropertySet") session callback(init)
#pragma db member(tessel::PropertySet::impl_) transient
#pragma db member(tessel::PropertySet::id_) virtual(unsigned int) column("id") get(impl().id) set(impl().id) id auto
#pragma db member(tessel::PropertySet::ns_) virtual(tessel::NamespaceReference) column("namespace_id") get(impl().ns) \
  set(impl().ns) not_null
#pragma db member(tessel::PropertySet::name_) virtual(OdString) column("name") get(impl().name) set(impl().name)
#pragma db member(tessel::PropertySet::label_) virtual(tessel::OptionalText) column("label") get(impl().label) \
  set(impl().label)
#pragma db member(tessel::PropertySet::property_definitions_) virtual(tessel::PropertySet::PropertyDefinitions) \
  get(impl().property_definitions) set(impl().property_definitions) table("PropertySet_property_definitions")   \
    value_column("property_definition_id") value_not_null
#pragma db member(tessel::PropertySet::value_definitions_) virtual(tessel::PropertySet::ValueDefinitions) \
  get(impl().value_definitions) set(impl().value_definitions) table("PropertySet_value_definitions")      \
    value_column("value_definition_id") value_not_null
#pragma db member(tessel::PropertySet::per_instance_) virtual(bool) column("per_instance") get(impl().per_instance) \
  set(impl().per_instance)
#pragma db member(tessel::PropertySet::entity_types_) virtual(tessel::PropertySet::EntityTypes)                      \
  get(impl().entity_types) set(impl().entity_types) table("PropertySet_entity_types") value_column("entity_type_id") \
    value_not_null
#pragma db member(tessel::PropertySet::ifc_name_) virtual(tessel::OptionalText) column("ifc_name") \
  get(impl().ifc_name) set(impl().ifc_name)
#pragma db member(tessel::PropertySet::visible_) virtual(bool) column("visible") get(impl().visible) set(impl().visible)

#endif
