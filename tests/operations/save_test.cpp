// Saving objects of one file: what is written, what is returned and what is told.

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
  EXPECT_EQ(this->ownRows(), before + 1);
  EXPECT_EQ(this->row(object), valuesOf(*object));
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

TYPED_TEST(Save, WithoutATransactionItIsDurable) {
  this->db->save(makeSample<TypeParam>(1));
  EXPECT_THAT(this->sql.beginningWith("COMMIT"), ::testing::Not(IsEmpty()));
  EXPECT_FALSE(Transaction::hasCurrent());
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

// Special cases.

class SaveSpecial : public TwoProjects {};

TEST_F(SaveSpecial, ABlankSiteIsNotDirtyAndNotWritten) {
  const auto site = Site::create();
  EXPECT_EQ(db->save(site), site);
  EXPECT_EQ(site->id(), 0U);
  EXPECT_FALSE(site->projectDb());
  EXPECT_EQ(rows("tessel_Site"), 0);
  EXPECT_THAT(outcomes(), ElementsAre(Pair(ObjectKey{ObjectType::Site, 0}, SaveResolution::Kept)));
}

TEST_F(SaveSpecial, ASpatialObjectIsTwoRowsOfOneId) {
  const auto story = db->save(makeSample<Story>(1));
  const std::string id = std::to_string(story->id());
  EXPECT_EQ(project.raw().scalarText("SELECT typeid FROM tessel_SpatialStructure WHERE id = " + id), "tessel::Story");
  EXPECT_EQ(project.raw().scalarText("SELECT count(*) FROM tessel_Story WHERE id = " + id), "1");
}

TEST_F(SaveSpecial, ASpatialStructureIsSavedAsItsClass) {
  const TsSmartPtr<SpatialStructure> structure = makeSample<Building>(1);
  const TsSmartPtr<Object> result = structure->save(db);
  EXPECT_EQ(result, structure);
  EXPECT_EQ(rows("tessel_Building"), 1);
}

TEST_F(SaveSpecial, AnObjectOfAClosedDatabaseBecomesANewRowAndTakesItsId) {
  for (int i = 1; i < 4; ++i) other->save(Site::create(OdString::format(L"Site %d", i)));
  const auto site = other->get<Site>(3);
  other.reset();
  site->set_town(L"Bergen");
  EXPECT_EQ(db->save(site), site);
  EXPECT_EQ(site->id(), 1U);
  EXPECT_EQ(site->projectDb(), db);
  EXPECT_EQ(project.row("tessel_Site", 1), valuesOf(*site));
}

TEST_F(SaveSpecial, SavingAReferrerDoesNotSaveChangesOfWhatItRefersTo) {
  const auto building = db->save(Building::create(Site::create(L"Hill"), L"House"));
  const auto story = db->save(Story::create(building, L"Ground", 0));
  startWatching();
  building->set_description(L"changed");
  story->set_description(L"changed");
  db->save(story);
  EXPECT_TRUE(building->isDirty());
  EXPECT_EQ(project.row("tessel_Building", building->id())["description"], "");
  EXPECT_EQ(project.row("tessel_Story", story->id())["description"], "changed");
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(story), SaveResolution::Overwritten)));
}

TEST_F(SaveSpecial, ANewReferenceOfACleanObjectIsWritten) {
  const auto building = db->save(Building::create(Site::create(L"Hill"), L"House"));
  const auto vale = Site::create(L"Vale");
  building->set_site(vale);
  db->save(building);
  EXPECT_NE(vale->id(), 0U);
  EXPECT_EQ(project.row("tessel_Building", building->id())["site_id"], std::to_string(vale->id()));
}

TEST_F(SaveSpecial, TwoNewObjectsShareANewReference) {
  const auto site = Site::create(L"Hill");
  const auto first = db->save(Building::create(site, L"A"));
  const auto second = db->save(Building::create(site, L"B"));
  EXPECT_EQ(rows("tessel_Site"), 1);
  EXPECT_EQ(first->site(), second->site());
}

TEST_F(SaveSpecial, APropertySetSavesItsMembersInTheirOrder) {
  const auto ns = PropertyNamespace::create(L"Common");
  const auto set = PropertySet::create(ns, L"Door");
  const auto string = PropertyType::Single(PropertyType::Type::String);
  set->insert_entity_type(L"Door");
  set->append_value_definition(L"Value", string);
  set->append_property_definition(L"Second", string);
  set->insert_property_definition(set->property_definitions().begin(), L"First", string);
  set->insert_entity_type(L"Gate");
  db->save(set);
  const auto key = [](const auto& object) { return keyOf(object); };
  const auto created = [&](const auto& object) { return Pair(key(object), SaveResolution::Created); };
  EXPECT_THAT(outcomes(), ElementsAre(created(ns), created(set->property_definitions()[0]),
                                      created(set->property_definitions()[1]), created(set->value_definitions()[0]),
                                      created(set->entity_types()[0]), created(set->entity_types()[1]), created(set)));
  EXPECT_EQ(set->property_definitions()[0]->name(), L"First");
  EXPECT_THAT(
    project.raw().column("SELECT d.name FROM tessel_PropertySet_property_definitions m JOIN "
                         "tessel_PropertyDefinition d ON d.id = m.property_definition_id ORDER BY m.\"index\""),
    ElementsAre("First", "Second"));
}

TEST_F(SaveSpecial, ADefinitionSavesItsNamespaceAndThenItsUnit) {
  const auto definition = makeSample<PropertyDefinition>(1);
  db->save(definition);
  std::vector<ObjectType> types;
  for (const Saved& saved : reactor.saved) types.push_back(saved.key.type);
  EXPECT_THAT(types, ElementsAre(ObjectType::PropertyNamespace, ObjectType::Measure, ObjectType::Unit,
                                 ObjectType::PropertyDefinition));
}

TEST_F(SaveSpecial, HandlesDoNotShareTheirReactor) {
  other->save(Site::create(L"Hill"));
  EXPECT_THAT(reactor.saved, IsEmpty());
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(reactor.saved.size(), 1U);
}

TEST_F(SaveSpecial, WithoutAReactorTheDefaultOneServes) {
  db->setReactor(nullptr);
  db->save(Site::create(L"Hill"));
  EXPECT_THAT(reactor.saved, IsEmpty());
  EXPECT_THROW(db->save(Site::create(L"Hill")), ObjectNotUnique);
}

}  // namespace
}  // namespace tessel::test
