#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

namespace tessel::test {
namespace {

using Limits = std::numeric_limits<double>;

TsSmartPtr<Measure> length() { return Measure::create(L"LENGTH", 1, 0, 0, 0, 0, 0, 0); }
TsSmartPtr<Unit> unitOf(double scale, const TsSmartPtr<const Measure>& measure = length()) {
  return Unit::create(L"u", scale, measure);
}

double converted(double value, const TsSmartPtr<const Unit>& from, const TsSmartPtr<const Unit>& to) {
  return convertUnit(value, from.get(), to.get());
}

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(ConvertUnit, BetweenNoUnitsIsNoConversion) {
  EXPECT_EQ(convertUnit(5, nullptr, nullptr), 5);
  EXPECT_TRUE(sameBits(convertUnit(-0.0, nullptr, nullptr), -0.0));
}

TEST(ConvertUnit, WithOneUnitIsNotPossible) {
  const auto metre = unitOf(1);
  EXPECT_THROW(convertUnit(5, metre.get(), nullptr), UnitConversionNotPossible);
  EXPECT_THROW(convertUnit(5, nullptr, metre.get()), UnitConversionNotPossible);
}

TEST(ConvertUnit, MultipliesByTheScaleOfTheSource) { EXPECT_EQ(converted(2, unitOf(1000), unitOf(1)), 2000); }

TEST(ConvertUnit, DividesByTheScaleOfTheDestination) { EXPECT_EQ(converted(2, unitOf(1), unitOf(1000)), 0.002); }

TEST(ConvertUnit, MultipliesBeforeItDivides) {
  const double value = 0.1;
  const double from = 0.3;
  const double to = 0.7;
  EXPECT_TRUE(sameBits(converted(value, unitOf(from), unitOf(to)), value * from / to));
  ASSERT_FALSE(sameBits(value * from / to, value * (from / to))) << "the numbers must tell the orders apart";
}

TEST(ConvertUnit, ReturnsTheVeryBitsForEqualScales) {
  const double payload = std::nan("12345");
  for (const double scale : {1.0, 0.0254, 0.0, -3.0, Limits::infinity()}) {
    for (const double value : {0.1, -0.0, Limits::max(), Limits::denorm_min(), Limits::infinity(), payload}) {
      EXPECT_TRUE(sameBits(converted(value, unitOf(scale), unitOf(scale)), value));
    }
  }
}

TEST(ConvertUnit, LetsAScaleThatIsNoNumberFlowIntoTheResult) {
  const auto broken = unitOf(Limits::quiet_NaN());
  EXPECT_TRUE(std::isnan(converted(5, broken, unitOf(1))));
  EXPECT_TRUE(std::isnan(converted(5, unitOf(1), broken)));
  EXPECT_TRUE(std::isnan(converted(5, broken, broken))) << "no number equals itself";
}

TEST(ConvertUnit, DividesByZeroAsNumbersDo) {
  EXPECT_EQ(converted(5, unitOf(1), unitOf(0)), Limits::infinity());
  EXPECT_EQ(converted(5, unitOf(0), unitOf(1)), 0);
}

TEST(ConvertUnit, AsksForTheDimensionsOnly) {
  const auto height = Measure::create(L"HEIGHT", 1, 0, 0, 0, 0, 0, 0);
  height->set_description(L"another name for the same dimension");
  EXPECT_EQ(converted(2, unitOf(1000), unitOf(1, height)), 2000);
}

TEST(ConvertUnit, BetweenDimensionsThatDifferInOneExponentIsInvalid) {
  const auto from = unitOf(1, Sample<Measure>::create(1));
  for (std::size_t i = 0; i < 7; ++i) {
    Sample<Measure>::Exponents exponents = Sample<Measure>::exponents;
    ++exponents[i];
    const auto to = unitOf(1, Sample<Measure>::create(1, exponents));
    EXPECT_THROW(converted(5, from, to), InvalidUnitConversion) << i;
    EXPECT_THROW(converted(5, to, from), InvalidUnitConversion) << i;
  }
}

TEST(ConvertUnit, RefusesOtherDimensionsEvenForEqualScales) {
  const auto area = Measure::create(L"AREA", 2, 0, 0, 0, 0, 0, 0);
  EXPECT_THROW(converted(5, unitOf(1), unitOf(1, area)), InvalidUnitConversion);
  EXPECT_THROW(converted(5, unitOf(1), unitOf(1, area)), UnitException);
}

struct UnitString {
  std::u16string text;
  std::u16string shown;
};

void PrintTo(const UnitString& unit, std::ostream* out) { ::PrintTo(OdString(unit.text), out); }

class FormatUnitString : public ::testing::TestWithParam<UnitString> {};

TEST_P(FormatUnitString, ShowsExponentsAndDots) {
  EXPECT_EQ(formatUnitString(OdString(GetParam().text)), OdString(GetParam().shown));
}

const UnitString plainTexts[] = {
  {u"", u""}, {u"m", u"m"}, {u"m2", u"m2"}, {u"kg m/s", u"kg m/s"}, {u"\u00B5m \U0001F4CF", u"\u00B5m \U0001F4CF"},
};
INSTANTIATE_TEST_SUITE_P(PlainTexts, FormatUnitString, ::testing::ValuesIn(plainTexts));

const UnitString exponents[] = {
  {u"m^2", u"m\u00B2"},
  {u"m^10", u"m\u00B9\u2070"},
  {u"m^0123456789", u"m\u2070\u00B9\u00B2\u00B3\u2074\u2075\u2076\u2077\u2078\u2079"},
  {u"^2", u"\u00B2"},
  {u"^", u""},
  {u"m^", u"m"},
  {u"m^2s", u"m\u00B2s"},
  {u"m^2s3", u"m\u00B2s3"},
  {u"m^2 3", u"m\u00B2 3"},
  {u"m^2^3", u"m\u00B2\u00B3"},
  {u"m^^2", u"m\u00B2"},
  {u"^^^", u""},
  {u"m^a2", u"ma2"},
};
INSTANTIATE_TEST_SUITE_P(Exponents, FormatUnitString, ::testing::ValuesIn(exponents));

// "-" ends an exponent at once, and the digits behind it are plain.
const UnitString signs[] = {
  {u"m^-2", u"m-2"},
  {u"m^2-2", u"m\u00B2-2"},
  {u"m^+2", u"m+2"},
};
INSTANTIATE_TEST_SUITE_P(Signs, FormatUnitString, ::testing::ValuesIn(signs));

const UnitString dots[] = {
  {u"N.m", u"N\u00B7m"}, {u"kg.m^2", u"kg\u00B7m\u00B2"}, {u"m^3.s^1", u"m\u00B3\u00B7s\u00B9"}, {u".m", u"\u00B7m"},
  {u"^.m", u"\u00B7m"},  {u"a.b.c", u"a\u00B7b\u00B7c"},
};
INSTANTIATE_TEST_SUITE_P(Dots, FormatUnitString, ::testing::ValuesIn(dots));

// The character behind a dot is not looked at.
const UnitString behindDots[] = {
  {u"m..s", u"m\u00B7.s"},       {u"m...s", u"m\u00B7.\u00B7s"}, {u"m.^2", u"m\u00B7^2"},
  {u"m.^^2", u"m\u00B7^\u00B2"}, {u"m.2^2", u"m\u00B72\u00B2"},  {u"m^2.^2", u"m\u00B2\u00B7^2"},
};
INSTANTIATE_TEST_SUITE_P(BehindDots, FormatUnitString, ::testing::ValuesIn(behindDots));

const UnitString dotsAtTheEnd[] = {
  {u".", u"\u00B7"},     {u"m.", u"m\u00B7"},          {u"m^2.", u"m\u00B2\u00B7"},
  {u"m..", u"m\u00B7."}, {u"m...", u"m\u00B7.\u00B7"},
};
INSTANTIATE_TEST_SUITE_P(DotsAtTheEnd, FormatUnitString, ::testing::ValuesIn(dotsAtTheEnd));

TEST(FormatUnitStringOfALabel, LeavesTheLabelOfTheUnitPlain) {
  const auto unit = Unit::create(L"m^2", 1, length());
  formatUnitString(unit->label());
  EXPECT_EQ(unit->label(), L"m^2");
}

}  // namespace
}  // namespace tessel::test
