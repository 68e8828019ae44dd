#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <odb/exceptions.hxx>

#include "catalogue/catalogue.h"

namespace tessel::test {
namespace {

using Names = std::vector<OdString>;

/// The names that meet criteria, which as many rows are counted for.
template <typename T>
Names found(const ProjectDb& db, const typename ObjectTraits<T>::criteria_type& criteria = {}) {
  const Names names = namesFound<T>(db, criteria);
  EXPECT_EQ(db.count<T>(criteria), names.size());
  return names;
}

// Of two namespaces.
template <typename T>
class NamespaceLookup : public ::testing::Test {
protected:
  void SetUp() override {
    for (const wchar_t* name : {L"b", L"a"}) project.db->save(T::create(ns, name));
    for (const wchar_t* name : {L"c", L"a"}) project.db->save(T::create(other, name));
  }

  Names of(unsigned int namespaceId, const wchar_t* name = nullptr) const {
    typename ObjectTraits<T>::criteria_type criteria;
    criteria.namespace_id = namespaceId;
    if (name) criteria.name.equals(name);
    return found<T>(*project.db, criteria);
  }

  SampleProject project;
  TsSmartPtr<PropertyNamespace> ns = project.db->save(PropertyNamespace::create(L"m"));
  TsSmartPtr<PropertyNamespace> other = project.db->save(PropertyNamespace::create(L"other"));
};

using OwnedClasses = ::testing::Types<PropertyDefinition, ValueDefinition, PropertySet>;
TYPED_TEST_SUITE(NamespaceLookup, OwnedClasses, ClassNames);

TYPED_TEST(NamespaceLookup, ListsThoseOfANamespaceOrAll) {
  EXPECT_EQ(this->of(this->ns->id()), (Names{L"a", L"b"}));
  EXPECT_EQ(this->of(this->other->id()), (Names{L"a", L"c"}));
  EXPECT_EQ(this->of(0), (Names{L"a", L"a", L"b", L"c"}));
  EXPECT_EQ(this->of(4711), Names());
}

TYPED_TEST(NamespaceLookup, AsksForNameAndNamespaceTogether) {
  EXPECT_EQ(this->of(this->ns->id(), L"a"), Names{L"a"});
  EXPECT_EQ(this->of(this->ns->id(), L"c"), Names());
  EXPECT_EQ(this->of(0, L"a"), (Names{L"a", L"a"}));
}

TYPED_TEST(NamespaceLookup, FindsByNameWithinANamespace) {
  using Key = NameObjectKey<PropertyNamespace>;
  auto& db = *this->project.db;
  const auto here = db.template get<TypeParam>(Key(L"a", this->ns->id()));
  const auto there = db.template get<TypeParam>(Key(L"a", this->other->id()));
  ASSERT_TRUE(here && there);
  EXPECT_NE(here->id(), there->id());
  EXPECT_EQ(here->ns()->name(), L"m");
  EXPECT_EQ(there->ns()->name(), L"other");
  EXPECT_TRUE(db.template get<TypeParam>(Key(L"c", this->ns->id())).isNull());
  EXPECT_TRUE(db.template get<TypeParam>(Key(L"a", 0)).isNull()) << "0 is no wildcard in a key";
  EXPECT_TRUE(db.template get<TypeParam>(Key(L"A", this->ns->id())).isNull());
}

// The IFC name of a definition is its name where it has no other.
template <typename T>
class IfcNameLookup : public ::testing::Test {
protected:
  void SetUp() override {
    const std::vector<std::pair<const wchar_t*, const wchar_t*>> rows = {
      {L"a", nullptr}, {L"", nullptr}, {L"b", L""}, {L"c", L"ifc"}};
    for (const auto& [name, ifcName] : rows) {
      const auto definition = T::create(ns, name);
      if (ifcName) definition->set_ifc_name(ifcName);
      project.db->save(definition);
    }
  }

  Names meeting(const StringCriteria& ifcName) const {
    typename ObjectTraits<T>::criteria_type criteria;
    criteria.ifc_name = ifcName;
    return found<T>(*project.db, criteria);
  }

  SampleProject project;
  TsSmartPtr<PropertyNamespace> ns = project.db->save(PropertyNamespace::create(L"Common"));
};

using Definitions = ::testing::Types<PropertyDefinition, ValueDefinition>;
TYPED_TEST_SUITE(IfcNameLookup, Definitions, ClassNames);

TYPED_TEST(IfcNameLookup, KnowsAllModesOfACondition) {
  EXPECT_EQ(this->meeting(StringCriteria()), (Names{L"", L"a", L"b", L"c"}));
  EXPECT_EQ(this->meeting(StringCriteria().equals(L"a")), Names{L"a"});
  EXPECT_EQ(this->meeting(StringCriteria().equals(L"c")), Names());
  EXPECT_EQ(this->meeting(StringCriteria().empty()), (Names{L"", L"b"}));
  EXPECT_EQ(this->meeting(StringCriteria().notEmpty()), (Names{L"a", L"c"}));
  EXPECT_EQ(this->meeting(StringCriteria().notEquals(L"a")), (Names{L"", L"b", L"c"}));
  EXPECT_EQ(this->meeting(StringCriteria().contains(L"F")), Names{L"c"});
  EXPECT_EQ(this->meeting(StringCriteria().startsWith(L"a")), Names{L"a"});
  EXPECT_EQ(this->meeting(StringCriteria().endsWith(L"c")), Names{L"c"});
  EXPECT_EQ(this->meeting(StringCriteria().match(L"_fc")), Names{L"c"});
  // These two are asked of the column first, so the name makes up for a missing IFC name in one of them only.
  EXPECT_EQ(this->meeting(StringCriteria().unset()), (Names{L"", L"a"}));
  EXPECT_EQ(this->meeting(StringCriteria().set()), (Names{L"", L"a", L"b", L"c"}));
}

// What refers to a row that is gone, itself or through its members, is left out, and the reactor hears of it.
class BrokenCatalogue : public ::testing::Test {
protected:
  void SetUp() override {
    property->set_unit(makeSample<Unit>(1));
    value->set_unit(property->unit());
    other->set_unit(makeSample<Unit>(2));
    set->append_property_definition(property);
    set->append_value_definition(value);
    set->insert_entity_type(L"door");
    project.db->save(set);
    project.db->save(other);
  }

  void remove(const std::string& table, unsigned int id) {
    project.raw().exec("DELETE FROM tessel_" + table + " WHERE id = " + std::to_string(id));
  }

  template <typename T>
  void expectLeftOut(const TsSmartPtr<T>& broken, const Names& found) {
    reactor.clear();
    EXPECT_EQ(namesFound<T>(*project.db), found);
    const std::vector<RecordingReactor::FailedLoad> report = {
      {project.db.get(), {ObjectTraits<T>::type, broken->id()}, broken->name()}};
    EXPECT_EQ(reactor.failedLoads, report);

    reactor.clear();
    EXPECT_TRUE(project.db->get<T>(Sample<T>::key(*broken)).isNull());
    EXPECT_EQ(reactor.failedLoads, report);

    reactor.clear();
    EXPECT_THROW(project.db->get<T>(broken->id()), odb::object_not_persistent);
    EXPECT_TRUE(reactor.failedLoads.empty());
    EXPECT_EQ(project.db->count<T>(), found.size() + 1) << "counting loads nothing";
  }

  SampleProject project;
  RecordingReactor reactor{project.db};
  TsSmartPtr<PropertyNamespace> ns = PropertyNamespace::create(L"Common");
  TsSmartPtr<PropertySet> set = PropertySet::create(ns, L"Door");
  TsSmartPtr<PropertyDefinition> property = PropertyDefinition::create(ns, L"Width");
  TsSmartPtr<ValueDefinition> value = ValueDefinition::create(ns, L"Area");
  TsSmartPtr<PropertyDefinition> other = PropertyDefinition::create(PropertyNamespace::create(L"Other"), L"Height");
};

TEST_F(BrokenCatalogue, LeavesOutADefinitionWithoutItsUnit) {
  remove("Unit", property->unit()->id());
  expectLeftOut(property, {L"Height"});
  expectLeftOut(value, {});
  expectLeftOut(set, {});
}

TEST_F(BrokenCatalogue, LeavesOutASetWithoutOneOfItsMembers) {
  const auto whole = project.db->save(PropertySet::create(ns, L"Window"));
  remove("PropertyDefinition", property->id());
  expectLeftOut(set, {L"Window"});
}

TEST_F(BrokenCatalogue, LeavesOutASetWithoutAValueOrAnEntityType) {
  const unsigned int valueId = value->id();
  remove("ValueDefinition", valueId);
  expectLeftOut(set, {});
  project.raw().exec("DELETE FROM tessel_PropertySet_value_definitions");
  EXPECT_EQ(namesFound<PropertySet>(*project.db), Names{L"Door"});
  remove("EntityType", set->entity_types()[0]->id());
  expectLeftOut(set, {});
}

}  // namespace
}  // namespace tessel::test
