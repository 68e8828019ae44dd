#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessel::benchmarks::yardstick {

// Objects as plain records, which hold what they refer to.

using Text = std::string;
using OptionalText = std::optional<Text>;

struct Measure {
  unsigned int id = 0;
  Text name, description;
  int length = 0, mass = 0, time = 0, thermodynamic_temperature = 0, electric_current = 0, luminous_intensity = 0,
      amount_of_substance = 0;
};

struct Unit {
  unsigned int id = 0;
  OptionalText name;
  Text label;
  double scale = 1;
  std::unique_ptr<Measure> measure;
};

struct Site {
  unsigned int id = 0;
  Text name, long_name, description, site_type;
  double ref_elevation = 0;
  Text land_title_number, internal_location, address_lines, postal_box, town, region, postal_code, country;
  double buildable_area = 0, total_area = 0, building_height_limit = 0;
};

struct Building {
  unsigned int id = 0;
  std::unique_ptr<Site> site;
  Text name, long_name, description;
  double elevation_of_ref_height = 0, elevation_of_terrain = 0;
  Text internal_location, address_lines, postal_box, town, region, postal_code, country, building_id;
  bool is_permanent_id = false;
  Text main_fire_use, ancillary_fire_use;
  bool sprinkler_protection = false, sprinkler_protection_automatic = false;
  Text occupancy_type;
  double gross_planned_area = 0;
  unsigned int number_of_storeys = 1;
  Text year_of_construction;
  bool is_landmarked = false;
};

struct Story {
  unsigned int id = 0;
  std::shared_ptr<Building> building;
  Text name, long_name, description;
  double elevation = 0;
  bool entrance_level = false, above_ground = true;
  bool sprinkler_protection = false, sprinkler_protection_automatic = false;
  double gross_area_planned = 0, net_area_planned = 0;
};

struct EntityType {
  unsigned int id = 0;
  Text name;
};

struct Namespace {
  unsigned int id = 0;
  Text name;
  OptionalText label;
  bool editable = true, visible = true;
  unsigned int revision = 0;
};

struct PropertyType {
  int structure = 0, value_type = 0, key_type = 0;
};

struct Definition {
  unsigned int id = 0;
  Text name;
  OptionalText label;
  Text description;
  std::shared_ptr<Unit> unit;
  OptionalText ifc_name;
  std::optional<int> ifc_type;
  PropertyType type;
  bool visible = true;
  std::shared_ptr<Namespace> ns;
  Text type_spec, type_spec2, default_value;
};

struct PropertySet {
  unsigned int id = 0;
  std::shared_ptr<Namespace> ns;
  Text name;
  OptionalText label;
  std::vector<std::shared_ptr<Definition>> property_definitions;
  bool per_instance = false;
  std::vector<std::shared_ptr<EntityType>> entity_types;
  OptionalText ifc_name;
  bool visible = true;
};

}  // namespace tessel::benchmarks::yardstick
