#pragma once

#include <tessel/units.h>

namespace tessel {

struct ColumnUnit::Impl {
  unsigned int id = 0;
  OdString table;
  OdString column;
  TsSmartPtr<const Unit> unit;
  bool changed = false;
};

struct DefaultUnit::Impl {
  TsSmartPtr<const Measure> measure;
  TsSmartPtr<const Unit> unit;
  bool changed = false;
};

}  // namespace tessel
