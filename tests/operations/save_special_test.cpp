// What is special to some saves: blank and spatial objects, objects of a closed file, references and reactors.

#include <gmock/gmock.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class SaveSpecial : public TwoProjects {};

TEST_F(SaveSpecial, ABlankSiteIsNotDirtyAndNotWritten) {
  const auto site = Site::create();
  EXPECT_EQ(db->save(site), site);
  EXPECT_EQ(site->id(), 0U);
  EXPECT_FALSE(site->projectDb());
  EXPECT_EQ(rows("tessel_Site"), 0);
  EXPECT_THAT(outcomes(), ElementsAre(Pair(ObjectKey{ObjectType::Site, 0}, SaveResolution::Kept)));
}

TEST_F(SaveSpecial, ASpatialObjectIsTwoRowsOfOneId) {
  const auto story = db->save(makeSample<Story>(1));
  const std::string id = std::to_string(story->id());
  EXPECT_EQ(project.raw().scalarText("SELECT typeid FROM tessel_SpatialStructure WHERE id = " + id), "tessel::Story");
  EXPECT_EQ(project.raw().scalarText("SELECT count(*) FROM tessel_Story WHERE id = " + id), "1");
}

TEST_F(SaveSpecial, ASpatialStructureIsSavedAsItsClass) {
  const TsSmartPtr<SpatialStructure> structure = makeSample<Building>(1);
  const TsSmartPtr<Object> result = structure->save(db);
  EXPECT_EQ(result, structure);
  EXPECT_EQ(rows("tessel_Building"), 1);
}

TEST_F(SaveSpecial, AnObjectOfAClosedDatabaseBecomesANewRowAndTakesItsId) {
  for (int i = 1; i < 4; ++i) other->save(Site::create(OdString::format(L"Site %d", i)));
  const auto site = other->get<Site>(3);
  other.reset();
  site->set_town(L"Bergen");
  EXPECT_EQ(db->save(site), site);
  EXPECT_EQ(site->id(), 1U);
  EXPECT_EQ(site->projectDb(), db);
  EXPECT_EQ(project.row("tessel_Site", 1), valuesOf(*site));
}

// The mapping is asked for all that has an id there, whereas the other form asks only for what has a source.
TEST_F(SaveSpecial, TheConstantFormLooksForAnObjectOfAClosedDatabaseInTheMapping) {
  const auto stand = db->save(Site::create(L"Stand"));
  other->save(Site::create(L"Vale"));
  const auto site = other->save(Site::create(L"Hill"));
  other.reset();
  site->set_town(L"Bergen");
  startWatching();
  IdMapping mapping(db);
  mapping.set({ObjectType::Site, site->id(), nullptr}, {stand->id(), SaveResolution::Kept});
  const auto found = db->save(TsSmartPtr<const Site>(site), mapping);
  EXPECT_EQ(found->id(), stand->id());
  EXPECT_EQ(found->name(), L"Stand");
  EXPECT_EQ(writes(), 0U);
  EXPECT_THAT(reactor.calls, IsEmpty());
  EXPECT_EQ(db->save(site, mapping), site);
  EXPECT_EQ(rows("tessel_Site"), 2);
}

TEST_F(SaveSpecial, SavingAReferrerDoesNotSaveChangesOfWhatItRefersTo) {
  const auto building = db->save(Building::create(Site::create(L"Hill"), L"House"));
  const auto story = db->save(Story::create(building, L"Ground", 0));
  startWatching();
  building->set_description(L"changed");
  story->set_description(L"changed");
  db->save(story);
  EXPECT_TRUE(building->isDirty());
  EXPECT_EQ(project.row("tessel_Building", building->id())["description"], "");
  EXPECT_EQ(project.row("tessel_Story", story->id())["description"], "changed");
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(story), SaveResolution::Overwritten)));
}

TEST_F(SaveSpecial, ANewReferenceOfACleanObjectIsWritten) {
  const auto building = db->save(Building::create(Site::create(L"Hill"), L"House"));
  const auto vale = Site::create(L"Vale");
  building->set_site(vale);
  db->save(building);
  EXPECT_NE(vale->id(), 0U);
  EXPECT_EQ(project.row("tessel_Building", building->id())["site_id"], std::to_string(vale->id()));
}

TEST_F(SaveSpecial, TwoNewObjectsShareANewReference) {
  const auto site = Site::create(L"Hill");
  const auto first = db->save(Building::create(site, L"A"));
  const auto second = db->save(Building::create(site, L"B"));
  EXPECT_EQ(rows("tessel_Site"), 1);
  EXPECT_EQ(first->site(), second->site());
}

TEST_F(SaveSpecial, HandlesDoNotShareTheirReactor) {
  other->save(Site::create(L"Hill"));
  EXPECT_THAT(reactor.saved, IsEmpty());
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(reactor.saved.size(), 1U);
}

TEST_F(SaveSpecial, WithoutAReactorTheDefaultOneServes) {
  db->setReactor(nullptr);
  db->save(Site::create(L"Hill"));
  EXPECT_THAT(reactor.saved, IsEmpty());
  EXPECT_THROW(db->save(Site::create(L"Hill")), ObjectNotUnique);
}

}  // namespace
}  // namespace tessel::test
