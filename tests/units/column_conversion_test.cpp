#include <string>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/recording_reactor.h"
#include "support/samples.h"

// The numbers of a spatial object that goes from one file to another are brought to the units of the destination.

namespace tessel::test {
namespace {

constexpr double inches = 2;
constexpr double metres = inches * 0.0254;

class ColumnConversion : public ::testing::Test {
protected:
  static void useUnits(SampleProject& project, const wchar_t* length, double lengthScale, const wchar_t* area,
                       double areaScale) {
    project.db->setDefaultUnit(Unit::create(length, lengthScale, Measure::create(L"LENGTH", 1, 0, 0, 0, 0, 0, 0)));
    project.db->setDefaultUnit(Unit::create(area, areaScale, Measure::create(L"AREA", 2, 0, 0, 0, 0, 0, 0)));
  }
  static void useInches(SampleProject& project) { useUnits(project, L"in", 0.0254, L"in^2", 0.00064516); }
  static void useMetres(SampleProject& project) { useUnits(project, L"m", 1, L"m^2", 1); }

  static TsSmartPtr<Story> storyInInches() {
    const auto site = makeSample<Site>();
    site->set_ref_elevation(inches);
    site->set_buildable_area(inches);
    site->set_total_area(inches);
    site->set_building_height_limit(inches);
    const auto building = Building::create(site, L"Tower");
    building->set_elevation_of_ref_height(inches);
    building->set_elevation_of_terrain(inches);
    building->set_gross_planned_area(inches);
    const auto story = Story::create(building, L"Ground", inches);
    story->set_gross_area_planned(inches);
    story->set_net_area_planned(inches);
    return story;
  }

  SampleProject source;
  SampleProject destination;
};

TEST_F(ColumnConversion, TakesInEveryColumnThatHasAUnit) {
  useInches(source);
  useMetres(destination);
  const auto story = source.db->save(storyInInches());
  const auto copy = destination.db->save(story);
  ASSERT_TRUE(copy);
  const auto& building = copy->building();
  const auto& site = building->site();
  const double squareMetres = inches * 0.00064516;
  EXPECT_EQ(site->ref_elevation(), metres);
  EXPECT_EQ(site->building_height_limit(), metres);
  EXPECT_EQ(site->buildable_area(), squareMetres);
  EXPECT_EQ(site->total_area(), squareMetres);
  EXPECT_EQ(building->elevation_of_ref_height(), metres);
  EXPECT_EQ(building->elevation_of_terrain(), metres);
  EXPECT_EQ(building->gross_planned_area(), squareMetres);
  EXPECT_EQ(copy->elevation(), metres);
  EXPECT_EQ(copy->gross_area_planned(), squareMetres);
  EXPECT_EQ(copy->net_area_planned(), squareMetres);
}

TEST_F(ColumnConversion, LeavesTheOriginalAlone) {
  useInches(source);
  useMetres(destination);
  const auto story = source.db->save(storyInInches());
  const auto before = valuesOf(*story);
  destination.db->save(story);
  EXPECT_EQ(valuesOf(*story), before);
  EXPECT_FALSE(story->isDirty());
  EXPECT_EQ(source.row("tessel_Story", story->id()), before);
}

TEST_F(ColumnConversion, BetweenEqualUnitsKeepsEveryNumber) {
  useInches(source);
  useInches(destination);
  const auto story = source.db->save(storyInInches());
  const auto copy = destination.db->save(story);
  EXPECT_TRUE(*copy == *story);
}

TEST_F(ColumnConversion, BetweenFilesWithoutUnitsKeepsEveryNumber) {
  const auto story = source.db->save(storyInInches());
  EXPECT_TRUE(*destination.db->save(story) == *story);
}

TEST_F(ColumnConversion, UsesTheUnitsOfTheColumnsAndNotTheDefaults) {
  useInches(source);
  useMetres(destination);
  useUnits(destination, L"mm", 0.001, L"mm^2", 0.000001);
  EXPECT_EQ(destination.db->save(source.db->save(storyInInches()))->elevation(), metres);
}

// Numbers without a unit cannot become numbers with one: null, and no exception.
TEST_F(ColumnConversion, FromNoUnitToAUnitGivesNothingAndWritesNothing) {
  useMetres(destination);
  RecordingReactor reactor(destination.db);
  const auto site = source.db->save(makeSample<Site>());
  IdMapping mapping(destination.db);
  EXPECT_TRUE(destination.db->save(site, mapping).isNull());
  EXPECT_EQ(destination.count("tessel_Site"), 0);
  EXPECT_TRUE(reactor.calls.empty());
  EXPECT_EQ(mapping.size(), 0U);
}

TEST_F(ColumnConversion, FromAUnitToNoUnitGivesNothingAndWritesNothing) {
  useInches(source);
  const auto site = source.db->save(makeSample<Site>());
  EXPECT_TRUE(destination.db->save(site).isNull());
  EXPECT_TRUE(destination.db->save(TsSmartPtr<const Site>(site)).isNull());
  EXPECT_EQ(destination.count("tessel_Site"), 0);
}

TEST_F(ColumnConversion, BetweenOtherDimensionsGivesNothing) {
  useInches(source);
  useMetres(destination);
  destination.raw().exec("UPDATE tessel_Measure SET mass = 1 WHERE name = 'LENGTH'");
  EXPECT_TRUE(destination.db->save(source.db->save(makeSample<Site>())).isNull());
  EXPECT_EQ(destination.count("tessel_Site"), 0);
}

TEST_F(ColumnConversion, ThatFailsLeavesATransactionOfTheHostIntact) {
  useMetres(destination);
  const auto foreign = source.db->save(makeSample<Site>(2));
  Transaction transaction(destination.db, Transaction::BeginCurrent);
  const auto own = destination.db->save(makeSample<Site>(1));
  EXPECT_TRUE(destination.db->save(foreign).isNull());
  ASSERT_FALSE(transaction.finalized());
  transaction.commit();
  EXPECT_EQ(destination.row("tessel_Site", own->id()), valuesOf(*own));
  EXPECT_EQ(destination.count("tessel_Site"), 1);
}

TEST_F(ColumnConversion, IsNotDoneWithinOneFile) {
  useMetres(source);
  const auto story = source.db->save(storyInInches());
  EXPECT_EQ(story->elevation(), inches);
}

TEST_F(ColumnConversion, IsNotDoneForAnObjectThatBelongsToNoFile) {
  useMetres(destination);
  EXPECT_EQ(destination.db->save(storyInInches())->elevation(), inches);
}

}  // namespace
}  // namespace tessel::test
