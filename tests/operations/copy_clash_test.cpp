// Copies of objects whose names are taken in the destination.

#include <gmock/gmock.h>

#include "operations/copying.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ObjectInfo = ProjectDb::Reactor::ObjectInfo;

template <typename T>
class CopyClash : public Copying {
protected:
  static constexpr ObjectType type = ObjectTraits<T>::type;

  CopyClash() {
    db->save(makeSample<T>(9));
    existing = db->save(makeSample<T>(1));
    const TsSmartPtr<T> incoming = makeSample<T>(1);
    changeAllButTheName(*incoming);
    foreign = other->save(incoming);
    before = row(existing->id());
    startWatching();
  }

  /// The owners of the object clash as well; the file's own stand for them.
  void answer(const std::function<SaveResolution(ObjectInfo&)>& onOwn) {
    reactor.otherwise(
      [onOwn](ObjectInfo& info) { return info.objectType() == type ? onOwn(info) : SaveResolution::Kept; });
  }
  void answer(SaveResolution resolution) {
    answer([resolution](ObjectInfo&) { return resolution; });
  }

  std::map<std::string, std::string> row(unsigned int id) const { return project.row(Sample<T>::table, id); }
  long long ownRows() const { return rows(Sample<T>::table); }

  /// The values of the incoming object, which refer to the objects of the destination.
  std::map<std::string, std::string> incomingValues() const {
    std::map<std::string, std::string> values = valuesOf(*foreign);
    for (const std::string& column : referenceColumns<T>()) {
      if (values.count(column) > 0) values[column] = before.at(column);
    }
    return values;
  }

  void expectOutcome(const IdMapping& mapping, unsigned int id, SaveResolution resolution) const {
    EXPECT_EQ(mapped(mapping, *foreign).id, id);
    EXPECT_EQ(mapped(mapping, *foreign).resolution, resolution);
    ASSERT_FALSE(reactor.saved.empty());
    EXPECT_EQ(reactor.saved.back(), (Saved{db.get(), {type, id}, resolution}));
  }

  TsSmartPtr<T> existing;
  TsSmartPtr<T> foreign;
  std::map<std::string, std::string> before;
};
TYPED_TEST_SUITE(CopyClash, ReactorClasses, ClassNames);

TYPED_TEST(CopyClash, WithTheDefaultReactorTheCopyFailsAndTheDestinationStaysAsItWas) {
  this->db->setReactor(nullptr);
  const Unchanged source(this->otherProject);
  const Unchanged destination(this->project);
  try {
    this->db->template copyAll<TypeParam>(this->other);
    ADD_FAILURE();
  } catch (const ObjectNotUnique& error) {
    EXPECT_EQ(error.member(), L"name");
  }
  EXPECT_THROW(this->db->copyAll(this->other), ObjectNotUnique);
}

TYPED_TEST(CopyClash, KeptTakesTheExistingObject) {
  this->answer(SaveResolution::Kept);
  IdMapping mapping(this->db);
  this->db->template copyAll<TypeParam>(this->other, mapping);
  EXPECT_EQ(this->ownRows(), 2);
  EXPECT_EQ(this->row(this->existing->id()), this->before);
  this->expectOutcome(mapping, this->existing->id(), SaveResolution::Kept);
}

TYPED_TEST(CopyClash, OverwrittenGivesTheExistingObjectTheIncomingValues) {
  this->answer(SaveResolution::Overwritten);
  auto expected = this->incomingValues();
  // Of a value definition only what it shares with property definitions is taken over.
  if (this->type == ObjectType::ValueDefinition) expected["value_spec"] = this->before["value_spec"];
  IdMapping mapping(this->db);
  this->db->template copyAll<TypeParam>(this->other, mapping);
  EXPECT_EQ(this->ownRows(), 2);
  EXPECT_EQ(this->row(this->existing->id()), expected);
  this->expectOutcome(mapping, this->existing->id(), SaveResolution::Overwritten);
}

TYPED_TEST(CopyClash, AnAnswerThatChangesNothingIsAskedForSixTimesAndFails) {
  this->answer(SaveResolution::Created);
  const Unchanged destination(this->project);
  EXPECT_THROW(this->db->template copyAll<TypeParam>(this->other), ObjectNotUnique);
  EXPECT_EQ(std::count_if(this->reactor.clashes.begin(), this->reactor.clashes.end(),
                          [this](const auto& clash) { return clash.type == this->type; }),
            6);
}

TYPED_TEST(CopyClash, TheQuestionIsAskedOnceForEachObject) {
  this->answer(SaveResolution::Kept);
  this->db->copyAll(this->other);
  const std::size_t questions = this->reactor.clashes.size();
  for (const RecordingReactor::Clash& clash : this->reactor.clashes) {
    EXPECT_EQ(clash.database, this->db.get());
    EXPECT_EQ(std::count(this->reactor.clashes.begin(), this->reactor.clashes.end(), clash), 1);
  }
  EXPECT_GE(questions, 1U);
}

template <typename T>
class CopyRenamed : public CopyClash<T> {};
TYPED_TEST_SUITE(CopyRenamed, RenamableReactorClasses, ClassNames);

TYPED_TEST(CopyRenamed, TheCopyGetsTheNewNameAndIsReportedAsCreated) {
  this->answer([](ObjectInfo& info) {
    EXPECT_TRUE(info.setName(L"a free name"));
    return SaveResolution::Renamed;
  });
  IdMapping mapping(this->db);
  this->db->template copyAll<TypeParam>(this->other, mapping);
  EXPECT_EQ(this->ownRows(), 3);
  EXPECT_EQ(this->row(this->existing->id()), this->before);
  const unsigned int id = this->mapped(mapping, *this->foreign).id;
  this->expectOutcome(mapping, id, SaveResolution::Created);
  auto expected = this->incomingValues();
  expected["name"] = "a free name";
  EXPECT_EQ(this->row(id), expected);
  EXPECT_NE(this->foreign->name(), L"a free name") << "the source keeps its own";
}

// What is special to some classes.

class CopyClashSpecial : public Copying {};

TEST_F(CopyClashSpecial, ANamespaceTakesNoNewName) {
  db->save(PropertyNamespace::create(L"Common"));
  other->save(PropertyNamespace::create(L"Common"));
  reactor.otherwise([](ObjectInfo& info) {
    EXPECT_TRUE(info.setName(L"Other"));
    return SaveResolution::Renamed;
  });
  const Unchanged destination(project);
  EXPECT_THROW(db->copyAll<PropertyNamespace>(other), ObjectNotUnique);
  EXPECT_EQ(reactor.clashes.size(), 6U);
}

TEST_F(CopyClashSpecial, MeasuresMergeByTheirNamesAndNobodyIsAsked) {
  const auto time = db->save(Measure::create(L"TIME", 0, 0, 1, 0, 0, 0, 0));
  const auto foreign = other->save(Measure::create(L"TIME", 9, 9, 9, 9, 9, 9, 9));
  IdMapping mapping(db);
  db->copyAll<Measure>(other, mapping);
  EXPECT_EQ(mapped(mapping, *foreign).id, time->id());
  EXPECT_EQ(mapped(mapping, *foreign).resolution, SaveResolution::Kept);
  EXPECT_EQ(db->get<Measure>(time->id())->length(), 0) << "the exponents are those of the file";
  EXPECT_EQ(rows("tessel_Measure"), 5);
  EXPECT_THAT(reactor.clashes, IsEmpty());
}

TEST_F(CopyClashSpecial, UnitsMergeWithTheirTwins) {
  const auto metre = db->save(unitOf(db, L"LENGTH", L"m", 1));
  const auto foreign = other->save(unitOf(other, L"LENGTH", L"m", 1));
  const auto millimetre = other->save(unitOf(other, L"LENGTH", L"mm", 0.001));
  IdMapping mapping(db);
  db->copyAll<Unit>(other, mapping);
  EXPECT_EQ(mapped(mapping, *foreign).id, metre->id());
  EXPECT_EQ(mapped(mapping, *foreign).resolution, SaveResolution::Kept);
  EXPECT_EQ(mapped(mapping, *millimetre).resolution, SaveResolution::Created);
  EXPECT_THAT(inFile("label", "Unit"), ElementsAre("m", "mm"));
  EXPECT_THAT(reactor.clashes, IsEmpty());
}

TEST_F(CopyClashSpecial, AUnitWithoutANameTakesThatOfItsTwin) {
  const auto metre = db->save(unitOf(db, L"LENGTH", L"m", 1));
  const auto foreign = other->save(Unit::create(L"metre", L"m", 1, other->get<Measure>(NameKey(L"LENGTH"))));
  IdMapping mapping(db);
  db->copyAll<Unit>(other, mapping);
  EXPECT_EQ(mapped(mapping, *foreign).id, metre->id());
  EXPECT_EQ(mapped(mapping, *foreign).resolution, SaveResolution::Overwritten);
  EXPECT_THAT(inFile("name", "Unit"), ElementsAre("metre"));
}

TEST_F(CopyClashSpecial, AUnitOfTheSameLabelAndAnotherScaleEndsTheCopy) {
  db->save(unitOf(db, L"LENGTH", L"m", 1));
  other->save(unitOf(other, L"LENGTH", L"m", 1.5));
  other->save(Site::create(L"Hill"));
  const Unchanged destination(project);
  try {
    db->copyAll(other);
    ADD_FAILURE();
  } catch (const ObjectNotUnique& error) {
    EXPECT_EQ(error.member(), L"Unit");
  }
}

TEST_F(CopyClashSpecial, ALabelThatIsTakenIsNoQuestionOfNames) {
  const auto own = PropertySet::create(db->save(PropertyNamespace::create(L"Common")), L"Door");
  own->set_label(L"Doors");
  db->save(own);
  const auto foreign = PropertySet::create(PropertyNamespace::create(L"Special"), L"Gate");
  foreign->set_label(L"Doors");
  other->save(foreign);
  reactor.otherwise(SaveResolution::Kept);
  const Unchanged destination(project);
  try {
    db->copyAll<PropertySet>(other);
    ADD_FAILURE();
  } catch (const ObjectNotUnique& error) {
    EXPECT_EQ(error.member(), L"PropertySet.label");
  }
  EXPECT_THAT(reactor.clashes, IsEmpty());
}

TEST_F(CopyClashSpecial, ANewSetRefersToTheDefinitionThatWasThere) {
  const auto common = db->save(PropertyNamespace::create(L"Common"));
  db->save(PropertyDefinition::create(common, L"Depth"));
  const auto width = db->save(PropertyDefinition::create(common, L"Width"));
  const auto set = PropertySet::create(PropertyNamespace::create(L"Common"), L"Door");
  set->append_property_definition(L"Width", PropertyType::Single(PropertyType::Type::Double));
  other->save(set);
  reactor.otherwise(SaveResolution::Kept);
  db->copyAll<PropertySet>(other);
  EXPECT_EQ(rows("tessel_PropertyDefinition"), 2);
  EXPECT_THAT(project.raw().column("SELECT property_definition_id FROM tessel_PropertySet_property_definitions"),
              ElementsAre(std::to_string(width->id())));
}

TEST_F(CopyClashSpecial, AStoryOfAKeptBuildingIsAddedToIt) {
  const auto own = db->save(Building::create(Site::create(L"Hill"), L"House"));
  db->save(Story::create(own, L"Ground", 0));
  foreignStory(L"First", 3);
  reactor.otherwise(SaveResolution::Kept);
  db->copyAll(other);
  EXPECT_EQ(rows("tessel_Building"), 1);
  EXPECT_THAT(project.raw().column("SELECT name FROM tessel_Story WHERE building_id = " + std::to_string(own->id())),
              ::testing::UnorderedElementsAre("Ground", "First"));
}

}  // namespace
}  // namespace tessel::test
