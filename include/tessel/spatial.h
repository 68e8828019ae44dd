#pragma once

#include <memory>
#include <vector>

#include <tessel/object.h>
#include <tessel/object_traits.h>
#include <tessel/platform/od_string.h>

namespace tessel {

/// What sites, buildings and stories have in common. They share one table of ids, so an id names one of the three. For
/// one thread at a time.
///
/// Elevations, heights and areas are numbers in the unit of their column, see ProjectDb::columnUnit; a file in which no
/// default unit was ever set does not say which unit that is. They may have either sign. The save of a NaN fails: with
/// ObjectNotUnique without a member for a new object, with DatabaseException for a changed one.
class TESSEL_API SpatialStructure : public Object {
  TESSEL_OBJECT_MEMBERS(SpatialStructure)

  ~SpatialStructure() override;

  unsigned int id() const override;
  bool isDirty() const override;
  std::shared_ptr<ProjectDb> projectDb() const override;

  /// The name, which is unique among its neighbours; empty in an object that was made without one.
  ///@{
  virtual const OdString& name() const = 0;
  virtual void set_name(const OdString& name) = 0;
  ///@}

  /// Free text.
  ///@{
  virtual const OdString& description() const = 0;
  virtual void set_description(const OdString& description) = 0;
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  explicit SpatialStructure(Impl* impl);

  OdRxObjectPtr clone() const override = 0;

  /// Marks the object as changed; the derived classes copy their fields.
  SpatialStructure& operator=(const SpatialStructure& other);

private:
  friend class odb::access;
  void init(odb::callback_event event, odb::database& database);

  std::unique_ptr<Impl> impl_;
};

/// The ground that buildings stand on.
///
///     auto site = Site::create(L"Harbour");
///     site->set_town(L"Bergen");
///     site = site->save(db);
///     for (const auto& building : site->buildings()) show(building->name());
class TESSEL_API Site : public SpatialStructure {
  TESSEL_OBJECT_MEMBERS(Site)
  TESSEL_SAVE_MEMBERS(Site)

  /// Without a name and, unlike every other new object, not dirty: it is not saved before something has been set.
  static TsSmartPtr<Site> create();
  /// New, of that name.
  static TsSmartPtr<Site> create(const OdString& name);

  /// Copies all fields and marks this site as changed. Id, database and reactors stay.
  Site& operator=(const Site& other);

  /// All fields; numbers are compared exactly.
  ///@{
  bool operator==(const Site& other) const;
  bool operator!=(const Site& other) const;
  ///@}

  /// The buildings of this site in the order of their names, asked from the file at each call. Their `site()` is this
  /// object. Empty for a site without a row or whose database is closed.
  std::vector<TsSmartPtr<Building>> buildings() const;

  /// Unique in a file.
  const OdString& name() const override;
  void set_name(const OdString& name) override;
  const OdString& description() const override;
  void set_description(const OdString& description) override;

  /// Texts for people; the library does not read them.
  ///@{
  const OdString& long_name() const;
  void set_long_name(const OdString& long_name);
  const OdString& site_type() const;
  void set_site_type(const OdString& site_type);
  ///@}

  /// Height of the site's reference point above sea level, in the unit of its column.
  ///@{
  double ref_elevation() const;
  void set_ref_elevation(double ref_elevation);
  ///@}

  /// The number in the land register, as text.
  ///@{
  const OdString& land_title_number() const;
  void set_land_title_number(const OdString& land_title_number);
  ///@}

  /// The postal address, part by part; how lines are divided in `address_lines` is up to the host.
  ///@{
  const OdString& internal_location() const;
  void set_internal_location(const OdString& internal_location);
  const OdString& address_lines() const;
  void set_address_lines(const OdString& address_lines);
  const OdString& postal_box() const;
  void set_postal_box(const OdString& postal_box);
  const OdString& town() const;
  void set_town(const OdString& town);
  const OdString& region() const;
  void set_region(const OdString& region);
  const OdString& postal_code() const;
  void set_postal_code(const OdString& postal_code);
  const OdString& country() const;
  void set_country(const OdString& country);
  ///@}

  /// Area that may be built on, and area of the whole site, each in the unit of its column.
  ///@{
  double buildable_area() const;
  void set_buildable_area(double buildable_area);
  double total_area() const;
  void set_total_area(double total_area);
  ///@}

  /// Height that buildings may have, in the unit of its column; 0 in a new site.
  ///@{
  double building_height_limit() const;
  void set_building_height_limit(double building_height_limit);
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  Site();
  explicit Site(Impl* impl);
  explicit Site(const SetDirty&);

private:
  friend class odb::access;
};

/// A building on a site.
class TESSEL_API Building : public SpatialStructure {
  TESSEL_OBJECT_MEMBERS(Building)
  TESSEL_SAVE_MEMBERS(Building)

  /// New. A null site is accepted, but a save of it is a DatabaseException.
  ///@{
  static TsSmartPtr<Building> create(const TsSmartPtr<const Site>& site);
  static TsSmartPtr<Building> create(const TsSmartPtr<const Site>& site, const OdString& name);
  ///@}

  /// Copies all fields, the site too, and marks this building as changed. Id, database and reactors stay.
  Building& operator=(const Building& other);

  /// All fields, and equal sites.
  ///@{
  bool operator==(const Building& other) const;
  bool operator!=(const Building& other) const;
  ///@}

  /// The stories of this building from the bottom up, asked from the file at each call. Their `building()` is this
  /// object. Empty for a building without a row or whose database is closed.
  std::vector<TsSmartPtr<Story>> stories() const;

  /// The site that it stands on.
  const TsSmartPtr<const Site>& site() const;
  /// Another pointer counts as a change, even if it points at an equal site.
  void set_site(const TsSmartPtr<const Site>& site);

  /// Unique among the buildings of a site.
  const OdString& name() const override;
  void set_name(const OdString& name) override;
  const OdString& description() const override;
  void set_description(const OdString& description) override;

  /// For people; the library does not read it.
  ///@{
  const OdString& long_name() const;
  void set_long_name(const OdString& long_name);
  ///@}

  /// Heights above sea level: of the building's zero, from which its stories are measured, and of the lowest terrain at
  /// its foot, as in IfcBuilding (ISO 16739-1). Each is in the unit of its column.
  ///@{
  double elevation_of_ref_height() const;
  void set_elevation_of_ref_height(double elevation_of_ref_height);
  double elevation_of_terrain() const;
  void set_elevation_of_terrain(double elevation_of_terrain);
  ///@}

  /// The postal address, as that of a Site.
  ///@{
  const OdString& internal_location() const;
  void set_internal_location(const OdString& internal_location);
  const OdString& address_lines() const;
  void set_address_lines(const OdString& address_lines);
  const OdString& postal_box() const;
  void set_postal_box(const OdString& postal_box);
  const OdString& town() const;
  void set_town(const OdString& town);
  const OdString& region() const;
  void set_region(const OdString& region);
  const OdString& postal_code() const;
  void set_postal_code(const OdString& postal_code);
  const OdString& country() const;
  void set_country(const OdString& country);
  ///@}

  /// An identification that the host or a document gives, and whether it is one for good; the library makes none.
  ///@{
  const OdString& building_id() const;
  void set_building_id(const OdString& building_id);
  bool is_permanent_id() const;
  void set_is_permanent_id(bool is_permanent_id);
  ///@}

  /// How it is used and protected against fire: the classes are texts of the host, the flags false in a new building.
  ///@{
  const OdString& main_fire_use() const;
  void set_main_fire_use(const OdString& main_fire_use);
  const OdString& ancillary_fire_use() const;
  void set_ancillary_fire_use(const OdString& ancillary_fire_use);
  bool sprinkler_protection() const;
  void set_sprinkler_protection(bool sprinkler_protection);
  bool sprinkler_protection_automatic() const;
  void set_sprinkler_protection_automatic(bool sprinkler_protection_automatic);
  const OdString& occupancy_type() const;
  void set_occupancy_type(const OdString& occupancy_type);
  ///@}

  /// Planned gross area of the building, in the unit of its column.
  ///@{
  double gross_planned_area() const;
  void set_gross_planned_area(double gross_planned_area);
  ///@}

  /// A plain number, 1 in a new building; it does not follow the stories that exist.
  ///@{
  unsigned int number_of_storeys() const;
  void set_number_of_storeys(unsigned int number_of_storeys);
  ///@}

  /// Text, because a period or an estimate is often all that is known.
  ///@{
  const OdString& year_of_construction() const;
  void set_year_of_construction(const OdString& year_of_construction);
  ///@}

  /// Whether it is listed as a landmark; false in a new building.
  ///@{
  bool is_landmarked() const;
  void set_is_landmarked(bool is_landmarked);
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  Building();
  explicit Building(Impl* impl);
  explicit Building(const SetDirty&);

private:
  friend class odb::access;
};

/// A story of a building.
class TESSEL_API Story : public SpatialStructure {
  TESSEL_OBJECT_MEMBERS(Story)
  TESSEL_SAVE_MEMBERS(Story)

  /// New. A null building is accepted, but a save of it is a DatabaseException.
  ///@{
  static TsSmartPtr<Story> create(const TsSmartPtr<const Building>& building);
  static TsSmartPtr<Story> create(const TsSmartPtr<const Building>& building, const OdString& name, double elevation);
  ///@}

  /// Copies all fields, the building too, and marks this story as changed. Id, database and reactors stay.
  Story& operator=(const Story& other);

  /// All fields, and equal buildings.
  ///@{
  bool operator==(const Story& other) const;
  bool operator!=(const Story& other) const;
  ///@}

  /// The building that it is a part of.
  const TsSmartPtr<const Building>& building() const;
  /// Another pointer counts as a change, even if it points at an equal building.
  void set_building(const TsSmartPtr<const Building>& building);

  /// Unique among the stories of a building.
  const OdString& name() const override;
  void set_name(const OdString& name) override;
  const OdString& description() const override;
  void set_description(const OdString& description) override;

  /// For people; the library does not read it.
  ///@{
  const OdString& long_name() const;
  void set_long_name(const OdString& long_name);
  ///@}

  /// Height of the story's floor, from the building's zero, in the unit of its column.
  ///@{
  double elevation() const;
  void set_elevation(double elevation);
  ///@}

  /// Plain flags, false in a new story except for `above_ground`, which does not follow the elevation.
  ///@{
  bool entrance_level() const;
  void set_entrance_level(bool entrance_level);
  bool above_ground() const;
  void set_above_ground(bool above_ground);
  bool sprinkler_protection() const;
  void set_sprinkler_protection(bool sprinkler_protection);
  bool sprinkler_protection_automatic() const;
  void set_sprinkler_protection_automatic(bool sprinkler_protection_automatic);
  ///@}

  /// Planned gross and net area of the story, each in the unit of its column.
  ///@{
  double gross_area_planned() const;
  void set_gross_area_planned(double gross_area_planned);
  double net_area_planned() const;
  void set_net_area_planned(double net_area_planned);
  ///@}

  struct Impl;
  Impl& impl();
  const Impl& impl() const;

protected:
  Story();
  explicit Story(Impl* impl);
  explicit Story(const SetDirty&);

private:
  friend class odb::access;
};

}  // namespace tessel
