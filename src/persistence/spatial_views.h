#pragma once

#include "persistence/spatial_mapping.h"

namespace tessel {

// Read without building objects: the ids that meet a condition, how many there are, and the name of a row.

struct SpatialStructureIdView {
  unsigned int id;
};
struct SpatialStructureCountView {
  std::size_t count;
};

struct SiteIdView {
  unsigned int id;
};
struct SiteCountView {
  std::size_t count;
};
struct SiteNameView {
  OdString name;
};

struct BuildingIdView {
  unsigned int id;
};
struct BuildingCountView {
  std::size_t count;
};
struct BuildingNameView {
  OdString name;
};

struct StoryIdView {
  unsigned int id;
};
struct StoryCountView {
  std::size_t count;
};
struct StoryNameView {
  OdString name;
};

}  // namespace tessel

#ifdef ODB_COMPILER

#pragma db view(tessel::SpatialStructureIdView) object(tessel::SpatialStructure) pointer(*)
#pragma db member(tessel::SpatialStructureIdView::id) column(tessel::SpatialStructure::id_)
#pragma db view(tessel::SpatialStructureCountView) object(tessel::SpatialStructure) pointer(*)
#pragma db member(tessel::SpatialStructureCountView::count) column("count(" + tessel::SpatialStructure::id_ + ")")

#pragma db view(tessel::SiteIdView) object(tessel::Site) pointer(*)
#pragma db member(tessel::SiteIdView::id) column(tessel::Site::id_)
#pragma db view(tessel::SiteCountView) object(tessel::Site) pointer(*)
#pragma db member(tessel::SiteCountView::count) column("count(" + tessel::Site::id_ + ")")
#pragma db view(tessel::SiteNameView) object(tessel::Site) pointer(*)
#pragma db member(tessel::SiteNameView::name) column(tessel::Site::name_)

#pragma db view(tessel::BuildingIdView) object(tessel::Building) pointer(*)
#pragma db member(tessel::BuildingIdView::id) column(tessel::Building::id_)
#pragma db view(tessel::BuildingCountView) object(tessel::Building) pointer(*)
#pragma db member(tessel::BuildingCountView::count) column("count(" + tessel::Building::id_ + ")")
#pragma db view(tessel::BuildingNameView) object(tessel::Building) pointer(*)
#pragma db member(tessel::BuildingNameView::name) column(tessel::Building::name_)

#pragma db view(tessel::StoryIdView) object(tessel::Story) pointer(*)
#pragma db member(tessel::StoryIdView::id) column(tessel::Story::id_)
#pragma db view(tessel::StoryCountView) object(tessel::Story) pointer(*)
#pragma db member(tessel::StoryCountView::count) column("count(" + tessel::Story::id_ + ")")
#pragma db view(tessel::StoryNameView) object(tessel::Story) pointer(*)
#pragma db member(tessel::StoryNameView::name) column(tessel::Story::name_)

#endif
