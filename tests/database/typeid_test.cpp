// Files in which the class of a spatial object is told wrongly. A row must never be read into an object of another class.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <odb/exceptions.hxx>
#include <odb/session.hxx>

#include <tessel/exceptions.h>
#include <tessel/project.h>
#include <tessel/project_db.h>
#include <tessel/spatial.h>
#include <tessel/transaction.h>

#include "database/files.h"
#include "support/printers.h"
#include "support/raw_file.h"
#include "support/recording_reactor.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A site (id 1) with a building (2) and a story (3), and beside them a whole site (4).
class Typeid : public ::testing::Test {
protected:
  Typeid() {
    db->save(Story::create(Building::create(Site::create(L"Hill"), L"House"), L"Ground", 0));
    db->save(Site::create(L"Vale"));
  }

  void lie(unsigned int id, const std::string& word) {
    RawFile(path).exec("UPDATE tessel_SpatialStructure SET typeid = '" + word + "' WHERE id = " + std::to_string(id));
  }

  template <typename T>
  std::vector<OdString> listed() {
    std::vector<TsSmartPtr<T>> objects;
    db->get(objects);
    std::vector<OdString> names;
    for (const auto& object : objects) names.push_back(object->name());
    return names;
  }

  TempFolder folder;
  std::string path = folder.path("house.tessel");
  std::shared_ptr<ProjectDb> db = ProjectDb::create(odPath(path));
  RecordingReactor reactor{db};

  NameKey hill{L"Hill"};
  NameObjectKey<Site> house{L"House", 1};
  NameObjectKey<Building> ground{L"Ground", 2};
};

// The word of another class: as if the row were missing.

class WordOfAnotherClass : public Typeid, public ::testing::WithParamInterface<const char*> {};

class SiteCalled : public WordOfAnotherClass {};
INSTANTIATE_TEST_SUITE_P(Words, SiteCalled, ::testing::Values("tessel::Building", "tessel::Story"));

TEST_P(SiteCalled, ByIdThereIsNoSuchRow) {
  lie(1, GetParam());
  EXPECT_THROW(db->get<Site>(1), odb::object_not_persistent);
  EXPECT_THROW(db->get<SpatialStructure>(1), odb::object_not_persistent);
  EXPECT_THROW(db->get<Building>(1), odb::object_not_persistent);
  EXPECT_THROW(db->get<Story>(1), odb::object_not_persistent);
}

TEST_P(SiteCalled, ByKeyTheRowIsPassedOverAndReported) {
  lie(1, GetParam());
  EXPECT_FALSE(db->get<Site>(hill));
  ASSERT_THAT(reactor.failedLoads, SizeIs(1));
  EXPECT_EQ(reactor.failedLoads[0].key, (ObjectKey{ObjectType::Site, 1}));
  EXPECT_EQ(reactor.failedLoads[0].name, L"Hill");
}

TEST_P(SiteCalled, AListLeavesTheRowOutAndReportsIt) {
  lie(1, GetParam());
  EXPECT_THAT(listed<Site>(), ElementsAre(L"Vale"));
  EXPECT_THAT(reactor.failedLoads, SizeIs(1));
}

TEST_P(SiteCalled, AListOfSpatialObjectsLeavesTheRowAndWhatRefersToItOut) {
  lie(1, GetParam());
  EXPECT_THAT(listed<SpatialStructure>(), ElementsAre(L"Vale"));
  ASSERT_THAT(reactor.failedLoads, SizeIs(3));
  EXPECT_EQ(reactor.failedLoads[0].name, L"SpatialStructure:1d");
}

TEST_P(SiteCalled, WhatRefersToTheRowCannotBeLoaded) {
  lie(1, GetParam());
  EXPECT_THROW(db->get<Building>(2), odb::object_not_persistent);
  EXPECT_THROW(db->get<Story>(3), odb::object_not_persistent);
  EXPECT_FALSE(db->get<Building>(house));
  EXPECT_THAT(listed<Building>(), IsEmpty());
  EXPECT_THAT(listed<Story>(), IsEmpty());
  EXPECT_THAT(reactor.failedLoads, SizeIs(3));
}

TEST_P(SiteCalled, InASessionItIsTheSame) {
  lie(1, GetParam());
  const odb::session session;
  EXPECT_THROW(db->get<Site>(1), odb::object_not_persistent);
  EXPECT_THAT(listed<SpatialStructure>(), ElementsAre(L"Vale"));
  EXPECT_THROW(db->get<Building>(2), odb::object_not_persistent);
  EXPECT_THROW(db->get<Site>(1), odb::object_not_persistent);
  EXPECT_EQ(db->get<Site>(4)->name(), L"Vale");
}

TEST_P(SiteCalled, AProjectOfThatSiteCannotBeOpened) {
  RawFile(path).exec("UPDATE tessel_Project SET site_id = 1");
  lie(1, GetParam());
  EXPECT_THROW(ProjectDb::open(odPath(path), false), odb::object_not_persistent);
  EXPECT_THROW(ProjectDb::open(odPath(path), true), odb::object_not_persistent);
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_P(SiteCalled, TheObjectInMemoryCanStillBeSaved) {
  const auto site = db->get<Site>(1);
  lie(1, GetParam());
  site->set_town(L"Bergen");
  EXPECT_EQ(db->save(site), site);
  EXPECT_EQ(RawFile(path).scalarText("SELECT town FROM tessel_Site WHERE id = 1"), "Bergen");
}

TEST_P(SiteCalled, AClashWithTheRowThatIsToBeKeptFindsNothing) {
  lie(1, GetParam());
  reactor.otherwise(SaveResolution::Kept);
  EXPECT_THROW(db->save(Site::create(L"Hill")), ObjectNotFound);
  EXPECT_EQ(RawFile(path).count("tessel_Site"), 2);
}

TEST_P(SiteCalled, ACountCountsTheRow) {
  lie(1, GetParam());
  EXPECT_EQ(db->count<Site>(), 2U);
  EXPECT_EQ(db->count<SpatialStructure>(), 4U);
}

class BuildingCalled : public WordOfAnotherClass {};
INSTANTIATE_TEST_SUITE_P(Words, BuildingCalled, ::testing::Values("tessel::Site", "tessel::Story"));

TEST_P(BuildingCalled, IsAsIfTheRowWereMissing) {
  lie(2, GetParam());
  EXPECT_THROW(db->get<Building>(2), odb::object_not_persistent);
  EXPECT_THROW(db->get<SpatialStructure>(2), odb::object_not_persistent);
  EXPECT_FALSE(db->get<Building>(house));
  EXPECT_THAT(listed<Building>(), IsEmpty());
  EXPECT_THROW(db->get<Story>(3), odb::object_not_persistent);
  EXPECT_FALSE(db->get<Story>(ground));
  EXPECT_THAT(listed<Story>(), IsEmpty());
  EXPECT_THAT(listed<Site>(), ElementsAre(L"Hill", L"Vale"));
}

TEST_P(BuildingCalled, OfItsSiteNoneIsListed) {
  const auto site = db->get<Site>(1);
  lie(2, GetParam());
  EXPECT_THAT(site->buildings(), IsEmpty());
}

class StoryCalled : public WordOfAnotherClass {};
INSTANTIATE_TEST_SUITE_P(Words, StoryCalled, ::testing::Values("tessel::Site", "tessel::Building"));

TEST_P(StoryCalled, IsAsIfTheRowWereMissing) {
  lie(3, GetParam());
  EXPECT_THROW(db->get<Story>(3), odb::object_not_persistent);
  EXPECT_THROW(db->get<SpatialStructure>(3), odb::object_not_persistent);
  EXPECT_FALSE(db->get<Story>(ground));
  EXPECT_THAT(listed<Story>(), IsEmpty());
  EXPECT_THAT(listed<Building>(), ElementsAre(L"House"));
  EXPECT_EQ(db->get<Building>(2)->stories().size(), 0U);
}

// A row in two tables, so that the other class finds something to read.
TEST_F(Typeid, ARowThatIsInBothTablesIsReadAsWhatItIsCalled) {
  RawFile(path).exec("INSERT INTO tessel_Building (id, site_id, name) VALUES (1, 4, 'Both')");
  lie(1, "tessel::Building");
  EXPECT_THROW(db->get<Site>(1), odb::object_not_persistent);
  const auto building = db->get<Building>(1);
  EXPECT_EQ(building->name(), L"Both");
  EXPECT_EQ(building->site()->name(), L"Vale");
  EXPECT_EQ(db->get<SpatialStructure>(1)->tesselType(), ObjectType::Building);
  EXPECT_THAT(listed<Site>(), ElementsAre(L"Vale"));
}

TEST_F(Typeid, ABuildingThatIsItsOwnSiteCannotBeLoaded) {
  RawFile(path).exec("UPDATE tessel_Building SET site_id = 2 WHERE id = 2");
  EXPECT_THROW(db->get<Building>(2), odb::object_not_persistent);
  EXPECT_THAT(listed<Building>(), IsEmpty());
  const odb::session session;
  EXPECT_THROW(db->get<Building>(2), odb::object_not_persistent);
}

// A word that is no class at all: the persistence layer cannot go on.

class UnknownWord : public WordOfAnotherClass {};
INSTANTIATE_TEST_SUITE_P(Words, UnknownWord,
                         ::testing::Values("", "tessel::SpatialStructure", "tessel::Space", "Site", "tessel::site",
                                           "tessel::Measure", "tessel::Site ", "x''y"));

TEST_P(UnknownWord, IsADatabaseException) {
  lie(1, GetParam());
  std::vector<TsSmartPtr<Site>> sites;
  std::vector<TsSmartPtr<SpatialStructure>> objects;
  EXPECT_THROW(db->get<Site>(1), DatabaseException);
  EXPECT_THROW(db->get<SpatialStructure>(1), DatabaseException);
  EXPECT_THROW(db->get<Site>(hill), DatabaseException);
  EXPECT_THROW(db->get(sites), DatabaseException);
  EXPECT_THROW(db->get(objects), DatabaseException);
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_P(UnknownWord, OfAReferenceIsADatabaseException) {
  lie(1, GetParam());
  std::vector<TsSmartPtr<Building>> buildings;
  EXPECT_THROW(db->get<Building>(2), DatabaseException);
  EXPECT_THROW(db->get<Building>(house), DatabaseException);
  EXPECT_THROW(db->get(buildings), DatabaseException);
  EXPECT_THROW(db->get<Story>(3), DatabaseException);
}

TEST_P(UnknownWord, OfTheSiteOfTheProjectPassesAnExceptionOfOdb) {
  RawFile(path).exec("UPDATE tessel_Project SET site_id = 1");
  lie(1, GetParam());
  EXPECT_THROW(ProjectDb::open(odPath(path), false), odb::exception);
  EXPECT_FALSE(isOpen(folder.path("none")));
}

TEST_P(UnknownWord, LeavesTheOtherRowsAlone) {
  lie(1, GetParam());
  EXPECT_EQ(db->get<Site>(4)->name(), L"Vale");
  EXPECT_EQ(db->get<Site>(NameKey(L"Vale"))->name(), L"Vale");
  EXPECT_EQ(db->count<Site>(), 2U);
}

TEST_P(UnknownWord, WithinATransactionLeavesIt) {
  lie(1, GetParam());
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THROW(db->get<Site>(1), DatabaseException);
  EXPECT_FALSE(transaction.finalized());
  db->save(Site::create(L"Shore"));
  transaction.commit();
  EXPECT_EQ(RawFile(path).count("tessel_Site"), 3);
}

// Half of a row.

TEST_F(Typeid, ARowWithoutItsRootIsADatabaseExceptionOrMissing) {
  RawFile(path).exec("DELETE FROM tessel_SpatialStructure WHERE id = 1");
  std::vector<TsSmartPtr<Site>> sites;
  EXPECT_THROW(db->get<Site>(1), DatabaseException);
  EXPECT_THROW(db->get<Site>(hill), DatabaseException);
  EXPECT_THROW(db->get(sites), DatabaseException);
  EXPECT_THROW(db->get<SpatialStructure>(1), odb::object_not_persistent);
  EXPECT_THROW(db->get<Building>(2), odb::object_not_persistent);
}

TEST_F(Typeid, ARootWithoutItsRowIsMissing) {
  RawFile(path).exec("DELETE FROM tessel_Site WHERE id = 1");
  EXPECT_THROW(db->get<Site>(1), odb::object_not_persistent);
  EXPECT_THROW(db->get<SpatialStructure>(1), odb::object_not_persistent);
  EXPECT_FALSE(db->get<Site>(hill));
  EXPECT_THAT(listed<Site>(), ElementsAre(L"Vale"));
  EXPECT_THAT(reactor.failedLoads, IsEmpty()) << "no row of a site was found";
  EXPECT_THAT(listed<SpatialStructure>(), ElementsAre(L"Vale"));
  EXPECT_THROW(db->get<Building>(2), odb::object_not_persistent);
}

}  // namespace
}  // namespace tessel::test
