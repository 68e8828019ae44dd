#include <functional>
#include <map>
#include <stdexcept>
#include <type_traits>

#include <gtest/gtest.h>

#include "catalogue/catalogue.h"

// Names and labels that are taken.

namespace tessel::test {
namespace {

/// An object of the same key as a saved one, and with other values.
inline TsSmartPtr<EntityType> rivalOf(const EntityType& existing) { return EntityType::create(existing.name()); }
inline TsSmartPtr<PropertyNamespace> rivalOf(const PropertyNamespace& existing) {
  return filled(PropertyNamespace::create(existing.name()), 2);
}
template <typename T>
TsSmartPtr<T> rivalOf(const T& existing) {
  const auto rival = filled(T::create(existing.ns()), 2);
  rival->set_name(existing.name());
  return rival;
}

template <typename T>
OdString indexOf() {
  const OdString name = Sample<T>::className;
  return name + L".name," + name + L".namespace_id";
}
template <>
OdString indexOf<EntityType>() {
  return L"EntityType.name";
}
template <>
OdString indexOf<PropertyNamespace>() {
  return L"PropertyNamespace.name";
}

template <typename Body>
OdString memberOf(Body&& body) {
  try {
    body();
  } catch (const ObjectNotUnique& error) {
    return error.member();
  }
  return L"nothing was thrown";
}

template <typename T>
class CatalogueClash : public ::testing::Test {
protected:
  void SetUp() override { reactor.clear(); }

  void expectUnsaved(const T& object) {
    EXPECT_EQ(object.id(), 0U);
    EXPECT_EQ(object.projectDb(), nullptr);
    EXPECT_TRUE(object.isDirty());
  }
  void expectSavedOnce(const T& object, SaveResolution outcome) {
    const std::vector<RecordingReactor::Saved> expected = {
      {project.db.get(), {ObjectTraits<T>::type, object.id()}, outcome}};
    std::vector<RecordingReactor::Saved> saved;
    for (const auto& one : reactor.saved) {
      if (one.key.type == ObjectTraits<T>::type) saved.push_back(one);
    }
    EXPECT_EQ(saved, expected);
  }
  std::map<std::string, std::string> row(unsigned int id) const { return project.row(Sample<T>::table, id); }
  long long rows() const { return project.count(Sample<T>::table); }

  SampleProject project;
  RecordingReactor reactor{project.db};
  TsSmartPtr<T> existing = project.db->save(makeSample<T>(1));
  TsSmartPtr<T> rival = rivalOf(*existing);
};

using CatalogueClasses =
  ::testing::Types<EntityType, PropertyNamespace, PropertyDefinition, ValueDefinition, PropertySet>;
TYPED_TEST_SUITE(CatalogueClash, CatalogueClasses, ClassNames);

TYPED_TEST(CatalogueClash, FailsByDefault) {
  this->project.db->setReactor(nullptr);
  EXPECT_EQ(memberOf([&] { this->project.db->save(this->rival); }), L"name");
  this->expectUnsaved(*this->rival);
  EXPECT_EQ(this->row(this->existing->id()), valuesOf(*this->existing));
  EXPECT_EQ(this->rows(), 1);
}

TYPED_TEST(CatalogueClash, IsAskedAboutWithTypeNameAndDatabase) {
  this->reactor.answer({SaveResolution::Kept});
  this->project.db->save(this->rival);
  EXPECT_EQ(this->reactor.clashes, (std::vector<RecordingReactor::Clash>{
                                     {this->project.db.get(), ObjectTraits<TypeParam>::type, this->existing->name()}}));
}

TYPED_TEST(CatalogueClash, ThatIsKeptGivesTheExistingObjectAndWritesNothing) {
  this->reactor.answer({SaveResolution::Kept});
  const auto result = this->project.db->save(this->rival);
  EXPECT_NE(result, this->rival);
  EXPECT_EQ(result->id(), this->existing->id());
  EXPECT_TRUE(*result == *this->existing);
  this->expectUnsaved(*this->rival);
  this->expectSavedOnce(*this->existing, SaveResolution::Kept);
  EXPECT_EQ(this->row(this->existing->id()), valuesOf(*this->existing));
  EXPECT_EQ(this->rows(), 1);
}

TYPED_TEST(CatalogueClash, ThatIsOverwrittenGivesTheExistingObjectTheNewValues) {
  this->reactor.answer({SaveResolution::Overwritten});
  const auto result = this->project.db->save(this->rival);
  EXPECT_EQ(result->id(), this->existing->id());
  EXPECT_FALSE(result->isDirty());
  this->expectUnsaved(*this->rival);
  this->expectSavedOnce(*this->existing, SaveResolution::Overwritten);

  auto expected = valuesOf(*this->rival);
  if (std::is_same_v<TypeParam, ValueDefinition>) expected["value_spec"] = valuesOf(*this->existing)["value_spec"];
  EXPECT_EQ(this->row(this->existing->id()), expected);
  EXPECT_EQ(valuesOf(*result), expected);
  EXPECT_EQ(this->rows(), 1);
}

TYPED_TEST(CatalogueClash, IsAskedAboutSixTimesAndThenFails) {
  this->reactor.otherwise(SaveResolution::Created);
  EXPECT_EQ(memberOf([&] { this->project.db->save(this->rival); }), indexOf<TypeParam>());
  EXPECT_EQ(this->reactor.clashes.size(), 6U);
  this->expectUnsaved(*this->rival);
  EXPECT_EQ(this->rows(), 1);
}

TYPED_TEST(CatalogueClash, CanBeSettledAtTheSixthAnswer) {
  this->reactor.answer(std::vector<SaveResolution>(5, SaveResolution::Created));
  this->reactor.answer({SaveResolution::Kept});
  EXPECT_EQ(this->project.db->save(this->rival)->id(), this->existing->id());
  EXPECT_EQ(this->reactor.clashes.size(), 6U);
}

TYPED_TEST(CatalogueClash, ComesAgainWithTheSameObject) {
  this->reactor.answer({SaveResolution::Kept, SaveResolution::Kept});
  this->project.db->save(this->rival);
  this->project.db->save(this->rival);
  EXPECT_EQ(this->reactor.clashes.size(), 2U);
}

TYPED_TEST(CatalogueClash, LetsAnExceptionOfTheReactorPass) {
  this->reactor.otherwise([](auto&) -> SaveResolution { throw std::runtime_error("mine"); });
  EXPECT_THROW(this->project.db->save(this->rival), std::runtime_error);
  this->expectUnsaved(*this->rival);
  EXPECT_EQ(this->rows(), 1);
}

TYPED_TEST(CatalogueClash, LeavesEarlierWorkOfTheHostIntact) {
  this->project.db->setReactor(nullptr);
  Transaction transaction(this->project.db, Transaction::BeginCurrent);
  const auto earlier = this->project.db->save(makeSample<TypeParam>(3));
  EXPECT_THROW(this->project.db->save(this->rival), ObjectNotUnique);
  ASSERT_FALSE(transaction.finalized());
  const auto later = this->project.db->save(makeSample<TypeParam>(4));
  transaction.commit();
  EXPECT_EQ(this->row(earlier->id()), valuesOf(*earlier));
  EXPECT_EQ(this->row(later->id()), valuesOf(*later));
  EXPECT_EQ(this->rows(), 3);
}

// Renaming, which namespaces cannot do.

template <typename T>
class CatalogueRename : public CatalogueClash<T> {
protected:
  /// Another saved object, in the same namespace where there is one.
  TsSmartPtr<T> saveSecond(const OdString& name) {
    const auto second = this->existing->cloneObject();
    second->set_name(name);
    if constexpr (std::is_same_v<T, PropertySet>) second->clear_label();
    this->project.db->save(second);
    this->reactor.clear();
    return second;
  }

  OdString taken = this->existing->name();
};

using RenamableCatalogue = ::testing::Types<EntityType, PropertyDefinition, ValueDefinition, PropertySet>;
TYPED_TEST_SUITE(CatalogueRename, RenamableCatalogue, ClassNames);

TYPED_TEST(CatalogueRename, SavesTheObjectUnderTheFreeName) {
  this->reactor.rename({L"free"});
  EXPECT_EQ(this->project.db->save(this->rival), this->rival);
  EXPECT_EQ(this->reactor.nameWasFree, std::vector<bool>{true});
  EXPECT_EQ(this->rival->name(), L"free");
  EXPECT_FALSE(this->rival->isDirty());
  this->expectSavedOnce(*this->rival, SaveResolution::Created);
  EXPECT_EQ(this->row(this->rival->id()), valuesOf(*this->rival));
  EXPECT_EQ(this->row(this->existing->id()), valuesOf(*this->existing));
}

TYPED_TEST(CatalogueRename, IsAskedAboutAgainIfTheNewNameIsTaken) {
  this->saveSecond(L"taken, too");
  this->reactor.rename({L"taken, too", L"free"});
  this->project.db->save(this->rival);
  EXPECT_EQ(this->reactor.nameWasFree, (std::vector<bool>{false, true}));
  ASSERT_EQ(this->reactor.clashes.size(), 2U);
  EXPECT_EQ(this->reactor.clashes[0].name, this->taken);
  EXPECT_EQ(this->reactor.clashes[1].name, L"taken, too");
  EXPECT_EQ(this->rival->name(), L"free");
}

TYPED_TEST(CatalogueRename, WithoutACandidateTriesTheSameNameAgain) {
  this->reactor.otherwise(SaveResolution::Renamed);
  EXPECT_EQ(memberOf([&] { this->project.db->save(this->rival); }), indexOf<TypeParam>());
  EXPECT_EQ(this->reactor.clashes.size(), 6U);
  EXPECT_EQ(this->rival->name(), this->taken);
}

TYPED_TEST(CatalogueRename, OfASavedObjectEndsAsAnUpdate) {
  const auto second = this->saveSecond(L"second");
  this->reactor.rename({L"free"});
  second->set_name(this->taken);
  EXPECT_EQ(this->project.db->save(second), second);
  EXPECT_EQ(second->name(), L"free");
  this->expectSavedOnce(*second, SaveResolution::Overwritten);
  EXPECT_EQ(this->row(second->id()).at("name"), "free");
}

TYPED_TEST(CatalogueRename, OfASavedObjectToATakenNameCanGiveTheOther) {
  const auto second = this->saveSecond(L"second");
  this->reactor.answer({SaveResolution::Kept});
  second->set_name(this->taken);
  EXPECT_EQ(this->project.db->save(second)->id(), this->existing->id());
  EXPECT_TRUE(second->isDirty());
  EXPECT_EQ(this->row(second->id()).at("name"), "second");
}

// Names are taken within a namespace and a class only.

template <typename T>
class NameInNamespace : public CatalogueClash<T> {};

using OwnedClasses = ::testing::Types<PropertyDefinition, ValueDefinition, PropertySet>;
TYPED_TEST_SUITE(NameInNamespace, OwnedClasses, ClassNames);

TYPED_TEST(NameInNamespace, IsFreeInAnotherNamespace) {
  const auto elsewhere = TypeParam::create(PropertyNamespace::create(L"Elsewhere"), this->existing->name());
  EXPECT_EQ(this->project.db->save(elsewhere), elsewhere);
  EXPECT_TRUE(this->reactor.clashes.empty());
}

TYPED_TEST(NameInNamespace, IsOfferedWithinTheSameNamespaceOnly) {
  const auto elsewhere = TypeParam::create(PropertyNamespace::create(L"Elsewhere"), L"other");
  this->project.db->save(elsewhere);
  this->reactor.rename({L"other"});
  this->project.db->save(this->rival);
  EXPECT_EQ(this->reactor.nameWasFree, std::vector<bool>{true}) << "it is taken in another namespace alone";
}

TYPED_TEST(NameInNamespace, IsFreeForTheOtherClasses) {
  const auto ns = this->existing->ns();
  const OdString name = this->existing->name();
  this->project.db->setReactor(nullptr);
  const std::map<ObjectType, std::function<void()>> savers = {
    {ObjectType::PropertyDefinition, [&] { this->project.db->save(PropertyDefinition::create(ns, name)); }},
    {ObjectType::ValueDefinition, [&] { this->project.db->save(ValueDefinition::create(ns, name)); }},
    {ObjectType::PropertySet, [&] { this->project.db->save(PropertySet::create(ns, name)); }},
  };
  for (const auto& [type, save] : savers) {
    if (type == ObjectTraits<TypeParam>::type) {
      EXPECT_THROW(save(), ObjectNotUnique);
    } else {
      EXPECT_NO_THROW(save());
    }
  }
}

TYPED_TEST(NameInNamespace, MayDifferInCaseAlone) {
  this->project.db->save(TypeParam::create(this->existing->ns(), L"width"));
  EXPECT_NO_THROW(this->project.db->save(TypeParam::create(this->existing->ns(), L"Width")));
  EXPECT_TRUE(this->reactor.clashes.empty());
}

class CatalogueClashes : public ::testing::Test {
protected:
  OdString memberOfSave(const TsSmartPtr<Object>& object) {
    return memberOf([&] { object->save(project.db); });
  }
  TsSmartPtr<PropertySet> labelled(const OdString& name, const OdString& label) {
    const auto set = PropertySet::create(ns, name);
    set->set_label(label);
    return set;
  }

  SampleProject project;
  RecordingReactor reactor{project.db};
  TsSmartPtr<PropertyNamespace> ns = project.db->save(PropertyNamespace::create(L"Common"));
};

TEST_F(CatalogueClashes, OfANamespaceCannotBeSettledByAnotherName) {
  const auto rival = PropertyNamespace::create(L"Common");
  reactor.otherwise([](RecordingReactor::ObjectInfo& info) {
    EXPECT_TRUE(info.setName(L"free"));
    EXPECT_EQ(info.name(), L"free");
    return SaveResolution::Renamed;
  });
  EXPECT_EQ(memberOfSave(rival), L"PropertyNamespace.name");
  EXPECT_EQ(reactor.clashes,
            std::vector<RecordingReactor::Clash>(6, {project.db.get(), ObjectType::PropertyNamespace, L"Common"}));
  EXPECT_EQ(rival->name(), L"Common");
  EXPECT_EQ(project.db->count<PropertyNamespace>(), 1U);
}

TEST_F(CatalogueClashes, OfANamespaceCanBeSettledAfterARename) {
  reactor.rename({L"free"});
  reactor.answer({SaveResolution::Kept});
  EXPECT_EQ(project.db->save(PropertyNamespace::create(L"Common"))->id(), ns->id());
  EXPECT_EQ(reactor.clashes.size(), 2U);
}

TEST_F(CatalogueClashes, OfTheLabelOfASetDoNotReachTheReactor) {
  project.db->save(labelled(L"Door", L"Label"));
  reactor.otherwise(SaveResolution::Kept);
  const auto rival = labelled(L"Window", L"Label");
  EXPECT_EQ(memberOfSave(rival), L"PropertySet.label");
  EXPECT_TRUE(reactor.clashes.empty());
  EXPECT_EQ(rival->id(), 0U);
  EXPECT_EQ(project.db->count<PropertySet>(), 1U);
  rival->set_label(L"label");
  EXPECT_EQ(project.db->save(rival), rival) << "case counts";
}

TEST_F(CatalogueClashes, OfTheLabelOfANamespaceDoNotReachTheReactor) {
  project.db->save(PropertyNamespace::create(L"a", L"Label"));
  reactor.otherwise(SaveResolution::Kept);
  EXPECT_EQ(memberOfSave(PropertyNamespace::create(L"b", L"Label")), L"PropertyNamespace.label");
  EXPECT_TRUE(reactor.clashes.empty());
}

TEST_F(CatalogueClashes, OfLabelsAreAcrossNamespacesAndThoseOfDefinitionsAreNone) {
  project.db->save(labelled(L"Door", L"Label"));
  const auto elsewhere = PropertySet::create(PropertyNamespace::create(L"Other", L"Label"), L"Door");
  elsewhere->set_label(L"Label");
  EXPECT_EQ(memberOfSave(elsewhere), L"PropertySet.label");
  for (const wchar_t* name : {L"a", L"b"}) {
    const auto definition = PropertyDefinition::create(ns, name);
    definition->set_label(L"Label");
    EXPECT_EQ(project.db->save(definition), definition);
  }
}

TEST_F(CatalogueClashes, OfLabelsAreNoneWhereThereIsNoLabel) {
  for (const wchar_t* name : {L"a", L"b", L"c"}) {
    EXPECT_NO_THROW(project.db->save(PropertySet::create(ns, name)));
    EXPECT_NO_THROW(project.db->save(PropertyNamespace::create(name)));
  }
  project.db->save(labelled(L"d", L""));
  EXPECT_EQ(memberOfSave(labelled(L"e", L"")), L"PropertySet.label") << "an empty label is one";
}

TEST_F(CatalogueClashes, OfNameAndLabelAreAskedAboutAndThenFailForTheLabel) {
  project.db->save(labelled(L"Door", L"Label"));
  reactor.rename({L"free"});
  const auto rival = labelled(L"Door", L"Label");
  EXPECT_EQ(memberOfSave(rival), L"PropertySet.label");
  EXPECT_EQ(reactor.clashes.size(), 1U);
  EXPECT_EQ(rival->name(), L"free");
}

// The question whether the name is taken finds the row of the object itself.
TEST_F(CatalogueClashes, OfTheLabelOfASavedSetAreTakenForThoseOfItsName) {
  project.db->save(labelled(L"Door", L"Label"));
  const auto window = project.db->save(labelled(L"Window", L"Other"));
  reactor.otherwise(SaveResolution::Created);
  window->set_label(L"Label");
  EXPECT_EQ(memberOfSave(window), L"PropertySet.label");
  EXPECT_EQ(reactor.clashes,
            std::vector<RecordingReactor::Clash>(6, {project.db.get(), ObjectType::PropertySet, L"Window"}));
  project.db->setReactor(nullptr);
  EXPECT_EQ(memberOfSave(window), L"name");
  EXPECT_EQ(project.row("tessel_PropertySet", window->id()).at("label"), "Other");
}

TEST_F(CatalogueClashes, OfAnEntityTypeThatIsOverwrittenUpdateItsRow) {
  const auto door = project.db->save(EntityType::create(L"door"));
  reactor.clear();
  reactor.answer({SaveResolution::Overwritten});
  const auto result = project.db->save(EntityType::create(L"door"));
  EXPECT_EQ(result->id(), door->id());
  ASSERT_EQ(reactor.saved.size(), 1U);
  EXPECT_EQ(reactor.saved[0].resolution, SaveResolution::Overwritten);
}

// Only what both kinds of definition have is taken over.
TEST_F(CatalogueClashes, OfAValueDefinitionThatIsOverwrittenKeepItsSpecification) {
  const auto area = ValueDefinition::create(ns, L"Area");
  area->set_value_spec(L"existing");
  project.db->save(area);
  const auto rival = ValueDefinition::create(ns, L"Area");
  rival->set_value_spec(L"incoming");
  rival->set_description(L"incoming");
  reactor.answer({SaveResolution::Overwritten});
  const auto result = project.db->save(rival);
  EXPECT_EQ(result->value_spec(), L"existing");
  EXPECT_EQ(result->description(), L"incoming");
  EXPECT_EQ(project.row("tessel_ValueDefinition", area->id()).at("value_spec"), "existing");
}

TEST_F(CatalogueClashes, OfAPropertyDefinitionThatIsOverwrittenTakeOverItsSpecifications) {
  const auto width = project.db->save(PropertyDefinition::create(ns, L"Width"));
  const auto rival = PropertyDefinition::create(ns, L"Width");
  rival->set_type_spec(L"incoming");
  rival->set_default_value(2);
  reactor.answer({SaveResolution::Overwritten});
  project.db->save(rival);
  EXPECT_EQ(project.row("tessel_PropertyDefinition", width->id()).at("type_spec"), "incoming");
  EXPECT_EQ(project.row("tessel_PropertyDefinition", width->id()).at("default_value"), "2");
}

TEST_F(CatalogueClashes, OfASetThatIsOverwrittenReplaceItsMembers) {
  const auto door = PropertySet::create(ns, L"Door");
  door->append_property_definition(L"Width", PropertyType());
  door->insert_entity_type(L"door");
  project.db->save(door);
  const auto rival = PropertySet::create(ns, L"Door");
  rival->append_property_definition(L"Height", PropertyType());
  rival->append_value_definition(L"Area", PropertyType());
  reactor.answer({SaveResolution::Overwritten});
  EXPECT_EQ(project.db->save(rival)->id(), door->id());
  const auto loaded = project.db->get<PropertySet>(door->id());
  EXPECT_EQ(namesOf(loaded->property_definitions()), std::vector<OdString>{L"Height"});
  EXPECT_EQ(namesOf(loaded->value_definitions()), std::vector<OdString>{L"Area"});
  EXPECT_TRUE(loaded->entity_types().empty());
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 2U) << "what it listed before stays in the file";
}

TEST_F(CatalogueClashes, OfAMemberLeaveNothingInTheFileByDefault) {
  project.db->save(EntityType::create(L"door"));
  project.db->setReactor(nullptr);
  const auto set = PropertySet::create(ns, L"Door");
  const auto width = set->append_property_definition(L"Width", PropertyType());
  set->insert_entity_type(L"door");
  EXPECT_EQ(memberOfSave(set), L"name");
  EXPECT_EQ(project.db->count<PropertySet>(), 0U);
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 0U);
  EXPECT_EQ(set->id(), 0U);
  EXPECT_NE(width->id(), 0U) << "objects in memory are not restored";
}

}  // namespace
}  // namespace tessel::test
