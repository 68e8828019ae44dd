#include <algorithm>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/samples.h"

namespace tessel::test {
namespace {

template <typename T>
class ClassStorage : public ::testing::Test {
protected:
  std::map<std::string, std::string> row(unsigned int id) const { return project.row(Sample<T>::table, id); }
  long long rows() const { return project.count(Sample<T>::table); }

  SampleProject project;
  const long long rowsOfNewFile = rows();
};

TYPED_TEST_SUITE(ClassStorage, SampledClasses, ClassNames);

TYPED_TEST(ClassStorage, HasOneColumnForEachField) {
  std::vector<std::string> expected = {"id"};
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) expected.push_back(field.column);
  std::vector<std::string> columns = this->project.raw().columns(Sample<TypeParam>::table);
  std::sort(expected.begin(), expected.end());
  std::sort(columns.begin(), columns.end());
  EXPECT_EQ(columns, expected);
}

TYPED_TEST(ClassStorage, KeepsEachFieldOfANewObjectInItsColumn) {
  const auto object = this->project.db->save(makeSample<TypeParam>());
  EXPECT_EQ(this->row(object->id()), valuesOf(*object));
  EXPECT_EQ(this->rows(), this->rowsOfNewFile + 1);
}

TYPED_TEST(ClassStorage, KeepsTheDefaultsOfAnObjectThatWasMerelyCreated) {
  const auto object = this->project.db->save(Sample<TypeParam>::create(1));
  EXPECT_EQ(this->row(object->id()), valuesOf(*object));
}

TYPED_TEST(ClassStorage, WritesAChangeIntoItsColumnAndNoOther) {
  const auto object = this->project.db->save(makeSample<TypeParam>());
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (!field.change) continue;
    SCOPED_TRACE(field.column);
    auto expected = this->row(object->id());
    const std::string before = expected.at(field.column);
    field.change(*object);
    ASSERT_TRUE(object->save());
    expected[field.column] = field.inFile(*object);
    EXPECT_NE(expected[field.column], before);
    EXPECT_EQ(this->row(object->id()), expected);
  }
  EXPECT_EQ(this->rows(), this->rowsOfNewFile + 1);
}

TYPED_TEST(ClassStorage, GivesBackEveryFieldFromTheFile) {
  const auto saved = this->project.db->save(makeSample<TypeParam>());
  const unsigned int id = saved->id();
  this->project.reopen();
  const auto loaded = this->project.db->template get<TypeParam>(id);
  ASSERT_TRUE(loaded);
  EXPECT_EQ(valuesOf(*loaded), valuesOf(*saved));
  EXPECT_TRUE(*loaded == *saved);
  EXPECT_EQ(loaded->id(), id);
}

TYPED_TEST(ClassStorage, GivesBackEveryChangeFromTheFile) {
  const auto saved = this->project.db->save(makeSample<TypeParam>());
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (field.change) field.change(*saved);
  }
  ASSERT_TRUE(saved->save());
  const unsigned int id = saved->id();
  this->project.reopen();
  const auto loaded = this->project.db->template get<TypeParam>(id);
  EXPECT_EQ(valuesOf(*loaded), valuesOf(*saved));
  EXPECT_TRUE(*loaded == *saved);
}

TYPED_TEST(ClassStorage, GivesANewObjectAtEachLoad) {
  const unsigned int id = this->project.db->save(makeSample<TypeParam>())->id();
  EXPECT_NE(this->project.db->template get<TypeParam>(id), this->project.db->template get<TypeParam>(id));
}

TYPED_TEST(ClassStorage, HasNoObjectOfIdZero) { EXPECT_TRUE(this->project.db->template get<TypeParam>(0U).isNull()); }

TYPED_TEST(ClassStorage, FindsAnObjectByItsKey) {
  this->project.db->save(makeSample<TypeParam>(2));
  const auto saved = this->project.db->save(makeSample<TypeParam>());
  const auto found = this->project.db->template get<TypeParam>(Sample<TypeParam>::key(*saved));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->id(), saved->id());
  EXPECT_TRUE(*found == *saved);
}

TYPED_TEST(ClassStorage, FindsNothingByAKeyThatIsNotThere) {
  const auto saved = this->project.db->save(makeSample<TypeParam>());
  auto key = Sample<TypeParam>::key(*saved);
  key.name = L"nobody";
  EXPECT_TRUE(this->project.db->template get<TypeParam>(key).isNull());
}

TYPED_TEST(ClassStorage, FindsAnObjectByItsCriteria) {
  this->project.db->save(makeSample<TypeParam>(2));
  const auto saved = this->project.db->save(makeSample<TypeParam>());
  const auto criteria = Sample<TypeParam>::criteria(*saved);
  std::vector<TsSmartPtr<TypeParam>> found;
  this->project.db->get(found, criteria);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0]->id(), saved->id());
  EXPECT_TRUE(*found[0] == *saved);
  EXPECT_EQ(this->project.db->template count<TypeParam>(criteria), 1U);
}

TYPED_TEST(ClassStorage, ListsAndCountsAllObjectsOfTheClass) {
  std::set<unsigned int> expected;
  std::vector<TsSmartPtr<TypeParam>> found;
  this->project.db->get(found);
  for (const auto& object : found) expected.insert(object->id());
  for (int number = 1; number <= 3; ++number) {
    expected.insert(this->project.db->save(makeSample<TypeParam>(number))->id());
  }
  found.clear();
  this->project.db->get(found);
  std::set<unsigned int> ids;
  for (const auto& object : found) ids.insert(object->id());
  EXPECT_EQ(ids, expected);
  EXPECT_EQ(this->project.db->template count<TypeParam>(), expected.size());
  EXPECT_EQ(static_cast<long long>(expected.size()), this->rows());
}

TYPED_TEST(ClassStorage, SavesWhatAnObjectRefersToBeforeIt) {
  const auto object = this->project.db->save(makeSample<TypeParam>());
  for (const auto& reference : Sample<TypeParam>::references(*object)) {
    EXPECT_NE(reference->id(), 0U);
    EXPECT_FALSE(reference->isDirty());
    EXPECT_EQ(reference->projectDb(), this->project.db);
  }
}

TYPED_TEST(ClassStorage, SavesThroughEachFormOfSave) {
  const auto first = makeSample<TypeParam>(1);
  EXPECT_EQ(first->save(this->project.db), first);
  const auto second = makeSample<TypeParam>(2);
  IdMapping mapping(this->project.db);
  EXPECT_EQ(second->save(this->project.db, mapping), second);
  EXPECT_TRUE(mapping.has({ObjectTraits<TypeParam>::type, 0, nullptr}));
  const TsSmartPtr<const TypeParam> third = makeSample<TypeParam>(3);
  EXPECT_EQ(third->save(this->project.db), third);
  const TsSmartPtr<Object> fourth = makeSample<TypeParam>(4);
  EXPECT_EQ(fourth->save(this->project.db), fourth);
  const TsSmartPtr<const TypeParam> fifth = makeSample<TypeParam>(5);
  EXPECT_EQ(fifth->save(this->project.db, mapping), fifth);
  EXPECT_EQ(this->rows(), this->rowsOfNewFile + 5);
}

TYPED_TEST(ClassStorage, LeavesTheRowAloneWhenAnObjectIsReleasedUnsaved) {
  const auto object = this->project.db->save(makeSample<TypeParam>());
  const auto before = this->row(object->id());
  for (const Field<TypeParam>& field : Sample<TypeParam>::fields()) {
    if (field.change) field.change(*object);
  }
  EXPECT_EQ(this->row(object->id()), before);
}

TYPED_TEST(ClassStorage, LeavesAFileWhoseReferencesAreWhole) {
  this->project.db->save(makeSample<TypeParam>());
  RawFile file = this->project.raw();
  EXPECT_EQ(file.rows("PRAGMA foreign_key_check"), RawFile::Rows());
  EXPECT_EQ(file.scalarText("PRAGMA integrity_check"), "ok");
}

}  // namespace
}  // namespace tessel::test
