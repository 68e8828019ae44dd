#include <functional>

#include <gtest/gtest.h>

#include "operations/removal.h"

namespace tessel::test {
namespace {

/// A row that another one refers to, removed in each form.
class RemovalInUse : public Removal {
protected:
  template <typename T>
  void expectInUse(const TsSmartPtr<const T>& used) {
    using Ids = std::set<unsigned int>;
    const TsSmartPtr<T> object = project.db->get<T>(used->id());
    const unsigned int id = object->id();
    EXPECT_EQ(project.db->remove(object).outcome, RemoveResult::InUse);
    EXPECT_EQ(object->id(), id);
    EXPECT_EQ(object->projectDb(), project.db);
    EXPECT_EQ(project.db->remove<T>(id).outcome, RemoveResult::InUse);

    Results results;
    EXPECT_THROW(project.db->remove<T>(Ids{id}, results), DatabaseException);
    EXPECT_THROW(project.db->remove({keyOf(object)}, results), DatabaseException);
    EXPECT_THROW(project.db->purge<T>(results), DatabaseException);
    EXPECT_EQ(results.count(keyOf(object)), 0U) << "a batch knows no such outcome";
    EXPECT_FALSE(Transaction::hasCurrent());
    EXPECT_TRUE(hasRow(Sample<T>::table, id));
    EXPECT_EQ(project.raw().rows("PRAGMA foreign_key_check"), RawFile::Rows());
  }

  TsSmartPtr<const PropertyNamespace> ns = makeSample<PropertyNamespace>();
};

TEST_F(RemovalInUse, IsThatOfASiteWithABuilding) { expectInUse(project.db->save(makeSample<Building>())->site()); }

TEST_F(RemovalInUse, IsThatOfABuildingWithAStory) { expectInUse(project.db->save(makeSample<Story>())->building()); }

TEST_F(RemovalInUse, IsThatOfTheSiteOfTheProject) {
  project.db->project().set_site(makeSample<Site>());
  project.db->saveProject();
  expectInUse<Site>(project.db->project().site());
}

TEST_F(RemovalInUse, IsThatOfAMeasureWithAUnit) {
  project.db->purge<Measure>();
  expectInUse(project.db->save(makeSample<Unit>())->measure());
}

TEST_F(RemovalInUse, IsThatOfTheUnitOfADefinition) {
  expectInUse(project.db->save(makeSample<PropertyDefinition>(1))->unit());
}

TEST_F(RemovalInUse, IsThatOfTheUnitOfAValueDefinition) {
  expectInUse(project.db->save(makeSample<ValueDefinition>(1))->unit());
}

TEST_F(RemovalInUse, IsThatOfADefaultUnit) {
  project.db->setDefaultUnit(Unit::create(L"kg", 1.0, project.db->get<Measure>(NameKey(L"MASS"))));
  expectInUse<Unit>(project.db->defaultUnit(L"MASS"));
}

TEST_F(RemovalInUse, IsThatOfTheUnitOfAColumn) {
  project.db->setDefaultUnit(Unit::create(L"m", 1.0, project.db->get<Measure>(NameKey(L"LENGTH"))));
  project.raw().exec("DELETE FROM tessel_DefaultUnit");
  expectInUse<Unit>(project.db->columnUnit(&Story::elevation));
}

TEST_F(RemovalInUse, IsThatOfANamespaceWithADefinition) {
  project.db->save(PropertyDefinition::create(ns, L"Width"));
  expectInUse(ns);
}

TEST_F(RemovalInUse, IsThatOfANamespaceWithAValueDefinition) {
  project.db->save(ValueDefinition::create(ns, L"Area"));
  expectInUse(ns);
}

TEST_F(RemovalInUse, IsThatOfANamespaceWithASet) {
  project.db->save(PropertySet::create(ns, L"Door"));
  expectInUse(ns);
}

TEST_F(RemovalInUse, IsThatOfADefinitionInASet) {
  const auto set = PropertySet::create(ns, L"Door");
  const auto definition = set->append_property_definition(L"Width", PropertyType());
  project.db->save(set);
  expectInUse<PropertyDefinition>(definition);
}

TEST_F(RemovalInUse, IsThatOfAValueDefinitionInASet) {
  const auto set = PropertySet::create(ns, L"Door");
  const auto definition = set->append_value_definition(L"Area", PropertyType());
  project.db->save(set);
  expectInUse<ValueDefinition>(definition);
}

TEST_F(RemovalInUse, IsThatOfAnEntityTypeInASet) {
  const auto set = PropertySet::create(ns, L"Door");
  set->insert_entity_type(L"door");
  project.db->save(set);
  expectInUse(set->entity_types()[0]);
}

// A removal that is in use ends the transaction of the host, and what that held is gone.

class RemovalInUseOfTheHost : public RemovalInUse {
protected:
  TsSmartPtr<Building> building = project.db->save(makeSample<Building>());
  TsSmartPtr<Site> site = project.db->get<Site>(building->site()->id());

  void expectTheTransactionIsGone(const std::function<void()>& remove) {
    Transaction transaction(project.db, Transaction::BeginCurrent);
    const auto earlier = project.db->save(EntityType::create(L"earlier"));
    remove();
    EXPECT_TRUE(transaction.finalized());
    EXPECT_FALSE(Transaction::hasCurrent());
    EXPECT_EQ(project.db->count<EntityType>(), 0U);
    EXPECT_TRUE(hasRow("tessel_Site", site->id()));

    transaction.reset(true);
    const auto later = project.db->save(EntityType::create(L"later"));
    transaction.commit();
    EXPECT_TRUE(hasRow("tessel_EntityType", later->id()));
    project.db->remove(later);
  }
};

TEST_F(RemovalInUseOfTheHost, ByPointerEndsTheTransaction) {
  expectTheTransactionIsGone([&] { EXPECT_EQ(project.db->remove(site).outcome, RemoveResult::InUse); });
  EXPECT_NE(site->id(), 0U);
}

TEST_F(RemovalInUseOfTheHost, ByIdEndsTheTransaction) {
  expectTheTransactionIsGone([&] { EXPECT_EQ(project.db->remove<Site>(site->id()).outcome, RemoveResult::InUse); });
}

TEST_F(RemovalInUseOfTheHost, InABatchEndsTheTransaction) {
  expectTheTransactionIsGone(
    [&] { EXPECT_THROW(project.db->remove<Site>(std::set<unsigned int>{site->id()}), DatabaseException); });
}

TEST_F(RemovalInUseOfTheHost, ByKeyEndsTheTransaction) {
  expectTheTransactionIsGone(
    [&] { EXPECT_THROW(project.db->remove(std::set<ObjectKey>{keyOf(site)}), DatabaseException); });
}

TEST_F(RemovalInUseOfTheHost, InAPurgeEndsTheTransaction) {
  expectTheTransactionIsGone([&] { EXPECT_THROW(project.db->purge<Site>(), DatabaseException); });
}

TEST_F(RemovalInUseOfTheHost, InABatchKeepsTheRowsThatWentBefore) {
  const auto first = project.db->save(EntityType::create(L"first"));
  const auto used = project.db->save(EntityType::create(L"used"));
  const auto last = project.db->save(EntityType::create(L"last"));
  const auto set = PropertySet::create(ns, L"Door");
  set->insert_entity_type(used);
  project.db->save(set);

  Transaction transaction(project.db, Transaction::BeginCurrent);
  const auto beforeTheBatch = project.db->save(makeSample<Measure>());
  Results results;
  EXPECT_THROW(project.db->remove<EntityType>({first->id(), used->id(), last->id()}, results), DatabaseException);
  EXPECT_EQ(results, (Results{{keyOf(first), removed}}));
  EXPECT_TRUE(transaction.finalized());
  EXPECT_EQ(idsOf<EntityType>(), (std::set<unsigned int>{used->id(), last->id()}));
  EXPECT_TRUE(hasRow("tessel_Measure", beforeTheBatch->id())) << "committed along with the first row";
}

TEST_F(RemovalInUseOfTheHost, IsOverOnceTheReferenceIsGone) {
  EXPECT_EQ(project.db->remove(site).outcome, RemoveResult::InUse);
  project.db->remove(building);
  EXPECT_EQ(project.db->remove(site).outcome, RemoveResult::Removed);
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 0);
}

}  // namespace
}  // namespace tessel::test
