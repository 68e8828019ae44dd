#pragma once

#include <map>
#include <utility>

#include <tessel/project_db.h>
#include <tessel/unit_conversion.h>
#include <tessel/units.h>

#include "database/unit_clock.h"
#include "units/dimensioned_columns.h"

namespace tessel {

/// The units of dimensioned columns as an operation has read them. Asking a file anew for each number would be most of the
/// work of a copy. All is forgotten as soon as something was written that an answer may depend on, be it by a reactor.
class ColumnUnits {
public:
  /// Null if the file does not say.
  template <typename T>
  TsSmartPtr<const Unit> of(const ProjectDb& db, const DimensionedColumn<T>& column) {
    if (readAt_ != unitClock()) {
      known_.clear();
      readAt_ = unitClock();
    }
    const Key key(&db, &column);
    const auto known = known_.find(key);
    if (known != known_.end()) return known->second;
    return known_.emplace(key, db.columnUnit<T>(column.getter)).first->second;
  }

private:
  using Key = std::pair<const ProjectDb*, const void*>;

  std::map<Key, TsSmartPtr<const Unit>> known_;
  std::uint64_t readAt_ = 0;
};

/// Brings the numbers of a copy from the units of the source's columns to those of the destination. UnitException if one
/// cannot be converted.
template <typename T>
void convertColumnUnits(T& copy, const ProjectDb& source, const ProjectDb& destination, ColumnUnits& units) {
  if constexpr (hasDimensionedColumns<T>) {
    for (const DimensionedColumn<T>& column : DimensionedColumns<T>::columns) {
      const TsSmartPtr<const Unit> from = units.of(source, column);
      const TsSmartPtr<const Unit> to = units.of(destination, column);
      (copy.*column.setter)(convertUnit((copy.*column.getter)(), from.get(), to.get()));
    }
  }
}

}  // namespace tessel
