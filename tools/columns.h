#pragma once

#include <tessel/spatial.h>

namespace tessel::tool {

/// Calls `body(name, getter)` for each column whose numbers are kept in a unit.
template <typename Body>
void forEachColumn(Body body) {
  body("site.ref_elevation", &Site::ref_elevation);
  body("site.building_height_limit", &Site::building_height_limit);
  body("site.buildable_area", &Site::buildable_area);
  body("site.total_area", &Site::total_area);
  body("building.elevation_of_ref_height", &Building::elevation_of_ref_height);
  body("building.elevation_of_terrain", &Building::elevation_of_terrain);
  body("building.gross_planned_area", &Building::gross_planned_area);
  body("story.elevation", &Story::elevation);
  body("story.gross_area_planned", &Story::gross_area_planned);
  body("story.net_area_planned", &Story::net_area_planned);
}

}  // namespace tessel::tool
