#include "spatial/spatial_impl.h"

#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(Story, SpatialStructure)
TESSEL_DEFINE_SAVE_MEMBERS(Story)

Story::Story() : Story(new Impl) {}
Story::Story(Impl* impl) : SpatialStructure(impl) {}
Story::Story(const SetDirty&) : Story() { impl().dirty = true; }

TsSmartPtr<Story> Story::create(const TsSmartPtr<const Building>& building) {
  TsSmartPtr<Story> story = new Story(SetDirty{});
  story->impl().building = building;
  return story;
}

TsSmartPtr<Story> Story::create(const TsSmartPtr<const Building>& building, const OdString& name, double elevation) {
  TsSmartPtr<Story> story = create(building);
  story->impl().name = name;
  story->impl().elevation = elevation;
  return story;
}

Story& Story::operator=(const Story& other) {
  SpatialStructure::operator=(other);
  impl().building = other.impl().building;
  Impl::fieldsOf(impl()) = Impl::fieldsOf(other.impl());
  return *this;
}

bool Story::operator==(const Story& other) const {
  return equalTargets(building(), other.building()) && Impl::fieldsOf(impl()) == Impl::fieldsOf(other.impl());
}
bool Story::operator!=(const Story& other) const { return !(*this == other); }

const TsSmartPtr<const Building>& Story::building() const { return impl().building; }
void Story::set_building(const TsSmartPtr<const Building>& building) { setField(impl(), impl().building, building); }

const OdString& Story::name() const { return impl().name; }
void Story::set_name(const OdString& name) { setField(impl(), impl().name, name); }
const OdString& Story::long_name() const { return impl().long_name; }
void Story::set_long_name(const OdString& long_name) { setField(impl(), impl().long_name, long_name); }
const OdString& Story::description() const { return impl().description; }
void Story::set_description(const OdString& description) { setField(impl(), impl().description, description); }
double Story::elevation() const { return impl().elevation; }
void Story::set_elevation(double elevation) { setField(impl(), impl().elevation, elevation); }
bool Story::entrance_level() const { return impl().entrance_level; }
void Story::set_entrance_level(bool entrance_level) { setField(impl(), impl().entrance_level, entrance_level); }
bool Story::above_ground() const { return impl().above_ground; }
void Story::set_above_ground(bool above_ground) { setField(impl(), impl().above_ground, above_ground); }
bool Story::sprinkler_protection() const { return impl().sprinkler_protection; }
void Story::set_sprinkler_protection(bool sprinkler_protection) {
  setField(impl(), impl().sprinkler_protection, sprinkler_protection);
}
bool Story::sprinkler_protection_automatic() const { return impl().sprinkler_protection_automatic; }
void Story::set_sprinkler_protection_automatic(bool sprinkler_protection_automatic) {
  setField(impl(), impl().sprinkler_protection_automatic, sprinkler_protection_automatic);
}
double Story::gross_area_planned() const { return impl().gross_area_planned; }
void Story::set_gross_area_planned(double gross_area_planned) {
  setField(impl(), impl().gross_area_planned, gross_area_planned);
}
double Story::net_area_planned() const { return impl().net_area_planned; }
void Story::set_net_area_planned(double net_area_planned) {
  setField(impl(), impl().net_area_planned, net_area_planned);
}

// Every Story is made with an Impl of its own class.
Story::Impl& Story::impl() { return static_cast<Impl&>(SpatialStructure::impl()); }
const Story::Impl& Story::impl() const { return static_cast<const Impl&>(SpatialStructure::impl()); }

}  // namespace tessel
