// The routine behind create and open, where the two do not show everything.

#include <gtest/gtest.h>

#include "database/files.h"
#include "database/open_database.h"
#include "database/schema.h"
#include "support/raw_file.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

class OpenDatabase : public ::testing::Test {
protected:
  OpenResult open(int flags) { return openDatabase(odPath(path), flags); }

  TempFolder folder;
  std::string path = folder.path("house.tessel");
};

TEST_F(OpenDatabase, CreateTellsThatTheFileIsNewOnce) {
  EXPECT_TRUE(open(OpenFlags::Create).isNew);
  const OpenResult again = open(OpenFlags::Create);
  EXPECT_TRUE(again.database);
  EXPECT_FALSE(again.isNew);
}

TEST_F(OpenDatabase, ARefusalIsNullAndNotNew) {
  const OpenResult refused = open(0);
  EXPECT_FALSE(refused.database);
  EXPECT_FALSE(refused.isNew);
}

TEST_F(OpenDatabase, TheFlagBitsAreOneAndTwo) {
  EXPECT_EQ(OpenFlags::Create, 1);
  EXPECT_EQ(OpenFlags::ReadOnly, 2);
}

// The two together do not make a file, because the first phase asks for exactly Create.
TEST_F(OpenDatabase, CreateForReadingMakesNoFile) {
  EXPECT_FALSE(open(OpenFlags::Create | OpenFlags::ReadOnly).database);
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(OpenDatabase, CreateForReadingMakesAProjectInAnExistingFileAndReopensIt) {
  writeBytes(path, "");
  const OpenResult made = open(OpenFlags::Create | OpenFlags::ReadOnly);
  ASSERT_TRUE(made.database);
  EXPECT_TRUE(made.isNew);
  EXPECT_EQ(made.database->flags(), SQLITE_OPEN_READONLY);
  EXPECT_EQ(RawFile(path).count("tessel_Measure"), 4);
}

TEST_F(OpenDatabase, TheFlagsForSqliteAreTheDocumentedOnes) {
  EXPECT_EQ(open(OpenFlags::Create).database->flags(), 0x50006);
  EXPECT_EQ(open(0).database->flags(), 0x50002);
  EXPECT_EQ(open(OpenFlags::ReadOnly).database->flags(), 1);
}

TEST_F(OpenDatabase, ForeignKeysAreEnabled) {
  EXPECT_TRUE(open(OpenFlags::Create).database->foreign_keys());
  EXPECT_TRUE(open(0).database->foreign_keys());
  EXPECT_TRUE(open(OpenFlags::ReadOnly).database->foreign_keys());
}

TEST_F(OpenDatabase, TheVersionIsKnownAfterwards) {
  EXPECT_EQ(open(OpenFlags::Create).database->schema_version(schemaName), 1010U);
  EXPECT_EQ(open(OpenFlags::ReadOnly).database->schema_version(schemaName), 1010U);
}

}  // namespace
}  // namespace tessel::test
