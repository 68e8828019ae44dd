#pragma once

#include <tessel/export.h>
#include <tessel/fwd.h>
#include <tessel/platform/od_string.h>

namespace tessel {

/// Converts a number from one unit to another: value * from.scale / to.scale, where the factor 1 is left out on either
/// side and equal scales return the very bits of the value. Only the dimensions count, not what the measures are called.
///
/// Two null pointers are no conversion, and return the value. Throws UnitConversionNotPossible if exactly one is null, and
/// InvalidUnitConversion if the dimensions differ. Both units must have a measure. For any thread.
TESSEL_API double convertUnit(double value, const Unit* from, const Unit* to);

/// The form of a unit's label that is shown: digits behind "^" become superscripts, and "." the dot of multiplication, so
/// "kg.m^2" reads "kg·m²". There is no sign in an exponent: "m^-2" reads "m-2". The character behind "." stays as
/// it is, whatever it is.
TESSEL_API OdString formatUnitString(const OdString& text);

}  // namespace tessel
