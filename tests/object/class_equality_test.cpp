#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

namespace tessel::test {
namespace {

template <typename T>
class ClassEquality : public ::testing::Test {
protected:
  static void expectEqual(const T& a, const T& b) {
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(b == a);
    EXPECT_FALSE(a != b);
    EXPECT_FALSE(b != a);
  }

  static void expectDifferent(const T& a, const T& b) {
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(b == a);
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(b != a);
  }
};

TYPED_TEST_SUITE(ClassEquality, SampledClasses, ClassNames);

TYPED_TEST(ClassEquality, HoldsForAnObjectAndItself) {
  const auto object = makeSample<TypeParam>();
  this->expectEqual(*object, *object);
}

TYPED_TEST(ClassEquality, LooksThroughReferencesAtEqualObjects) {
  const auto a = makeSample<TypeParam>();
  const auto b = makeSample<TypeParam>();
  this->expectEqual(*a, *b);
}

TYPED_TEST(ClassEquality, EndsWithEachFieldThatDiffers) {
  const auto object = makeSample<TypeParam>();
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.compared) continue;
    SCOPED_TRACE(field.column);
    this->expectDifferent(*object, *field.otherwise());
  }
}

TYPED_TEST(ClassEquality, IgnoresIdDatabaseAndDirtyFlag) {
  SampleProject project;
  const auto saved = project.db->save(makeSample<TypeParam>());
  const auto unsaved = makeSample<TypeParam>();
  ASSERT_NE(saved->id(), unsaved->id());
  ASSERT_NE(saved->isDirty(), unsaved->isDirty());
  this->expectEqual(*saved, *unsaved);
}

TYPED_TEST(ClassEquality, HoldsBetweenAnObjectAndWhatIsLoadedFromItsRow) {
  SampleProject project;
  const auto saved = project.db->save(makeSample<TypeParam>());
  const auto loaded = project.db->template get<TypeParam>(saved->id());
  ASSERT_NE(loaded, saved);
  this->expectEqual(*saved, *loaded);
}

TYPED_TEST(ClassEquality, EndsWithAnyDifferenceOfCaseInATextThatIsCompared) {
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setText || !field.compared) continue;
    SCOPED_TRACE(field.column);
    const auto lower = makeSample<TypeParam>();
    const auto upper = makeSample<TypeParam>();
    field.setText(*lower, L"a");
    field.setText(*upper, L"A");
    this->expectDifferent(*lower, *upper);
  }
}

TYPED_TEST(ClassEquality, FailsForNotANumberEvenWithTheObjectItself) {
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setNumber) continue;
    SCOPED_TRACE(field.column);
    const auto object = makeSample<TypeParam>();
    field.setNumber(*object, std::numeric_limits<double>::quiet_NaN());
    this->expectDifferent(*object, *object);
  }
}

/// An object of a class of the host, which counts how often it is asked for it.
template <typename T>
struct OfHost : T {
  OfHost() : T(SetDirty{}) {}
  OdRxClass* isA() const override {
    ++questions;
    return Object::desc();
  }

  mutable int questions = 0;
};

/// The same object of the class itself.
template <typename T>
struct Blank : T {
  Blank() : T(SetDirty{}) {}
};

template <typename T>
constexpr bool asksForTheClass = !std::is_same_v<T, Site> && !std::is_same_v<T, Story>;

// Sites and stories are compared by their fields alone, whatever class stands behind them.
TYPED_TEST(ClassEquality, EndsWithTheClassButForSitesAndStories) {
  const TsSmartPtr<TypeParam> ofHost = new OfHost<TypeParam>;
  const TsSmartPtr<TypeParam> blank = new Blank<TypeParam>;
  if (asksForTheClass<TypeParam>) {
    this->expectDifferent(*ofHost, *blank);
  } else {
    this->expectEqual(*ofHost, *blank);
  }
  this->expectEqual(*ofHost, *ofHost);
}

// So it is asked even if the fields are enough to tell the objects apart.
TYPED_TEST(ClassEquality, AsksForTheClassFirst) {
  auto* const ofHost = new OfHost<TypeParam>;
  const TsSmartPtr<TypeParam> owner = ofHost;
  ofHost->questions = 0;
  this->expectDifferent(*ofHost, *makeSample<TypeParam>());
  EXPECT_EQ(ofHost->questions, asksForTheClass<TypeParam> ? 4 : 0);
}

template <typename T>
class ClassAssignment : public ::testing::Test {
protected:
  SampleProject project;
  TsSmartPtr<T> target = project.db->save(makeSample<T>(1));
};

TYPED_TEST_SUITE(ClassAssignment, AssignableClasses, ClassNames);

TYPED_TEST(ClassAssignment, CopiesEveryFieldButThoseThatAreFixed) {
  const auto source = makeSample<TypeParam>(2);
  auto expected = valuesOf(*source);
  bool whole = true;
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (field.assigned) continue;
    expected[field.column] = field.inFile(*this->target);
    whole = false;
  }
  *this->target = *source;
  EXPECT_EQ(valuesOf(*this->target), expected);
  EXPECT_EQ(*this->target == *source, whole);
  EXPECT_EQ(Sample<TypeParam>::references(*this->target) == Sample<TypeParam>::references(*source),
            whole || Sample<TypeParam>::references(*source).empty());
}

TYPED_TEST(ClassAssignment, KeepsIdDatabaseAndReactors) {
  struct Counter : ObjectReactor {
    int calls = 0;
    void onObjectDeleted(Object*) override { ++calls; }
  } ofTarget, ofSource;
  const unsigned int id = this->target->id();
  auto source = makeSample<TypeParam>(2);
  this->target->addReactor(&ofTarget);
  source->addReactor(&ofSource);
  *this->target = *source;
  EXPECT_EQ(this->target->id(), id);
  EXPECT_EQ(this->target->projectDb(), this->project.db);

  this->target.reset();
  EXPECT_EQ(ofTarget.calls, 1);
  EXPECT_EQ(ofSource.calls, 0);
  source.reset();
  EXPECT_EQ(ofSource.calls, 1);
}

TYPED_TEST(ClassAssignment, MarksTheTargetEvenIfBothAreEqual) {
  const auto source = makeSample<TypeParam>(1);
  ASSERT_TRUE(*this->target == *source);
  *this->target = *source;
  EXPECT_TRUE(this->target->isDirty());
}

TYPED_TEST(ClassAssignment, OfAnObjectToItselfMarksItAndKeepsItsFields) {
  const auto before = valuesOf(*this->target);
  const TypeParam& same = *this->target;
  *this->target = same;
  EXPECT_TRUE(this->target->isDirty());
  EXPECT_EQ(valuesOf(*this->target), before);
}

TYPED_TEST(ClassAssignment, DoesNotTakeOverTheFlagOfACleanSource) {
  const auto source = this->project.db->save(makeSample<TypeParam>(2));
  ASSERT_FALSE(source->isDirty());
  *this->target = *source;
  EXPECT_TRUE(this->target->isDirty());
  EXPECT_FALSE(source->isDirty());
}

TYPED_TEST(ClassAssignment, ReturnsTheTarget) {
  const auto source = makeSample<TypeParam>(2);
  EXPECT_EQ(&(*this->target = *source), this->target.get());
}

}  // namespace
}  // namespace tessel::test
