#pragma once

#include "operations/class_traits.h"
#include "spatial/spatial_impl.h"

namespace tessel {

/// Loaded and counted only: objects of this class are saved and removed as what they are.
template <>
struct ClassTraits<SpatialStructure> {
  using Query = odb::query<SpatialStructure>;
  using IdView = SpatialStructureIdView;
  using CountView = SpatialStructureCountView;

  static constexpr const wchar_t* className = L"SpatialStructure";

  static Condition condition(const SpatialStructureCriteria&) { return Condition(true); }
  static Condition order(const Condition& condition, const SpatialStructureCriteria&) { return condition; }
};

template <>
struct ClassTraits<Site> : NamedInFile<Site>, Overwritable<Site> {
  using IdView = SiteIdView;
  using CountView = SiteCountView;
  using NameView = SiteNameView;
};

template <>
struct ClassTraits<Building> : NamedInOwner<Building, Site>, Overwritable<Building> {
  using IdView = BuildingIdView;
  using CountView = BuildingCountView;
  using NameView = BuildingNameView;

  static const TsSmartPtr<const Site>& ownerOf(const Building& building) { return building.site(); }
  static const auto& ownerColumn() { return Query::site; }

  static Condition condition(const BuildingCriteria& criteria) {
    return textCondition(Query::name, criteria.name) && ownerCondition(Query::site, criteria.site_id);
  }
  static Condition order(const Condition& condition, const BuildingCriteria&) {
    return orderedBy(condition, Query::name);
  }

  template <typename Save>
  static void references(Building::Impl& building, Save&& save) {
    save(building.site, Replaced::MarksDirty);
  }
};

template <>
struct ClassTraits<Story> : NamedInOwner<Story, Building>, Overwritable<Story> {
  using IdView = StoryIdView;
  using CountView = StoryCountView;
  using NameView = StoryNameView;

  static const TsSmartPtr<const Building>& ownerOf(const Story& story) { return story.building(); }
  static const auto& ownerColumn() { return Query::building; }

  static Condition condition(const StoryCriteria& criteria) {
    return textCondition(Query::name, criteria.name) && ownerCondition(Query::building, criteria.building_id);
  }

  /// The stories of one building are listed from the bottom up; over all buildings that would mix them up.
  static Condition order(const Condition& condition, const StoryCriteria& criteria) {
    if (criteria.building_id == 0) return orderedBy(condition, Query::name);
    return orderedBy(condition, Query::elevation) + " ASC";
  }

  template <typename Save>
  static void references(Story::Impl& story, Save&& save) {
    save(story.building, Replaced::MarksDirty);
  }
};

}  // namespace tessel
