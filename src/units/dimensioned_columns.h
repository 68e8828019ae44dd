#pragma once

#include <type_traits>

#include <tessel/spatial.h>

namespace tessel {

/// A column of a spatial class whose numbers have a unit.
template <typename T>
struct DimensionedColumn {
  const char16_t* measure;  ///< The measure whose first default unit becomes the unit of the column.
  const char16_t* name;
  double (T::*getter)() const;
  void (T::*setter)(double);
};

inline constexpr char16_t lengthMeasure[] = u"LENGTH";
inline constexpr char16_t areaMeasure[] = u"AREA";

/// The ten columns, by class and in the order in which they are converted. For each measure it is also the order in which
/// the rows of their units are written. `table` is what those rows call the class.
template <typename T>
struct DimensionedColumns;

/// All other classes keep no numbers with a unit.
template <typename T>
inline constexpr bool hasDimensionedColumns = std::is_base_of_v<SpatialStructure, T>;

template <>
struct DimensionedColumns<Site> {
  static constexpr const char16_t* table = u"Site";
  static constexpr DimensionedColumn<Site> columns[] = {
    {lengthMeasure, u"ref_elevation", &Site::ref_elevation, &Site::set_ref_elevation},
    {areaMeasure, u"buildable_area", &Site::buildable_area, &Site::set_buildable_area},
    {areaMeasure, u"total_area", &Site::total_area, &Site::set_total_area},
    {lengthMeasure, u"building_height_limit", &Site::building_height_limit, &Site::set_building_height_limit},
  };
};

template <>
struct DimensionedColumns<Building> {
  static constexpr const char16_t* table = u"Building";
  static constexpr DimensionedColumn<Building> columns[] = {
    {lengthMeasure, u"elevation_of_ref_height", &Building::elevation_of_ref_height,
     &Building::set_elevation_of_ref_height},
    {lengthMeasure, u"elevation_of_terrain", &Building::elevation_of_terrain, &Building::set_elevation_of_terrain},
    {areaMeasure, u"gross_planned_area", &Building::gross_planned_area, &Building::set_gross_planned_area},
  };
};

template <>
struct DimensionedColumns<Story> {
  static constexpr const char16_t* table = u"Story";
  static constexpr DimensionedColumn<Story> columns[] = {
    {lengthMeasure, u"elevation", &Story::elevation, &Story::set_elevation},
    {areaMeasure, u"gross_area_planned", &Story::gross_area_planned, &Story::set_gross_area_planned},
    {areaMeasure, u"net_area_planned", &Story::net_area_planned, &Story::set_net_area_planned},
  };
};

}  // namespace tessel
