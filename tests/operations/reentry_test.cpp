// Reactors that call back into the database which calls them.

#include <gmock/gmock.h>

#include <odb/exceptions.hxx>

#include <tessel/transaction.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ObjectInfo = ProjectDb::Reactor::ObjectInfo;

class Reentry : public ReactingProject {
protected:
  TsSmartPtr<Site> hill = db->save(Site::create(L"Hill"));

  template <typename T>
  std::size_t listed() {
    std::vector<TsSmartPtr<T>> objects;
    db->get(objects);
    return objects.size();
  }
};

// From onNameNotUnique.

TEST_F(Reentry, ACandidateIsLookedForInALoop) {
  for (int i = 2; i < 6; ++i) db->save(Site::create(OdString::format(L"Hill %d", i)));
  int tried = 0;
  reactor.answer([&tried](ObjectInfo& info) {
    const OdString name = info.name();
    for (int i = 2; !info.setName(OdString::format(L"%ls %d", name.toWide().c_str(), i)); ++i) ++tried;
    return SaveResolution::Renamed;
  });
  EXPECT_EQ(db->save(Site::create(L"Hill"))->name(), L"Hill 6");
  EXPECT_EQ(tried, 4);
  EXPECT_EQ(reactor.clashes.size(), 1U);
}

TEST_F(Reentry, LookupsOfAllKindsSeeTheTransaction) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Vale"));
  reactor.answer([this](ObjectInfo& info) {
    EXPECT_EQ(db->count<Site>(), 2U);
    EXPECT_EQ(db->count<SpatialStructure>(), 2U) << "the refused row has been taken back";
    EXPECT_EQ(listed<Site>(), 2U);
    EXPECT_TRUE(db->get<Site>(NameKey(L"Hill")));
    EXPECT_TRUE(db->get<Site>(NameKey(L"Vale")));
    EXPECT_FALSE(db->get<Site>(NameKey(L"Shore")));
    EXPECT_TRUE(db->get<Site>(hill->id()));
    EXPECT_THROW(db->get<Site>(99), odb::object_not_persistent);
    EXPECT_FALSE(info.setName(L"Vale"));
    EXPECT_TRUE(info.setName(L"Shore"));
    return SaveResolution::Renamed;
  });
  EXPECT_EQ(db->save(Site::create(L"Hill"))->name(), L"Shore");
  transaction.commit();
  EXPECT_EQ(rows("tessel_Site"), 3);
}

TEST_F(Reentry, TheReactorMayMakeRoomItself) {
  reactor.answer([this](ObjectInfo& info) {
    const auto taken = db->get<Site>(NameKey(info.name()));
    taken->set_name(L"Hill of old");
    db->save(taken);
    return SaveResolution::Created;
  });
  const auto site = db->save(Site::create(L"Hill"));
  EXPECT_EQ(site->name(), L"Hill");
  EXPECT_THAT(project.raw().column("SELECT name FROM tessel_Site ORDER BY name"), ElementsAre("Hill", "Hill of old"));
}

TEST_F(Reentry, ASaveWithinTheQuestionMayClashItself) {
  reactor.answer([this](ObjectInfo&) {
    EXPECT_THROW(db->save(Site::create(L"Hill")), ObjectNotUnique);
    return SaveResolution::Kept;
  });
  reactor.answer([](ObjectInfo&) -> SaveResolution { throw ObjectNotUnique(L"inner"); });
  EXPECT_EQ(db->save(Site::create(L"Hill"))->id(), hill->id());
  EXPECT_EQ(reactor.clashes.size(), 2U);
  EXPECT_EQ(rows("tessel_Site"), 1);
}

TEST_F(Reentry, AnotherDatabaseMayBeAsked) {
  SampleProject otherProject;
  otherProject.db->save(Site::create(L"Vale"));
  reactor.answer([&](ObjectInfo& info) {
    const auto site = otherProject.db->get<Site>(NameKey(L"Vale"));
    EXPECT_TRUE(info.setName(site->name()));
    return SaveResolution::Renamed;
  });
  EXPECT_EQ(db->save(Site::create(L"Hill"))->name(), L"Vale");
}

TEST_F(Reentry, TheReactorMayBeReplacedWithinTheQuestion) {
  RecordingReactor second;
  second.otherwise(SaveResolution::Kept);
  reactor.answer([&](ObjectInfo&) {
    db->setReactor(&second);
    return SaveResolution::Created;
  });
  EXPECT_EQ(db->save(Site::create(L"Hill"))->id(), hill->id());
  EXPECT_EQ(second.clashes.size(), 1U);
  EXPECT_EQ(second.saved.size(), 1U);
  db->setReactor(nullptr);
}

// From onSaved.

TEST_F(Reentry, LookupsFromOnSavedSeeTheNewRow) {
  reactor.whenSaved = [this](const Saved& saved) {
    EXPECT_TRUE(db->get<SpatialStructure>(saved.key.id));
    EXPECT_TRUE(db->get<Site>(NameKey(L"Vale")));
    EXPECT_EQ(db->count<Site>(), 2U);
    EXPECT_EQ(listed<Site>(), 2U);
  };
  db->save(Building::create(Site::create(L"Vale"), L"House"));
  EXPECT_EQ(rows("tessel_Building"), 1);
}

TEST_F(Reentry, ASaveFromOnSavedIsOfTheSameTransaction) {
  reactor.whenSaved = [&](const Saved& saved) {
    if (saved.key.type == ObjectType::Building) db->save(Site::create(L"Shore"));
  };
  EXPECT_THROW(db->save(Building::create(Site::create(), L"House")), DatabaseException) << "its site has no row";
  EXPECT_EQ(rows("tessel_Site"), 1) << "the shore has gone with it";
  db->save(Building::create(hill, L"House"));
  EXPECT_EQ(rows("tessel_Site"), 2);
}

TEST_F(Reentry, TheLastOwnerOfTheDatabaseMayGoFromOnSaved) {
  std::weak_ptr<ProjectDb> weak = db;
  // A reactor that is not asked when the database goes, for it does not know it.
  RecordingReactor last;
  db->setReactor(&last);
  last.whenSaved = [this](const Saved&) { db.reset(); };
  ProjectDb& handle = *db;
  EXPECT_TRUE(handle.save(Site::create(L"Vale")));
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(rows("tessel_Site"), 2);
}

// From onLoadFailed.

/// Asks again, once, whatever it is told to ask.
class Asking : public ProjectDb::Reactor {
public:
  explicit Asking(std::function<void()> question) : question_(std::move(question)) {}

  void onLoadFailed(const std::shared_ptr<const ProjectDb>&, const ObjectKey& key, const OdString&) override {
    failed.push_back(key);
    if (std::exchange(isWithin_, true)) return;
    question_();
    isWithin_ = false;
  }

  std::vector<ObjectKey> failed;

private:
  std::function<void()> question_;
  bool isWithin_ = false;
};

class ReentryOfLookups : public Reentry {
protected:
  ReentryOfLookups() {
    for (const wchar_t* name : {L"A", L"B", L"C"}) buildings.push_back(db->save(Building::create(hill, name)));
    project.raw().exec("UPDATE tessel_Building SET site_id = 99 WHERE name IN ('A', 'B')");
  }
  ~ReentryOfLookups() override { db->setReactor(&reactor); }

  BuildingCriteria named(const wchar_t* name) const {
    BuildingCriteria criteria;
    criteria.name.equals(name);
    return criteria;
  }

  std::vector<TsSmartPtr<Building>> buildings;
};

TEST_F(ReentryOfLookups, ALookupByKeyMayBeAskedAgain) {
  const NameObjectKey<Site> broken(L"A", 99), whole(L"C", hill->id());
  Asking asking([&] {
    EXPECT_FALSE(db->get<Building>(broken)) << "the very same";
    EXPECT_TRUE(db->get<Building>(whole)) << "by the same statement";
    EXPECT_TRUE(db->get<Site>(NameKey(L"Hill")));
  });
  db->setReactor(&asking);
  EXPECT_FALSE(db->get<Building>(broken));
  EXPECT_EQ(asking.failed.size(), 2U);
  EXPECT_TRUE(db->get<Building>(whole));
}

TEST_F(ReentryOfLookups, AListMayBeAskedAgain) {
  std::vector<TsSmartPtr<Building>> inner;
  Asking asking([&] { db->get(inner); });
  db->setReactor(&asking);
  std::vector<TsSmartPtr<Building>> outer;
  db->get(outer);
  ASSERT_EQ(outer.size(), 1U);
  EXPECT_EQ(outer[0]->name(), L"C");
  ASSERT_EQ(inner.size(), 2U) << "asked again at each of the two";
  EXPECT_EQ(inner[0]->name(), L"C");
}

TEST_F(ReentryOfLookups, AListMayBeAskedWithinALookupByKeyAndTheReverse) {
  const NameObjectKey<Site> whole(L"C", hill->id());
  Asking asking([&] {
    std::vector<TsSmartPtr<Building>> all;
    db->get(all);
    EXPECT_EQ(all.size(), 1U);
    EXPECT_EQ(db->get<Building>(whole)->name(), L"C");
    EXPECT_EQ(db->count<Building>(), 3U);
    EXPECT_EQ(db->get<Building>(buildings[2]->id())->name(), L"C");
  });
  db->setReactor(&asking);
  EXPECT_FALSE(db->get<Building>(NameObjectKey<Site>(L"A", 99)));
  std::vector<TsSmartPtr<Building>> all;
  db->get(all);
  EXPECT_EQ(all.size(), 1U);
}

TEST_F(ReentryOfLookups, TextsOfOtherLengthsInTheMiddleOfAListDoNoHarm) {
  const OdString longName = OdString::fromUtf8(std::string(5000, 'x'));
  const auto last = db->save(Building::create(hill, L"D"));
  last->set_description(longName);
  last->save();
  bool once = true;
  Asking asking([&] {
    if (!std::exchange(once, false)) return;
    db->save(Building::create(db->save(Site::create(longName)), longName));
    EXPECT_EQ(db->get<Site>(NameKey(longName))->name(), longName);
  });
  db->setReactor(&asking);
  const Transaction transaction(db, Transaction::BeginCurrent);
  std::vector<TsSmartPtr<Building>> all;
  db->get(all);
  ASSERT_GE(all.size(), 2U);
  EXPECT_EQ(all[0]->name(), L"C");
  EXPECT_EQ(all[1]->name(), L"D");
  EXPECT_EQ(all[1]->description(), longName);
}

TEST_F(ReentryOfLookups, TheRowMayBeMendedWithinTheReport) {
  Asking asking([&] {
    const auto vale = db->save(Site::create(L"Vale"));
    EXPECT_EQ(db->count<Site>(), 2U);
    EXPECT_TRUE(vale->id());
  });
  db->setReactor(&asking);
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_FALSE(db->get<Building>(NameObjectKey<Site>(L"A", 99)));
  transaction.commit();
  EXPECT_EQ(rows("tessel_Site"), 2);
}

TEST_F(ReentryOfLookups, WhatOnLoadFailedThrowsPasses) {
  Asking asking([] { throw std::domain_error("host"); });
  db->setReactor(&asking);
  std::vector<TsSmartPtr<Building>> all;
  EXPECT_THROW(db->get(all), std::domain_error);
  EXPECT_FALSE(Transaction::hasCurrent());
  Asking second([] { throw std::domain_error("host"); });
  db->setReactor(&second);
  EXPECT_THROW(db->get<Building>(NameObjectKey<Site>(L"A", 99)), std::domain_error);
  db->setReactor(&reactor);
  db->get(all);
  EXPECT_EQ(all.size(), 1U) << "the look-ups go on working";
}

}  // namespace
}  // namespace tessel::test
