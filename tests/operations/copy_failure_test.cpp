// Copies that fail in the middle.

#include <gmock/gmock.h>

#include <tessel/project.h>

#include "operations/copying.h"
#include "support/faulty_vfs.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ObjectInfo = ProjectDb::Reactor::ObjectInfo;

/// Something that a host throws, of no relation to our exceptions.
struct Interrupted {};

class CopyFailure : public Copying {
protected:
  CopyFailure() {
    foreignStory(L"Ground", 0);
    const auto set = PropertySet::create(PropertyNamespace::create(L"Common"), L"Door");
    set->append_property_definition(L"Width", PropertyType::Single(PropertyType::Type::Double));
    set->insert_entity_type(L"Door");
    other->save(set);
    useUnit(other, L"VOLUME", L"l", 0.001);
    startWatching();
  }

  /// Throws at the saved object of this number, from 0 on.
  void interruptAt(std::size_t number) {
    reactor.saved.clear();
    reactor.whenSaved = [this, number](const Saved&) {
      if (reactor.saved.size() == number + 1) throw Interrupted();
    };
  }
};

TEST_F(CopyFailure, WhateverOnSavedThrowsAndWhenTheDestinationStaysAsItWas) {
  const Unchanged source(otherProject);
  std::size_t interruptions = 0;
  for (bool interrupted = true; interrupted;) {
    SCOPED_TRACE(interruptions);
    const std::string before = bytesOf(project.path());
    interruptAt(interruptions);
    interrupted = false;
    try {
      db->copyAll(other);
    } catch (const Interrupted&) {
      interrupted = true;
      ++interruptions;
      EXPECT_TRUE(bytesOf(project.path()) == before);
      EXPECT_FALSE(Transaction::hasCurrent());
    }
  }
  EXPECT_EQ(interruptions, 12U) << "eight objects and four measures";
  EXPECT_EQ(rows("tessel_Story"), 1) << "and in the end it succeeds";
  EXPECT_EQ(rows("tessel_DefaultUnit"), 1);
}

TEST_F(CopyFailure, WhateverOnSavedThrowsCopyMetaLeavesTheDestinationAsItWas) {
  useUnit(other, L"LENGTH", L"m", 1);
  other->project().set_site(other->get<Site>(NameKey(L"Hill")));
  const Unchanged source(otherProject);
  const Unchanged destination(project);
  for (const std::size_t number : {0U, 1U, 2U}) {
    interruptAt(number);
    EXPECT_THROW(db->copyMeta(other), Interrupted);
  }
}

TEST_F(CopyFailure, WhatOnNameNotUniqueThrowsPassesAndTheDestinationStaysAsItWas) {
  db->save(EntityType::create(L"Door"));
  startWatching();
  reactor.otherwise([](ObjectInfo&) -> SaveResolution { throw Interrupted(); });
  const Unchanged source(otherProject);
  const Unchanged destination(project);
  EXPECT_THROW(db->copyAll(other), Interrupted);
  EXPECT_EQ(reactor.saved.size(), 3U) << "site, building and story came before";
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(CopyFailure, TheSameHandlesCopyAgainAfterwards) {
  interruptAt(4);
  EXPECT_THROW(db->copyAll(other), Interrupted);
  reactor.whenSaved = nullptr;
  db->copyAll(other);
  EXPECT_EQ(rows("tessel_PropertySet"), 1);
  EXPECT_EQ(db->columnUnit(&Site::ref_elevation), nullptr);
}

// Faults of the source.

TEST_F(CopyFailure, ARowOfTheSourceThatRefersToNothingIsLeftOutAndItsReactorIsTold) {
  const auto broken = foreignStory(L"Broken", 0);
  otherProject.raw().exec("UPDATE tessel_Story SET building_id = 4711 WHERE name = 'Broken'");
  RecordingReactor ofSource(other);
  db->copyAll(other);
  EXPECT_THAT(inFile("name", "Story"), ElementsAre("Ground"));
  ASSERT_THAT(ofSource.failedLoads, SizeIs(1));
  EXPECT_EQ(ofSource.failedLoads[0].key, keyOf(broken));
  EXPECT_EQ(ofSource.failedLoads[0].database, other.get());
  EXPECT_THAT(reactor.failedLoads, IsEmpty());
}

TEST_F(CopyFailure, ATableThatIsMissingInTheSourceIsADatabaseException) {
  otherProject.raw().exec("DROP TABLE tessel_Measure");
  const Unchanged destination(project);
  EXPECT_THROW(db->copyAll(other), DatabaseException);
  EXPECT_THROW(db->copyAll<Measure>(other), DatabaseException);
}

TEST_F(CopyFailure, ASourceThatIsLockedInTheMiddleIsADatabaseException) {
  RawFile locker = otherProject.raw();
  reactor.whenSaved = [&](const Saved& saved) {
    if (saved.key.type == ObjectType::Story) locker.exec("BEGIN EXCLUSIVE");
  };
  const Unchanged destination(project);
  EXPECT_THROW(db->copyAll(other), DatabaseException);
  locker.exec("ROLLBACK");
}

class CopyFromFaultyDisk : public CopyFailure {
protected:
  CopyFromFaultyDisk() { source = ProjectDb::open(odPath(disk.path("sample.tessel")), false); }

  FaultyVfs disk{"faulty-source", std::filesystem::path(otherProject.path()).parent_path()};
  std::shared_ptr<const ProjectDb> source;
};

TEST_F(CopyFromFaultyDisk, ASourceThatCannotBeReadInTheMiddleIsADatabaseException) {
  for (const ObjectType last : {ObjectType::Site, ObjectType::Story, ObjectType::EntityType, ObjectType::PropertySet}) {
    const Unchanged destination(project);
    reactor.whenSaved = [&](const Saved& saved) {
      if (saved.key.type == last) disk.failReads(SQLITE_IOERR_READ);
    };
    EXPECT_THROW(db->copyAll(source), DatabaseException) << static_cast<int>(last);
    EXPECT_FALSE(Transaction::hasCurrent());
    disk.repair();
  }
  reactor.whenSaved = nullptr;
  db->copyAll(source);
  EXPECT_EQ(rows("tessel_Story"), 1);
}

TEST_F(CopyFromFaultyDisk, NothingIsEverWrittenToTheSource) {
  const int before = disk.writes();
  db->copyAll(source);
  EXPECT_EQ(disk.writes(), before);
}

// Hosts may let go of the source while it is copied.
TEST_F(CopyFailure, TheSourceLivesAsLongAsItIsCopied) {
  std::shared_ptr<const ProjectDb> source = std::exchange(otherProject.db, nullptr);
  house = nullptr;
  const std::weak_ptr<const ProjectDb> watched = source;
  reactor.whenSaved = [&](const Saved&) {
    source.reset();
    EXPECT_FALSE(watched.expired());
  };
  db->copyAll(source);
  EXPECT_EQ(rows("tessel_Story"), 1);
  EXPECT_EQ(rows("tessel_DefaultUnit"), 1);
  EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace tessel::test
