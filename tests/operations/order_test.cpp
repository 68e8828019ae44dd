// In which order look-ups list what they find.

#include <gmock/gmock.h>

#include "operations/found.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;

class Order : public ReactingProject {
protected:
  TsSmartPtr<Site> hill = db->save(Site::create(L"Hill"));
  TsSmartPtr<Site> vale = db->save(Site::create(L"Vale"));
};

TEST_F(Order, OfNamesIsThatOfTheirBytes) {
  for (const wchar_t* name : {L"b", L"B", L"a", L"\u00E4", L"10", L"9", L""}) db->save(EntityType::create(name));
  EXPECT_THAT(found<EntityType>(*db), ElementsAre("", "10", "9", "B", "a", "b", u8"\u00E4"));
}

TEST_F(Order, OfSitesMeasuresNamespacesAndSetsIsThatOfTheirNames) {
  db->save(Site::create(L"Shore"));
  EXPECT_THAT(found<Site>(*db), ElementsAre("Hill", "Shore", "Vale"));
  EXPECT_THAT(found<Measure>(*db), ElementsAre("AREA", "LENGTH", "MASS", "VOLUME"));
  for (const wchar_t* name : {L"C", L"A", L"B"}) {
    const auto ns = db->save(PropertyNamespace::create(name));
    db->save(PropertySet::create(ns, name));
    db->save(PropertyDefinition::create(ns, name));
    db->save(ValueDefinition::create(ns, name));
  }
  EXPECT_THAT(found<PropertyNamespace>(*db), ElementsAre("A", "B", "C"));
  EXPECT_THAT(found<PropertySet>(*db), ElementsAre("A", "B", "C"));
  EXPECT_THAT(found<PropertyDefinition>(*db), ElementsAre("A", "B", "C"));
  EXPECT_THAT(found<ValueDefinition>(*db), ElementsAre("A", "B", "C"));
}

TEST_F(Order, OfBuildingsIsThatOfTheirNamesWithAndWithoutASite) {
  for (const wchar_t* name : {L"C", L"A"}) db->save(Building::create(hill, name));
  for (const wchar_t* name : {L"D", L"B"}) db->save(Building::create(vale, name));
  BuildingCriteria criteria;
  EXPECT_THAT(found<Building>(*db, criteria), ElementsAre("A", "B", "C", "D"));
  criteria.site_id = vale->id();
  EXPECT_THAT(found<Building>(*db, criteria), ElementsAre("B", "D"));
}

class OrderOfStories : public Order {
protected:
  OrderOfStories() {
    db->save(Story::create(house, L"Roof", 9));
    db->save(Story::create(house, L"Cellar", -2.5));
    db->save(Story::create(house, L"Ground", 0));
    db->save(Story::create(barn, L"Loft", 3));
    db->save(Story::create(barn, L"Attic", 6));
  }

  TsSmartPtr<Building> house = db->save(Building::create(hill, L"House"));
  TsSmartPtr<Building> barn = db->save(Building::create(hill, L"Barn"));
};

TEST_F(OrderOfStories, OfABuildingIsFromTheBottomUp) {
  StoryCriteria criteria;
  criteria.building_id = house->id();
  EXPECT_THAT(found<Story>(*db, criteria), ElementsAre("Cellar", "Ground", "Roof"));
  criteria.building_id = barn->id();
  EXPECT_THAT(found<Story>(*db, criteria), ElementsAre("Loft", "Attic"));
}

TEST_F(OrderOfStories, OfABuildingKeepsToTheCondition) {
  StoryCriteria criteria;
  criteria.building_id = house->id();
  criteria.name.contains(L"o");
  EXPECT_THAT(found<Story>(*db, criteria), ElementsAre("Ground", "Roof"));
}

TEST_F(OrderOfStories, OfAllBuildingsIsThatOfTheirNames) {
  EXPECT_THAT(found<Story>(*db), ElementsAre("Attic", "Cellar", "Ground", "Loft", "Roof"));
}

TEST_F(OrderOfStories, IsInTheStatement) {
  StoryCriteria criteria;
  startWatching();
  found<Story>(*db, criteria);
  EXPECT_THAT(sql.beginningWith("SELECT").at(0), ::testing::EndsWith("ORDER BY \"tessel_Story\".\"name\""));
  criteria.building_id = house->id();
  startWatching();
  found<Story>(*db, criteria);
  EXPECT_THAT(sql.beginningWith("SELECT").at(0), ::testing::EndsWith("ORDER BY \"tessel_Story\".\"elevation\" ASC"));
}

TEST_F(Order, OfUnitsAndOfSpatialObjectsIsLeftToSqlite) {
  startWatching();
  found<Unit>(*db);
  found<SpatialStructure>(*db);
  for (const std::string& statement : sql.beginningWith("SELECT")) {
    EXPECT_EQ(statement.find("ORDER BY"), std::string::npos) << statement;
  }
}

}  // namespace
}  // namespace tessel::test
