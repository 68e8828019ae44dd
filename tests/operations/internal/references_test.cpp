// What a replaced reference does to the object that holds it. Most of these states cannot be reached by setters, which
// mark an object as changed themselves, so the fields are set directly.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tessel/definitions.h>
#include <tessel/property_set.h>

#include "catalogue/definition_impl.h"
#include "catalogue/property_set_impl.h"
#include "operations/operations.h"
#include "spatial/spatial_impl.h"
#include "units/unit_impl.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

class References : public TwoProjects {
protected:
  /// Saves a clean object that holds a reference of another file and returns what is told of it.
  template <typename T>
  SaveResolution outcomeOf(const TsSmartPtr<T>& object) {
    EXPECT_FALSE(object->isDirty());
    startWatching();
    EXPECT_EQ(db->save(object), object);
    EXPECT_EQ(reactor.saved.back().key, keyOf(object));
    EXPECT_FALSE(object->isDirty());
    return reactor.saved.back().resolution;
  }

  template <typename T>
  std::string column(const TsSmartPtr<T>& object, const std::string& name) {
    return project.row(Sample<T>::table, object->id())[name];
  }

  std::string membersOf(const std::string& container, const std::string& column) {
    RawFile file = project.raw();
    const auto ids = file.column("SELECT \"" + column + "\" FROM \"tessel_PropertySet_" + container + "\"");
    return ids.empty() ? "none" : ids[0];
  }
};

TEST_F(References, AReplacedBuildingIsWrittenWithItsStory) {
  const auto story = db->save(makeSample<Story>(1));
  story->impl().building = other->save(makeSample<Building>(2));
  EXPECT_EQ(outcomeOf(story), SaveResolution::Overwritten);
  EXPECT_EQ(story->building()->projectDb(), db);
  EXPECT_EQ(column(story, "building_id"), std::to_string(story->building()->id()));
}

TEST_F(References, AReplacedSiteIsWrittenWithItsBuilding) {
  const auto building = db->save(makeSample<Building>(1));
  building->impl().site = other->save(makeSample<Site>(2));
  EXPECT_EQ(outcomeOf(building), SaveResolution::Overwritten);
  EXPECT_EQ(building->site()->projectDb(), db);
  EXPECT_EQ(column(building, "site_id"), std::to_string(building->site()->id()));
}

TEST_F(References, AReplacedMeasureDoesNotMakeAUnitChanged) {
  const auto unit = db->save(makeSample<Unit>(1));
  const std::string before = column(unit, "measure_id");
  unit->impl().measure = other->save(makeSample<Measure>(2));
  EXPECT_EQ(outcomeOf(unit), SaveResolution::Kept);
  EXPECT_EQ(unit->measure()->projectDb(), db);
  EXPECT_NE(std::to_string(unit->measure()->id()), before);
  EXPECT_EQ(column(unit, "measure_id"), before);
}

template <typename T>
class DefinitionReferences : public References {};
using Definitions = ::testing::Types<PropertyDefinition, ValueDefinition>;
TYPED_TEST_SUITE(DefinitionReferences, Definitions, ClassNames);

TYPED_TEST(DefinitionReferences, AReplacedNamespaceDoesNotMakeADefinitionChanged) {
  const auto definition = this->db->save(makeSample<TypeParam>(1));
  const std::string before = this->column(definition, "namespace_id");
  definition->impl().ns = this->other->save(makeSample<PropertyNamespace>(2));
  EXPECT_EQ(this->outcomeOf(definition), SaveResolution::Kept);
  EXPECT_EQ(definition->ns()->projectDb(), this->db);
  EXPECT_NE(std::to_string(definition->ns()->id()), before);
  EXPECT_EQ(this->column(definition, "namespace_id"), before);
}

TYPED_TEST(DefinitionReferences, AReplacedUnitIsWrittenWithADefinition) {
  const auto definition = this->db->save(makeSample<TypeParam>(1));
  definition->impl().unit = this->other->save(makeSample<Unit>(2));
  EXPECT_EQ(this->outcomeOf(definition), SaveResolution::Overwritten);
  EXPECT_EQ(definition->unit()->projectDb(), this->db);
  EXPECT_EQ(this->column(definition, "unit_id"), std::to_string(definition->unit()->id()));
}

TYPED_TEST(DefinitionReferences, NoUnitIsNoReference) {
  const auto definition = this->db->save(makeSample<TypeParam>(1));
  definition->set_unit(nullptr);
  this->startWatching();
  this->db->save(definition);
  EXPECT_EQ(this->reactor.saved.size(), 1U);
  EXPECT_EQ(this->column(definition, "unit_id"), "NULL");
}

class SetReferences : public References {
protected:
  SetReferences() {
    set = PropertySet::create(db->save(PropertyNamespace::create(L"Common")), L"Door");
    set->append_property_definition(L"Width", PropertyType::Single(PropertyType::Type::Double));
    set->append_value_definition(L"Note", PropertyType::Single(PropertyType::Type::String));
    set->insert_entity_type(L"Door");
    set = db->save(set);
  }

  TsSmartPtr<PropertySet> set;
};

TEST_F(SetReferences, AReplacedNamespaceDoesNotMakeASetChanged) {
  const std::string before = column(set, "namespace_id");
  set->impl().ns = other->save(PropertyNamespace::create(L"Foreign"));
  EXPECT_EQ(outcomeOf(set), SaveResolution::Kept);
  EXPECT_EQ(set->ns()->projectDb(), db);
  EXPECT_EQ(column(set, "namespace_id"), before);
}

TEST_F(SetReferences, AReplacedPropertyDefinitionDoesNotMakeASetChanged) {
  const std::string before = membersOf("property_definitions", "property_definition_id");
  set->impl().property_definitions[0] = other->save(makeSample<PropertyDefinition>(2));
  EXPECT_EQ(outcomeOf(set), SaveResolution::Kept);
  EXPECT_EQ(set->property_definitions()[0]->projectDb(), db);
  EXPECT_EQ(membersOf("property_definitions", "property_definition_id"), before);
}

TEST_F(SetReferences, AReplacedValueDefinitionDoesNotMakeASetChanged) {
  const std::string before = membersOf("value_definitions", "value_definition_id");
  set->impl().value_definitions[0] = other->save(makeSample<ValueDefinition>(2));
  EXPECT_EQ(outcomeOf(set), SaveResolution::Kept);
  EXPECT_EQ(set->value_definitions()[0]->projectDb(), db);
  EXPECT_EQ(membersOf("value_definitions", "value_definition_id"), before);
}

TEST_F(SetReferences, AReplacedEntityTypeDoesNotMakeASetChanged) {
  const std::string before = membersOf("entity_types", "entity_type_id");
  set->impl().entity_types[0] = other->save(EntityType::create(L"Gate"));
  EXPECT_EQ(outcomeOf(set), SaveResolution::Kept);
  EXPECT_EQ(set->entity_types()[0]->projectDb(), db);
  EXPECT_EQ(membersOf("entity_types", "entity_type_id"), before);
}

TEST_F(SetReferences, TheReplacedMembersAreWrittenWhenTheSetIsChangedAnyway) {
  set->impl().entity_types[0] = other->save(EntityType::create(L"Gate"));
  set->set_visible(false);
  startWatching();
  db->save(set);
  EXPECT_EQ(reactor.saved.back().resolution, SaveResolution::Overwritten);
  EXPECT_EQ(membersOf("entity_types", "entity_type_id"), std::to_string(set->entity_types()[0]->id()));
}

// A reference of the same file stays the same pointer.
TEST_F(References, AReferenceThatIsNotReplacedMakesNothingChanged) {
  const auto story = db->save(makeSample<Story>(1));
  const TsSmartPtr<const Building> building = story->building();
  EXPECT_EQ(outcomeOf(story), SaveResolution::Kept);
  EXPECT_EQ(story->building(), building);
}

}  // namespace
}  // namespace tessel::test
