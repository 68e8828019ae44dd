#include <functional>
#include <stdexcept>

#include <gtest/gtest.h>

#include "operations/removal.h"

namespace tessel::test {
namespace {

/// A set takes its definitions along, but only if it is removed alone.
class RemovedPropertySet : public Removal {
protected:
  void SetUp() override {
    set->append_property_definition(L"Width", PropertyType());
    set->append_property_definition(L"Height", PropertyType());
    set->append_value_definition(L"Area", PropertyType());
    set->insert_entity_type(L"door");
    project.db->save(set);
    id = set->id();
    reactor.clear();
  }

  const TsSmartPtr<const PropertyDefinition>& width() const { return set->property_definitions().at(0); }
  const TsSmartPtr<const PropertyDefinition>& height() const { return set->property_definitions().at(1); }
  const TsSmartPtr<const ValueDefinition>& area() const { return set->value_definitions().at(0); }
  ObjectKey setKey() const { return {ObjectType::PropertySet, id}; }

  /// Saves another set that lists one of the definitions.
  void share(const TsSmartPtr<const PropertyDefinition>& definition) {
    const auto other = PropertySet::create(set->ns(), L"Window");
    other->append_property_definition(definition);
    project.db->save(other);
    reactor.clear();
  }

  void expectAllAreGone() {
    EXPECT_FALSE(hasRow("tessel_PropertySet", id));
    EXPECT_EQ(project.db->count<PropertyDefinition>(), 0U);
    EXPECT_EQ(project.db->count<ValueDefinition>(), 0U);
    for (const char* kind : {"property_definitions", "value_definitions", "entity_types"}) {
      EXPECT_EQ(project.count(std::string("tessel_PropertySet_") + kind), 0) << kind;
    }
  }

  TsSmartPtr<PropertySet> set = PropertySet::create(makeSample<PropertyNamespace>(), L"Door");
  unsigned int id = 0;
};

TEST_F(RemovedPropertySet, ByPointerTakesItsDefinitionsAlong) {
  EXPECT_EQ(project.db->remove(set).outcome, RemoveResult::Removed);
  EXPECT_EQ(set->id(), 0U);
  expectAllAreGone();
  EXPECT_EQ(offered(), (std::vector<ObjectKey>{setKey(), keyOf(width()), keyOf(height()), keyOf(area())}));
}

TEST_F(RemovedPropertySet, ByIdTakesItsDefinitionsAlong) {
  EXPECT_EQ(project.db->remove<PropertySet>(id).outcome, RemoveResult::Removed);
  expectAllAreGone();
  EXPECT_EQ(offered(), (std::vector<ObjectKey>{setKey(), keyOf(width()), keyOf(height()), keyOf(area())}));
  EXPECT_EQ(set->id(), id);
}

TEST_F(RemovedPropertySet, LeavesItsEntityTypesAndItsNamespace) {
  project.db->remove(set);
  EXPECT_EQ(project.db->count<EntityType>(), 1U);
  EXPECT_EQ(project.db->count<PropertyNamespace>(), 1U);
}

TEST_F(RemovedPropertySet, LeavesDefinitionsInMemoryAsTheyWere) {
  const unsigned int widthId = width()->id();
  project.db->remove(set);
  ASSERT_EQ(set->property_definitions().size(), 2U);
  EXPECT_EQ(width()->id(), widthId);
  EXPECT_EQ(width()->projectDb(), project.db);
}

TEST_F(RemovedPropertySet, InABatchLeavesItsDefinitions) {
  const std::vector<std::function<void()>> forms = {
    [&] { project.db->remove<PropertySet>(std::set<unsigned int>{set->id()}); },
    [&] { project.db->remove(std::set<ObjectKey>{keyOf(set)}); },
    [&] { project.db->purge<PropertySet>(); },
    [&] { project.db->purge(std::set<ObjectType>{ObjectType::PropertySet}); },
  };
  int number = 0;
  for (const auto& remove : forms) {
    set = set->cloneObject();
    set->set_name(OdString::format(L"Set %d", ++number));
    project.db->save(set);
    reactor.clear();
    const std::size_t sets = idsOf<PropertySet>().size();
    remove();
    EXPECT_LT(idsOf<PropertySet>().size(), sets);
    EXPECT_FALSE(hasRow("tessel_PropertySet", set->id()));
    EXPECT_EQ(project.db->count<PropertyDefinition>(), 2U);
    EXPECT_EQ(project.db->count<ValueDefinition>(), 1U);
    for (const ObjectKey& key : offered()) EXPECT_EQ(key.type, ObjectType::PropertySet);
  }
}

TEST_F(RemovedPropertySet, ByPointerTakesWhatItHoldsInMemoryAlong) {
  const auto depth = project.db->save(PropertyDefinition::create(set->ns(), L"Depth"));
  set->append_property_definition(depth);
  const auto kept = height();
  set->remove_property_definition(kept);
  reactor.clear();
  EXPECT_EQ(project.db->remove(set).outcome, RemoveResult::Removed);
  EXPECT_EQ(offered(), (std::vector<ObjectKey>{setKey(), keyOf(width()), keyOf(depth), keyOf(area())}));
  EXPECT_EQ(idsOf<PropertyDefinition>(), std::set<unsigned int>{kept->id()});
}

TEST_F(RemovedPropertySet, ByIdTakesWhatTheFileHasAlong) {
  const auto depth = project.db->save(PropertyDefinition::create(set->ns(), L"Depth"));
  set->append_property_definition(depth);
  set->remove_property_definition(L"Height");
  EXPECT_EQ(project.db->remove<PropertySet>(id).outcome, RemoveResult::Removed);
  EXPECT_EQ(idsOf<PropertyDefinition>(), std::set<unsigned int>{depth->id()});
}

TEST_F(RemovedPropertySet, PassesOverMembersThatWereNeverSaved) {
  set->append_property_definition(L"Depth", PropertyType());
  set->append_value_definition(L"Volume", PropertyType());
  EXPECT_EQ(project.db->remove(set).outcome, RemoveResult::Removed);
  expectAllAreGone();
  EXPECT_EQ(reactor.removals.size(), 4U);
}

TEST_F(RemovedPropertySet, CanBeSavedAgainWithNewDefinitions) {
  project.db->remove(set);
  set->clear_property_definitions();
  set->clear_value_definitions();
  set->append_property_definition(L"Width", PropertyType());
  EXPECT_EQ(project.db->save(set), set);
  EXPECT_GT(set->id(), id);
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 1U);
}

TEST_F(RemovedPropertySet, ThatWasRefusedKeepsItsDefinitionsWhichAreNotOffered) {
  refuse(setKey());
  EXPECT_EQ(project.db->remove(set).outcome, RemoveResult::Refused);
  EXPECT_EQ(project.db->remove<PropertySet>(id).outcome, RemoveResult::Refused);
  EXPECT_EQ(reactor.removals.size(), 2U);
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 2U);
  EXPECT_TRUE(hasRow("tessel_PropertySet", id));
}

TEST_F(RemovedPropertySet, LeavesADefinitionThatIsRefused) {
  refuse(keyOf(width()));
  EXPECT_EQ(project.db->remove(set).outcome, RemoveResult::Removed);
  EXPECT_EQ(idsOf<PropertyDefinition>(), std::set<unsigned int>{width()->id()});
  EXPECT_EQ(project.db->count<ValueDefinition>(), 0U);
  EXPECT_FALSE(hasRow("tessel_PropertySet", id));
}

TEST_F(RemovedPropertySet, IsGoneEvenIfTheReactorThrowsAtADefinition) {
  reactor.whenRemoved = [this](const RecordingReactor::Removal& removal) {
    if (removal.key == keyOf(height())) throw std::runtime_error("mine");
    return RemoveResolution::Remove;
  };
  EXPECT_THROW(project.db->remove(set), std::runtime_error);
  EXPECT_EQ(set->id(), 0U);
  EXPECT_FALSE(hasRow("tessel_PropertySet", id));
  EXPECT_EQ(idsOf<PropertyDefinition>(), std::set<unsigned int>{height()->id()});
  EXPECT_EQ(project.db->count<ValueDefinition>(), 1U);
  EXPECT_FALSE(Transaction::hasCurrent());
}

// The definitions go behind the set, as a batch: what another set lists ends that with an exception, and the set is gone.

TEST_F(RemovedPropertySet, ByPointerIsGoneAndThrowsIfAnotherSetListsADefinition) {
  share(height());
  EXPECT_THROW(project.db->remove(set), DatabaseException);
  EXPECT_EQ(set->id(), 0U);
  EXPECT_EQ(set->projectDb(), nullptr);
  EXPECT_FALSE(hasRow("tessel_PropertySet", id));
  EXPECT_EQ(idsOf<PropertyDefinition>(), std::set<unsigned int>{height()->id()}) << "the one before it is gone";
  EXPECT_EQ(project.db->count<ValueDefinition>(), 1U) << "those behind it were not tried";
  EXPECT_EQ(reactor.removals.size(), 3U);
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(RemovedPropertySet, ByIdIsGoneAndThrowsIfAnotherSetListsADefinition) {
  share(width());
  EXPECT_THROW(project.db->remove<PropertySet>(id), DatabaseException);
  EXPECT_FALSE(hasRow("tessel_PropertySet", id));
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 2U) << "those behind it were not tried";
  EXPECT_EQ(project.db->count<ValueDefinition>(), 1U);
  EXPECT_EQ(offered(), (std::vector<ObjectKey>{setKey(), keyOf(width())}));
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(RemovedPropertySet, IsGoneEvenIfOneOfItsDefinitionsIsMissing) {
  project.raw().exec("DELETE FROM tessel_PropertyDefinition WHERE id = " + std::to_string(width()->id()));
  project.raw().exec("DELETE FROM tessel_PropertySet_property_definitions WHERE \"index\" = 0");
  EXPECT_THROW(project.db->remove(set), DatabaseException);
  EXPECT_EQ(set->id(), 0U);
  EXPECT_FALSE(hasRow("tessel_PropertySet", id));
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 1U);
}

TEST_F(RemovedPropertySet, FinalizesTheTransactionOfTheHostWithAllThatItTakesAlong) {
  for (const bool byPointer : {true, false}) {
    SCOPED_TRACE(byPointer);
    if (!byPointer) {
      set = PropertySet::create(set->ns(), L"Door");
      set->append_property_definition(L"Width", PropertyType());
      id = project.db->save(set)->id();
    }
    Transaction transaction(project.db, Transaction::BeginCurrent);
    const auto earlier = project.db->save(EntityType::create(byPointer ? L"earlier" : L"earlier, too"));
    const RemoveResult result = byPointer ? project.db->remove(set) : project.db->remove<PropertySet>(id);
    EXPECT_EQ(result, removed);
    EXPECT_TRUE(transaction.finalized());
    EXPECT_FALSE(Transaction::hasCurrent());
    EXPECT_TRUE(hasRow("tessel_EntityType", earlier->id()));
    expectAllAreGone();
  }
}

TEST_F(RemovedPropertySet, OfTheSameTransactionGoesWithItsDefinitions) {
  Transaction transaction(project.db, Transaction::BeginCurrent);
  const auto fresh = PropertySet::create(set->ns(), L"Window");
  fresh->append_property_definition(L"Sill", PropertyType());
  project.db->save(fresh);
  EXPECT_EQ(project.db->remove<PropertySet>(fresh->id()).outcome, RemoveResult::Removed);
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 2U);
  EXPECT_EQ(idsOf<PropertySet>(), std::set<unsigned int>{id});
}

TEST_F(RemovedPropertySet, MustExist) {
  EXPECT_THROW(project.db->remove<PropertySet>(id + 1000), DatabaseException);
  EXPECT_THROW(project.db->remove(PropertySet::create(set->ns(), L"Unsaved")), DatabaseException);
  EXPECT_EQ(project.db->count<PropertyDefinition>(), 2U);
}

}  // namespace
}  // namespace tessel::test
