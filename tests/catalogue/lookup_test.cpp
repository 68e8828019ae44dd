#include <algorithm>
#include <type_traits>

#include <gtest/gtest.h>

#include <odb/exceptions.hxx>

#include "catalogue/catalogue.h"

namespace tessel::test {
namespace {

using Names = std::vector<OdString>;

template <typename T>
TsSmartPtr<T> named(const TsSmartPtr<PropertyNamespace>& ns, const OdString& name) {
  return T::create(ns, name);
}
template <>
TsSmartPtr<EntityType> named(const TsSmartPtr<PropertyNamespace>&, const OdString& name) {
  return EntityType::create(name);
}
template <>
TsSmartPtr<PropertyNamespace> named(const TsSmartPtr<PropertyNamespace>&, const OdString& name) {
  return PropertyNamespace::create(name);
}

/// What a catalogue class shares with the others of it.
template <typename T>
class CatalogueLookup : public ::testing::Test {
protected:
  using Criteria = typename ObjectTraits<T>::criteria_type;

  void save(const Names& names) {
    for (const OdString& name : names) project.db->save(named<T>(ns, name));
  }
  Names found(const Criteria& criteria = {}) const {
    const Names names = namesFound<T>(*project.db, criteria);
    EXPECT_EQ(project.db->template count<T>(criteria), names.size());
    return names;
  }
  template <typename Set>
  Names byName(Set&& set) const {
    Criteria criteria;
    set(criteria.name);
    return found(criteria);
  }

  SampleProject project;
  TsSmartPtr<PropertyNamespace> ns = project.db->save(PropertyNamespace::create(L"m"));
};

using CatalogueClasses =
  ::testing::Types<EntityType, PropertyNamespace, PropertyDefinition, ValueDefinition, PropertySet>;
TYPED_TEST_SUITE(CatalogueLookup, CatalogueClasses, ClassNames);

// The namespace of the fixture is one of the namespaces.
template <typename T>
Names withNamespace(Names names) {
  if (std::is_same_v<T, PropertyNamespace>) names.push_back(L"m");
  std::sort(names.begin(), names.end());
  return names;
}

TYPED_TEST(CatalogueLookup, ListsInTheOrderOfTheNames) {
  this->save({L"b", L"a", L"d", L"C", L"c"});
  EXPECT_EQ(this->found(), withNamespace<TypeParam>({L"C", L"a", L"b", L"c", L"d"}));
}

TYPED_TEST(CatalogueLookup, KnowsAllModesOfACondition) {
  this->save({L"", L"a", L"ab", L"ba", L"x_y", L"xzy"});
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.equals(L"ab"); }), Names{L"ab"});
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.equals(L"AB"); }), Names());
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.notEquals(L"a"); }),
            withNamespace<TypeParam>({L"", L"ab", L"ba", L"x_y", L"xzy"}));
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.contains(L"A"); }), (Names{L"a", L"ab", L"ba"}));
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.contains(L"x_y"); }), (Names{L"x_y", L"xzy"}));
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.startsWith(L"a"); }), (Names{L"a", L"ab"}));
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.endsWith(L"a"); }), (Names{L"a", L"ba"}));
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.match(L"_a"); }), Names{L"ba"});
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.empty(); }), Names{L""});
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.notEmpty(); }),
            withNamespace<TypeParam>({L"a", L"ab", L"ba", L"x_y", L"xzy"}));
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.unset(); }), Names());
  EXPECT_EQ(this->byName([](StringCriteria& c) { c.set(); }), this->found());
}

TYPED_TEST(CatalogueLookup, AddsToTheVector) {
  this->save({L"a", L"b"});
  std::vector<TsSmartPtr<TypeParam>> objects;
  typename TestFixture::Criteria criteria;
  criteria.name.equals(L"b");
  this->project.db->get(objects, criteria);
  criteria.name.equals(L"a");
  this->project.db->get(objects, criteria);
  criteria.name.equals(L"nobody");
  this->project.db->get(objects, criteria);
  EXPECT_EQ(namesOf(objects), (Names{L"b", L"a"}));
}

TYPED_TEST(CatalogueLookup, CountsNothingInAnEmptyTable) {
  this->project.db->template purge<TypeParam>();
  EXPECT_EQ(this->project.db->template count<TypeParam>(), 0U);
}

TYPED_TEST(CatalogueLookup, OfAMissingIdLetsTheExceptionPass) {
  EXPECT_THROW(this->project.db->template get<TypeParam>(4711U), odb::object_not_persistent);
  EXPECT_TRUE(this->project.db->template get<TypeParam>(0U).isNull());
}

// Of two namespaces.
template <typename T>
class NamespaceLookup : public CatalogueLookup<T> {
protected:
  void SetUp() override {
    for (const wchar_t* name : {L"b", L"a"}) this->project.db->save(T::create(this->ns, name));
    for (const wchar_t* name : {L"c", L"a"}) this->project.db->save(T::create(other, name));
  }

  Names of(unsigned int namespaceId, const wchar_t* name = nullptr) const {
    typename CatalogueLookup<T>::Criteria criteria;
    criteria.namespace_id = namespaceId;
    if (name) criteria.name.equals(name);
    return this->found(criteria);
  }

  TsSmartPtr<PropertyNamespace> other = this->project.db->save(PropertyNamespace::create(L"other"));
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

// What only definitions can be asked for.
template <typename T>
class DefinitionLookup : public ::testing::Test {
protected:
  using Criteria = typename ObjectTraits<T>::criteria_type;

  TsSmartPtr<T> add(const OdString& name, const PropertyType& type = PropertyType()) {
    return project.db->save(T::create(ns, name, type));
  }
  TsSmartPtr<T> addIfc(const OdString& name, const OdString& ifcName) {
    const auto definition = T::create(ns, name);
    definition->set_ifc_name(ifcName);
    return project.db->save(definition);
  }

  Names found(const Criteria& criteria) const {
    const Names names = namesFound<T>(*project.db, criteria);
    EXPECT_EQ(project.db->template count<T>(criteria), names.size());
    return names;
  }
  template <typename Set>
  Names byIfcName(Set&& set) const {
    Criteria criteria;
    set(criteria.ifc_name);
    return found(criteria);
  }
  Names ofType(const PropertyType& type) const {
    Criteria criteria;
    criteria.type = type;
    return found(criteria);
  }

  SampleProject project;
  TsSmartPtr<PropertyNamespace> ns = project.db->save(PropertyNamespace::create(L"Common"));
};

using Definitions = ::testing::Types<PropertyDefinition, ValueDefinition>;
TYPED_TEST_SUITE(DefinitionLookup, Definitions, ClassNames);

TYPED_TEST(DefinitionLookup, FallsBackToTheNameOnlyWhereThereIsNoIfcName) {
  this->add(L"Width");
  this->addIfc(L"Height", L"OverallHeight");
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.equals(L"Width"); }), Names{L"Width"});
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.equals(L"OverallHeight"); }), Names{L"Height"});
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.equals(L"Height"); }), Names());
  EXPECT_EQ(this->byIfcName([](StringCriteria&) {}), (Names{L"Height", L"Width"}));
}

TYPED_TEST(DefinitionLookup, KnowsAllModesOfAnIfcName) {
  this->add(L"a");
  this->add(L"");
  this->addIfc(L"b", L"");
  this->addIfc(L"c", L"ifc");
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.empty(); }), (Names{L"", L"b"}));
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.notEmpty(); }), (Names{L"a", L"c"}));
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.notEquals(L"a"); }), (Names{L"", L"b", L"c"}));
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.contains(L"F"); }), Names{L"c"});
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.startsWith(L"a"); }), Names{L"a"});
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.endsWith(L"c"); }), Names{L"c"});
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.match(L"_fc"); }), Names{L"c"});
  // These two are asked of the column first, so the name makes up for a missing IFC name in one of them only.
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.unset(); }), (Names{L"", L"a"}));
  EXPECT_EQ(this->byIfcName([](StringCriteria& c) { c.set(); }), (Names{L"", L"a", L"b", L"c"}));
}

TYPED_TEST(DefinitionLookup, ComparesAllThreePartsOfAType) {
  this->add(L"any", PropertyType::Single(Type::Any));
  this->add(L"double", PropertyType::Single(Type::Double));
  this->add(L"doubles", PropertyType::Array(Type::Double));
  this->add(L"dictionary", PropertyType::Dictionary(Type::String));
  this->add(L"map", PropertyType::Map(Type::String, Type::Double));
  EXPECT_EQ(this->ofType(PropertyType::Single(Type::Double)), Names{L"double"});
  EXPECT_EQ(this->ofType(PropertyType::Array(Type::Double)), Names{L"doubles"});
  EXPECT_EQ(this->ofType(PropertyType::Map(Type::String, Type::Double)), Names{L"map"});
  EXPECT_EQ(this->ofType(PropertyType::Map(Type::Int8, Type::Double)), Names());
}

TYPED_TEST(DefinitionLookup, ComparesPartsOfATypeThatAreZeroToo) {
  this->add(L"any", PropertyType::Single(Type::Any));
  this->add(L"double", PropertyType::Single(Type::Double));
  this->add(L"dictionary", PropertyType::Dictionary(Type::String));
  this->add(L"map", PropertyType::Map(Type::String, Type::Double));
  EXPECT_EQ(this->ofType(PropertyType::Single(Type::Any)), Names{L"any"});
  EXPECT_EQ(this->ofType(PropertyType::Dictionary(Type::String)), Names{L"dictionary"});
  PropertyType keyAlone;
  keyAlone.key_type = Type::String;
  EXPECT_EQ(this->ofType(keyAlone), Names());
  PropertyType valueAlone;
  valueAlone.value_type = Type::Double;
  EXPECT_EQ(this->ofType(valueAlone), Names());
}

TYPED_TEST(DefinitionLookup, HasNoConditionOnAnUndefinedType) {
  this->add(L"double", PropertyType::Single(Type::Double));
  this->add(L"undefined");
  EXPECT_EQ(this->ofType(PropertyType::Undefined()), (Names{L"double", L"undefined"}));
}

TYPED_TEST(DefinitionLookup, AsksForEverythingTogether) {
  const auto other = this->project.db->save(PropertyNamespace::create(L"Other"));
  const auto match = TypeParam::create(this->ns, L"Width", PropertyType::Single(Type::Double));
  match->set_ifc_name(L"OverallWidth");
  this->project.db->save(match);
  const auto elsewhere = TypeParam::create(other, L"Width", PropertyType::Single(Type::Double));
  elsewhere->set_ifc_name(L"OverallWidth");
  this->project.db->save(elsewhere);

  typename TestFixture::Criteria criteria;
  criteria.namespace_id = this->ns->id();
  criteria.name.equals(L"Width");
  criteria.ifc_name.equals(L"OverallWidth");
  criteria.type = PropertyType::Single(Type::Double);
  std::vector<TsSmartPtr<TypeParam>> found;
  this->project.db->get(found, criteria);
  ASSERT_EQ(idsOf(found), std::vector<unsigned int>{match->id()});

  const auto without = [&](auto&& change) {
    typename TestFixture::Criteria changed = criteria;
    change(changed);
    return this->found(changed).size();
  };
  EXPECT_EQ(without([](auto& c) { c.namespace_id = 0; }), 2U);
  EXPECT_EQ(without([](auto& c) { c.name.equals(L"Height"); }), 0U);
  EXPECT_EQ(without([](auto& c) { c.ifc_name.equals(L"Width"); }), 0U);
  EXPECT_EQ(without([](auto& c) { c.type.setSingle(Type::Bool); }), 0U);
}

// An object that refers to a row that is gone is left out, and the reactor hears of it.
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

TEST_F(BrokenCatalogue, LeavesOutADefinitionWithoutItsNamespace) {
  remove("PropertyNamespace", other->ns()->id());
  expectLeftOut(other, {L"Width"});
}

TEST_F(BrokenCatalogue, LeavesOutAValueDefinitionWithoutItsNamespace) {
  const auto lost = project.db->save(ValueDefinition::create(other->ns(), L"Lost"));
  remove("PropertyNamespace", other->ns()->id());
  expectLeftOut(lost, {L"Area"});
}

TEST_F(BrokenCatalogue, LeavesOutASetWithoutItsNamespace) {
  const auto lost = project.db->save(PropertySet::create(other->ns(), L"Lost"));
  remove("PropertyNamespace", other->ns()->id());
  expectLeftOut(lost, {L"Door"});
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
