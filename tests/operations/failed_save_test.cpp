// What remains when a save fails: in the file, and in memory.

#include <gmock/gmock.h>

#include <odb/exceptions.hxx>
#include <utf8.h>

#include <tessel/transaction.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A definition whose name is taken, with a unit that is new to the file.
class FailedSave : public ReactingProject {
protected:
  FailedSave() {
    db->save(PropertyDefinition::create(ns, L"Width"));
    incoming = PropertyDefinition::create(ns, L"Width");
    incoming->set_unit(unit);
    startWatching();
  }

  TsSmartPtr<PropertyNamespace> ns = db->save(PropertyNamespace::create(L"Common"));
  TsSmartPtr<Unit> unit = Unit::create(L"m", 1, db->get<Measure>(NameKey(L"LENGTH")));
  TsSmartPtr<PropertyDefinition> incoming;
};

TEST_F(FailedSave, OfItsOwnTakesTheReferencesBackToo) {
  EXPECT_THROW(db->save(incoming), ObjectNotUnique);
  EXPECT_EQ(rows("tessel_Unit"), 0);
  EXPECT_EQ(rows("tessel_PropertyDefinition"), 1);
}

TEST_F(FailedSave, WithinATransactionLeavesTheReferencesThere) {
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THROW(db->save(incoming), ObjectNotUnique);
  EXPECT_FALSE(transaction.finalized());
  transaction.commit();
  EXPECT_EQ(rows("tessel_Unit"), 1);
  EXPECT_EQ(rows("tessel_PropertyDefinition"), 1);
}

// Nothing rolls fields back: who holds such an object must drop it.
TEST_F(FailedSave, AReferenceThatWasTakenBackKeepsItsIdAndItsDatabase) {
  EXPECT_THROW(db->save(incoming), ObjectNotUnique);
  EXPECT_NE(unit->id(), 0U);
  EXPECT_EQ(unit->projectDb(), db);
  EXPECT_FALSE(unit->isDirty());
  EXPECT_EQ(incoming->id(), 0U);
  EXPECT_FALSE(incoming->projectDb());
  EXPECT_TRUE(incoming->isDirty());
}

TEST_F(FailedSave, TheReactorHasHeardOfTheReferences) {
  EXPECT_THROW(db->save(incoming), ObjectNotUnique);
  ASSERT_EQ(reactor.saved.size(), 1U);
  EXPECT_EQ(reactor.saved[0].key, keyOf(unit));
}

TEST_F(FailedSave, TheMappingIsNotTakenBack) {
  IdMapping mapping(db);
  EXPECT_THROW(db->save(incoming, mapping), ObjectNotUnique);
  EXPECT_TRUE(mapping.has({ObjectType::Unit, 0, nullptr}));
  EXPECT_FALSE(mapping.has({ObjectType::PropertyDefinition, 0, nullptr}));
}

// A refused insert of a spatial object has had an id for a moment.
TEST_F(FailedSave, ARefusedSpatialObjectHasNoId) {
  db->save(Site::create(L"Hill"));
  const auto site = Site::create(L"Hill");
  EXPECT_THROW(db->save(site), ObjectNotUnique);
  EXPECT_EQ(site->id(), 0U);
  site->set_name(L"Vale");
  EXPECT_EQ(db->save(site), site);
  EXPECT_EQ(rows("tessel_SpatialStructure"), 2);
}

TEST_F(FailedSave, WhatOnSavedThrowsEndsTheSave) {
  reactor.whenSaved = [](const Saved&) { throw std::domain_error("host"); };
  const auto site = Site::create(L"Hill");
  EXPECT_THROW(db->save(site), std::domain_error);
  EXPECT_EQ(rows("tessel_Site"), 0);
  EXPECT_FALSE(Transaction::hasCurrent());
}

// The entry is made before the reactor hears of the object.
TEST_F(FailedSave, WhatOnSavedThrowsLeavesTheEntryInTheMapping) {
  reactor.whenSaved = [](const Saved&) { throw std::domain_error("host"); };
  IdMapping mapping(db);
  const auto site = Site::create(L"Hill");
  EXPECT_THROW(db->save(site, mapping), std::domain_error);
  IdMapping::Value value{};
  ASSERT_TRUE(mapping.get({ObjectType::Site, 0, nullptr}, value));
  EXPECT_EQ(value.id, site->id());
  EXPECT_EQ(value.resolution, SaveResolution::Created);
}

TEST_F(FailedSave, WhatOnSavedThrowsForAReferenceEndsTheSaveBeforeTheObject) {
  reactor.whenSaved = [](const Saved& saved) {
    if (saved.key.type == ObjectType::Site) throw std::domain_error("host");
  };
  const auto building = Building::create(Site::create(L"Hill"), L"House");
  EXPECT_THROW(db->save(building), std::domain_error);
  EXPECT_EQ(building->id(), 0U);
  EXPECT_EQ(reactor.saved.size(), 1U);
}

TEST_F(FailedSave, WhatOnSavedThrowsWithinATransactionLeavesTheRow) {
  reactor.whenSaved = [](const Saved&) { throw std::domain_error("host"); };
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THROW(db->save(Site::create(L"Hill")), std::domain_error);
  EXPECT_FALSE(transaction.finalized());
  transaction.commit();
  EXPECT_EQ(rows("tessel_Site"), 1);
}

// onSaved comes before the commit.
TEST_F(FailedSave, OnSavedIsToldWithinTheTransaction) {
  long long committed = -1;
  bool hasCurrent = false;
  reactor.whenSaved = [&](const Saved&) {
    committed = rows("tessel_Site");
    hasCurrent = Transaction::hasCurrent();
  };
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(committed, 0);
  EXPECT_TRUE(hasCurrent);
  EXPECT_EQ(rows("tessel_Site"), 1);
}

TEST_F(FailedSave, ADanglingReferenceFailsAtTheCommit) {
  const auto building = Building::create(Site::create(), L"House");
  EXPECT_THROW(db->save(building), DatabaseException);
  EXPECT_EQ(rows("tessel_SpatialStructure"), 0);
}

TEST_F(FailedSave, TextThatIsNoUtf16IsRefusedAndLeavesNoTrace) {
  EXPECT_THROW(db->save(Site::create(OdString(u"\xD800", 1))), utf8::exception);
  EXPECT_EQ(rows("tessel_SpatialStructure"), 0);
  EXPECT_FALSE(Transaction::hasCurrent());
  Transaction transaction(db, Transaction::BeginCurrent);
  const auto bad = Site::create(L"Hill");
  bad->set_town(OdString(u"\xDC00x", 2));
  EXPECT_THROW(db->save(bad), utf8::exception);
  EXPECT_EQ(bad->id(), 0U);
  db->save(Site::create(L"Vale"));
  transaction.commit();
  EXPECT_THAT(project.raw().column("SELECT name FROM tessel_Site"), ElementsAre("Vale"));
  EXPECT_EQ(rows("tessel_SpatialStructure"), 1) << "the half of the refused row is taken back";
}

}  // namespace
}  // namespace tessel::test
