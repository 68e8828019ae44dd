#include <gtest/gtest.h>

#include "catalogue/catalogue.h"

namespace tessel::test {
namespace {

using Names = std::vector<OdString>;

class EntityTypesOfASet : public ::testing::Test {
protected:
  SampleProject project;
  TsSmartPtr<PropertySet> set = project.db->save(PropertySet::create(PropertyNamespace::create(L"Common"), L"Door"));

  void fill(const Names& wanted) {
    for (const OdString& name : wanted) set->insert_entity_type(name);
    set->save();
  }
  Names names() const { return namesOf(set->entity_types()); }
};

TEST_F(EntityTypesOfASet, AreInsertedAtTheEndByName) {
  EXPECT_TRUE(set->insert_entity_type(L"wall"));
  EXPECT_TRUE(set->isDirty());
  EXPECT_TRUE(set->insert_entity_type(L"door"));
  EXPECT_EQ(names(), (Names{L"wall", L"door"}));
  EXPECT_EQ(set->entity_types()[0]->id(), 0U) << "saved only with the set";
}

TEST_F(EntityTypesOfASet, AreInsertedAtTheEndAsObjects) {
  const auto wall = EntityType::create(L"wall");
  EXPECT_TRUE(set->insert_entity_type(wall));
  EXPECT_EQ(set->entity_types()[0], wall);
  EXPECT_TRUE(set->isDirty());
}

TEST_F(EntityTypesOfASet, AreInsertedOnce) {
  EXPECT_TRUE(set->insert_entity_type(L"wall"));
  set->save();
  EXPECT_FALSE(set->insert_entity_type(L"wall"));
  EXPECT_FALSE(set->insert_entity_type(EntityType::create(L"wall")));
  EXPECT_FALSE(set->insert_entity_type(set->entity_types()[0]));
  EXPECT_FALSE(set->isDirty());
  EXPECT_TRUE(set->insert_entity_type(L"Wall")) << "another name";
}

TEST_F(EntityTypesOfASet, AreNeverNull) {
  EXPECT_FALSE(set->insert_entity_type(TsSmartPtr<const EntityType>()));
  EXPECT_TRUE(set->entity_types().empty());
  EXPECT_FALSE(set->isDirty());
}

TEST_F(EntityTypesOfASet, AreRemovedByName) {
  fill({L"wall", L"door"});
  set->remove_entity_type(L"gate");
  EXPECT_FALSE(set->isDirty());
  set->remove_entity_type(L"wall");
  EXPECT_EQ(names(), Names{L"door"});
  EXPECT_TRUE(set->isDirty());
}

// Unlike for definitions, it is never the object that counts.
TEST_F(EntityTypesOfASet, AreRemovedByTheNameOfAnObject) {
  fill({L"wall", L"door"});
  set->remove_entity_type(EntityType::create(L"wall"));
  EXPECT_EQ(names(), Names{L"door"});
  EXPECT_TRUE(set->isDirty());
}

TEST_F(EntityTypesOfASet, AreNotRemovedByNothingOrAStranger) {
  fill({L"wall"});
  set->remove_entity_type(TsSmartPtr<const EntityType>());
  set->remove_entity_type(EntityType::create(L"door"));
  EXPECT_EQ(names(), Names{L"wall"});
  EXPECT_FALSE(set->isDirty());
}

TEST_F(EntityTypesOfASet, AreRemovedThroughAReferenceIntoTheList) {
  fill({L"wall", L"door", L"gate"});
  set->remove_entity_type(set->entity_types()[1]);
  EXPECT_EQ(names(), (Names{L"wall", L"gate"}));
}

TEST_F(EntityTypesOfASet, AreRemovedByPlaceWhichGivesTheNextOne) {
  fill({L"wall", L"door"});
  const auto next = set->remove_entity_type(set->entity_types().begin());
  ASSERT_NE(next, set->entity_types().end());
  EXPECT_EQ((*next)->name(), L"door");
  EXPECT_TRUE(set->isDirty());
  const auto end = set->remove_entity_type(next);
  EXPECT_EQ(end, set->entity_types().end());
}

// A set asks for a name when a type goes in, not when a type is renamed. From then on it is the first one that counts.
TEST_F(EntityTypesOfASet, HaveANameTwiceOnceOneIsRenamed) {
  const auto gate = EntityType::create(L"gate");
  ASSERT_TRUE(set->insert_entity_type(L"wall"));
  ASSERT_TRUE(set->insert_entity_type(gate));
  gate->set_name(L"wall");
  EXPECT_EQ(names(), (Names{L"wall", L"wall"}));
  EXPECT_FALSE(set->insert_entity_type(L"wall"));
  set->remove_entity_type(gate);
  ASSERT_EQ(set->entity_types().size(), 1U);
  EXPECT_EQ(set->entity_types()[0], gate) << "the other one went";
  EXPECT_TRUE(set->insert_entity_type(L"gate")) << "the old name is free";
  set->remove_entity_type(L"wall");
  EXPECT_EQ(names(), Names{L"gate"});
}

}  // namespace
}  // namespace tessel::test
