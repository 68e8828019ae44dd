// Rows that refer to rows which are not there.

#include <gmock/gmock.h>

#include <odb/exceptions.hxx>

#include <tessel/transaction.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using FailedLoad = RecordingReactor::FailedLoad;

/// Those that refer to an object which they cannot do without.
template <typename T>
struct RefersToOthers : std::bool_constant<!std::is_same_v<T, Site> && !std::is_same_v<T, Measure> &&
                                           !std::is_same_v<T, EntityType> && !std::is_same_v<T, PropertyNamespace>> {};
using ReferringClasses = Filter<RefersToOthers, SampledClasses>::type;

template <typename T>
class FailedLoads : public ReactingProject {
protected:
  FailedLoads() {
    whole = db->save(makeSample<T>(1));
    broken = db->save(makeSample<T>(2));
    startWatching();
  }

  /// The column of the reference that every object of the class has.
  static std::string reference() {
    if (std::is_same_v<T, Building>) return "site_id";
    if (std::is_same_v<T, Story>) return "building_id";
    if (std::is_same_v<T, Unit>) return "measure_id";
    return "namespace_id";
  }

  void breakReference(const std::string& column = reference()) {
    project.raw().exec("UPDATE \"" + std::string(Sample<T>::table) + "\" SET \"" + column +
                       "\" = 4711 WHERE id = " + std::to_string(broken->id()));
  }

  /// The key under which the broken row stands now.
  auto brokenKey() {
    auto key = Sample<T>::key(*broken);
    if constexpr (!std::is_same_v<decltype(key), NameKey>) key.object_id = 4711;
    return key;
  }

  FailedLoad report() const {
    const OdString name =
      std::is_same_v<T, Unit> ? OdString::format(L"Unit:%ud", broken->id()) : OdString(broken->name());
    return {db.get(), keyOf(broken), name};
  }

  std::vector<unsigned int> listed() {
    std::vector<TsSmartPtr<T>> objects;
    db->get(objects);
    std::vector<unsigned int> ids;
    for (const auto& object : objects) ids.push_back(object->id());
    return ids;
  }

  TsSmartPtr<T> whole;
  TsSmartPtr<T> broken;
};
TYPED_TEST_SUITE(FailedLoads, ReferringClasses, ClassNames);

TYPED_TEST(FailedLoads, AListLeavesTheRowOutAndTellsTheReactor) {
  this->breakReference();
  EXPECT_THAT(this->listed(), ElementsAre(this->whole->id()));
  EXPECT_THAT(this->reactor.failedLoads, ElementsAre(this->report()));
  EXPECT_THAT(this->reactor.calls, SizeIs(1));
}

TYPED_TEST(FailedLoads, ByKeyTheResultIsNullAndTheReactorIsTold) {
  this->breakReference();
  EXPECT_FALSE(this->db->template get<TypeParam>(this->brokenKey()));
  EXPECT_THAT(this->reactor.failedLoads, ElementsAre(this->report()));
  EXPECT_TRUE(this->db->template get<TypeParam>(Sample<TypeParam>::key(*this->whole)));
}

TYPED_TEST(FailedLoads, ByIdTheExceptionOfOdbPasses) {
  this->breakReference();
  EXPECT_THROW(this->db->template get<TypeParam>(this->broken->id()), odb::object_not_persistent);
  EXPECT_THAT(this->reactor.calls, IsEmpty());
  EXPECT_TRUE(this->db->template get<TypeParam>(this->whole->id()));
}

TYPED_TEST(FailedLoads, ACountStillCountsTheRow) {
  const auto before = this->db->template count<TypeParam>();
  this->breakReference();
  EXPECT_EQ(this->db->template count<TypeParam>(), before);
  EXPECT_THAT(this->reactor.calls, IsEmpty());
}

TYPED_TEST(FailedLoads, WithTheDefaultReactorNobodyIsTold) {
  this->breakReference();
  this->db->setReactor(nullptr);
  EXPECT_THAT(this->listed(), ElementsAre(this->whole->id()));
  EXPECT_THAT(this->reactor.calls, IsEmpty());
}

TYPED_TEST(FailedLoads, WithinATransactionItGoesOn) {
  this->breakReference();
  Transaction transaction(this->db, Transaction::BeginCurrent);
  EXPECT_THAT(this->listed(), ElementsAre(this->whole->id()));
  EXPECT_FALSE(transaction.finalized());
  this->db->save(makeSample<TypeParam>(3));
  EXPECT_THAT(this->listed(), SizeIs(2));
  transaction.commit();
}

TYPED_TEST(FailedLoads, AllRowsMayBeBroken) {
  this->breakReference();
  std::swap(this->whole, this->broken);
  this->project.raw().exec("DROP INDEX IF EXISTS \"tessel_Unit_measure_label_i\"");
  this->breakReference();
  EXPECT_THAT(this->listed(), IsEmpty());
  EXPECT_THAT(this->reactor.failedLoads, SizeIs(2));
}

TYPED_TEST(FailedLoads, AMendedRowIsLoadedAgain) {
  this->breakReference();
  this->listed();
  const auto reference = Sample<TypeParam>::references(*this->broken).at(0);
  this->project.raw().exec("UPDATE \"" + std::string(Sample<TypeParam>::table) + "\" SET \"" +
                           TestFixture::reference() + "\" = " + std::to_string(reference->id()) +
                           " WHERE id = " + std::to_string(this->broken->id()));
  EXPECT_THAT(this->listed(), SizeIs(2));
}

class FailedLoadsSpecial : public ReactingProject {
protected:
  template <typename T>
  std::size_t listed() {
    std::vector<TsSmartPtr<T>> objects;
    db->get(objects);
    return objects.size();
  }
};

TEST_F(FailedLoadsSpecial, AUnitIsReportedByItsClassAndItsIdWithALetterBehind) {
  const auto measure = db->save(Measure::create(L"SPEED", 1, 0, -1, 0, 0, 0, 0));
  db->save(Unit::create(L"m/s", 1, measure));
  project.raw().exec("UPDATE tessel_Unit SET id = 12; DELETE FROM tessel_Measure WHERE name = 'SPEED'");
  EXPECT_EQ(listed<Unit>(), 0U);
  ASSERT_THAT(reactor.failedLoads, SizeIs(1));
  EXPECT_EQ(reactor.failedLoads[0].name, L"Unit:12d");
  EXPECT_EQ(reactor.failedLoads[0].key, (ObjectKey{ObjectType::Unit, 12}));
}

TEST_F(FailedLoadsSpecial, ASpatialStructureIsReportedByItsClassAndItsIdWithALetterBehind) {
  const auto building = db->save(Building::create(db->save(Site::create(L"Hill")), L"House"));
  project.raw().exec("UPDATE tessel_Building SET site_id = 99");
  startWatching();
  EXPECT_EQ(listed<SpatialStructure>(), 1U) << "the site";
  ASSERT_THAT(reactor.failedLoads, SizeIs(1));
  EXPECT_EQ(reactor.failedLoads[0].name, OdString::format(L"SpatialStructure:%dd", building->id()));
  EXPECT_EQ(reactor.failedLoads[0].key, (ObjectKey{ObjectType::SpatialStructure, building->id()}));
}

TEST_F(FailedLoadsSpecial, WhatIsMissingFurtherAwayIsReportedOfTheRowItself) {
  const auto story = db->save(makeSample<Story>(1));
  project.raw().exec("UPDATE tessel_Building SET site_id = 99");
  startWatching();
  EXPECT_EQ(listed<Story>(), 0U);
  ASSERT_THAT(reactor.failedLoads, SizeIs(1));
  EXPECT_EQ(reactor.failedLoads[0].key, keyOf(story));
  EXPECT_EQ(reactor.failedLoads[0].name, story->name());
}

// The name of the row is read through a view, not from the object that could not be made.
TEST_F(FailedLoadsSpecial, TheNameIsReadByAQueryOfItsOwn) {
  db->save(Building::create(db->save(Site::create(L"Hill")), L"House"));
  project.raw().exec("UPDATE tessel_Building SET site_id = 99");
  startWatching();
  listed<Building>();
  EXPECT_THAT(sql.beginningWith("SELECT \"tessel_Building\".\"name\" FROM \"tessel_Building\""), SizeIs(1));
}

TEST_F(FailedLoadsSpecial, AClashWithABrokenRowThatIsToBeKeptIsNotFound) {
  const auto ns = db->save(PropertyNamespace::create(L"Common"));
  const auto definition = PropertyDefinition::create(ns, L"Width");
  definition->set_unit(makeSample<Unit>(1));
  db->save(definition);
  project.raw().exec("UPDATE tessel_PropertyDefinition SET unit_id = 99");
  reactor.otherwise(SaveResolution::Kept);
  EXPECT_THROW(db->save(PropertyDefinition::create(ns, L"Width")), ObjectNotFound);
  reactor.otherwise(SaveResolution::Overwritten);
  EXPECT_THROW(db->save(PropertyDefinition::create(ns, L"Width")), ObjectNotFound);
  EXPECT_EQ(rows("tessel_PropertyDefinition"), 1);
}

}  // namespace
}  // namespace tessel::test
