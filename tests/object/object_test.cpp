#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

namespace tessel::test {
namespace {

struct Watch : ObjectReactor {
  std::atomic<int> deleted{0};
  void onObjectDeleted(Object*) override { ++deleted; }
};

TEST(ObjectReferences, TheLastOneEndsTheObject) {
  Watch watch;
  TsSmartPtr<Site> first = Site::create(L"Harbour");
  first->addReactor(&watch);
  TsSmartPtr<const Site> second = first;
  first.reset();
  EXPECT_EQ(watch.deleted, 0);
  EXPECT_EQ(second->name(), L"Harbour");
  second.reset();
  EXPECT_EQ(watch.deleted, 1);
}

TEST(ObjectReferences, AreCountedByHandAsBySmartPointers) {
  Watch watch;
  TsSmartPtr<Site> site = Site::create(L"Harbour");
  site->addReactor(&watch);
  Site* const raw = site.get();
  raw->addRef();
  site.reset();
  EXPECT_EQ(watch.deleted, 0);
  raw->release();
  EXPECT_EQ(watch.deleted, 1);
}

TEST(ObjectReferences, ARawPointerOfALivingObjectMayGoIntoASmartPointer) {
  Watch watch;
  TsSmartPtr<Site> site = Site::create(L"Harbour");
  site->addReactor(&watch);
  {
    const TsSmartPtr<Site> again(site.get());
    EXPECT_EQ(again, site);
  }
  EXPECT_EQ(watch.deleted, 0);
}

TEST(ObjectReferences, AreCountedOnSeveralThreadsAtOnce) {
  Watch watch;
  TsSmartPtr<Site> site = Site::create(L"Harbour");
  site->addReactor(&watch);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([site] {
      for (int round = 0; round < 20000; ++round) {
        TsSmartPtr<const Site> copy = site;
        TsSmartPtr<const Object> moved = std::move(copy);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  threads.clear();
  EXPECT_EQ(watch.deleted, 0);
  site.reset();
  EXPECT_EQ(watch.deleted, 1);
}

TEST(ObjectReferences, AnObjectKeepsWhatItRefersTo) {
  Watch watch;
  TsSmartPtr<Story> story = makeSample<Story>();
  const_cast<Building&>(*story->building()).addReactor(&watch);
  story->building()->site()->name();
  EXPECT_EQ(watch.deleted, 0);
  story->set_building(makeSample<Building>(2));
  EXPECT_EQ(watch.deleted, 1);
}

TEST(ObjectDatabase, IsNotKeptOpenByItsObjects) {
  SampleProject project;
  const auto site = project.db->save(makeSample<Site>());
  const std::weak_ptr<ProjectDb> observer = project.db;
  EXPECT_EQ(site->projectDb(), project.db);
  project.db.reset();
  EXPECT_TRUE(observer.expired());
  EXPECT_EQ(site->projectDb(), nullptr);
}

TEST(ObjectDatabase, SaveOfAnObjectWithoutOneIsFalseAndWritesNothing) {
  const auto site = makeSample<Site>();
  EXPECT_FALSE(site->save());
  EXPECT_EQ(site->id(), 0U);
}

TEST(ObjectDatabase, SaveOfAnOrphanIsFalse) {
  SampleProject project;
  const auto site = project.db->save(makeSample<Site>());
  site->set_town(L"Bergen");
  project.db.reset();
  EXPECT_FALSE(site->save());
  EXPECT_TRUE(site->isDirty());
}

TEST(ObjectDatabase, SaveOfACleanObjectIsTrue) {
  SampleProject project;
  EXPECT_TRUE(project.db->save(makeSample<Site>())->save());
}

TEST(ObjectTypes, HaveTheNumbersThatKeysCarry) {
  EXPECT_EQ(static_cast<int>(ObjectType::SpatialStructure), 2);
  EXPECT_EQ(static_cast<int>(ObjectType::Site), 3);
  EXPECT_EQ(static_cast<int>(ObjectType::Building), 4);
  EXPECT_EQ(static_cast<int>(ObjectType::Story), 5);
  EXPECT_EQ(static_cast<int>(ObjectType::Measure), 6);
  EXPECT_EQ(static_cast<int>(ObjectType::Unit), 7);
  EXPECT_EQ(static_cast<int>(ObjectType::PropertyNamespace), 8);
  EXPECT_EQ(static_cast<int>(ObjectType::PropertySet), 9);
  EXPECT_EQ(static_cast<int>(ObjectType::PropertyDefinition), 10);
  EXPECT_EQ(static_cast<int>(ObjectType::EntityType), 11) << "between the two kinds of definition";
  EXPECT_EQ(static_cast<int>(ObjectType::ValueDefinition), 12);
  EXPECT_EQ(static_cast<int>(ObjectType::AbstractDefinition), 13);
  EXPECT_EQ(sizeof(ObjectType), 4U);
  EXPECT_TRUE(std::is_signed_v<std::underlying_type_t<ObjectType>>);
}

TEST(ObjectKeys, CompareTheTypeFirst) {
  const ObjectKey unit{ObjectType::Unit, 5};
  const ObjectKey ns{ObjectType::PropertyNamespace, 1};
  EXPECT_LT(unit, ns);
  EXPECT_FALSE(ns < unit);
}

TEST(ObjectKeys, CompareTypesAsSignedNumbers) {
  const ObjectKey negative{static_cast<ObjectType>(-1), 1};
  EXPECT_LT(negative, (ObjectKey{ObjectType::Site, 0}));
}

TEST(ObjectKeys, CompareIdsAsUnsignedNumbers) {
  EXPECT_LT((ObjectKey{ObjectType::Site, 1}), (ObjectKey{ObjectType::Site, 0xFFFFFFFFU}));
  EXPECT_FALSE((ObjectKey{ObjectType::Site, 0xFFFFFFFFU}) < (ObjectKey{ObjectType::Site, 1}));
  EXPECT_FALSE((ObjectKey{ObjectType::Site, 1}) < (ObjectKey{ObjectType::Site, 1}));
}

TEST(ObjectKeys, AreEqualInTypeAndId) {
  const ObjectKey key{ObjectType::Site, 1};
  EXPECT_TRUE(key == (ObjectKey{ObjectType::Site, 1}));
  EXPECT_TRUE(key != (ObjectKey{ObjectType::Site, 2}));
  EXPECT_TRUE(key != (ObjectKey{ObjectType::Story, 1}));
}

template <typename T, typename Criteria>
constexpr bool hasTraits = std::is_same_v<typename ObjectTraits<T>::criteria_type, Criteria>&&
  std::is_empty_v<ObjectTraits<T>>&& std::is_same_v<decltype(ObjectTraits<T>::type), const ObjectType>;

TEST(ObjectTraitsOfEachClass, TellItsCriteriaAndHoldNothing) {
  EXPECT_TRUE((hasTraits<Story, StoryCriteria>));
  EXPECT_TRUE((hasTraits<Building, BuildingCriteria>));
  EXPECT_TRUE((hasTraits<Site, NameCriteria>));
  EXPECT_TRUE((hasTraits<Measure, NameCriteria>));
  EXPECT_TRUE((hasTraits<Unit, UnitCriteria>));
  EXPECT_TRUE((hasTraits<EntityType, NameCriteria>));
  EXPECT_TRUE((hasTraits<PropertyNamespace, NameCriteria>));
  EXPECT_TRUE((hasTraits<PropertySet, PropertySetCriteria>));
  EXPECT_TRUE((hasTraits<PropertyDefinition, PropertyDefinitionCriteria>));
  EXPECT_TRUE((hasTraits<ValueDefinition, ValueDefinitionCriteria>));
  EXPECT_TRUE((hasTraits<SpatialStructure, SpatialStructureCriteria>));
  EXPECT_EQ(ObjectTraits<SpatialStructure>::type, ObjectType::SpatialStructure);
}

template <typename T, typename = void>
struct IsDefined : std::false_type {};
template <typename T>
struct IsDefined<T, std::void_t<decltype(sizeof(T))>> : std::true_type {};

TEST(ObjectTraitsOfEachClass, AreNotThereForTheBasesThatNobodyAsksFor) {
  EXPECT_FALSE(IsDefined<ObjectTraits<Object>>::value);
  EXPECT_FALSE(IsDefined<ObjectTraits<AbstractDefinition>>::value);
  EXPECT_TRUE(IsDefined<ObjectTraits<SpatialStructure>>::value);
}

TEST(ObjectTraitsOfEachClass, CanBeAssigned) {
  ObjectTraits<Site> a;
  ObjectTraits<Site> b;
  EXPECT_EQ(&(a = b), &a);
  EXPECT_EQ(&(a = std::move(b)), &a);
}

}  // namespace
}  // namespace tessel::test
