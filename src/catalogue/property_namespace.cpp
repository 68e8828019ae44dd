#include "catalogue/property_set_impl.h"

#include "object/current_database.h"
#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(PropertyNamespace, Object)
TESSEL_DEFINE_SAVE_MEMBERS(PropertyNamespace)

PropertyNamespace::PropertyNamespace() : PropertyNamespace(new Impl) {}
PropertyNamespace::PropertyNamespace(Impl* impl) : impl_(impl) {}
PropertyNamespace::PropertyNamespace(const SetDirty&) : PropertyNamespace() { impl_->dirty = true; }
PropertyNamespace::~PropertyNamespace() = default;

TsSmartPtr<PropertyNamespace> PropertyNamespace::create(const OdString& name) {
  TsSmartPtr<PropertyNamespace> ns = new PropertyNamespace(SetDirty{});
  ns->impl().name = name;
  return ns;
}

TsSmartPtr<PropertyNamespace> PropertyNamespace::create(const OdString& name, const OdString& label) {
  TsSmartPtr<PropertyNamespace> ns = create(name);
  ns->impl().label = label;
  return ns;
}

// The name stays: it has no setter, and definitions find their home by it.
PropertyNamespace& PropertyNamespace::operator=(const PropertyNamespace& other) {
  impl().dirty = true;
  impl().label = other.impl().label;
  impl().editable = other.impl().editable;
  impl().visible = other.impl().visible;
  impl().revision = other.impl().revision;
  return *this;
}

bool PropertyNamespace::operator==(const PropertyNamespace& other) const {
  return Object::operator==(other) && name() == other.name() && has_label() == other.has_label() &&
         editable() == other.editable() && visible() == other.visible() && revision() == other.revision();
}
bool PropertyNamespace::operator!=(const PropertyNamespace& other) const { return !(*this == other); }

unsigned int PropertyNamespace::id() const { return impl().id; }
bool PropertyNamespace::isDirty() const { return impl().dirty; }
std::shared_ptr<ProjectDb> PropertyNamespace::projectDb() const { return impl().projectDb.lock(); }

const OdString& PropertyNamespace::name() const { return impl().name; }

const OdString& PropertyNamespace::label() const { return textOf(impl().label); }
bool PropertyNamespace::has_label() const { return impl().label.has_value(); }
void PropertyNamespace::set_label(const OdString& label) { setField(impl(), impl().label, label); }
void PropertyNamespace::clear_label() { clearField(impl(), impl().label); }

bool PropertyNamespace::editable() const { return impl().editable; }
void PropertyNamespace::set_editable(bool editable) { setField(impl(), impl().editable, editable); }
bool PropertyNamespace::visible() const { return impl().visible; }
void PropertyNamespace::set_visible(bool visible) { setField(impl(), impl().visible, visible); }

unsigned int PropertyNamespace::revision() const { return impl().revision; }
void PropertyNamespace::set_revision(unsigned int revision) { setField(impl(), impl().revision, revision); }

PropertyNamespace::Impl& PropertyNamespace::impl() { return *impl_; }
const PropertyNamespace::Impl& PropertyNamespace::impl() const { return *impl_; }

void PropertyNamespace::init(odb::callback_event event, odb::database&) { linkWhenLoaded(event, impl()); }

}  // namespace tessel
