#include <tessel/project_db.h>

#include "import/element_traits.h"
#include "import/named_reference.h"
#include "units/measure_impl.h"
#include "units/unit_impl.h"

namespace tessel {

bool ElementTraits<Measure>::readFields(const FieldReader& reader, Measure& object) {
  Measure::Impl& measure = object.impl();
  return reader.required(L"name", measure.name) && reader.optional(L"description", measure.description) &&
         reader.optional(L"length", measure.length, 0) && reader.optional(L"mass", measure.mass, 0) &&
         reader.optional(L"time", measure.time, 0) &&
         reader.optional(L"thermodynamic_temperature", measure.thermodynamic_temperature, 0) &&
         reader.optional(L"electric_current", measure.electric_current, 0) &&
         reader.optional(L"luminous_intensity", measure.luminous_intensity, 0) &&
         reader.optional(L"amount_of_substance", measure.amount_of_substance, 0);
}

TsSmartPtr<Measure> ElementTraits<Measure>::findByAttributes(ImportContext& run, const pugi::xml_node& element,
                                                             const ElementContext&) {
  return findByName<Measure>(run, element);
}

bool ElementTraits<Unit>::readFields(const FieldReader& reader, Unit& object) {
  Unit::Impl& unit = object.impl();
  return reader.required(L"name", unit.name.emplace()) && reader.optional(L"label", unit.label) &&
         reader.optional(L"scale", unit.scale, 1.0) && reader.required(L"measure", unit.measure);
}

/// The default unit of a measure goes before a unit of that name.
TsSmartPtr<Unit> ElementTraits<Unit>::findByAttributes(ImportContext& run, const pugi::xml_node& element,
                                                       const ElementContext&) {
  OdString search;
  if (const pugi::xml_attribute measure = element.attribute(L"default")) {
    if (const auto unit = run.db.defaultUnit(measure.value())) return const_cast<Unit*>(unit.get());
    search = u"default unit '" + OdString(measure.value()) + u"'";
  }
  if (const pugi::xml_attribute name = element.attribute(L"name")) {
    if (auto unit = run.db.get<Unit>(NameKey(name.value()))) return unit;
    search = search.isEmpty() ? searchByName(name.value()) : search + u" or " + searchByName(name.value());
  }
  if (!search.isEmpty()) throw UnresolvedReference{search};
  return {};
}

}  // namespace tessel
