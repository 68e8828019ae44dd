// Copying all objects of one class.

#include <gmock/gmock.h>

#include "operations/copying.h"

namespace tessel::test {
namespace {

using ::testing::IsEmpty;

template <typename T>
class CopyClass : public Copying {
protected:
  CopyClass() {
    for (const int number : {3, 1, 2}) originals.push_back(other->save(makeSample<T>(number)));
    // Others are here already, so that no object keeps its id.
    for (const int number : {8, 9}) db->save(makeSample<T>(number));
    startWatching();
  }

  void copy(IdMapping& mapping) { db->template copyAll<T>(other, mapping); }

  long long ownRows() const { return rows(Sample<T>::table); }

  /// The values of a row without those that are ids.
  static std::map<std::string, std::string> plainValues(const SampleProject& file, unsigned int id) {
    std::map<std::string, std::string> values = file.row(Sample<T>::table, id);
    for (const std::string& column : referenceColumns<T>()) values.erase(column);
    return values;
  }

  std::vector<TsSmartPtr<T>> originals;
};
TYPED_TEST_SUITE(CopyClass, SampledClasses, ClassNames);

TYPED_TEST(CopyClass, FromNowhereDoesNothing) {
  const Unchanged destination(this->project);
  IdMapping mapping(this->db);
  this->db->template copyAll<TypeParam>(nullptr, mapping);
  this->db->template copyAll<TypeParam>(nullptr);
  EXPECT_EQ(mapping.size(), 0U);
  EXPECT_THAT(this->reactor.calls, IsEmpty());
  EXPECT_THAT(this->sql.statements(), IsEmpty()) << "not even a transaction begins";
}

TYPED_TEST(CopyClass, FromItselfDoesNothing) {
  const Unchanged destination(this->project);
  IdMapping mapping(this->db);
  this->db->template copyAll<TypeParam>(this->db, mapping);
  this->db->template copyAll<TypeParam>(this->db);
  EXPECT_EQ(mapping.size(), 0U);
  EXPECT_THAT(this->reactor.calls, IsEmpty());
  EXPECT_THAT(this->sql.statements(), IsEmpty());
}

TYPED_TEST(CopyClass, EveryObjectArrivesWithItsValues) {
  IdMapping mapping(this->db);
  this->copy(mapping);
  for (const auto& original : this->originals) {
    const IdMapping::Value value = this->mapped(mapping, *original);
    EXPECT_EQ(value.resolution, SaveResolution::Created);
    EXPECT_NE(value.id, original->id());
    const auto copy = this->db->template get<TypeParam>(value.id);
    EXPECT_TRUE(*copy == *original);
    EXPECT_EQ(this->plainValues(this->project, value.id), this->plainValues(this->otherProject, original->id()));
  }
}

TYPED_TEST(CopyClass, NothingElseOfTheClassArrives) {
  const long long before = this->ownRows();
  const long long inSource = this->otherProject.count(Sample<TypeParam>::table);
  const long long common = std::is_same_v<TypeParam, Measure> ? 4 : 0;
  this->db->template copyAll<TypeParam>(this->other);
  EXPECT_EQ(this->ownRows(), before + inSource - common);
}

TYPED_TEST(CopyClass, WhatItRefersToArrivesWithItUnderItsOwnIds) {
  IdMapping mapping(this->db);
  this->copy(mapping);
  for (const auto& original : this->originals) {
    const auto copy = this->db->template get<TypeParam>(this->mapped(mapping, *original).id);
    const auto expected = Sample<TypeParam>::references(*original);
    const auto references = Sample<TypeParam>::references(*copy);
    ASSERT_EQ(references.size(), expected.size());
    for (std::size_t i = 0; i < references.size(); ++i) {
      EXPECT_EQ(references[i]->id(), this->mapped(mapping, *expected[i]).id);
      EXPECT_EQ(references[i]->projectDb(), this->db);
    }
  }
  EXPECT_THAT(this->project.raw().rows("PRAGMA foreign_key_check"), IsEmpty());
}

TYPED_TEST(CopyClass, TheSourceIsOnlyRead) {
  const Unchanged source(this->otherProject);
  this->db->template copyAll<TypeParam>(this->other);
  EXPECT_GT(this->writes(), 0U);
}

TYPED_TEST(CopyClass, ASourceThatIsOpenForReadingOnlyWillDo) {
  this->otherProject.db.reset();
  const std::shared_ptr<const ProjectDb> source = ProjectDb::open(odPath(this->otherProject.path()), true);
  const long long before = this->ownRows();
  this->db->template copyAll<TypeParam>(source);
  EXPECT_EQ(this->ownRows(), before + 3);
}

TYPED_TEST(CopyClass, ItIsOneTransactionOfTheDestination) {
  this->db->template copyAll<TypeParam>(this->other);
  EXPECT_EQ(this->sql.beginningWith("COMMIT").size(), 1U);
}

TYPED_TEST(CopyClass, WithTheSameMappingASecondCopyWritesAndTellsNothing) {
  IdMapping mapping(this->db);
  this->copy(mapping);
  this->startWatching();
  const std::size_t size = mapping.size();
  const Unchanged destination(this->project);
  this->copy(mapping);
  EXPECT_EQ(this->writes(), 0U);
  EXPECT_THAT(this->reactor.calls, IsEmpty());
  EXPECT_EQ(mapping.size(), size);
}

TYPED_TEST(CopyClass, TheReactorOfTheSourceHearsNothing) {
  RecordingReactor ofSource(this->other);
  this->db->template copyAll<TypeParam>(this->other);
  EXPECT_THAT(ofSource.calls, IsEmpty());
  for (const Saved& saved : this->reactor.saved) EXPECT_EQ(saved.database, this->db.get());
}

TYPED_TEST(CopyClass, WithinATransactionOfTheDestinationNothingIsCommitted) {
  const long long before = this->ownRows();
  Transaction transaction(this->db, Transaction::BeginCurrent);
  this->db->template copyAll<TypeParam>(this->other);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_EQ(this->ownRows(), before);
  transaction.commit();
  EXPECT_EQ(this->ownRows(), before + 3);
}

TYPED_TEST(CopyClass, ARollbackOfTheHostRemovesAll) {
  const Unchanged destination(this->project);
  Transaction transaction(this->db, Transaction::BeginCurrent);
  this->db->template copyAll<TypeParam>(this->other);
  transaction.rollback();
}

TYPED_TEST(CopyClass, ATransactionOfTheSourceIsSetAside) {
  const long long before = this->ownRows();
  Transaction transaction(this->other, Transaction::BeginCurrent);
  this->db->template copyAll<TypeParam>(this->other);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(this->ownRows(), before + 3) << "the destination is committed";
  transaction.rollback();
}

}  // namespace
}  // namespace tessel::test
