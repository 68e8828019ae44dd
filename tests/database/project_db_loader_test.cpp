// The list of the open project files.

#include <filesystem>

#include <gtest/gtest.h>

#include <odb/exceptions.hxx>

#include <tessel/exceptions.h>
#include <tessel/project.h>
#include <tessel/project_db_loader.h>
#include <tessel/spatial.h>
#include <tessel/transaction.h>

#include "database/files.h"
#include "support/printers.h"
#include "support/raw_file.h"
#include "support/recording_reactor.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using Result = ProjectDbLoader::Result;

class Loader : public ::testing::Test {
protected:
  Result create() { return loader.create(odPath(path)); }
  Result open(bool readOnly = false) { return loader.open(odPath(path), readOnly); }
  std::shared_ptr<ProjectDb> find() const { return loader.find(odPath(path)); }

  void makeProject() { ASSERT_TRUE(ProjectDb::create(odPath(path))); }

  TempFolder folder;
  std::string path = folder.path("house.tessel");
  ProjectDbLoader loader;
};

void expectRefused(const Result& result) {
  EXPECT_FALSE(result.first);
  EXPECT_FALSE(result.second);
}

TEST_F(Loader, TheInstanceIsOneForTheProcess) {
  EXPECT_EQ(&ProjectDbLoader::instance(), &ProjectDbLoader::instance());
  EXPECT_NE(&ProjectDbLoader::instance(), &loader);
}

TEST_F(Loader, TheInstanceKnowsNothingOfThePrivateOnes) {
  const auto db = create().first;
  EXPECT_FALSE(ProjectDbLoader::instance().find(odPath(path)));
  const Result other = ProjectDbLoader::instance().open(odPath(path), false);
  EXPECT_TRUE(other.second);
  EXPECT_NE(other.first, db);
}

TEST_F(Loader, CreateMakesTheFileAndTellsSo) {
  const auto [db, isFirst] = create();
  ASSERT_TRUE(db);
  EXPECT_TRUE(isFirst);
  EXPECT_TRUE(db->isNew());
  EXPECT_EQ(find(), db);
}

TEST_F(Loader, OpeningTwiceGivesTheSameHandleAndTellsTheFirst) {
  makeProject();
  const Result first = open(), second = open();
  ASSERT_TRUE(first.first);
  EXPECT_TRUE(first.second);
  EXPECT_EQ(second.first, first.first);
  EXPECT_FALSE(second.second);
}

TEST_F(Loader, CreateOnAnOpenFileGivesTheOpenHandle) {
  makeProject();
  const auto db = open().first;
  const Result again = create();
  EXPECT_EQ(again.first, db);
  EXPECT_FALSE(again.second);
}

TEST_F(Loader, HowAFileIsToBeOpenedCountsOnlyTheFirstTime) {
  makeProject();
  {
    const auto reading = open(true).first;
    EXPECT_TRUE(reading->isReadOnly());
    EXPECT_EQ(open(false).first, reading);
    EXPECT_EQ(create().first, reading);
  }
  const auto writing = open(false).first;
  EXPECT_FALSE(writing->isReadOnly());
  EXPECT_EQ(open(true).first, writing);
}

// The spelling of paths.

TEST_F(Loader, BackslashesAreTheSameAsSlashes) {
  const WorkingFolder working(folder.path());
  std::filesystem::create_directory("a");
  const auto db = loader.create(L"a/house.tessel").first;
  ASSERT_TRUE(db);
  EXPECT_EQ(loader.find(L"a\\house.tessel"), db);
  const Result again = loader.open(L"a\\house.tessel", false);
  EXPECT_EQ(again.first, db);
  EXPECT_FALSE(again.second);
}

TEST_F(Loader, ThePathGoesToTheFileAsGivenAndNotAsItsKey) {
  const WorkingFolder working(folder.path());
  const auto db = loader.create(L"a\\house.tessel").first;
  ASSERT_TRUE(db);
  EXPECT_EQ(db->filename(), L"a\\house.tessel");
  EXPECT_TRUE(std::filesystem::exists(folder.path("a\\house.tessel")))
    << "on this system that is a name like any other";
  EXPECT_EQ(loader.find(L"a/house.tessel"), db);
}

TEST_F(Loader, SpellingsThatDifferInCaseAreTwoHandles) {
  makeProject();
  const std::string upper = folder.path("HOUSE.TESSEL");
  std::filesystem::create_hard_link(path, upper);
  const auto db = open().first;
  const Result other = loader.open(odPath(upper), false);
  EXPECT_TRUE(other.second);
  EXPECT_NE(other.first, db);
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(other.first->count<Site>(), 1U) << "on one file";
}

TEST_F(Loader, DotsInAPathAreNotResolved) {
  makeProject();
  const auto db = open().first;
  for (const char* same : {"./house.tessel", "../", "x/../house.tessel"}) {
    EXPECT_FALSE(loader.find(odPath(folder.path(same)))) << same;
  }
  const Result other = loader.open(odPath(folder.path("./house.tessel")), false);
  EXPECT_TRUE(other.second);
  EXPECT_NE(other.first, db);
}

TEST_F(Loader, RelativeAndAbsolutePathsAreTwo) {
  makeProject();
  const WorkingFolder working(folder.path());
  const auto db = open().first;
  EXPECT_FALSE(loader.find(L"house.tessel"));
  EXPECT_TRUE(loader.open(L"house.tessel", false).second);
}

TEST_F(Loader, TheVfsBelongsToTheKey) {
  makeProject();
  const auto db = open().first;
  EXPECT_FALSE(loader.find(odPath("://" + path)));
  const Result other = loader.open(odPath("://" + path), false);
  EXPECT_TRUE(other.second);
  EXPECT_NE(other.first, db);
  EXPECT_EQ(loader.find(odPath("://" + path)), other.first);
}

TEST_F(Loader, AKeyEndsAtTheTerminator) {
  makeProject();
  const auto db = open().first;
  EXPECT_EQ(loader.find(odPath(path) + OdString(u"\0more", 5)), db);
}

// What is in the list.

TEST_F(Loader, FindOnAnUnknownPathIsNull) { EXPECT_FALSE(find()); }

TEST_F(Loader, TheListDoesNotKeepAFileOpen) {
  makeProject();
  auto db = open().first;
  EXPECT_TRUE(isOpen(path));
  db.reset();
  EXPECT_FALSE(isOpen(path));
}

TEST_F(Loader, AfterTheLastOwnerHasGoneTheFileIsOpenedAnew) {
  makeProject();
  auto db = open().first;
  db->project().set_name(L"never saved");
  db.reset();
  EXPECT_FALSE(find());
  const Result again = open();
  ASSERT_TRUE(again.first);
  EXPECT_TRUE(again.second);
  EXPECT_EQ(again.first->project().name(), L"");
  EXPECT_EQ(find(), again.first);
}

TEST_F(Loader, ARefusedFileIsNotListed) {
  expectRefused(open());
  expectRefused(open(true));
  EXPECT_FALSE(find());
  path = folder.path("nowhere") + "/house.tessel";
  expectRefused(create());
  EXPECT_FALSE(find());
}

TEST_F(Loader, ARefusalDoesNotStandInTheWayLater) {
  expectRefused(open());
  makeProject();
  EXPECT_TRUE(open().second);
}

TEST_F(Loader, ExceptionsPassAndChangeNothing) {
  writeBytes(path, std::string(4096, 'x'));
  EXPECT_THROW(create(), odb::database_exception);
  EXPECT_THROW(open(), odb::database_exception);
  EXPECT_FALSE(find());
  std::filesystem::remove(path);
  makeProject();
  EXPECT_TRUE(open().second);
}

TEST_F(Loader, ATransactionOfTheThreadMattersOnlyToFilesThatAreNotOpen) {
  makeProject();
  const auto db = open().first;
  const Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_EQ(open().first, db);
  const OdString other = odPath(folder.path("other.tessel"));
  EXPECT_THROW(loader.create(other), odb::already_in_transaction);
  EXPECT_FALSE(loader.find(other));
}

TEST_F(Loader, AHandleFromElsewhereIsUnknownHere) {
  const auto direct = ProjectDb::create(odPath(path));
  EXPECT_FALSE(find());
  const Result listed = open();
  EXPECT_TRUE(listed.second);
  EXPECT_NE(listed.first, direct);
  EXPECT_EQ(find(), listed.first);
  direct->save(Site::create(L"Hill"));
  EXPECT_EQ(listed.first->count<Site>(), 1U) << "on one file";
}

TEST_F(Loader, ItsEndTouchesNoHandle) {
  std::shared_ptr<ProjectDb> db;
  RecordingReactor reactor;
  {
    ProjectDbLoader passing;
    passing.setReactor(&reactor);
    db = passing.create(odPath(path)).first;
  }
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(reactor.saved.size(), 1U);
}

// The reactor.

class LoaderReactor : public Loader {
protected:
  // Whether the reactor hears of what happens in the file.
  bool hears(const std::shared_ptr<ProjectDb>& db) {
    reactor.clear();
    db->save(Site::create(odPath("Site " + std::to_string(++sites))));
    return !reactor.saved.empty();
  }

  RecordingReactor reactor;
  std::string otherPath = folder.path("other.tessel");
  int sites = 0;
};

TEST_F(LoaderReactor, IsTheDefaultOneAtFirst) {
  const auto db = create().first;
  db->save(Site::create(L"Hill"));
  EXPECT_THROW(db->save(Site::create(L"Hill")), ObjectNotUnique);
}

TEST_F(LoaderReactor, ReachesFilesThatAreOpenedLater) {
  loader.setReactor(&reactor);
  const auto db = create().first;
  EXPECT_TRUE(hears(db));
  const auto other = ProjectDb::create(odPath(otherPath));
  EXPECT_FALSE(hears(other));
}

TEST_F(LoaderReactor, HearsNothingOfTheOpening) {
  {
    const auto db = ProjectDb::create(odPath(path));
    db->project().set_site(Site::create(L"Hill"));
    db->saveProject();
  }
  loader.setReactor(&reactor);
  const auto db = open().first;
  ASSERT_TRUE(db);
  EXPECT_TRUE(reactor.calls.empty());
}

TEST_F(LoaderReactor, ReachesAllFilesThatAreOpen) {
  const auto db = create().first;
  const auto other = loader.create(odPath(otherPath)).first;
  EXPECT_FALSE(hears(db));
  loader.setReactor(&reactor);
  EXPECT_TRUE(hears(db));
  EXPECT_TRUE(hears(other));
}

TEST_F(LoaderReactor, NullGivesBackTheDefaultOne) {
  loader.setReactor(&reactor);
  const auto db = create().first;
  loader.setReactor(nullptr);
  EXPECT_FALSE(hears(db));
  db->save(Site::create(L"Hill"));
  EXPECT_THROW(db->save(Site::create(L"Hill")), ObjectNotUnique);
  EXPECT_FALSE(hears(loader.create(odPath(otherPath)).first)) << "for files to come, too";
}

TEST_F(LoaderReactor, PassesOverFilesThatAreClosed) {
  create();
  EXPECT_NO_THROW(loader.setReactor(&reactor));
  EXPECT_TRUE(hears(open().first)) << "it counts for the file when it is opened again";
}

TEST_F(LoaderReactor, AnOpenHandleKeepsTheReactorThatTheHostGaveIt) {
  const auto db = create().first;
  db->setReactor(&reactor);
  EXPECT_EQ(open().first, db);
  EXPECT_TRUE(hears(db));
}

}  // namespace
}  // namespace tessel::test
