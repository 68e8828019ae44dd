#include "catalogue/property_set_impl.h"

#include "object/current_database.h"
#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(PropertySet, Object)
TESSEL_DEFINE_SAVE_MEMBERS(PropertySet)

PropertySet::PropertySet() : PropertySet(new Impl) {}
PropertySet::PropertySet(Impl* impl) : impl_(impl) {}
PropertySet::PropertySet(const SetDirty&) : PropertySet() { impl_->dirty = true; }
PropertySet::~PropertySet() = default;

TsSmartPtr<PropertySet> PropertySet::create(const TsSmartPtr<const PropertyNamespace>& ns) {
  return create(ns, OdString());
}

TsSmartPtr<PropertySet> PropertySet::create(const TsSmartPtr<const PropertyNamespace>& ns, const OdString& name) {
  TsSmartPtr<PropertySet> set = new PropertySet(SetDirty{});
  set->impl().ns = ns;
  set->impl().name = name;
  return set;
}

// The namespace stays, because the members that are copied may be of no other.
PropertySet& PropertySet::operator=(const PropertySet& other) {
  Impl& target = impl();
  const Impl& source = other.impl();
  target.dirty = true;
  target.name = source.name;
  target.label = source.label;
  target.property_definitions = source.property_definitions;
  target.value_definitions = source.value_definitions;
  target.per_instance = source.per_instance;
  target.entity_types = source.entity_types;
  target.ifc_name = source.ifc_name;
  target.visible = source.visible;
  return *this;
}

bool PropertySet::operator==(const PropertySet& other) const {
  return Object::operator==(other) && equalTargets(ns(), other.ns()) && name() == other.name() &&
         has_label() == other.has_label() && property_definitions() == other.property_definitions() &&
         value_definitions() == other.value_definitions() && per_instance() == other.per_instance() &&
         entity_types() == other.entity_types() && has_ifc_name() == other.has_ifc_name() &&
         visible() == other.visible();
}
bool PropertySet::operator!=(const PropertySet& other) const { return !(*this == other); }

unsigned int PropertySet::id() const { return impl().id; }
bool PropertySet::isDirty() const { return impl().dirty; }
std::shared_ptr<ProjectDb> PropertySet::projectDb() const { return impl().projectDb.lock(); }

const TsSmartPtr<const PropertyNamespace>& PropertySet::ns() const { return impl().ns; }

const OdString& PropertySet::name() const { return impl().name; }
void PropertySet::set_name(const OdString& name) { setField(impl(), impl().name, name); }

const OdString& PropertySet::label() const { return textOf(impl().label); }
bool PropertySet::has_label() const { return impl().label.has_value(); }
void PropertySet::set_label(const OdString& label) { setField(impl(), impl().label, label); }
void PropertySet::clear_label() { clearField(impl(), impl().label); }

const OdString& PropertySet::ifc_name() const { return textOf(impl().ifc_name); }
bool PropertySet::has_ifc_name() const { return impl().ifc_name.has_value(); }
void PropertySet::set_ifc_name(const OdString& ifc_name) { setField(impl(), impl().ifc_name, ifc_name); }
void PropertySet::clear_ifc_name() { clearField(impl(), impl().ifc_name); }

bool PropertySet::per_instance() const { return impl().per_instance; }
void PropertySet::set_per_instance(bool per_instance) { setField(impl(), impl().per_instance, per_instance); }

bool PropertySet::visible() const { return impl().visible; }
void PropertySet::set_visible(bool visible) { setField(impl(), impl().visible, visible); }

PropertySet::Impl& PropertySet::impl() { return *impl_; }
const PropertySet::Impl& PropertySet::impl() const { return *impl_; }

void PropertySet::init(odb::callback_event event, odb::database&) { linkWhenLoaded(event, impl()); }

}  // namespace tessel
