#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <boost/uuid/random_generator.hpp>

#include "sqlite.h"

namespace tessel::benchmarks {

/// What the library is measured against: the same work by hand, on SQLite's C interface, with the statements that the
/// rules of the format and of saving and loading call for. Objects are plain records, statements that repeat are kept
/// prepared, and nothing is checked that SQLite does not check. Nobody would write a host like this, but it is what a
/// host could reach that uses no library.
class YardstickFile {
public:
  using Text = std::string;

  struct Site {
    unsigned int id = 0;
    Text name, long_name, description, site_type;
    double ref_elevation = 0;
    Text land_title_number, internal_location, address_lines, postal_box, town, region, postal_code, country;
    double buildable_area = 0, total_area = 0, building_height_limit = 0;
  };

  struct Building {
    unsigned int id = 0;
    std::unique_ptr<Site> site;
    Text name, long_name, description;
    double elevation_of_ref_height = 0, elevation_of_terrain = 0;
    Text internal_location, address_lines, postal_box, town, region, postal_code, country, building_id;
    bool is_permanent_id = false;
    Text main_fire_use, ancillary_fire_use;
    bool sprinkler_protection = false, sprinkler_protection_automatic = false;
    Text occupancy_type;
    double gross_planned_area = 0;
    unsigned int number_of_storeys = 1;
    Text year_of_construction;
    bool is_landmarked = false;
  };

  struct Story {
    unsigned int id = 0;
    std::shared_ptr<const Building> building;
    Text name, long_name, description;
    double elevation = 0;
    bool entrance_level = false, above_ground = true;
    bool sprinkler_protection = false, sprinkler_protection_automatic = false;
    double gross_area_planned = 0, net_area_planned = 0;
  };

  struct Measure {
    unsigned int id = 0;
    Text name, description;
    int length = 0, mass = 0, time = 0, thermodynamic_temperature = 0, electric_current = 0, luminous_intensity = 0,
        amount_of_substance = 0;
  };

  struct Unit {
    unsigned int id = 0;
    Text name, label;
    double scale = 1;
    std::unique_ptr<Measure> measure;
  };

  class Transaction {
  public:
    explicit Transaction(YardstickFile& file) : file_(&file) { file_->begin_.run(); }
    ~Transaction() {
      if (file_) file_->rollback_.run();
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit() {
      file_->commit_.run();
      file_ = nullptr;
    }

  private:
    YardstickFile* file_;
  };

  /// The statements of a new file, which are read from an existing one: a third copy of them would say nothing new.
  struct Schema {
    explicit Schema(const std::string& projectFile);

    std::vector<std::string> tables;  ///< Their names, the last one first.
    std::vector<std::string> statements;
  };

  /// The statements of each version from 1001 on.
  struct Migration {
    Migration();

    std::map<int, std::vector<std::string>> steps;
  };

  /// Makes a new project file and closes it.
  static void create(const std::string& path, const Schema& schema);

  /// Opens an existing project file, which is of the current version, and closes it.
  static void open(const std::string& path);

  /// Brings a file of version 1000 to the current version and closes it.
  static void migrate(const std::string& path, const Migration& migration);

  /// For the operations below. The statements that they keep are prepared here.
  explicit YardstickFile(const std::string& path);

  /// In one transaction.
  void saveStories(unsigned int building, const std::vector<Text>& names);

  // Reading goes on in a transaction of the caller.
  std::vector<Story> stories();
  Story story(unsigned int id);
  /// The query is prepared at each call.
  Story story(const Text& name, unsigned int building);
  Unit defaultLengthUnit();
  Unit elevationUnit();

  /// With a commit of its own.
  void removeStory(unsigned int id);

private:
  void insert(Story& story);
  Story storyOf(const Statement& row);
  std::unique_ptr<Building> building(unsigned int id);
  std::unique_ptr<Site> site(unsigned int id);
  Unit unit(unsigned int id);

  /// Whether the id is one of this class, which only the root table tells.
  void requireType(unsigned int id, const char* name);

  Connection connection_;
  Statement begin_, commit_, rollback_;
  Statement insertRoot_, insertStory_, deleteRoot_, deleteStory_;
  Statement listStories_, findType_, findStory_, findBuilding_, findSite_;
  Statement findDefaultUnit_, findColumnUnit_, findUnit_, findMeasure_;
  boost::uuids::random_generator_mt19937 newName_;
};

/// A connection with the flags and the setting that each project file is opened with.
Connection openProject(const std::string& path, int furtherFlags = 0);

}  // namespace tessel::benchmarks
