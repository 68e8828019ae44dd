// Saving objects of another file, which are copied.

#include <gmock/gmock.h>

#include <odb/exceptions.hxx>

#include <tessel/transaction.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

template <typename T>
class SaveCopy : public TwoProjects {
protected:
  static constexpr ObjectType type = ObjectTraits<T>::type;

  /// An object of the other file, under an id that is not the first.
  TsSmartPtr<T> foreign() {
    other->save(makeSample<T>(8));
    const TsSmartPtr<T> object = other->save(makeSample<T>(1));
    startWatching();
    return object;
  }

  IdMapping::Key sourceKey(const TsSmartPtr<T>& object) const { return {type, object->id(), other.get()}; }
};
TYPED_TEST_SUITE(SaveCopy, SampledClasses, ClassNames);

TYPED_TEST(SaveCopy, AnObjectOfAnotherFileIsCopiedAndLeftAsItIs) {
  const auto source = this->foreign();
  const unsigned int id = source->id();
  const auto copy = this->db->save(source);
  ASSERT_TRUE(copy);
  EXPECT_NE(copy, source);
  EXPECT_EQ(copy->projectDb(), this->db);
  EXPECT_FALSE(copy->isDirty());
  EXPECT_EQ(this->project.row(Sample<TypeParam>::table, copy->id()), valuesOf(*copy));
  EXPECT_TRUE(*copy == *source);
  EXPECT_EQ(source->id(), id);
  EXPECT_EQ(source->projectDb(), this->other);
  EXPECT_FALSE(source->isDirty());
}

TYPED_TEST(SaveCopy, TheConstantFormCopiesToo) {
  const auto source = this->foreign();
  const auto copy = this->db->save(TsSmartPtr<const TypeParam>(source));
  EXPECT_NE(copy, source);
  EXPECT_EQ(copy->projectDb(), this->db);
  EXPECT_TRUE(*copy == *source);
}

TYPED_TEST(SaveCopy, AllThatItRefersToIsCopiedFirst) {
  const auto source = this->foreign();
  std::vector<ObjectType> expected, told;
  appendVisits(*source, expected);
  const auto copy = this->db->save(source);
  for (const Saved& saved : this->reactor.saved) {
    told.push_back(saved.key.type);
    EXPECT_EQ(saved.resolution, SaveResolution::Created);
  }
  EXPECT_EQ(told, expected);
  EXPECT_EQ(this->reactor.saved.back().key, keyOf(copy));
  for (const auto& reference : Sample<TypeParam>::references(*copy)) EXPECT_EQ(reference->projectDb(), this->db);
}

TYPED_TEST(SaveCopy, TheMappingTellsWhatBecameOfIt) {
  const auto source = this->foreign();
  IdMapping mapping(this->db);
  const auto copy = this->db->save(source, mapping);
  IdMapping::Value value{};
  ASSERT_TRUE(mapping.get(this->sourceKey(source), value));
  EXPECT_EQ(value.id, copy->id());
  EXPECT_EQ(value.resolution, SaveResolution::Created);
  for (const auto& reference : Sample<TypeParam>::references(*source)) {
    EXPECT_TRUE(mapping.has({reference->tesselType(), reference->id(), this->other.get()}));
  }
}

TYPED_TEST(SaveCopy, WithOneMappingItIsWrittenOnceAndToldOnce) {
  const auto source = this->foreign();
  IdMapping mapping(this->db);
  const auto first = this->db->save(source, mapping);
  this->startWatching();
  const std::size_t size = mapping.size();
  const auto second = this->db->save(source, mapping);
  ASSERT_TRUE(second);
  EXPECT_EQ(second->id(), first->id());
  EXPECT_EQ(second->projectDb(), this->db);
  EXPECT_EQ(this->writes(), 0U);
  EXPECT_THAT(this->reactor.calls, IsEmpty());
  EXPECT_EQ(mapping.size(), size);
}

TYPED_TEST(SaveCopy, WithOneMappingTheConstantFormFindsItToo) {
  const auto source = this->foreign();
  IdMapping mapping(this->db);
  const auto first = this->db->save(source, mapping);
  this->startWatching();
  const auto second = this->db->save(TsSmartPtr<const TypeParam>(source), mapping);
  EXPECT_EQ(second->id(), first->id());
  EXPECT_EQ(this->writes(), 0U);
  EXPECT_THAT(this->reactor.calls, IsEmpty());
}

// Whatever the mapping says is believed.
TYPED_TEST(SaveCopy, AMappedObjectIsTheOneWithTheMappedId) {
  const auto source = this->foreign();
  const auto stand = this->db->save(makeSample<TypeParam>(5));
  this->startWatching();
  IdMapping mapping(this->db);
  mapping.set(this->sourceKey(source), {stand->id(), SaveResolution::Renamed});
  const auto result = this->db->save(source, mapping);
  EXPECT_EQ(result->id(), stand->id());
  EXPECT_TRUE(*result == *stand);
  IdMapping::Value value{};
  mapping.get(this->sourceKey(source), value);
  EXPECT_EQ(value.resolution, SaveResolution::Renamed) << "the entry stays";
}

TYPED_TEST(SaveCopy, AMappedRowMustBeThere) {
  const auto source = this->foreign();
  IdMapping mapping(this->db);
  mapping.set(this->sourceKey(source), {4711, SaveResolution::Created});
  EXPECT_THROW(this->db->save(source, mapping), ObjectNotFound);
}

// Id 0 is that of no row, and an entry that says so is followed, too.
TYPED_TEST(SaveCopy, AnEntryWithoutARowGivesNull) {
  const auto source = this->foreign();
  const long long before = this->rows(Sample<TypeParam>::table);
  IdMapping mapping(this->db);
  mapping.set(this->sourceKey(source), {0, SaveResolution::Kept});
  EXPECT_FALSE(this->db->save(source, mapping));
  EXPECT_FALSE(this->db->save(TsSmartPtr<const TypeParam>(source), mapping));
  EXPECT_EQ(this->rows(Sample<TypeParam>::table), before);
  EXPECT_THAT(this->reactor.calls, IsEmpty());
  EXPECT_EQ(mapping.size(), 1U);
}

TYPED_TEST(SaveCopy, ChangesInMemoryAreCopiedAndStayUnsavedInTheSource) {
  const auto source = this->foreign();
  changeSomething(*source);
  const auto copy = this->db->save(source);
  EXPECT_TRUE(*copy == *source);
  EXPECT_TRUE(source->isDirty());
}

TYPED_TEST(SaveCopy, TheTransactionOfTheSourceIsSetAside) {
  const auto source = this->foreign();
  Transaction transaction(this->other, Transaction::BeginCurrent);
  const auto copy = this->db->save(source);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_EQ(this->rows(Sample<TypeParam>::table), static_cast<long long>(this->db->template count<TypeParam>()));
  EXPECT_TRUE(copy);
}

TYPED_TEST(SaveCopy, WithinATransactionOfTheDestinationNothingIsCommitted) {
  const auto source = this->foreign();
  const long long before = this->rows(Sample<TypeParam>::table);
  Transaction transaction(this->db, Transaction::BeginCurrent);
  this->db->save(source);
  EXPECT_EQ(this->rows(Sample<TypeParam>::table), before);
  transaction.commit();
  EXPECT_EQ(this->rows(Sample<TypeParam>::table), before + 1);
}

class SaveCopySpecial : public TwoProjects {
protected:
  static TsSmartPtr<Unit> unit(const std::shared_ptr<ProjectDb>& target, const wchar_t* label, double scale) {
    return Unit::create(label, scale, target->get<Measure>(NameKey(L"LENGTH")));
  }
};

TEST_F(SaveCopySpecial, AStoryBringsItsBuildingAndItsSiteAlong) {
  const auto source = other->save(makeSample<Story>(1));
  IdMapping mapping(db);
  const auto story = db->save(source, mapping);
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(story->building()->site()), SaveResolution::Created),
                                      Pair(keyOf(story->building()), SaveResolution::Created),
                                      Pair(keyOf(story), SaveResolution::Created)));
  EXPECT_EQ(mapping.size(), 3U);
  EXPECT_EQ(rows("tessel_Site"), 1);
  EXPECT_EQ(rows("tessel_Building"), 1);
}

TEST_F(SaveCopySpecial, StoriesOfOneBuildingBringItAlongOnce) {
  const auto building = other->save(makeSample<Building>(1));
  const auto first = other->save(Story::create(building, L"Ground", 0));
  const auto second = other->save(Story::create(building, L"First", 3));
  IdMapping mapping(db);
  const auto one = db->save(first, mapping);
  const auto two = db->save(second, mapping);
  EXPECT_EQ(rows("tessel_Building"), 1);
  EXPECT_EQ(one->building()->id(), two->building()->id());
  EXPECT_EQ(reactor.saved.size(), 4U);
}

TEST_F(SaveCopySpecial, AMeasureOfTheSameNameStandsForTheCopy) {
  const auto length = other->get<Measure>(NameKey(L"LENGTH"));
  IdMapping mapping(db);
  const auto result = db->save(length, mapping);
  EXPECT_EQ(result->projectDb(), db);
  EXPECT_EQ(rows("tessel_Measure"), 4);
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(result), SaveResolution::Kept)));
  IdMapping::Value value{};
  ASSERT_TRUE(mapping.get({ObjectType::Measure, length->id(), other.get()}, value));
  EXPECT_EQ(value.resolution, SaveResolution::Kept);
}

TEST_F(SaveCopySpecial, TheMembersOfASetAreCopiedAndReplaced) {
  const auto set = PropertySet::create(PropertyNamespace::create(L"Common"), L"Door");
  set->append_property_definition(L"Width", PropertyType::Single(PropertyType::Type::Double));
  set->append_value_definition(L"Note", PropertyType::Single(PropertyType::Type::String));
  set->insert_entity_type(L"Door");
  const auto source = other->save(set);
  const auto copy = db->save(source);
  EXPECT_EQ(copy->ns()->projectDb(), db);
  ASSERT_EQ(copy->property_definitions().size(), 1U);
  EXPECT_EQ(copy->property_definitions()[0]->projectDb(), db);
  EXPECT_EQ(copy->value_definitions().at(0)->projectDb(), db);
  EXPECT_EQ(copy->entity_types().at(0)->projectDb(), db);
  EXPECT_EQ(source->property_definitions()[0]->projectDb(), other) << "the source keeps its own";
  EXPECT_EQ(copy->property_definitions()[0]->ns()->id(), copy->ns()->id());
}

// Units of the columns.

TEST_F(SaveCopySpecial, NumbersAreConvertedToTheUnitsOfTheDestination) {
  other->setDefaultUnit(unit(other, L"mm", 0.001));
  db->setDefaultUnit(unit(db, L"m", 1));
  const auto source = other->save(Story::create(Building::create(Site::create(L"Hill"), L"House"), L"First", 2750));
  const auto copy = db->save(source);
  EXPECT_EQ(copy->elevation(), 2.75);
  EXPECT_EQ(source->elevation(), 2750);
}

TEST_F(SaveCopySpecial, WhatCannotBeConvertedIsNullAndNothingIsWritten) {
  other->setDefaultUnit(unit(other, L"mm", 0.001));
  const auto source = other->save(Story::create(Building::create(Site::create(L"Hill"), L"House"), L"First", 2750));
  startWatching();
  IdMapping mapping(db);
  EXPECT_FALSE(db->save(source, mapping));
  EXPECT_FALSE(db->save(TsSmartPtr<const Story>(source), mapping));
  EXPECT_FALSE(source->save(db));
  EXPECT_EQ(mapping.size(), 0U);
  EXPECT_THAT(reactor.calls, IsEmpty());
  EXPECT_EQ(rows("tessel_SpatialStructure"), 0);
  EXPECT_THAT(sql.beginningWith("COMMIT"), IsEmpty());
}

// Then there is nothing left that the story could refer to.
TEST_F(SaveCopySpecial, AReferenceThatCannotBeConvertedFailsTheSave) {
  other->setDefaultUnit(unit(other, L"mm", 0.001));
  otherProject.raw().exec("DELETE FROM tessel_ColumnUnit WHERE \"table\" = 'Story'");
  const auto source = other->save(Story::create(Building::create(Site::create(L"Hill"), L"House"), L"First", 3));
  EXPECT_THROW(db->save(source), DatabaseException);
  EXPECT_EQ(rows("tessel_SpatialStructure"), 0);
}

TEST_F(SaveCopySpecial, TwoHandlesOnOneFileAreTwoDatabases) {
  const auto second = ProjectDb::open(OdString::fromUtf8(project.path()), false);
  const auto site = db->save(Site::create(L"Hill"));
  EXPECT_THROW(second->save(site), ObjectNotUnique) << "it is copied onto itself";
}

}  // namespace
}  // namespace tessel::test
