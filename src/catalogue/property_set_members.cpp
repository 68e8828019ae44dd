#include "catalogue/members.h"

namespace tessel {

const PropertySet::PropertyDefinitions& PropertySet::property_definitions() const {
  return impl().property_definitions;
}

TsSmartPtr<PropertyDefinition> PropertySet::append_property_definition(const OdString& name, const PropertyType& type) {
  return insert_property_definition(property_definitions().end(), name, type);
}

TsSmartPtr<PropertyDefinition> PropertySet::insert_property_definition(PropertyDefinitions::const_iterator pos,
                                                                       const OdString& name, const PropertyType& type) {
  return insertNewDefinition<PropertyDefinition>(impl(), impl().property_definitions, pos, name, type);
}

bool PropertySet::append_property_definition(const TsSmartPtr<const PropertyDefinition>& definition) {
  return insert_property_definition(property_definitions().end(), definition);
}

bool PropertySet::insert_property_definition(PropertyDefinitions::const_iterator pos,
                                             const TsSmartPtr<const PropertyDefinition>& definition) {
  return insertDefinition(impl(), impl().property_definitions, pos, definition);
}

void PropertySet::remove_property_definition(const OdString& name) {
  eraseIfFound(impl(), impl().property_definitions, findMember(property_definitions(), name));
}

void PropertySet::remove_property_definition(const TsSmartPtr<const PropertyDefinition>& definition) {
  removeDefinition(impl(), impl().property_definitions, definition);
}

PropertySet::PropertyDefinitions::const_iterator
PropertySet::remove_property_definition(PropertyDefinitions::const_iterator pos) {
  return eraseMember(impl(), impl().property_definitions, pos);
}

void PropertySet::clear_property_definitions() { clearMembers(impl(), impl().property_definitions); }

const PropertySet::ValueDefinitions& PropertySet::value_definitions() const { return impl().value_definitions; }

TsSmartPtr<ValueDefinition> PropertySet::append_value_definition(const OdString& name, const PropertyType& type) {
  return insert_value_definition(value_definitions().end(), name, type);
}

TsSmartPtr<ValueDefinition> PropertySet::insert_value_definition(ValueDefinitions::const_iterator pos,
                                                                 const OdString& name, const PropertyType& type) {
  return insertNewDefinition<ValueDefinition>(impl(), impl().value_definitions, pos, name, type);
}

bool PropertySet::append_value_definition(const TsSmartPtr<const ValueDefinition>& definition) {
  return insert_value_definition(value_definitions().end(), definition);
}

bool PropertySet::insert_value_definition(ValueDefinitions::const_iterator pos,
                                          const TsSmartPtr<const ValueDefinition>& definition) {
  return insertDefinition(impl(), impl().value_definitions, pos, definition);
}

void PropertySet::remove_value_definition(const OdString& name) {
  eraseIfFound(impl(), impl().value_definitions, findMember(value_definitions(), name));
}

void PropertySet::remove_value_definition(const TsSmartPtr<const ValueDefinition>& definition) {
  removeDefinition(impl(), impl().value_definitions, definition);
}

PropertySet::ValueDefinitions::const_iterator
PropertySet::remove_value_definition(ValueDefinitions::const_iterator pos) {
  return eraseMember(impl(), impl().value_definitions, pos);
}

void PropertySet::clear_value_definitions() { clearMembers(impl(), impl().value_definitions); }

const PropertySet::EntityTypes& PropertySet::entity_types() const { return impl().entity_types; }

bool PropertySet::insert_entity_type(const OdString& name) { return insert_entity_type(EntityType::create(name)); }

bool PropertySet::insert_entity_type(const TsSmartPtr<const EntityType>& type) {
  return type && insertMember(impl(), impl().entity_types, entity_types().end(), type);
}

void PropertySet::remove_entity_type(const OdString& name) {
  eraseIfFound(impl(), impl().entity_types, findMember(entity_types(), name));
}

void PropertySet::remove_entity_type(const TsSmartPtr<const EntityType>& type) {
  if (type) remove_entity_type(type->name());
}

PropertySet::EntityTypes::const_iterator PropertySet::remove_entity_type(EntityTypes::const_iterator pos) {
  return eraseMember(impl(), impl().entity_types, pos);
}

}  // namespace tessel
