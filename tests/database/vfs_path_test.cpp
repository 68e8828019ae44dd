// Paths of the form "vfs://file".

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tessel/exceptions.h>
#include <tessel/project_db.h>
#include <tessel/spatial.h>

#include "database/files.h"
#include "support/faulty_vfs.h"
#include "support/printers.h"
#include "support/raw_file.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class VfsPath : public ::testing::Test {
protected:
  TempFolder folder;
  FaultyVfs vfs{"own", folder.path()};
};

TEST_F(VfsPath, GivesSqliteTheFileNameBehindTheSeparatorAndTheVfsBeforeIt) {
  ASSERT_TRUE(ProjectDb::create(L"own://house.tessel"));
  EXPECT_THAT(vfs.askedNames(), Not(IsEmpty()));
  EXPECT_THAT(vfs.askedNames(), Each(std::string("house.tessel")));
  EXPECT_TRUE(std::filesystem::exists(folder.path("house.tessel")));
}

TEST_F(VfsPath, TheHandleKeepsTheWholeText) {
  EXPECT_EQ(ProjectDb::create(L"own://house.tessel")->filename(), L"own://house.tessel");
  EXPECT_EQ(ProjectDb::open(L"own://house.tessel", false)->filename(), L"own://house.tessel");
  EXPECT_EQ(ProjectDb::open(L"own://house.tessel", true)->filename(), L"own://house.tessel");
}

TEST_F(VfsPath, OnlyTheFirstSeparatorSplits) {
  std::filesystem::create_directory(folder.path("a:"));
  const auto db = ProjectDb::create(L"own://a://b");
  ASSERT_TRUE(db);
  EXPECT_THAT(vfs.askedNames(), Each(std::string("a://b")));
  EXPECT_TRUE(std::filesystem::exists(folder.path("a:/b")));
}

TEST_F(VfsPath, ReadingOnlyGoesThroughTheSameVfs) {
  ASSERT_TRUE(ProjectDb::create(L"own://house.tessel"));
  const std::size_t before = vfs.openingFlags().size();
  const auto db = ProjectDb::open(L"own://house.tessel", true);
  ASSERT_TRUE(db);
  EXPECT_THAT(vfs.askedNames(), Each(std::string("house.tessel")));
  EXPECT_EQ(vfs.openingFlags().size(), before + 2) << "once for writing, once for reading";
  EXPECT_TRUE(db->isReadOnly());
}

TEST_F(VfsPath, AnUnknownVfsIsRefused) {
  EXPECT_FALSE(ProjectDb::create(odPath("nosuch://" + folder.path("house.tessel"))));
  EXPECT_FALSE(ProjectDb::open(odPath("nosuch://" + folder.path("house.tessel")), false));
  EXPECT_THAT(vfs.askedNames(), IsEmpty());
}

TEST_F(VfsPath, AnEmptyVfsNameIsTheDefaultOne) {
  const OdString path = odPath("://" + folder.path("house.tessel"));
  const auto db = ProjectDb::create(path);
  ASSERT_TRUE(db);
  EXPECT_EQ(db->filename(), path);
  EXPECT_TRUE(std::filesystem::exists(folder.path("house.tessel")));
  EXPECT_THAT(vfs.askedNames(), IsEmpty());
}

TEST_F(VfsPath, AColonWithOneSlashIsAPlainFileName) {
  const WorkingFolder working(folder.path());
  std::filesystem::create_directory("own:");
  ASSERT_TRUE(ProjectDb::create(L"own:/house.tessel"));
  EXPECT_TRUE(std::filesystem::exists(folder.path("own:/house.tessel")));
  EXPECT_THAT(vfs.askedNames(), IsEmpty());
}

TEST_F(VfsPath, CreateAsksForAFileToBeMadeAndOpenDoesNot) {
  ASSERT_TRUE(ProjectDb::create(L"own://house.tessel"));
  ASSERT_TRUE(ProjectDb::open(L"own://house.tessel", false));
  ASSERT_TRUE(ProjectDb::open(L"own://house.tessel", true));
  std::vector<int> flags = vfs.openingFlags();
  for (int& flag : flags) flag &= SQLITE_OPEN_READONLY | SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  EXPECT_THAT(flags, ElementsAre(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,  // create
                                 SQLITE_OPEN_READWRITE,                       // open
                                 SQLITE_OPEN_READWRITE, SQLITE_OPEN_READONLY  // open for reading
                                 ));
}

// The handle asks SQLite and not how it was opened.
TEST_F(VfsPath, AFileThatTheVfsRefusesToOpenForWritingIsReadOnly) {
  ASSERT_TRUE(ProjectDb::create(L"own://house.tessel"));
  vfs.protectFromWriting(true);
  const auto db = ProjectDb::open(L"own://house.tessel", false);
  ASSERT_TRUE(db);
  EXPECT_TRUE(db->isReadOnly());
  EXPECT_TRUE(ProjectDb::create(L"own://house.tessel")->isReadOnly());
  EXPECT_THROW(db->save(Site::create(L"Hill")), DatabaseException);
}

}  // namespace
}  // namespace tessel::test
