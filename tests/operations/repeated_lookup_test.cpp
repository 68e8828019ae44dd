// Look-ups by key, whose statements are kept and run again with other keys.

#include <functional>
#include <thread>

#include <gmock/gmock.h>

#include <odb/exceptions.hxx>

#include <tessel/transaction.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RepeatedLookup : public TwoProjects {
protected:
  bool has(const wchar_t* name) { return bool(db->get<Site>(NameKey(name))); }

  TsSmartPtr<Site> hill = db->save(Site::create(L"Hill"));
  TsSmartPtr<Site> vale = db->save(Site::create(L"Vale"));
};

TEST_F(RepeatedLookup, EachRunAsksForItsOwnKey) {
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(db->get<Site>(NameKey(L"Hill"))->id(), hill->id());
    EXPECT_EQ(db->get<Site>(NameKey(L"Vale"))->id(), vale->id());
    EXPECT_FALSE(db->get<Site>(NameKey(L"Shore")));
    EXPECT_FALSE(db->get<Site>(NameKey(L"")));
  }
}

TEST_F(RepeatedLookup, KeysOfAllLengthsFollowOneAnother) {
  const OdString longName = OdString::fromUtf8(std::string(100000, 'x'));
  db->save(Site::create(longName));
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(has(L"Hill"));
    EXPECT_EQ(db->get<Site>(NameKey(longName))->name(), longName);
    EXPECT_FALSE(db->get<Site>(NameKey(longName + OdString(L"x"))));
    EXPECT_TRUE(has(L"Vale"));
  }
}

TEST_F(RepeatedLookup, AKeyMayBeATemporary) {
  for (int i = 0; i < 3; ++i) {
    const OdString name = OdString(L"Hi") + OdString(L"ll");
    EXPECT_TRUE(db->get<Site>(NameKey(name)));
  }
}

TEST_F(RepeatedLookup, AKeyThatIsNoTextLeavesTheStatementInOrder) {
  EXPECT_TRUE(has(L"Hill"));
  EXPECT_THROW(db->get<Site>(NameKey(OdString(u"\xD800", 1))), std::exception);
  EXPECT_TRUE(has(L"Hill"));
  EXPECT_FALSE(has(L"Shore"));
}

TEST_F(RepeatedLookup, ClassesDoNotShareTheirStatements) {
  const auto building = db->save(Building::create(hill, L"Hill"));
  const auto story = db->save(Story::create(building, L"Hill", 0));
  db->save(Measure::create(L"Hill", 1, 0, 0, 0, 0, 0, 0));
  db->save(EntityType::create(L"Hill"));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(db->get<Site>(NameKey(L"Hill"))->id(), hill->id());
    EXPECT_EQ(db->get<Building>(NameObjectKey<Site>(L"Hill", hill->id()))->id(), building->id());
    EXPECT_EQ(db->get<Story>(NameObjectKey<Building>(L"Hill", building->id()))->id(), story->id());
    EXPECT_TRUE(db->get<Measure>(NameKey(L"Hill")));
    EXPECT_TRUE(db->get<EntityType>(NameKey(L"Hill")));
    EXPECT_FALSE(db->get<Unit>(NameKey(L"Hill")));
    EXPECT_FALSE(db->get<PropertyNamespace>(NameKey(L"Hill")));
  }
}

TEST_F(RepeatedLookup, TheOwnerOfTheKeyChangesToo) {
  const auto onHill = db->save(Building::create(hill, L"House"));
  const auto inVale = db->save(Building::create(vale, L"House"));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(db->get<Building>(NameObjectKey<Site>(L"House", hill->id()))->id(), onHill->id());
    EXPECT_EQ(db->get<Building>(NameObjectKey<Site>(L"House", vale->id()))->id(), inVale->id());
    EXPECT_FALSE(db->get<Building>(NameObjectKey<Site>(L"House", 99)));
  }
}

// Transactions.

TEST_F(RepeatedLookup, WithinOneTransactionChangesAreSeen) {
  const Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_FALSE(has(L"Shore"));
  const auto shore = db->save(Site::create(L"Shore"));
  EXPECT_TRUE(has(L"Shore"));
  shore->set_name(L"Beach");
  db->save(shore);
  EXPECT_FALSE(has(L"Shore"));
  EXPECT_TRUE(has(L"Beach"));
}

TEST_F(RepeatedLookup, AfterARollbackWhatWasTakenBackIsNotFound) {
  for (int i = 0; i < 3; ++i) {
    Transaction transaction(db, Transaction::BeginCurrent);
    db->save(Site::create(L"Shore"));
    EXPECT_TRUE(has(L"Shore"));
    transaction.rollback();
    EXPECT_FALSE(has(L"Shore"));
    EXPECT_TRUE(has(L"Hill"));
  }
}

TEST_F(RepeatedLookup, AfterARollbackOfTheFirstUseItWorks) {
  {
    const auto fresh = ProjectDb::open(OdString::fromUtf8(project.path()), false);
    Transaction transaction(fresh, Transaction::BeginCurrent);
    EXPECT_TRUE(fresh->get<Site>(NameKey(L"Hill")));
    transaction.rollback();
    EXPECT_TRUE(fresh->get<Site>(NameKey(L"Vale")));
    EXPECT_FALSE(fresh->get<Site>(NameKey(L"Shore")));
  }
}

TEST_F(RepeatedLookup, ATransactionOfTheSameHandleBesideItHasStatementsOfItsOwn) {
  EXPECT_TRUE(has(L"Hill"));
  Transaction first(db, Transaction::BeginCurrent);
  EXPECT_TRUE(has(L"Hill"));
  Transaction::clearCurrent();
  EXPECT_TRUE(has(L"Vale")) << "over a second connection";
  first.makeCurrent();
  EXPECT_TRUE(has(L"Vale"));
  EXPECT_FALSE(has(L"Shore"));
}

TEST_F(RepeatedLookup, AClosedHandleTakesItsStatementsAlong) {
  for (int i = 0; i < 3; ++i) {
    project.reopen();
    EXPECT_TRUE(has(L"Hill"));
    EXPECT_FALSE(has(L"Shore"));
  }
}

// Changes from outside.

TEST_F(RepeatedLookup, AChangeOfTheSchemaThatLeavesTheColumnsDoesNotMatter) {
  EXPECT_TRUE(has(L"Hill"));
  project.raw().exec("CREATE TABLE notes (text)");
  EXPECT_TRUE(has(L"Hill"));
  project.raw().exec("CREATE INDEX town ON tessel_Site (town)");
  EXPECT_TRUE(has(L"Vale"));
  project.raw().exec("ALTER TABLE tessel_Site ADD COLUMN later TEXT");
  EXPECT_TRUE(has(L"Hill"));
  project.raw().exec("ANALYZE; VACUUM");
  EXPECT_TRUE(has(L"Vale"));
  EXPECT_FALSE(has(L"Shore"));
}

TEST_F(RepeatedLookup, AnotherConnectionsRowsAreSeen) {
  EXPECT_FALSE(has(L"Shore"));
  project.raw().exec("UPDATE tessel_Site SET name = 'Shore' WHERE name = 'Hill'");
  EXPECT_TRUE(has(L"Shore"));
  EXPECT_FALSE(has(L"Hill"));
}

TEST_F(RepeatedLookup, AMissingTableIsADatabaseExceptionAndWorksAgainLater) {
  EXPECT_TRUE(has(L"Hill"));
  project.raw().exec("ALTER TABLE tessel_Site RENAME TO away");
  EXPECT_THROW(has(L"Hill"), DatabaseException);
  EXPECT_THROW(has(L"Hill"), DatabaseException);
  project.raw().exec("ALTER TABLE away RENAME TO tessel_Site");
  EXPECT_TRUE(has(L"Hill"));
}

TEST_F(RepeatedLookup, AMissingTableAtTheFirstUseWorksAgainLater) {
  project.raw().exec("ALTER TABLE tessel_EntityType RENAME TO away");
  EXPECT_THROW(db->get<EntityType>(NameKey(L"Door")), DatabaseException);
  project.raw().exec("ALTER TABLE away RENAME TO tessel_EntityType");
  EXPECT_FALSE(db->get<EntityType>(NameKey(L"Door")));
  db->save(EntityType::create(L"Door"));
  EXPECT_TRUE(db->get<EntityType>(NameKey(L"Door")));
}

TEST_F(RepeatedLookup, ALockedFileWorksAgainLater) {
  EXPECT_TRUE(has(L"Hill"));
  RawFile blocker = project.raw();
  blocker.exec("BEGIN EXCLUSIVE");
  EXPECT_THROW(has(L"Hill"), DatabaseException);
  blocker.exec("ROLLBACK");
  EXPECT_TRUE(has(L"Hill"));
}

// Nested use.

TEST_F(RepeatedLookup, NestedUseByAReactorFindsItsOwn) {
  db->save(Site::create(L"Hill 2"));
  reactor.answer([this](ProjectDb::Reactor::ObjectInfo& info) {
    EXPECT_FALSE(info.setName(L"Hill 2"));
    EXPECT_TRUE(has(L"Vale"));
    EXPECT_FALSE(info.setName(L"Vale"));
    EXPECT_FALSE(has(L"Hill 3"));
    EXPECT_TRUE(info.setName(L"Hill 3"));
    return SaveResolution::Renamed;
  });
  EXPECT_EQ(db->save(Site::create(L"Hill"))->name(), L"Hill 3");
  EXPECT_TRUE(has(L"Hill 3"));
}

TEST_F(RepeatedLookup, AListInBetweenDoesNotDisturb) {
  db->save(Building::create(hill, L"House"));
  std::vector<TsSmartPtr<Site>> sites;
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(has(L"Hill"));
    db->get(sites);
    EXPECT_FALSE(has(L"Shore"));
    EXPECT_EQ(hill->buildings().size(), 1U);
    EXPECT_TRUE(has(L"Vale"));
  }
  EXPECT_EQ(sites.size(), 6U);
}

// Several databases.

TEST_F(RepeatedLookup, TwoDatabasesTakeTurns) {
  other->save(Site::create(L"Shore"));
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(has(L"Hill"));
    EXPECT_FALSE(has(L"Shore"));
    EXPECT_TRUE(other->get<Site>(NameKey(L"Shore")));
    EXPECT_FALSE(other->get<Site>(NameKey(L"Hill")));
  }
}

TEST_F(RepeatedLookup, TwoDatabasesTakeTurnsWithinATransactionOfOne) {
  other->save(Site::create(L"Shore"));
  const Transaction transaction(db, Transaction::BeginCurrent);
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(has(L"Hill"));
    EXPECT_TRUE(other->get<Site>(NameKey(L"Shore")));
    EXPECT_FALSE(has(L"Shore"));
    EXPECT_FALSE(other->get<Site>(NameKey(L"Hill")));
  }
}

TEST_F(RepeatedLookup, TwoThreadsUseTwoHandlesOnOneFile) {
  const auto work = [this] {
    const auto handle = ProjectDb::open(OdString::fromUtf8(project.path()), true);
    for (int i = 0; i < 200; ++i) {
      ASSERT_TRUE(handle->get<Site>(NameKey(L"Hill")));
      ASSERT_FALSE(handle->get<Site>(NameKey(L"Shore")));
      ASSERT_TRUE(handle->get<Measure>(NameKey(L"LENGTH")));
      ASSERT_EQ(handle->count<Site>(), 2U);
    }
  };
  std::thread first(work), second(work);
  first.join();
  second.join();
}

TEST_F(RepeatedLookup, OneHandleServesThreadsOneAfterTheOther) {
  EXPECT_TRUE(has(L"Hill"));
  std::thread([this] {
    EXPECT_TRUE(has(L"Hill"));
    EXPECT_FALSE(has(L"Shore"));
  }).join();
  EXPECT_TRUE(has(L"Vale"));
}

// What it is for.

TEST_F(RepeatedLookup, AnExistingNameIsFoundWithoutBuildingAnObject) {
  reactor.otherwise(SaveResolution::Created);
  startWatching();
  EXPECT_THROW(db->save(Site::create(L"Hill")), ObjectNotUnique);
  for (const std::string& statement : sql.beginningWith("SELECT")) {
    EXPECT_THAT(statement, ::testing::StartsWith("SELECT \"tessel_Site\".\"id\" FROM \"tessel_Site\""));
  }
  EXPECT_EQ(sql.beginningWith("SELECT").size(), 6U);
}

}  // namespace
}  // namespace tessel::test
