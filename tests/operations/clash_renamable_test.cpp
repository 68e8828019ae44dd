// Clashes of the classes whose objects can take another name.

#include <gmock/gmock.h>

#include "operations/clash.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

// Changed objects.

template <typename T>
class ClashOfChanged : public Clash<T> {
protected:
  ClashOfChanged() {
    changed = this->existing->cloneObject();
    changeAllButTheName(*changed);
    changed->set_name(L"changed");
    changed = this->db->save(changed);
    changed->set_name(this->existing->name());
    this->startWatching();
  }

  TsSmartPtr<T> changed;
};
TYPED_TEST_SUITE(ClashOfChanged, RenamableReactorClasses, ClassNames);

TYPED_TEST(ClashOfChanged, KeptLeavesBothRows) {
  const unsigned int id = this->changed->id();
  this->reactor.answer({SaveResolution::Kept});
  const auto result = this->db->save(this->changed);
  EXPECT_EQ(result->id(), this->existing->id());
  EXPECT_EQ(this->changed->id(), id);
  EXPECT_TRUE(this->changed->isDirty());
  EXPECT_EQ(this->row(id).at("name"), "changed");
  EXPECT_EQ(this->ownRows(), 2);
}

TYPED_TEST(ClashOfChanged, RenamedEndsAsAnUpdate) {
  this->reactor.rename({L"free"});
  EXPECT_EQ(this->db->save(this->changed), this->changed);
  EXPECT_EQ(this->row(this->changed->id()).at("name"), "free");
  EXPECT_THAT(this->outcomes(), ElementsAre(Pair(keyOf(this->changed), SaveResolution::Overwritten)));
}

TYPED_TEST(ClashOfChanged, CreatedFailsAfterSixAnswers) {
  this->reactor.otherwise(SaveResolution::Created);
  EXPECT_THROW(this->db->save(this->changed), ObjectNotUnique);
  EXPECT_EQ(this->reactor.clashes.size(), 6U);
  EXPECT_EQ(this->sql.beginningWith("UPDATE \"" + std::string(Sample<TypeParam>::table)).size(), 7U);
}

TYPED_TEST(ClashOfChanged, TheFailureOfAnUpdateNamesTheColumns) {
  this->reactor.otherwise(SaveResolution::Created);
  try {
    this->db->save(this->changed);
    ADD_FAILURE();
  } catch (const ObjectNotUnique& error) {
    EXPECT_NE(error.member().find(OdString(Sample<TypeParam>::className).view()), OdString::npos);
    EXPECT_NE(error.member().find(u".name"), OdString::npos);
  }
}

// Renamed.

template <typename T>
class ClashRenamed : public Clash<T> {};
TYPED_TEST_SUITE(ClashRenamed, RenamableReactorClasses, ClassNames);

TYPED_TEST(ClashRenamed, TakesTheNewNameAndReportsCreated) {
  this->reactor.rename({L"free"});
  IdMapping mapping(this->db);
  const auto result = this->db->save(this->incoming, mapping);
  EXPECT_EQ(result, this->incoming);
  EXPECT_EQ(result->name(), L"free");
  EXPECT_FALSE(result->isDirty());
  EXPECT_THAT(this->reactor.nameWasFree, ElementsAre(true));
  EXPECT_EQ(this->row(result->id()), valuesOf(*this->incoming));
  EXPECT_EQ(this->ownRows(), 2);
  EXPECT_THAT(this->outcomes(), ElementsAre(Pair(keyOf(result), SaveResolution::Created)));
  EXPECT_EQ(this->recorded(mapping).resolution, SaveResolution::Created);
}

TYPED_TEST(ClashRenamed, ToATakenNameIsAskedAgainWithThatName) {
  const auto second = this->existing->cloneObject();
  changeAllButTheName(*second);
  changeAllButTheName(*second);
  second->set_name(L"taken too");
  this->db->save(second);
  this->startWatching();
  this->reactor.rename({L"taken too", L"free"});
  changeAllButTheName(*this->incoming);
  changeAllButTheName(*this->incoming);
  const auto result = this->db->save(this->incoming);
  EXPECT_THAT(this->reactor.nameWasFree, ElementsAre(false, true));
  ASSERT_EQ(this->reactor.clashes.size(), 2U);
  EXPECT_EQ(this->reactor.clashes[1].name, L"taken too");
  EXPECT_EQ(result->name(), L"free");
}

TYPED_TEST(ClashRenamed, WithoutANameTheSameNameClashesAgain) {
  this->reactor.otherwise(SaveResolution::Renamed);
  EXPECT_THROW(this->db->save(this->incoming), ObjectNotUnique);
  EXPECT_EQ(this->reactor.clashes.size(), 6U);
}

TYPED_TEST(ClashRenamed, OfACopyLeavesTheSourceItsName) {
  const auto source = this->other->save(makeSample<TypeParam>(1));
  this->reactor.otherwise([this](ProjectDb::Reactor::ObjectInfo& info) {
    if (info.objectType() != this->type) return SaveResolution::Kept;
    info.setName(L"free");
    return SaveResolution::Renamed;
  });
  if constexpr (std::is_same_v<TypeParam, PropertySet>) source->clear_label();
  const OdString name = source->name();
  const auto result = this->db->save(source);
  EXPECT_EQ(result->name(), L"free");
  EXPECT_EQ(source->name(), name);
}

}  // namespace
}  // namespace tessel::test
