#include <type_traits>

#include <gtest/gtest.h>

#include <tessel/ifc_type.h>

#include "catalogue/ifc_types.h"

namespace tessel::test {
namespace {

TEST(IfcTypes, OfAGroupHaveConsecutiveNumbersFromItsBase) {
  for (const IfcTypeGroup& group : ifcTypeGroups()) {
    int number = group.base;
    for (const IfcTypeRow& row : group.rows) EXPECT_EQ(static_cast<int>(row.type), number++) << row.word;
  }
}

TEST(IfcTypes, AreFourGroupsOfAKnownSize) {
  const auto groups = ifcTypeGroups();
  ASSERT_EQ(groups.size(), 4U);
  EXPECT_EQ(groups[0].rows.size(), 1U);
  EXPECT_EQ(groups[1].rows.size(), 12U);
  EXPECT_EQ(groups[2].rows.size(), 23U);
  EXPECT_EQ(groups[3].rows.size(), 69U);
}

TEST(IfcTypes, HaveTheNumbersThatAreInFiles) {
  EXPECT_EQ(static_cast<int>(IfcTypeUndefined), -1);
  EXPECT_EQ(static_cast<int>(IfcSimpleValue_Label), 105);
  EXPECT_EQ(static_cast<int>(IfcSimpleValue_TimeStamp), 111);
  EXPECT_EQ(static_cast<int>(IfcMeasureValue_Length), 212);
  EXPECT_EQ(static_cast<int>(IfcMeasureValue_NonNegativeLength), 222);
  EXPECT_EQ(static_cast<int>(IfcDerivedMeasureValue_Force), 329);
  EXPECT_EQ(static_cast<int>(IfcDerivedMeasureValue_AreaDensity), 368);
}

TEST(IfcTypes, AreSignedNumbersOf32Bits) {
  EXPECT_EQ(sizeof(IfcType), 4U);
  EXPECT_TRUE(std::is_signed_v<std::underlying_type_t<IfcType>>);
}

}  // namespace
}  // namespace tessel::test
