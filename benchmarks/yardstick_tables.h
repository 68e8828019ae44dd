#pragma once

#include <string>

#include "yardstick_catalogue.h"
#include "yardstick_session.h"
#include "yardstick_spatial.h"
#include "yardstick_units.h"

namespace tessel::benchmarks::yardstick {

/// An open project file by its tables. The statements that are kept are prepared here.
struct Tables {
  explicit Tables(const std::string& path)
      : session(path), units(session), spatial(session), catalogue(session, units) {}
  Tables(const Tables&) = delete;
  Tables& operator=(const Tables&) = delete;

  Session session;
  UnitTables units;
  SpatialTables spatial;
  CatalogueTables catalogue;
};

}  // namespace tessel::benchmarks::yardstick
