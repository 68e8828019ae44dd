#include "units/unit_rows_impl.h"

#include <utility>

namespace tessel {
namespace {

template <typename Impl>
void setUnit(Impl& impl, const TsSmartPtr<const Unit>& unit) {
  if (impl.unit == unit) return;
  impl.changed = true;
  impl.unit = unit;
}

}  // namespace

ColumnUnit::ColumnUnit() : impl_(std::make_unique<Impl>()) {}
ColumnUnit::ColumnUnit(const OdString& table, const OdString& column, const TsSmartPtr<const Unit>& unit)
    : impl_(new Impl{0, table, column, unit, true}) {}
ColumnUnit::ColumnUnit(ColumnUnit&&) noexcept = default;
ColumnUnit& ColumnUnit::operator=(ColumnUnit&&) noexcept = default;
ColumnUnit::~ColumnUnit() = default;

const OdString& ColumnUnit::table() const { return impl().table; }
const OdString& ColumnUnit::column() const { return impl().column; }
const TsSmartPtr<const Unit>& ColumnUnit::unit() const { return impl().unit; }
void ColumnUnit::set_unit(const TsSmartPtr<const Unit>& unit) { setUnit(impl(), unit); }

ColumnUnit::Impl& ColumnUnit::impl() { return *impl_; }
const ColumnUnit::Impl& ColumnUnit::impl() const { return *impl_; }

DefaultUnit::DefaultUnit() : impl_(std::make_unique<Impl>()) {}
DefaultUnit::DefaultUnit(const TsSmartPtr<const Measure>& measure, const TsSmartPtr<const Unit>& unit)
    : impl_(new Impl{measure, unit, true}) {}
DefaultUnit::DefaultUnit(DefaultUnit&&) noexcept = default;
DefaultUnit& DefaultUnit::operator=(DefaultUnit&&) noexcept = default;
DefaultUnit::~DefaultUnit() = default;

const TsSmartPtr<const Measure>& DefaultUnit::measure() const { return impl().measure; }
const TsSmartPtr<const Unit>& DefaultUnit::unit() const { return impl().unit; }
void DefaultUnit::set_unit(const TsSmartPtr<const Unit>& unit) { setUnit(impl(), unit); }

DefaultUnit::Impl& DefaultUnit::impl() { return *impl_; }
const DefaultUnit::Impl& DefaultUnit::impl() const { return *impl_; }

}  // namespace tessel
