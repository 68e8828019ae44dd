#pragma once

#include "persistence/units_mapping.h"

namespace tessel {

// Read without building objects: the ids that meet a condition, how many there are, and the name of a row.

struct MeasureIdView {
  unsigned int id;
};
struct MeasureCountView {
  std::size_t count;
};
struct MeasureNameView {
  OdString name;
};

struct UnitIdView {
  unsigned int id;
};
struct UnitCountView {
  std::size_t count;
};

}  // namespace tessel

#ifdef ODB_COMPILER

#pragma db view(tessel::MeasureIdView) object(tessel::Measure) pointer(*)
#pragma db member(tessel::MeasureIdView::id) column(tessel::Measure::id_)
#pragma db view(tessel::MeasureCountView) object(tessel::Measure) pointer(*)
#pragma db member(tessel::MeasureCountView::count) column("count(" + tessel::Measure::id_ + ")")
#pragma db view(tessel::MeasureNameView) object(tessel::Measure) pointer(*)
#pragma db member(tessel::MeasureNameView::name) column(tessel::Measure::name_)

#pragma db view(tessel::UnitIdView) object(tessel::Unit) pointer(*)
#pragma db member(tessel::UnitIdView::id) column(tessel::Unit::id_)
#pragma db view(tessel::UnitCountView) object(tessel::Unit) pointer(*)
#pragma db member(tessel::UnitCountView::count) column("count(" + tessel::Unit::id_ + ")")

#endif
