// Saving objects of one file: what is written, what is returned and what is told.

#include <gmock/gmock.h>

#include <tessel/transaction.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

template <typename T>
class Save : public ReactingProject {
protected:
  static constexpr ObjectType type = ObjectTraits<T>::type;

  TsSmartPtr<T> saved(int number = 1) {
    const TsSmartPtr<T> object = db->save(makeSample<T>(number));
    startWatching();
    return object;
  }

  long long ownRows() const { return rows(Sample<T>::table); }
  std::map<std::string, std::string> row(const TsSmartPtr<T>& object) const {
    return project.row(Sample<T>::table, object->id());
  }

  void expectNothingWritten() const {
    EXPECT_EQ(writes(), 0U);
    EXPECT_THAT(sql.beginningWith("SAVEPOINT"), IsEmpty());
  }
};
TYPED_TEST_SUITE(Save, SampledClasses, ClassNames);

// Null.

TYPED_TEST(Save, NullGivesNullWritesNothingAndCommitsNothing) {
  this->startWatching();
  EXPECT_FALSE(this->db->save(TsSmartPtr<TypeParam>()));
  EXPECT_FALSE(this->db->save(TsSmartPtr<const TypeParam>()));
  IdMapping mapping(this->db);
  EXPECT_FALSE(this->db->save(TsSmartPtr<TypeParam>(), mapping));
  EXPECT_FALSE(this->db->save(TsSmartPtr<const TypeParam>(), mapping));
  this->expectNothingWritten();
  EXPECT_THAT(this->sql.beginningWith("COMMIT"), IsEmpty());
  EXPECT_EQ(mapping.size(), 0U);
  EXPECT_THAT(this->reactor.calls, IsEmpty());
}

// New objects.

TYPED_TEST(Save, ANewObjectIsInsertedAndReturned) {
  const long long before = this->ownRows();
  const auto object = makeSample<TypeParam>(1);
  const auto result = this->db->save(object);
  EXPECT_EQ(result, object);
  EXPECT_NE(object->id(), 0U);
  EXPECT_FALSE(object->isDirty());
  EXPECT_EQ(object->projectDb(), this->db);
  EXPECT_EQ(this->ownRows(), before + 1) << "as another connection sees it";
  EXPECT_EQ(this->row(object), valuesOf(*object));
  EXPECT_FALSE(Transaction::hasCurrent());
}

TYPED_TEST(Save, ANewObjectIsInsertedInTheConstantFormToo) {
  const auto object = makeSample<TypeParam>(1);
  const TsSmartPtr<const TypeParam> constant = object;
  EXPECT_EQ(this->db->save(constant), constant);
  EXPECT_NE(object->id(), 0U);
  EXPECT_FALSE(object->isDirty());
  EXPECT_EQ(object->projectDb(), this->db);
  EXPECT_EQ(this->row(object), valuesOf(*object));
}

TYPED_TEST(Save, IsToldOfEachNewObjectWhatItRefersToFirst) {
  const auto object = makeSample<TypeParam>(1);
  std::vector<ObjectType> expected;
  appendVisits(*object, expected);
  this->db->save(object);

  std::vector<ObjectType> told;
  for (const Saved& saved : this->reactor.saved) {
    told.push_back(saved.key.type);
    EXPECT_EQ(saved.database, this->db.get());
    EXPECT_EQ(saved.resolution, SaveResolution::Created);
    EXPECT_NE(saved.key.id, 0U);
  }
  EXPECT_EQ(told, expected);
  EXPECT_EQ(this->reactor.saved.back().key, keyOf(object));
}

TYPED_TEST(Save, OneSavepointServesEachRow) {
  const auto object = makeSample<TypeParam>(1);
  std::vector<ObjectType> visits;
  appendVisits(*object, visits);
  this->startWatching();
  this->db->save(object);
  EXPECT_EQ(this->sql.beginningWith("SAVEPOINT").size(), visits.size());
  EXPECT_EQ(this->sql.beginningWith("RELEASE SAVEPOINT").size(), visits.size());
  EXPECT_THAT(this->sql.beginningWith("ROLLBACK"), IsEmpty());
}

TYPED_TEST(Save, NoQueryGoesAheadOfAnInsert) {
  const auto object = makeSample<TypeParam>(1);
  this->startWatching();
  this->db->save(object);
  EXPECT_THAT(this->sql.beginningWith("SELECT"), IsEmpty());
}

// Objects of this file.

TYPED_TEST(Save, ACleanObjectIsKeptWithoutASavepoint) {
  const auto object = this->saved();
  EXPECT_EQ(this->db->save(object), object);
  this->expectNothingWritten();
  EXPECT_THAT(this->outcomes(), ElementsAre(Pair(keyOf(object), SaveResolution::Kept)));
}

TYPED_TEST(Save, AChangedObjectIsUpdated) {
  const auto object = this->saved();
  const unsigned int id = object->id();
  const long long before = this->ownRows();
  changeSomething(*object);
  ASSERT_TRUE(object->isDirty());
  EXPECT_EQ(this->db->save(object), object);
  EXPECT_EQ(object->id(), id);
  EXPECT_FALSE(object->isDirty());
  EXPECT_EQ(this->ownRows(), before);
  EXPECT_EQ(this->row(object), valuesOf(*object));
  EXPECT_THAT(this->outcomes(), ElementsAre(Pair(keyOf(object), SaveResolution::Overwritten)));
}

TYPED_TEST(Save, ALoadedObjectIsUpdated) {
  const auto object = this->db->template get<TypeParam>(this->saved()->id());
  changeSomething(*object);
  this->db->save(object);
  EXPECT_EQ(this->row(object), valuesOf(*object));
}

TYPED_TEST(Save, TheConstantFormWritesNoChangesOfAnObjectOfThisFile) {
  const auto object = this->saved();
  const auto before = this->row(object);
  changeSomething(*object);
  const TsSmartPtr<const TypeParam> constant = object;
  EXPECT_EQ(this->db->save(constant), constant);
  EXPECT_TRUE(object->isDirty());
  EXPECT_EQ(this->row(object), before);
  this->expectNothingWritten();
  EXPECT_THAT(this->reactor.calls, IsEmpty());
}

TYPED_TEST(Save, TheRowOfAChangedObjectMustBeThere) {
  const auto object = this->saved();
  this->project.raw().exec("DELETE FROM \"" + std::string(Sample<TypeParam>::table) + "\"");
  changeSomething(*object);
  EXPECT_THROW(this->db->save(object), ObjectNotFound);
  EXPECT_TRUE(object->isDirty());
  EXPECT_FALSE(Transaction::hasCurrent());
}

// The mapping.

TYPED_TEST(Save, AMappingRecordsANewObjectUnderItsClassWithoutAnId) {
  IdMapping mapping(this->db);
  const auto object = this->db->save(makeSample<TypeParam>(1), mapping);
  IdMapping::Value value{};
  ASSERT_TRUE(mapping.get({this->type, 0, nullptr}, value));
  EXPECT_EQ(value.id, object->id());
  EXPECT_EQ(value.resolution, SaveResolution::Created);
}

TYPED_TEST(Save, AMappingHoldsTheLastOfSeveralNewObjects) {
  IdMapping mapping(this->db);
  this->db->save(makeSample<TypeParam>(1), mapping);
  const std::size_t size = mapping.size();
  const auto second = this->db->save(makeSample<TypeParam>(2), mapping);
  EXPECT_EQ(mapping.size(), size) << "they share one key for each class";
  IdMapping::Value value{};
  ASSERT_TRUE(mapping.get({this->type, 0, nullptr}, value));
  EXPECT_EQ(value.id, second->id());
}

TYPED_TEST(Save, AMappingIsNotAskedForNewObjects) {
  IdMapping mapping(this->db);
  mapping.set({this->type, 0, nullptr}, {4711, SaveResolution::Created});
  EXPECT_NE(this->db->save(makeSample<TypeParam>(1), mapping)->id(), 4711U);
}

TYPED_TEST(Save, AMappingIsNotAskedForObjectsOfThisFile) {
  const auto object = this->saved();
  IdMapping mapping(this->db);
  const IdMapping::Key key{this->type, object->id(), this->db.get()};
  mapping.set(key, {4711, SaveResolution::Created});
  EXPECT_EQ(this->db->save(object, mapping), object);
  EXPECT_EQ(this->db->save(TsSmartPtr<const TypeParam>(object), mapping), object);
  IdMapping::Value value{};
  ASSERT_TRUE(mapping.get(key, value));
  EXPECT_EQ(value.id, object->id()) << "it records them";
}

TYPED_TEST(Save, AMappingRecordsWhatWasUpdatedAndWhatWasKept) {
  const auto object = this->saved();
  const IdMapping::Key key{this->type, object->id(), this->db.get()};
  IdMapping mapping(this->db);
  IdMapping::Value value{};

  this->db->save(object, mapping);
  ASSERT_TRUE(mapping.get(key, value));
  EXPECT_EQ(value.resolution, SaveResolution::Kept);

  changeSomething(*object);
  this->db->save(TsSmartPtr<const TypeParam>(object), mapping);
  ASSERT_TRUE(mapping.get(key, value));
  EXPECT_EQ(value.id, object->id());
  EXPECT_EQ(value.resolution, SaveResolution::Kept) << "the constant form writes nothing";

  this->db->save(object, mapping);
  ASSERT_TRUE(mapping.get(key, value));
  EXPECT_EQ(value.id, object->id());
  EXPECT_EQ(value.resolution, SaveResolution::Overwritten);
}

// Through the object.

TYPED_TEST(Save, AnObjectWithoutADatabaseSavesNowhere) {
  const auto object = makeSample<TypeParam>(1);
  this->startWatching();
  EXPECT_FALSE(object->save());
  EXPECT_EQ(object->id(), 0U);
  EXPECT_TRUE(object->isDirty());
  EXPECT_THAT(this->sql.statements(), IsEmpty());
}

TYPED_TEST(Save, AnObjectSavesIntoItsDatabase) {
  const auto object = this->saved();
  EXPECT_TRUE(object->save()) << "clean";
  this->expectNothingWritten();
  changeSomething(*object);
  EXPECT_TRUE(object->save());
  EXPECT_FALSE(object->isDirty());
  EXPECT_EQ(this->row(object), valuesOf(*object));
}

TYPED_TEST(Save, AnObjectOfAClosedDatabaseSavesNowhere) {
  const auto object = this->saved();
  changeSomething(*object);
  this->db.reset();
  EXPECT_FALSE(object->save());
  EXPECT_TRUE(object->isDirty());
}

TYPED_TEST(Save, WithoutADatabaseTheFormsOfAnObjectGiveNull) {
  const auto object = makeSample<TypeParam>(1);
  const TypeParam& constant = *object;
  const std::shared_ptr<ProjectDb> none;
  IdMapping mapping(nullptr);
  EXPECT_FALSE(object->save(none));
  EXPECT_FALSE(object->save(none, mapping));
  EXPECT_FALSE(constant.save(none));
  EXPECT_FALSE(constant.save(none, mapping));
  EXPECT_EQ(object->id(), 0U);
  EXPECT_EQ(mapping.size(), 0U);
}

TYPED_TEST(Save, TheFormsOfAnObjectSaveIntoTheGivenDatabase) {
  IdMapping mapping(this->db);
  const auto plain = makeSample<TypeParam>(1), mapped = makeSample<TypeParam>(2);
  const auto constant = makeSample<TypeParam>(3), constantMapped = makeSample<TypeParam>(4);
  EXPECT_EQ(plain->save(this->db), plain);
  EXPECT_EQ(mapped->save(this->db, mapping), mapped);
  EXPECT_EQ(const_cast<const TypeParam&>(*constant).save(this->db), constant);
  EXPECT_EQ(const_cast<const TypeParam&>(*constantMapped).save(this->db, mapping), constantMapped);
  for (const auto& object : {plain, mapped, constant, constantMapped}) {
    EXPECT_NE(object->id(), 0U);
    EXPECT_EQ(object->projectDb(), this->db);
  }
  EXPECT_TRUE(mapping.has({this->type, 0, nullptr}));
}

TYPED_TEST(Save, TheConstantFormOfAnObjectWritesNoChanges) {
  const auto object = this->saved();
  changeSomething(*object);
  EXPECT_EQ(const_cast<const TypeParam&>(*object).save(this->db), object);
  EXPECT_TRUE(object->isDirty());
  this->expectNothingWritten();
}

// Through the base class.
TYPED_TEST(Save, AnObjectSavesAsWhatItIs) {
  const auto object = makeSample<TypeParam>(1);
  const TsSmartPtr<Object> base = object;
  EXPECT_EQ(base->save(this->db), object);
  EXPECT_EQ(this->row(object), valuesOf(*object));
}

}  // namespace
}  // namespace tessel::test
