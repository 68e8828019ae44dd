#include <type_traits>

#include <gtest/gtest.h>

#include "catalogue/catalogue.h"

// What both classes of definition add to what is tested for all classes.

namespace tessel::test {
namespace {

template <typename T>
class Definition : public ::testing::Test {
protected:
  SampleProject project;
  TsSmartPtr<PropertyNamespace> ns = PropertyNamespace::create(L"Common");

  /// Saved, and with nothing but a name.
  TsSmartPtr<T> plain() { return project.db->save(T::create(ns, L"Width")); }

  std::string inFile(const T& definition, const std::string& column) const {
    return project.row(Sample<T>::table, definition.id()).at(column);
  }
};

using Definitions = ::testing::Types<PropertyDefinition, ValueDefinition>;
TYPED_TEST_SUITE(Definition, Definitions, ClassNames);

TYPED_TEST(Definition, IsCreatedWithoutANameOrAType) {
  const auto definition = TypeParam::create(this->ns);
  EXPECT_EQ(definition->ns(), this->ns);
  EXPECT_TRUE(definition->name().isEmpty());
  EXPECT_TRUE(definition->type() == PropertyType::Undefined());
  EXPECT_TRUE(definition->isDirty());
  EXPECT_EQ(definition->id(), 0U);
}

TYPED_TEST(Definition, IsCreatedWithANameAlone) {
  const auto definition = TypeParam::create(this->ns, L"Width");
  EXPECT_EQ(definition->ns(), this->ns);
  EXPECT_EQ(definition->name(), L"Width");
  EXPECT_TRUE(definition->type() == PropertyType::Undefined());
  EXPECT_TRUE(definition->isDirty());
}

TYPED_TEST(Definition, IsCreatedWithANameAndAType) {
  const auto definition = TypeParam::create(this->ns, L"Width", PropertyType::Map(Type::String, Type::Double));
  EXPECT_EQ(definition->ns(), this->ns);
  EXPECT_EQ(definition->name(), L"Width");
  EXPECT_TRUE(definition->type() == PropertyType::Map(Type::String, Type::Double));
  EXPECT_TRUE(definition->isDirty());
}

TYPED_TEST(Definition, IsVisibleAndHasNothingElseAtFirst) {
  const auto definition = TypeParam::create(this->ns, L"Width");
  EXPECT_TRUE(definition->visible());
  EXPECT_FALSE(definition->has_label());
  EXPECT_TRUE(definition->label().isEmpty());
  EXPECT_TRUE(definition->description().isEmpty());
  EXPECT_TRUE(definition->unit().isNull());
  EXPECT_FALSE(definition->has_ifc_name());
  EXPECT_TRUE(definition->ifc_name().isEmpty());
  EXPECT_FALSE(definition->has_ifc_type());
  EXPECT_EQ(static_cast<int>(definition->ifc_type()), 0);
}

TYPED_TEST(Definition, IsCreatedEvenWithoutANamespace) {
  const auto definition = TypeParam::create(nullptr, L"Width");
  EXPECT_TRUE(definition->ns().isNull());
  EXPECT_EQ(definition->name(), L"Width");
}

TYPED_TEST(Definition, KeepsItsNamespaceAlive) {
  const auto definition = TypeParam::create(PropertyNamespace::create(L"Its own"));
  EXPECT_EQ(definition->ns()->name(), L"Its own");
}

TYPED_TEST(Definition, HasALabelOnceOneIsSetEvenAnEmptyOne) {
  const auto definition = this->plain();
  definition->set_label(L"");
  EXPECT_TRUE(definition->has_label());
  EXPECT_TRUE(definition->isDirty());
  ASSERT_TRUE(definition->save());
  EXPECT_EQ(this->inFile(*definition, "label"), "");

  definition->set_label(L"");
  EXPECT_FALSE(definition->isDirty());
}

TYPED_TEST(Definition, LosesItsLabelWhenThatIsCleared) {
  const auto definition = this->plain();
  definition->set_label(L"Breadth");
  ASSERT_TRUE(definition->save());
  definition->clear_label();
  EXPECT_FALSE(definition->has_label());
  EXPECT_TRUE(definition->label().isEmpty());
  EXPECT_TRUE(definition->isDirty());
  ASSERT_TRUE(definition->save());
  EXPECT_EQ(this->inFile(*definition, "label"), "NULL");
}

TYPED_TEST(Definition, HasAnIfcNameOnceOneIsSetEvenAnEmptyOne) {
  const auto definition = this->plain();
  definition->set_ifc_name(L"");
  EXPECT_TRUE(definition->has_ifc_name());
  EXPECT_TRUE(definition->isDirty());
  ASSERT_TRUE(definition->save());
  EXPECT_EQ(this->inFile(*definition, "ifc_name"), "");

  definition->set_ifc_name(L"");
  EXPECT_FALSE(definition->isDirty());
}

TYPED_TEST(Definition, LosesItsIfcNameWhenThatIsCleared) {
  const auto definition = this->plain();
  definition->set_ifc_name(L"OverallWidth");
  ASSERT_TRUE(definition->save());
  definition->clear_ifc_name();
  EXPECT_FALSE(definition->has_ifc_name());
  EXPECT_TRUE(definition->ifc_name().isEmpty());
  ASSERT_TRUE(definition->save());
  EXPECT_EQ(this->inFile(*definition, "ifc_name"), "NULL");
}

TYPED_TEST(Definition, TellsAnUndefinedIfcTypeFromNone) {
  const auto definition = this->plain();
  EXPECT_EQ(this->inFile(*definition, "ifc_type"), "NULL");
  definition->set_ifc_type(IfcTypeUndefined);
  EXPECT_TRUE(definition->has_ifc_type());
  EXPECT_TRUE(definition->isDirty());
  ASSERT_TRUE(definition->save());
  EXPECT_EQ(this->inFile(*definition, "ifc_type"), "-1");

  const auto loaded = this->project.db->template get<TypeParam>(definition->id());
  EXPECT_TRUE(loaded->has_ifc_type());
  EXPECT_EQ(loaded->ifc_type(), IfcTypeUndefined);
  loaded->set_ifc_type(IfcTypeUndefined);
  EXPECT_FALSE(loaded->isDirty());
}

// 0 is what is read where there is no type, so to set it is a change.
TYPED_TEST(Definition, TakesTheNumberZeroAsAnIfcType) {
  const auto definition = this->plain();
  definition->set_ifc_type(static_cast<IfcType>(0));
  EXPECT_TRUE(definition->has_ifc_type());
  EXPECT_TRUE(definition->isDirty());
}

TYPED_TEST(Definition, LosesItsIfcTypeWhenThatIsCleared) {
  const auto definition = this->plain();
  definition->set_ifc_type(IfcMeasureValue_Length);
  ASSERT_TRUE(definition->save());
  EXPECT_EQ(this->inFile(*definition, "ifc_type"), "212");
  definition->clear_ifc_type();
  EXPECT_FALSE(definition->has_ifc_type());
  EXPECT_EQ(static_cast<int>(definition->ifc_type()), 0);
  ASSERT_TRUE(definition->save());
  EXPECT_EQ(this->inFile(*definition, "ifc_type"), "NULL");
}

TYPED_TEST(Definition, IsMarkedByEachClearEvenIfThereWasNothing) {
  const unsigned int id = this->plain()->id();
  using Clear = void (AbstractDefinition::*)();
  for (const Clear clear :
       {&AbstractDefinition::clear_label, &AbstractDefinition::clear_ifc_name, &AbstractDefinition::clear_ifc_type}) {
    const auto definition = this->project.db->template get<TypeParam>(id);
    (*definition.*clear)();
    EXPECT_TRUE(definition->isDirty());
  }
}

TYPED_TEST(Definition, TakesEachKindOfTypeToTheFileAndBack) {
  const auto definition = this->plain();
  for (const PropertyType& type : {PropertyType::Single(Type::Double), PropertyType::Array(Type::Handle),
                                   PropertyType::Map(Type::String, Type::Int8), PropertyType::Struct(),
                                   PropertyType::Dictionary(Type::Int32), PropertyType::Undefined()}) {
    definition->set_type(type);
    ASSERT_TRUE(definition->save());
    EXPECT_TRUE(this->project.db->template get<TypeParam>(definition->id())->type() == type);
  }
}

TYPED_TEST(Definition, IsMarkedByAnotherUnitEvenIfItEqualsTheOldOne) {
  const auto definition = this->plain();
  definition->set_unit(nullptr);
  EXPECT_FALSE(definition->isDirty());
  const auto unit = this->project.db->save(makeSample<Unit>());
  definition->set_unit(unit);
  EXPECT_TRUE(definition->isDirty());
  ASSERT_TRUE(definition->save());
  definition->set_unit(unit);
  EXPECT_FALSE(definition->isDirty());

  const auto same = this->project.db->template get<Unit>(unit->id());
  ASSERT_TRUE(*same == *unit);
  definition->set_unit(same);
  EXPECT_TRUE(definition->isDirty());
  EXPECT_EQ(definition->unit(), same);
  ASSERT_TRUE(definition->save());
  definition->set_unit(nullptr);
  EXPECT_TRUE(definition->isDirty());
  ASSERT_TRUE(definition->save());
  EXPECT_EQ(this->inFile(*definition, "unit_id"), "NULL");
  EXPECT_TRUE(this->project.db->template get<TypeParam>(definition->id())->unit().isNull());
}

// The words of label, IFC name and IFC type do not count; whether there are any does.
TYPED_TEST(Definition, EqualsOneWithOtherOptionalValues) {
  const auto a = TypeParam::create(this->ns, L"Width");
  const auto b = TypeParam::create(this->ns, L"Width");
  a->set_label(L"a");
  b->set_label(L"b");
  a->set_ifc_name(L"a");
  b->set_ifc_name(L"b");
  a->set_ifc_type(IfcSimpleValue_Label);
  b->set_ifc_type(IfcDerivedMeasureValue_Force);
  EXPECT_TRUE(*a == *b);
  EXPECT_FALSE(*a != *b);
}

TYPED_TEST(Definition, DiffersFromOneWithoutAnOptionalValue) {
  using Clear = void (AbstractDefinition::*)();
  const auto whole = makeSample<TypeParam>();
  for (const Clear clear :
       {&AbstractDefinition::clear_label, &AbstractDefinition::clear_ifc_name, &AbstractDefinition::clear_ifc_type}) {
    const auto less = makeSample<TypeParam>();
    ASSERT_TRUE(*less == *whole);
    (*less.*clear)();
    EXPECT_FALSE(*less == *whole);
    EXPECT_TRUE(*whole != *less);
  }
}

TYPED_TEST(Definition, DiffersFromOneWithoutAUnit) {
  const auto with = makeSample<TypeParam>();
  const auto without = makeSample<TypeParam>();
  without->set_unit(nullptr);
  EXPECT_FALSE(*with == *without);
  EXPECT_FALSE(*without == *with);
  with->set_unit(nullptr);
  EXPECT_TRUE(*with == *without);
}

TYPED_TEST(Definition, DiffersFromOneWithoutANamespace) {
  const auto with = TypeParam::create(this->ns, L"Width");
  const auto without = TypeParam::create(nullptr, L"Width");
  EXPECT_FALSE(*with == *without);
  EXPECT_FALSE(*without == *with);
  EXPECT_TRUE(*without == *TypeParam::create(nullptr, L"Width"));
}

TYPED_TEST(Definition, LooksAtItsNamespaceAsNamespacesDo) {
  const auto labelled = PropertyNamespace::create(L"Common", L"Label");
  const auto otherLabel = PropertyNamespace::create(L"Common", L"Other label");
  const auto definition = TypeParam::create(labelled, L"Width");
  EXPECT_TRUE(*definition == *TypeParam::create(otherLabel, L"Width"));
  EXPECT_FALSE(*definition == *TypeParam::create(this->ns, L"Width"));
}

TYPED_TEST(Definition, TakesOverByAssignmentThatThereIsNothing) {
  const auto target = makeSample<TypeParam>();
  *target = *TypeParam::create(this->ns, L"Width");
  EXPECT_FALSE(target->has_label());
  EXPECT_FALSE(target->has_ifc_name());
  EXPECT_FALSE(target->has_ifc_type());
  EXPECT_TRUE(target->unit().isNull());
  EXPECT_EQ(target->ns(), this->ns);
}

TYPED_TEST(Definition, ClonesThatThereIsNothing) {
  const auto clone = TypeParam::create(this->ns, L"Width")->cloneObject();
  EXPECT_FALSE(clone->has_label());
  EXPECT_FALSE(clone->has_ifc_name());
  EXPECT_FALSE(clone->has_ifc_type());
  EXPECT_EQ(clone->ns(), this->ns);
}

TYPED_TEST(Definition, IsSavedAndClonedThroughItsBase) {
  const TsSmartPtr<AbstractDefinition> base = makeSample<TypeParam>();
  const TsSmartPtr<AbstractDefinition> clone = base->cloneObject();
  EXPECT_EQ(clone->tesselType(), TypeParam::staticTesselType());
  EXPECT_TRUE(*TypeParam::queryX(clone.get()) == *TypeParam::queryX(base.get()));
  EXPECT_EQ(base->save(this->project.db), base);
  EXPECT_EQ(this->project.count(Sample<TypeParam>::table), 1);
}

TYPED_TEST(Definition, WithoutANamespaceIsNotSaved) {
  const auto definition = TypeParam::create(nullptr, L"Width");
  EXPECT_THROW(this->project.db->save(definition), DatabaseException);
  EXPECT_EQ(definition->id(), 0U);
  EXPECT_TRUE(definition->isDirty());
  EXPECT_EQ(this->project.count(Sample<TypeParam>::table), 0);
}

TYPED_TEST(Definition, AnswersZeroAndEmptyWhereTheFileHasNulls) {
  const unsigned int id = this->project.db->save(makeSample<TypeParam>())->id();
  this->project.raw().exec(std::string("UPDATE ") + Sample<TypeParam>::table +
                           " SET label = NULL, unit_id = NULL, ifc_name = NULL, ifc_type = NULL");
  const auto loaded = this->project.db->template get<TypeParam>(id);
  EXPECT_FALSE(loaded->has_label());
  EXPECT_TRUE(loaded->label().isEmpty());
  EXPECT_TRUE(loaded->unit().isNull());
  EXPECT_FALSE(loaded->has_ifc_name());
  EXPECT_FALSE(loaded->has_ifc_type());
  EXPECT_EQ(static_cast<int>(loaded->ifc_type()), 0);
}

TEST(PropertyDefinition, HasNoSpecificationsAndNoDefaultAtFirst) {
  const auto definition = PropertyDefinition::create(PropertyNamespace::create(L"Common"));
  EXPECT_TRUE(definition->type_spec().isEmpty());
  EXPECT_TRUE(definition->type_spec2().isEmpty());
  EXPECT_TRUE(definition->default_value().isEmpty());
}

TEST(ValueDefinition, HasNoSpecificationAtFirst) {
  EXPECT_TRUE(ValueDefinition::create(PropertyNamespace::create(L"Common"))->value_spec().isEmpty());
}

TEST(AbstractDefinition, IsARuntimeClassWithoutObjectsOfItsOwn) {
  EXPECT_EQ(AbstractDefinition::desc()->name(), L"AbstractDefinition");
  EXPECT_EQ(AbstractDefinition::desc()->myParent(), Object::desc());
  EXPECT_TRUE(AbstractDefinition::createVirtualObject().isNull());
  EXPECT_EQ(AbstractDefinition::staticTesselType(), ObjectType::AbstractDefinition);
  EXPECT_TRUE(std::is_abstract_v<AbstractDefinition>);
  EXPECT_TRUE((std::is_base_of_v<Object, AbstractDefinition>));
}

template <typename T, typename = void>
struct CanBeCompared : std::false_type {};
template <typename T>
struct CanBeCompared<T, std::void_t<decltype(std::declval<const T&>() == std::declval<const T&>())>> : std::true_type {
};

TEST(AbstractDefinition, IsNotComparedOrAssignedByHosts) {
  EXPECT_FALSE(CanBeCompared<AbstractDefinition>::value);
  EXPECT_FALSE(std::is_copy_assignable_v<AbstractDefinition>);
  EXPECT_TRUE(CanBeCompared<PropertyDefinition>::value);
  EXPECT_TRUE(CanBeCompared<ValueDefinition>::value);
}

TEST(AbstractDefinition, IsRegisteredOnBehalfOfADerivedClass) {
  PropertyDefinition::rxUninit();
  ValueDefinition::rxUninit();
  AbstractDefinition::rxUninit();
  EXPECT_EQ(AbstractDefinition::desc(), nullptr);

  ValueDefinition::rxInit();
  ASSERT_NE(AbstractDefinition::desc(), nullptr);
  EXPECT_EQ(ValueDefinition::desc()->myParent(), AbstractDefinition::desc());
  EXPECT_EQ(AbstractDefinition::desc()->myParent(), Object::desc());
  PropertyDefinition::rxInit();
  EXPECT_EQ(PropertyDefinition::desc()->myParent(), AbstractDefinition::desc());
}

TEST(AbstractDefinition, TellsItsTwoClassesApart) {
  const TsSmartPtr<AbstractDefinition> definition = makeSample<ValueDefinition>();
  EXPECT_TRUE(PropertyDefinition::queryX(definition.get()).isNull());
  EXPECT_FALSE(ValueDefinition::queryX(definition.get()).isNull());
}

}  // namespace
}  // namespace tessel::test
