#pragma once

#include <tessel/definitions.h>
#include <tessel/property_set.h>
#include <tessel/spatial.h>
#include <tessel/units.h>

#include "import/field_reader.h"

namespace tessel {

/// What the import must know of a class:
///
/// - `tag`: the name of its elements.
/// - `readFields(reader, object)`: one chain over the keys of an element, in the order in which faults are told.
/// - `findByAttributes(run, element, field)`: what the attributes of a reference select; null if it has none of them, and
///   UnresolvedReference if they lead nowhere. Only for classes that others refer to.
/// - `findExisting(run, element)`: the row that an element is merged with by its name, whether or not rows are updated by
///   id. Only for definitions of properties and for sets.
template <typename T>
struct ElementTraits;

template <>
struct ElementTraits<EntityType> {
  static constexpr const wchar_t* tag = L"entitytype";
  static bool readFields(const FieldReader& reader, EntityType& type);
  static TsSmartPtr<EntityType> findByAttributes(ImportContext& run, const pugi::xml_node& element,
                                                 const ElementContext&);
};

template <>
struct ElementTraits<PropertyNamespace> {
  static constexpr const wchar_t* tag = L"propertynamespace";
  static bool readFields(const FieldReader& reader, PropertyNamespace& ns);
  static TsSmartPtr<PropertyNamespace> findByAttributes(ImportContext& run, const pugi::xml_node& element,
                                                        const ElementContext&);
};

template <>
struct ElementTraits<PropertyDefinition> {
  static constexpr const wchar_t* tag = L"propertydefinition";
  static bool readFields(const FieldReader& reader, PropertyDefinition& definition);
  static TsSmartPtr<PropertyDefinition> findByAttributes(ImportContext& run, const pugi::xml_node& element,
                                                         const ElementContext& field);
  static TsSmartPtr<PropertyDefinition> findExisting(ImportContext& run, const pugi::xml_node& element);
};

template <>
struct ElementTraits<ValueDefinition> {
  static constexpr const wchar_t* tag = L"valuedefinition";
  static bool readFields(const FieldReader& reader, ValueDefinition& definition);
  static TsSmartPtr<ValueDefinition> findByAttributes(ImportContext& run, const pugi::xml_node& element,
                                                      const ElementContext& field);
};

template <>
struct ElementTraits<PropertySet> {
  static constexpr const wchar_t* tag = L"propertyset";
  static bool readFields(const FieldReader& reader, PropertySet& set);
  static TsSmartPtr<PropertySet> findExisting(ImportContext& run, const pugi::xml_node& element);
};

template <>
struct ElementTraits<Measure> {
  static constexpr const wchar_t* tag = L"measure";
  static bool readFields(const FieldReader& reader, Measure& measure);
  static TsSmartPtr<Measure> findByAttributes(ImportContext& run, const pugi::xml_node& element, const ElementContext&);
};

template <>
struct ElementTraits<Unit> {
  static constexpr const wchar_t* tag = L"unit";
  static bool readFields(const FieldReader& reader, Unit& unit);
  static TsSmartPtr<Unit> findByAttributes(ImportContext& run, const pugi::xml_node& element, const ElementContext&);
};

template <>
struct ElementTraits<Site> {
  static constexpr const wchar_t* tag = L"site";
  static bool readFields(const FieldReader& reader, Site& site);
  static TsSmartPtr<Site> findByAttributes(ImportContext& run, const pugi::xml_node& element, const ElementContext&);
};

template <>
struct ElementTraits<Building> {
  static constexpr const wchar_t* tag = L"building";
  static bool readFields(const FieldReader& reader, Building& building);
  static TsSmartPtr<Building> findByAttributes(ImportContext& run, const pugi::xml_node& element,
                                               const ElementContext& field);
};

template <>
struct ElementTraits<Story> {
  static constexpr const wchar_t* tag = L"story";
  static bool readFields(const FieldReader& reader, Story& story);
};

}  // namespace tessel
