// Numbers that go from one file to another are converted to the units of the destination's columns.

#include <gmock/gmock.h>

#include "operations/copying.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Scales {
  double length;
  double area;
};

/// As it is told: a factor of 1 is left out, and the multiplication comes first.
double converted(double value, double from, double to) {
  if (from == to) return value;
  if (from != 1) value *= from;
  if (to != 1) value /= to;
  return value;
}

class CopyUnits : public Copying {
protected:
  static void useScales(const std::shared_ptr<ProjectDb>& target, const Scales& scales) {
    useUnit(target, L"LENGTH", L"l", scales.length);
    useUnit(target, L"AREA", L"a", scales.area);
  }

  /// A number of its own in each column that has a unit.
  void makeForeign() {
    const auto site = Site::create(L"Hill");
    site->set_ref_elevation(1.1);
    site->set_building_height_limit(1.2);
    site->set_buildable_area(1.3);
    site->set_total_area(1.4);
    const auto building = Building::create(site, L"House");
    building->set_elevation_of_ref_height(2.1);
    building->set_elevation_of_terrain(2.2);
    building->set_gross_planned_area(2.3);
    const auto story = Story::create(building, L"Ground", 3.1);
    story->set_gross_area_planned(3.2);
    story->set_net_area_planned(3.3);
    other->save(story);
    startWatching();
  }

  void expectCopied(const Scales& from, const Scales& to) {
    const auto length = [&](double value) { return converted(value, from.length, to.length); };
    const auto area = [&](double value) { return converted(value, from.area, to.area); };
    std::vector<TsSmartPtr<Story>> stories;
    db->get(stories);
    ASSERT_EQ(stories.size(), 1U);
    const auto& story = stories[0];
    const auto& building = story->building();
    const auto& site = building->site();
    EXPECT_EQ(site->ref_elevation(), length(1.1));
    EXPECT_EQ(site->building_height_limit(), length(1.2));
    EXPECT_EQ(site->buildable_area(), area(1.3));
    EXPECT_EQ(site->total_area(), area(1.4));
    EXPECT_EQ(building->elevation_of_ref_height(), length(2.1));
    EXPECT_EQ(building->elevation_of_terrain(), length(2.2));
    EXPECT_EQ(building->gross_planned_area(), area(2.3));
    EXPECT_EQ(story->elevation(), length(3.1));
    EXPECT_EQ(story->gross_area_planned(), area(3.2));
    EXPECT_EQ(story->net_area_planned(), area(3.3));
  }

  void expectCopies(const Scales& from, const Scales& to) {
    useScales(other, from);
    useScales(db, to);
    makeForeign();
    const Unchanged source(otherProject);
    db->copyAll<Story>(other);
    expectCopied(from, to);
  }

  /// As if the file had never said in which unit a class keeps its numbers.
  static void forgetUnits(const SampleProject& file, const std::string& table) {
    file.raw().exec("DELETE FROM tessel_ColumnUnit WHERE \"table\" = '" + table + "'");
  }
};

TEST_F(CopyUnits, AreMultipliedIntoTheBaseUnit) { expectCopies({0.0254, 0.00064516}, {1, 1}); }
TEST_F(CopyUnits, AreDividedFromTheBaseUnit) { expectCopies({1, 1}, {0.0254, 0.00064516}); }
TEST_F(CopyUnits, AreMultipliedFirstAndThenDivided) { expectCopies({0.3048, 0.09290304}, {0.001, 0.000001}); }
TEST_F(CopyUnits, AreConvertedBackTheSameWay) { expectCopies({0.001, 0.000001}, {0.3048, 0.09290304}); }
TEST_F(CopyUnits, OfEqualScaleKeepEachBit) { expectCopies({0.3048, 0.09290304}, {0.3048, 0.09290304}); }

TEST_F(CopyUnits, ThatNeitherFileHasKeepEachBit) {
  makeForeign();
  db->copyAll(other);
  expectCopied({1, 1}, {1, 1});
}

TEST_F(CopyUnits, AreThoseOfTheColumnsAndNotTheDefaults) {
  useScales(other, {0.001, 0.000001});
  useScales(db, {1, 1});
  useUnit(other, L"LENGTH", L"another", 1000);
  useUnit(db, L"LENGTH", L"another", 7);
  makeForeign();
  db->copyAll<Story>(other);
  expectCopied({0.001, 0.000001}, {1, 1});
}

// What cannot be converted stays behind, and nothing is said.

TEST_F(CopyUnits, OnlyTheSourceHasLeaveAllSpatialObjectsBehind) {
  useScales(other, {0.001, 0.000001});
  makeForeign();
  other->save(EntityType::create(L"Door"));
  startWatching();
  IdMapping mapping(db);
  db->copyAll<Story>(other, mapping);
  db->copyAll<Building>(other, mapping);
  db->copyAll<Site>(other, mapping);
  EXPECT_EQ(mapping.size(), 0U);
  EXPECT_THAT(reactor.calls, IsEmpty());
  EXPECT_EQ(writes(), 0U);
  db->copyAll(other, mapping);
  EXPECT_EQ(rows("tessel_SpatialStructure"), 0);
  EXPECT_THAT(inFile("name", "EntityType"), ElementsAre("Door")) << "everything else arrives";
  for (const auto& [key, value] : mapping) EXPECT_NE(key.type, ObjectType::Site);
}

TEST_F(CopyUnits, OnlyTheDestinationHasLeaveAllSpatialObjectsBehind) {
  useScales(db, {0.001, 0.000001});
  makeForeign();
  const Unchanged source(otherProject);
  db->copyAll(other);
  EXPECT_EQ(rows("tessel_SpatialStructure"), 0);
}

TEST_F(CopyUnits, OfOneMeasureMissingLeaveThemBehindToo) {
  useScales(other, {0.001, 0.000001});
  useUnit(db, L"LENGTH", L"m", 1);
  makeForeign();
  db->copyAll<Site>(other);
  EXPECT_EQ(rows("tessel_SpatialStructure"), 0);
}

TEST_F(CopyUnits, OfOtherDimensionsLeaveThemBehind) {
  useScales(other, {1, 1});
  useScales(db, {1, 1});
  makeForeign();
  project.raw().exec("UPDATE tessel_Measure SET mass = 1 WHERE name = 'AREA'");
  db->copyAll<Story>(other);
  db->copyAll<Site>(other);
  EXPECT_EQ(rows("tessel_SpatialStructure"), 0);
  EXPECT_THAT(reactor.calls, IsEmpty());
}

TEST_F(CopyUnits, ANumberOfZeroNeedsAUnitAsWell) {
  useUnit(other, L"LENGTH", L"m", 1);
  other->save(Site::create(L"Hill"));
  db->copyAll<Site>(other);
  EXPECT_EQ(rows("tessel_Site"), 0);
}

// Objects that stay behind, and those that refer to them.

class CopyLeftBehind : public CopyUnits {
protected:
  CopyLeftBehind() {
    useScales(other, {1, 1});
    useScales(db, {1, 1});
    // Those of the destination are in the way of the source's.
    otherProject.raw().exec("DELETE FROM tessel_DefaultUnit");
    makeForeign();
  }
};

TEST_F(CopyLeftBehind, AStoryIsNotMissedByItsBuilding) {
  forgetUnits(project, "Story");
  db->copyAll(other);
  EXPECT_EQ(rows("tessel_Story"), 0);
  EXPECT_EQ(rows("tessel_Building"), 1);
  EXPECT_EQ(rows("tessel_Site"), 1);
  EXPECT_EQ(rows("tessel_SpatialStructure"), 2);
}

TEST_F(CopyLeftBehind, ABuildingIsNotMissedByItsSite) {
  forgetUnits(project, "Building");
  IdMapping mapping(db);
  db->copyAll<Building>(other, mapping);
  db->copyAll<Site>(other, mapping);
  EXPECT_EQ(rows("tessel_Building"), 0);
  EXPECT_EQ(rows("tessel_Site"), 1);
}

// Without a building there is nothing that the row of a story could refer to.
TEST_F(CopyLeftBehind, ABuildingIsMissedByItsStoryWhichEndsTheCopy) {
  forgetUnits(project, "Building");
  const Unchanged destination(project);
  const Unchanged source(otherProject);
  EXPECT_THROW(db->copyAll<Story>(other), DatabaseException);
  EXPECT_THROW(db->copyAll(other), DatabaseException);
}

TEST_F(CopyLeftBehind, ASiteIsMissedByItsBuildingWhichEndsTheCopy) {
  forgetUnits(project, "Site");
  const Unchanged destination(project);
  EXPECT_THROW(db->copyAll<Building>(other), DatabaseException);
  EXPECT_THROW(db->copyAll(other), DatabaseException);
}

TEST_F(CopyLeftBehind, AllOfThemTogetherAreMissedByNobody) {
  for (const char* const table : {"Site", "Building", "Story"}) forgetUnits(otherProject, table);
  db->copyAll(other);
  EXPECT_EQ(rows("tessel_SpatialStructure"), 0);
}

TEST_F(CopyLeftBehind, AnObjectThatTheMappingKnowsNeedsNoConversion) {
  const auto own = db->save(Building::create(Site::create(L"Shore"), L"Hut"));
  std::vector<TsSmartPtr<Building>> buildings;
  other->get(buildings);
  forgetUnits(project, "Building");
  IdMapping mapping(db);
  mapping.set({ObjectType::Building, buildings.at(0)->id(), other.get()}, {own->id(), SaveResolution::Kept});
  db->copyAll<Story>(other, mapping);
  EXPECT_THAT(inFile("building_id", "Story"), ElementsAre(std::to_string(own->id())));
}

TEST_F(CopyLeftBehind, ATransactionOfTheHostStaysUsable) {
  forgetUnits(project, "Site");
  forgetUnits(project, "Building");
  forgetUnits(project, "Story");
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Shore"));
  db->copyAll(other);
  EXPECT_FALSE(transaction.finalized());
  transaction.commit();
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Shore"));
}

}  // namespace
}  // namespace tessel::test
