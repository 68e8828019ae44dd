#pragma once

#include <memory>

#include "persistence/text_types.h"
#include "units/measure_impl.h"
#include "units/unit_impl.h"
#include "units/unit_rows_impl.h"

namespace tessel {

// Plain names, which is what the mapping of a virtual member takes.
using MeasureReference = TsSmartPtr<const Measure>;
using UnitReference = TsSmartPtr<const Unit>;

}  // namespace tessel

#ifdef ODB_COMPILER

// Neither class takes part in sessions: each load of a measure or unit makes an object of its own.

#pragma db object(tessel::Measure) table("Measure") callback(init)
#pragma db member(tessel::Measure::impl_) transient
#pragma db member(tessel::Measure::id_) virtual(unsigned int) column("id") get(impl().id) set(impl().id) id auto
#pragma db member(tessel::Measure::name_) virtual(OdString) column("name") get(impl().name) set(impl().name)
#pragma db member(tessel::Measure::description_) virtual(OdString) column("description") get(impl().description) \
  set(impl().description)
#pragma db member(tessel::Measure::length_) virtual(short) column("length") get(impl().length) set(impl().length)
#pragma db member(tessel::Measure::mass_) virtual(short) column("mass") get(impl().mass) set(impl().mass)
#pragma db member(tessel::Measure::time_) virtual(short) column("time") get(impl().time) set(impl().time)
#pragma db member(tessel::Measure::thermodynamic_temperature_) virtual(short) column("thermodynamic_temperature") \
  get(impl().thermodynamic_temperature) set(impl().thermodynamic_temperature)
#pragma db member(tessel::Measure::electric_current_) virtual(short) column("electric_current") \
  get(impl().electric_current) set(impl().electric_current)
#pragma db member(tessel::Measure::luminous_intensity_) virtual(short) column("luminous_intensity") \
  get(impl().luminous_intensity) set(impl().luminous_intensity)
#pragma db member(tessel::Measure::amount_of_substance_) virtual(short) column("amount_of_substance") \
  get(impl().amount_of_substance) set(impl().amount_of_substance)

#pragma db object(tessel::Unit) table("Unit") callback(init)
#pragma db member(tessel::Unit::impl_) transient
#pragma db member(tessel::Unit::id_) virtual(unsigned int) column("id") get(impl().id) set(impl().id) id auto
#pragma db member(tessel::Unit::name_) virtual(tessel::OptionalText) column("name") get(impl().name) set(impl().name)
#pragma db member(tessel::Unit::label_) virtual(OdString) column("label") get(impl().label) set(impl().label)
#pragma db member(tessel::Unit::scale_) virtual(double) column("scale") get(impl().scale) set(impl().scale)
#pragma db member(tessel::Unit::measure_) virtual(tessel::MeasureReference) column("measure_id") get(impl().measure) \
  set(impl().measure) not_null

#pragma db object(tessel::ColumnUnit) table("ColumnUnit") pointer(std::shared_ptr)
#pragma db member(tessel::ColumnUnit::impl_) transient
#pragma db member(tessel::ColumnUnit::id_) virtual(unsigned int) column("id") get(impl().id) set(impl().id) id auto
#pragma db member(tessel::ColumnUnit::table_) virtual(OdString) column("table") get(impl().table) set(impl().table)
#pragma db member(tessel::ColumnUnit::column_) virtual(OdString) column("column") get(impl().column) set(impl().column)
#pragma db member(tessel::ColumnUnit::unit_) virtual(tessel::UnitReference) column("unit_id") get(impl().unit) \
  set(impl().unit) not_null

// The key of the row is a reference, which ODB cannot take for an id. Such a row is found and updated by queries.
#pragma db object(tessel::DefaultUnit) table("DefaultUnit") no_id pointer(std::shared_ptr)
#pragma db member(tessel::DefaultUnit::impl_) transient
#pragma db member(tessel::DefaultUnit::measure_) virtual(tessel::MeasureReference) column("measure_id") \
  get(impl().measure) set(impl().measure) not_null
#pragma db member(tessel::DefaultUnit::unit_) virtual(tessel::UnitReference) column("unit_id") get(impl().unit) \
  set(impl().unit) null

#endif
