#include "units/unit_impl.h"

#include "object/current_database.h"
#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(Unit, Object)
TESSEL_DEFINE_SAVE_MEMBERS(Unit)

Unit::Unit() : Unit(new Impl) {}
Unit::Unit(Impl* impl) : impl_(impl) {}
Unit::Unit(const SetDirty&) : Unit() { impl_->dirty = true; }
Unit::~Unit() = default;

TsSmartPtr<Unit> Unit::create(const OdString& label, double scale, const TsSmartPtr<const Measure>& measure) {
  TsSmartPtr<Unit> unit = new Unit(SetDirty{});
  Impl& impl = unit->impl();
  impl.label = label;
  impl.scale = scale;
  impl.measure = measure;
  return unit;
}

TsSmartPtr<Unit> Unit::create(const OdString& name, const OdString& label, double scale,
                              const TsSmartPtr<const Measure>& measure) {
  TsSmartPtr<Unit> unit = create(label, scale, measure);
  unit->impl().name = name;
  return unit;
}

// Two names of one unit ("metre", "meter") do not make two units, so only their presence counts.
bool Unit::operator==(const Unit& other) const {
  return Object::operator==(other) && has_name() == other.has_name() && label() == other.label() &&
         scale() == other.scale() && equalTargets(measure(), other.measure());
}
bool Unit::operator!=(const Unit& other) const { return !(*this == other); }

unsigned int Unit::id() const { return impl().id; }
bool Unit::isDirty() const { return impl().dirty; }
std::shared_ptr<ProjectDb> Unit::projectDb() const { return impl().projectDb.lock(); }

const OdString& Unit::name() const { return textOf(impl().name); }
bool Unit::has_name() const { return impl().name.has_value(); }
void Unit::set_name(const OdString& name) { setField(impl(), impl().name, name); }
void Unit::clear_name() { clearField(impl(), impl().name); }

const OdString& Unit::label() const { return impl().label; }
void Unit::set_label(const OdString& label) { setField(impl(), impl().label, label); }

double Unit::scale() const { return impl().scale; }
const TsSmartPtr<const Measure>& Unit::measure() const { return impl().measure; }

short Unit::length() const { return measure()->length(); }
short Unit::mass() const { return measure()->mass(); }
short Unit::time() const { return measure()->time(); }
short Unit::thermodynamic_temperature() const { return measure()->thermodynamic_temperature(); }
short Unit::electric_current() const { return measure()->electric_current(); }
short Unit::luminous_intensity() const { return measure()->luminous_intensity(); }
short Unit::amount_of_substance() const { return measure()->amount_of_substance(); }

Unit::Impl& Unit::impl() { return *impl_; }
const Unit::Impl& Unit::impl() const { return *impl_; }

void Unit::init(odb::callback_event event, odb::database&) { linkWhenLoaded(event, impl()); }

}  // namespace tessel
