#include <array>
#include <limits>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

// What measures have in common with all other classes is tested in tests/object/class_*_test.cpp.

namespace tessel::test {
namespace {

std::array<short, 7> exponentsOf(const Measure& measure) {
  return {measure.length(),
          measure.mass(),
          measure.time(),
          measure.thermodynamic_temperature(),
          measure.electric_current(),
          measure.luminous_intensity(),
          measure.amount_of_substance()};
}

TEST(Measure, IsCreatedWithoutDescription) {
  const auto measure = Measure::create(L"FORCE", 1, 1, -2, 0, 0, 0, 0);
  EXPECT_EQ(measure->name(), L"FORCE");
  EXPECT_TRUE(measure->description().isEmpty());
  EXPECT_TRUE(measure->isDirty());
  EXPECT_EQ(measure->id(), 0U);
}

TEST(Measure, TakesItsExponentsInTheOrderOfTheBaseQuantities) {
  const auto measure = Measure::create(L"ALL", 1, 2, 3, 4, 5, 6, 7);
  EXPECT_EQ(exponentsOf(*measure), (std::array<short, 7>{1, 2, 3, 4, 5, 6, 7}));
}

TEST(Measure, AcceptsEveryValue) {
  constexpr short low = std::numeric_limits<short>::min();
  constexpr short high = std::numeric_limits<short>::max();
  SampleProject project;
  const auto measure = project.db->save(Measure::create(L"", low, high, low, high, low, high, low));
  EXPECT_TRUE(measure->name().isEmpty());
  const auto loaded = project.db->get<Measure>(measure->id());
  EXPECT_EQ(exponentsOf(*loaded), (std::array<short, 7>{low, high, low, high, low, high, low}));
}

TEST(Measure, HasTypeSix) { EXPECT_EQ(static_cast<int>(Measure::staticTesselType()), 6); }

TEST(Measure, IdsAreNotUsedAgain) {
  SampleProject project;
  const auto first = project.db->save(makeSample<Measure>(1));
  project.raw().exec("DELETE FROM tessel_Measure WHERE id = " + std::to_string(first->id()));
  EXPECT_GT(project.db->save(makeSample<Measure>(2))->id(), first->id());
}

}  // namespace
}  // namespace tessel::test
