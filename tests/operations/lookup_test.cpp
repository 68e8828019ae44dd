// Finding objects by id, by key, as a list and as a count: what is the same for all classes.

#include <gmock/gmock.h>

#include <odb/exceptions.hxx>
#include <odb/session.hxx>

#include <tessel/transaction.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

template <typename T>
class Lookup : public TwoProjects {
protected:
  TsSmartPtr<T> saved(int number) {
    const TsSmartPtr<T> object = db->save(makeSample<T>(number));
    startWatching();
    return object;
  }

  std::vector<TsSmartPtr<T>> list() {
    std::vector<TsSmartPtr<T>> objects;
    db->get(objects);
    return objects;
  }

  void expectLoaded(const TsSmartPtr<T>& loaded, const TsSmartPtr<T>& original) {
    ASSERT_TRUE(loaded);
    EXPECT_NE(loaded, original);
    EXPECT_EQ(loaded->id(), original->id());
    EXPECT_TRUE(*loaded == *original);
    EXPECT_EQ(valuesOf(*loaded), valuesOf(*original));
    EXPECT_EQ(loaded->projectDb(), db);
    EXPECT_FALSE(loaded->isDirty());
  }
};
TYPED_TEST_SUITE(Lookup, SampledClasses, ClassNames);

// By id.

TYPED_TEST(Lookup, ByIdLoadsACleanObjectOfTheDatabase) {
  this->saved(1);
  const auto object = this->saved(2);
  this->expectLoaded(this->db->template get<TypeParam>(object->id()), object);
}

TYPED_TEST(Lookup, ById0GivesNullWithoutTouchingTheFile) {
  this->startWatching();
  EXPECT_FALSE(this->db->template get<TypeParam>(0));
  EXPECT_THAT(this->sql.statements(), IsEmpty());
  Transaction::clearCurrent();
}

TYPED_TEST(Lookup, ByAnIdWithoutARowTheExceptionOfOdbPasses) {
  const auto object = this->saved(1);
  EXPECT_THROW(this->db->template get<TypeParam>(object->id() + 100), odb::object_not_persistent);
  EXPECT_FALSE(Transaction::hasCurrent());
  Transaction transaction(this->db, Transaction::BeginCurrent);
  EXPECT_THROW(this->db->template get<TypeParam>(object->id() + 100), odb::object_not_persistent);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_THAT(this->reactor.calls, IsEmpty());
}

TYPED_TEST(Lookup, TheHighestIdIsNoRowEither) {
  EXPECT_THROW(this->db->template get<TypeParam>(0xFFFFFFFFU), odb::object_not_persistent);
}

TYPED_TEST(Lookup, ReadsTheFileAtEachCall) {
  const auto object = this->saved(1);
  const auto first = this->db->template get<TypeParam>(object->id());
  const auto second = this->db->template get<TypeParam>(object->id());
  EXPECT_NE(first, second);
  changeSomething(*object);
  this->db->save(object);
  this->expectLoaded(this->db->template get<TypeParam>(object->id()), object);
  EXPECT_FALSE(valuesOf(*first) == valuesOf(*object));
}

// By key.

TYPED_TEST(Lookup, ByKeyLoadsACleanObjectOfTheDatabase) {
  this->saved(1);
  const auto object = this->saved(2);
  const auto key = Sample<TypeParam>::key(*object);
  this->expectLoaded(this->db->template get<TypeParam>(key), object);
}

TYPED_TEST(Lookup, ByAKeyWithoutARowGivesNull) {
  const auto object = this->saved(1);
  auto key = Sample<TypeParam>::key(*object);
  key.name = OdString(L"nobody");
  EXPECT_FALSE(this->db->template get<TypeParam>(key));
  key.name = OdString();
  EXPECT_FALSE(this->db->template get<TypeParam>(key));
  EXPECT_THAT(this->reactor.calls, IsEmpty());
}

TYPED_TEST(Lookup, ByKeyEveryCharacterCounts) {
  const auto object = this->saved(1);
  auto key = Sample<TypeParam>::key(*object);
  key.name = OdString(L"%");
  EXPECT_FALSE(this->db->template get<TypeParam>(key));
  const auto otherCase = static_cast<char16_t>(object->name()[0] ^ 0x20);
  key.name = OdString(&otherCase, 1) + object->name().mid(1);
  EXPECT_FALSE(this->db->template get<TypeParam>(key)) << "case counts";
  key.name = object->name() + OdString(L" ");
  EXPECT_FALSE(this->db->template get<TypeParam>(key));
}

TYPED_TEST(Lookup, ByKeyFindsWhatTheTransactionHasWritten) {
  const Transaction transaction(this->db, Transaction::BeginCurrent);
  const auto object = this->saved(1);
  EXPECT_TRUE(this->db->template get<TypeParam>(Sample<TypeParam>::key(*object)));
}

// Lists.

TYPED_TEST(Lookup, AListAppendsToTheVector) {
  const std::size_t before = this->list().size();
  const auto object = this->saved(1);
  std::vector<TsSmartPtr<TypeParam>> objects = {object};
  this->db->get(objects);
  EXPECT_THAT(objects, SizeIs(before + 2));
  EXPECT_EQ(objects[0], object);
  this->db->get(objects);
  EXPECT_THAT(objects, SizeIs(2 * before + 3));
}

TYPED_TEST(Lookup, AListHoldsCleanObjectsOfTheDatabase) {
  const auto object = this->saved(1);
  for (const auto& listed : this->list()) {
    EXPECT_EQ(listed->projectDb(), this->db);
    EXPECT_FALSE(listed->isDirty());
    if (listed->id() == object->id()) this->expectLoaded(listed, object);
  }
}

TYPED_TEST(Lookup, AListHoldsWhatMeetsTheCriteria) {
  this->saved(1);
  const auto object = this->saved(2);
  this->saved(3);
  std::vector<TsSmartPtr<TypeParam>> objects;
  this->db->get(objects, Sample<TypeParam>::criteria(*object));
  ASSERT_THAT(objects, SizeIs(1));
  this->expectLoaded(objects[0], object);
}

TYPED_TEST(Lookup, AListWithoutAMatchLeavesTheVectorAsItWas) {
  const auto object = this->saved(1);
  auto criteria = Sample<TypeParam>::criteria(*object);
  criteria.name.equals(L"nobody");
  std::vector<TsSmartPtr<TypeParam>> objects = {object};
  this->db->get(objects, criteria);
  EXPECT_THAT(objects, ElementsAre(object));
}

// Counts.

TYPED_TEST(Lookup, ACountOfAnEmptyTableIs0) {
  this->project.raw().exec("DELETE FROM \"" + std::string(Sample<TypeParam>::table) + "\"");
  EXPECT_EQ(this->db->template count<TypeParam>(), 0U);
  EXPECT_THAT(this->list(), IsEmpty());
}

TYPED_TEST(Lookup, ACountIsThatOfTheRows) {
  const auto before = this->db->template count<TypeParam>();
  this->saved(1);
  const auto object = this->saved(2);
  EXPECT_EQ(this->db->template count<TypeParam>(), before + 2);
  EXPECT_EQ(this->db->template count<TypeParam>(Sample<TypeParam>::criteria(*object)), 1U);
  auto criteria = Sample<TypeParam>::criteria(*object);
  criteria.name.equals(L"nobody");
  EXPECT_EQ(this->db->template count<TypeParam>(criteria), 0U);
}

TYPED_TEST(Lookup, ACountBuildsNoObject) {
  this->saved(1);
  this->db->template count<TypeParam>();
  const std::string table = "\"" + std::string(Sample<TypeParam>::table) + "\"";
  EXPECT_THAT(this->sql.beginningWith("SELECT"),
              ElementsAre(StartsWith("SELECT count(" + table + ".\"id\") FROM " + table)));
}

TYPED_TEST(Lookup, NothingIsWritten) {
  const auto object = this->saved(1);
  this->db->template get<TypeParam>(object->id());
  this->db->template get<TypeParam>(Sample<TypeParam>::key(*object));
  this->list();
  this->db->template count<TypeParam>();
  EXPECT_EQ(this->writes(), 0U);
  EXPECT_THAT(this->sql.beginningWith("COMMIT"), IsEmpty());
  EXPECT_EQ(this->sql.beginningWith("BEGIN").size(), this->sql.beginningWith("ROLLBACK").size());
}

TYPED_TEST(Lookup, AFileOpenedForReadingAnswersToo) {
  const auto object = this->saved(1);
  const auto reading = ProjectDb::open(OdString::fromUtf8(this->project.path()), true);
  EXPECT_TRUE(*reading->template get<TypeParam>(object->id()) == *object);
  EXPECT_TRUE(reading->template get<TypeParam>(Sample<TypeParam>::key(*object)));
  EXPECT_EQ(reading->template count<TypeParam>(), this->db->template count<TypeParam>());
}

// Sessions of the persistence layer.

template <typename T>
struct TakesPart : AsksReactor<T> {};

TYPED_TEST(Lookup, InASessionAnIdIsOneObjectUnlessItIsAMeasureOrAUnit) {
  const auto object = this->saved(1);
  const odb::session session;
  const auto first = this->db->template get<TypeParam>(object->id());
  const auto second = this->db->template get<TypeParam>(object->id());
  const auto byKey = this->db->template get<TypeParam>(Sample<TypeParam>::key(*object));
  EXPECT_EQ(first == second, TakesPart<TypeParam>::value);
  EXPECT_EQ(first == byKey, TakesPart<TypeParam>::value);
}

TYPED_TEST(Lookup, InASessionANewObjectIsFoundAgainUnlessItIsAMeasureOrAUnit) {
  const odb::session session;
  const auto object = this->db->save(makeSample<TypeParam>(1));
  EXPECT_EQ(this->db->template get<TypeParam>(object->id()) == object, TakesPart<TypeParam>::value);
}

class CountsDeletions : public ObjectReactor {
public:
  void onObjectDeleted(Object*) override { ++deletions; }
  int deletions = 0;
};

TYPED_TEST(Lookup, ASessionKeepsItsObjectsAlive) {
  const auto object = this->saved(1);
  CountsDeletions counter;
  {
    const odb::session session;
    this->db->template get<TypeParam>(object->id())->addReactor(&counter);
    EXPECT_EQ(counter.deletions, TakesPart<TypeParam>::value ? 0 : 1);
  }
  EXPECT_EQ(counter.deletions, 1);
}

TYPED_TEST(Lookup, ASessionKeepsTwoDatabasesApart) {
  const odb::session session;
  const auto object = this->db->save(makeSample<TypeParam>(1));
  const auto twin = this->other->save(makeSample<TypeParam>(1));
  ASSERT_EQ(object->id(), twin->id());
  EXPECT_EQ(this->db->template get<TypeParam>(object->id())->projectDb(), this->db);
  EXPECT_EQ(this->other->template get<TypeParam>(twin->id())->projectDb(), this->other);
}

// Spatial objects together.

class LookupOfSpatial : public ReactingProject {
protected:
  TsSmartPtr<Story> story = db->save(makeSample<Story>(1));
  TsSmartPtr<const Building> building = story->building();
  TsSmartPtr<const Site> site = building->site();
};

TEST_F(LookupOfSpatial, AnIdIsLoadedAsWhatItIs) {
  const auto found = db->get<SpatialStructure>(story->id());
  ASSERT_TRUE(found);
  EXPECT_EQ(found->tesselType(), ObjectType::Story);
  EXPECT_EQ(found->name(), story->name());
  EXPECT_EQ(found->projectDb(), db);
  EXPECT_FALSE(found->isDirty());
  EXPECT_EQ(db->get<SpatialStructure>(building->id())->tesselType(), ObjectType::Building);
  EXPECT_EQ(db->get<SpatialStructure>(site->id())->tesselType(), ObjectType::Site);
}

TEST_F(LookupOfSpatial, Id0IsNullAndAnIdWithoutARowThrows) {
  startWatching();
  EXPECT_FALSE(db->get<SpatialStructure>(0));
  EXPECT_THAT(sql.statements(), IsEmpty());
  EXPECT_THROW(db->get<SpatialStructure>(99), odb::object_not_persistent);
}

TEST_F(LookupOfSpatial, TheListAndTheCountHoldAllThreeClasses) {
  std::vector<TsSmartPtr<SpatialStructure>> objects;
  db->get(objects);
  std::vector<ObjectType> types;
  for (const auto& object : objects) types.push_back(object->tesselType());
  EXPECT_THAT(types, ::testing::UnorderedElementsAre(ObjectType::Site, ObjectType::Building, ObjectType::Story));
  EXPECT_EQ(db->count<SpatialStructure>(), 3U);
  db->get(objects, SpatialStructureCriteria());
  EXPECT_THAT(objects, SizeIs(6));
  EXPECT_EQ(db->count<SpatialStructure>(SpatialStructureCriteria()), 3U);
}

TEST_F(LookupOfSpatial, AnIdOfAnotherClassIsNoRow) {
  EXPECT_THROW(db->get<Site>(building->id()), odb::object_not_persistent);
  EXPECT_THROW(db->get<Building>(story->id()), odb::object_not_persistent);
  EXPECT_THROW(db->get<Story>(site->id()), odb::object_not_persistent);
}

TEST_F(LookupOfSpatial, InASessionTheSameObjectIsFoundAsBoth) {
  const odb::session session;
  const auto found = db->get<Story>(story->id());
  EXPECT_EQ(db->get<SpatialStructure>(story->id()), found);
  EXPECT_EQ(db->get<Building>(building->id()), found->building());
}

// Special keys.

class LookupByKey : public ReactingProject {};

TEST_F(LookupByKey, AUnitWithoutANameIsNotFoundByTheEmptyOne) {
  const auto length = db->get<Measure>(NameKey(L"LENGTH"));
  db->save(Unit::create(L"m", 1, length));
  EXPECT_FALSE(db->get<Unit>(NameKey(L"")));
  const auto empty = db->save(Unit::create(L"", L"mm", 0.001, length));
  EXPECT_EQ(db->get<Unit>(NameKey(L""))->id(), empty->id());
}

TEST_F(LookupByKey, TheOwnerIsPartOfTheKey) {
  const auto hill = db->save(Site::create(L"Hill")), vale = db->save(Site::create(L"Vale"));
  const auto onHill = db->save(Building::create(hill, L"House")), inVale = db->save(Building::create(vale, L"House"));
  EXPECT_EQ(db->get<Building>(NameObjectKey<Site>(L"House", hill->id()))->id(), onHill->id());
  EXPECT_EQ(db->get<Building>(NameObjectKey<Site>(L"House", vale->id()))->id(), inVale->id());
  EXPECT_FALSE(db->get<Building>(NameObjectKey<Site>(L"House", 0)));
  EXPECT_FALSE(db->get<Building>(NameObjectKey<Site>(L"House", 99)));
  EXPECT_FALSE(db->get<Story>(NameObjectKey<Building>(L"House", onHill->id())));
}

TEST_F(LookupByKey, ANameOfAnyLengthAndContentIsFound) {
  for (const OdString& name :
       {OdString(), OdString(L"it's"), OdString(L"\"quoted\""), OdString(L"\u00DF\u4E2D\U0001F3E0"),
        OdString(u"a\0b", 3), OdString::fromUtf8(std::string(100000, 'x'))}) {
    const auto site = db->save(Site::create(name));
    const auto found = db->get<Site>(NameKey(name));
    ASSERT_TRUE(found) << testing::PrintToString(name.mid(0, 20));
    EXPECT_EQ(found->id(), site->id());
    EXPECT_EQ(found->name(), name);
  }
}

TEST_F(LookupByKey, AKeyThatIsNoUtf16IsRefused) {
  EXPECT_THROW(db->get<Site>(NameKey(OdString(u"\xD800", 1))), std::exception);
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_FALSE(db->get<Site>(NameKey(L"Hill")));
}

}  // namespace
}  // namespace tessel::test
