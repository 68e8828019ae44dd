#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/criteria.h>

#include "support/printers.h"

namespace tessel::test {
namespace {

using Text = StringCriteria;
using Number = NumberCriteria;

TEST(StringCriteria, SetNoConditionByThemselves) {
  const Text criteria;
  EXPECT_EQ(criteria.mode(), Text::Mode::Anything);
  EXPECT_TRUE(criteria.str().isEmpty());
  EXPECT_FALSE(criteria);
}

TEST(StringCriteria, HaveOneSetterForEachMode) {
  struct Case {
    int mode;
    std::function<Text&(Text&)> set;
    const wchar_t* operand;
  };
  const wchar_t* const kept = L"kept";
  const std::vector<Case> cases = {
    {0, [](Text& c) -> Text& { return c.anything(); }, kept},
    {1, [](Text& c) -> Text& { return c.unset(); }, kept},
    {2, [](Text& c) -> Text& { return c.set(); }, kept},
    {3, [](Text& c) -> Text& { return c.empty(); }, kept},
    {4, [](Text& c) -> Text& { return c.notEmpty(); }, kept},
    {5, [](Text& c) -> Text& { return c.equals(L"a"); }, L"a"},
    {6, [](Text& c) -> Text& { return c.notEquals(L"b"); }, L"b"},
    {7, [](Text& c) -> Text& { return c.contains(L"c"); }, L"c"},
    {8, [](Text& c) -> Text& { return c.startsWith(L"d"); }, L"d"},
    {9, [](Text& c) -> Text& { return c.endsWith(L"e"); }, L"e"},
    {10, [](Text& c) -> Text& { return c.match(L"f%_"); }, L"f%_"},
  };
  for (const Case& test : cases) {
    Text criteria;
    criteria.match(kept);  // a setter without an operand leaves the text
    EXPECT_EQ(&test.set(criteria), &criteria);
    EXPECT_EQ(static_cast<int>(criteria.mode()), test.mode);
    EXPECT_EQ(criteria.str(), OdString(test.operand)) << test.mode;
    EXPECT_EQ(static_cast<bool>(criteria), test.mode != 0);
  }
}

TEST(StringCriteria, AreValues) {
  Text criteria;
  criteria.contains(L"a");
  Text copy = criteria;
  criteria.unset();
  EXPECT_EQ(copy.mode(), Text::Mode::Contains);
  EXPECT_EQ(copy.str(), L"a");
  const Text moved = std::move(copy);
  EXPECT_EQ(moved.mode(), Text::Mode::Contains);
  EXPECT_EQ(moved.str(), L"a");
}

TEST(NumberCriteria, SetNoConditionByThemselves) {
  const Number criteria;
  EXPECT_EQ(criteria.mode(), Number::Mode::Anything);
  EXPECT_EQ(criteria.value(), 0.0);
  EXPECT_FALSE(criteria);
}

TEST(NumberCriteria, HaveOneSetterForEachMode) {
  struct Case {
    int mode;
    std::function<Number&(Number&)> set;
    double operand;
  };
  const double kept = 99;
  const std::vector<Case> cases = {
    {0, [](Number& c) -> Number& { return c.anything(); }, kept},
    {1, [](Number& c) -> Number& { return c.unset(); }, kept},
    {2, [](Number& c) -> Number& { return c.set(); }, kept},
    {3, [](Number& c) -> Number& { return c.equals(3); }, 3},
    {4, [](Number& c) -> Number& { return c.notEquals(4); }, 4},
    {5, [](Number& c) -> Number& { return c.less(5); }, 5},
    {6, [](Number& c) -> Number& { return c.lessOrEqual(6); }, 6},
    {7, [](Number& c) -> Number& { return c.greater(7); }, 7},
    {8, [](Number& c) -> Number& { return c.greaterOrEqual(8); }, 8},
  };
  for (const Case& test : cases) {
    Number criteria;
    criteria.equals(kept);
    EXPECT_EQ(&test.set(criteria), &criteria);
    EXPECT_EQ(static_cast<int>(criteria.mode()), test.mode);
    EXPECT_EQ(criteria.value(), test.operand) << test.mode;
    EXPECT_EQ(static_cast<bool>(criteria), test.mode != 0);
  }
}

TEST(CriteriaRecords, SetNoConditionByThemselves) {
  EXPECT_FALSE(NameCriteria().name);
  EXPECT_FALSE(BuildingCriteria().name);
  EXPECT_EQ(BuildingCriteria().site_id, 0U);
  EXPECT_FALSE(StoryCriteria().name);
  EXPECT_EQ(StoryCriteria().building_id, 0U);
  EXPECT_FALSE(UnitCriteria().name);
  EXPECT_FALSE(UnitCriteria().label);
  EXPECT_FALSE(UnitCriteria().scale);
  EXPECT_EQ(UnitCriteria().measure_id, 0U);
  EXPECT_FALSE(PropertySetCriteria().name);
  EXPECT_EQ(PropertySetCriteria().namespace_id, 0U);
  EXPECT_FALSE(PropertyDefinitionCriteria().name);
  EXPECT_FALSE(PropertyDefinitionCriteria().ifc_name);
  EXPECT_EQ(PropertyDefinitionCriteria().namespace_id, 0U);
  EXPECT_TRUE(PropertyDefinitionCriteria().type == PropertyType::Undefined());
  EXPECT_FALSE(ValueDefinitionCriteria().name);
  EXPECT_FALSE(ValueDefinitionCriteria().ifc_name);
  EXPECT_EQ(ValueDefinitionCriteria().namespace_id, 0U);
  EXPECT_TRUE(ValueDefinitionCriteria().type == PropertyType::Undefined());
}

TEST(Keys, HoldTheNameAndTheOwner) {
  EXPECT_EQ(NameKey(L"Harbour").name, L"Harbour");
  const NameObjectKey<Site> key(L"Tower", 4);
  EXPECT_EQ(key.name, L"Tower");
  EXPECT_EQ(key.object_id, 4U);
}

}  // namespace
}  // namespace tessel::test
