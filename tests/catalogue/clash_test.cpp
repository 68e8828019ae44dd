#include <functional>
#include <map>

#include <gtest/gtest.h>

#include "catalogue/catalogue.h"

// Names within namespaces, labels and members that are taken; what is the same for all classes is tested elsewhere.

namespace tessel::test {
namespace {

template <typename Body>
OdString memberOf(Body&& body) {
  try {
    body();
  } catch (const ObjectNotUnique& error) {
    return error.member();
  }
  return L"nothing was thrown";
}

// Names are taken within a namespace and a class only.

template <typename T>
class NameInNamespace : public ::testing::Test {
protected:
  SampleProject project;
  RecordingReactor reactor{project.db};
  TsSmartPtr<T> existing = project.db->save(makeSample<T>());
};

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
  this->project.db->save(TypeParam::create(this->existing->ns(), this->existing->name()));
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

TEST_F(CatalogueClashes, OfANamespaceCanBeSettledAfterARename) {
  reactor.rename({L"free"});
  reactor.answer({SaveResolution::Kept});
  EXPECT_EQ(project.db->save(PropertyNamespace::create(L"Common"))->id(), ns->id());
  EXPECT_EQ(reactor.clashes.size(), 2U);
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
