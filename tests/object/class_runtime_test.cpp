#include <type_traits>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

namespace tessel::test {
namespace {

/// Tells when its object has gone.
struct Watch : ObjectReactor {
  int deleted = 0;
  void onObjectDeleted(Object*) override { ++deleted; }
};

template <typename Body>
OdResult errorOf(Body&& body) {
  try {
    body();
  } catch (const OdError& error) {
    return error.code();
  }
  return eOk;
}

template <typename T>
class RuntimeClass : public ::testing::Test {
protected:
  TsSmartPtr<T> object = makeSample<T>();
};

TYPED_TEST_SUITE(RuntimeClass, SampledClasses, ClassNames);

TYPED_TEST(RuntimeClass, IsRegisteredByTheLibraryUnderItsBareName) {
  ASSERT_NE(TypeParam::desc(), nullptr);
  EXPECT_EQ(TypeParam::desc()->name(), OdString(Sample<TypeParam>::className));
}

TYPED_TEST(RuntimeClass, HasTheClassThatItDerivesFromAsParent) {
  using Parent = typename Sample<TypeParam>::Parent;
  EXPECT_TRUE((std::is_base_of_v<Parent, TypeParam>));
  EXPECT_EQ(TypeParam::desc()->myParent(), Parent::desc());
  EXPECT_TRUE(TypeParam::desc()->isDerivedFrom(Object::desc()));
  EXPECT_TRUE(TypeParam::desc()->isDerivedFrom(OdRxObject::desc()));
}

TYPED_TEST(RuntimeClass, IsWhatAnObjectSaysThatItIs) {
  const OdRxObject& base = *this->object;
  EXPECT_EQ(base.isA(), TypeParam::desc());
}

TYPED_TEST(RuntimeClass, HasTheTypeThatItsTraitsTell) {
  const Object& base = *this->object;
  EXPECT_EQ(base.tesselType(), TypeParam::staticTesselType());
  EXPECT_EQ(ObjectTraits<TypeParam>::type, TypeParam::staticTesselType());
}

TYPED_TEST(RuntimeClass, MakesNoVirtualObject) {
  EXPECT_TRUE(TypeParam::createVirtualObject().isNull());
  EXPECT_TRUE(TypeParam::desc()->create().isNull());
}

TYPED_TEST(RuntimeClass, QueriedByItsClassAndEachBaseGivesTheObjectAndAReference) {
  using Parent = typename Sample<TypeParam>::Parent;
  for (const OdRxClass* const asked : {TypeParam::desc(), Parent::desc(), Object::desc()}) {
    Watch watch;
    auto asObject = makeSample<TypeParam>();
    asObject->addReactor(&watch);
    OdRxObject* const found = asObject->queryX(asked);
    EXPECT_EQ(found, asObject.get());

    asObject.reset();
    ASSERT_EQ(watch.deleted, 0) << "the result of a query must carry a reference";
    found->release();
    EXPECT_EQ(watch.deleted, 1) << "the result of a query must carry one reference only";
  }
}

TYPED_TEST(RuntimeClass, QueriedByTheRootGivesTheObject) {
  const OdSmartPtr<OdRxObject> found(this->object->queryX(OdRxObject::desc()), OdAttach{});
  EXPECT_EQ(found.get(), this->object.get());
}

TYPED_TEST(RuntimeClass, QueriedByNothingGivesNothing) {
  const OdRxClass* const nothing = nullptr;
  EXPECT_EQ(this->object->queryX(nothing), nullptr);
}

TYPED_TEST(RuntimeClass, QueriedByAnUnrelatedClassGivesNothing) {
  OdRxClass* const unrelated = newTsRxClass(Sample<TypeParam>::className, Object::desc(), nullptr);
  EXPECT_EQ(this->object->queryX(unrelated), nullptr);
  deleteOdRxClass(unrelated);
}

TYPED_TEST(RuntimeClass, AnswersXAsItAnswersAQuery) {
  const OdSmartPtr<OdRxObject> found(this->object->x(TypeParam::desc()), OdAttach{});
  EXPECT_EQ(found.get(), this->object.get());
  EXPECT_EQ(this->object->x(nullptr), nullptr);
}

TYPED_TEST(RuntimeClass, CastsNothingToNothing) {
  EXPECT_TRUE(TypeParam::queryX(static_cast<const OdRxObject*>(nullptr)).isNull());
}

TYPED_TEST(RuntimeClass, CastsAnObjectAndTakesOneReference) {
  Watch watch;
  this->object->addReactor(&watch);
  const OdRxObject* const base = this->object.get();
  TsSmartPtr<TypeParam> cast = TypeParam::queryX(base);
  EXPECT_EQ(cast, this->object);
  this->object.reset();
  EXPECT_EQ(watch.deleted, 0);
  cast.reset();
  EXPECT_EQ(watch.deleted, 1);
}

TYPED_TEST(RuntimeClass, CastsToTheBasesOfTheObject) {
  using Parent = typename Sample<TypeParam>::Parent;
  EXPECT_EQ(Parent::queryX(this->object.get()), this->object);
  EXPECT_EQ(Object::queryX(this->object.get()), this->object);
}

TYPED_TEST(RuntimeClass, AnswersWithTheExtensionOfItsClass) {
  OdRxClass* const protocol = newTsRxClass(L"Protocol", OdRxObject::desc(), nullptr);
  const TsSmartPtr<Measure> extension = Measure::create(L"EXTENSION", 0, 0, 0, 0, 0, 0, 0);
  for (OdRxClass* const rxClass : {TypeParam::desc(), Object::desc()}) {
    ASSERT_TRUE(rxClass->addX(protocol, extension.get()).isNull());
    const OdSmartPtr<OdRxObject> found(this->object->queryX(protocol), OdAttach{});
    EXPECT_EQ(found.get(), extension.get());
    rxClass->delX(protocol);
    EXPECT_EQ(this->object->queryX(protocol), nullptr);
  }
  deleteOdRxClass(protocol);
}

TYPED_TEST(RuntimeClass, AsksItsOwnClassForAnExtensionFirst) {
  OdRxClass* const protocol = newTsRxClass(L"Protocol", OdRxObject::desc(), nullptr);
  const TsSmartPtr<Measure> own = Measure::create(L"OWN", 0, 0, 0, 0, 0, 0, 0);
  const TsSmartPtr<Measure> inherited = Measure::create(L"INHERITED", 0, 0, 0, 0, 0, 0, 0);
  TypeParam::desc()->addX(protocol, own.get());
  Object::desc()->addX(protocol, inherited.get());
  const OdSmartPtr<OdRxObject> found(this->object->queryX(protocol), OdAttach{});
  EXPECT_EQ(found.get(), own.get());
  TypeParam::desc()->delX(protocol);
  Object::desc()->delX(protocol);
  deleteOdRxClass(protocol);
}

/// Answers every query with an object that it is given.
struct Stranger : OdRxObject {
  OdRxClass* rxClass = nullptr;
  OdRxObject* answer = nullptr;
  OdRxClass* isA() const override { return rxClass; }
  OdRxObject* queryX(const OdRxClass*) const override { return answer; }
};

// A query may be answered by an extension, which may be of any class.
TYPED_TEST(RuntimeClass, IsNotCastFromAnAnswerOfAnotherClass) {
  Stranger asked;
  Stranger answer;
  asked.answer = &answer;
  EXPECT_TRUE(TypeParam::queryX(&asked).isNull()) << "a class that is not registered";
  answer.rxClass = Object::desc();
  EXPECT_TRUE(TypeParam::queryX(&asked).isNull()) << "a base of the class that was asked for";
}

TYPED_TEST(RuntimeClass, IsNotRegisteredTwice) {
  OdRxClass* const before = TypeParam::desc();
  EXPECT_EQ(errorOf(&TypeParam::rxInit), eClassAlreadyRegistered);
  EXPECT_EQ(static_cast<int>(eClassAlreadyRegistered), 313);
  EXPECT_EQ(TypeParam::desc(), before);
}

TYPED_TEST(RuntimeClass, CanBeRemovedOnceAndRegisteredAgain) {
  TypeParam::rxUninit();
  EXPECT_EQ(TypeParam::desc(), nullptr);
  EXPECT_EQ(this->object->isA(), nullptr);
  EXPECT_EQ(errorOf(&TypeParam::rxUninit), eClassNotRegistered);
  EXPECT_EQ(errorOf([] { TypeParam::createVirtualObject(); }), eClassNotRegistered);
  EXPECT_EQ(static_cast<int>(eClassNotRegistered), 255);
  EXPECT_TRUE(TypeParam::queryX(this->object.get()).isNull());

  TypeParam::rxInit();
  ASSERT_NE(TypeParam::desc(), nullptr);
  EXPECT_EQ(TypeParam::desc()->name(), OdString(Sample<TypeParam>::className));
  EXPECT_EQ(this->object->isA(), TypeParam::desc());
  EXPECT_EQ(TypeParam::queryX(this->object.get()), this->object);
}

/// Of all classes of the list, an object can be cast to its own one only.
template <typename Object, typename... Classes>
int castsOf(const Object& object, ::testing::Types<Classes...>) {
  return (0 + ... + (Classes::queryX(&object).isNull() ? 0 : 1));
}

TYPED_TEST(RuntimeClass, IsCastToNoOtherClass) { EXPECT_EQ(castsOf(*this->object, SampledClasses()), 1); }

template <typename T>
constexpr bool returnsNarrowedResults() {
  using Db = std::shared_ptr<ProjectDb>;
  return std::is_same_v<decltype(std::declval<T&>().save()), bool> &&
         std::is_same_v<decltype(std::declval<T&>().save(std::declval<const Db&>())), TsSmartPtr<T>> &&
         std::is_same_v<decltype(std::declval<T&>().save(std::declval<const Db&>(), std::declval<IdMapping&>())),
                        TsSmartPtr<T>> &&
         std::is_same_v<decltype(std::declval<const T&>().save(std::declval<const Db&>())), TsSmartPtr<const T>> &&
         std::is_same_v<decltype(std::declval<const T&>().save(std::declval<const Db&>(), std::declval<IdMapping&>())),
                        TsSmartPtr<const T>> &&
         std::is_same_v<decltype(std::declval<const T&>().cloneObject()), TsSmartPtr<T>>;
}

TYPED_TEST(RuntimeClass, NarrowsTheResultsOfSaveAndClone) {
  EXPECT_TRUE(returnsNarrowedResults<TypeParam>());
  EXPECT_TRUE(returnsNarrowedResults<Object>());
}

// The shared bases come and go with the classes below them, so the order matters.
TEST(RuntimeClassOfABase, IsRegisteredOnBehalfOfADerivedOne) {
  Site::rxUninit();
  Building::rxUninit();
  Story::rxUninit();
  SpatialStructure::rxUninit();
  EXPECT_EQ(errorOf(&SpatialStructure::rxUninit), eClassNotRegistered);
  EXPECT_EQ(errorOf([] { SpatialStructure::createVirtualObject(); }), eClassNotRegistered);

  Story::rxInit();
  ASSERT_NE(SpatialStructure::desc(), nullptr);
  EXPECT_EQ(SpatialStructure::desc()->name(), L"SpatialStructure");
  EXPECT_EQ(SpatialStructure::desc()->myParent(), Object::desc());
  EXPECT_EQ(Story::desc()->myParent(), SpatialStructure::desc());
  EXPECT_EQ(errorOf(&SpatialStructure::rxInit), eClassAlreadyRegistered);
  Site::rxInit();
  Building::rxInit();
  EXPECT_EQ(Site::desc()->myParent(), SpatialStructure::desc());
}

TEST(RuntimeClassOfABase, IsRegisteredOnBehalfOfADefinition) {
  PropertyDefinition::rxUninit();
  ValueDefinition::rxUninit();
  AbstractDefinition::rxUninit();
  EXPECT_EQ(errorOf([] { AbstractDefinition::createVirtualObject(); }), eClassNotRegistered);

  ValueDefinition::rxInit();
  ASSERT_NE(AbstractDefinition::desc(), nullptr);
  EXPECT_EQ(AbstractDefinition::desc()->name(), L"AbstractDefinition");
  EXPECT_EQ(AbstractDefinition::desc()->myParent(), Object::desc());
  PropertyDefinition::rxInit();
  EXPECT_EQ(PropertyDefinition::desc()->myParent(), AbstractDefinition::desc());
}

TEST(RuntimeClassOfABase, HasNoObjectsOfItsOwn) {
  EXPECT_EQ(Object::desc()->name(), L"Object");
  EXPECT_EQ(Object::desc()->myParent(), OdRxObject::desc());
  EXPECT_TRUE(Object::createVirtualObject().isNull());
  EXPECT_EQ(errorOf(&Object::rxInit), eClassAlreadyRegistered);
  EXPECT_TRUE(SpatialStructure::createVirtualObject().isNull());
  EXPECT_EQ(SpatialStructure::staticTesselType(), ObjectType::SpatialStructure);
  EXPECT_TRUE(AbstractDefinition::createVirtualObject().isNull());
  EXPECT_EQ(AbstractDefinition::staticTesselType(), ObjectType::AbstractDefinition);
  EXPECT_TRUE((std::is_base_of_v<TsRxObject, Object>));
  EXPECT_TRUE((std::is_base_of_v<OdRxObject, TsRxObject>));
}

TEST(RuntimeClassOfABase, TellsTheThreeSpatialClassesApart) {
  const TsSmartPtr<SpatialStructure> structure = makeSample<Story>();
  EXPECT_EQ(structure->queryX(Building::desc()), nullptr);
  EXPECT_TRUE(Building::queryX(structure.get()).isNull());
  EXPECT_EQ(structure->tesselType(), ObjectType::Story);
  const TsSmartPtr<SpatialStructure> clone = structure->cloneObject();
  EXPECT_EQ(clone->tesselType(), ObjectType::Story);
  EXPECT_TRUE(*Story::queryX(clone.get()) == *Story::queryX(structure.get()));
}

}  // namespace
}  // namespace tessel::test
