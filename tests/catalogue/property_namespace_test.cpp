#include <limits>

#include <gtest/gtest.h>

#include "catalogue/catalogue.h"

namespace tessel::test {
namespace {

TEST(PropertyNamespace, IsCreatedEditableVisibleAndWithoutALabel) {
  const auto ns = PropertyNamespace::create(L"a");
  EXPECT_EQ(ns->name(), L"a");
  EXPECT_TRUE(ns->editable());
  EXPECT_TRUE(ns->visible());
  EXPECT_EQ(ns->revision(), 0U);
  EXPECT_FALSE(ns->has_label());
  EXPECT_TRUE(ns->label().isEmpty());
  EXPECT_TRUE(ns->isDirty());
  EXPECT_EQ(ns->id(), 0U);
}

TEST(PropertyNamespace, IsCreatedWithTheLabelThatIsGivenEvenAnEmptyOne) {
  EXPECT_EQ(PropertyNamespace::create(L"a", L"Label")->label(), L"Label");
  EXPECT_TRUE(PropertyNamespace::create(L"a", L"Label")->has_label());
  EXPECT_TRUE(PropertyNamespace::create(L"a", L"")->has_label());
  EXPECT_TRUE(PropertyNamespace::create(L"a", L"")->label().isEmpty());
}

TEST(PropertyNamespace, HasNoSetterForItsName) { EXPECT_FALSE(CanBeRenamed<PropertyNamespace>::value); }

TEST(PropertyNamespace, KeepsItsNameWhenAssignedTo) {
  const auto target = PropertyNamespace::create(L"b");
  const auto source = PropertyNamespace::create(L"a", L"Label");
  source->set_editable(false);
  source->set_visible(false);
  source->set_revision(7);
  *target = *source;
  EXPECT_EQ(target->name(), L"b");
  EXPECT_EQ(target->label(), L"Label");
  EXPECT_FALSE(target->editable());
  EXPECT_FALSE(target->visible());
  EXPECT_EQ(target->revision(), 7U);
}

TEST(PropertyNamespace, TakesOverByAssignmentThatThereIsNoLabel) {
  const auto target = PropertyNamespace::create(L"b", L"Label");
  *target = *PropertyNamespace::create(L"a");
  EXPECT_FALSE(target->has_label());
}

TEST(PropertyNamespace, EqualsOneWithAnotherLabelButNotOneWithoutALabel) {
  const auto ns = PropertyNamespace::create(L"a", L"Label");
  EXPECT_TRUE(*ns == *PropertyNamespace::create(L"a", L"Other label"));
  EXPECT_FALSE(*ns == *PropertyNamespace::create(L"a"));
  EXPECT_TRUE(*PropertyNamespace::create(L"a") != *ns);
  EXPECT_TRUE(*PropertyNamespace::create(L"a") == *PropertyNamespace::create(L"a"));
}

class SavedNamespace : public ::testing::Test {
protected:
  SampleProject project;
  TsSmartPtr<PropertyNamespace> ns = project.db->save(PropertyNamespace::create(L"a"));

  std::string inFile(const std::string& column) const {
    return project.row("tessel_PropertyNamespace", ns->id()).at(column);
  }
};

TEST_F(SavedNamespace, HasALabelOnceOneIsSetEvenAnEmptyOne) {
  EXPECT_EQ(inFile("label"), "NULL");
  ns->set_label(L"");
  EXPECT_TRUE(ns->has_label());
  EXPECT_TRUE(ns->isDirty());
  ASSERT_TRUE(ns->save());
  EXPECT_EQ(inFile("label"), "");
  ns->set_label(L"");
  EXPECT_FALSE(ns->isDirty());
}

TEST_F(SavedNamespace, LosesItsLabelWhenThatIsClearedAndIsMarkedAlways) {
  ns->clear_label();
  EXPECT_TRUE(ns->isDirty());
  EXPECT_FALSE(ns->has_label());
  ns->set_label(L"Label");
  ASSERT_TRUE(ns->save());
  ns->clear_label();
  EXPECT_TRUE(ns->label().isEmpty());
  ASSERT_TRUE(ns->save());
  EXPECT_EQ(inFile("label"), "NULL");
  EXPECT_FALSE(project.db->get<PropertyNamespace>(ns->id())->has_label());
}

TEST_F(SavedNamespace, KeepsTheHighestRevision) {
  ns->set_revision(std::numeric_limits<unsigned int>::max());
  ASSERT_TRUE(ns->save());
  EXPECT_EQ(inFile("revision"), "4294967295");
  EXPECT_EQ(project.db->get<PropertyNamespace>(ns->id())->revision(), std::numeric_limits<unsigned int>::max());
}

// The name has no setter, so this is the only way to give it a remarkable one.
TEST_F(SavedNamespace, IsFoundByAnyName) {
  const OdString withZero(u"with\0zero", 9);
  for (const OdString& name : {OdString(), OdString(L" "), OdString(L"it's \"quoted\" %_;--"),
                               OdString(u"\u00DF\u4E2D\U0001F3E0"), withZero}) {
    const auto saved = project.db->save(PropertyNamespace::create(name));
    const auto found = project.db->get<PropertyNamespace>(NameKey(name));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id(), saved->id());
    EXPECT_EQ(found->name(), name);
  }
}

TEST(EntityType, IsCreatedWithItsName) {
  const auto type = EntityType::create(L"wall");
  EXPECT_EQ(type->name(), L"wall");
  EXPECT_TRUE(type->isDirty());
  EXPECT_EQ(type->id(), 0U);
  EXPECT_TRUE(EntityType::create(L"")->name().isEmpty());
}

}  // namespace
}  // namespace tessel::test
