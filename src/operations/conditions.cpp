#include "operations/conditions.h"

namespace tessel {

// Nothing of an operand is escaped: its "%" and "_" are wildcards, which hosts make use of.
Condition textCondition(const TextColumn& column, const StringCriteria& criteria) {
  static const OdString any = u"%";
  const OdString& text = criteria.str();
  switch (criteria.mode()) {
  case StringCriteria::Mode::Anything:
    return Condition(true);
  case StringCriteria::Mode::Unset:
    return column.is_null();
  case StringCriteria::Mode::Set:
    return !column.is_null();
  case StringCriteria::Mode::Empty:
    return column == OdString();
  case StringCriteria::Mode::NotEmpty:
    return column != OdString();
  case StringCriteria::Mode::Equals:
    return column == text;
  case StringCriteria::Mode::NotEquals:
    return column != text;
  case StringCriteria::Mode::Contains:
    return column.like(any + text + any);
  case StringCriteria::Mode::StartsWith:
    return column.like(text + any);
  case StringCriteria::Mode::EndsWith:
    return column.like(any + text);
  case StringCriteria::Mode::Match:
    return column.like(text);
  }
  return Condition(true);
}

Condition ifcNameCondition(const TextColumn& ifcName, const TextColumn& name, const StringCriteria& criteria) {
  if (!criteria) return Condition(true);
  return textCondition(ifcName, criteria) || (ifcName.is_null() && textCondition(name, criteria));
}

Condition numberCondition(const NumberColumn& column, const NumberCriteria& criteria) {
  const double value = criteria.value();
  switch (criteria.mode()) {
  case NumberCriteria::Mode::Anything:
    return Condition(true);
  case NumberCriteria::Mode::Unset:
    return column.is_null();
  case NumberCriteria::Mode::Set:
    return !column.is_null();
  case NumberCriteria::Mode::Equals:
    return column == value;
  case NumberCriteria::Mode::NotEquals:
    return column != value;
  case NumberCriteria::Mode::Less:
    return column < value;
  case NumberCriteria::Mode::LessOrEqual:
    return column <= value;
  case NumberCriteria::Mode::Greater:
    return column > value;
  case NumberCriteria::Mode::GreaterOrEqual:
    return column >= value;
  }
  return Condition(true);
}

}  // namespace tessel
