#include "yardstick_copy.h"

namespace tessel::benchmarks::yardstick {
namespace {

const Text siteColumns = "Site", buildingColumns = "Building", storyColumns = "Story";

}  // namespace

/// Classes that refer to others come first and bring these along.
void Copy::run() {
  bringAll([this] { return from_.spatial.stories(); });
  bringAll([this] { return from_.spatial.buildings(); });
  bringAll([this] { return from_.spatial.sites(); });
  bringAll([this] { return from_.catalogue.entityTypes(); });
  bringAll([this] { return from_.catalogue.definitions(); });
  {
    Transaction reading(from_.session);
    if (from_.catalogue.hasValueDefinitions()) throw std::runtime_error("no work here has definitions of values");
  }
  bringAll([this] { return from_.catalogue.sets(); });
  bringAll([this] { return from_.catalogue.namespaces(); });
  bringAll([this] { return from_.units.units(); });
  bringAll([this] { return from_.units.measures(); });
  copyDefaultUnits();
}

template <typename List>
void Copy::bringAll(List&& list) {
  auto objects = [&] {
    Transaction reading(from_.session);
    return list();
  }();
  for (auto& object : objects) bring(object);
}

template <typename Record, typename Load, typename Write>
void Copy::bringOnce(Class type, Record& record, Load&& load, Write&& write) {
  const std::pair key(type, record.id);
  const auto known = rows_.find(key);
  if (known != rows_.end()) {
    record = std::move(*load(known->second));
    return;
  }
  write();
  rows_[key] = record.id;
}

void Copy::bring(Story& story) {
  convert(story.elevation, storyColumns, "elevation");
  convert(story.gross_area_planned, storyColumns, "gross_area_planned");
  convert(story.net_area_planned, storyColumns, "net_area_planned");
  bring(*story.building);
  to_.spatial.insert(story);
}

void Copy::bring(Building& building) {
  const auto load = [this](unsigned int id) { return to_.spatial.building(id); };
  bringOnce(Class::building, building, load, [&] {
    convert(building.elevation_of_ref_height, buildingColumns, "elevation_of_ref_height");
    convert(building.elevation_of_terrain, buildingColumns, "elevation_of_terrain");
    convert(building.gross_planned_area, buildingColumns, "gross_planned_area");
    bring(*building.site);
    to_.spatial.insert(building);
  });
}

void Copy::bring(Site& site) {
  const auto load = [this](unsigned int id) { return to_.spatial.site(id); };
  bringOnce(Class::site, site, load, [&] {
    convert(site.ref_elevation, siteColumns, "ref_elevation");
    convert(site.buildable_area, siteColumns, "buildable_area");
    convert(site.total_area, siteColumns, "total_area");
    convert(site.building_height_limit, siteColumns, "building_height_limit");
    to_.spatial.insert(site);
  });
}

void Copy::bring(EntityType& type) {
  const auto load = [this](unsigned int id) { return to_.catalogue.entityType(id); };
  bringOnce(Class::entityType, type, load, [&] { to_.catalogue.insert(type); });
}

void Copy::bring(Definition& definition) {
  const auto load = [this](unsigned int id) { return to_.catalogue.definition(id); };
  bringOnce(Class::definition, definition, load, [&] {
    bring(*definition.ns);
    if (definition.unit) bring(*definition.unit);
    to_.catalogue.insert(definition);
  });
}

void Copy::bring(PropertySet& set) {
  bring(*set.ns);
  for (const auto& definition : set.property_definitions) bring(*definition);
  for (const auto& type : set.entity_types) bring(*type);
  to_.catalogue.insert(set);
}

void Copy::bring(Namespace& ns) {
  const auto load = [this](unsigned int id) { return to_.catalogue.ns(id); };
  bringOnce(Class::ns, ns, load, [&] { to_.catalogue.insert(ns); });
}

void Copy::bring(Unit& unit) {
  const auto load = [this](unsigned int id) { return to_.units.unit(id); };
  bringOnce(Class::unit, unit, load, [&] {
    bring(*unit.measure);
    to_.units.insert(unit);
  });
}

void Copy::bring(Measure& measure) {
  const auto load = [this](unsigned int id) { return to_.units.measure(id); };
  bringOnce(Class::measure, measure, load, [&] { to_.units.insert(measure); });
}

void Copy::copyDefaultUnits() {
  auto rows = [this] {
    Transaction reading(from_.session);
    return from_.units.defaultUnits();
  }();
  for (UnitTables::DefaultUnit& row : rows) {
    bring(*row.unit);
    bring(*row.measure);
    to_.units.insert(row);
  }
}

void Copy::convert(double& value, const Text& table, const Text& column) {
  std::unique_ptr<Unit> source;
  {
    Transaction reading(from_.session);
    source = from_.units.columnUnit(table, column);
  }
  const std::unique_ptr<Unit> destination = to_.units.columnUnit(table, column);
  if (!source != !destination) throw std::runtime_error("the unit of a column is known in one file only");
  if (source && source->scale != destination->scale) value = value * source->scale / destination->scale;
}

}  // namespace tessel::benchmarks::yardstick
