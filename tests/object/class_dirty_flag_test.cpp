#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

namespace tessel::test {
namespace {

template <typename T>
class ClassDirtyFlag : public ::testing::Test {
protected:
  SampleProject project;

  TsSmartPtr<T> clean(int number = 1) { return project.db->save(makeSample<T>(number)); }
};

TYPED_TEST_SUITE(ClassDirtyFlag, SampledClasses, ClassNames);

TYPED_TEST(ClassDirtyFlag, IsSetInANewObjectWhichHasNoRowAndNoDatabase) {
  const auto object = Sample<TypeParam>::create(1);
  EXPECT_TRUE(object->isDirty());
  EXPECT_EQ(object->id(), 0U);
  EXPECT_EQ(object->projectDb(), nullptr);
}

TYPED_TEST(ClassDirtyFlag, IsClearedByASaveWhichGivesRowAndDatabase) {
  const auto object = makeSample<TypeParam>();
  ASSERT_EQ(this->project.db->save(object), object);
  EXPECT_FALSE(object->isDirty());
  EXPECT_NE(object->id(), 0U);
  EXPECT_EQ(object->projectDb(), this->project.db);
}

TYPED_TEST(ClassDirtyFlag, IsClearInALoadedObjectWhichIsLinkedToItsDatabase) {
  const unsigned int id = this->clean()->id();
  const auto object = this->project.db->template get<TypeParam>(id);
  EXPECT_FALSE(object->isDirty());
  EXPECT_EQ(object->id(), id);
  EXPECT_EQ(object->projectDb(), this->project.db);
}

TYPED_TEST(ClassDirtyFlag, IsLeftAloneBySettingTheValueThatIsThere) {
  const auto object = this->clean();
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setSame) continue;
    field.setSame(*object);
    EXPECT_FALSE(object->isDirty()) << field.column;
  }
}

TYPED_TEST(ClassDirtyFlag, StaysSetWhenTheValueThatIsThereIsSetAgain) {
  const auto object = makeSample<TypeParam>();
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setSame) continue;
    field.setSame(*object);
    EXPECT_TRUE(object->isDirty()) << field.column;
  }
}

TYPED_TEST(ClassDirtyFlag, IsSetByEachChange) {
  const unsigned int id = this->clean()->id();
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.change) continue;
    SCOPED_TRACE(field.column);
    const auto object = this->project.db->template get<TypeParam>(id);
    const auto before = valuesOf(*object);
    field.change(*object);
    EXPECT_TRUE(object->isDirty());
    EXPECT_NE(valuesOf(*object), before);
    EXPECT_EQ(object->id(), id);
    EXPECT_EQ(object->projectDb(), this->project.db);
  }
}

TYPED_TEST(ClassDirtyFlag, StaysWhenTheChangeIsTakenBack) {
  const unsigned int id = this->clean()->id();
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setText) continue;
    const auto object = this->project.db->template get<TypeParam>(id);
    const OdString before = field.getText(*object);
    field.change(*object);
    field.setText(*object, before);
    EXPECT_EQ(field.getText(*object), before) << field.column;
    EXPECT_TRUE(object->isDirty()) << field.column;
  }
}

TYPED_TEST(ClassDirtyFlag, IsClearedAgainByTheSaveOfAChange) {
  const auto object = this->clean();
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.change) continue;
    field.change(*object);
    EXPECT_TRUE(object->save());
    EXPECT_FALSE(object->isDirty()) << field.column;
  }
}

// Case and width of a character count: texts are compared unit by unit, without a locale.
TYPED_TEST(ClassDirtyFlag, IsSetByAChangeOfCase) {
  const auto object = this->clean();
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setText) continue;
    field.setText(*object, L"text");
    object->save();
    field.setText(*object, L"Text");
    EXPECT_TRUE(object->isDirty()) << field.column;
  }
}

TYPED_TEST(ClassDirtyFlag, IsSetByNotANumberEachTime) {
  const auto object = this->clean();
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.setNumber) continue;
    const auto copy = this->project.db->template get<TypeParam>(object->id());
    field.setNumber(*copy, std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(copy->isDirty()) << field.column;
    EXPECT_TRUE(std::isnan(field.getNumber(*copy))) << field.column;
  }
}

TYPED_TEST(ClassDirtyFlag, AndIdOfAnObjectOutliveItsDatabase) {
  const auto object = this->clean();
  const auto changed = this->clean(2);
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (field.change) field.change(*changed);
  }
  const unsigned int id = object->id();
  this->project.db.reset();
  EXPECT_EQ(object->projectDb(), nullptr);
  EXPECT_EQ(object->id(), id);
  EXPECT_FALSE(object->isDirty());
  EXPECT_TRUE(changed->isDirty());
}

TYPED_TEST(ClassDirtyFlag, SurvivesASaveIntoNoDatabase) {
  const auto object = makeSample<TypeParam>();
  EXPECT_FALSE(object->save());
  EXPECT_TRUE(object->save(nullptr).isNull());
  EXPECT_TRUE(object->isDirty());
  EXPECT_EQ(object->id(), 0U);
}

}  // namespace
}  // namespace tessel::test
