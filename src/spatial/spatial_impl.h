#pragma once

#include <memory>
#include <tuple>

#include <tessel/spatial.h>

namespace tessel {

struct SpatialStructure::Impl {
  unsigned int id = 0;
  std::weak_ptr<ProjectDb> projectDb;
  bool dirty = false;

  Impl() = default;
  Impl(const Impl&) = default;
  Impl& operator=(const Impl&) = delete;
  virtual ~Impl() = default;
};

// `fieldsOf` ties the fields of a class in their order: equality compares them, assignment copies them.

struct Site::Impl : SpatialStructure::Impl {
  OdString name;
  OdString long_name;
  OdString description;
  OdString site_type;
  double ref_elevation = 0;
  OdString land_title_number;
  OdString internal_location;
  OdString address_lines;
  OdString postal_box;
  OdString town;
  OdString region;
  OdString postal_code;
  OdString country;
  double buildable_area = 0;
  double total_area = 0;
  double building_height_limit = 0;

  template <typename Self>
  static auto fieldsOf(Self& self) {
    return std::tie(self.name, self.long_name, self.description, self.site_type, self.ref_elevation,
                    self.land_title_number, self.internal_location, self.address_lines, self.postal_box, self.town,
                    self.region, self.postal_code, self.country, self.buildable_area, self.total_area,
                    self.building_height_limit);
  }
};

struct Building::Impl : SpatialStructure::Impl {
  TsSmartPtr<const Site> site;
  OdString name;
  OdString long_name;
  OdString description;
  double elevation_of_ref_height = 0;
  double elevation_of_terrain = 0;
  OdString internal_location;
  OdString address_lines;
  OdString postal_box;
  OdString town;
  OdString region;
  OdString postal_code;
  OdString country;
  OdString building_id;
  bool is_permanent_id = false;
  OdString main_fire_use;
  OdString ancillary_fire_use;
  bool sprinkler_protection = false;
  bool sprinkler_protection_automatic = false;
  OdString occupancy_type;
  double gross_planned_area = 0;
  unsigned int number_of_storeys = 1;
  OdString year_of_construction;
  bool is_landmarked = false;

  /// All but the site, whose comparison is another one.
  template <typename Self>
  static auto fieldsOf(Self& self) {
    return std::tie(self.name, self.long_name, self.description, self.elevation_of_ref_height,
                    self.elevation_of_terrain, self.internal_location, self.address_lines, self.postal_box, self.town,
                    self.region, self.postal_code, self.country, self.building_id, self.is_permanent_id,
                    self.main_fire_use, self.ancillary_fire_use, self.sprinkler_protection,
                    self.sprinkler_protection_automatic, self.occupancy_type, self.gross_planned_area,
                    self.number_of_storeys, self.year_of_construction, self.is_landmarked);
  }
};

struct Story::Impl : SpatialStructure::Impl {
  TsSmartPtr<const Building> building;
  OdString name;
  OdString long_name;
  OdString description;
  double elevation = 0;
  bool entrance_level = false;
  bool above_ground = true;
  bool sprinkler_protection = false;
  bool sprinkler_protection_automatic = false;
  double gross_area_planned = 0;
  double net_area_planned = 0;

  /// All but the building, whose comparison is another one.
  template <typename Self>
  static auto fieldsOf(Self& self) {
    return std::tie(self.name, self.long_name, self.description, self.elevation, self.entrance_level, self.above_ground,
                    self.sprinkler_protection, self.sprinkler_protection_automatic, self.gross_area_planned,
                    self.net_area_planned);
  }
};

}  // namespace tessel
