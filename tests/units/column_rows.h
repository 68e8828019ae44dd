#pragma once

#include <string>

#include "support/raw_file.h"

namespace tessel::test {

// The rows that tell the units of the columns, in the order in which they are written: class, column, and the label of
// the unit.

inline RawFile::Rows lengthColumns(const std::string& label) {
  return {{"Site", "ref_elevation", label},
          {"Site", "building_height_limit", label},
          {"Building", "elevation_of_ref_height", label},
          {"Building", "elevation_of_terrain", label},
          {"Story", "elevation", label}};
}

inline RawFile::Rows areaColumns(const std::string& label) {
  return {{"Site", "buildable_area", label},
          {"Site", "total_area", label},
          {"Building", "gross_planned_area", label},
          {"Story", "gross_area_planned", label},
          {"Story", "net_area_planned", label}};
}

/// The same from a file.
inline RawFile::Rows columnRowsOf(RawFile& file) {
  return file.rows("SELECT c.\"table\", c.\"column\", u.label FROM tessel_ColumnUnit c JOIN tessel_Unit u "
                   "ON u.id = c.unit_id ORDER BY c.id");
}

}  // namespace tessel::test
