// Objects of one file that refer to objects of another, and the forms of saving that objects have themselves.

#include <gmock/gmock.h>

#include "operations/copying.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class CopyReference : public Copying {
protected:
  std::vector<ObjectType> typesTold() const {
    std::vector<ObjectType> types;
    for (const Saved& saved : reactor.saved) types.push_back(saved.key.type);
    return types;
  }
};

TEST_F(CopyReference, ANewObjectBringsItAlong) {
  foreignStory(L"Ground", 0);
  startWatching();
  const auto story = db->save(Story::create(house, L"Roof", 9));
  EXPECT_THAT(typesTold(), ElementsAre(ObjectType::Site, ObjectType::Building, ObjectType::Story));
  EXPECT_EQ(story->building()->projectDb(), db);
  EXPECT_EQ(story->building()->site()->projectDb(), db);
  EXPECT_THAT(inFile("name", "Story"), ElementsAre("Roof")) << "not what else refers to the building";
  EXPECT_EQ(house->projectDb(), other);
}

TEST_F(CopyReference, OfASavedObjectIsCopiedWhenTheObjectIsWrittenAgain) {
  const auto story = db->save(Story::create(Building::create(Site::create(L"Vale"), L"Hut"), L"Roof", 9));
  const auto foreign = other->save(Building::create(Site::create(L"Hill"), L"House"));
  story->set_building(foreign);
  startWatching();
  db->save(story);
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(story->building()->site()), SaveResolution::Created),
                                      Pair(keyOf(story->building()), SaveResolution::Created),
                                      Pair(keyOf(story), SaveResolution::Overwritten)));
  EXPECT_THAT(project.raw().column("SELECT b.name FROM tessel_Story s JOIN tessel_Building b ON b.id = s.building_id"),
              ElementsAre("House"));
}

TEST_F(CopyReference, OfAUnitIsItsMeasureWhichMerges) {
  const auto unit = db->save(unitOf(other, L"LENGTH", L"m", 1));
  EXPECT_EQ(unit->measure()->id(), db->get<Measure>(NameKey(L"LENGTH"))->id());
  EXPECT_EQ(rows("tessel_Measure"), 4);
}

TEST_F(CopyReference, OfADefinitionAreItsNamespaceAndItsUnit) {
  const auto definition = PropertyDefinition::create(
    TsSmartPtr<const PropertyNamespace>(other->save(PropertyNamespace::create(L"Common"))), L"Width");
  definition->set_unit(other->save(unitOf(other, L"LENGTH", L"m", 1)));
  startWatching();
  db->save(definition);
  EXPECT_THAT(typesTold(), ElementsAre(ObjectType::PropertyNamespace, ObjectType::Measure, ObjectType::Unit,
                                       ObjectType::PropertyDefinition));
  EXPECT_EQ(definition->ns()->projectDb(), db);
  EXPECT_EQ(definition->unit()->projectDb(), db);
}

TEST_F(CopyReference, OfTwoObjectsIsCopiedOnceWithOneMapping) {
  foreignStory(L"Ground", 0);
  IdMapping mapping(db);
  const auto roof = db->save(Story::create(house, L"Roof", 9), mapping);
  const auto attic = db->save(Story::create(house, L"Attic", 6), mapping);
  EXPECT_EQ(roof->building()->id(), attic->building()->id());
  EXPECT_EQ(rows("tessel_Building"), 1);
}

TEST_F(CopyReference, OfTwoObjectsIsCopiedTwiceWithoutAndClashes) {
  foreignStory(L"Ground", 0);
  db->save(Story::create(house, L"Roof", 9));
  EXPECT_THROW(db->save(Story::create(house, L"Attic", 6)), ObjectNotUnique);
}

TEST_F(CopyReference, ThatIsInTheMappingUnderAnotherClassIsNotFound) {
  const auto foreign = other->save(Site::create(L"Hill"));
  IdMapping mapping(db);
  mapping.set({ObjectType::Building, foreign->id(), other.get()}, {1, SaveResolution::Kept});
  mapping.set({ObjectType::Site, foreign->id(), db.get()}, {1, SaveResolution::Kept});
  EXPECT_EQ(db->save(foreign, mapping)->name(), L"Hill");
  EXPECT_EQ(rows("tessel_Site"), 1);
}

TEST_F(CopyReference, WithUnsavedChangesIsCopiedWithThem) {
  foreignStory(L"Ground", 0);
  house->set_description(L"changed");
  db->save(Story::create(house, L"Roof", 9));
  EXPECT_THAT(inFile("description", "Building"), ElementsAre("changed"));
  EXPECT_THAT(otherProject.raw().column("SELECT description FROM tessel_Building"), ElementsAre(""));
}

// The forms that objects have.

template <typename T>
class CopyForm : public Copying {
protected:
  CopyForm() {
    other->save(makeSample<T>(8));
    foreign = other->save(makeSample<T>(1));
    startWatching();
  }

  TsSmartPtr<T> foreign;
};
TYPED_TEST_SUITE(CopyForm, SampledClasses, ClassNames);

TYPED_TEST(CopyForm, AnObjectCopiesItselfAsWhatItIs) {
  const TsSmartPtr<Object> object = this->foreign;
  IdMapping mapping(this->db);
  const auto copy = object->save(this->db, mapping);
  ASSERT_TRUE(copy);
  EXPECT_EQ(copy->tesselType(), object->tesselType());
  EXPECT_EQ(copy->projectDb(), this->db);
  EXPECT_EQ(this->mapped(mapping, *object).id, copy->id());
  EXPECT_EQ(object->save(this->db, mapping)->id(), copy->id());
}

TYPED_TEST(CopyForm, TheConstantFormOfAnObjectCopiesItToo) {
  const TsSmartPtr<const Object> object = this->foreign;
  const auto copy = object->save(this->db);
  ASSERT_TRUE(copy);
  EXPECT_NE(copy, object);
  EXPECT_EQ(copy->projectDb(), this->db);
}

TYPED_TEST(CopyForm, AnObjectSavesIntoItsOwnFileAndNoOther) {
  changeSomething(*this->foreign);
  EXPECT_TRUE(this->foreign->save());
  EXPECT_THAT(this->reactor.calls, IsEmpty());
  EXPECT_FALSE(this->foreign->isDirty());
  EXPECT_EQ(this->foreign->projectDb(), this->other);
}

TYPED_TEST(CopyForm, ACopyIsSavedIntoTheDestinationFromThenOn) {
  const auto copy = this->db->save(this->foreign);
  const auto before = this->otherProject.row(Sample<TypeParam>::table, this->foreign->id());
  changeSomething(*copy);
  EXPECT_TRUE(copy->save());
  EXPECT_EQ(this->project.row(Sample<TypeParam>::table, copy->id()), valuesOf(*copy));
  EXPECT_EQ(this->otherProject.row(Sample<TypeParam>::table, this->foreign->id()), before);
}

}  // namespace
}  // namespace tessel::test
