#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include <tessel/platform/od_string.h>

namespace tessel::test {

// The keys of each type of element, in the order of its table in the format, for tests of what all keys have in common.
// An element type takes part by its entry in `elements()`.

enum class Kind { Text, NullableText, Word, Int16, Uint32, Double, Boolean, Reference };

struct Key {
  std::wstring name;
  Kind kind;
  bool required;
  std::string byDefault;  ///< What is in the file if the element is absent.

  // A value that is neither the default nor that of another key: its element, and what it gives in the file.
  std::wstring element;
  std::string inFile;

  std::string column;  ///< The value as an SQL expression on a row called "owner".
};

struct Element {
  std::wstring tag;
  std::string table;
  /// The elements that the sample values refer to. Their ids are none of rows, so they are labels even where "id" names
  /// a row.
  std::wstring before;
  std::vector<Key> keys;
};

inline std::wstring wide(const std::string& text) { return OdString::fromUtf8(text).toWide(); }
inline std::string narrow(const std::wstring& text) { return OdString(text.c_str()).toUtf8(); }

inline std::wstring elementOf(const std::wstring& key, const std::wstring& text) {
  return L"<" + key + L">" + text + L"</" + key + L">";
}

inline Key requiredText(const std::wstring& key) {
  return {key,
          Kind::Text,
          true,
          "",
          elementOf(key, key + L" &lt;\u00DF\u4E2D\U0001F3E0'&amp;"),
          narrow(key) + " <\u00DF\u4E2D\U0001F3E0'&",
          "\"" + narrow(key) + "\""};
}

inline Key text(const std::wstring& key) {
  Key optional = requiredText(key);
  optional.required = false;
  return optional;
}

inline Key nullableText(const std::wstring& key) {
  Key nullable = text(key);
  nullable.kind = Kind::NullableText;
  nullable.byDefault = "NULL";
  return nullable;
}

inline Key number(const std::wstring& key, Kind kind, const std::string& byDefault, const std::string& sample) {
  return {key, kind, false, byDefault, elementOf(key, wide(sample)), sample, "\"" + narrow(key) + "\""};
}

inline Key boolean(const std::wstring& key, bool byDefault) {
  return number(key, Kind::Boolean, byDefault ? "1" : "0", byDefault ? "0" : "1");
}

/// A reference that the sample makes by a document id of `before`; in the file it is told by the name of the target.
inline Key requiredReference(const std::wstring& key, unsigned int id, const std::string& table,
                             const std::string& name) {
  const std::string target = "(SELECT target.name FROM \"" + table + "\" target WHERE target.id = owner.";
  return {key,
          Kind::Reference,
          true,
          "",
          L"<" + key + L" id='" + std::to_wstring(id) + L"'/>",
          name,
          target + "\"" + narrow(key) + "_id\")"};
}

inline Key optionalReference(const std::wstring& key, unsigned int id, const std::string& table,
                             const std::string& name) {
  Key optional = requiredReference(key, id, table, name);
  optional.required = false;
  optional.byDefault = "NULL";
  return optional;
}

/// The keys that both kinds of definition have, and then their own. "type_spec2" is none of them: what a row has there
/// cannot be set to the default by an update.
inline std::vector<Key> definitionKeys(const std::vector<Key>& own) {
  std::vector<Key> keys = {
    requiredText(L"name"),
    nullableText(L"label"),
    text(L"description"),
    optionalReference(L"unit", 93, "tessel_Unit", "yard"),
    nullableText(L"ifc_name"),
    {L"ifc_type", Kind::Word, false, "NULL", L"<ifc_type>IfcDerivedMeasureValue_Force</ifc_type>", "329", "ifc_type"},
    {L"type", Kind::Word, false, "0|0|0",
     L"<type><structure>Map</structure><value_type>Double</value_type><key_type>String</key_type></type>", "3|10|11",
     "type_structure || '|' || type_value_type || '|' || type_key_type"},
    boolean(L"visible", true),
    requiredReference(L"namespace", 93, "tessel_PropertyNamespace", "Common"),
  };
  keys.insert(keys.end(), own.begin(), own.end());
  return keys;
}

inline const std::vector<Element>& elements() {
  const auto exponent = [](const wchar_t* key, const char* sample) { return number(key, Kind::Int16, "0", sample); };
  const auto real = [](const wchar_t* key, const char* sample) { return number(key, Kind::Double, "0.0", sample); };
  const std::wstring common = L"<propertynamespace id='93'>Common</propertynamespace>";
  const std::wstring yard = L"<unit id='93'><name>yard</name><label>yd</label><measure name='LENGTH'/></unit>";
  static const std::vector<Element> list = {
    {L"measure",
     "tessel_Measure",
     L"",
     {requiredText(L"name"), text(L"description"), exponent(L"length", "1"), exponent(L"mass", "-2"),
      exponent(L"time", "3"), exponent(L"thermodynamic_temperature", "-4"), exponent(L"electric_current", "32767"),
      exponent(L"luminous_intensity", "-32768"), exponent(L"amount_of_substance", "7")}},
    {L"unit",
     "tessel_Unit",
     L"<measure id='93'><name>FORCE</name></measure>",
     {requiredText(L"name"), text(L"label"), number(L"scale", Kind::Double, "1.0", "2.5"),
      requiredReference(L"measure", 93, "tessel_Measure", "FORCE")}},
    {L"entitytype", "tessel_EntityType", L"", {text(L"name")}},
    {L"propertynamespace",
     "tessel_PropertyNamespace",
     L"",
     {text(L"name"), nullableText(L"label"), boolean(L"editable", true), boolean(L"visible", true),
      number(L"revision", Kind::Uint32, "0", "4294967295")}},
    {L"propertydefinition", "tessel_PropertyDefinition", common + yard,
     definitionKeys({text(L"type_spec"), text(L"default_value")})},
    {L"valuedefinition", "tessel_ValueDefinition", common + yard, definitionKeys({text(L"value_spec")})},
    {L"propertyset",
     "tessel_PropertySet",
     common,
     {requiredReference(L"namespace", 93, "tessel_PropertyNamespace", "Common"), requiredText(L"name"),
      nullableText(L"label"), boolean(L"per_instance", false), nullableText(L"ifc_name"), boolean(L"visible", true)}},
    {L"site",
     "tessel_Site",
     L"",
     {requiredText(L"name"), text(L"long_name"), text(L"description"), text(L"site_type"),
      real(L"ref_elevation", "-1.125"), text(L"land_title_number"), text(L"internal_location"), text(L"address_lines"),
      text(L"postal_box"), text(L"town"), text(L"region"), text(L"postal_code"), text(L"country"),
      real(L"buildable_area", "2.125"), real(L"total_area", "3.125"), real(L"building_height_limit", "4.125")}},
    {L"building",
     "tessel_Building",
     L"<site id='93'><name>Main</name></site>",
     {requiredReference(L"site", 93, "tessel_Site", "Main"),
      requiredText(L"name"),
      text(L"long_name"),
      text(L"description"),
      real(L"elevation_of_ref_height", "1.125"),
      real(L"elevation_of_terrain", "2.125"),
      text(L"internal_location"),
      text(L"address_lines"),
      text(L"postal_box"),
      text(L"town"),
      text(L"region"),
      text(L"postal_code"),
      text(L"country"),
      text(L"building_id"),
      boolean(L"is_permanent_id", false),
      text(L"main_fire_use"),
      text(L"ancillary_fire_use"),
      boolean(L"sprinkler_protection", false),
      boolean(L"sprinkler_protection_automatic", false),
      text(L"occupancy_type"),
      real(L"gross_planned_area", "3.125"),
      number(L"number_of_storeys", Kind::Uint32, "1", "4294967295"),
      text(L"year_of_construction"),
      boolean(L"is_landmarked", false)}},
    {L"story",
     "tessel_Story",
     L"<site id='93'><name>Main</name></site><building id='93'><site id='93'/><name>North</name></building>",
     {requiredReference(L"building", 93, "tessel_Building", "North"), requiredText(L"name"), text(L"long_name"),
      text(L"description"), real(L"elevation", "1.125"), boolean(L"entrance_level", false),
      boolean(L"above_ground", true), boolean(L"sprinkler_protection", false),
      boolean(L"sprinkler_protection_automatic", false), real(L"gross_area_planned", "2.125"),
      real(L"net_area_planned", "3.125")}},
  };
  return list;
}

/// One key of one element type.
struct ElementKey {
  const Element* element;
  const Key* key;
};

inline std::vector<ElementKey> keysOf(const std::function<bool(const Key&)>& isWanted) {
  std::vector<ElementKey> keys;
  for (const Element& element : elements()) {
    for (const Key& key : element.keys) {
      if (isWanted(key)) keys.push_back({&element, &key});
    }
  }
  return keys;
}

// How the parameters show in the messages of failed tests.
inline void PrintTo(const Element& element, std::ostream* out) { *out << narrow(element.tag); }
inline void PrintTo(const ElementKey& key, std::ostream* out) {
  *out << narrow(key.element->tag) << " > " << narrow(key.key->name);
}

}  // namespace tessel::test
