#include "yardstick.h"

#include <boost/uuid/uuid_io.hpp>

namespace tessel::benchmarks {
namespace {

const std::string storyType = "tessel::Story";

constexpr char storyColumns[] =
  R"("tessel_Story"."id", "tessel_Story"."building_id", "tessel_Story"."name", "tessel_Story"."long_name",
  "tessel_Story"."description", "tessel_Story"."elevation", "tessel_Story"."entrance_level",
  "tessel_Story"."above_ground", "tessel_Story"."sprinkler_protection",
  "tessel_Story"."sprinkler_protection_automatic", "tessel_Story"."gross_area_planned",
  "tessel_Story"."net_area_planned")";

/// A query of a derived class joins the root, whose row tells the class of the object. It is not read here: all rows of
/// the table are stories.
std::string storyQuery(const std::string& condition) {
  return std::string("SELECT ") + storyColumns + R"(, "tessel_SpatialStructure"."typeid" FROM "tessel_Story"
  LEFT JOIN "tessel_SpatialStructure" ON "tessel_SpatialStructure"."id"="tessel_Story"."id" )" +
         condition;
}

}  // namespace

Connection openProject(const std::string& path, int furtherFlags) {
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX | SQLITE_OPEN_PRIVATECACHE;
  Connection connection(path, flags | furtherFlags);
  connection.execute("PRAGMA foreign_keys=ON");
  return connection;
}

YardstickFile::YardstickFile(const std::string& path)
    : connection_(openProject(path)), begin_(connection_, "BEGIN"), commit_(connection_, "COMMIT"),
      rollback_(connection_, "ROLLBACK"),
      insertRoot_(connection_, R"(INSERT INTO "tessel_SpatialStructure" ("id", "typeid") VALUES (?, ?))"),
      insertStory_(connection_, R"(INSERT INTO "tessel_Story" ("id", "building_id", "name", "long_name", "description",
  "elevation", "entrance_level", "above_ground", "sprinkler_protection", "sprinkler_protection_automatic",
  "gross_area_planned", "net_area_planned") VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?))"),
      deleteRoot_(connection_, R"(DELETE FROM "tessel_SpatialStructure" WHERE "id"=?)"),
      deleteStory_(connection_, R"(DELETE FROM "tessel_Story" WHERE "id"=?)"),
      listStories_(connection_, storyQuery(R"(ORDER BY "tessel_Story"."name")")),
      findType_(connection_, R"(SELECT "typeid" FROM "tessel_SpatialStructure" WHERE "id"=?)"),
      findStory_(connection_, std::string("SELECT ") + storyColumns + R"( FROM "tessel_Story" WHERE "id"=?)"),
      findBuilding_(connection_, R"(SELECT "id", "site_id", "name", "long_name", "description",
  "elevation_of_ref_height", "elevation_of_terrain", "internal_location", "address_lines", "postal_box", "town",
  "region", "postal_code", "country", "building_id", "is_permanent_id", "main_fire_use", "ancillary_fire_use",
  "sprinkler_protection", "sprinkler_protection_automatic", "occupancy_type", "gross_planned_area",
  "number_of_storeys", "year_of_construction", "is_landmarked" FROM "tessel_Building" WHERE "id"=?)"),
      findSite_(connection_, R"(SELECT "id", "name", "long_name", "description", "site_type", "ref_elevation",
  "land_title_number", "internal_location", "address_lines", "postal_box", "town", "region", "postal_code", "country",
  "buildable_area", "total_area", "building_height_limit" FROM "tessel_Site" WHERE "id"=?)"),
      findDefaultUnit_(connection_, R"(SELECT "tessel_DefaultUnit"."unit_id" FROM "tessel_DefaultUnit"
  LEFT JOIN "tessel_Measure" AS "measure_id" ON "measure_id"."id"="tessel_DefaultUnit"."measure_id"
  WHERE "measure_id"."name"=?)"),
      findColumnUnit_(connection_, R"(SELECT "unit_id" FROM "tessel_ColumnUnit" WHERE "table"=? AND "column"=?)"),
      findUnit_(connection_, R"(SELECT "id", ifnull("name", ''), "label", "scale", "measure_id" FROM "tessel_Unit"
  WHERE "id"=?)"),
      findMeasure_(connection_, R"(SELECT "id", "name", "description", "length", "mass", "time",
  "thermodynamic_temperature", "electric_current", "luminous_intensity", "amount_of_substance" FROM "tessel_Measure"
  WHERE "id"=?)") {}

void YardstickFile::saveStories(unsigned int building, const std::vector<Text>& names) {
  const auto owner = std::make_shared<Building>();
  owner->id = building;
  Transaction transaction(*this);
  double elevation = 0;
  for (const Text& name : names) {
    Story story;
    story.building = owner;
    story.name = name;
    story.elevation = elevation += 3;
    insert(story);
  }
  transaction.commit();
}

/// Each object is written under a savepoint of its own, whose name is random: so one that clashes can be undone alone.
void YardstickFile::insert(Story& story) {
  const std::string savepoint = "'" + to_string(newName_()) + "'";
  Statement(connection_, "SAVEPOINT " + savepoint).step();
  insertRoot_.run(nullptr, storyType);
  story.id = static_cast<unsigned int>(sqlite3_last_insert_rowid(connection_.get()));
  insertStory_.run(story.id, story.building->id, story.name, story.long_name, story.description, story.elevation,
                   story.entrance_level, story.above_ground, story.sprinkler_protection,
                   story.sprinkler_protection_automatic, story.gross_area_planned, story.net_area_planned);
  Statement(connection_, "RELEASE SAVEPOINT " + savepoint).step();
}

std::vector<YardstickFile::Story> YardstickFile::stories() {
  std::vector<Story> result;
  while (listStories_.step()) result.push_back(storyOf(listStories_));
  listStories_.reset();
  return result;
}

YardstickFile::Story YardstickFile::story(unsigned int id) {
  requireType(id, "tessel::Story");
  findStory_.bind(id);
  check(connection_.get(), findStory_.step());
  Story result = storyOf(findStory_);
  findStory_.reset();
  return result;
}

YardstickFile::Story YardstickFile::story(const Text& name, unsigned int building) {
  Statement query(connection_, storyQuery(R"(WHERE "tessel_Story"."name"=? AND "tessel_Story"."building_id"=?)"));
  query.bind(name, building);
  check(connection_.get(), query.step());
  return storyOf(query);
}

YardstickFile::Story YardstickFile::storyOf(const Statement& row) {
  Story result;
  unsigned int owner = 0;
  row.read(result.id, owner, result.name, result.long_name, result.description, result.elevation, result.entrance_level,
           result.above_ground, result.sprinkler_protection, result.sprinkler_protection_automatic,
           result.gross_area_planned, result.net_area_planned);
  result.building = building(owner);
  return result;
}

std::unique_ptr<YardstickFile::Building> YardstickFile::building(unsigned int id) {
  requireType(id, "tessel::Building");
  auto result = std::make_unique<Building>();
  unsigned int owner = 0;
  findBuilding_.find(id, result->id, owner, result->name, result->long_name, result->description,
                     result->elevation_of_ref_height, result->elevation_of_terrain, result->internal_location,
                     result->address_lines, result->postal_box, result->town, result->region, result->postal_code,
                     result->country, result->building_id, result->is_permanent_id, result->main_fire_use,
                     result->ancillary_fire_use, result->sprinkler_protection, result->sprinkler_protection_automatic,
                     result->occupancy_type, result->gross_planned_area, result->number_of_storeys,
                     result->year_of_construction, result->is_landmarked);
  result->site = site(owner);
  return result;
}

std::unique_ptr<YardstickFile::Site> YardstickFile::site(unsigned int id) {
  requireType(id, "tessel::Site");
  auto result = std::make_unique<Site>();
  findSite_.find(id, result->id, result->name, result->long_name, result->description, result->site_type,
                 result->ref_elevation, result->land_title_number, result->internal_location, result->address_lines,
                 result->postal_box, result->town, result->region, result->postal_code, result->country,
                 result->buildable_area, result->total_area, result->building_height_limit);
  return result;
}

void YardstickFile::requireType(unsigned int id, const char* name) {
  std::string type;
  findType_.find(id, type);
  if (type != name) throw std::runtime_error("row " + std::to_string(id) + " is not a " + name);
}

YardstickFile::Unit YardstickFile::defaultLengthUnit() {
  static const std::string length = "LENGTH";
  unsigned int id = 0;
  findDefaultUnit_.find(length, id);
  return unit(id);
}

YardstickFile::Unit YardstickFile::elevationUnit() {
  static const std::string table = "Story", column = "elevation";
  unsigned int id = 0;
  findColumnUnit_.bind(table, column);
  if (findColumnUnit_.step()) findColumnUnit_.read(id);
  findColumnUnit_.reset();
  return unit(id);
}

YardstickFile::Unit YardstickFile::unit(unsigned int id) {
  Unit result;
  unsigned int owner = 0;
  findUnit_.find(id, result.id, result.name, result.label, result.scale, owner);
  result.measure = std::make_unique<Measure>();
  Measure& measure = *result.measure;
  findMeasure_.find(owner, measure.id, measure.name, measure.description, measure.length, measure.mass, measure.time,
                    measure.thermodynamic_temperature, measure.electric_current, measure.luminous_intensity,
                    measure.amount_of_substance);
  return result;
}

void YardstickFile::removeStory(unsigned int id) {
  Transaction transaction(*this);
  deleteStory_.run(id);
  deleteRoot_.run(id);
  transaction.commit();
}

}  // namespace tessel::benchmarks
