// What the criteria of look-ups mean in the file.

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using Names = std::vector<std::string>;

/// The names of what is found, in the order in which it is found.
template <typename T>
Names namesOf(const std::vector<TsSmartPtr<T>>& objects) {
  Names names;
  for (const auto& object : objects) names.push_back(object->name().toUtf8());
  return names;
}

template <typename T>
Names found(const ProjectDb& db, const typename ObjectTraits<T>::criteria_type& criteria = {}) {
  std::vector<TsSmartPtr<T>> objects;
  db.get(objects, criteria);
  EXPECT_EQ(db.count<T>(criteria), objects.size());
  return namesOf(objects);
}

// Conditions on a text, shown on a column that may be NULL.

class TextCriteria : public ReactingProject {
protected:
  TextCriteria() {
    const auto length = db->get<Measure>(NameKey(L"LENGTH"));
    db->save(Unit::create(L"none", 1, length));
    int number = 0;
    for (const wchar_t* name : {L"", L"metre", L"Metre", L"millimetre", L"a_b", L"axb", L"100%", L"100",
                                L"\u00C9t\u00E9", L"\u00E9t\u00E9", L"it's", L"a\\b"}) {
      db->save(Unit::create(name, OdString::format(L"u%d", ++number), 1, length));
    }
  }

  /// The names that meet the condition; the unit without a name is called "NULL".
  Names meeting(const StringCriteria& name) {
    UnitCriteria criteria;
    criteria.name = name;
    std::vector<TsSmartPtr<Unit>> units;
    db->get(units, criteria);
    EXPECT_EQ(db->count<Unit>(criteria), units.size());
    Names names;
    for (const auto& unit : units) names.push_back(unit->has_name() ? unit->name().toUtf8() : "NULL");
    std::sort(names.begin(), names.end());
    return names;
  }

  static constexpr std::size_t all = 13;
};

TEST_F(TextCriteria, AnythingIsNoCondition) {
  EXPECT_EQ(meeting(StringCriteria()).size(), all);
  EXPECT_EQ(meeting(StringCriteria().equals(L"metre").anything()).size(), all);
}

TEST_F(TextCriteria, UnsetIsNull) { EXPECT_THAT(meeting(StringCriteria().unset()), ElementsAre("NULL")); }

TEST_F(TextCriteria, SetIsNotNull) { EXPECT_EQ(meeting(StringCriteria().set()).size(), all - 1); }

TEST_F(TextCriteria, EmptyIsTheEmptyTextAndNotNull) { EXPECT_THAT(meeting(StringCriteria().empty()), ElementsAre("")); }

TEST_F(TextCriteria, NotEmptyIsNeitherTheEmptyTextNorNull) {
  EXPECT_EQ(meeting(StringCriteria().notEmpty()).size(), all - 2);
}

TEST_F(TextCriteria, EqualsIsExact) {
  EXPECT_THAT(meeting(StringCriteria().equals(L"metre")), ElementsAre("metre"));
  EXPECT_THAT(meeting(StringCriteria().equals(L"a_b")), ElementsAre("a_b"));
  EXPECT_THAT(meeting(StringCriteria().equals(L"it's")), ElementsAre("it's"));
  EXPECT_THAT(meeting(StringCriteria().equals(L"")), ElementsAre(""));
  EXPECT_THAT(meeting(StringCriteria().equals(L"metr")), IsEmpty());
}

TEST_F(TextCriteria, NotEqualsIsNotMetByNull) {
  const Names names = meeting(StringCriteria().notEquals(L"metre"));
  EXPECT_EQ(names.size(), all - 2);
  EXPECT_THAT(names, ::testing::Not(::testing::Contains("NULL")));
  EXPECT_THAT(names, ::testing::Contains("Metre"));
}

TEST_F(TextCriteria, ContainsIgnoresTheCaseOfAsciiLetters) {
  EXPECT_THAT(meeting(StringCriteria().contains(L"METRE")), ElementsAre("Metre", "metre", "millimetre"));
}

TEST_F(TextCriteria, OtherLettersHaveTheirCase) {
  EXPECT_THAT(meeting(StringCriteria().contains(L"\u00E9T")), ElementsAre(u8"\u00E9t\u00E9"));
}

TEST_F(TextCriteria, AnUnderscoreInAnOperandIsAnyCharacter) {
  EXPECT_THAT(meeting(StringCriteria().contains(L"a_b")), ElementsAre("a\\b", "a_b", "axb"));
  EXPECT_THAT(meeting(StringCriteria().startsWith(L"a_")), ElementsAre("a\\b", "a_b", "axb"));
  EXPECT_THAT(meeting(StringCriteria().endsWith(L"_b")), ElementsAre("a\\b", "a_b", "axb"));
}

TEST_F(TextCriteria, APercentSignInAnOperandIsAnyText) {
  EXPECT_THAT(meeting(StringCriteria().contains(L"m%re")), ElementsAre("Metre", "metre", "millimetre"));
  EXPECT_THAT(meeting(StringCriteria().contains(L"100%")), ElementsAre("100", "100%"));
}

TEST_F(TextCriteria, ABackslashEscapesNothing) {
  EXPECT_THAT(meeting(StringCriteria().contains(L"a\\_b")), IsEmpty());
  EXPECT_THAT(meeting(StringCriteria().match(L"a\\b")), ElementsAre("a\\b"));
}

TEST_F(TextCriteria, StartsWithIsAPrefix) {
  EXPECT_THAT(meeting(StringCriteria().startsWith(L"met")), ElementsAre("Metre", "metre"));
}

TEST_F(TextCriteria, EndsWithIsASuffix) {
  EXPECT_THAT(meeting(StringCriteria().endsWith(L"METRE")), ElementsAre("Metre", "metre", "millimetre"));
  EXPECT_THAT(meeting(StringCriteria().endsWith(L"met")), IsEmpty());
}

TEST_F(TextCriteria, AnEmptyPartIsInEveryTextButNotInNull) {
  EXPECT_EQ(meeting(StringCriteria().contains(L"")).size(), all - 1);
  EXPECT_EQ(meeting(StringCriteria().startsWith(L"")).size(), all - 1);
  EXPECT_EQ(meeting(StringCriteria().endsWith(L"")).size(), all - 1);
}

TEST_F(TextCriteria, MatchIsThePatternAsItStands) {
  EXPECT_THAT(meeting(StringCriteria().match(L"metre")), ElementsAre("Metre", "metre"));
  EXPECT_THAT(meeting(StringCriteria().match(L"%m_tre")), ElementsAre("Metre", "metre", "millimetre"));
  EXPECT_THAT(meeting(StringCriteria().match(L"")), ElementsAre(""));
}

TEST_F(TextCriteria, OperandsAreParametersAndNoPartsOfTheStatement) {
  startWatching();
  meeting(StringCriteria().contains(L"' OR 1=1 --"));
  for (const std::string& statement : sql.beginningWith("SELECT")) {
    EXPECT_EQ(statement.find("OR 1=1"), std::string::npos);
    EXPECT_NE(statement.find("LIKE ?"), std::string::npos) << statement;
  }
}

TEST_F(TextCriteria, WithoutAConditionTheStatementHoldsTheLiteralTrue) {
  startWatching();
  db->count<Unit>();
  EXPECT_EQ(sql.beginningWith("SELECT").at(0), R"(SELECT count("tessel_Unit"."id") FROM "tessel_Unit" WHERE 1)");
}

// Conditions on a number.

class NumberCriteriaTest : public ReactingProject {
protected:
  NumberCriteriaTest() {
    const auto length = db->get<Measure>(NameKey(L"LENGTH"));
    for (const double scale : {-1.0, 0.0, 0.5, 1.0, 1000.0}) {
      const OdString name = OdString::format(L"%g", scale);
      db->save(Unit::create(name, name, scale, length));
    }
  }

  Names meeting(const NumberCriteria& scale) {
    UnitCriteria criteria;
    criteria.scale = scale;
    return found<Unit>(*db, criteria);
  }
};

TEST_F(NumberCriteriaTest, EachModeIsItsComparison) {
  EXPECT_EQ(meeting(NumberCriteria()).size(), 5U);
  EXPECT_EQ(meeting(NumberCriteria().equals(1).anything()).size(), 5U);
  EXPECT_THAT(meeting(NumberCriteria().unset()), IsEmpty());
  EXPECT_EQ(meeting(NumberCriteria().set()).size(), 5U);
  EXPECT_THAT(meeting(NumberCriteria().equals(0.5)), UnorderedElementsAre("0.5"));
  EXPECT_THAT(meeting(NumberCriteria().notEquals(0.5)), UnorderedElementsAre("-1", "0", "1", "1000"));
  EXPECT_THAT(meeting(NumberCriteria().less(0.5)), UnorderedElementsAre("-1", "0"));
  EXPECT_THAT(meeting(NumberCriteria().lessOrEqual(0.5)), UnorderedElementsAre("-1", "0", "0.5"));
  EXPECT_THAT(meeting(NumberCriteria().greater(0.5)), UnorderedElementsAre("1", "1000"));
  EXPECT_THAT(meeting(NumberCriteria().greaterOrEqual(0.5)), UnorderedElementsAre("0.5", "1", "1000"));
}

TEST_F(NumberCriteriaTest, NumbersAreComparedExactly) {
  EXPECT_THAT(meeting(NumberCriteria().equals(std::nextafter(0.5, 1.0))), IsEmpty());
  EXPECT_THAT(meeting(NumberCriteria().equals(-0.0)), UnorderedElementsAre("0"));
}

TEST_F(NumberCriteriaTest, InfinitiesAreOutsideOfAllNumbers) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(meeting(NumberCriteria().less(infinity)).size(), 5U);
  EXPECT_THAT(meeting(NumberCriteria().lessOrEqual(-infinity)), IsEmpty());
}

// SQLite has no such number and compares with NULL.
TEST_F(NumberCriteriaTest, NothingComparesWithWhatIsNoNumber) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THAT(meeting(NumberCriteria().equals(nan)), IsEmpty());
  EXPECT_THAT(meeting(NumberCriteria().notEquals(nan)), IsEmpty());
}

// Several conditions.

class CombinedCriteria : public ReactingProject {
protected:
  TsSmartPtr<const Measure> length = db->get<Measure>(NameKey(L"LENGTH"));
  TsSmartPtr<const Measure> area = db->get<Measure>(NameKey(L"AREA"));
};

TEST_F(CombinedCriteria, AllOfAUnitMustHold) {
  db->save(Unit::create(L"a", L"x", 1, length));
  db->save(Unit::create(L"b", L"x", 1, area));
  db->save(Unit::create(L"c", L"y", 1, length));
  db->save(Unit::create(L"d", L"z", 2, length));
  UnitCriteria criteria;
  EXPECT_THAT(found<Unit>(*db, criteria), UnorderedElementsAre("a", "b", "c", "d"));
  criteria.measure_id = length->id();
  EXPECT_THAT(found<Unit>(*db, criteria), UnorderedElementsAre("a", "c", "d"));
  criteria.scale.equals(1);
  EXPECT_THAT(found<Unit>(*db, criteria), UnorderedElementsAre("a", "c"));
  criteria.label.equals(L"x");
  EXPECT_THAT(found<Unit>(*db, criteria), UnorderedElementsAre("a"));
  criteria.name.notEquals(L"a");
  EXPECT_THAT(found<Unit>(*db, criteria), IsEmpty());
}

TEST_F(CombinedCriteria, AnOwnerWithoutAMatchFindsNothing) {
  db->save(Unit::create(L"a", L"x", 1, length));
  UnitCriteria criteria;
  criteria.measure_id = 99;
  EXPECT_THAT(found<Unit>(*db, criteria), IsEmpty());
}

TEST_F(CombinedCriteria, OfASetAreItsNameAndItsNamespace) {
  const auto one = db->save(PropertyNamespace::create(L"One")), two = db->save(PropertyNamespace::create(L"Two"));
  db->save(PropertySet::create(one, L"Door"));
  db->save(PropertySet::create(two, L"Door"));
  db->save(PropertySet::create(two, L"Wall"));
  PropertySetCriteria criteria;
  EXPECT_THAT(found<PropertySet>(*db, criteria), ElementsAre("Door", "Door", "Wall"));
  criteria.namespace_id = two->id();
  EXPECT_THAT(found<PropertySet>(*db, criteria), ElementsAre("Door", "Wall"));
  criteria.name.equals(L"Wall");
  EXPECT_THAT(found<PropertySet>(*db, criteria), ElementsAre("Wall"));
  criteria.namespace_id = one->id();
  EXPECT_THAT(found<PropertySet>(*db, criteria), IsEmpty());
}

// Orders.

class Order : public ReactingProject {
protected:
  TsSmartPtr<Site> hill = db->save(Site::create(L"Hill"));
  TsSmartPtr<Site> vale = db->save(Site::create(L"Vale"));
};

TEST_F(Order, OfNamesIsThatOfTheirBytes) {
  for (const wchar_t* name : {L"b", L"B", L"a", L"\u00E4", L"10", L"9", L""}) db->save(EntityType::create(name));
  EXPECT_THAT(found<EntityType>(*db), ElementsAre("", "10", "9", "B", "a", "b", u8"\u00E4"));
}

TEST_F(Order, OfSitesMeasuresNamespacesAndSetsIsThatOfTheirNames) {
  db->save(Site::create(L"Shore"));
  EXPECT_THAT(found<Site>(*db), ElementsAre("Hill", "Shore", "Vale"));
  EXPECT_THAT(found<Measure>(*db), ElementsAre("AREA", "LENGTH", "MASS", "VOLUME"));
  for (const wchar_t* name : {L"C", L"A", L"B"}) {
    const auto ns = db->save(PropertyNamespace::create(name));
    db->save(PropertySet::create(ns, name));
    db->save(PropertyDefinition::create(ns, name));
    db->save(ValueDefinition::create(ns, name));
  }
  EXPECT_THAT(found<PropertyNamespace>(*db), ElementsAre("A", "B", "C"));
  EXPECT_THAT(found<PropertySet>(*db), ElementsAre("A", "B", "C"));
  EXPECT_THAT(found<PropertyDefinition>(*db), ElementsAre("A", "B", "C"));
  EXPECT_THAT(found<ValueDefinition>(*db), ElementsAre("A", "B", "C"));
}

TEST_F(Order, OfBuildingsIsThatOfTheirNamesWithAndWithoutASite) {
  for (const wchar_t* name : {L"C", L"A"}) db->save(Building::create(hill, name));
  for (const wchar_t* name : {L"D", L"B"}) db->save(Building::create(vale, name));
  BuildingCriteria criteria;
  EXPECT_THAT(found<Building>(*db, criteria), ElementsAre("A", "B", "C", "D"));
  criteria.site_id = vale->id();
  EXPECT_THAT(found<Building>(*db, criteria), ElementsAre("B", "D"));
}

class OrderOfStories : public Order {
protected:
  OrderOfStories() {
    db->save(Story::create(house, L"Roof", 9));
    db->save(Story::create(house, L"Cellar", -2.5));
    db->save(Story::create(house, L"Ground", 0));
    db->save(Story::create(barn, L"Loft", 3));
    db->save(Story::create(barn, L"Attic", 6));
  }

  TsSmartPtr<Building> house = db->save(Building::create(hill, L"House"));
  TsSmartPtr<Building> barn = db->save(Building::create(hill, L"Barn"));
};

TEST_F(OrderOfStories, OfABuildingIsFromTheBottomUp) {
  StoryCriteria criteria;
  criteria.building_id = house->id();
  EXPECT_THAT(found<Story>(*db, criteria), ElementsAre("Cellar", "Ground", "Roof"));
  criteria.building_id = barn->id();
  EXPECT_THAT(found<Story>(*db, criteria), ElementsAre("Loft", "Attic"));
}

TEST_F(OrderOfStories, OfABuildingKeepsToTheCondition) {
  StoryCriteria criteria;
  criteria.building_id = house->id();
  criteria.name.contains(L"o");
  EXPECT_THAT(found<Story>(*db, criteria), ElementsAre("Ground", "Roof"));
}

TEST_F(OrderOfStories, OfAllBuildingsIsThatOfTheirNames) {
  EXPECT_THAT(found<Story>(*db), ElementsAre("Attic", "Cellar", "Ground", "Loft", "Roof"));
}

TEST_F(OrderOfStories, IsInTheStatement) {
  StoryCriteria criteria;
  startWatching();
  found<Story>(*db, criteria);
  EXPECT_THAT(sql.beginningWith("SELECT").at(0), ::testing::EndsWith("ORDER BY \"tessel_Story\".\"name\""));
  criteria.building_id = house->id();
  startWatching();
  found<Story>(*db, criteria);
  EXPECT_THAT(sql.beginningWith("SELECT").at(0), ::testing::EndsWith("ORDER BY \"tessel_Story\".\"elevation\" ASC"));
}

TEST_F(Order, OfUnitsAndOfSpatialObjectsIsLeftToSqlite) {
  startWatching();
  found<Unit>(*db);
  found<SpatialStructure>(*db);
  for (const std::string& statement : sql.beginningWith("SELECT")) {
    EXPECT_EQ(statement.find("ORDER BY"), std::string::npos) << statement;
  }
}

// Definitions.

template <typename T>
class DefinitionCriteria : public ReactingProject {
protected:
  using Criteria = typename ObjectTraits<T>::criteria_type;

  void add(const wchar_t* name, const wchar_t* ifcName, const PropertyType& type = PropertyType()) {
    const auto definition = T::create(ns, name, type);
    if (ifcName) definition->set_ifc_name(ifcName);
    db->save(definition);
  }

  Names meeting(const StringCriteria& ifcName) {
    Criteria criteria;
    criteria.ifc_name = ifcName;
    return found<T>(*db, criteria);
  }

  Names of(const PropertyType& type) {
    Criteria criteria;
    criteria.type = type;
    return found<T>(*db, criteria);
  }

  TsSmartPtr<PropertyNamespace> ns = db->save(PropertyNamespace::create(L"Common"));
};
using Definitions = ::testing::Types<PropertyDefinition, ValueDefinition>;
TYPED_TEST_SUITE(DefinitionCriteria, Definitions, ClassNames);

TYPED_TEST(DefinitionCriteria, TheIfcNameIsTheNameWhereThereIsNoOther) {
  this->add(L"Width", nullptr);
  this->add(L"Height", L"Width");
  this->add(L"Depth", L"Deep");
  EXPECT_THAT(this->meeting(StringCriteria().equals(L"Width")), ElementsAre("Height", "Width"));
  EXPECT_THAT(this->meeting(StringCriteria().equals(L"Height")), IsEmpty()) << "it has an IFC name of its own";
  EXPECT_THAT(this->meeting(StringCriteria().equals(L"Depth")), IsEmpty());
  EXPECT_THAT(this->meeting(StringCriteria().startsWith(L"D")), ElementsAre("Depth"));
}

TYPED_TEST(DefinitionCriteria, AnEmptyIfcNameIsOne) {
  this->add(L"Width", L"");
  EXPECT_THAT(this->meeting(StringCriteria().equals(L"Width")), IsEmpty());
  EXPECT_THAT(this->meeting(StringCriteria().empty()), ElementsAre("Width"));
}

TYPED_TEST(DefinitionCriteria, UnsetAndSetAskForTheIfcNameWithTheNameBehindIt) {
  this->add(L"Width", nullptr);
  this->add(L"Height", L"High");
  EXPECT_THAT(this->meeting(StringCriteria().unset()), ElementsAre("Width"));
  EXPECT_THAT(this->meeting(StringCriteria().set()), ElementsAre("Height", "Width"));
}

TYPED_TEST(DefinitionCriteria, NotEqualsFallsBackToTheNameToo) {
  this->add(L"Width", nullptr);
  this->add(L"Height", L"Width");
  this->add(L"Depth", nullptr);
  EXPECT_THAT(this->meeting(StringCriteria().notEquals(L"Width")), ElementsAre("Depth"));
}

TYPED_TEST(DefinitionCriteria, AllThreePartsOfATypeAreCompared) {
  using Type = PropertyType::Type;
  this->add(L"any", nullptr, PropertyType::Single(Type::Any));
  this->add(L"double", nullptr, PropertyType::Single(Type::Double));
  this->add(L"doubles", nullptr, PropertyType::Array(Type::Double));
  this->add(L"map", nullptr, PropertyType::Map(Type::String, Type::Double));
  this->add(L"undefined", nullptr);
  EXPECT_THAT(this->of(PropertyType::Single(Type::Double)), ElementsAre("double"));
  EXPECT_THAT(this->of(PropertyType::Single(Type::Any)), ElementsAre("any")) << "a value type of 0 is compared";
  EXPECT_THAT(this->of(PropertyType::Map(Type::String, Type::Double)), ElementsAre("map"));
  EXPECT_THAT(this->of(PropertyType::Map(Type::Any, Type::Double)), IsEmpty()) << "a key type of 0 is compared";
  PropertyType withoutStructure;
  withoutStructure.value_type = Type::Double;
  EXPECT_THAT(this->of(withoutStructure), IsEmpty()) << "a structure of 0 is compared";
}

TYPED_TEST(DefinitionCriteria, ATypeOfThreeZerosIsNoCondition) {
  this->add(L"double", nullptr, PropertyType::Single(PropertyType::Type::Double));
  this->add(L"undefined", nullptr);
  EXPECT_THAT(this->of(PropertyType()), ElementsAre("double", "undefined"));
}

TYPED_TEST(DefinitionCriteria, AllConditionsMustHold) {
  const auto other = this->db->save(PropertyNamespace::create(L"Other"));
  this->db->save(TypeParam::create(other, L"Width"));
  this->add(L"Width", nullptr);
  this->add(L"Height", L"Width");
  typename TestFixture::Criteria criteria;
  criteria.ifc_name.equals(L"Width");
  EXPECT_THAT(found<TypeParam>(*this->db, criteria), ElementsAre("Height", "Width", "Width"));
  criteria.namespace_id = this->ns->id();
  EXPECT_THAT(found<TypeParam>(*this->db, criteria), ElementsAre("Height", "Width"));
  criteria.name.notEquals(L"Width");
  EXPECT_THAT(found<TypeParam>(*this->db, criteria), ElementsAre("Height"));
  criteria.type.setSingle(PropertyType::Type::Double);
  EXPECT_THAT(found<TypeParam>(*this->db, criteria), IsEmpty());
}

// The first condition is an alternative; it must not reach beyond its brackets.
TYPED_TEST(DefinitionCriteria, TheIfcNameConditionBindsTogether) {
  const auto other = this->db->save(PropertyNamespace::create(L"Other"));
  this->add(L"Width", L"Width");
  typename TestFixture::Criteria criteria;
  criteria.ifc_name.equals(L"Width");
  criteria.namespace_id = other->id();
  EXPECT_THAT(found<TypeParam>(*this->db, criteria), IsEmpty());
}

}  // namespace
}  // namespace tessel::test
