#include <set>
#include <stdexcept>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "operations/removal.h"

namespace tessel::test {
namespace {

// What removal does to a row that nothing refers to, alike for all classes.

template <typename T>
class RemovedObject : public Removal {
protected:
  using Ids = std::set<unsigned int>;

  TsSmartPtr<T> saved(int number = 1) {
    const TsSmartPtr<T> object = project.db->save(makeSample<T>(number));
    reactor.clear();
    return object;
  }
  void change(T& object) {
    for (const Field<T>& field : Sample<T>::fields()) {
      if (field.change) return field.change(object);
    }
  }
  ObjectKey keyOf(const T& object) const { return {ObjectTraits<T>::type, object.id()}; }
  bool hasRow(unsigned int id) const { return Removal::hasRow(Sample<T>::table, id); }
};

TYPED_TEST_SUITE(RemovedObject, SampledClasses, ClassNames);

TYPED_TEST(RemovedObject, ByPointerHasNoRowAndIsUnsavedAgain) {
  const auto object = this->saved();
  const unsigned int id = object->id();
  EXPECT_EQ(this->project.db->remove(object).outcome, RemoveResult::Removed);
  EXPECT_FALSE(this->hasRow(id));
  EXPECT_EQ(object->id(), 0U);
  EXPECT_EQ(object->projectDb(), nullptr);
  EXPECT_FALSE(object->isDirty());
}

TYPED_TEST(RemovedObject, ByPointerStaysDirtyIfItWasAndCanBeSavedAsANewRow) {
  const auto object = this->saved();
  const unsigned int id = object->id();
  this->change(*object);
  ASSERT_TRUE(object->isDirty());
  this->project.db->remove(object);
  EXPECT_TRUE(object->isDirty());

  EXPECT_EQ(this->project.db->save(object), object);
  EXPECT_GT(object->id(), id) << "ids are not used again";
  EXPECT_TRUE(this->hasRow(object->id()));
}

TYPED_TEST(RemovedObject, ByPointerIsNotSavedAgainWhileItIsClean) {
  const auto object = this->saved();
  this->project.db->remove(object);
  const long long before = this->project.count(Sample<TypeParam>::table);
  EXPECT_EQ(this->project.db->save(object), object);
  EXPECT_EQ(object->id(), 0U);
  EXPECT_EQ(this->project.count(Sample<TypeParam>::table), before);
}

TYPED_TEST(RemovedObject, ByIdHasNoRowAndStaysInMemoryAsItWas) {
  const auto object = this->saved();
  const unsigned int id = object->id();
  EXPECT_EQ(this->project.db->template remove<TypeParam>(id).outcome, RemoveResult::Removed);
  EXPECT_FALSE(this->hasRow(id));
  EXPECT_EQ(object->id(), id);
  EXPECT_EQ(object->projectDb(), this->project.db);
  EXPECT_FALSE(object->isDirty());
}

TYPED_TEST(RemovedObject, ByIdHasNoRowToUpdate) {
  const auto object = this->saved();
  const unsigned int id = object->id();
  this->project.db->template remove<TypeParam>(id);
  this->change(*object);
  EXPECT_THROW(object->save(), ObjectNotFound);
  EXPECT_FALSE(this->hasRow(id));
}

TYPED_TEST(RemovedObject, InABatchHasNoRowAndStaysInMemoryAsItWas) {
  const auto first = this->saved(1);
  const auto second = this->saved(2);
  const auto kept = this->saved(3);
  Results results;
  this->project.db->template remove<TypeParam>({first->id(), second->id()}, results);
  EXPECT_EQ(results, (Results{{this->keyOf(*first), removed}, {this->keyOf(*second), removed}}));
  EXPECT_FALSE(this->hasRow(first->id()));
  EXPECT_FALSE(this->hasRow(second->id()));
  EXPECT_TRUE(this->hasRow(kept->id()));
  EXPECT_EQ(first->projectDb(), this->project.db);
}

TYPED_TEST(RemovedObject, InABatchWithoutResultsHasNoRow) {
  const auto object = this->saved();
  this->project.db->template remove<TypeParam>(typename TestFixture::Ids{object->id()});
  EXPECT_FALSE(this->hasRow(object->id()));
}

TYPED_TEST(RemovedObject, ByKeyHasNoRow) {
  const auto first = this->saved(1);
  const auto second = this->saved(2);
  Results results;
  this->project.db->remove({this->keyOf(*first)}, results);
  EXPECT_EQ(results, (Results{{this->keyOf(*first), removed}}));
  EXPECT_FALSE(this->hasRow(first->id()));
  this->project.db->remove(std::set<ObjectKey>{this->keyOf(*second)});
  EXPECT_FALSE(this->hasRow(second->id()));
}

TYPED_TEST(RemovedObject, IsOfferedToTheReactorWhicheverWayItIsRemoved) {
  const auto object = this->saved(1);
  const auto byId = this->saved(2);
  const auto inBatch = this->saved(3);
  const auto byKey = this->saved(4);
  const std::vector<RecordingReactor::Removal> expected = {{this->project.db.get(), this->keyOf(*object)},
                                                           {this->project.db.get(), this->keyOf(*byId)},
                                                           {this->project.db.get(), this->keyOf(*inBatch)},
                                                           {this->project.db.get(), this->keyOf(*byKey)}};
  this->project.db->remove(object);
  this->project.db->template remove<TypeParam>(byId->id());
  this->project.db->template remove<TypeParam>(typename TestFixture::Ids{inBatch->id()});
  this->project.db->remove(std::set<ObjectKey>{this->keyOf(*byKey)});
  EXPECT_EQ(this->reactor.removals, expected);
}

TYPED_TEST(RemovedObject, NeedsNoReactor) {
  const auto object = this->saved();
  const unsigned int id = object->id();
  this->project.db->setReactor(nullptr);
  EXPECT_EQ(this->project.db->remove(object).outcome, RemoveResult::Removed);
  EXPECT_FALSE(this->hasRow(id));
}

TYPED_TEST(RemovedObject, IsNotRemovedIfTheReactorRefuses) {
  const auto object = this->saved();
  const unsigned int id = object->id();
  this->reactor.whenRemoved = [](const auto&) { return RemoveResolution::Refuse; };
  EXPECT_EQ(this->project.db->remove(object).outcome, RemoveResult::Refused);
  EXPECT_EQ(this->project.db->template remove<TypeParam>(id).outcome, RemoveResult::Refused);
  Results results;
  this->project.db->template remove<TypeParam>({id}, results);
  EXPECT_EQ(results, (Results{{this->keyOf(*object), refused}}));
  this->project.db->remove(std::set<ObjectKey>{this->keyOf(*object)});

  EXPECT_TRUE(this->hasRow(id));
  EXPECT_EQ(object->id(), id);
  EXPECT_EQ(object->projectDb(), this->project.db);
  EXPECT_EQ(this->reactor.removals.size(), 4U);
}

TYPED_TEST(RemovedObject, IsRefusedByAnyAnswerButZero) {
  const unsigned int id = this->saved()->id();
  for (const int answer : {1, 2, -1, 256}) {
    this->reactor.whenRemoved = [answer](const auto&) { return static_cast<RemoveResolution>(answer); };
    EXPECT_EQ(this->project.db->template remove<TypeParam>(id).outcome, RemoveResult::Refused) << answer;
  }
  EXPECT_TRUE(this->hasRow(id));
}

TYPED_TEST(RemovedObject, StaysIfTheReactorThrowsWhichPasses) {
  const auto object = this->saved();
  const unsigned int id = object->id();
  this->reactor.whenRemoved = [](const auto&) -> RemoveResolution { throw std::runtime_error("mine"); };
  EXPECT_THROW(this->project.db->remove(object), std::runtime_error);
  EXPECT_THROW(this->project.db->template remove<TypeParam>(id), std::runtime_error);
  EXPECT_THROW(this->project.db->template remove<TypeParam>(typename TestFixture::Ids{id}), std::runtime_error);
  EXPECT_TRUE(this->hasRow(id));
  EXPECT_EQ(object->id(), id);
  EXPECT_FALSE(Transaction::hasCurrent());
}

TYPED_TEST(RemovedObject, MustExist) {
  const unsigned int missing = this->saved()->id() + 1000;
  EXPECT_THROW(this->project.db->remove(makeSample<TypeParam>(2)), DatabaseException) << "never saved";
  EXPECT_THROW(this->project.db->template remove<TypeParam>(missing), DatabaseException);
  EXPECT_THROW(this->project.db->template remove<TypeParam>(0U), DatabaseException);
  EXPECT_THROW(this->project.db->template remove<TypeParam>(typename TestFixture::Ids{missing}), DatabaseException);
  EXPECT_EQ(this->reactor.removals.size(), 4U) << "the reactor is asked before the row is looked for";
  EXPECT_FALSE(Transaction::hasCurrent());
}

TYPED_TEST(RemovedObject, MustNotBeNull) {
  EXPECT_THROW(this->project.db->remove(TsSmartPtr<TypeParam>()), ObjectNotFound);
}

TYPED_TEST(RemovedObject, IsGoneWithAllOthersWhenTheClassIsPurged) {
  const auto first = this->saved(1);
  const auto second = this->saved(2);
  const auto all = this->template idsOf<TypeParam>();
  Results results;
  this->project.db->template purge<TypeParam>(results);
  EXPECT_EQ(this->project.db->template count<TypeParam>(), 0U);
  Results expected;
  for (const unsigned int id : all) expected[{ObjectTraits<TypeParam>::type, id}] = removed;
  EXPECT_EQ(results, expected);
  EXPECT_TRUE(results.count(this->keyOf(*first)) && results.count(this->keyOf(*second)));
}

TYPED_TEST(RemovedObject, LeavesNothingForASecondPurge) {
  this->saved();
  this->project.db->template purge<TypeParam>();
  Results results;
  this->project.db->template purge<TypeParam>(results);
  EXPECT_TRUE(results.empty());
}

TYPED_TEST(RemovedObject, LeavesAFileWhoseReferencesAreWhole) {
  this->project.db->remove(this->saved());
  RawFile file = this->project.raw();
  EXPECT_EQ(file.rows("PRAGMA foreign_key_check"), RawFile::Rows());
}

// What the transaction of a host looks like afterwards, and what is in the file by then.

TYPED_TEST(RemovedObject, ByPointerOrIdCommitsAndFinalizesTheTransactionOfTheHost) {
  for (const bool byPointer : {true, false}) {
    const auto object = this->saved(byPointer ? 1 : 2);
    const unsigned int id = object->id();
    Transaction transaction(this->project.db, Transaction::BeginCurrent);
    const auto earlier = this->project.db->save(EntityType::create(byPointer ? L"earlier" : L"earlier, too"));
    if (byPointer) {
      this->project.db->remove(object);
    } else {
      this->project.db->template remove<TypeParam>(id);
    }
    EXPECT_TRUE(transaction.finalized());
    EXPECT_FALSE(Transaction::hasCurrent());
    EXPECT_FALSE(this->hasRow(id));
    EXPECT_TRUE(Removal::hasRow("tessel_EntityType", earlier->id()));
  }
}

TYPED_TEST(RemovedObject, InABatchLeavesTheTransactionOfTheHostLive) {
  const auto first = this->saved(1);
  const auto second = this->saved(2);
  Transaction transaction(this->project.db, Transaction::BeginCurrent);
  const auto earlier = this->project.db->save(EntityType::create(L"earlier"));
  this->project.db->template remove<TypeParam>(typename TestFixture::Ids{first->id(), second->id()});
  EXPECT_FALSE(transaction.finalized());
  ASSERT_TRUE(Transaction::hasCurrent());
  EXPECT_EQ(&Transaction::current(), &transaction);

  const auto later = this->project.db->save(EntityType::create(L"later"));
  transaction.rollback();
  EXPECT_FALSE(this->hasRow(first->id()));
  EXPECT_FALSE(this->hasRow(second->id()));
  EXPECT_TRUE(Removal::hasRow("tessel_EntityType", earlier->id())) << "committed along with the removal";
  EXPECT_FALSE(Removal::hasRow("tessel_EntityType", later->id())) << "still in the hands of the host";
}

TYPED_TEST(RemovedObject, ThatWasRefusedCommitsNothing) {
  const auto object = this->saved();
  this->reactor.whenRemoved = [](const auto&) { return RemoveResolution::Refuse; };
  Transaction transaction(this->project.db, Transaction::BeginCurrent);
  const auto earlier = this->project.db->save(EntityType::create(L"earlier"));
  this->project.db->remove(object);
  this->project.db->template remove<TypeParam>(object->id());
  this->project.db->template remove<TypeParam>(typename TestFixture::Ids{object->id()});
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(&Transaction::current(), &transaction);
  transaction.rollback();
  EXPECT_FALSE(Removal::hasRow("tessel_EntityType", earlier->id()));
}

TYPED_TEST(RemovedObject, ThatDoesNotExistLeavesTheTransactionOfTheHostLive) {
  const unsigned int missing = this->saved()->id() + 1000;
  Transaction transaction(this->project.db, Transaction::BeginCurrent);
  const auto earlier = this->project.db->save(EntityType::create(L"earlier"));
  EXPECT_THROW(this->project.db->template remove<TypeParam>(missing), DatabaseException);
  EXPECT_THROW(this->project.db->template remove<TypeParam>(typename TestFixture::Ids{missing}), DatabaseException);
  ASSERT_FALSE(transaction.finalized());
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_FALSE(Removal::hasRow("tessel_EntityType", earlier->id())) << "nothing was committed";
  transaction.commit();
  EXPECT_TRUE(Removal::hasRow("tessel_EntityType", earlier->id()));
}

TYPED_TEST(RemovedObject, AtWhichTheReactorThrowsLeavesTheTransactionOfTheHostLive) {
  const auto object = this->saved();
  this->reactor.whenRemoved = [](const auto&) -> RemoveResolution { throw std::runtime_error("mine"); };
  Transaction transaction(this->project.db, Transaction::BeginCurrent);
  const auto earlier = this->project.db->save(EntityType::create(L"earlier"));
  EXPECT_THROW(this->project.db->remove(object), std::runtime_error);
  EXPECT_THROW(this->project.db->template remove<TypeParam>(typename TestFixture::Ids{object->id()}),
               std::runtime_error);
  ASSERT_FALSE(transaction.finalized());
  EXPECT_EQ(&Transaction::current(), &transaction);
  transaction.commit();
  EXPECT_TRUE(Removal::hasRow("tessel_EntityType", earlier->id()));
  EXPECT_TRUE(this->hasRow(object->id()));
}

}  // namespace
}  // namespace tessel::test
