// What becomes of an object whose name is taken.

#include <gmock/gmock.h>

#include <tessel/transaction.h>

#include "operations/clash.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

TYPED_TEST_SUITE(Clash, ReactorClasses, ClassNames);

// By default.

TYPED_TEST(Clash, WithTheDefaultReactorTheSaveFails) {
  this->db->setReactor(nullptr);
  try {
    this->db->save(this->incoming);
    ADD_FAILURE();
  } catch (const ObjectNotUnique& error) {
    EXPECT_STREQ(error.what(), L"An other object with the same values exists: name");
    EXPECT_EQ(error.member(), L"name");
  }
  this->expectUnsaved(*this->incoming);
  EXPECT_EQ(this->ownRows(), 1);
  EXPECT_FALSE(Transaction::hasCurrent());
}

TYPED_TEST(Clash, TheSavepointIsGoneAfterAFailure) {
  EXPECT_THROW(this->db->save(this->incoming), ObjectNotUnique);
  const auto verbs = this->sql.verbs();
  EXPECT_EQ(std::count(verbs.begin(), verbs.end(), "SAVEPOINT"), 1);
  EXPECT_EQ(std::count(verbs.begin(), verbs.end(), "RELEASE"), 1);
  EXPECT_EQ(this->sql.beginningWith("ROLLBACK TO SAVEPOINT").size(), 1U);
  EXPECT_EQ(this->sql.statements().back(), "ROLLBACK");
}

TYPED_TEST(Clash, TheConstantFormClashesToo) {
  EXPECT_THROW(this->db->save(TsSmartPtr<const TypeParam>(this->incoming)), ObjectNotUnique);
  this->expectUnsaved(*this->incoming);
}

TYPED_TEST(Clash, AFailureWithinATransactionLeavesWhatWasSavedBefore) {
  Transaction transaction(this->db, Transaction::BeginCurrent);
  this->db->save(makeSample<TypeParam>(2));
  EXPECT_THROW(this->db->save(this->incoming), ObjectNotUnique);
  EXPECT_FALSE(transaction.finalized());
  this->db->save(makeSample<TypeParam>(3));
  transaction.commit();
  EXPECT_EQ(this->ownRows(), 3);
}

// The question.

TYPED_TEST(Clash, TheReactorIsAskedOnceWithTheNameAndTheClass) {
  this->reactor.answer({SaveResolution::Kept});
  this->db->save(this->incoming);
  ASSERT_EQ(this->reactor.clashes.size(), 1U);
  EXPECT_EQ(this->reactor.clashes[0].database, this->db.get());
  EXPECT_EQ(this->reactor.clashes[0].type, this->type);
  EXPECT_EQ(this->reactor.clashes[0].name, this->incoming->name());
}

TYPED_TEST(Clash, SetNameHoldsTheCandidateAndTellsWhetherItIsFree) {
  this->reactor.answer([this](ProjectDb::Reactor::ObjectInfo& info) {
    EXPECT_EQ(info.database(), this->db);
    EXPECT_TRUE(info.setName(L"nobody has this"));
    EXPECT_EQ(info.name(), L"nobody has this");
    EXPECT_FALSE(info.setName(this->incoming->name()));
    EXPECT_EQ(info.name(), this->incoming->name());
    return SaveResolution::Kept;
  });
  EXPECT_EQ(this->db->save(this->incoming)->id(), this->existing->id());
}

TYPED_TEST(Clash, WithATransactionOfTheHostTheReactorIsAskedWithinIt) {
  Transaction transaction(this->db, Transaction::BeginCurrent);
  this->reactor.answer([&transaction](ProjectDb::Reactor::ObjectInfo&) {
    EXPECT_EQ(&Transaction::current(), &transaction);
    return SaveResolution::Kept;
  });
  this->db->save(this->incoming);
}

TYPED_TEST(Clash, WhatTheReactorThrowsPassesUnchanged) {
  Transaction transaction(this->db, Transaction::BeginCurrent);
  this->db->save(makeSample<TypeParam>(2));
  this->reactor.answer([](ProjectDb::Reactor::ObjectInfo&) -> SaveResolution { throw std::domain_error("host"); });
  EXPECT_THROW(this->db->save(this->incoming), std::domain_error);
  this->expectUnsaved(*this->incoming);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(this->sql.beginningWith("RELEASE SAVEPOINT").size(), this->sql.beginningWith("SAVEPOINT").size());
  transaction.commit();
  EXPECT_EQ(this->ownRows(), 2);
}

// Kept.

TYPED_TEST(Clash, KeptTakesTheExistingObjectAndWritesNothing) {
  const auto before = this->row(this->existing->id());
  this->reactor.answer({SaveResolution::Kept});
  IdMapping mapping(this->db);
  const auto result = this->db->save(this->incoming, mapping);
  EXPECT_NE(result, this->incoming);
  EXPECT_EQ(result->id(), this->existing->id());
  EXPECT_EQ(result->projectDb(), this->db);
  EXPECT_FALSE(result->isDirty());
  EXPECT_EQ(valuesOf(*result), before);
  EXPECT_EQ(this->row(result->id()), before);
  EXPECT_EQ(this->ownRows(), 1);
  this->expectUnsaved(*this->incoming);
  EXPECT_THAT(this->outcomes(), ElementsAre(Pair(keyOf(result), SaveResolution::Kept)));
  EXPECT_EQ(this->recorded(mapping).id, result->id());
  EXPECT_EQ(this->recorded(mapping).resolution, SaveResolution::Kept);
  EXPECT_EQ(this->attempts(), 1U);
}

TYPED_TEST(Clash, AnObjectThatWasNotKeptClashesAgain) {
  this->reactor.otherwise(SaveResolution::Kept);
  this->db->save(this->incoming);
  this->db->save(this->incoming);
  EXPECT_EQ(this->reactor.clashes.size(), 2U);
  EXPECT_EQ(this->ownRows(), 1);
}

TYPED_TEST(Clash, KeptAfterATriedNameStillTakesTheOneThatClashed) {
  this->reactor.answer([](ProjectDb::Reactor::ObjectInfo& info) {
    info.setName(L"nobody has this");
    return SaveResolution::Kept;
  });
  EXPECT_EQ(this->db->save(this->incoming)->id(), this->existing->id());
}

// Overwritten.

TYPED_TEST(Clash, OverwrittenPutsTheValuesIntoTheExistingRow) {
  this->reactor.answer({SaveResolution::Overwritten});
  IdMapping mapping(this->db);
  const auto result = this->db->save(this->incoming, mapping);
  EXPECT_NE(result, this->incoming);
  EXPECT_EQ(result->id(), this->existing->id());
  EXPECT_EQ(result->projectDb(), this->db);
  EXPECT_FALSE(result->isDirty());
  EXPECT_EQ(this->row(result->id()), this->overwritten());
  EXPECT_EQ(valuesOf(*result), this->overwritten());
  EXPECT_EQ(this->ownRows(), 1);
  this->expectUnsaved(*this->incoming);
  EXPECT_THAT(this->outcomes(), ElementsAre(Pair(keyOf(result), SaveResolution::Overwritten)));
  EXPECT_EQ(this->recorded(mapping).id, result->id());
  EXPECT_EQ(this->recorded(mapping).resolution, SaveResolution::Overwritten);
}

TYPED_TEST(Clash, OverwrittenDoesNotTouchTheObjectThatTheHostHolds) {
  const auto before = valuesOf(*this->existing);
  this->reactor.answer({SaveResolution::Overwritten});
  const auto result = this->db->save(this->incoming);
  EXPECT_NE(result, this->existing);
  EXPECT_EQ(valuesOf(*this->existing), before);
}

// Created, and whatever else is no answer.

TYPED_TEST(Clash, CreatedTriesAgainSixTimesAndThenFails) {
  this->reactor.otherwise(SaveResolution::Created);
  EXPECT_THROW(this->db->save(this->incoming), ObjectNotUnique);
  EXPECT_EQ(this->reactor.clashes.size(), 6U);
  EXPECT_EQ(this->attempts(), 7U);
  EXPECT_EQ(this->sql.beginningWith("SAVEPOINT").size(), 1U) << "one savepoint serves all attempts";
  EXPECT_EQ(this->sql.beginningWith("ROLLBACK TO SAVEPOINT").size(), 7U);
  EXPECT_EQ(this->ownRows(), 1);
  this->expectUnsaved(*this->incoming);
  EXPECT_THAT(this->reactor.saved, IsEmpty());
}

TYPED_TEST(Clash, AnUnknownAnswerTriesAgainToo) {
  this->reactor.otherwise(static_cast<SaveResolution>(7));
  EXPECT_THROW(this->db->save(this->incoming), ObjectNotUnique);
  EXPECT_EQ(this->reactor.clashes.size(), 6U);
}

// ODB drops the text of SQLite when the row of a derived class is refused.
TYPED_TEST(Clash, TheFailureNamesTheColumnsOfTheIndexUnlessItIsASpatialObject) {
  static const std::map<ObjectType, OdString> members = {
    {ObjectType::Site, L""},
    {ObjectType::Building, L""},
    {ObjectType::Story, L""},
    {ObjectType::EntityType, L"EntityType.name"},
    {ObjectType::PropertyNamespace, L"PropertyNamespace.name"},
    {ObjectType::PropertyDefinition, L"PropertyDefinition.name,PropertyDefinition.namespace_id"},
    {ObjectType::ValueDefinition, L"ValueDefinition.name,ValueDefinition.namespace_id"},
    {ObjectType::PropertySet, L"PropertySet.name,PropertySet.namespace_id"},
  };
  this->reactor.otherwise(SaveResolution::Created);
  try {
    this->db->save(this->incoming);
    ADD_FAILURE();
  } catch (const ObjectNotUnique& error) {
    EXPECT_EQ(error.member(), members.at(this->type));
  }
}

TYPED_TEST(Clash, TheSixthAnswerStillCounts) {
  this->reactor.answer(std::vector<SaveResolution>(5, SaveResolution::Created));
  this->reactor.answer({SaveResolution::Overwritten});
  EXPECT_EQ(this->db->save(this->incoming)->id(), this->existing->id());
  EXPECT_EQ(this->reactor.clashes.size(), 6U);
  EXPECT_EQ(this->row(this->existing->id()), this->overwritten());
  EXPECT_EQ(this->sql.beginningWith("UPDATE \"" + std::string(Sample<TypeParam>::table)).size(), 1U)
    << "the seventh attempt";
}

// Objects of another file.

TYPED_TEST(Clash, ACopyClashesAsANewObjectDoes) {
  const auto source = this->other->save(makeSample<TypeParam>(1));
  this->reactor.otherwise(SaveResolution::Kept);
  IdMapping mapping(this->db);
  const auto result = this->db->save(source, mapping);
  EXPECT_EQ(result->id(), this->existing->id());
  IdMapping::Value value{};
  ASSERT_TRUE(mapping.get({this->type, source->id(), this->other.get()}, value));
  EXPECT_EQ(value.id, this->existing->id());
  EXPECT_EQ(value.resolution, SaveResolution::Kept);
}

}  // namespace
}  // namespace tessel::test
