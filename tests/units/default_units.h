#pragma once

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"
#include "units/column_rows.h"

namespace tessel::test {

using Rows = RawFile::Rows;

class DefaultUnits : public ::testing::Test {
protected:
  TsSmartPtr<Unit> unitOf(const OdString& measure, const OdString& label, double scale) {
    return Unit::create(label, scale, project.db->get<Measure>(NameKey(measure)));
  }
  TsSmartPtr<Unit> metre() { return unitOf(L"LENGTH", L"m", 1); }
  TsSmartPtr<Unit> millimetre() { return unitOf(L"LENGTH", L"mm", 0.001); }

  OdString labelOfDefault(const OdString& measure) const {
    const auto unit = project.db->defaultUnit(measure);
    return unit ? unit->label() : OdString(L"none");
  }
  template <typename T>
  OdString labelOf(double (T::*getter)() const) const {
    const auto unit = project.db->columnUnit<T>(getter);
    return unit ? unit->label() : OdString(L"none");
  }

  Rows columnRows() const {
    RawFile file = project.raw();
    return columnRowsOf(file);
  }
  Rows defaultRows() const {
    return project.raw().rows("SELECT m.name, u.label FROM tessel_DefaultUnit d JOIN tessel_Measure m "
                              "ON m.id = d.measure_id LEFT JOIN tessel_Unit u ON u.id = d.unit_id ORDER BY m.id");
  }

  SampleProject project;
};

}  // namespace tessel::test
