#include "import/enum_merge.h"

#include <algorithm>

#include "json/od_string_json.h"
#include "json/writer.h"

namespace tessel {
namespace {

using tsutils::json::find;
using tsutils::json::wmObject;
using tsutils::json::wmValue;

/// The values of the first list, and behind them those of the second that it lacks. Of equal values in the second list all
/// are taken, for only the first one is searched.
wmValue::Array united(const wmValue::Array& first, const wmValue::Array& second) {
  wmValue::Array values = first;
  for (const wmValue& value : second) {
    if (std::find(first.begin(), first.end(), value) == first.end()) values.push_back(value);
  }
  return values;
}

}  // namespace

OdString mergeEnumSpec(const OdString& current, const OdString& old) {
  if (old.isEmpty()) return current;
  wmValue merged = tsutils::json::read(current);
  const wmValue previous = tsutils::json::read(old);

  wmObject& specification = merged.asObject();
  const std::u16string& type = find(specification, u"type").asString();
  if (type != u"Enum" || find(previous.asObject(), u"type").asString() != type) return current;

  wmValue& member = find(specification, u"values");
  const wmValue::Array& values = member.asArray();  // Before the old ones, so that its faults are the first to be told.
  member = wmValue(united(values, find(previous.asObject(), u"values").asArray()));
  OdString text;
  tsutils::json::write(merged, text, false);
  return text;
}

}  // namespace tessel
