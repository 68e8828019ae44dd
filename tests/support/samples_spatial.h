#pragma once

#include <tessel/criteria.h>
#include <tessel/spatial.h>

#include "support/samples_field.h"

namespace tessel::test {

template <>
struct Sample<Site> {
  using Parent = SpatialStructure;
  static constexpr const wchar_t* className = L"Site";
  static constexpr const char* table = "tessel_Site";

  static TsSmartPtr<Site> create(int number) { return Site::create(OdString::format(L"Site %d", number)); }
  static std::vector<TsSmartPtr<const Object>> references(const Site&) { return {}; }
  static NameKey key(const Site& site) { return NameKey(site.name()); }
  static NameCriteria criteria(const Site& site) {
    NameCriteria criteria;
    criteria.name.equals(site.name());
    return criteria;
  }

  static std::vector<Field<Site>> fields() {
    return {
      settable<Site>("name", &Site::name, &Site::set_name),
      settable<Site>("long_name", &Site::long_name, &Site::set_long_name),
      settable<Site>("description", &Site::description, &Site::set_description),
      settable<Site>("site_type", &Site::site_type, &Site::set_site_type),
      settable<Site>("ref_elevation", &Site::ref_elevation, &Site::set_ref_elevation),
      settable<Site>("land_title_number", &Site::land_title_number, &Site::set_land_title_number),
      settable<Site>("internal_location", &Site::internal_location, &Site::set_internal_location),
      settable<Site>("address_lines", &Site::address_lines, &Site::set_address_lines),
      settable<Site>("postal_box", &Site::postal_box, &Site::set_postal_box),
      settable<Site>("town", &Site::town, &Site::set_town),
      settable<Site>("region", &Site::region, &Site::set_region),
      settable<Site>("postal_code", &Site::postal_code, &Site::set_postal_code),
      settable<Site>("country", &Site::country, &Site::set_country),
      settable<Site>("buildable_area", &Site::buildable_area, &Site::set_buildable_area),
      settable<Site>("total_area", &Site::total_area, &Site::set_total_area),
      settable<Site>("building_height_limit", &Site::building_height_limit, &Site::set_building_height_limit),
    };
  }
};

template <>
struct Sample<Building> {
  using Parent = SpatialStructure;
  static constexpr const wchar_t* className = L"Building";
  static constexpr const char* table = "tessel_Building";

  static TsSmartPtr<Building> create(int number) { return Building::create(makeSample<Site>(number)); }
  static std::vector<TsSmartPtr<const Object>> references(const Building& building) { return {building.site()}; }
  static NameObjectKey<Site> key(const Building& building) {
    return NameObjectKey<Site>(building.name(), building.site()->id());
  }
  static BuildingCriteria criteria(const Building& building) {
    BuildingCriteria criteria;
    criteria.name.equals(building.name());
    criteria.site_id = building.site()->id();
    return criteria;
  }

  static std::vector<Field<Building>> fields() {
    return {
      settable<Building>("site_id", &Building::site, &Building::set_site),
      settable<Building>("name", &Building::name, &Building::set_name),
      settable<Building>("long_name", &Building::long_name, &Building::set_long_name),
      settable<Building>("description", &Building::description, &Building::set_description),
      settable<Building>("elevation_of_ref_height", &Building::elevation_of_ref_height,
                         &Building::set_elevation_of_ref_height),
      settable<Building>("elevation_of_terrain", &Building::elevation_of_terrain, &Building::set_elevation_of_terrain),
      settable<Building>("internal_location", &Building::internal_location, &Building::set_internal_location),
      settable<Building>("address_lines", &Building::address_lines, &Building::set_address_lines),
      settable<Building>("postal_box", &Building::postal_box, &Building::set_postal_box),
      settable<Building>("town", &Building::town, &Building::set_town),
      settable<Building>("region", &Building::region, &Building::set_region),
      settable<Building>("postal_code", &Building::postal_code, &Building::set_postal_code),
      settable<Building>("country", &Building::country, &Building::set_country),
      settable<Building>("building_id", &Building::building_id, &Building::set_building_id),
      settable<Building>("is_permanent_id", &Building::is_permanent_id, &Building::set_is_permanent_id),
      settable<Building>("main_fire_use", &Building::main_fire_use, &Building::set_main_fire_use),
      settable<Building>("ancillary_fire_use", &Building::ancillary_fire_use, &Building::set_ancillary_fire_use),
      settable<Building>("sprinkler_protection", &Building::sprinkler_protection, &Building::set_sprinkler_protection),
      settable<Building>("sprinkler_protection_automatic", &Building::sprinkler_protection_automatic,
                         &Building::set_sprinkler_protection_automatic),
      settable<Building>("occupancy_type", &Building::occupancy_type, &Building::set_occupancy_type),
      settable<Building>("gross_planned_area", &Building::gross_planned_area, &Building::set_gross_planned_area),
      settable<Building>("number_of_storeys", &Building::number_of_storeys, &Building::set_number_of_storeys),
      settable<Building>("year_of_construction", &Building::year_of_construction, &Building::set_year_of_construction),
      settable<Building>("is_landmarked", &Building::is_landmarked, &Building::set_is_landmarked),
    };
  }
};

template <>
struct Sample<Story> {
  using Parent = SpatialStructure;
  static constexpr const wchar_t* className = L"Story";
  static constexpr const char* table = "tessel_Story";

  static TsSmartPtr<Story> create(int number) { return Story::create(makeSample<Building>(number)); }
  static std::vector<TsSmartPtr<const Object>> references(const Story& story) { return {story.building()}; }
  static NameObjectKey<Building> key(const Story& story) {
    return NameObjectKey<Building>(story.name(), story.building()->id());
  }
  static StoryCriteria criteria(const Story& story) {
    StoryCriteria criteria;
    criteria.name.equals(story.name());
    criteria.building_id = story.building()->id();
    return criteria;
  }

  static std::vector<Field<Story>> fields() {
    return {
      settable<Story>("building_id", &Story::building, &Story::set_building),
      settable<Story>("name", &Story::name, &Story::set_name),
      settable<Story>("long_name", &Story::long_name, &Story::set_long_name),
      settable<Story>("description", &Story::description, &Story::set_description),
      settable<Story>("elevation", &Story::elevation, &Story::set_elevation),
      settable<Story>("entrance_level", &Story::entrance_level, &Story::set_entrance_level),
      settable<Story>("above_ground", &Story::above_ground, &Story::set_above_ground),
      settable<Story>("sprinkler_protection", &Story::sprinkler_protection, &Story::set_sprinkler_protection),
      settable<Story>("sprinkler_protection_automatic", &Story::sprinkler_protection_automatic,
                      &Story::set_sprinkler_protection_automatic),
      settable<Story>("gross_area_planned", &Story::gross_area_planned, &Story::set_gross_area_planned),
      settable<Story>("net_area_planned", &Story::net_area_planned, &Story::set_net_area_planned),
    };
  }
};

}  // namespace tessel::test
