#include <gtest/gtest.h>

#include "catalogue/catalogue.h"
#include "support/sql_trace.h"

// What a save of definitions and sets takes along, in which order, and what it leaves alone.

namespace tessel::test {
namespace {

constexpr SaveResolution created = SaveResolution::Created;
constexpr SaveResolution kept = SaveResolution::Kept;
constexpr SaveResolution overwritten = SaveResolution::Overwritten;

class CatalogueSave : public ::testing::Test {
protected:
  /// The types of what was saved, in order; all with the same outcome.
  std::vector<ObjectType> savedTypes(SaveResolution outcome) const {
    std::vector<ObjectType> types;
    for (const auto& saved : reactor.saved) {
      EXPECT_EQ(saved.resolution, outcome) << saved;
      types.push_back(saved.key.type);
    }
    return types;
  }
  std::vector<RecordingReactor::Saved> only(const Object& object, SaveResolution outcome) const {
    return {{project.db.get(), {object.tesselType(), object.id()}, outcome}};
  }

  /// A set with two properties, of which the first has a unit, a value with a unit, and two entity types.
  TsSmartPtr<PropertySet> fullSet() const {
    const auto full = PropertySet::create(ns, L"Door");
    full->append_property_definition(L"Width", PropertyType())->set_unit(makeSample<Unit>(1));
    full->append_property_definition(L"Fire", PropertyType());
    full->append_value_definition(L"Area", PropertyType())->set_unit(makeSample<Unit>(2));
    full->insert_entity_type(L"door");
    full->insert_entity_type(L"gate");
    return full;
  }

  void exec(const std::string& sql) { project.raw().exec(sql); }

  SampleProject project;
  RecordingReactor reactor{project.db};
  TsSmartPtr<PropertyNamespace> ns = PropertyNamespace::create(L"Common");
};

const std::vector<ObjectType> orderOfFullSet = {
  ObjectType::PropertyNamespace,  ObjectType::Measure,    ObjectType::Unit,        ObjectType::PropertyDefinition,
  ObjectType::PropertyDefinition, ObjectType::Measure,    ObjectType::Unit,        ObjectType::ValueDefinition,
  ObjectType::EntityType,         ObjectType::EntityType, ObjectType::PropertySet,
};

TEST_F(CatalogueSave, OfASetSavesAllThatItRefersToInOrder) {
  const auto set = fullSet();
  EXPECT_EQ(project.db->save(set), set);
  EXPECT_EQ(savedTypes(created), orderOfFullSet);
  EXPECT_EQ(idsOf(set->property_definitions()),
            (std::vector<unsigned int>{reactor.saved[3].key.id, reactor.saved[4].key.id}));
  EXPECT_EQ(idsOf(set->entity_types()), (std::vector<unsigned int>{reactor.saved[8].key.id, reactor.saved[9].key.id}));
}

TEST_F(CatalogueSave, OfASavedSetSavesNoneOfItsMembersAgain) {
  const auto set = project.db->save(fullSet());
  reactor.clear();
  set->set_visible(false);
  ASSERT_TRUE(set->save());
  EXPECT_EQ(reactor.saved, only(*set, overwritten));
}

// What has a row already is not written on behalf of what refers to it.
TEST_F(CatalogueSave, LeavesChangesOfSavedReferencesInMemory) {
  const auto set = project.db->save(fullSet());
  const auto width = project.db->get<PropertyDefinition>(set->property_definitions()[0]->id());
  const auto door = project.db->get<EntityType>(set->entity_types()[0]->id());
  const auto other = PropertySet::create(ns, L"Window");
  other->append_property_definition(width);
  other->insert_entity_type(door);
  width->set_description(L"changed");
  door->set_name(L"changed");
  ns->set_revision(9);
  reactor.clear();
  project.db->save(other);
  EXPECT_EQ(reactor.saved, only(*other, created));
  EXPECT_TRUE(width->isDirty());
  EXPECT_TRUE(door->isDirty());
  EXPECT_TRUE(ns->isDirty());
  EXPECT_EQ(project.row("tessel_PropertyDefinition", width->id()).at("description"), "");
  EXPECT_EQ(project.row("tessel_EntityType", door->id()).at("name"), "door");
  EXPECT_EQ(project.row("tessel_PropertyNamespace", ns->id()).at("revision"), "0");
}

TEST_F(CatalogueSave, RecordsEachObjectInTheMapping) {
  const auto set = project.db->save(fullSet());
  set->set_visible(false);
  IdMapping mapping(project.db);
  set->save(project.db, mapping);
  const auto expect = [&](const Object& object, SaveResolution outcome) {
    IdMapping::Value value{};
    ASSERT_TRUE(mapping.get({object.tesselType(), object.id(), project.db.get()}, value));
    EXPECT_EQ(value.id, object.id());
    EXPECT_EQ(value.resolution, outcome);
  };
  expect(*ns, kept);
  for (const auto& definition : set->property_definitions()) expect(*definition, kept);
  expect(*set->value_definitions()[0], kept);
  for (const auto& type : set->entity_types()) expect(*type, kept);
  expect(*set, overwritten);
  EXPECT_EQ(mapping.size(), 7U);
}

// Members have no rows that could be told apart, so all go and come again in their order.
TEST(CatalogueSaveStatements, OfASetDeleteItsMembersAndInsertThemInOrder) {
  SqlTrace sql;
  SampleProject project;
  const auto set = PropertySet::create(PropertyNamespace::create(L"Common"), L"Door");
  set->append_property_definition(L"Width", PropertyType());
  set->append_property_definition(L"Height", PropertyType());
  set->append_value_definition(L"Area", PropertyType());
  set->insert_entity_type(L"door");
  set->insert_entity_type(L"gate");
  project.db->save(set);
  set->set_visible(false);
  sql.clear();
  ASSERT_TRUE(set->save());

  const auto deletion = [](const std::string& members) {
    return "DELETE FROM \"tessel_PropertySet_" + members + "\" WHERE \"object_id\"=?";
  };
  const auto insertion = [](const std::string& members, const std::string& column) {
    return "INSERT INTO \"tessel_PropertySet_" + members + "\" (\"object_id\", \"index\", \"" + column +
           "\") VALUES (?, ?, ?)";
  };
  const std::string property = insertion("property_definitions", "property_definition_id");
  const std::string entityType = insertion("entity_types", "entity_type_id");
  std::vector<std::string> written;
  for (const std::string& statement : sql.statements()) {
    if (statement.find("\"tessel_PropertySet_") != std::string::npos) written.push_back(statement);
  }
  EXPECT_EQ(written, (std::vector<std::string>{deletion("property_definitions"), property, property,
                                               deletion("value_definitions"),
                                               insertion("value_definitions", "value_definition_id"),
                                               deletion("entity_types"), entityType, entityType}));
}

// A reference that turns out to stand for another object. Here its row was removed behind the back of the one that refers
// to it, so that it is new again, and meanwhile another row has taken its name.

class ReplacedReference : public CatalogueSave {
protected:
  void SetUp() override { reactor.otherwise(kept); }

  /// What refers to the object must be out of the file.
  template <typename T>
  unsigned int replaceByTwin(const TsSmartPtr<const T>& reference) {
    const TsSmartPtr<T> object(const_cast<T*>(reference.get()));
    const TsSmartPtr<T> twin = object->cloneObject();
    EXPECT_EQ(project.db->remove(object).outcome, RemoveResult::Removed);
    makeDirty(*object);
    const unsigned int id = project.db->save(twin)->id();
    reactor.clear();
    return id;
  }

  static void makeDirty(PropertyNamespace& object) { object.set_revision(77); }
  static void makeDirty(AbstractDefinition& object) { object.set_description(L"dirty"); }
  static void makeDirty(Unit& object) { object.clear_name(); }
  static void makeDirty(EntityType& object) {
    const EntityType& same = object;
    object = same;
  }

  unsigned int otherNamespace() const { return project.db->save(PropertyNamespace::create(L"Other"))->id(); }

  template <typename T>
  void expectAnotherUnitIsWritten(const TsSmartPtr<T>& definition) {
    definition->set_unit(makeSample<Unit>());
    project.db->save(definition);
    exec(std::string("UPDATE ") + Sample<T>::table + " SET unit_id = NULL");
    const unsigned int twin = replaceByTwin(definition->unit());
    ASSERT_FALSE(definition->isDirty());
    EXPECT_EQ(project.db->save(definition), definition);
    EXPECT_EQ(definition->unit()->id(), twin);
    EXPECT_EQ(reactor.saved.back().resolution, overwritten);
    EXPECT_EQ(project.row(Sample<T>::table, definition->id()).at("unit_id"), std::to_string(twin));
  }

  template <typename T>
  void expectAnotherNamespaceIsNotWritten(const TsSmartPtr<T>& owned) {
    project.db->save(owned);
    const unsigned int other = otherNamespace();
    exec(std::string("UPDATE ") + Sample<T>::table + " SET namespace_id = " + std::to_string(other));
    const unsigned int twin = replaceByTwin(owned->ns());
    EXPECT_EQ(project.db->save(owned), owned);
    EXPECT_EQ(owned->ns()->id(), twin);
    EXPECT_FALSE(owned->isDirty());
    EXPECT_EQ(reactor.saved.back().resolution, kept);
    EXPECT_EQ(project.row(Sample<T>::table, owned->id()).at("namespace_id"), std::to_string(other));
  }
};

TEST_F(ReplacedReference, ToAUnitMarksTheDefinitionWhichIsWritten) {
  expectAnotherUnitIsWritten(PropertyDefinition::create(ns, L"Width"));
}

TEST_F(ReplacedReference, ToAUnitMarksTheValueDefinitionWhichIsWritten) {
  expectAnotherUnitIsWritten(ValueDefinition::create(ns, L"Area"));
}

TEST_F(ReplacedReference, ToANamespaceLeavesADefinitionClean) {
  expectAnotherNamespaceIsNotWritten(PropertyDefinition::create(ns, L"Width"));
}

TEST_F(ReplacedReference, ToANamespaceLeavesAValueDefinitionClean) {
  expectAnotherNamespaceIsNotWritten(ValueDefinition::create(ns, L"Area"));
}

TEST_F(ReplacedReference, ToANamespaceLeavesASetClean) {
  expectAnotherNamespaceIsNotWritten(PropertySet::create(ns, L"Door"));
}

TEST_F(ReplacedReference, ToEachKindOfMemberLeavesASetClean) {
  const auto set = project.db->save(fullSet());
  for (const char* kind : {"property_definitions", "value_definitions", "entity_types"}) {
    exec(std::string("DELETE FROM tessel_PropertySet_") + kind);
  }
  const unsigned int width = replaceByTwin(set->property_definitions()[0]);
  const unsigned int area = replaceByTwin(set->value_definitions()[0]);
  const unsigned int gate = replaceByTwin(set->entity_types()[1]);
  const auto fire = set->property_definitions()[1];
  const auto door = set->entity_types()[0];

  EXPECT_EQ(project.db->save(set), set);
  EXPECT_EQ(idsOf(set->property_definitions()), (std::vector<unsigned int>{width, fire->id()}));
  EXPECT_EQ(idsOf(set->value_definitions()), std::vector<unsigned int>{area});
  EXPECT_EQ(idsOf(set->entity_types()), (std::vector<unsigned int>{door->id(), gate}));
  EXPECT_FALSE(set->isDirty());
  EXPECT_EQ(reactor.saved.back(), only(*set, kept).front());
  EXPECT_EQ(project.count("tessel_PropertySet_property_definitions"), 0) << "the set is not rewritten";
}

TEST_F(ReplacedReference, IsInTheRowOfASetThatIsWrittenAnyway) {
  const auto door = project.db->save(EntityType::create(L"door"));
  const auto set = PropertySet::create(ns, L"Door");
  set->insert_entity_type(L"door");
  project.db->save(set);
  EXPECT_EQ(set->entity_types()[0]->id(), door->id());
  EXPECT_EQ(project.raw().scalarInt("SELECT entity_type_id FROM tessel_PropertySet_entity_types"), door->id());
  EXPECT_EQ(project.db->count<EntityType>(), 1U);
}

// Every object that refers to an unsaved namespace comes upon its clash by itself.
TEST_F(ReplacedReference, ToANamespaceIsAskedAboutByEachThatRefersToIt) {
  const auto existing = project.db->save(PropertyNamespace::create(L"Common"));
  const auto set = fullSet();
  project.db->save(set);
  EXPECT_EQ(reactor.clashes.size(), 4U) << "the set, two properties and a value";
  EXPECT_EQ(set->ns()->id(), existing->id());
  for (const auto& definition : set->property_definitions()) EXPECT_EQ(definition->ns()->id(), existing->id());
  EXPECT_EQ(set->value_definitions()[0]->ns()->id(), existing->id());
  EXPECT_EQ(project.db->count<PropertyNamespace>(), 1U);
  EXPECT_EQ(ns->id(), 0U);
}

// Into another file.

class CopiedCatalogue : public CatalogueSave {
protected:
  SampleProject target;
  RecordingReactor listener{target.db};

  std::vector<ObjectType> copiedTypes() const {
    std::vector<ObjectType> types;
    for (const auto& saved : listener.saved) types.push_back(saved.key.type);
    return types;
  }
};

TEST_F(CopiedCatalogue, ASetBringsAllThatItRefersTo) {
  const auto source = project.db->save(fullSet());
  const auto copy = target.db->save(source);
  ASSERT_TRUE(copy);
  EXPECT_NE(copy, source);
  EXPECT_EQ(copy->projectDb(), target.db);
  EXPECT_EQ(copiedTypes(), orderOfFullSet);
  EXPECT_EQ(namesOf(copy->property_definitions()), namesOf(source->property_definitions()));
  EXPECT_EQ(namesOf(copy->value_definitions()), namesOf(source->value_definitions()));
  EXPECT_EQ(namesOf(copy->entity_types()), namesOf(source->entity_types()));
  EXPECT_EQ(copy->property_definitions()[0]->projectDb(), target.db);
  EXPECT_EQ(copy->property_definitions()[0]->ns()->id(), copy->ns()->id()) << "one namespace for all";
  EXPECT_EQ(target.db->count<PropertyNamespace>(), 1U);
  EXPECT_TRUE(*copy->property_definitions()[0] == *source->property_definitions()[0]);

  EXPECT_FALSE(source->isDirty());
  EXPECT_EQ(source->projectDb(), project.db);
  EXPECT_EQ(source->property_definitions()[0]->projectDb(), project.db);
}

TEST_F(CopiedCatalogue, ADefinitionOfTwoSetsArrivesOnceWithOneMapping) {
  const auto door = project.db->save(fullSet());
  const auto window = PropertySet::create(ns, L"Window");
  window->append_property_definition(door->property_definitions()[0]);
  project.db->save(window);
  IdMapping mapping(target.db);
  const auto first = target.db->save(door, mapping);
  listener.clear();
  const auto second = target.db->save(window, mapping);
  EXPECT_EQ(copiedTypes(), std::vector<ObjectType>{ObjectType::PropertySet});
  EXPECT_EQ(second->property_definitions()[0]->id(), first->property_definitions()[0]->id());
  EXPECT_EQ(target.db->count<PropertyDefinition>(), 2U);
  listener.clear();
  EXPECT_EQ(target.db->save(door, mapping)->id(), first->id());
  EXPECT_TRUE(listener.saved.empty());
}

TEST_F(CopiedCatalogue, OfASetWithAnUnsavedMemberSavesTheMemberIntoTheTarget) {
  const auto source = project.db->save(fullSet());
  const auto depth = source->append_property_definition(L"Depth", PropertyType());
  const auto copy = target.db->save(source);
  EXPECT_EQ(depth->projectDb(), target.db) << "a new object goes where it is saved first";
  EXPECT_EQ(copy->property_definitions()[2], depth);
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 2U);
}

}  // namespace
}  // namespace tessel::test
