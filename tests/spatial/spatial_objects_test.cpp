#include <string>

#include <gtest/gtest.h>
#include <odb/exceptions.hxx>

#include <tessel/tessel.h>

#include "support/samples.h"

// What sites, buildings and stories have in common with all other classes is tested in tests/object/class_*_test.cpp.

namespace tessel::test {
namespace {

TEST(Site, WithoutANameIsNotDirty) {
  const auto site = Site::create();
  EXPECT_FALSE(site->isDirty());
  EXPECT_TRUE(site->name().isEmpty());
  EXPECT_EQ(site->id(), 0U);
}

TEST(Site, WithANameIsDirty) {
  EXPECT_TRUE(Site::create(L"a")->isDirty());
  EXPECT_TRUE(Site::create(L"")->isDirty());
}

TEST(Site, StartsEmpty) {
  SampleProject project;
  const auto site = project.db->save(Site::create(L"a"));
  auto row = project.row("tessel_Site", site->id());
  EXPECT_EQ(row.at("name"), "a");
  for (const char* const number : {"ref_elevation", "buildable_area", "total_area", "building_height_limit"}) {
    EXPECT_EQ(row.at(number), "0.0") << number;
    row.erase(number);
  }
  row.erase("name");
  for (const auto& [column, value] : row) EXPECT_EQ(value, "") << column;
}

TEST(Site, WithoutANameIsNotSavedBeforeSomethingIsSet) {
  SampleProject project;
  const auto site = Site::create();
  EXPECT_EQ(project.db->save(site), site);
  EXPECT_EQ(site->id(), 0U);
  EXPECT_EQ(project.count("tessel_Site"), 0);

  site->set_town(L"Bergen");
  project.db->save(site);
  EXPECT_EQ(project.count("tessel_Site"), 1);
}

TEST(Site, WithoutANameCannotBearABuilding) {
  SampleProject project;
  EXPECT_THROW(project.db->save(Building::create(Site::create(), L"Tower")), DatabaseException);
  EXPECT_EQ(project.count("tessel_Building"), 0);
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 0);
}

TEST(Site, CloneOfAnUntouchedOneIsDirty) { EXPECT_TRUE(Site::create()->cloneObject()->isDirty()); }

TEST(Building, StartsWithOneStoreyAndWithoutNameAndId) {
  const auto site = Site::create(L"a");
  const auto building = Building::create(site);
  EXPECT_EQ(building->site(), site);
  EXPECT_TRUE(building->name().isEmpty());
  EXPECT_EQ(building->number_of_storeys(), 1U);
  EXPECT_TRUE(building->building_id().isEmpty());
  EXPECT_FALSE(building->is_permanent_id());
  EXPECT_FALSE(building->sprinkler_protection());
  EXPECT_FALSE(building->sprinkler_protection_automatic());
  EXPECT_FALSE(building->is_landmarked());
  EXPECT_EQ(building->elevation_of_ref_height(), 0);
  EXPECT_EQ(building->elevation_of_terrain(), 0);
  EXPECT_EQ(building->gross_planned_area(), 0);
  EXPECT_TRUE(building->year_of_construction().isEmpty());
  EXPECT_TRUE(building->isDirty());
  EXPECT_EQ(Building::create(site, L"Tower")->name(), L"Tower");
  EXPECT_TRUE(Building::create(site, L"Tower")->isDirty());
}

TEST(Building, KeepsItsNumberOfStoreysWhateverStoriesThereAre) {
  SampleProject project;
  const auto building = project.db->save(Building::create(Site::create(L"a"), L"Tower"));
  for (int i = 0; i < 3; ++i) project.db->save(Story::create(building, OdString::format(L"%d", i), i));
  EXPECT_EQ(project.db->get<Building>(building->id())->number_of_storeys(), 1U);
  building->set_number_of_storeys(42);
  building->save();
  EXPECT_EQ(building->stories().size(), 3U);
  EXPECT_EQ(project.row("tessel_Building", building->id()).at("number_of_storeys"), "42");
}

TEST(Building, KeepsAnyNumberOfStoreys) {
  SampleProject project;
  const auto building = Building::create(Site::create(L"a"), L"Tower");
  building->set_number_of_storeys(0xFFFFFFFFU);
  project.db->save(building);
  EXPECT_EQ(project.row("tessel_Building", building->id()).at("number_of_storeys"), "4294967295");
  EXPECT_EQ(project.db->get<Building>(building->id())->number_of_storeys(), 0xFFFFFFFFU);
}

TEST(Building, GetsNoIdentificationOfItsOwn) {
  SampleProject project;
  const auto building = project.db->save(Building::create(Site::create(L"a"), L"Tower"));
  EXPECT_EQ(project.row("tessel_Building", building->id()).at("building_id"), "");
  EXPECT_EQ(project.row("tessel_Building", building->id()).at("is_permanent_id"), "0");
}

TEST(Story, StartsAboveGroundAndIsNoEntrance) {
  const auto building = Building::create(Site::create(L"a"), L"Tower");
  const auto story = Story::create(building);
  EXPECT_EQ(story->building(), building);
  EXPECT_TRUE(story->above_ground());
  EXPECT_FALSE(story->entrance_level());
  EXPECT_FALSE(story->sprinkler_protection());
  EXPECT_FALSE(story->sprinkler_protection_automatic());
  EXPECT_TRUE(story->name().isEmpty());
  EXPECT_EQ(story->elevation(), 0);
  EXPECT_EQ(story->gross_area_planned(), 0);
  EXPECT_EQ(story->net_area_planned(), 0);
  EXPECT_TRUE(story->isDirty());
}

TEST(Story, IsCreatedWithNameAndElevation) {
  const auto story = Story::create(Building::create(Site::create(L"a")), L"Ground", -1.5);
  EXPECT_EQ(story->name(), L"Ground");
  EXPECT_EQ(story->elevation(), -1.5);
  EXPECT_TRUE(story->above_ground());
}

TEST(SpatialTypes, HaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(SpatialStructure::staticTesselType()), 2);
  EXPECT_EQ(static_cast<int>(Site::staticTesselType()), 3);
  EXPECT_EQ(static_cast<int>(Building::staticTesselType()), 4);
  EXPECT_EQ(static_cast<int>(Story::staticTesselType()), 5);
}

TEST(SpatialNames, AreReachedThroughTheCommonBase) {
  for (const TsSmartPtr<SpatialStructure>& structure :
       {TsSmartPtr<SpatialStructure>(makeSample<Site>()), TsSmartPtr<SpatialStructure>(makeSample<Building>()),
        TsSmartPtr<SpatialStructure>(makeSample<Story>())}) {
    structure->set_name(L"name");
    structure->set_description(L"description");
    EXPECT_EQ(structure->name(), L"name");
    EXPECT_EQ(structure->description(), L"description");
  }
}

class SpatialParent : public ::testing::Test {
protected:
  SampleProject project;
  TsSmartPtr<Story> story = project.db->save(makeSample<Story>());
  TsSmartPtr<Building> building = project.db->get<Building>(story->building()->id());
};

TEST_F(SpatialParent, OfAStoryThatIsAnEqualBuildingCountsAsAChange) {
  const auto clone = story->building()->cloneObject();
  ASSERT_TRUE(*clone == *story->building());
  story->set_building(clone);
  EXPECT_TRUE(story->isDirty());
  EXPECT_EQ(story->building(), clone);
}

TEST_F(SpatialParent, OfABuildingThatIsAnEqualSiteCountsAsAChange) {
  const auto clone = building->site()->cloneObject();
  ASSERT_TRUE(*clone == *building->site());
  building->set_site(clone);
  EXPECT_TRUE(building->isDirty());
  EXPECT_EQ(building->site(), clone);
}

TEST_F(SpatialParent, ThatIsThereAlreadyIsNoChange) {
  story->set_building(story->building());
  EXPECT_FALSE(story->isDirty());
  building->set_site(building->site());
  EXPECT_FALSE(building->isDirty());
}

TEST_F(SpatialParent, ThatChangesInMemoryIsNotWrittenWithTheChild) {
  const auto before = project.row("tessel_Building", building->id());
  story->set_building(building);
  building->set_town(L"elsewhere");
  EXPECT_TRUE(story->save());
  EXPECT_TRUE(building->isDirty());
  EXPECT_EQ(project.row("tessel_Building", building->id()), before);
}

TEST(SpatialParentNull, IsAcceptedUntilTheSave) {
  SampleProject project;
  const auto building = Building::create(nullptr, L"Tower");
  const auto story = Story::create(nullptr, L"Ground", 0);
  EXPECT_TRUE(building->site().isNull());
  EXPECT_TRUE(story->building().isNull());
  EXPECT_THROW(project.db->save(building), DatabaseException);
  EXPECT_THROW(project.db->save(story), DatabaseException);
  EXPECT_EQ(building->id(), 0U);
  EXPECT_TRUE(building->isDirty());
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 0);
}

TEST(SpatialParentNull, LeavesEarlierWorkOfTheHostIntact) {
  SampleProject project;
  Transaction transaction(project.db, Transaction::BeginCurrent);
  const auto site = project.db->save(makeSample<Site>());
  EXPECT_THROW(project.db->save(Building::create(nullptr, L"Tower")), DatabaseException);
  transaction.commit();
  EXPECT_EQ(project.row("tessel_Site", site->id()), valuesOf(*site));
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 1);
}

TEST(SpatialEquality, LooksThroughParentsThatAreOtherObjects) {
  const auto first = makeSample<Story>();
  const auto second = makeSample<Story>();
  ASSERT_NE(first->building(), second->building());
  EXPECT_TRUE(*first == *second);

  auto deep = makeSample<Site>();
  deep->set_town(L"elsewhere");
  const auto building = makeSample<Building>();
  building->set_site(deep);
  second->set_building(building);
  EXPECT_FALSE(*first == *second) << "the sites of their buildings differ";
}

TEST(SpatialEquality, TakesObjectsWithoutParentForEqual) {
  EXPECT_TRUE(*Building::create(nullptr, L"a") == *Building::create(nullptr, L"a"));
  EXPECT_TRUE(*Story::create(nullptr, L"a", 1) == *Story::create(nullptr, L"a", 1));
  EXPECT_FALSE(*Building::create(nullptr, L"a") == *Building::create(Site::create(L"s"), L"a"));
  EXPECT_FALSE(*Story::create(nullptr, L"a", 1) == *Story::create(Building::create(nullptr), L"a", 1));
}

TEST(SpatialEquality, IgnoresIds) {
  SampleProject project;
  SampleProject other;
  other.db->save(makeSample<Site>(5));
  const auto first = project.db->save(makeSample<Story>());
  const auto second = other.db->save(makeSample<Story>());
  ASSERT_NE(first->id(), second->id());
  EXPECT_TRUE(*first == *second);
}

// Sites and stories are compared by their fields alone, whatever class stands behind them.
struct HostSite : Site {
  HostSite() : Site(SetDirty{}) {}
  OdRxClass* isA() const override { return Object::desc(); }
};
struct HostStory : Story {
  HostStory() : Story(SetDirty{}) {}
  OdRxClass* isA() const override { return Object::desc(); }
};
struct HostBuilding : Building {
  HostBuilding() : Building(SetDirty{}) {}
  OdRxClass* isA() const override { return Object::desc(); }
};

TEST(SpatialEquality, AsksForTheClassOfBuildingsOnly) {
  const TsSmartPtr<Site> site = new HostSite;
  EXPECT_TRUE(*site == *Site::create());
  const TsSmartPtr<Story> story = new HostStory;
  EXPECT_TRUE(*story == *Story::create(nullptr));
  const TsSmartPtr<Building> building = new HostBuilding;
  EXPECT_FALSE(*building == *Building::create(nullptr));
}

class SpatialRows : public ::testing::Test {
protected:
  std::string typeOf(unsigned int id) const { return project.row("tessel_SpatialStructure", id).at("typeid"); }

  SampleProject project;
};

TEST_F(SpatialRows, ShareTheirIdsAndTellTheirClass) {
  const auto story = project.db->save(makeSample<Story>());
  const unsigned int building = story->building()->id();
  const unsigned int site = story->building()->site()->id();
  EXPECT_EQ(site, 1U);
  EXPECT_EQ(building, 2U);
  EXPECT_EQ(story->id(), 3U);
  EXPECT_EQ(typeOf(site), "tessel::Site");
  EXPECT_EQ(typeOf(building), "tessel::Building");
  EXPECT_EQ(typeOf(story->id()), "tessel::Story");
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 3);
}

TEST_F(SpatialRows, AreLoadedAsWhatTheyAre) {
  const auto story = project.db->save(makeSample<Story>());
  const auto found = project.db->get<SpatialStructure>(story->id());
  ASSERT_TRUE(found);
  EXPECT_EQ(found->tesselType(), ObjectType::Story);
  EXPECT_TRUE(*Story::queryX(found.get()) == *story);
  EXPECT_FALSE(found->isDirty());
  EXPECT_EQ(found->projectDb(), project.db);
  EXPECT_EQ(project.db->get<SpatialStructure>(story->building()->id())->tesselType(), ObjectType::Building);
  EXPECT_EQ(project.db->get<SpatialStructure>(story->building()->site()->id())->tesselType(), ObjectType::Site);
}

TEST_F(SpatialRows, AreListedAndCountedTogether) {
  project.db->save(makeSample<Story>());
  project.db->save(makeSample<Site>(2));
  std::vector<TsSmartPtr<SpatialStructure>> found;
  project.db->get(found);
  EXPECT_EQ(found.size(), 4U);
  EXPECT_EQ(project.db->count<SpatialStructure>(), 4U);
}

TEST_F(SpatialRows, AreSavedThroughTheCommonBaseAsWhatTheyAre) {
  const TsSmartPtr<SpatialStructure> site = makeSample<Site>();
  const Object& object = *site;
  EXPECT_EQ(object.save(project.db), site);
  site->set_name(L"renamed");
  Object& changed = *site;
  EXPECT_TRUE(changed.save());
  EXPECT_EQ(project.row("tessel_Site", site->id()).at("name"), "renamed");
}

TEST_F(SpatialRows, OfAnotherClassAreNotLoaded) {
  const auto story = project.db->save(makeSample<Story>());
  EXPECT_THROW(project.db->get<Site>(story->id()), odb::object_not_persistent);
  EXPECT_THROW(project.db->get<Story>(story->building()->id()), odb::object_not_persistent);
}

TEST_F(SpatialRows, WithAClassThatIsNoneAreRefused) {
  const auto site = project.db->save(makeSample<Site>());
  project.raw().exec("UPDATE tessel_SpatialStructure SET typeid = 'tessel::Palace'");
  EXPECT_THROW(project.db->get<SpatialStructure>(site->id()), DatabaseException);
}

}  // namespace
}  // namespace tessel::test
