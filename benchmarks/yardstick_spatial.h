#pragma once

#include <memory>
#include <vector>

#include "yardstick_records.h"
#include "yardstick_session.h"

namespace tessel::benchmarks::yardstick {

/// Sites, buildings and stories: each a row of the root table, which hands out the id and tells the class, and one of its
/// own. References are loaded anew for each row. Look-ups by id keep their statements, those by key prepare theirs at each
/// call.
class SpatialTables {
public:
  explicit SpatialTables(Session& session);

  std::unique_ptr<Site> site(unsigned int id);
  std::unique_ptr<Building> building(unsigned int id);
  Story story(unsigned int id);
  Site siteNamed(const Text& name);
  Story storyNamed(const Text& name, unsigned int building);

  /// In the order of their names.
  std::vector<Site> sites();
  std::vector<Building> buildings();
  std::vector<Story> stories();

  /// The id is set; of what is referred to only the id counts.
  void insert(Site& site);
  void insert(Building& building);
  void insert(Story& story);

  void removeStory(unsigned int id);

private:
  template <typename Write>
  void insertUnderSavepoint(const Text& type, unsigned int& id, Write&& write);

  Building buildingOf(const Statement& row);
  Story storyOf(const Statement& row);

  /// Whether the id is one of this class, which only the root table tells.
  void requireType(unsigned int id, const Text& type);

  Session& session_;
  Statement findType_, findSite_, findBuilding_, findStory_, listStories_;
  Statement insertRoot_, insertSite_, insertBuilding_, insertStory_;
  Statement deleteRoot_, deleteStory_;
};

}  // namespace tessel::benchmarks::yardstick
