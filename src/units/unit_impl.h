#pragma once

#include <memory>
#include <optional>

#include <tessel/units.h>

namespace tessel {

struct Unit::Impl {
  unsigned int id = 0;
  std::optional<OdString> name;
  OdString label;
  double scale = 1.0;
  TsSmartPtr<const Measure> measure;
  std::weak_ptr<ProjectDb> projectDb;
  bool dirty = false;
};

}  // namespace tessel
