#include <gtest/gtest.h>

#include "catalogue/catalogue.h"

namespace tessel::test {
namespace {

/// The operations of a set on one kind of definition, so that the rules can be tested once for both.
template <typename T>
struct MembersOf;

template <>
struct MembersOf<PropertyDefinition> {
  PropertySet& set;

  const auto& all() const { return set.property_definitions(); }
  template <typename... Arguments>
  auto append(const Arguments&... arguments) {
    return set.append_property_definition(arguments...);
  }
  template <typename... Arguments>
  auto insert(const Arguments&... arguments) {
    return set.insert_property_definition(arguments...);
  }
  template <typename What>
  auto remove(const What& what) {
    return set.remove_property_definition(what);
  }
  void clear() { set.clear_property_definitions(); }
};

template <>
struct MembersOf<ValueDefinition> {
  PropertySet& set;

  const auto& all() const { return set.value_definitions(); }
  template <typename... Arguments>
  auto append(const Arguments&... arguments) {
    return set.append_value_definition(arguments...);
  }
  template <typename... Arguments>
  auto insert(const Arguments&... arguments) {
    return set.insert_value_definition(arguments...);
  }
  template <typename What>
  auto remove(const What& what) {
    return set.remove_value_definition(what);
  }
  void clear() { set.clear_value_definitions(); }
};

using Names = std::vector<OdString>;

/// A saved set without members, so that each change shows in its flag.
template <typename T>
class DefinitionsOfASet : public ::testing::Test {
protected:
  using Pointer = TsSmartPtr<const T>;

  SampleProject project;
  TsSmartPtr<PropertyNamespace> ns = PropertyNamespace::create(L"Common");
  TsSmartPtr<PropertySet> set = project.db->save(PropertySet::create(ns, L"Door"));
  MembersOf<T> members{*set};

  Names names() const { return namesOf(members.all()); }

  /// Makes the set clean, with these members, which are saved.
  void fill(const Names& wanted) {
    for (const OdString& name : wanted) members.append(name, PropertyType());
    set->save();
  }
};

using Definitions = ::testing::Types<PropertyDefinition, ValueDefinition>;
TYPED_TEST_SUITE(DefinitionsOfASet, Definitions, ClassNames);

TYPED_TEST(DefinitionsOfASet, AreMadeByNameAndTypeInTheNamespaceOfTheSet) {
  const TsSmartPtr<TypeParam> width = this->members.append(OdString(L"Width"), PropertyType::Single(Type::Double));
  ASSERT_TRUE(width);
  EXPECT_EQ(width->name(), L"Width");
  EXPECT_TRUE(width->type() == PropertyType::Single(Type::Double));
  EXPECT_EQ(width->ns(), this->set->ns());
  EXPECT_EQ(width->id(), 0U) << "saved only with the set";
  ASSERT_EQ(this->members.all().size(), 1U);
  EXPECT_EQ(this->members.all()[0], width);
  EXPECT_TRUE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, AreAppendedAtTheEnd) {
  this->members.append(OdString(L"Width"), PropertyType());
  EXPECT_TRUE(this->members.append(TypeParam::create(this->ns, L"Height")));
  this->members.append(OdString(L"Depth"), PropertyType());
  EXPECT_EQ(this->names(), (Names{L"Width", L"Height", L"Depth"}));
}

TYPED_TEST(DefinitionsOfASet, AreInsertedBeforeAPlace) {
  const auto& all = this->members.all();
  EXPECT_TRUE(this->members.insert(all.begin(), OdString(L"b"), PropertyType()));
  EXPECT_TRUE(this->members.insert(all.begin(), OdString(L"a"), PropertyType()));
  EXPECT_TRUE(this->members.insert(all.end(), TypeParam::create(this->ns, L"d")));
  EXPECT_TRUE(this->members.insert(all.begin() + 2, TypeParam::create(this->ns, L"c")));
  EXPECT_EQ(this->names(), (Names{L"a", L"b", L"c", L"d"}));
}

TYPED_TEST(DefinitionsOfASet, AreTheVeryObjectsThatWerePutIn) {
  const auto width = TypeParam::create(this->ns, L"Width");
  EXPECT_TRUE(this->members.append(width));
  EXPECT_EQ(this->members.all()[0], width);
  EXPECT_TRUE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, AreKeptAliveByTheSet) {
  this->members.append(TypeParam::create(this->ns, L"Width"));
  EXPECT_EQ(this->members.all()[0]->name(), L"Width");
}

TYPED_TEST(DefinitionsOfASet, AreNeverNull) {
  EXPECT_FALSE(this->members.append(typename TestFixture::Pointer()));
  EXPECT_FALSE(this->members.insert(this->members.all().begin(), typename TestFixture::Pointer()));
  EXPECT_TRUE(this->members.all().empty());
  EXPECT_FALSE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, AreOfNoOtherNamespace) {
  const auto other = PropertyNamespace::create(L"Other");
  EXPECT_FALSE(this->members.append(TypeParam::create(other, L"Width")));
  EXPECT_FALSE(this->members.append(TypeParam::create(PropertyNamespace::create(L"common"), L"Width")));
  EXPECT_TRUE(this->members.all().empty());
  EXPECT_FALSE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, MayBeOfAnotherNamespaceObjectOfTheSameName) {
  const auto sameName = PropertyNamespace::create(L"Common", L"Another label");
  EXPECT_TRUE(this->members.append(TypeParam::create(sameName, L"Width")));
  EXPECT_TRUE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, HaveANameOnce) {
  this->fill({L"Width"});
  EXPECT_FALSE(this->members.append(TypeParam::create(this->ns, L"Width")));
  EXPECT_FALSE(this->members.insert(this->members.all().begin(), TypeParam::create(this->ns, L"Width")));
  EXPECT_FALSE(this->members.append(this->members.all()[0])) << "not even the same one twice";
  EXPECT_TRUE(this->members.append(OdString(L"Width"), PropertyType()).isNull());
  EXPECT_TRUE(this->members.insert(this->members.all().begin(), OdString(L"Width"), PropertyType()).isNull());
  EXPECT_EQ(this->names(), Names{L"Width"});
  EXPECT_FALSE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, MayDifferInCaseAlone) {
  this->fill({L"Width"});
  EXPECT_TRUE(this->members.append(OdString(L"width"), PropertyType()));
  EXPECT_EQ(this->names(), (Names{L"Width", L"width"}));
}

TYPED_TEST(DefinitionsOfASet, AreRemovedByName) {
  this->fill({L"Width", L"Height"});
  this->members.remove(OdString(L"Width"));
  EXPECT_EQ(this->names(), Names{L"Height"});
  EXPECT_TRUE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, AreNotRemovedByANameThatIsNotThere) {
  this->fill({L"Width"});
  this->members.remove(OdString(L"width"));
  this->members.remove(OdString());
  EXPECT_EQ(this->names(), Names{L"Width"});
  EXPECT_FALSE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, AreRemovedAsAnyObjectOfTheirRow) {
  this->fill({L"Width", L"Height"});
  const auto again = this->project.db->template get<TypeParam>(this->members.all()[1]->id());
  ASSERT_NE(this->members.all()[1], again);
  this->members.remove(typename TestFixture::Pointer(again));
  EXPECT_EQ(this->names(), Names{L"Width"});
  EXPECT_TRUE(this->set->isDirty());
}

// A definition with a row is looked for by its name, whichever row that is.
TYPED_TEST(DefinitionsOfASet, AreRemovedAsAnySavedObjectOfTheirName) {
  this->members.append(OdString(L"Width"), PropertyType());
  ASSERT_EQ(this->members.all()[0]->id(), 0U);
  const auto saved = this->project.db->save(TypeParam::create(this->ns, L"Width"));
  this->members.remove(typename TestFixture::Pointer(saved));
  EXPECT_TRUE(this->members.all().empty());
}

TYPED_TEST(DefinitionsOfASet, AreRemovedAsAnUnsavedObjectOnlyIfItIsTheVeryOne) {
  this->fill({L"Width"});
  const auto alike = TypeParam::create(this->ns, L"Width");
  this->members.remove(typename TestFixture::Pointer(alike));
  EXPECT_EQ(this->names(), Names{L"Width"});
  EXPECT_FALSE(this->set->isDirty());

  const auto unsaved = TypeParam::create(this->ns, L"Height");
  this->members.append(unsaved);
  this->members.remove(typename TestFixture::Pointer(unsaved->cloneObject()));
  EXPECT_EQ(this->names(), (Names{L"Width", L"Height"}));
  this->members.remove(typename TestFixture::Pointer(unsaved));
  EXPECT_EQ(this->names(), Names{L"Width"});
}

TYPED_TEST(DefinitionsOfASet, AreNotRemovedByNothing) {
  this->fill({L"Width"});
  this->members.remove(typename TestFixture::Pointer());
  EXPECT_EQ(this->names(), Names{L"Width"});
  EXPECT_FALSE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, AreNotRemovedByADefinitionOfAnotherNamespace) {
  this->fill({L"Width"});
  const auto stranger = this->project.db->save(TypeParam::create(PropertyNamespace::create(L"Other"), L"Width"));
  ASSERT_NE(stranger->id(), 0U);
  this->members.remove(typename TestFixture::Pointer(stranger));
  EXPECT_EQ(this->names(), Names{L"Width"});
  EXPECT_FALSE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, AreRemovedThroughAReferenceIntoTheList) {
  this->fill({L"a", L"b", L"c"});
  this->members.remove(this->members.all()[1]);
  EXPECT_EQ(this->names(), (Names{L"a", L"c"}));
  this->members.remove(this->members.all()[0]->name());
  EXPECT_EQ(this->names(), Names{L"c"});
}

TYPED_TEST(DefinitionsOfASet, AreRemovedByPlaceWhichGivesTheNextOne) {
  this->fill({L"a", L"b", L"c"});
  const auto next = this->members.remove(this->members.all().begin() + 1);
  ASSERT_NE(next, this->members.all().end());
  EXPECT_EQ((*next)->name(), L"c");
  EXPECT_TRUE(this->set->isDirty());
  const auto end = this->members.remove(next);
  EXPECT_EQ(end, this->members.all().end());
  EXPECT_EQ(this->names(), Names{L"a"});
}

TYPED_TEST(DefinitionsOfASet, AreAllRemovedByPlaceInALoop) {
  this->fill({L"a", L"b", L"c"});
  for (auto pos = this->members.all().begin(); pos != this->members.all().end();) pos = this->members.remove(pos);
  EXPECT_TRUE(this->members.all().empty());
}

TYPED_TEST(DefinitionsOfASet, AreClearedAndTheSetIsMarked) {
  this->fill({L"a", L"b"});
  this->members.clear();
  EXPECT_TRUE(this->members.all().empty());
  EXPECT_TRUE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, AreClearedEvenWhereThereAreNoneAndTheSetIsMarked) {
  this->members.clear();
  EXPECT_TRUE(this->set->isDirty());
}

TYPED_TEST(DefinitionsOfASet, MayComeBackAfterTheyWereRemoved) {
  this->fill({L"a", L"b"});
  const auto a = this->members.all()[0];
  this->members.remove(a);
  EXPECT_TRUE(this->members.append(a));
  EXPECT_EQ(this->names(), (Names{L"b", L"a"}));
}

// A set asks for a name when a member goes in, not when a member is renamed. From then on it is the first one that counts.
TYPED_TEST(DefinitionsOfASet, HaveANameTwiceOnceOneIsRenamed) {
  const auto& all = this->members.all();
  const auto second = TypeParam::create(this->ns, L"b");
  this->members.append(OdString(L"a"), PropertyType());
  ASSERT_TRUE(this->members.append(second));
  second->set_name(L"a");
  const typename TestFixture::Pointer first = all[0];
  EXPECT_EQ(this->names(), (Names{L"a", L"a"}));
  EXPECT_FALSE(this->members.append(TypeParam::create(this->ns, L"a")));

  this->members.remove(OdString(L"a"));
  ASSERT_EQ(all.size(), 1U);
  EXPECT_EQ(all[0], second);
  ASSERT_TRUE(this->members.append(OdString(L"b"), PropertyType())) << "the old name is free";
  this->members.remove(OdString(L"a"));
  EXPECT_EQ(this->names(), Names{L"b"});
}

TYPED_TEST(DefinitionsOfASet, AreRemovedAsTheFirstOfTheirNameIfTheyHaveARow) {
  this->fill({L"a"});
  const auto second = TypeParam::create(this->ns, L"b");
  ASSERT_TRUE(this->members.append(second));
  this->set->save();
  ASSERT_NE(second->id(), 0U);
  second->set_name(L"a");
  this->members.remove(typename TestFixture::Pointer(second));
  ASSERT_EQ(this->members.all().size(), 1U);
  EXPECT_EQ(this->members.all()[0], second) << "the other one went";
}

TYPED_TEST(DefinitionsOfASet, AreRemovedAsThemselvesWhateverTheirNameIfTheyHaveNoRow) {
  this->fill({L"a"});
  const auto second = TypeParam::create(this->ns, L"b");
  ASSERT_TRUE(this->members.append(second));
  second->set_name(L"a");
  this->members.remove(typename TestFixture::Pointer(second));
  ASSERT_EQ(this->members.all().size(), 1U);
  EXPECT_NE(this->members.all()[0], second);
}

TEST(MembersOfASet, MayBeAPropertyAndAValueOfTheSameName) {
  const auto set = PropertySet::create(PropertyNamespace::create(L"Common"), L"Door");
  EXPECT_TRUE(set->append_property_definition(L"Width", PropertyType()));
  EXPECT_TRUE(set->append_value_definition(L"Width", PropertyType()));
  EXPECT_TRUE(set->insert_entity_type(L"Width"));
  set->remove_property_definition(L"Width");
  EXPECT_TRUE(set->property_definitions().empty());
  EXPECT_EQ(set->value_definitions().size(), 1U);
  EXPECT_EQ(set->entity_types().size(), 1U);
  set->clear_value_definitions();
  EXPECT_EQ(set->entity_types().size(), 1U);
}

}  // namespace
}  // namespace tessel::test
