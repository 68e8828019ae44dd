#pragma once

#include <tessel/definitions.h>
#include <tessel/project_db.h>
#include <tessel/property_set.h>
#include <tessel/unit_conversion.h>
#include <tessel/units.h>

#include "units/dimensioned_columns.h"

namespace tessel {

/// Brings the numbers of a copy from the units of the source's columns to those of the destination. UnitException if one
/// cannot be converted.
template <typename T>
void convertColumnUnits(T& copy, const ProjectDb& source, const ProjectDb& destination) {
  for (const DimensionedColumn<T>& column : DimensionedColumns<T>::columns) {
    const TsSmartPtr<const Unit> from = source.columnUnit<T>(column.getter);
    const TsSmartPtr<const Unit> to = destination.columnUnit<T>(column.getter);
    (copy.*column.setter)(convertUnit((copy.*column.getter)(), from.get(), to.get()));
  }
}

// The classes that keep no numbers with a unit.
inline void convertColumnUnits(EntityType&, const ProjectDb&, const ProjectDb&) {}
inline void convertColumnUnits(PropertyNamespace&, const ProjectDb&, const ProjectDb&) {}
inline void convertColumnUnits(PropertyDefinition&, const ProjectDb&, const ProjectDb&) {}
inline void convertColumnUnits(ValueDefinition&, const ProjectDb&, const ProjectDb&) {}
inline void convertColumnUnits(PropertySet&, const ProjectDb&, const ProjectDb&) {}
inline void convertColumnUnits(Measure&, const ProjectDb&, const ProjectDb&) {}
inline void convertColumnUnits(Unit&, const ProjectDb&, const ProjectDb&) {}

}  // namespace tessel
