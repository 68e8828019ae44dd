#include "yardstick_spatial.h"

namespace tessel::benchmarks::yardstick {
namespace {

const Text siteType = "tessel::Site", buildingType = "tessel::Building", storyType = "tessel::Story";

const Table siteTable{"tessel_Site",
                      {"id", "name", "long_name", "description", "site_type", "ref_elevation", "land_title_number",
                       "internal_location", "address_lines", "postal_box", "town", "region", "postal_code", "country",
                       "buildable_area", "total_area", "building_height_limit"}};
const Table buildingTable{"tessel_Building",
                          {"id",
                           "site_id",
                           "name",
                           "long_name",
                           "description",
                           "elevation_of_ref_height",
                           "elevation_of_terrain",
                           "internal_location",
                           "address_lines",
                           "postal_box",
                           "town",
                           "region",
                           "postal_code",
                           "country",
                           "building_id",
                           "is_permanent_id",
                           "main_fire_use",
                           "ancillary_fire_use",
                           "sprinkler_protection",
                           "sprinkler_protection_automatic",
                           "occupancy_type",
                           "gross_planned_area",
                           "number_of_storeys",
                           "year_of_construction",
                           "is_landmarked"}};
const Table storyTable{"tessel_Story",
                       {"id", "building_id", "name", "long_name", "description", "elevation", "entrance_level",
                        "above_ground", "sprinkler_protection", "sprinkler_protection_automatic", "gross_area_planned",
                        "net_area_planned"}};

// All columns but id and owner, in the order of the table.

template <typename Record, typename Use>
void siteFields(Record& s, Use&& use) {
  use(s.name, s.long_name, s.description, s.site_type, s.ref_elevation, s.land_title_number, s.internal_location,
      s.address_lines, s.postal_box, s.town, s.region, s.postal_code, s.country, s.buildable_area, s.total_area,
      s.building_height_limit);
}

template <typename Record, typename Use>
void buildingFields(Record& b, Use&& use) {
  use(b.name, b.long_name, b.description, b.elevation_of_ref_height, b.elevation_of_terrain, b.internal_location,
      b.address_lines, b.postal_box, b.town, b.region, b.postal_code, b.country, b.building_id, b.is_permanent_id,
      b.main_fire_use, b.ancillary_fire_use, b.sprinkler_protection, b.sprinkler_protection_automatic, b.occupancy_type,
      b.gross_planned_area, b.number_of_storeys, b.year_of_construction, b.is_landmarked);
}

template <typename Record, typename Use>
void storyFields(Record& s, Use&& use) {
  use(s.name, s.long_name, s.description, s.elevation, s.entrance_level, s.above_ground, s.sprinkler_protection,
      s.sprinkler_protection_automatic, s.gross_area_planned, s.net_area_planned);
}

/// A query of a derived class joins the root, whose row tells the class of the object. It is not read here: all rows of
/// the table are of one class.
std::string query(const Table& table, const std::string& condition) {
  std::string text = selectFrom(table);
  text.insert(text.find(" FROM "), R"(, "tessel_SpatialStructure"."typeid")");
  return text + R"(LEFT JOIN "tessel_SpatialStructure" ON "tessel_SpatialStructure"."id"=")" + table.name +
         "\".\"id\" " + condition;
}

std::string listOf(const Table& table) { return query(table, "ORDER BY \"" + table.name + "\".\"name\""); }

Site siteOf(const Statement& row) {
  Site site;
  siteFields(site, [&](auto&... fields) { row.read(site.id, fields...); });
  return site;
}

}  // namespace

SpatialTables::SpatialTables(Session& session)
    : session_(session),
      findType_(session.connection(), R"(SELECT "typeid" FROM "tessel_SpatialStructure" WHERE "id"=?)"),
      findSite_(session.connection(), selectById(siteTable)),
      findBuilding_(session.connection(), selectById(buildingTable)),
      findStory_(session.connection(), selectById(storyTable)), listStories_(session.connection(), listOf(storyTable)),
      insertRoot_(session.connection(), R"(INSERT INTO "tessel_SpatialStructure" ("id", "typeid") VALUES (?, ?))"),
      insertSite_(session.connection(), insertInto(siteTable)),
      insertBuilding_(session.connection(), insertInto(buildingTable)),
      insertStory_(session.connection(), insertInto(storyTable)),
      deleteRoot_(session.connection(), R"(DELETE FROM "tessel_SpatialStructure" WHERE "id"=?)"),
      deleteStory_(session.connection(), R"(DELETE FROM "tessel_Story" WHERE "id"=?)") {}

std::unique_ptr<Site> SpatialTables::site(unsigned int id) {
  requireType(id, siteType);
  findSite_.bind(id);
  check(session_.connection().get(), findSite_.step());
  auto site = std::make_unique<Site>(siteOf(findSite_));
  findSite_.reset();
  return site;
}

std::unique_ptr<Building> SpatialTables::building(unsigned int id) {
  requireType(id, buildingType);
  findBuilding_.bind(id);
  check(session_.connection().get(), findBuilding_.step());
  auto building = std::make_unique<Building>(buildingOf(findBuilding_));
  findBuilding_.reset();
  return building;
}

Story SpatialTables::story(unsigned int id) {
  requireType(id, storyType);
  findStory_.bind(id);
  check(session_.connection().get(), findStory_.step());
  Story story = storyOf(findStory_);
  findStory_.reset();
  return story;
}

void SpatialTables::requireType(unsigned int id, const Text& type) {
  Text found;
  findType_.find(id, found);
  if (found != type) throw std::runtime_error("row " + std::to_string(id) + " is not a " + type);
}

Site SpatialTables::siteNamed(const Text& name) {
  static const std::string text = query(siteTable, R"(WHERE "tessel_Site"."name"=?)");
  Statement statement(session_.connection(), text);
  statement.bind(name);
  check(session_.connection().get(), statement.step());
  return siteOf(statement);
}

Story SpatialTables::storyNamed(const Text& name, unsigned int building) {
  static const std::string text =
    query(storyTable, R"(WHERE "tessel_Story"."name"=? AND "tessel_Story"."building_id"=?)");
  Statement statement(session_.connection(), text);
  statement.bind(name, building);
  check(session_.connection().get(), statement.step());
  return storyOf(statement);
}

Building SpatialTables::buildingOf(const Statement& row) {
  Building building;
  unsigned int owner = 0;
  buildingFields(building, [&](auto&... fields) { row.read(building.id, owner, fields...); });
  building.site = site(owner);
  return building;
}

Story SpatialTables::storyOf(const Statement& row) {
  Story story;
  unsigned int owner = 0;
  storyFields(story, [&](auto&... fields) { row.read(story.id, owner, fields...); });
  story.building = building(owner);
  return story;
}

std::vector<Site> SpatialTables::sites() {
  Statement list(session_.connection(), listOf(siteTable));
  std::vector<Site> result;
  while (list.step()) result.push_back(siteOf(list));
  return result;
}

std::vector<Building> SpatialTables::buildings() {
  Statement list(session_.connection(), listOf(buildingTable));
  std::vector<Building> result;
  while (list.step()) result.push_back(buildingOf(list));
  return result;
}

std::vector<Story> SpatialTables::stories() {
  std::vector<Story> result;
  while (listStories_.step()) result.push_back(storyOf(listStories_));
  listStories_.reset();
  return result;
}

template <typename Write>
void SpatialTables::insertUnderSavepoint(const Text& type, unsigned int& id, Write&& write) {
  Savepoint savepoint(session_);
  insertRoot_.run(nullptr, type);
  id = session_.lastId();
  write();
  savepoint.release();
}

void SpatialTables::insert(Site& site) {
  insertUnderSavepoint(siteType, site.id,
                       [&] { siteFields(site, [&](const auto&... fields) { insertSite_.run(site.id, fields...); }); });
}

void SpatialTables::insert(Building& building) {
  insertUnderSavepoint(buildingType, building.id, [&] {
    buildingFields(building,
                   [&](const auto&... fields) { insertBuilding_.run(building.id, building.site->id, fields...); });
  });
}

void SpatialTables::insert(Story& story) {
  insertUnderSavepoint(storyType, story.id, [&] {
    storyFields(story, [&](const auto&... fields) { insertStory_.run(story.id, story.building->id, fields...); });
  });
}

void SpatialTables::removeStory(unsigned int id) {
  deleteStory_.run(id);
  deleteRoot_.run(id);
}

}  // namespace tessel::benchmarks::yardstick
