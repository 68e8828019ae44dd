#pragma once

#include <array>
#include <cstddef>

#include <tessel/criteria.h>
#include <tessel/units.h>

#include "support/samples_field.h"

namespace tessel::test {

template <>
struct Sample<Measure> {
  using Parent = Object;
  static constexpr const wchar_t* className = L"Measure";
  static constexpr const char* table = "tessel_Measure";

  using Exponents = std::array<short, 7>;
  static constexpr Exponents exponents = {1, -2, 3, -4, 5, -6, 7};

  static TsSmartPtr<Measure> create(int number) { return create(number, exponents); }
  static TsSmartPtr<Measure> create(int number, const Exponents& e) {
    return Measure::create(OdString::format(L"MEASURE %d", number), e[0], e[1], e[2], e[3], e[4], e[5], e[6]);
  }

  static std::vector<TsSmartPtr<const Object>> references(const Measure&) { return {}; }
  static NameKey key(const Measure& measure) { return NameKey(measure.name()); }
  static NameCriteria criteria(const Measure& measure) {
    NameCriteria criteria;
    criteria.name.equals(measure.name());
    return criteria;
  }

  static std::vector<Field<Measure>> fields() {
    std::vector<Field<Measure>> fields = namedFields();
    const auto addExponent = [&](const char* column, short (Measure::*get)() const) {
      const std::size_t index = fields.size() - namedFields().size();
      fields.push_back(fixed<Measure>(column, get, [index] { return withOtherExponent(index); }));
    };
    addExponent("length", &Measure::length);
    addExponent("mass", &Measure::mass);
    addExponent("time", &Measure::time);
    addExponent("thermodynamic_temperature", &Measure::thermodynamic_temperature);
    addExponent("electric_current", &Measure::electric_current);
    addExponent("luminous_intensity", &Measure::luminous_intensity);
    addExponent("amount_of_substance", &Measure::amount_of_substance);
    return fields;
  }

private:
  static std::vector<Field<Measure>> namedFields() {
    return {
      settable<Measure>("name", &Measure::name, &Measure::set_name),
      settable<Measure>("description", &Measure::description, &Measure::set_description),
    };
  }

  static TsSmartPtr<Measure> withOtherExponent(std::size_t index) {
    Exponents other = exponents;
    other[index] = 100;
    const TsSmartPtr<Measure> sample = makeSample<Measure>();
    TsSmartPtr<Measure> measure = create(1, other);
    measure->set_name(sample->name());
    measure->set_description(sample->description());
    return measure;
  }
};

template <>
struct Sample<Unit> {
  using Parent = Object;
  static constexpr const wchar_t* className = L"Unit";
  static constexpr const char* table = "tessel_Unit";

  static TsSmartPtr<Unit> create(int number) { return create(number, 2.5 + number, makeSample<Measure>(number)); }
  static TsSmartPtr<Unit> create(int number, double scale, const TsSmartPtr<const Measure>& measure) {
    return Unit::create(OdString::format(L"unit %d", number), OdString(), scale, measure);
  }

  static std::vector<TsSmartPtr<const Object>> references(const Unit& unit) { return {unit.measure()}; }
  static NameKey key(const Unit& unit) { return NameKey(unit.name()); }
  static UnitCriteria criteria(const Unit& unit) {
    UnitCriteria criteria;
    criteria.name.equals(unit.name());
    criteria.label.equals(unit.label());
    criteria.scale.equals(unit.scale());
    criteria.measure_id = unit.measure()->id();
    return criteria;
  }

  static std::vector<Field<Unit>> fields() {
    Field<Unit> name = settable<Unit>("name", &Unit::name, &Unit::set_name);
    name.inFile = [](const Unit& unit) { return unit.has_name() ? inFile(unit.name()) : "NULL"; };
    // Equality asks whether there is a name, not which.
    name.compared = false;
    return {
      name,
      settable<Unit>("label", &Unit::label, &Unit::set_label),
      fixed<Unit>("scale", &Unit::scale, [] { return likeSample(17.5, makeSample<Measure>()); }),
      fixed<Unit>("measure_id", &Unit::measure,
                  [] { return likeSample(makeSample<Unit>()->scale(), makeSample<Measure>(7)); }),
    };
  }

private:
  static TsSmartPtr<Unit> likeSample(double scale, const TsSmartPtr<const Measure>& measure) {
    const TsSmartPtr<Unit> sample = makeSample<Unit>();
    return Unit::create(sample->name(), sample->label(), scale, measure);
  }
};

}  // namespace tessel::test
