#include <gtest/gtest.h>

#include <tessel/exceptions.h>

#include "operations/not_unique.h"
#include "support/printers.h"

namespace tessel::test {
namespace {

OdString memberOf(const FailureMessage& message) {
  try {
    throwNotUnique(message);
  } catch (const ObjectNotUnique& error) {
    return error.member();
  }
}

const std::string prefix = "UNIQUE constraint failed:";

TEST(UniqueFailure, BeginsWithThePrefix) {
  EXPECT_TRUE(isUniqueFailure(prefix));
  EXPECT_TRUE(isUniqueFailure(prefix + " tessel_Unit.label"));
}

TEST(UniqueFailure, IsComparedExactlyAndFromTheStart) {
  EXPECT_FALSE(isUniqueFailure(""));
  EXPECT_FALSE(isUniqueFailure("UNIQUE constraint failed"));
  EXPECT_FALSE(isUniqueFailure(" " + prefix));
  EXPECT_FALSE(isUniqueFailure("unique constraint failed: tessel_Unit.label"));
  EXPECT_FALSE(isUniqueFailure("NOT NULL constraint failed: tessel_Unit.label"));
}

TEST(ThrowNotUnique, WithoutAMessageNamesNothing) {
  try {
    throwNotUnique({});
  } catch (const ObjectNotUnique& error) {
    EXPECT_EQ(error.member(), L"");
    EXPECT_STREQ(error.what(), L"An other object with the same values exists");
  }
}

TEST(ThrowNotUnique, NamesTheClassAndTheColumn) { EXPECT_EQ(memberOf(prefix + " tessel_Unit.label"), L"Unit.label"); }

TEST(ThrowNotUnique, JoinsSeveralColumnsWithCommasAlone) {
  EXPECT_EQ(memberOf(prefix + " tessel_Unit.measure_id, tessel_Unit.label"), L"Unit.measure_id,Unit.label");
}

TEST(ThrowNotUnique, DropsEmptyPieces) {
  EXPECT_EQ(memberOf(prefix + ", tessel_Unit.name,, tessel_Unit.label,"), L"Unit.name,Unit.label");
  EXPECT_EQ(memberOf(prefix), L"");
  EXPECT_EQ(memberOf(prefix + ","), L"");
}

TEST(ThrowNotUnique, KeepsWhatStandsBehindTheLastSchemaWord) {
  EXPECT_EQ(memberOf(prefix + " tessel_tessel_Unit.tessel_label"), L"label");
}

TEST(ThrowNotUnique, WithoutTheSchemaWordDropsAsManyCharactersAsItHas) {
  EXPECT_EQ(memberOf(prefix + " notes.text"), L".text");
  EXPECT_EQ(memberOf(prefix + " index 'unique_name'"), L" 'unique_name'");
  EXPECT_EQ(memberOf(prefix + " tesselUnit.label"), L"lUnit.label");
}

TEST(ThrowNotUnique, APieceThatIsShorterIsEmpty) {
  EXPECT_EQ(memberOf(prefix + " a.b"), L"");
  EXPECT_EQ(memberOf(prefix + " a.bcd"), L"");
  EXPECT_EQ(memberOf(prefix + " a.bcde"), L"e");
}

TEST(ThrowNotUnique, ReadsUtf8) {
  EXPECT_EQ(memberOf(prefix + u8" tessel_Unit.gr\u00F6\u00DFe"), L"Unit.gr\u00F6\u00DFe");
}

}  // namespace
}  // namespace tessel::test
