#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "catalogue/definition_impl.h"
#include "catalogue/property_set_impl.h"
#include "object/object_access.h"
#include "spatial/spatial_impl.h"
#include "support/samples.h"
#include "units/measure_impl.h"
#include "units/unit_impl.h"

// The three constructors that hosts do not reach: for the persistence layer, for readers, and over a given Impl.

namespace tessel::test {
namespace {

template <typename T>
class Constructor : public ::testing::Test {};

TYPED_TEST_SUITE(Constructor, SampledClasses, ClassNames);

TYPED_TEST(Constructor, ForThePersistenceLayerMakesABlankCleanObject) {
  const auto object = ObjectAccess::blank<TypeParam>();
  EXPECT_FALSE(object->isDirty());
  EXPECT_EQ(object->id(), 0U);
  EXPECT_EQ(object->projectDb(), nullptr);
}

TYPED_TEST(Constructor, ForReadersMakesTheSameObjectDirty) {
  const auto clean = ObjectAccess::blank<TypeParam>();
  const auto dirty = ObjectAccess::blankDirty<TypeParam>();
  EXPECT_TRUE(dirty->isDirty());
  EXPECT_EQ(dirty->id(), 0U);
  EXPECT_EQ(dirty->projectDb(), nullptr);
  EXPECT_TRUE(*dirty == *clean);
}

TYPED_TEST(Constructor, OverAnImplTakesItAsItIs) {
  for (const bool dirty : {false, true}) {
    auto* const impl = new typename TypeParam::Impl;
    impl->id = 7;
    impl->dirty = dirty;
    const auto object = ObjectAccess::make<TypeParam>(impl);
    EXPECT_EQ(&object->impl(), impl);
    EXPECT_EQ(object->id(), 7U);
    EXPECT_EQ(object->isDirty(), dirty);
  }
}

TYPED_TEST(Constructor, SetsTheFlagOfABlankImpl) {
  const typename TypeParam::Impl blank;
  EXPECT_FALSE(blank.dirty);
  EXPECT_EQ(blank.id, 0U);
  EXPECT_TRUE(blank.projectDb.expired());
}

}  // namespace
}  // namespace tessel::test
