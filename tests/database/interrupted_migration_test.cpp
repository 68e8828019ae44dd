// Migrations that are cut short: by a disk that fails at any moment, by a failure that is passed over by design, and by
// the end of the process. Whatever happens, a file is of its old version with all it held, or of the new one.

#include <csignal>
#include <cstring>
#include <functional>
#include <ostream>
#include <set>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <odb/exceptions.hxx>

#include <tessel/exceptions.h>
#include <tessel/inspect.h>
#include <tessel/project_db.h>
#include <tessel/units.h>

#include "database/files.h"
#include "database/migrated.h"
#include "support/faulty_vfs.h"
#include "support/old_files.h"
#include "support/raw_file.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

using ::testing::Values;

class Interrupted : public ::testing::Test {
protected:
  void write(const OldFile& file) {
    file.write(path);
    before = contentOf(path);
    bytes = bytesOf(path);
  }

  void writeAgain() { writeBytes(path, bytes); }

  TempFolder folder;
  std::string path = folder.path("old.tessel");
  Content before;
  std::string bytes;
};

/// As `contentOf`, but what a journal says is undone first.
Content contentOfSettled(const std::string& path) {
  RawFile file(path);
  return readContent(file);
}

/// Files that between them take every step and have something to lose in each.
OldFile fileOf(int version) {
  OldFile file(version);
  if (version == 1006 || version == 1007) file.withSpaces();
  return file.withContent();
}

class InterruptedAt : public Interrupted, public ::testing::WithParamInterface<int> {};

const auto versions = Values(1000, 1001, 1005, 1007, 1009);

std::string versionName(const ::testing::TestParamInfo<int>& info) { return std::to_string(info.param); }

// A disk that fails once. When it works again SQLite would go on, so this is worse than one that stays broken.

class FailingDisk : public InterruptedAt {
protected:
  /// Opens with the n-th write, truncation or sync failing, if there are as many; whether it failed.
  bool opensInSpiteOf(int failing, int result) {
    int count = 0;
    FaultyVfs vfs("failing", folder.path());
    vfs.beforeWrite([&] {
      ++count;
      vfs.failWrites(count == failing ? result : SQLITE_OK);
      vfs.failSyncs(count == failing ? result : SQLITE_OK);
    });
    try {
      return ProjectDb::open(L"failing://old.tessel", false) != nullptr;
    } catch (const std::exception&) {
      return false;
    }
  }

  void expectOldOrNewAtEachFailure(int result) {
    write(fileOf(GetParam()));
    int failing = 0, inARow = 0;
    // Some failures are without consequences, as that of a truncation; a row of these is the end.
    while (inARow < 10) {
      ++failing;
      writeAgain();
      const bool opened = opensInSpiteOf(failing, result);
      inARow = opened ? inARow + 1 : 0;
      SCOPED_TRACE("write " + std::to_string(failing) + (opened ? " opened" : " failed"));
      if (!opened) {
        ASSERT_EQ(contentOfSettled(path).at("schema_version").rows, before.at("schema_version").rows);
        // Reading has undone what was half done.
        ASSERT_TRUE(sameBytes(bytesOf(path), bytes));
        ASSERT_TRUE(ProjectDb::open(odPath(path), false));
      }
      expectMigrated(path, before);
      ASSERT_FALSE(HasFailure());
    }
    EXPECT_GT(failing, 20) << "a migration takes more writes than that";
  }
};

INSTANTIATE_TEST_SUITE_P(From, FailingDisk, versions, versionName);

TEST_P(FailingDisk, ThatIsFullOnceLeavesTheOldFileOrTheNewOne) { expectOldOrNewAtEachFailure(SQLITE_FULL); }

TEST_P(FailingDisk, ThatFailsOnceLeavesTheOldFileOrTheNewOne) { expectOldOrNewAtEachFailure(SQLITE_IOERR_WRITE); }

TEST_P(FailingDisk, ThatStaysFullLeavesTheOldFile) {
  write(fileOf(GetParam()));
  for (int passing = 0; passing < 10; ++passing) {
    writeAgain();
    {
      FaultyVfs vfs("full", folder.path());
      vfs.letPass(passing);
      vfs.failWrites(SQLITE_FULL);
      EXPECT_THROW(ProjectDb::open(L"full://old.tessel", false), std::exception) << passing;
    }
    contentOfSettled(path);
    EXPECT_TRUE(sameBytes(bytesOf(path), bytes)) << passing;
  }
}

// Failures that are passed over by design. Each of them may have ended the transaction.

/// Ends each transaction at a statement that begins with the given words, as a full disk does: the statement fails, all
/// before it is undone, and the connection works on. One at a time.
class EndAt {
public:
  explicit EndAt(const char* statement) {
    words = statement;
    hits = 0;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(&connected));
  }
  EndAt(const EndAt&) = delete;
  EndAt& operator=(const EndAt&) = delete;
  ~EndAt() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&connected)); }

  int count() const { return hits; }

private:
  static int connected(sqlite3* connection, char**, const void*) {
    return sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, &begins, connection);
  }

  // An interrupted writing statement takes its transaction along.
  static int begins(unsigned, void* connection, void*, void* statement) {
    if (std::strncmp(static_cast<const char*>(statement), words, std::strlen(words)) != 0) return 0;
    ++hits;
    sqlite3_interrupt(static_cast<sqlite3*>(connection));
    return 0;
  }

  static inline const char* words = "";
  static inline int hits = 0;
};

struct PassedOver {
  const char* name;
  int version;
  const char* statement;
};

void PrintTo(const PassedOver& failure, std::ostream* out) { *out << failure.statement; }

class FailurePassedOver : public Interrupted, public ::testing::WithParamInterface<PassedOver> {};

INSTANTIATE_TEST_SUITE_P(In, FailurePassedOver,
                         Values(PassedOver{"ProjectRow", 1001, "UPDATE \"tessel_Project\" SET \"id\"=1"},
                                PassedOver{"ColumnUnits", 1000, "INSERT INTO \"tessel_ColumnUnit\""},
                                PassedOver{"CompatibilityColumn", 1009, "ALTER TABLE \"schema_version\"  ADD COLUMN"},
                                PassedOver{"Compatibility", 1009, "UPDATE schema_version  SET compatibility"}),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(FailurePassedOver, IsNotIfItHasEndedTheTransaction) {
  write(fileOf(GetParam().version));
  {
    const EndAt end(GetParam().statement);
    EXPECT_THROW(ProjectDb::open(odPath(path), false), std::exception);
    EXPECT_EQ(end.count(), 1) << "nothing is tried again in no transaction";
  }
  EXPECT_TRUE(sameBytes(bytesOf(path), bytes));
  ASSERT_TRUE(ProjectDb::open(odPath(path), false));
  expectMigrated(path, before);
}

TEST_F(Interrupted, ANewFileIsNotHalfMadeIfItsCompatibilityEndsTheTransaction) {
  {
    const EndAt end("UPDATE schema_version  SET compatibility");
    EXPECT_THROW(ProjectDb::create(odPath(path)), std::exception);
  }
  EXPECT_EQ(std::filesystem::file_size(path), 0U);
  EXPECT_TRUE(ProjectDb::create(odPath(path))->isNew());
}

TEST_F(Interrupted, ADefaultUnitIsNotHalfSetIfItsColumnsEndTheTransaction) {
  std::shared_ptr<ProjectDb> db;
  {
    const EndAt end("INSERT INTO \"tessel_ColumnUnit\"");
    db = ProjectDb::create(odPath(path));
    const auto length = db->get<Measure>(NameKey(L"LENGTH"));
    EXPECT_THROW(db->setDefaultUnit(Unit::create(L"mm", 0.001, length)), ForcedRollback);
    EXPECT_EQ(end.count(), 1);
  }
  RawFile file(path);
  for (const char* table : {"tessel_Unit", "tessel_DefaultUnit", "tessel_ColumnUnit"}) {
    EXPECT_EQ(file.count(table), 0) << table;
  }
}

// The end of the process.

class Killed : public InterruptedAt {
protected:
  /// Opens in another process that is killed at its n-th write; whether it came to that.
  bool isKilledAt(int write) {
    const pid_t child = fork();
    if (child == 0) openAndDieAt(write);
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFSIGNALED(status)) {
      EXPECT_EQ(WTERMSIG(status), SIGKILL);
      return true;
    }
    EXPECT_EQ(WEXITSTATUS(status), 0) << "the opening failed by itself";
    return false;
  }

private:
  [[noreturn]] void openAndDieAt(int write) {
    int status = 1;
    try {
      FaultyVfs vfs("dying", folder.path());
      vfs.beforeWrite([&write] {
        if (--write == 0) std::raise(SIGKILL);
      });
      status = ProjectDb::open(L"dying://old.tessel", false) ? 0 : 2;
    } catch (...) {
    }
    _exit(status);
  }
};

INSTANTIATE_TEST_SUITE_P(From, Killed, versions, versionName);

TEST_P(Killed, AtAnyWriteLeavesAFileThatOpensAndMigrates) {
  std::set<FileState> found;
  int instant = 0;
  write(fileOf(GetParam()));
  for (bool killed = true; killed;) {
    writeAgain();
    killed = isKilledAt(++instant);
    SCOPED_TRACE("write " + std::to_string(instant));
    found.insert(inspect(odPath(path)).state);
    {
      const auto db = ProjectDb::open(odPath(path), false);
      ASSERT_TRUE(db);
      ASSERT_EQ(db->version(), 1010U);
    }
    EXPECT_FALSE(std::filesystem::exists(path + "-journal"));
    expectMigrated(path, before);
    ASSERT_FALSE(HasFailure());
  }
  EXPECT_GT(instant, 20) << "a migration takes more writes than that";
  // Before anything was written to the file itself; in the middle of it; and behind the commit.
  EXPECT_EQ(found, (std::set<FileState>{FileState::Unsettled, FileState::Outdated, FileState::Current}));
}

// What was begun is not seen by who reads in between, either: it finds the old file.
TEST_P(Killed, ReadersFindTheOldFile) {
  int instant = 0;
  write(fileOf(GetParam()));
  for (bool killed = true; killed;) {
    writeAgain();
    killed = isKilledAt(++instant);
    if (killed) {
      ASSERT_EQ(describe(contentOfSettled(path)), describe(before)) << "write " << instant;
      ASSERT_TRUE(sameBytes(bytesOf(path), bytes)) << "write " << instant;
    }
  }
}

}  // namespace
}  // namespace tessel::test
