// Copies within transactions of the host.

#include <gmock/gmock.h>

#include "operations/copying.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CopyTransaction : public Copying {
protected:
  CopyTransaction() {
    foreignStory(L"Ground", 0);
    useUnit(other, L"VOLUME", L"l", 0.001);
    startWatching();
  }
};

TEST_F(CopyTransaction, OfTheDestinationIsJoinedAndNothingIsCommitted) {
  const std::string before = bytesOf(project.path());
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Vale"));
  db->copyAll(other);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_THAT(sql.beginningWith("COMMIT"), IsEmpty());
  EXPECT_TRUE(bytesOf(project.path()) == before);
  EXPECT_EQ(db->count<Site>(), 2U) << "the transaction itself sees the copies";
  transaction.commit();
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill", "Vale"));
  EXPECT_EQ(rows("tessel_DefaultUnit"), 1);
}

TEST_F(CopyTransaction, OfTheDestinationThatIsRolledBackTakesAllCopiesAway) {
  const Unchanged destination(project);
  {
    const Transaction transaction(db, Transaction::BeginCurrent);
    db->copyAll(other);
    db->copyMeta(other);
  }
  EXPECT_EQ(db->count<Story>(), 0U);
}

TEST_F(CopyTransaction, OfTheDestinationGoesOnAfterAFailure) {
  db->save(Building::create(Site::create(L"Hill"), L"House"));
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Vale"));
  EXPECT_THROW(db->copyAll(other), ObjectNotUnique);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_FALSE(transaction.finalized());
  db->save(Site::create(L"Shore"));
  transaction.commit();
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill", "Shore", "Vale"));
}

// There is no savepoint around a copy as a whole.
TEST_F(CopyTransaction, OfTheDestinationKeepsWhatWasCopiedBeforeAFailure) {
  reactor.whenSaved = [](const Saved& saved) {
    if (saved.key.type == ObjectType::Story) throw std::domain_error("host");
  };
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THROW(db->copyAll(other), std::domain_error);
  transaction.commit();
  EXPECT_THAT(inFile("name", "Building"), ElementsAre("House"));
  EXPECT_THAT(inFile("name", "Story"), ElementsAre("Ground"));
  EXPECT_THAT(project.raw().rows("PRAGMA foreign_key_check"), IsEmpty());
}

TEST_F(CopyTransaction, OfTheDestinationThatIsNotCurrentIsNotJoined) {
  Transaction transaction(db, Transaction::Begin);
  db->copyAll(other);
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_EQ(rows("tessel_Story"), 1) << "committed in a transaction of its own";
  EXPECT_FALSE(transaction.finalized());
}

TEST_F(CopyTransaction, OfTheSourceIsSetAsideAndCurrentAgainAfterwards) {
  const Unchanged source(otherProject);
  Transaction transaction(other, Transaction::BeginCurrent);
  db->copyAll(other);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(rows("tessel_Story"), 1);
  EXPECT_EQ(other->count<Story>(), 1U);
  transaction.rollback();
}

TEST_F(CopyTransaction, OfTheSourceIsCurrentAgainAfterAFailure) {
  db->save(Site::create(L"Hill"));
  const Unchanged destination(project);
  Transaction transaction(other, Transaction::BeginCurrent);
  EXPECT_THROW(db->copyAll(other), ObjectNotUnique);
  EXPECT_EQ(&Transaction::current(), &transaction);
  reactor.otherwise([](ProjectDb::Reactor::ObjectInfo&) -> SaveResolution { throw std::domain_error("host"); });
  EXPECT_THROW(db->copyAll(other), std::domain_error);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_FALSE(transaction.finalized());
  transaction.commit();
}

TEST_F(CopyTransaction, OfTheSourceGoesOnWritingAfterwards) {
  Transaction transaction(other, Transaction::BeginCurrent);
  other->save(Site::create(L"Vale"));
  db->copyAll(other);
  other->save(Site::create(L"Shore"));
  transaction.commit();
  EXPECT_EQ(otherProject.count("tessel_Site"), 3);
}

// The copy reads the source in transactions of its own.
TEST_F(CopyTransaction, OfTheSourceThatIsNotCommittedIsNotSeen) {
  Transaction transaction(other, Transaction::BeginCurrent);
  other->save(Site::create(L"Vale"));
  db->copyAll<Site>(other);
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill"));
  transaction.commit();
}

TEST_F(CopyTransaction, OfAThirdFileIsSetAside) {
  SampleProject third;
  Transaction transaction(third.db, Transaction::BeginCurrent);
  third.db->save(Site::create(L"Vale"));
  db->copyAll(other);
  db->copyMeta(other);
  EXPECT_EQ(&Transaction::current(), &transaction);
  transaction.commit();
  EXPECT_EQ(third.count("tessel_Site"), 1);
  EXPECT_EQ(rows("tessel_Site"), 1);
}

TEST_F(CopyTransaction, TheReactorIsCalledWithinThatOfTheDestination) {
  reactor.otherwise(SaveResolution::Kept);
  db->save(Site::create(L"Hill"));
  Transaction transaction(db, Transaction::BeginCurrent);
  reactor.whenSaved = [&](const Saved&) { EXPECT_EQ(&Transaction::current(), &transaction); };
  db->copyAll(other);
  db->copyMeta(other);
  EXPECT_FALSE(reactor.saved.empty());
}

TEST_F(CopyTransaction, TheReactorMayReadBothFiles) {
  reactor.whenSaved = [&](const Saved& saved) {
    EXPECT_TRUE(Transaction::current().projectDb() == db);
    EXPECT_EQ(other->count<Story>(), 1U);
    EXPECT_EQ(db->count<Building>(), saved.key.type == ObjectType::Site ? 0U : 1U);
    EXPECT_TRUE(Transaction::current().projectDb() == db);
  };
  db->copyAll(other);
  EXPECT_EQ(rows("tessel_Story"), 1);
}

TEST_F(CopyTransaction, TwoCopiesShareThatOfTheHost) {
  SampleProject third;
  third.db->save(Site::create(L"Vale"));
  Transaction transaction(db, Transaction::BeginCurrent);
  db->copyMeta(other);
  db->copyAll(other);
  db->copyAll(third.db);
  EXPECT_EQ(rows("tessel_Site"), 0);
  transaction.commit();
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill", "Vale"));
}

}  // namespace
}  // namespace tessel::test
