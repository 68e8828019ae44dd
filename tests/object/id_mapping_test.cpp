#include <iterator>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

namespace tessel::test {
namespace {

// Databases are told apart by their addresses alone, so two that are never looked into serve.
const int places[2] = {};
const auto* const lowSource = reinterpret_cast<const ProjectDb*>(&places[0]);
const auto* const highSource = reinterpret_cast<const ProjectDb*>(&places[1]);

const IdMapping::Key key = {ObjectType::Site, 7, lowSource};
const IdMapping::Value value = {11, SaveResolution::Created};

bool equal(const IdMapping::Value& a, const IdMapping::Value& b) {
  return a.id == b.id && a.resolution == b.resolution;
}

TEST(IdMapping, StartsEmptyWithItsDestination) {
  const IdMapping mapping(lowSource);
  EXPECT_EQ(mapping.destination(), lowSource);
  EXPECT_EQ(mapping.size(), 0U);
  EXPECT_EQ(mapping.begin(), mapping.end());
  EXPECT_EQ(IdMapping(nullptr).destination(), nullptr);
}

TEST(IdMapping, TakesItsDestinationFromASharedPointerAndDoesNotKeepItOpen) {
  SampleProject project;
  const std::weak_ptr<ProjectDb> observer = project.db;
  const IdMapping mapping(std::shared_ptr<const ProjectDb>(project.db));
  EXPECT_EQ(mapping.destination(), project.db.get());
  project.db.reset();
  EXPECT_TRUE(observer.expired());
}

TEST(IdMapping, GivesBackWhatWasSet) {
  IdMapping mapping(nullptr);
  mapping.set(key, value);
  IdMapping::Value found = {};
  EXPECT_TRUE(mapping.has(key));
  EXPECT_TRUE(mapping.get(key, found));
  EXPECT_TRUE(equal(found, value));
  EXPECT_EQ(mapping.size(), 1U);
}

TEST(IdMapping, LeavesTheValueAloneForAnUnknownKey) {
  const IdMapping mapping(nullptr);
  IdMapping::Value found = {5, SaveResolution::Renamed};
  EXPECT_FALSE(mapping.has(key));
  EXPECT_FALSE(mapping.get(key, found));
  EXPECT_TRUE(equal(found, {5, SaveResolution::Renamed}));
}

TEST(IdMapping, OverwritesTheValueOfAKeyThatIsThere) {
  IdMapping mapping(nullptr);
  mapping.set(key, value);
  mapping.set(key, {12, SaveResolution::Kept});
  IdMapping::Value found = {};
  mapping.get(key, found);
  EXPECT_TRUE(equal(found, {12, SaveResolution::Kept}));
  EXPECT_EQ(mapping.size(), 1U);
}

TEST(IdMapping, ErasesAnEntryOnce) {
  IdMapping mapping(nullptr);
  mapping.set(key, value);
  EXPECT_TRUE(mapping.erase(key));
  EXPECT_FALSE(mapping.has(key));
  EXPECT_EQ(mapping.size(), 0U);
  EXPECT_FALSE(mapping.erase(key));
}

TEST(IdMapping, TellsKeysApartByEachPart) {
  IdMapping mapping(nullptr);
  mapping.set(key, value);
  mapping.set({key.type, key.id, highSource}, value);
  mapping.set({key.type, key.id + 1, key.source}, value);
  mapping.set({ObjectType::Story, key.id, key.source}, value);
  EXPECT_EQ(mapping.size(), 4U);
  EXPECT_FALSE(mapping.has({key.type, key.id, nullptr}));
}

TEST(IdMapping, IsOrderedBySourceThenTypeThenId) {
  const std::vector<IdMapping::Key> ordered = {
    {ObjectType::Unit, 0xFFFFFFFFU, nullptr}, {static_cast<ObjectType>(-1), 9, lowSource},
    {ObjectType::Site, 3, lowSource},         {ObjectType::Site, 0x80000000U, lowSource},
    {ObjectType::Unit, 1, lowSource},         {ObjectType::Site, 2, highSource},
  };
  IdMapping mapping(nullptr);
  for (auto next = ordered.rbegin(); next != ordered.rend(); ++next) mapping.set(*next, value);
  ASSERT_EQ(mapping.size(), ordered.size());
  auto expected = ordered.begin();
  for (const auto& [found, ignored] : mapping) {
    EXPECT_EQ(found.type, expected->type);
    EXPECT_EQ(found.id, expected->id);
    EXPECT_EQ(found.source, expected->source);
    ++expected;
  }
}

TEST(IdMapping, RecordsWhatASaveDid) {
  SampleProject source;
  SampleProject destination;
  const auto story = source.db->save(makeSample<Story>());
  destination.db->save(Site::create(L"another, so that the ids differ"));
  IdMapping mapping(destination.db);
  const auto copy = destination.db->save(story, mapping);

  IdMapping::Value found = {};
  ASSERT_TRUE(mapping.get({ObjectType::Story, story->id(), source.db.get()}, found));
  EXPECT_TRUE(equal(found, {copy->id(), SaveResolution::Created}));
  ASSERT_TRUE(mapping.get({ObjectType::Building, story->building()->id(), source.db.get()}, found));
  EXPECT_TRUE(equal(found, {copy->building()->id(), SaveResolution::Created}));
  ASSERT_TRUE(mapping.get({ObjectType::Site, story->building()->site()->id(), source.db.get()}, found));
  EXPECT_TRUE(equal(found, {copy->building()->site()->id(), SaveResolution::Created}));
  EXPECT_EQ(mapping.size(), 3U);
}

TEST(IdMapping, IsNotRolledBackWithATransaction) {
  SampleProject project;
  IdMapping mapping(project.db);
  {
    Transaction transaction(project.db, Transaction::BeginCurrent);
    project.db->save(makeSample<Site>(), mapping);
    transaction.rollback();
  }
  EXPECT_EQ(mapping.size(), 1U);
}

// No object that was never saved can be told from another one of its class.
TEST(IdMapping, HasOneKeyForAllUnsavedObjectsOfAClass) {
  SampleProject project;
  IdMapping mapping(project.db);
  project.db->save(makeSample<Site>(1), mapping);
  const auto last = project.db->save(makeSample<Site>(2), mapping);
  EXPECT_EQ(mapping.size(), 1U);
  IdMapping::Value found = {};
  ASSERT_TRUE(mapping.get({ObjectType::Site, 0, nullptr}, found));
  EXPECT_EQ(found.id, last->id());
}

TEST(SaveResolutions, HaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(SaveResolution::Created), 0);
  EXPECT_EQ(static_cast<int>(SaveResolution::Kept), 1);
  EXPECT_EQ(static_cast<int>(SaveResolution::Overwritten), 2);
  EXPECT_EQ(static_cast<int>(SaveResolution::Renamed), 3);
  EXPECT_EQ(sizeof(SaveResolution), 4U);
}

}  // namespace
}  // namespace tessel::test
