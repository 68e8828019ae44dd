#include "catalogue/definition_impl.h"

#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(AbstractDefinition, Object)

AbstractDefinition::AbstractDefinition(Impl* impl) : impl_(impl) {}
AbstractDefinition::~AbstractDefinition() = default;

AbstractDefinition& AbstractDefinition::operator=(const AbstractDefinition& other) {
  Impl& target = impl();
  const Impl& source = other.impl();
  target.dirty = true;
  target.name = source.name;
  target.label = source.label;
  target.description = source.description;
  target.unit = source.unit;
  target.ifc_name = source.ifc_name;
  target.ifc_type = source.ifc_type;
  target.type = source.type;
  target.visible = source.visible;
  return *this;
}

// How a definition is labelled, and what it is called in IFC, does not make it another one; that it is, does.
bool AbstractDefinition::operator==(const AbstractDefinition& other) const {
  return Object::operator==(other) && name() == other.name() && has_label() == other.has_label() &&
         description() == other.description() && equalTargets(unit(), other.unit()) &&
         has_ifc_name() == other.has_ifc_name() && has_ifc_type() == other.has_ifc_type() && type() == other.type() &&
         visible() == other.visible();
}

unsigned int AbstractDefinition::id() const { return impl().id; }

const OdString& AbstractDefinition::name() const { return impl().name; }
void AbstractDefinition::set_name(const OdString& name) { setField(impl(), impl().name, name); }

const OdString& AbstractDefinition::label() const { return textOf(impl().label); }
bool AbstractDefinition::has_label() const { return impl().label.has_value(); }
void AbstractDefinition::set_label(const OdString& label) { setField(impl(), impl().label, label); }
void AbstractDefinition::clear_label() { clearField(impl(), impl().label); }

const OdString& AbstractDefinition::description() const { return impl().description; }
void AbstractDefinition::set_description(const OdString& description) {
  setField(impl(), impl().description, description);
}

const TsSmartPtr<const Unit>& AbstractDefinition::unit() const { return impl().unit; }
void AbstractDefinition::set_unit(const TsSmartPtr<const Unit>& unit) { setField(impl(), impl().unit, unit); }

const OdString& AbstractDefinition::ifc_name() const { return textOf(impl().ifc_name); }
bool AbstractDefinition::has_ifc_name() const { return impl().ifc_name.has_value(); }
void AbstractDefinition::set_ifc_name(const OdString& ifc_name) { setField(impl(), impl().ifc_name, ifc_name); }
void AbstractDefinition::clear_ifc_name() { clearField(impl(), impl().ifc_name); }

IfcType AbstractDefinition::ifc_type() const { return impl().ifc_type.value_or(IfcType(0)); }
bool AbstractDefinition::has_ifc_type() const { return impl().ifc_type.has_value(); }
void AbstractDefinition::set_ifc_type(IfcType ifc_type) { setField(impl(), impl().ifc_type, ifc_type); }
void AbstractDefinition::clear_ifc_type() { clearField(impl(), impl().ifc_type); }

const PropertyType& AbstractDefinition::type() const { return impl().type; }
void AbstractDefinition::set_type(const PropertyType& type) { setField(impl(), impl().type, type); }

bool AbstractDefinition::visible() const { return impl().visible; }
void AbstractDefinition::set_visible(bool visible) { setField(impl(), impl().visible, visible); }

AbstractDefinition::Impl& AbstractDefinition::impl() { return *impl_; }
const AbstractDefinition::Impl& AbstractDefinition::impl() const { return *impl_; }

}  // namespace tessel
