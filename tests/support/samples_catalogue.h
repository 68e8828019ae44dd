#pragma once

#include <vector>

#include <tessel/criteria.h>
#include <tessel/definitions.h>
#include <tessel/property_set.h>

#include "support/samples_field.h"

namespace tessel::test {

/// A text that may be absent, which is NULL in the file. Equality asks whether there is one, not which.
template <typename T, typename Has, typename Get, typename Set>
Field<T> optionalText(const std::string& column, Has has, Get get, Set set) {
  Field<T> field = settable<T>(column, get, set);
  field.inFile = [has, get](const T& object) {
    return std::invoke(has, object) ? inFile(std::invoke(get, object)) : "NULL";
  };
  field.compared = false;
  return field;
}

template <>
struct Sample<EntityType> {
  using Parent = Object;
  static constexpr const wchar_t* className = L"EntityType";
  static constexpr const char* table = "tessel_EntityType";

  static TsSmartPtr<EntityType> create(int number) { return EntityType::create(OdString::format(L"Type %d", number)); }
  static std::vector<TsSmartPtr<const Object>> references(const EntityType&) { return {}; }
  static NameKey key(const EntityType& type) { return NameKey(type.name()); }
  static NameCriteria criteria(const EntityType& type) {
    NameCriteria criteria;
    criteria.name.equals(type.name());
    return criteria;
  }

  static std::vector<Field<EntityType>> fields() {
    return {settable<EntityType>("name", &EntityType::name, &EntityType::set_name)};
  }
};

template <>
struct Sample<PropertyNamespace> {
  using Parent = Object;
  static constexpr const wchar_t* className = L"PropertyNamespace";
  static constexpr const char* table = "tessel_PropertyNamespace";

  static TsSmartPtr<PropertyNamespace> create(int number) {
    return PropertyNamespace::create(OdString::format(L"Namespace %d", number));
  }
  static std::vector<TsSmartPtr<const Object>> references(const PropertyNamespace&) { return {}; }
  static NameKey key(const PropertyNamespace& ns) { return NameKey(ns.name()); }
  static NameCriteria criteria(const PropertyNamespace& ns) {
    NameCriteria criteria;
    criteria.name.equals(ns.name());
    return criteria;
  }

  static std::vector<Field<PropertyNamespace>> fields() {
    using T = PropertyNamespace;
    Field<T> name = fixed<T>("name", &T::name, [] { return filled(T::create(L"Another"), 1); });
    name.assigned = false;
    return {
      name,
      optionalText<T>("label", &T::has_label, &T::label, &T::set_label),
      settable<T>("editable", &T::editable, &T::set_editable),
      settable<T>("visible", &T::visible, &T::set_visible),
      settable<T>("revision", &T::revision, &T::set_revision),
    };
  }
};

template <typename T>
Field<T> ifcTypeField() {
  Field<T> field;
  field.column = "ifc_type";
  field.inFile = [](const T& definition) {
    return definition.has_ifc_type() ? std::to_string(static_cast<int>(definition.ifc_type())) : "NULL";
  };
  field.fill = [](T& definition, int number) {
    definition.set_ifc_type(static_cast<IfcType>(IfcDerivedMeasureValue_Force + number % 10));
  };
  field.change = [](T& definition) {
    definition.set_ifc_type(definition.ifc_type() == IfcTypeUndefined ? IfcSimpleValue_Label : IfcTypeUndefined);
  };
  field.setSame = [](T& definition) { definition.set_ifc_type(definition.ifc_type()); };
  field.compared = false;
  return field;
}

/// One of the three numbers that make up the type of a definition; `last` is the highest.
template <typename T, typename Part>
Field<T> typeField(const std::string& column, Part PropertyType::*part, int last) {
  const auto set = [part](T& definition, int value) {
    PropertyType type = definition.type();
    type.*part = static_cast<Part>(value);
    definition.set_type(type);
  };
  const auto get = [part](const T& definition) { return static_cast<int>(definition.type().*part); };

  Field<T> field;
  field.column = column;
  field.inFile = [get](const T& definition) { return std::to_string(get(definition)); };
  field.fill = [set, last](T& definition, int number) { set(definition, 1 + number % last); };
  field.change = [get, set, last](T& definition) { set(definition, get(definition) == last ? 0 : last); };
  field.setSame = [get, set](T& definition) { set(definition, get(definition)); };
  field.otherwise = [change = field.change] {
    const TsSmartPtr<T> definition = makeSample<T>();
    change(*definition);
    return definition;
  };
  return field;
}

/// What both classes of definition have in common.
template <typename T>
struct DefinitionSample {
  using Parent = AbstractDefinition;

  static TsSmartPtr<T> create(int number) { return create(number, makeSample<PropertyNamespace>(number)); }
  static TsSmartPtr<T> create(int number, const TsSmartPtr<const PropertyNamespace>& ns) {
    TsSmartPtr<T> definition = T::create(ns);
    definition->set_unit(makeSample<Unit>(number));
    return definition;
  }

  static std::vector<TsSmartPtr<const Object>> references(const T& definition) {
    return {definition.ns(), definition.unit()};
  }
  static NameObjectKey<PropertyNamespace> key(const T& definition) {
    return NameObjectKey<PropertyNamespace>(definition.name(), definition.ns()->id());
  }
  static auto criteria(const T& definition) {
    typename ObjectTraits<T>::criteria_type criteria;
    criteria.namespace_id = definition.ns()->id();
    criteria.name.equals(definition.name());
    criteria.ifc_name.equals(definition.ifc_name());
    criteria.type = definition.type();
    return criteria;
  }

protected:
  static std::vector<Field<T>> commonFields() {
    return {
      settable<T>("name", &T::name, &T::set_name),
      optionalText<T>("label", &T::has_label, &T::label, &T::set_label),
      settable<T>("description", &T::description, &T::set_description),
      settable<T>("unit_id", &T::unit, &T::set_unit),
      optionalText<T>("ifc_name", &T::has_ifc_name, &T::ifc_name, &T::set_ifc_name),
      ifcTypeField<T>(),
      typeField<T>("type_structure", &PropertyType::structure, 3),
      typeField<T>("type_value_type", &PropertyType::value_type, 18),
      typeField<T>("type_key_type", &PropertyType::key_type, 18),
      settable<T>("visible", &T::visible, &T::set_visible),
      fixed<T>("namespace_id", &T::ns, [] { return filled(create(1, makeSample<PropertyNamespace>(7)), 1); }),
    };
  }
};

template <>
struct Sample<PropertyDefinition> : DefinitionSample<PropertyDefinition> {
  static constexpr const wchar_t* className = L"PropertyDefinition";
  static constexpr const char* table = "tessel_PropertyDefinition";

  static std::vector<Field<PropertyDefinition>> fields() {
    using T = PropertyDefinition;
    std::vector<Field<T>> fields = commonFields();
    fields.push_back(settable<T>("type_spec", &T::type_spec, &T::set_type_spec));
    fields.push_back(settable<T>("type_spec2", &T::type_spec2, &T::set_type_spec2));
    fields.push_back(settable<T>(
      "default_value", [](const T& definition) { return definition.default_value(); },
      [](T& definition, const OdString& text) { definition.set_default_value(text); }));
    return fields;
  }
};

template <>
struct Sample<ValueDefinition> : DefinitionSample<ValueDefinition> {
  static constexpr const wchar_t* className = L"ValueDefinition";
  static constexpr const char* table = "tessel_ValueDefinition";

  static std::vector<Field<ValueDefinition>> fields() {
    using T = ValueDefinition;
    std::vector<Field<T>> fields = commonFields();
    fields.push_back(settable<T>("value_spec", &T::value_spec, &T::set_value_spec));
    return fields;
  }
};

/// Without members: a set equals only sets with the very same members, unlike all other references.
template <>
struct Sample<PropertySet> {
  using Parent = Object;
  static constexpr const wchar_t* className = L"PropertySet";
  static constexpr const char* table = "tessel_PropertySet";

  static TsSmartPtr<PropertySet> create(int number) {
    return PropertySet::create(makeSample<PropertyNamespace>(number));
  }
  static std::vector<TsSmartPtr<const Object>> references(const PropertySet& set) { return {set.ns()}; }
  static NameObjectKey<PropertyNamespace> key(const PropertySet& set) {
    return NameObjectKey<PropertyNamespace>(set.name(), set.ns()->id());
  }
  static PropertySetCriteria criteria(const PropertySet& set) {
    PropertySetCriteria criteria;
    criteria.name.equals(set.name());
    criteria.namespace_id = set.ns()->id();
    return criteria;
  }

  static std::vector<Field<PropertySet>> fields() {
    using T = PropertySet;
    Field<T> ns = fixed<T>("namespace_id", &T::ns, [] { return filled(create(7), 1); });
    ns.assigned = false;
    return {
      ns,
      settable<T>("name", &T::name, &T::set_name),
      optionalText<T>("label", &T::has_label, &T::label, &T::set_label),
      settable<T>("per_instance", &T::per_instance, &T::set_per_instance),
      optionalText<T>("ifc_name", &T::has_ifc_name, &T::ifc_name, &T::set_ifc_name),
      settable<T>("visible", &T::visible, &T::set_visible),
    };
  }
};

}  // namespace tessel::test
