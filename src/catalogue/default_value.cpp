#include "catalogue/definition_impl.h"

#include <tessel/import_errors.h>

#include "object/fields.h"
#include "json/od_string_json.h"
#include "json/writer.h"

namespace tessel {
namespace {

using tsutils::json::OdValue;

void take(const OdValue& value, bool& out) { out = value.asBool(); }
void take(const OdValue& value, int& out) { out = static_cast<int>(value.asInt()); }
void take(const OdValue& value, double& out) { out = value.asReal(); }

}  // namespace

template <typename T>
bool PropertyDefinition::default_value(T& out) const {
  try {
    OdValue value;
    if (!tsutils::json::parse(default_value().view(), value)) return false;
    take(value, out);
    return true;
  } catch (const tsutils::json::ValueError&) {
    return false;
  } catch (const OdError&) {
    return false;  // a string without an end
  }
}

/// A text is kept as it stands, not as a JSON string.
template <>
bool PropertyDefinition::default_value(OdString& out) const {
  out = default_value();
  return true;
}

template <>
void PropertyDefinition::set_default_value(const OdString& text) {
  setField(impl(), impl().default_value, text);
}

template <typename T>
void PropertyDefinition::set_default_value(const T& value) {
  OdString text;
  tsutils::json::write(OdValue(value), text, false);
  set_default_value(text);
}

template bool PropertyDefinition::default_value(bool&) const;
template bool PropertyDefinition::default_value(int&) const;
template bool PropertyDefinition::default_value(double&) const;
template void PropertyDefinition::set_default_value(const bool&);
template void PropertyDefinition::set_default_value(const int&);
template void PropertyDefinition::set_default_value(const double&);

}  // namespace tessel
