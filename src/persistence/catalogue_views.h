#pragma once

#include "persistence/catalogue_mapping.h"

namespace tessel {

// Read without building objects: the ids that meet a condition, how many there are, and the name of a row.

struct EntityTypeIdView {
  unsigned int id;
};
struct EntityTypeCountView {
  std::size_t count;
};
struct EntityTypeNameView {
  OdString name;
};

struct PropertyNamespaceIdView {
  unsigned int id;
};
struct PropertyNamespaceCountView {
  std::size_t count;
};
struct PropertyNamespaceNameView {
  OdString name;
};

struct PropertyDefinitionIdView {
  unsigned int id;
};
struct PropertyDefinitionCountView {
  std::size_t count;
};
struct PropertyDefinitionNameView {
  OdString name;
};

struct ValueDefinitionIdView {
  unsigned int id;
};
struct ValueDefinitionCountView {
  std::size_t count;
};
struct ValueDefinitionNameView {
  OdString name;
};

struct PropertySetIdView {
  unsigned int id;
};
struct PropertySetCountView {
  std::size_t count;
};
struct PropertySetNameView {
  OdString name;
};

/// A definition as a member of a set. One row for each set that a definition is in, and one for a definition in none.
struct IfcPropertySetDefinitionView {
  TsSmartPtr<PropertyDefinition> definition;
};

/// The definitions of a set, by id alone.
struct PropertySetDefinitionView {
  unsigned int id;
};
struct PropertySetValDefinitionView {
  unsigned int id;
};

}  // namespace tessel

#ifdef ODB_COMPILER

#pragma db view(tessel::EntityTypeIdView) object(tessel::EntityType) pointer(*)
#pragma db member(tessel::EntityTypeIdView::id) column(tessel::EntityType::id_)
#pragma db view(tessel::EntityTypeCountView) object(tessel::EntityType) pointer(*)
#pragma db member(tessel::EntityTypeCountView::count) column("count(" + tessel::EntityType::id_ + ")")
#pragma db view(tessel::EntityTypeNameView) object(tessel::EntityType) pointer(*)
#pragma db member(tessel::EntityTypeNameView::name) column(tessel::EntityType::name_)

#pragma db view(tessel::PropertyNamespaceIdView) object(tessel::PropertyNamespace) pointer(*)
#pragma db member(tessel::PropertyNamespaceIdView::id) column(tessel::PropertyNamespace::id_)
#pragma db view(tessel::PropertyNamespaceCountView) object(tessel::PropertyNamespace) pointer(*)
#pragma db member(tessel::PropertyNamespaceCountView::count) column("count(" + tessel::PropertyNamespace::id_ + ")")
#pragma db view(tessel::PropertyNamespaceNameView) object(tessel::PropertyNamespace) pointer(*)
#pragma db member(tessel::PropertyNamespaceNameView::name) column(tessel::PropertyNamespace::name_)

#pragma db view(tessel::PropertyDefinitionIdView) object(tessel::PropertyDefinition) pointer(*)
#pragma db member(tessel::PropertyDefinitionIdView::id) column(tessel::PropertyDefinition::id_)
#pragma db view(tessel::PropertyDefinitionCountView) object(tessel::PropertyDefinition) pointer(*)
#pragma db member(tessel::PropertyDefinitionCountView::count) column("count(" + tessel::PropertyDefinition::id_ + ")")
#pragma db view(tessel::PropertyDefinitionNameView) object(tessel::PropertyDefinition) pointer(*)
#pragma db member(tessel::PropertyDefinitionNameView::name) column(tessel::PropertyDefinition::name_)

#pragma db view(tessel::ValueDefinitionIdView) object(tessel::ValueDefinition) pointer(*)
#pragma db member(tessel::ValueDefinitionIdView::id) column(tessel::ValueDefinition::id_)
#pragma db view(tessel::ValueDefinitionCountView) object(tessel::ValueDefinition) pointer(*)
#pragma db member(tessel::ValueDefinitionCountView::count) column("count(" + tessel::ValueDefinition::id_ + ")")
#pragma db view(tessel::ValueDefinitionNameView) object(tessel::ValueDefinition) pointer(*)
#pragma db member(tessel::ValueDefinitionNameView::name) column(tessel::ValueDefinition::name_)

#pragma db view(tessel::PropertySetIdView) object(tessel::PropertySet) pointer(*)
#pragma db member(tessel::PropertySetIdView::id) column(tessel::PropertySet::id_)
#pragma db view(tessel::PropertySetCountView) object(tessel::PropertySet) pointer(*)
#pragma db member(tessel::PropertySetCountView::count) column("count(" + tessel::PropertySet::id_ + ")")
#pragma db view(tessel::PropertySetNameView) object(tessel::PropertySet) pointer(*)
#pragma db member(tessel::PropertySetNameView::name) column(tessel::PropertySet::name_)

#pragma db view(tessel::IfcPropertySetDefinitionView) object(tessel::PropertyDefinition) table(                    \
  "tessel_PropertySet_property_definitions"                                                                        \
  : "\"tessel_PropertySet_property_definitions\".\"property_definition_id\" = " + tessel::PropertyDefinition::id_) \
  object(tessel::PropertySet                                                                                       \
         : "\"tessel_PropertySet_property_definitions\".\"object_id\" = " + tessel::PropertySet::id_) pointer(*)

#pragma db view(tessel::PropertySetDefinitionView) object(tessel::PropertySet) \
  table("tessel_PropertySet_property_definitions" inner                        \
        : "\"tessel_PropertySet_property_definitions\".\"object_id\" = " + tessel::PropertySet::id_) pointer(*)
#pragma db member(tessel::PropertySetDefinitionView::id) \
  column("tessel_PropertySet_property_definitions.property_definition_id")

#pragma db view(tessel::PropertySetValDefinitionView) object(tessel::PropertySet)                                  \
  table("tessel_PropertySet_value_definitions" inner                                                               \
        : "\"tessel_PropertySet_value_definitions\".\"object_id\" = " + tessel::PropertySet::id_)                  \
    object(tessel::ValueDefinition inner                                                                           \
           : "\"tessel_PropertySet_value_definitions\".\"value_definition_id\" = " + tessel::ValueDefinition::id_) \
      pointer(*)
#pragma db member(tessel::PropertySetValDefinitionView::id) \
  column("tessel_PropertySet_value_definitions.value_definition_id")

#endif
