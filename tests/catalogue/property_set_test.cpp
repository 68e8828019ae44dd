#include <gtest/gtest.h>

#include "catalogue/catalogue.h"

namespace tessel::test {
namespace {

class PropertySetTest : public ::testing::Test {
protected:
  TsSmartPtr<PropertyNamespace> ns = PropertyNamespace::create(L"Common");
  TsSmartPtr<PropertySet> set = PropertySet::create(ns, L"Door");

  /// A set with members of all three kinds.
  TsSmartPtr<PropertySet> withMembers() {
    const auto full = PropertySet::create(ns, L"Door");
    full->append_property_definition(L"Width", PropertyType());
    full->append_property_definition(L"Height", PropertyType());
    full->append_value_definition(L"Area", PropertyType());
    full->insert_entity_type(L"door");
    full->insert_entity_type(L"gate");
    return full;
  }

  static void expectSameMembers(const PropertySet& a, const PropertySet& b) {
    EXPECT_EQ(a.property_definitions(), b.property_definitions());
    EXPECT_EQ(a.value_definitions(), b.value_definitions());
    EXPECT_EQ(a.entity_types(), b.entity_types());
  }
};

TEST_F(PropertySetTest, IsCreatedWithoutAName) {
  const auto unnamed = PropertySet::create(ns);
  EXPECT_TRUE(unnamed->name().isEmpty());
  EXPECT_EQ(unnamed->ns(), ns);
  EXPECT_TRUE(unnamed->isDirty());
}

TEST_F(PropertySetTest, IsCreatedVisibleForTypesAndEmpty) {
  EXPECT_EQ(set->name(), L"Door");
  EXPECT_EQ(set->ns(), ns);
  EXPECT_FALSE(set->has_label());
  EXPECT_TRUE(set->label().isEmpty());
  EXPECT_TRUE(set->property_definitions().empty());
  EXPECT_TRUE(set->value_definitions().empty());
  EXPECT_FALSE(set->per_instance());
  EXPECT_TRUE(set->entity_types().empty());
  EXPECT_FALSE(set->has_ifc_name());
  EXPECT_TRUE(set->ifc_name().isEmpty());
  EXPECT_TRUE(set->visible());
  EXPECT_TRUE(set->isDirty());
  EXPECT_EQ(set->id(), 0U);
}

TEST_F(PropertySetTest, IsCreatedEvenWithoutANamespace) {
  const auto homeless = PropertySet::create(nullptr, L"Door");
  EXPECT_TRUE(homeless->ns().isNull());
  EXPECT_FALSE(homeless->append_property_definition(PropertyDefinition::create(ns, L"Width")));
}

TEST_F(PropertySetTest, ClonesListTheSameMembers) {
  const auto source = withMembers();
  const auto clone = source->cloneObject();
  expectSameMembers(*clone, *source);
  EXPECT_EQ(clone->property_definitions().size(), 2U);
  EXPECT_TRUE(*clone == *source);
}

TEST_F(PropertySetTest, ClonesHaveAListOfTheirOwn) {
  const auto source = withMembers();
  source->cloneObject()->clear_property_definitions();
  EXPECT_EQ(source->property_definitions().size(), 2U);
}

TEST_F(PropertySetTest, AssignmentCopiesTheMembersAndKeepsTheNamespace) {
  const auto other = PropertyNamespace::create(L"Other");
  const auto target = PropertySet::create(other, L"Window");
  target->append_property_definition(L"Gone", PropertyType());
  const auto source = withMembers();
  *target = *source;
  EXPECT_EQ(target->ns(), other);
  EXPECT_EQ(target->name(), L"Door");
  expectSameMembers(*target, *source);
}

TEST_F(PropertySetTest, AssignmentTakesOverThatThereIsNothing) {
  set->set_label(L"Label");
  set->set_ifc_name(L"Pset_DoorCommon");
  *set = *PropertySet::create(ns, L"Plain");
  EXPECT_FALSE(set->has_label());
  EXPECT_FALSE(set->has_ifc_name());
}

TEST_F(PropertySetTest, AssignmentToItselfKeepsTheMembers) {
  const auto full = withMembers();
  const PropertySet& same = *full;
  *full = same;
  EXPECT_EQ(full->property_definitions().size(), 2U);
  EXPECT_EQ(full->entity_types().size(), 2U);
}

TEST_F(PropertySetTest, EqualsOneWithOtherOptionalTexts) {
  const auto other = PropertySet::create(ns, L"Door");
  set->set_label(L"a");
  other->set_label(L"b");
  set->set_ifc_name(L"a");
  other->set_ifc_name(L"b");
  EXPECT_TRUE(*set == *other);
  other->clear_label();
  EXPECT_FALSE(*set == *other);
  other->set_label(L"");
  EXPECT_TRUE(*set == *other);
  other->clear_ifc_name();
  EXPECT_FALSE(*other == *set);
}

TEST_F(PropertySetTest, DiffersFromOneWithoutANamespace) {
  EXPECT_FALSE(*set == *PropertySet::create(nullptr, L"Door"));
  EXPECT_FALSE(*PropertySet::create(nullptr, L"Door") == *set);
  EXPECT_TRUE(*PropertySet::create(nullptr, L"Door") == *PropertySet::create(nullptr, L"Door"));
  EXPECT_TRUE(*set == *PropertySet::create(PropertyNamespace::create(L"Common"), L"Door"));
}

// Members count as the very objects that they are.
TEST_F(PropertySetTest, DiffersFromOneWithEqualButOtherMembers) {
  EXPECT_FALSE(*withMembers() == *withMembers());

  const auto a = PropertyDefinition::create(ns, L"Width");
  const auto b = PropertyDefinition::create(ns, L"Width");
  ASSERT_TRUE(*a == *b);
  const auto withA = PropertySet::create(ns, L"Door");
  const auto withB = PropertySet::create(ns, L"Door");
  withA->append_property_definition(a);
  withB->append_property_definition(b);
  EXPECT_FALSE(*withA == *withB);
  withB->clear_property_definitions();
  withB->append_property_definition(a);
  EXPECT_TRUE(*withA == *withB);
}

TEST_F(PropertySetTest, DiffersInEachKindOfMember) {
  const auto full = withMembers();
  const auto changed = [&](auto&& change) {
    const auto copy = full->cloneObject();
    change(*copy);
    EXPECT_FALSE(*copy == *full);
    EXPECT_FALSE(*full == *copy);
  };
  changed([](PropertySet& s) { s.remove_property_definition(L"Height"); });
  changed([](PropertySet& s) { s.remove_value_definition(L"Area"); });
  changed([](PropertySet& s) { s.remove_entity_type(L"gate"); });
}

TEST_F(PropertySetTest, DiffersInTheOrderOfItsMembers) {
  const auto full = withMembers();
  const auto turned = full->cloneObject();
  const auto first = turned->property_definitions().front();
  turned->remove_property_definition(turned->property_definitions().begin());
  ASSERT_TRUE(turned->append_property_definition(first));
  EXPECT_FALSE(*full == *turned);
}

class StoredPropertySet : public PropertySetTest {
protected:
  SampleProject project;

  std::string inFile(const PropertySet& saved, const std::string& column) const {
    return project.row("tessel_PropertySet", saved.id()).at(column);
  }
  RawFile::Rows members(const std::string& kind, const std::string& column, const PropertySet& owner) const {
    return project.raw().rows("SELECT \"index\", \"" + column + "_id\" FROM \"tessel_PropertySet_" + kind +
                              "\" WHERE object_id = " + std::to_string(owner.id()) + " ORDER BY rowid");
  }
  RawFile::Rows properties(const PropertySet& owner) const {
    return members("property_definitions", "property_definition", owner);
  }

  static std::string text(unsigned int id) { return std::to_string(id); }
};

TEST_F(StoredPropertySet, HasLabelAndIfcNameOnceTheyAreSetEvenEmptyOnes) {
  project.db->save(set);
  EXPECT_EQ(inFile(*set, "label"), "NULL");
  EXPECT_EQ(inFile(*set, "ifc_name"), "NULL");
  set->set_label(L"");
  EXPECT_TRUE(set->isDirty());
  ASSERT_TRUE(set->save());
  set->set_ifc_name(L"");
  EXPECT_TRUE(set->isDirty());
  ASSERT_TRUE(set->save());
  EXPECT_EQ(inFile(*set, "label"), "");
  EXPECT_EQ(inFile(*set, "ifc_name"), "");
  set->set_label(L"");
  set->set_ifc_name(L"");
  EXPECT_FALSE(set->isDirty());
}

TEST_F(StoredPropertySet, IsMarkedByEachClearEvenIfThereWasNothing) {
  const unsigned int id = project.db->save(set)->id();
  using Clear = void (PropertySet::*)();
  for (const Clear clear : {&PropertySet::clear_label, &PropertySet::clear_ifc_name,
                            &PropertySet::clear_property_definitions, &PropertySet::clear_value_definitions}) {
    const auto loaded = project.db->get<PropertySet>(id);
    ASSERT_FALSE(loaded->isDirty());
    (*loaded.*clear)();
    EXPECT_TRUE(loaded->isDirty());
  }
}

TEST_F(StoredPropertySet, LosesLabelAndIfcNameWhenTheyAreCleared) {
  set->set_label(L"Label");
  set->set_ifc_name(L"Pset_DoorCommon");
  project.db->save(set);
  set->clear_label();
  set->clear_ifc_name();
  ASSERT_TRUE(set->save());
  EXPECT_EQ(inFile(*set, "label"), "NULL");
  EXPECT_EQ(inFile(*set, "ifc_name"), "NULL");
  const auto loaded = project.db->get<PropertySet>(set->id());
  EXPECT_FALSE(loaded->has_label());
  EXPECT_TRUE(loaded->label().isEmpty());
  EXPECT_FALSE(loaded->has_ifc_name());
  EXPECT_TRUE(loaded->ifc_name().isEmpty());
}

TEST_F(StoredPropertySet, NumbersTheRowsOfItsMembersFromZero) {
  const auto full = project.db->save(withMembers());
  const auto& p = full->property_definitions();
  EXPECT_EQ(properties(*full), (RawFile::Rows{{"0", text(p[0]->id())}, {"1", text(p[1]->id())}}));
  EXPECT_EQ(members("value_definitions", "value_definition", *full),
            (RawFile::Rows{{"0", text(full->value_definitions()[0]->id())}}));
  const auto& e = full->entity_types();
  EXPECT_EQ(members("entity_types", "entity_type", *full),
            (RawFile::Rows{{"0", text(e[0]->id())}, {"1", text(e[1]->id())}}));
}

TEST_F(StoredPropertySet, ComesBackWithItsMembersInTheirOrder) {
  const auto full = project.db->save(withMembers());
  const unsigned int id = full->id();
  project.reopen();
  const auto loaded = project.db->get<PropertySet>(id);
  EXPECT_EQ(namesOf(loaded->property_definitions()), (std::vector<OdString>{L"Width", L"Height"}));
  EXPECT_EQ(namesOf(loaded->value_definitions()), (std::vector<OdString>{L"Area"}));
  EXPECT_EQ(namesOf(loaded->entity_types()), (std::vector<OdString>{L"door", L"gate"}));
  EXPECT_EQ(idsOf(loaded->property_definitions()), idsOf(full->property_definitions()));
  EXPECT_EQ(loaded->ns()->name(), L"Common");
  for (const auto& definition : loaded->property_definitions()) {
    EXPECT_FALSE(definition->isDirty());
    EXPECT_EQ(definition->projectDb(), project.db);
  }
  EXPECT_FALSE(*loaded == *full) << "another load has other members";
}

TEST_F(StoredPropertySet, ReadsItsMembersInTheOrderOfTheirNumbers) {
  const auto full = withMembers();
  full->append_value_definition(L"Volume", PropertyType());
  project.db->save(full);
  for (const char* kind : {"property_definitions", "value_definitions", "entity_types"}) {
    project.raw().exec(std::string("UPDATE tessel_PropertySet_") + kind + " SET \"index\" = 1 - \"index\"");
  }
  const auto loaded = project.db->get<PropertySet>(full->id());
  EXPECT_EQ(namesOf(loaded->property_definitions()), (std::vector<OdString>{L"Height", L"Width"}));
  EXPECT_EQ(namesOf(loaded->value_definitions()), (std::vector<OdString>{L"Volume", L"Area"}));
  EXPECT_EQ(namesOf(loaded->entity_types()), (std::vector<OdString>{L"gate", L"door"}));
}

TEST_F(StoredPropertySet, WritesAllRowsOfItsMembersAnew) {
  const auto full = project.db->save(withMembers());
  const auto width = full->property_definitions()[0];
  const auto height = full->property_definitions()[1];
  full->remove_property_definition(L"Width");
  const auto depth = full->insert_property_definition(full->property_definitions().begin(), L"Depth", PropertyType());
  ASSERT_TRUE(full->append_property_definition(width));
  ASSERT_TRUE(full->save());
  EXPECT_EQ(properties(*full),
            (RawFile::Rows{{"0", text(depth->id())}, {"1", text(height->id())}, {"2", text(width->id())}}));
  EXPECT_EQ(namesOf(project.db->get<PropertySet>(full->id())->property_definitions()),
            (std::vector<OdString>{L"Depth", L"Height", L"Width"}));
}

TEST_F(StoredPropertySet, LeavesADefinitionInTheFileThatItNoLongerHolds) {
  const auto full = project.db->save(withMembers());
  full->clear_property_definitions();
  ASSERT_TRUE(full->save());
  EXPECT_TRUE(properties(*full).empty());
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 2U);
}

TEST_F(StoredPropertySet, SharesADefinitionWithOtherSets) {
  const auto full = project.db->save(withMembers());
  const auto other = PropertySet::create(ns, L"Window");
  ASSERT_TRUE(other->append_property_definition(full->property_definitions()[1]));
  project.db->save(other);
  EXPECT_EQ(properties(*other), (RawFile::Rows{{"0", text(full->property_definitions()[1]->id())}}));
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 2U);
}

TEST_F(StoredPropertySet, WithoutANamespaceIsNotSaved) {
  const auto homeless = PropertySet::create(nullptr, L"Door");
  EXPECT_THROW(project.db->save(homeless), DatabaseException);
  EXPECT_EQ(homeless->id(), 0U);
  EXPECT_TRUE(homeless->isDirty());
  EXPECT_EQ(project.db->count<PropertySet>(), 0U);
}

TEST_F(StoredPropertySet, LosesTheRowsOfItsMembersWithItsOwn) {
  const auto full = project.db->save(withMembers());
  project.db->remove<PropertySet>(std::set<unsigned int>{full->id()});
  for (const char* kind : {"property_definitions", "value_definitions", "entity_types"}) {
    EXPECT_EQ(project.count(std::string("tessel_PropertySet_") + kind), 0) << kind;
  }
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 2U);
  EXPECT_EQ(project.db->count<ValueDefinition>(), 1U);
  EXPECT_EQ(project.db->count<EntityType>(), 2U);
}

}  // namespace
}  // namespace tessel::test
