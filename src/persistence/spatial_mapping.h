#pragma once

#include "persistence/text_types.h"
#include "spatial/project_impl.h"
#include "spatial/spatial_impl.h"

namespace tessel {

using SiteReference = TsSmartPtr<const Site>;
using BuildingReference = TsSmartPtr<const Building>;
using SitePointer = TsSmartPtr<Site>;
using MasterDrawings = std::vector<Project::MasterDrawing>;
using SheetCategories = std::vector<SheetCategory>;

}  // namespace tessel

#ifdef ODB_COMPILER

// The root hands out the ids of all three classes and knows the class of each.
#pragma db object(tessel::SpatialStructure) table("SpatialStructure") polymorphic session callback(init)
#pragma db member(tessel::SpatialStructure::impl_) transient
#pragma db member(tessel::SpatialStructure::id_) virtual(unsigned int) column("id") get(impl().id) set(impl().id) \
  id auto

#pragma db object(tessel::Site) table("Site")
#pragma db member(tessel::Site::name_) virtual(OdString) column("name") get(impl().name) set(impl().name)
#pragma db member(tessel::Site::long_name_) virtual(OdString) column("long_name") get(impl().long_name) \
  set(impl().long_name)
#pragma db member(tessel::Site::description_) virtual(OdString) column("description") get(impl().description) \
  set(impl().description)
#pragma db member(tessel::Site::site_type_) virtual(OdString) column("site_type") get(impl().site_type) \
  set(impl().site_type)
#pragma db member(tessel::Site::ref_elevation_) virtual(double) column("ref_elevation") get(impl().ref_elevation) \
  set(impl().ref_elevation)
#pragma db member(tessel::Site::land_title_number_) virtual(OdString) column("land_title_number") \
  get(impl().land_title_number) set(impl().land_title_number)
#pragma db member(tessel::Site::internal_location_) virtual(OdString) column("internal_location") \
  get(impl().internal_location) set(impl().internal_location)
#pragma db member(tessel::Site::address_lines_) virtual(OdString) column("address_lines") get(impl().address_lines) \
  set(impl().address_lines)
#pragma db member(tessel::Site::postal_box_) virtual(OdString) column("postal_box") get(impl().postal_box) \
  set(impl().postal_box)
#pragma db member(tessel::Site::town_) virtual(OdString) column("town") get(impl().town) set(impl().town)
#pragma db member(tessel::Site::region_) virtual(OdString) column("region") get(impl().region) set(impl().region)
#pragma db member(tessel::Site::postal_code_) virtual(OdString) column("postal_code") get(impl().postal_code) \
  set(impl().postal_code)
#pragma db member(tessel::Site::country_) virtual(OdString) column("country") get(impl().country) set(impl().country)
#pragma db member(tessel::Site::buildable_area_) virtual(double) column("buildable_area") get(impl().buildable_area) \
  set(impl().buildable_area)
#pragma db member(tessel::Site::total_area_) virtual(double) column("total_area") get(impl().total_area) \
  set(impl().total_area)
#pragma db member(tessel::Site::building_height_limit_) virtual(double) column("building_height_limit") \
  get(impl().building_height_limit) set(impl().building_height_limit)

#pragma db object(tessel::Building) table("Building")
#pragma db member(tessel::Building::site_) virtual(tessel::SiteReference) column("site_id") get(impl().site) \
  set(impl().site) not_null
#pragma db member(tessel::Building::name_) virtual(OdString) column("name") get(impl().name) set(impl().name)
#pragma db member(tessel::Building::long_name_) virtual(OdString) column("long_name") get(impl().long_name) \
  set(impl().long_name)
#pragma db member(tessel::Building::description_) virtual(OdString) column("description") get(impl().description) \
  set(impl().description)
#pragma db member(tessel::Building::elevation_of_ref_height_) virtual(double) column("elevation_of_ref_height") \
  get(impl().elevation_of_ref_height) set(impl().elevation_of_ref_height)
#pragma db member(tessel::Building::elevation_of_terrain_) virtual(double) column("elevation_of_terrain") \
  get(impl().elevation_of_terrain) set(impl().elevation_of_terrain)
#pragma db member(tessel::Building::internal_location_) virtual(OdString) column("internal_location") \
  get(impl().internal_location) set(impl().internal_location)
#pragma db member(tessel::Building::address_lines_) virtual(OdString) column("address_lines") \
  get(impl().address_lines) set(impl().address_lines)
#pragma db member(tessel::Building::postal_box_) virtual(OdString) column("postal_box") get(impl().postal_box) \
  set(impl().postal_box)
#pragma db member(tessel::Building::town_) virtual(OdString) column("town") get(impl().town) set(impl().town)
#pragma db member(tessel::Building::region_) virtual(OdString) column("region") get(impl().region) set(impl().region)
#pragma db member(tessel::Building::postal_code_) virtual(OdString) column("postal_code") get(impl().postal_code) \
  set(impl().postal_code)
#pragma db member(tessel::Building::country_) virtual(OdString) column("country") get(impl().country) \
  set(impl().country)
#pragma db member(tessel::Building::building_id_) virtual(OdString) column("building_id") get(impl().building_id) \
  set(impl().building_id)
#pragma db member(tessel::Building::is_permanent_id_) virtual(bool) column("is_permanent_id") \
  get(impl().is_permanent_id) set(impl().is_permanent_id)
#pragma db member(tessel::Building::main_fire_use_) virtual(OdString) column("main_fire_use") \
  get(impl().main_fire_use) set(impl().main_fire_use)
#pragma db member(tessel::Building::ancillary_fire_use_) virtual(OdString) column("ancillary_fire_use") \
  get(impl().ancillary_fire_use) set(impl().ancillary_fire_use)
#pragma db member(tessel::Building::sprinkler_protection_) virtual(bool) column("sprinkler_protection") \
  get(impl().sprinkler_protection) set(impl().sprinkler_protection)
#pragma db member(tessel::Building::sprinkler_protection_automatic_) virtual(bool)    \
  column("sprinkler_protection_automatic") get(impl().sprinkler_protection_automatic) \
    set(impl().sprinkler_protection_automatic)
#pragma db member(tessel::Building::occupancy_type_) virtual(OdString) column("occupancy_type") \
  get(impl().occupancy_type) set(impl().occupancy_type)
#pragma db member(tessel::Building::gross_planned_area_) virtual(double) column("gross_planned_area") \
  get(impl().gross_planned_area) set(impl().gross_planned_area)
#pragma db member(tessel::Building::number_of_storeys_) virtual(unsigned int) column("number_of_storeys") \
  get(impl().number_of_storeys) set(impl().number_of_storeys)
#pragma db member(tessel::Building::year_of_construction_) virtual(OdString) column("year_of_construction") \
  get(impl().year_of_construction) set(impl().year_of_construction)
#pragma db member(tessel::Building::is_landmarked_) virtual(bool) column("is_landmarked") get(impl().is_landmarked) \
  set(impl().is_landmarked)

#pragma db object(tessel::Story) table("Story")
#pragma db member(tessel::Story::building_) virtual(tessel::BuildingReference) column("building_id") \
  get(impl().building) set(impl().building) not_null
#pragma db member(tessel::Story::name_) virtual(OdString) column("name") get(impl().name) set(impl().name)
#pragma db member(tessel::Story::long_name_) virtual(OdString) column("long_name") get(impl().long_name) \
  set(impl().long_name)
#pragma db member(tessel::Story::description_) virtual(OdString) column("description") get(impl().description) \
  set(impl().description)
#pragma db member(tessel::Story::elevation_) virtual(double) column("elevation") get(impl().elevation) \
  set(impl().elevation)
#pragma db member(tessel::Story::entrance_level_) virtual(bool) column("entrance_level") get(impl().entrance_level) \
  set(impl().entrance_level)
#pragma db member(tessel::Story::above_ground_) virtual(bool) column("above_ground") get(impl().above_ground) \
  set(impl().above_ground)
#pragma db member(tessel::Story::sprinkler_protection_) virtual(bool) column("sprinkler_protection") \
  get(impl().sprinkler_protection) set(impl().sprinkler_protection)
#pragma db member(tessel::Story::sprinkler_protection_automatic_) virtual(bool)       \
  column("sprinkler_protection_automatic") get(impl().sprinkler_protection_automatic) \
    set(impl().sprinkler_protection_automatic)
#pragma db member(tessel::Story::gross_area_planned_) virtual(double) column("gross_area_planned") \
  get(impl().gross_area_planned) set(impl().gross_area_planned)
#pragma db member(tessel::Story::net_area_planned_) virtual(double) column("net_area_planned") \
  get(impl().net_area_planned) set(impl().net_area_planned)

#pragma db value(tessel::SheetMargins)
#pragma db value(tessel::SheetCategory)
#pragma db value(tessel::Project::MasterDrawing)
#pragma db value(tessel::Project::SheetSet)

// The host's record of the file is filled in place, never made by a load.
#pragma db object(tessel::Project) table("Project") pointer(*)
#pragma db member(tessel::Project::impl_) transient
#pragma db member(tessel::Project::id_) virtual(unsigned int) column("id") get(impl().id) set(impl().id) id
#pragma db member(tessel::Project::name_) virtual(OdString) column("name") get(impl().name) set(impl().name)
#pragma db member(tessel::Project::site_) virtual(tessel::SitePointer) column("site_id") get(impl().site) \
  set(impl().site) null
#pragma db member(tessel::Project::models_folder_) virtual(OdString) column("models_folder") get(impl().models_folder) \
  set(impl().models_folder)
#pragma db member(tessel::Project::sheets_folder_) virtual(OdString) column("sheets_folder") get(impl().sheets_folder) \
  set(impl().sheets_folder)
#pragma db member(tessel::Project::master_drawings_) virtual(tessel::MasterDrawings) get(impl().master_drawings) \
  set(impl().master_drawings) table("Project_master_drawings") value_column("")
#pragma db member(tessel::Project::sheet_set_) virtual(tessel::Project::SheetSet) column("sheet_set_") \
  get(impl().sheet_set) set(impl().sheet_set)
#pragma db member(tessel::Project::sheet_margins_metric_) virtual(tessel::SheetMargins) \
  column("sheet_margins_metric_") get(impl().sheet_margins_metric) set(impl().sheet_margins_metric)
#pragma db member(tessel::Project::sheet_margins_imperial_) virtual(tessel::SheetMargins) \
  column("sheet_margins_imperial_") get(impl().sheet_margins_imperial) set(impl().sheet_margins_imperial)
#pragma db member(tessel::Project::sheet_categories_) virtual(tessel::SheetCategories) get(impl().sheet_categories) \
  set(impl().sheet_categories) table("Project_sheet_categories") value_column("")

#endif
