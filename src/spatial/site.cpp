#include "spatial/spatial_impl.h"

#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(Site, SpatialStructure)
TESSEL_DEFINE_SAVE_MEMBERS(Site)

Site::Site() : Site(new Impl) {}
Site::Site(Impl* impl) : SpatialStructure(impl) {}
Site::Site(const SetDirty&) : Site() { impl().dirty = true; }

// Kept clean, unlike every other new object: hosts rely on an untouched site not being saved.
TsSmartPtr<Site> Site::create() { return new Site(); }

TsSmartPtr<Site> Site::create(const OdString& name) {
  TsSmartPtr<Site> site = new Site(SetDirty{});
  site->impl().name = name;
  return site;
}

Site& Site::operator=(const Site& other) {
  SpatialStructure::operator=(other);
  Impl::fieldsOf(impl()) = Impl::fieldsOf(other.impl());
  return *this;
}

bool Site::operator==(const Site& other) const { return Impl::fieldsOf(impl()) == Impl::fieldsOf(other.impl()); }
bool Site::operator!=(const Site& other) const { return !(*this == other); }

const OdString& Site::name() const { return impl().name; }
void Site::set_name(const OdString& name) { setField(impl(), impl().name, name); }
const OdString& Site::long_name() const { return impl().long_name; }
void Site::set_long_name(const OdString& long_name) { setField(impl(), impl().long_name, long_name); }
const OdString& Site::description() const { return impl().description; }
void Site::set_description(const OdString& description) { setField(impl(), impl().description, description); }
const OdString& Site::site_type() const { return impl().site_type; }
void Site::set_site_type(const OdString& site_type) { setField(impl(), impl().site_type, site_type); }
double Site::ref_elevation() const { return impl().ref_elevation; }
void Site::set_ref_elevation(double ref_elevation) { setField(impl(), impl().ref_elevation, ref_elevation); }
const OdString& Site::land_title_number() const { return impl().land_title_number; }
void Site::set_land_title_number(const OdString& land_title_number) {
  setField(impl(), impl().land_title_number, land_title_number);
}
const OdString& Site::internal_location() const { return impl().internal_location; }
void Site::set_internal_location(const OdString& internal_location) {
  setField(impl(), impl().internal_location, internal_location);
}
const OdString& Site::address_lines() const { return impl().address_lines; }
void Site::set_address_lines(const OdString& address_lines) { setField(impl(), impl().address_lines, address_lines); }
const OdString& Site::postal_box() const { return impl().postal_box; }
void Site::set_postal_box(const OdString& postal_box) { setField(impl(), impl().postal_box, postal_box); }
const OdString& Site::town() const { return impl().town; }
void Site::set_town(const OdString& town) { setField(impl(), impl().town, town); }
const OdString& Site::region() const { return impl().region; }
void Site::set_region(const OdString& region) { setField(impl(), impl().region, region); }
const OdString& Site::postal_code() const { return impl().postal_code; }
void Site::set_postal_code(const OdString& postal_code) { setField(impl(), impl().postal_code, postal_code); }
const OdString& Site::country() const { return impl().country; }
void Site::set_country(const OdString& country) { setField(impl(), impl().country, country); }
double Site::buildable_area() const { return impl().buildable_area; }
void Site::set_buildable_area(double buildable_area) { setField(impl(), impl().buildable_area, buildable_area); }
double Site::total_area() const { return impl().total_area; }
void Site::set_total_area(double total_area) { setField(impl(), impl().total_area, total_area); }
double Site::building_height_limit() const { return impl().building_height_limit; }
void Site::set_building_height_limit(double building_height_limit) {
  setField(impl(), impl().building_height_limit, building_height_limit);
}

// Every Site is made with an Impl of its own class.
Site::Impl& Site::impl() { return static_cast<Impl&>(SpatialStructure::impl()); }
const Site::Impl& Site::impl() const { return static_cast<const Impl&>(SpatialStructure::impl()); }

}  // namespace tessel
