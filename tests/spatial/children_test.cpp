#include <vector>

#include <gtest/gtest.h>
#include <odb/session.hxx>

#include <tessel/tessel.h>

#include "support/recording_reactor.h"
#include "support/samples.h"

namespace tessel::test {
namespace {

class Children : public ::testing::Test {
protected:
  TsSmartPtr<Building> addBuilding(const OdString& name, const TsSmartPtr<Site>& owner) {
    return project.db->save(Building::create(owner, name));
  }
  TsSmartPtr<Story> addStory(const OdString& name, double elevation) {
    return project.db->save(Story::create(building, name, elevation));
  }

  template <typename T>
  static std::vector<OdString> namesOf(const std::vector<TsSmartPtr<T>>& objects) {
    std::vector<OdString> names;
    for (const auto& object : objects) names.push_back(object->name());
    return names;
  }

  SampleProject project;
  TsSmartPtr<Site> site = project.db->save(Site::create(L"Harbour"));
  TsSmartPtr<Building> building = addBuilding(L"Tower", site);
};

using Names = std::vector<OdString>;

TEST_F(Children, OfAnUnsavedParentAreNone) {
  EXPECT_TRUE(Site::create(L"new")->buildings().empty());
  EXPECT_TRUE(Site::create()->buildings().empty());
  EXPECT_TRUE(Building::create(site, L"new")->stories().empty());
  EXPECT_TRUE(site->cloneObject()->buildings().empty());
}

TEST_F(Children, OfAParentWhoseDatabaseIsClosedAreNone) {
  addStory(L"Ground", 0);
  project.db.reset();
  EXPECT_TRUE(site->buildings().empty());
  EXPECT_TRUE(building->stories().empty());
}

TEST_F(Children, ThatAreNotThereAreNone) { EXPECT_TRUE(building->stories().empty()); }

TEST_F(Children, OfASiteComeInTheOrderOfTheirNames) {
  addBuilding(L"b", site);
  addBuilding(L"Zoo", site);
  addBuilding(L"Annex", site);
  EXPECT_EQ(namesOf(site->buildings()), (Names{L"Annex", L"Tower", L"Zoo", L"b"}));
}

TEST_F(Children, OfABuildingComeFromTheBottomUp) {
  addStory(L"Roof", 9);
  addStory(L"Ground", 0);
  addStory(L"Zero and a half", 1.5);
  addStory(L"Basement", -3);
  EXPECT_EQ(namesOf(building->stories()), (Names{L"Basement", L"Ground", L"Zero and a half", L"Roof"}));
}

TEST_F(Children, OfAnotherParentAreNotAmongThem) {
  const auto other = project.db->save(Site::create(L"Airport"));
  const auto terminal = addBuilding(L"Terminal", other);
  project.db->save(Story::create(terminal, L"Gates", 0));
  EXPECT_EQ(namesOf(site->buildings()), Names{L"Tower"});
  EXPECT_EQ(namesOf(other->buildings()), Names{L"Terminal"});
  EXPECT_TRUE(building->stories().empty());
}

TEST_F(Children, ReferToTheVeryParentThatWasAsked) {
  addBuilding(L"Annex", site);
  for (const auto& child : site->buildings()) EXPECT_EQ(child->site(), site);
  addStory(L"Ground", 0);
  addStory(L"Roof", 9);
  const auto asked = project.db->get<Building>(building->id());
  for (const auto& child : asked->stories()) EXPECT_EQ(child->building(), asked);
  EXPECT_EQ(asked->stories()[0]->building()->site(), asked->site());
}

TEST_F(Children, ReferToAParentWithUnsavedChanges) {
  site->set_name(L"renamed in memory");
  const auto buildings = site->buildings();
  ASSERT_EQ(buildings.size(), 1U);
  EXPECT_EQ(buildings[0]->site()->name(), L"renamed in memory");
  EXPECT_TRUE(site->isDirty());
  EXPECT_FALSE(buildings[0]->isDirty());
}

TEST_F(Children, AreAskedFromTheFileAtEachCall) {
  const auto before = site->buildings();
  addBuilding(L"Annex", site);
  const auto after = site->buildings();
  EXPECT_EQ(before.size(), 1U);
  EXPECT_EQ(after.size(), 2U);
  EXPECT_NE(after[1], before[0]) << "no object is shared between two calls";
}

TEST_F(Children, LeaveNoSessionBehind) {
  site->buildings();
  building->stories();
  EXPECT_FALSE(odb::session::has_current());
}

TEST_F(Children, HoldNoReferenceToTheParentAfterwards) {
  struct Watch : ObjectReactor {
    int deleted = 0;
    void onObjectDeleted(Object*) override { ++deleted; }
  } watch;
  auto asked = project.db->get<Site>(site->id());
  asked->addReactor(&watch);
  auto buildings = asked->buildings();
  asked.reset();
  EXPECT_EQ(watch.deleted, 0);
  buildings.clear();
  EXPECT_EQ(watch.deleted, 1);
}

TEST_F(Children, AreReadInATransactionOfTheHostToo) {
  Transaction transaction(project.db, Transaction::BeginCurrent);
  addBuilding(L"Annex", site);
  EXPECT_EQ(site->buildings().size(), 2U);
  EXPECT_FALSE(transaction.finalized());
  transaction.rollback();
  EXPECT_EQ(site->buildings().size(), 1U);
}

TEST_F(Children, AreReadWhileATransactionOfAnotherFileIsCurrent) {
  SampleProject other;
  Transaction transaction(other.db, Transaction::BeginCurrent);
  EXPECT_EQ(site->buildings().size(), 1U);
  EXPECT_EQ(&Transaction::current(), &transaction);
}

TEST_F(Children, AreCleanAndLinkedToTheFile) {
  const auto buildings = site->buildings();
  EXPECT_FALSE(buildings[0]->isDirty());
  EXPECT_EQ(buildings[0]->projectDb(), project.db);
  EXPECT_EQ(buildings[0]->id(), building->id());
  EXPECT_TRUE(*buildings[0] == *building);
}

TEST_F(Children, LeaveASessionOfTheHostCurrent) {
  odb::session session;
  EXPECT_EQ(site->buildings()[0]->site(), site);
  ASSERT_TRUE(odb::session::has_current());
  EXPECT_EQ(&odb::session::current(), &session);
}

}  // namespace
}  // namespace tessel::test
