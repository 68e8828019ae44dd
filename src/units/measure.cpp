#include "units/measure_impl.h"

#include "object/current_database.h"
#include "object/fields.h"
#include "object/object_members.h"

namespace tessel {

TESSEL_DEFINE_OBJECT_MEMBERS(Measure, Object)
TESSEL_DEFINE_SAVE_MEMBERS(Measure)

Measure::Measure() : Measure(new Impl) {}
Measure::Measure(Impl* impl) : impl_(impl) {}
Measure::Measure(const SetDirty&) : Measure() { impl_->dirty = true; }
Measure::~Measure() = default;

TsSmartPtr<Measure> Measure::create(const OdString& name, short length, short mass, short time,
                                    short thermodynamic_temperature, short electric_current, short luminous_intensity,
                                    short amount_of_substance) {
  TsSmartPtr<Measure> measure = new Measure(SetDirty{});
  Impl& impl = measure->impl();
  impl.name = name;
  impl.length = length;
  impl.mass = mass;
  impl.time = time;
  impl.thermodynamic_temperature = thermodynamic_temperature;
  impl.electric_current = electric_current;
  impl.luminous_intensity = luminous_intensity;
  impl.amount_of_substance = amount_of_substance;
  return measure;
}

bool Measure::operator==(const Measure& other) const {
  return Object::operator==(other) && name() == other.name() && description() == other.description() &&
         impl().exponents() == other.impl().exponents();
}
bool Measure::operator!=(const Measure& other) const { return !(*this == other); }

unsigned int Measure::id() const { return impl().id; }
bool Measure::isDirty() const { return impl().dirty; }
std::shared_ptr<ProjectDb> Measure::projectDb() const { return impl().projectDb.lock(); }

const OdString& Measure::name() const { return impl().name; }
void Measure::set_name(const OdString& name) { setField(impl(), impl().name, name); }
const OdString& Measure::description() const { return impl().description; }
void Measure::set_description(const OdString& description) { setField(impl(), impl().description, description); }

short Measure::length() const { return impl().length; }
short Measure::mass() const { return impl().mass; }
short Measure::time() const { return impl().time; }
short Measure::thermodynamic_temperature() const { return impl().thermodynamic_temperature; }
short Measure::electric_current() const { return impl().electric_current; }
short Measure::luminous_intensity() const { return impl().luminous_intensity; }
short Measure::amount_of_substance() const { return impl().amount_of_substance; }

Measure::Impl& Measure::impl() { return *impl_; }
const Measure::Impl& Measure::impl() const { return *impl_; }

void Measure::init(odb::callback_event event, odb::database&) { linkWhenLoaded(event, impl()); }

}  // namespace tessel
