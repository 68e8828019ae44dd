#include "catalogue/definition_impl.h"

#include "object/current_database.h"
#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(ValueDefinition, AbstractDefinition)
TESSEL_DEFINE_SAVE_MEMBERS(ValueDefinition)

ValueDefinition::ValueDefinition() : ValueDefinition(new Impl) {}
ValueDefinition::ValueDefinition(Impl* impl) : AbstractDefinition(impl) {}
ValueDefinition::ValueDefinition(const SetDirty&) : ValueDefinition() { impl().dirty = true; }

TsSmartPtr<ValueDefinition> ValueDefinition::create(const TsSmartPtr<const PropertyNamespace>& ns) {
  return create(ns, OdString());
}

TsSmartPtr<ValueDefinition> ValueDefinition::create(const TsSmartPtr<const PropertyNamespace>& ns,
                                                    const OdString& name) {
  return create(ns, name, PropertyType());
}

TsSmartPtr<ValueDefinition> ValueDefinition::create(const TsSmartPtr<const PropertyNamespace>& ns, const OdString& name,
                                                    const PropertyType& type) {
  TsSmartPtr<ValueDefinition> definition = new ValueDefinition(SetDirty{});
  Impl& impl = definition->impl();
  impl.ns = ns;
  impl.name = name;
  impl.type = type;
  return definition;
}

ValueDefinition& ValueDefinition::operator=(const ValueDefinition& other) {
  AbstractDefinition::operator=(other);
  impl().ns = other.impl().ns;
  impl().value_spec = other.impl().value_spec;
  return *this;
}

bool ValueDefinition::operator==(const ValueDefinition& other) const {
  return AbstractDefinition::operator==(other) && equalTargets(ns(), other.ns()) && value_spec() == other.value_spec();
}
bool ValueDefinition::operator!=(const ValueDefinition& other) const { return !(*this == other); }

bool ValueDefinition::isDirty() const { return impl().dirty; }
std::shared_ptr<ProjectDb> ValueDefinition::projectDb() const { return impl().projectDb.lock(); }

const TsSmartPtr<const PropertyNamespace>& ValueDefinition::ns() const { return impl().ns; }

const OdString& ValueDefinition::value_spec() const { return impl().value_spec; }
void ValueDefinition::set_value_spec(const OdString& value_spec) { setField(impl(), impl().value_spec, value_spec); }

// Every ValueDefinition is made with an Impl of its own class.
ValueDefinition::Impl& ValueDefinition::impl() { return static_cast<Impl&>(AbstractDefinition::impl()); }
const ValueDefinition::Impl& ValueDefinition::impl() const {
  return static_cast<const Impl&>(AbstractDefinition::impl());
}

void ValueDefinition::init(odb::callback_event event, odb::database&) { linkWhenLoaded(event, impl()); }

}  // namespace tessel
