#pragma once

#include "operations/class_traits.h"
#include "units/measure_impl.h"
#include "units/unit_impl.h"

namespace tessel {

template <>
struct ClassTraits<Measure> : NamedInFile<Measure> {
  using IdView = MeasureIdView;
  using CountView = MeasureCountView;
  using NameView = MeasureNameView;
};

template <>
struct ClassTraits<Unit> : NamedInFile<Unit> {
  using IdView = UnitIdView;
  using CountView = UnitCountView;

  static constexpr const wchar_t* className = L"Unit";

  static Condition condition(const UnitCriteria& criteria) {
    return textCondition(Query::name, criteria.name) && textCondition(Query::label, criteria.label) &&
           numberCondition(Query::scale, criteria.scale) && ownerCondition(Query::measure, criteria.measure_id);
  }
  static Condition order(const Condition& condition, const UnitCriteria&) { return condition; }

  template <typename Save>
  static void references(Unit::Impl& unit, Save&& save) {
    save(unit.measure, Replaced::KeepsFlag);
  }
};

}  // namespace tessel
