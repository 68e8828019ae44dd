#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

namespace tessel::test {
namespace {

template <typename T>
class ClassClone : public ::testing::Test {
protected:
  SampleProject project;
  TsSmartPtr<T> source = project.db->save(makeSample<T>());
};

TYPED_TEST_SUITE(ClassClone, SampledClasses, ClassNames);

TYPED_TEST(ClassClone, IsANewUnsavedObjectEvenIfItsSourceHasARow) {
  ASSERT_NE(this->source->id(), 0U);
  const auto clone = this->source->cloneObject();
  EXPECT_NE(clone, this->source);
  EXPECT_EQ(clone->id(), 0U);
  EXPECT_TRUE(clone->isDirty());
  EXPECT_EQ(clone->projectDb(), nullptr);
}

TYPED_TEST(ClassClone, LeavesItsSourceAsItWas) {
  const unsigned int id = this->source->id();
  this->source->cloneObject();
  EXPECT_EQ(this->source->id(), id);
  EXPECT_FALSE(this->source->isDirty());
  EXPECT_EQ(this->source->projectDb(), this->project.db);
}

TYPED_TEST(ClassClone, HasTheFieldsOfItsSourceAndEqualsIt) {
  const auto clone = this->source->cloneObject();
  EXPECT_EQ(valuesOf(*clone), valuesOf(*this->source));
  EXPECT_TRUE(*clone == *this->source);
  EXPECT_FALSE(*clone != *this->source);
}

TYPED_TEST(ClassClone, RefersToTheSameObjects) {
  EXPECT_EQ(Sample<TypeParam>::references(*this->source->cloneObject()), Sample<TypeParam>::references(*this->source));
}

TYPED_TEST(ClassClone, IsChangedByItself) {
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.change) continue;
    SCOPED_TRACE(field.column);
    const auto before = valuesOf(*this->source);
    field.change(*this->source->cloneObject());
    EXPECT_EQ(valuesOf(*this->source), before);
    EXPECT_FALSE(this->source->isDirty());
  }
}

TYPED_TEST(ClassClone, IsOfTheSameClassWhenClonedThroughTheBase) {
  const Object& object = *this->source;
  const TsSmartPtr<Object> clone = object.cloneObject();
  const auto typed = TypeParam::queryX(clone.get());
  ASSERT_TRUE(typed);
  EXPECT_EQ(clone->isA(), TypeParam::desc());
  EXPECT_TRUE(*typed == *this->source);
}

TYPED_TEST(ClassClone, IsWatchedByNoReactor) {
  struct Counter : ObjectReactor {
    int calls = 0;
    void onObjectDeleted(Object*) override { ++calls; }
  } reactor;
  this->source->addReactor(&reactor);
  this->source->cloneObject();
  EXPECT_EQ(reactor.calls, 0);
}

TYPED_TEST(ClassClone, OfACloneEqualsTheFirstSource) {
  EXPECT_TRUE(*this->source->cloneObject()->cloneObject() == *this->source);
}

TYPED_TEST(ClassClone, OfADirtyObjectHasItsChanges) {
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.change) continue;
    SCOPED_TRACE(field.column);
    field.change(*this->source);
    EXPECT_EQ(valuesOf(*this->source->cloneObject()), valuesOf(*this->source));
  }
}

}  // namespace
}  // namespace tessel::test
