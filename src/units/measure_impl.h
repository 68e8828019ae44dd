#pragma once

#include <memory>
#include <tuple>

#include <tessel/units.h>

namespace tessel {

struct Measure::Impl {
  unsigned int id = 0;
  OdString name;
  OdString description;
  short length = 0;
  short mass = 0;
  short time = 0;
  short thermodynamic_temperature = 0;
  short electric_current = 0;
  short luminous_intensity = 0;
  short amount_of_substance = 0;
  std::weak_ptr<ProjectDb> projectDb;
  bool dirty = false;

  auto exponents() const {
    return std::tie(length, mass, time, thermodynamic_temperature, electric_current, luminous_intensity,
                    amount_of_substance);
  }
};

}  // namespace tessel
