#pragma once

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
template <typename T>
struct ElementTraits;

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
