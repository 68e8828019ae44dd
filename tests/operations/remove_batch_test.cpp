#include <functional>
#include <iterator>
#include <stdexcept>

#include <gtest/gtest.h>

#include "operations/removal.h"

namespace tessel::test {
namespace {

/// One row of each of the ten classes, and no others. Each can be removed once those before it in `order` are gone.
struct OneOfEach {
  explicit OneOfEach(const std::shared_ptr<ProjectDb>& db) {
    db->purge();  // the measures of a new file
    db->save(story);
    db->save(type);
    db->save(property);
    db->save(value);
    db->save(set);
  }

  std::set<ObjectKey> keys() const {
    return {keyOf(story),
            keyOf(story->building()),
            keyOf(story->building()->site()),
            keyOf(type),
            keyOf(property),
            keyOf(value),
            keyOf(set),
            keyOf(ns),
            keyOf(unit),
            keyOf(unit->measure())};
  }

  TsSmartPtr<PropertyNamespace> ns = makeSample<PropertyNamespace>();
  TsSmartPtr<Unit> unit = makeSample<Unit>();
  TsSmartPtr<Story> story = makeSample<Story>();
  TsSmartPtr<EntityType> type = makeSample<EntityType>();
  TsSmartPtr<PropertyDefinition> property = withUnit(PropertyDefinition::create(ns, L"Width"));
  TsSmartPtr<ValueDefinition> value = withUnit(ValueDefinition::create(ns, L"Area"));
  TsSmartPtr<PropertySet> set = PropertySet::create(ns, L"Door");

private:
  template <typename T>
  TsSmartPtr<T> withUnit(const TsSmartPtr<T>& definition) {
    definition->set_unit(unit);
    return definition;
  }
};

const std::vector<ObjectType> order = {
  ObjectType::Story,       ObjectType::Building,           ObjectType::Site,
  ObjectType::EntityType,  ObjectType::PropertyDefinition, ObjectType::ValueDefinition,
  ObjectType::PropertySet, ObjectType::PropertyNamespace,  ObjectType::Unit,
  ObjectType::Measure,
};

class RemovedBatch : public Removal {
protected:
  std::vector<ObjectType> offeredTypes() const {
    std::vector<ObjectType> types;
    for (const ObjectKey& key : offered()) types.push_back(key.type);
    return types;
  }

  void expectAllRemoved(const Results& results) const {
    EXPECT_EQ(results.size(), 10U);
    for (const auto& [key, result] : results) EXPECT_EQ(result, removed) << ::testing::PrintToString(key);
    for (const char* table : {"SpatialStructure", "Site", "Building", "Story", "Measure", "Unit", "EntityType",
                              "PropertyNamespace", "PropertyDefinition", "ValueDefinition", "PropertySet"}) {
      EXPECT_EQ(project.count(std::string("tessel_") + table), 0) << table;
    }
  }

  /// Saves empty sites, which nothing refers to.
  std::set<unsigned int> sites(int count) {
    std::set<unsigned int> ids;
    for (int i = 1; i <= count; ++i) ids.insert(project.db->save(makeSample<Site>(i))->id());
    reactor.clear();
    return ids;
  }
};

TEST_F(RemovedBatch, OfAllClassesGoesInAFixedOrder) {
  const OneOfEach each(project.db);
  reactor.clear();
  Results results;
  project.db->remove(each.keys(), results);
  EXPECT_EQ(offeredTypes(), order);
  expectAllRemoved(results);
}

TEST_F(RemovedBatch, GoesInTheOrderOfTheIds) {
  const auto ids = sites(4);
  project.db->remove<Site>(ids);
  std::vector<ObjectKey> ascending;
  for (const unsigned int id : ids) ascending.push_back({ObjectType::Site, id});
  EXPECT_EQ(offered(), ascending);
}

TEST_F(RemovedBatch, PassesOverKeysOfNoClassThatIsRemoved) {
  const auto story = project.db->save(makeSample<Story>());
  reactor.clear();
  Results results;
  for (const int type : {0, 1, 2, 13, 14, -1, 1000}) {
    project.db->remove({ObjectKey{static_cast<ObjectType>(type), story->id()}}, results);
  }
  EXPECT_TRUE(results.empty());
  EXPECT_TRUE(reactor.removals.empty());
  EXPECT_TRUE(hasRow("tessel_Story", story->id()));
}

TEST_F(RemovedBatch, OfNothingDoesNothing) {
  Results results;
  project.db->remove<Site>(std::set<unsigned int>(), results);
  project.db->remove(std::set<ObjectKey>(), results);
  project.db->purge(std::set<ObjectType>(), results);
  EXPECT_TRUE(results.empty());
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(RemovedBatch, LeavesARefusedRowAndRemovesTheOthers) {
  const auto ids = sites(3);
  const ObjectKey first{ObjectType::Site, *ids.begin()};
  const ObjectKey second{ObjectType::Site, *std::next(ids.begin())};
  const ObjectKey third{ObjectType::Site, *ids.rbegin()};
  refuse(second);
  Results results;
  project.db->remove<Site>(ids, results);
  EXPECT_EQ(results, (Results{{first, removed}, {second, refused}, {third, removed}}));
  EXPECT_EQ(idsOf<Site>(), std::set<unsigned int>{second.id});
}

TEST_F(RemovedBatch, AddsItsOutcomesToThoseThatAreThere) {
  const auto ids = sites(1);
  const ObjectKey site{ObjectType::Site, *ids.begin()};
  const ObjectKey other{ObjectType::Story, 99};
  Results results = {{other, refused}, {site, refused}};
  project.db->remove<Site>(ids, results);
  EXPECT_EQ(results, (Results{{other, refused}, {site, removed}}));
}

TEST_F(RemovedBatch, CommitsEachRowBeforeTheNextIsOffered) {
  const auto ids = sites(3);
  std::vector<long long> inFile;
  reactor.whenRemoved = [&](const auto&) {
    inFile.push_back(project.count("tessel_Site"));
    return RemoveResolution::Remove;
  };
  project.db->remove<Site>(ids);
  EXPECT_EQ(inFile, (std::vector<long long>{3, 2, 1}));
}

TEST_F(RemovedBatch, CommitsRefusedRowsOnlyWithTheNextOne) {
  const auto ids = sites(3);
  refuse({ObjectType::Site, *ids.begin()});
  sql.clear();
  project.db->remove<Site>(ids);
  // One for each erased row, and one for the transaction that the batch has begun last.
  EXPECT_EQ(sql.beginningWith("COMMIT").size(), 3U);
}

TEST_F(RemovedBatch, StopsAtARowThatDoesNotExistAndKeepsWhatIsDone) {
  auto ids = sites(3);
  const unsigned int second = *std::next(ids.begin());
  project.db->remove<Site>(second);
  reactor.clear();
  Results results;
  EXPECT_THROW(project.db->remove<Site>(ids, results), DatabaseException);
  EXPECT_EQ(results, (Results{{{ObjectType::Site, *ids.begin()}, removed}}));
  EXPECT_EQ(idsOf<Site>(), std::set<unsigned int>{*ids.rbegin()});
  EXPECT_EQ(reactor.removals.size(), 2U);
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(RemovedBatch, StopsWhereTheReactorThrowsAndKeepsWhatIsDone) {
  const auto ids = sites(3);
  reactor.whenRemoved = [&](const RecordingReactor::Removal& removal) {
    if (removal.key.id != *ids.begin()) throw std::runtime_error("mine");
    return RemoveResolution::Remove;
  };
  Transaction transaction(project.db, Transaction::BeginCurrent);
  Results results;
  EXPECT_THROW(project.db->remove<Site>(ids, results), std::runtime_error);
  EXPECT_EQ(results, (Results{{{ObjectType::Site, *ids.begin()}, removed}}));
  EXPECT_FALSE(transaction.finalized());
  transaction.rollback();
  EXPECT_EQ(idsOf<Site>().size(), 2U);
}

TEST_F(RemovedBatch, SetsATransactionOfAnotherFileAsideAndPutsItBack) {
  SampleProject other;
  const auto ids = sites(3);
  const auto site = project.db->get<Site>(*ids.begin());
  Transaction transaction(other.db, Transaction::BeginCurrent);
  other.db->save(makeSample<Site>());
  project.db->remove(site);
  EXPECT_EQ(&Transaction::current(), &transaction);
  project.db->remove<Site>(std::set<unsigned int>{*ids.rbegin()});
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(other.count("tessel_Site"), 0) << "nothing of the other file is committed";
  transaction.commit();
  EXPECT_EQ(other.count("tessel_Site"), 1);
  EXPECT_EQ(project.count("tessel_Site"), 1);
}

TEST_F(RemovedBatch, OfAFileForReadingIsADatabaseException) {
  const auto ids = sites(2);
  const auto readOnly = ProjectDb::open(OdString::fromUtf8(project.path()), true);
  EXPECT_THROW(readOnly->remove<Site>(ids), DatabaseException);
  EXPECT_THROW(readOnly->remove<Site>(*ids.begin()), DatabaseException);
  EXPECT_THROW(readOnly->purge(), DatabaseException);
  EXPECT_EQ(project.count("tessel_Site"), 2);
}

class Purge : public RemovedBatch {};

TEST_F(Purge, OfAnEmptyFileHasNoOutcomes) {
  project.raw().exec("DELETE FROM tessel_Measure");
  Results results;
  project.db->purge(results);
  EXPECT_TRUE(results.empty());
  project.db->purge<Site>(results);
  project.db->purge<SpatialStructure>(results);
  EXPECT_TRUE(results.empty());
  EXPECT_TRUE(reactor.removals.empty());
}

TEST_F(Purge, OfAllClassesGoesInTheFixedOrder) {
  const OneOfEach each(project.db);
  reactor.clear();
  Results results;
  project.db->purge(results);
  EXPECT_EQ(offeredTypes(), order);
  expectAllRemoved(results);
}

// Entity types and definitions go before the sets that list them, so what a set lists is in the way.
TEST_F(Purge, OfAllClassesStopsAtWhatASetLists) {
  const OneOfEach each(project.db);
  each.set->append_property_definition(each.property);
  each.set->save();
  Results results;
  EXPECT_THROW(project.db->purge(results), DatabaseException);
  EXPECT_EQ(results.size(), 4U);
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 0) << "went before";
  EXPECT_EQ(project.db->count<EntityType>(), 0U);
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 1U);
  EXPECT_EQ(project.db->count<ValueDefinition>(), 1U);
  EXPECT_EQ(project.db->count<PropertySet>(), 1U);
}

TEST_F(Purge, WithoutResultsRemovesAll) {
  project.db->save(makeSample<Story>());
  project.db->purge();
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 0);
  EXPECT_EQ(project.count("tessel_Measure"), 0);
}

TEST_F(Purge, OfSomeTypesLeavesTheOthers) {
  const auto story = project.db->save(makeSample<Story>());
  project.db->save(makeSample<EntityType>());
  reactor.clear();
  Results results;
  project.db->purge({ObjectType::Building, ObjectType::Story}, results);
  EXPECT_EQ(offered(), (std::vector<ObjectKey>{keyOf(story), keyOf(story->building())}));
  EXPECT_EQ(results.size(), 2U);
  EXPECT_EQ(project.db->count<Site>(), 1U);
  EXPECT_EQ(project.db->count<EntityType>(), 1U);
  project.db->purge(std::set<ObjectType>{ObjectType::EntityType});
  EXPECT_EQ(project.db->count<EntityType>(), 0U);
}

TEST_F(Purge, OfTypesWithoutAClassHasNoEffect) {
  project.db->save(makeSample<Story>());
  reactor.clear();
  Results results;
  project.db->purge({ObjectType::SpatialStructure, ObjectType::AbstractDefinition, static_cast<ObjectType>(0),
                     static_cast<ObjectType>(1), static_cast<ObjectType>(77)},
                    results);
  EXPECT_TRUE(results.empty());
  EXPECT_TRUE(reactor.removals.empty());
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 3);
}

TEST_F(Purge, LeavesRefusedRowsAndWhatNeedsThem) {
  const auto kept = project.db->save(makeSample<Story>(1));
  project.db->save(makeSample<Story>(2));
  reactor.whenRemoved = [](const RecordingReactor::Removal& removal) {
    return removal.key.type == ObjectType::Story ? RemoveResolution::Refuse : RemoveResolution::Remove;
  };
  Results results;
  project.db->purge<Story>(results);
  EXPECT_EQ(results.size(), 2U);
  for (const auto& [key, result] : results) EXPECT_EQ(result, refused);
  EXPECT_EQ(project.db->count<Story>(), 2U);
  EXPECT_THROW(project.db->purge(), DatabaseException) << "the buildings are in use";
  EXPECT_TRUE(hasRow("tessel_Building", kept->building()->id()));
}

TEST_F(Purge, LeavesTheTransactionOfTheHostLiveInEachForm) {
  const std::vector<std::function<void()>> forms = {
    [&] { project.db->purge<Site>(); },
    [&] { project.db->purge(std::set<ObjectType>{ObjectType::Site}); },
    [&] { project.db->purge(); },
  };
  for (const auto& purge : forms) {
    Transaction transaction(project.db, Transaction::BeginCurrent);
    project.db->save(makeSample<Site>());
    purge();
    ASSERT_FALSE(transaction.finalized());
    EXPECT_EQ(&Transaction::current(), &transaction);
    project.db->save(makeSample<Building>());
    transaction.rollback();
    EXPECT_EQ(project.count("tessel_SpatialStructure"), 0);
  }
}

TEST_F(Purge, SeesWhatTheHostHasNotCommittedYet) {
  Transaction transaction(project.db, Transaction::BeginCurrent);
  const auto site = project.db->save(makeSample<Site>());
  Results results;
  project.db->purge<Site>(results);
  EXPECT_EQ(results, (Results{{keyOf(site), removed}}));
}

}  // namespace
}  // namespace tessel::test
