#include "import/field_reader.h"

#include <algorithm>

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

}  // namespace tessel
