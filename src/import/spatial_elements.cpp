#include <tessel/project_db.h>

#include "import/element_traits.h"
#include "import/named_reference.h"
#include "spatial/spatial_impl.h"

namespace tessel {

bool ElementTraits<Site>::readFields(const FieldReader& reader, Site& object) {
  Site::Impl& site = object.impl();
  return reader.required(L"name", site.name) && reader.optional(L"long_name", site.long_name) &&
         reader.optional(L"description", site.description) && reader.optional(L"site_type", site.site_type) &&
         reader.optional(L"ref_elevation", site.ref_elevation, 0.0) &&
         reader.optional(L"land_title_number", site.land_title_number) &&
         reader.optional(L"internal_location", site.internal_location) &&
         reader.optional(L"address_lines", site.address_lines) && reader.optional(L"postal_box", site.postal_box) &&
         reader.optional(L"town", site.town) && reader.optional(L"region", site.region) &&
         reader.optional(L"postal_code", site.postal_code) && reader.optional(L"country", site.country) &&
         reader.optional(L"buildable_area", site.buildable_area, 0.0) &&
         reader.optional(L"total_area", site.total_area, 0.0) &&
         reader.optional(L"building_height_limit", site.building_height_limit, 0.0);
}

TsSmartPtr<Site> ElementTraits<Site>::findByAttributes(ImportContext& run, const pugi::xml_node& element,
                                                       const ElementContext&) {
  return findByName<Site>(run, element);
}

bool ElementTraits<Building>::readFields(const FieldReader& reader, Building& object) {
  Building::Impl& building = object.impl();
  return reader.required(L"site", building.site) && reader.required(L"name", building.name) &&
         reader.optional(L"long_name", building.long_name) && reader.optional(L"description", building.description) &&
         reader.optional(L"elevation_of_ref_height", building.elevation_of_ref_height, 0.0) &&
         reader.optional(L"elevation_of_terrain", building.elevation_of_terrain, 0.0) &&
         reader.optional(L"internal_location", building.internal_location) &&
         reader.optional(L"address_lines", building.address_lines) &&
         reader.optional(L"postal_box", building.postal_box) && reader.optional(L"town", building.town) &&
         reader.optional(L"region", building.region) && reader.optional(L"postal_code", building.postal_code) &&
         reader.optional(L"country", building.country) && reader.optional(L"building_id", building.building_id) &&
         reader.optional(L"is_permanent_id", building.is_permanent_id, false) &&
         reader.optional(L"main_fire_use", building.main_fire_use) &&
         reader.optional(L"ancillary_fire_use", building.ancillary_fire_use) &&
         reader.optional(L"sprinkler_protection", building.sprinkler_protection, false) &&
         reader.optional(L"sprinkler_protection_automatic", building.sprinkler_protection_automatic, false) &&
         reader.optional(L"occupancy_type", building.occupancy_type) &&
         reader.optional(L"gross_planned_area", building.gross_planned_area, 0.0) &&
         reader.optional(L"number_of_storeys", building.number_of_storeys, 1u) &&
         reader.optional(L"year_of_construction", building.year_of_construction) &&
         reader.optional(L"is_landmarked", building.is_landmarked, false);
}

/// A name selects a building of the site that is being read. Buildings are referred to by stories only, which no site
/// holds, so the search is among buildings without a site and finds none: a story reaches its building by id or inline.
TsSmartPtr<Building> ElementTraits<Building>::findByAttributes(ImportContext& run, const pugi::xml_node& element,
                                                               const ElementContext& field) {
  const pugi::xml_attribute attribute = element.attribute(L"name");
  if (!attribute) return {};
  const OdString name = attribute.value();
  const unsigned int siteId = field.type == ObjectType::Site && field.object ? field.object->id() : 0;
  TsSmartPtr<Building> building = run.db.get<Building>(NameObjectKey<Site>(name, siteId));
  if (!building) throw UnresolvedReference{searchByName(name)};
  return building;
}

bool ElementTraits<Story>::readFields(const FieldReader& reader, Story& object) {
  Story::Impl& story = object.impl();
  return reader.required(L"building", story.building) && reader.required(L"name", story.name) &&
         reader.optional(L"long_name", story.long_name) && reader.optional(L"description", story.description) &&
         reader.optional(L"elevation", story.elevation, 0.0) &&
         reader.optional(L"entrance_level", story.entrance_level, false) &&
         reader.optional(L"above_ground", story.above_ground, true) &&
         reader.optional(L"sprinkler_protection", story.sprinkler_protection, false) &&
         reader.optional(L"sprinkler_protection_automatic", story.sprinkler_protection_automatic, false) &&
         reader.optional(L"gross_area_planned", story.gross_area_planned, 0.0) &&
         reader.optional(L"net_area_planned", story.net_area_planned, 0.0);
}

}  // namespace tessel
