#include <gtest/gtest.h>

#include "operations/removal.h"

namespace tessel::test {
namespace {

/// A site with a building with a story, removed through their common base or as what they are not.
class RemovedSpatial : public Removal {
protected:
  void SetUp() override { reactor.clear(); }

  long long roots() const { return project.count("tessel_SpatialStructure"); }
  static ObjectKey asStructure(unsigned int id) { return {ObjectType::SpatialStructure, id}; }

  TsSmartPtr<Story> story = project.db->save(makeSample<Story>());
  TsSmartPtr<Building> building = project.db->get<Building>(story->building()->id());
  TsSmartPtr<Site> site = project.db->get<Site>(building->site()->id());
};

TEST_F(RemovedSpatial, RowsGoFromBothTables) {
  project.db->remove(story);
  EXPECT_EQ(roots(), 2);
  EXPECT_EQ(project.count("tessel_Story"), 0);
  project.db->remove<Building>(building->id());
  EXPECT_EQ(roots(), 1);
  EXPECT_EQ(project.count("tessel_Building"), 0);
  project.db->remove<Site>(std::set<unsigned int>{site->id()});
  EXPECT_EQ(roots(), 0);
  EXPECT_EQ(project.count("tessel_Site"), 0);
}

TEST_F(RemovedSpatial, ObjectGoesThroughAPointerToItsBase) {
  const TsSmartPtr<SpatialStructure> structure = story;
  const unsigned int id = story->id();
  EXPECT_EQ(project.db->remove(structure).outcome, RemoveResult::Removed);
  EXPECT_EQ(offered(), std::vector<ObjectKey>{asStructure(id)});
  EXPECT_EQ(project.count("tessel_Story"), 0);
  EXPECT_EQ(roots(), 2);
  EXPECT_EQ(story->id(), 0U);
  EXPECT_EQ(story->projectDb(), nullptr);
}

TEST_F(RemovedSpatial, ObjectOfEachClassGoesThroughAPointerToItsBase) {
  for (const TsSmartPtr<SpatialStructure>& structure :
       std::vector<TsSmartPtr<SpatialStructure>>{story, building, site}) {
    EXPECT_EQ(project.db->remove(structure).outcome, RemoveResult::Removed);
  }
  EXPECT_EQ(roots(), 0);
  for (const char* table : {"tessel_Story", "tessel_Building", "tessel_Site"}) EXPECT_EQ(project.count(table), 0);
}

TEST_F(RemovedSpatial, RowGoesByTheIdOfTheBase) {
  const unsigned int id = story->id();
  EXPECT_EQ(project.db->remove<SpatialStructure>(id).outcome, RemoveResult::Removed);
  EXPECT_EQ(offered(), std::vector<ObjectKey>{asStructure(id)});
  EXPECT_EQ(project.count("tessel_Story"), 0);
  EXPECT_EQ(roots(), 2);
}

TEST_F(RemovedSpatial, RowsGoInABatchOfTheBase) {
  const auto lonely = project.db->save(makeSample<Site>(2));
  Results results;
  project.db->remove<SpatialStructure>({story->id(), lonely->id()}, results);
  EXPECT_EQ(results, (Results{{asStructure(story->id()), removed}, {asStructure(lonely->id()), removed}}));
  EXPECT_EQ(project.count("tessel_Story"), 0);
  EXPECT_EQ(project.count("tessel_Site"), 1);
  EXPECT_EQ(roots(), 2);
}

TEST_F(RemovedSpatial, BaseIsInUseAsItsClassIs) {
  const TsSmartPtr<SpatialStructure> structure = site;
  const unsigned int id = site->id();
  EXPECT_EQ(project.db->remove(structure).outcome, RemoveResult::InUse);
  EXPECT_EQ(site->id(), id);
  EXPECT_EQ(site->projectDb(), project.db);
  EXPECT_EQ(project.db->remove<SpatialStructure>(id).outcome, RemoveResult::InUse);
  EXPECT_EQ(roots(), 3);
}

TEST_F(RemovedSpatial, BaseCanBeRefused) {
  refuse(asStructure(story->id()));
  const TsSmartPtr<SpatialStructure> structure = story;
  EXPECT_EQ(project.db->remove(structure).outcome, RemoveResult::Refused);
  EXPECT_EQ(project.db->remove<SpatialStructure>(story->id()).outcome, RemoveResult::Refused);
  EXPECT_EQ(roots(), 3);
  EXPECT_EQ(project.db->remove(story).outcome, RemoveResult::Removed) << "its own class is another key";
}

TEST_F(RemovedSpatial, BaseMustExist) {
  EXPECT_THROW(project.db->remove<SpatialStructure>(4711U), DatabaseException);
  EXPECT_THROW(project.db->remove<SpatialStructure>(std::set<unsigned int>{4711U}), DatabaseException);
  const TsSmartPtr<SpatialStructure> unsaved = makeSample<Story>(2);
  EXPECT_THROW(project.db->remove(unsaved), DatabaseException);
  EXPECT_EQ(roots(), 3);
}

// Ids of all three classes come from one table, so an id tells its class.
TEST_F(RemovedSpatial, RowDoesNotGoByTheIdOfAnotherClass) {
  EXPECT_THROW(project.db->remove<Building>(story->id()), DatabaseException);
  EXPECT_THROW(project.db->remove<Site>(story->id()), DatabaseException);
  EXPECT_THROW(project.db->remove<Story>(site->id()), DatabaseException);
  EXPECT_THROW(project.db->remove<Building>(std::set<unsigned int>{story->id()}), DatabaseException);
  EXPECT_THROW(project.db->remove(std::set<ObjectKey>{{ObjectType::Site, story->id()}}), DatabaseException);
  EXPECT_EQ(roots(), 3);
  EXPECT_EQ(project.count("tessel_Story"), 1);
}

// The rows go in the order of their ids, and the site has the lowest one.
TEST_F(RemovedSpatial, PurgeOfTheBaseStopsAtASiteInUse) {
  Results results;
  EXPECT_THROW(project.db->purge<SpatialStructure>(results), DatabaseException);
  EXPECT_TRUE(results.empty());
  EXPECT_EQ(roots(), 3);
}

TEST_F(RemovedSpatial, PurgeOfTheBaseRemovesWhatIsNotInUse) {
  project.db->purge<Story>();
  project.db->purge<Building>();
  const auto second = project.db->save(makeSample<Site>(2));
  Results results;
  project.db->purge<SpatialStructure>(results);
  EXPECT_EQ(results, (Results{{asStructure(site->id()), removed}, {asStructure(second->id()), removed}}));
  EXPECT_EQ(roots(), 0);
}

}  // namespace
}  // namespace tessel::test
