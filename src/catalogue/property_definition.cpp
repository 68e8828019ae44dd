#include "catalogue/definition_impl.h"

#include <cstdint>

#include "object/current_database.h"
#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(PropertyDefinition, AbstractDefinition)
TESSEL_DEFINE_SAVE_MEMBERS(PropertyDefinition)

PropertyDefinition::PropertyDefinition() : PropertyDefinition(new Impl) {}
PropertyDefinition::PropertyDefinition(Impl* impl) : AbstractDefinition(impl) {}
PropertyDefinition::PropertyDefinition(const SetDirty&) : PropertyDefinition() { impl().dirty = true; }

TsSmartPtr<PropertyDefinition> PropertyDefinition::create(const TsSmartPtr<const PropertyNamespace>& ns) {
  return create(ns, OdString());
}

TsSmartPtr<PropertyDefinition> PropertyDefinition::create(const TsSmartPtr<const PropertyNamespace>& ns,
                                                          const OdString& name) {
  return create(ns, name, PropertyType());
}

TsSmartPtr<PropertyDefinition> PropertyDefinition::create(const TsSmartPtr<const PropertyNamespace>& ns,
                                                          const OdString& name, const PropertyType& type) {
  TsSmartPtr<PropertyDefinition> definition = new PropertyDefinition(SetDirty{});
  Impl& impl = definition->impl();
  impl.ns = ns;
  impl.name = name;
  impl.type = type;
  return definition;
}

PropertyDefinition& PropertyDefinition::operator=(const PropertyDefinition& other) {
  AbstractDefinition::operator=(other);
  impl().ns = other.impl().ns;
  impl().type_spec = other.impl().type_spec;
  impl().type_spec2 = other.impl().type_spec2;
  impl().default_value = other.impl().default_value;
  return *this;
}

bool PropertyDefinition::operator==(const PropertyDefinition& other) const {
  return AbstractDefinition::operator==(other) && equalTargets(ns(), other.ns()) && type_spec() == other.type_spec() &&
         type_spec2() == other.type_spec2() && default_value() == other.default_value();
}
bool PropertyDefinition::operator!=(const PropertyDefinition& other) const { return !(*this == other); }

bool PropertyDefinition::isDirty() const { return impl().dirty; }
std::shared_ptr<ProjectDb> PropertyDefinition::projectDb() const { return impl().projectDb.lock(); }

const TsSmartPtr<const PropertyNamespace>& PropertyDefinition::ns() const { return impl().ns; }

const OdString& PropertyDefinition::type_spec() const { return impl().type_spec; }
void PropertyDefinition::set_type_spec(const OdString& type_spec) { setField(impl(), impl().type_spec, type_spec); }
const OdString& PropertyDefinition::type_spec2() const { return impl().type_spec2; }
void PropertyDefinition::set_type_spec2(const OdString& type_spec2) { setField(impl(), impl().type_spec2, type_spec2); }
const OdString& PropertyDefinition::default_value() const { return impl().default_value; }

// Every PropertyDefinition is made with an Impl of its own class.
PropertyDefinition::Impl& PropertyDefinition::impl() { return static_cast<Impl&>(AbstractDefinition::impl()); }
const PropertyDefinition::Impl& PropertyDefinition::impl() const {
  return static_cast<const Impl&>(AbstractDefinition::impl());
}

void PropertyDefinition::init(odb::callback_event event, odb::database&) { linkWhenLoaded(event, impl()); }

}  // namespace tessel
