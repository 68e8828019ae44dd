// What ready reactors cannot help, what they hand on, and what the log of it says.

#include <stdexcept>

#include <gmock/gmock.h>

#include <tessel/reactors.h>

#include "operations/operations.h"
#include "operations/reactor_questions.h"
#include "support/message_log.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Reactor = ProjectDb::Reactor;
using ObjectInfo = Reactor::ObjectInfo;
using Question = ReactorLog::Question;
using Names = std::vector<std::string>;

// What a reactor cannot help.

class ReactorLimits : public ReactingProject {
protected:
  OdString memberOfFailure(Reactor& answers, const TsSmartPtr<PropertyNamespace>& ns) {
    db->setReactor(&answers);
    try {
      db->save(ns);
    } catch (const ObjectNotUnique& error) {
      return error.member();
    }
    return L"no failure";
  }
};

TEST_F(ReactorLimits, ANamespaceIsNotRenamedButLeftToTheNextReactor) {
  const auto existing = db->save(PropertyNamespace::create(L"Common"));
  RenameIncoming alone;
  ReactorLog log(&alone);
  EXPECT_EQ(memberOfFailure(log, PropertyNamespace::create(L"Common")), L"name");
  EXPECT_THAT(log.questions(), SizeIs(1)) << "and not six";

  KeepExisting keep;
  RenameIncoming rename(&keep);
  db->setReactor(&rename);
  EXPECT_EQ(db->save(PropertyNamespace::create(L"Common"))->id(), existing->id());
}

TEST_F(ReactorLimits, ALabelThatAThirdObjectHasEndsAfterSixAnswers) {
  db->save(PropertyNamespace::create(L"Other", L"taken"));
  const auto existing = db->save(PropertyNamespace::create(L"Common", L"old"));
  OverwriteExisting overwrite;
  ReactorLog log(&overwrite);
  EXPECT_EQ(memberOfFailure(log, PropertyNamespace::create(L"Common", L"taken")), L"PropertyNamespace.label");
  EXPECT_THAT(log.questions(), SizeIs(6));
  EXPECT_EQ(project.row("tessel_PropertyNamespace", existing->id())["label"], "old");
}

// The next reactor.

template <typename T>
class NextReactor : public ReactingProject {
protected:
  static std::unique_ptr<ForwardingReactor> before(Reactor* next) {
    if constexpr (std::is_same_v<T, OverwriteIfNewer>) {
      return std::make_unique<T>(nullptr, next);
    } else {
      return std::make_unique<T>(next);
    }
  }
};
using AllReactors =
  ::testing::Types<ForwardingReactor, KeepExisting, OverwriteExisting, RenameIncoming, OverwriteIfNewer, ReactorLog>;
TYPED_TEST_SUITE(NextReactor, AllReactors);

TYPED_TEST(NextReactor, HearsOfWhatIsSaved) {
  const auto first = this->before(&this->reactor);
  this->db->setReactor(first.get());
  const auto site = this->db->save(Site::create(L"Hill"));
  EXPECT_THAT(this->reactor.saved, ElementsAre(Saved{this->db.get(), keyOf(site), SaveResolution::Created}));
}

TYPED_TEST(NextReactor, DecidesAboutRemovals) {
  const auto first = this->before(&this->reactor);
  this->db->setReactor(first.get());
  const auto site = this->db->save(Site::create(L"Hill"));
  this->reactor.whenRemoved = [](const RecordingReactor::Removal&) { return RemoveResolution::Refuse; };
  const unsigned int id = site->id();
  EXPECT_EQ(this->db->template remove<Site>(id).outcome, RemoveResult::Refused);
  EXPECT_THAT(this->reactor.removals, ElementsAre(RecordingReactor::Removal{this->db.get(), keyOf(site)}));

  const auto alone = this->before(nullptr);
  this->db->setReactor(alone.get());
  EXPECT_EQ(this->db->template remove<Site>(id).outcome, RemoveResult::Removed);
}

TYPED_TEST(NextReactor, HearsOfFailedLoads) {
  const auto first = this->before(&this->reactor);
  this->db->setReactor(first.get());
  const auto building = this->db->save(Building::create(Site::create(L"Hill"), L"House"));
  this->project.raw().exec("UPDATE tessel_Building SET site_id = 4711");
  std::vector<TsSmartPtr<Building>> found;
  this->db->get(found);
  EXPECT_THAT(found, IsEmpty());
  EXPECT_THAT(this->reactor.failedLoads,
              ElementsAre(RecordingReactor::FailedLoad{this->db.get(), keyOf(building), L"House"}));
}

// The log.

class ReactorLogs : public ReactingProject {
protected:
  ReactorLogs() { db->setReactor(&log); }

  ReactorLog log{&reactor};
};

TEST_F(ReactorLogs, HaveAllThatIsHeard) {
  const auto building = db->save(Building::create(Site::create(L"Hill"), L"House"));
  const auto site = building->site();
  ASSERT_THAT(log.saved(), SizeIs(2));
  EXPECT_EQ(log.saved()[0].key, keyOf(site));
  EXPECT_EQ(log.saved()[1].key, keyOf(building));
  EXPECT_EQ(log.saved()[1].resolution, SaveResolution::Created);

  project.raw().exec("UPDATE tessel_Building SET site_id = 4711");
  std::vector<TsSmartPtr<Building>> found;
  db->get(found);
  ASSERT_THAT(log.failedLoads(), SizeIs(1));
  EXPECT_EQ(log.failedLoads()[0].key, keyOf(building));
  EXPECT_EQ(log.failedLoads()[0].name, L"House");

  reactor.whenRemoved = [](const RecordingReactor::Removal&) { return RemoveResolution::Refuse; };
  db->remove<Site>(site->id());
  ASSERT_THAT(log.removals(), SizeIs(1));
  EXPECT_EQ(log.removals()[0].key, keyOf(site));
  EXPECT_EQ(log.removals()[0].answer, RemoveResolution::Refuse);

  log.clear();
  EXPECT_THAT(log.saved(), IsEmpty());
  EXPECT_THAT(log.failedLoads(), IsEmpty());
  EXPECT_THAT(log.removals(), IsEmpty());
}

TEST_F(ReactorLogs, HaveARemovalWithoutAnAnswerIfItThrew) {
  const auto site = db->save(Site::create(L"Hill"));
  reactor.whenRemoved = [](const RecordingReactor::Removal&) -> RemoveResolution { throw std::domain_error("host"); };
  EXPECT_THROW(db->remove<Site>(site->id()), std::domain_error);
  ASSERT_THAT(log.removals(), SizeIs(1));
  EXPECT_EQ(log.removals()[0].answer, std::nullopt);
}

TEST_F(ReactorLogs, HaveTheQuestionsInTheirOrderEvenIfOneLeadsToAnother) {
  db->save(Site::create(L"Hill"));
  db->save(EntityType::create(L"Door"));
  reactor.answer([this](ObjectInfo& info) {
    for (int i = 0; i < 20; ++i) db->save(EntityType::create(L"Door"));
    info.setName(L"Vale");
    return SaveResolution::Renamed;
  });
  reactor.otherwise(SaveResolution::Kept);
  db->save(Site::create(L"Hill"));
  ASSERT_THAT(log.questions(), SizeIs(21));
  EXPECT_EQ(log.questions()[0], (Question{ObjectType::Site, L"Hill", SaveResolution::Renamed, L"Vale"}));
  EXPECT_EQ(log.questions()[20], (Question{ObjectType::EntityType, L"Door", SaveResolution::Kept, {}}));
  log.clear();
  EXPECT_THAT(log.questions(), IsEmpty());
}

TEST_F(ReactorLogs, HaveNoNewNameThatWasOnlyTried) {
  db->save(Site::create(L"Hill"));
  reactor.answer([](ObjectInfo& info) {
    info.setName(L"Vale");
    return SaveResolution::Kept;
  });
  db->save(Site::create(L"Hill"));
  EXPECT_THAT(log.questions(), ElementsAre(Question{ObjectType::Site, L"Hill", SaveResolution::Kept, {}}));
}

// An import.

class ImportWithReactors : public ReactingProject {
protected:
  ImportWithReactors() {
    const auto site = Site::create(L"A");
    site->set_town(L"old");
    db->save(Building::create(site, L"B"));
  }

  void import(Reactor& answers) {
    db->setReactor(&answers);
    EXPECT_THAT(importText(db, L"<p><site id='1'><name>A</name><town>new</town></site>"
                               L"<building id='2'><site id='1'/><name>B</name></building>"
                               L"<story><building id='2'/><name>G</name></story></p>"),
                SaysNothing());
    db->setReactor(nullptr);
  }

  Names sites() const { return project.raw().column("SELECT name || ' ' || town FROM tessel_Site ORDER BY id"); }

  /// The building and the site of the story.
  Names placeOfTheStory() const {
    return project.raw().column(
      "SELECT site.name || ' ' || b.name FROM tessel_Story s "
      "JOIN tessel_Building b ON b.id = s.building_id JOIN tessel_Site site ON site.id = b.site_id");
  }
};

TEST_F(ImportWithReactors, KeepsWhatIsThere) {
  KeepExisting keep;
  import(keep);
  EXPECT_EQ(sites(), Names{"A old"});
  EXPECT_EQ(placeOfTheStory(), Names{"A B"});
}

TEST_F(ImportWithReactors, OverwritesWhatIsThere) {
  OverwriteExisting overwrite;
  import(overwrite);
  EXPECT_EQ(sites(), Names{"A new"});
  EXPECT_EQ(placeOfTheStory(), Names{"A B"});
}

TEST_F(ImportWithReactors, RenamesWhatComesAndLogsIt) {
  RenameIncoming rename;
  ReactorLog log(&rename);
  import(log);
  EXPECT_EQ(sites(), (Names{"A old", "A (2) new"}));
  EXPECT_EQ(placeOfTheStory(), Names{"A (2) B"}) << "on the new site the name of the building is free";
  EXPECT_THAT(log.questions(), ElementsAre(Question{ObjectType::Site, L"A", SaveResolution::Renamed, L"A (2)"}));
}

}  // namespace
}  // namespace tessel::test
