#include "spatial/spatial_impl.h"

#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(Building, SpatialStructure)
TESSEL_DEFINE_SAVE_MEMBERS(Building)

Building::Building() : Building(new Impl) {}
Building::Building(Impl* impl) : SpatialStructure(impl) {}
Building::Building(const SetDirty&) : Building() { impl().dirty = true; }

TsSmartPtr<Building> Building::create(const TsSmartPtr<const Site>& site) {
  TsSmartPtr<Building> building = new Building(SetDirty{});
  building->impl().site = site;
  return building;
}

TsSmartPtr<Building> Building::create(const TsSmartPtr<const Site>& site, const OdString& name) {
  TsSmartPtr<Building> building = create(site);
  building->impl().name = name;
  return building;
}

Building& Building::operator=(const Building& other) {
  SpatialStructure::operator=(other);
  impl().site = other.impl().site;
  Impl::fieldsOf(impl()) = Impl::fieldsOf(other.impl());
  return *this;
}

bool Building::operator==(const Building& other) const {
  return Object::operator==(other) && equalTargets(site(), other.site()) &&
         Impl::fieldsOf(impl()) == Impl::fieldsOf(other.impl());
}
bool Building::operator!=(const Building& other) const { return !(*this == other); }

const TsSmartPtr<const Site>& Building::site() const { return impl().site; }
void Building::set_site(const TsSmartPtr<const Site>& site) { setField(impl(), impl().site, site); }

const OdString& Building::name() const { return impl().name; }
void Building::set_name(const OdString& name) { setField(impl(), impl().name, name); }
const OdString& Building::long_name() const { return impl().long_name; }
void Building::set_long_name(const OdString& long_name) { setField(impl(), impl().long_name, long_name); }
const OdString& Building::description() const { return impl().description; }
void Building::set_description(const OdString& description) { setField(impl(), impl().description, description); }
double Building::elevation_of_ref_height() const { return impl().elevation_of_ref_height; }
void Building::set_elevation_of_ref_height(double elevation_of_ref_height) {
  setField(impl(), impl().elevation_of_ref_height, elevation_of_ref_height);
}
double Building::elevation_of_terrain() const { return impl().elevation_of_terrain; }
void Building::set_elevation_of_terrain(double elevation_of_terrain) {
  setField(impl(), impl().elevation_of_terrain, elevation_of_terrain);
}
const OdString& Building::internal_location() const { return impl().internal_location; }
void Building::set_internal_location(const OdString& internal_location) {
  setField(impl(), impl().internal_location, internal_location);
}
const OdString& Building::address_lines() const { return impl().address_lines; }
void Building::set_address_lines(const OdString& address_lines) {
  setField(impl(), impl().address_lines, address_lines);
}
const OdString& Building::postal_box() const { return impl().postal_box; }
void Building::set_postal_box(const OdString& postal_box) { setField(impl(), impl().postal_box, postal_box); }
const OdString& Building::town() const { return impl().town; }
void Building::set_town(const OdString& town) { setField(impl(), impl().town, town); }
const OdString& Building::region() const { return impl().region; }
void Building::set_region(const OdString& region) { setField(impl(), impl().region, region); }
const OdString& Building::postal_code() const { return impl().postal_code; }
void Building::set_postal_code(const OdString& postal_code) { setField(impl(), impl().postal_code, postal_code); }
const OdString& Building::country() const { return impl().country; }
void Building::set_country(const OdString& country) { setField(impl(), impl().country, country); }
const OdString& Building::building_id() const { return impl().building_id; }
void Building::set_building_id(const OdString& building_id) { setField(impl(), impl().building_id, building_id); }
bool Building::is_permanent_id() const { return impl().is_permanent_id; }
void Building::set_is_permanent_id(bool is_permanent_id) { setField(impl(), impl().is_permanent_id, is_permanent_id); }
const OdString& Building::main_fire_use() const { return impl().main_fire_use; }
void Building::set_main_fire_use(const OdString& main_fire_use) {
  setField(impl(), impl().main_fire_use, main_fire_use);
}
const OdString& Building::ancillary_fire_use() const { return impl().ancillary_fire_use; }
void Building::set_ancillary_fire_use(const OdString& ancillary_fire_use) {
  setField(impl(), impl().ancillary_fire_use, ancillary_fire_use);
}
bool Building::sprinkler_protection() const { return impl().sprinkler_protection; }
void Building::set_sprinkler_protection(bool sprinkler_protection) {
  setField(impl(), impl().sprinkler_protection, sprinkler_protection);
}
bool Building::sprinkler_protection_automatic() const { return impl().sprinkler_protection_automatic; }
void Building::set_sprinkler_protection_automatic(bool sprinkler_protection_automatic) {
  setField(impl(), impl().sprinkler_protection_automatic, sprinkler_protection_automatic);
}
const OdString& Building::occupancy_type() const { return impl().occupancy_type; }
void Building::set_occupancy_type(const OdString& occupancy_type) {
  setField(impl(), impl().occupancy_type, occupancy_type);
}
double Building::gross_planned_area() const { return impl().gross_planned_area; }
void Building::set_gross_planned_area(double gross_planned_area) {
  setField(impl(), impl().gross_planned_area, gross_planned_area);
}
unsigned int Building::number_of_storeys() const { return impl().number_of_storeys; }
void Building::set_number_of_storeys(unsigned int number_of_storeys) {
  setField(impl(), impl().number_of_storeys, number_of_storeys);
}
const OdString& Building::year_of_construction() const { return impl().year_of_construction; }
void Building::set_year_of_construction(const OdString& year_of_construction) {
  setField(impl(), impl().year_of_construction, year_of_construction);
}
bool Building::is_landmarked() const { return impl().is_landmarked; }
void Building::set_is_landmarked(bool is_landmarked) { setField(impl(), impl().is_landmarked, is_landmarked); }

// Every Building is made with an Impl of its own class.
Building::Impl& Building::impl() { return static_cast<Impl&>(SpatialStructure::impl()); }
const Building::Impl& Building::impl() const { return static_cast<const Impl&>(SpatialStructure::impl()); }

}  // namespace tessel
