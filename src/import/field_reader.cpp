#include "import/field_reader.h"

#include <algorithm>

#include <tessel/property_set.h>

#include "catalogue/words.h"
#include "import/marks.h"
#include "import/messages.h"

namespace tessel {

bool isNil(const ImportContext& run, const pugi::xml_node& element) {
  return element.attribute(run.nilAttributeName.c_str()).as_bool();
}

bool isNullElement(const ImportContext& run, const pugi::xml_node& element) {
  if (!element || isNil(run, element)) return true;
  if (element.first_child()) return false;
  const auto attributes = element.attributes();
  return std::all_of(attributes.begin(), attributes.end(), isMark);
}

/// The child with this key, marked as read; null if there is none. Of two, the second one stays unknown.
pugi::xml_node FieldReader::take(const wchar_t* key) const {
  const pugi::xml_node child = element_.child(key);
  markRead(child);
  return child;
}

bool FieldReader::required(const wchar_t* key, OdString& field) const {
  const pugi::xml_node child = take(key);
  if (!child) {
    reportMissing(run_, object_.field(key));
    return false;
  }
  field = OdString(child.text().get());
  return true;
}

bool FieldReader::optional(const wchar_t* key, OdString& field) const {
  field = OdString(take(key).text().get());
  return true;
}

bool FieldReader::optional(const wchar_t* key, std::optional<OdString>& field) const {
  const pugi::xml_node child = take(key);
  if (!child || isNil(run_, child)) {
    field.reset();
  } else {
    field = OdString(child.text().get());
  }
  return true;
}

bool FieldReader::optional(const wchar_t* key, bool& field, bool defaultValue) const {
  const pugi::xml_node child = take(key);
  field = child ? child.text().as_bool() : defaultValue;
  return true;
}

bool FieldReader::optional(const wchar_t* key, short& field, short defaultValue) const {
  const pugi::xml_node child = take(key);
  field = child ? static_cast<short>(child.text().as_int()) : defaultValue;
  return true;
}

bool FieldReader::optional(const wchar_t* key, unsigned int& field, unsigned int defaultValue) const {
  const pugi::xml_node child = take(key);
  field = child ? child.text().as_uint() : defaultValue;
  return true;
}

bool FieldReader::optional(const wchar_t* key, double& field, double defaultValue) const {
  const pugi::xml_node child = take(key);
  field = child ? child.text().as_double() : defaultValue;
  return true;
}

bool FieldReader::nameOrText(OdString& field) const {
  const pugi::xml_node child = take(L"name");
  field = OdString((child ? child : element_).text().get());
  return true;
}

bool FieldReader::optional(const wchar_t* key, std::optional<IfcType>& field) const {
  field.reset();
  const pugi::xml_node child = take(key);
  if (!child || isNil(run_, child)) return true;
  field = ifcTypeFromWord(child.text().get());
  if (!field) reportInvalidWord(run_, object_.field(key), child);
  return field.has_value();
}

/// An element that holds a word alone is a single value of that type.
bool FieldReader::optional(const wchar_t* key, PropertyType& field) const {
  field = PropertyType();
  const pugi::xml_node child = take(key);
  if (!child) return true;
  const ElementContext context = object_.field(key);
  const FieldReader parts(run_, child, context);
  return parts.structure(field.structure) && parts.valueType(field.value_type) && parts.keyType(field.key_type);
}

bool FieldReader::structure(PropertyType::Structure& field) const {
  field = PropertyType::Structure::Single;
  const pugi::xml_node child = take(L"structure");
  if (!child) return true;
  const auto value = structureFromWord(child.text().get());
  if (!value) reportInvalidWord(run_, object_.field(L"structure"), child);
  field = value.value_or(field);
  return value.has_value();
}

/// A wrong word in the child counts as no child, so it is the text of the element that is told as the invalid one.
bool FieldReader::valueType(PropertyType::Type& field) const {
  auto value = typeFromWord(take(L"value_type").text().get());
  if (!value) value = typeFromWord(element_.text().get());
  if (!value) reportInvalidWord(run_, object_.field(L"value_type"), element_);
  field = value.value_or(PropertyType::Type::Any);
  return value.has_value();
}

bool FieldReader::keyType(PropertyType::Type& field) const {
  field = PropertyType::Type::Any;
  const pugi::xml_node child = take(L"key_type");
  if (!child) return true;
  const auto value = typeFromWord(child.text().get());
  if (!value) reportInvalidWord(run_, object_.field(L"key_type"), child);
  field = value.value_or(field);
  return value.has_value();
}

bool FieldReader::definitionNamespace(TsSmartPtr<const PropertyNamespace>& field) const {
  const ElementContext context = object_.field(L"namespace");
  TsSmartPtr<PropertyNamespace> target;
  if (readReference(run_, element_.child(L"namespace"), target, context.silent())) {
    field = target;
    return true;
  }
  const PropertySet* const set = object_.parent ? object_.parent->set() : nullptr;
  field = set ? set->ns() : nullptr;
  if (!field) reportMissing(run_, context);
  return !field.isNull();
}

}  // namespace tessel
