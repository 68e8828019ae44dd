// What `inspect` says of a file, and whether that is what opening it does then.

#include <functional>
#include <map>
#include <ostream>
#include <set>

#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utf8.h>

#include <tessel/inspect.h>
#include <tessel/project.h>
#include <tessel/project_db.h>
#include <tessel/spatial.h>
#include <tessel/transaction.h>

#include "database/file_kinds.h"
#include "database/files.h"
#include "database/migrated.h"
#include "support/faulty_vfs.h"
#include "support/old_files.h"
#include "support/printers.h"
#include "support/raw_file.h"
#include "support/sql_trace.h"
#include "support/temp_folder.h"

namespace tessel {

static void PrintTo(FileState state, std::ostream* out) { *out << "state " << static_cast<int>(state); }
static void PrintTo(OpenOutcome outcome, std::ostream* out) { *out << "outcome " << static_cast<int>(outcome); }

namespace test {
namespace {

using ::testing::Not;

using Time = std::filesystem::file_time_type;

/// All that could be seen to have changed: what is in the folder and since when, the folder itself included.
std::map<std::string, std::pair<Time, std::string>> snapshotOf(const std::string& folder) {
  std::map<std::string, std::pair<Time, std::string>> all;
  all[""] = {std::filesystem::last_write_time(folder), ""};
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const bool readable = entry.is_regular_file();
    all[entry.path().filename()] = {std::filesystem::last_write_time(entry.path()),
                                    readable ? bytesOf(entry.path()) : ""};
  }
  return all;
}

/// While it lives, what an `OrdinaryProcess` may not see is seen.
class Suspended {
public:
  Suspended() : user_(geteuid()) { static_cast<void>(seteuid(0)); }
  Suspended(const Suspended&) = delete;
  Suspended& operator=(const Suspended&) = delete;
  ~Suspended() { static_cast<void>(seteuid(user_)); }

private:
  uid_t user_;
};

class FileOfKind : public ::testing::TestWithParam<FileKind> {
protected:
  using Open = std::function<std::shared_ptr<ProjectDb>(const OdString&)>;

  void make() {
    std::filesystem::permissions(root.path(), std::filesystem::perms::all);  // An ordinary user must get there.
    std::filesystem::create_directory(folder);
    keep = GetParam().make(path);
  }

  ~FileOfKind() override {
    keep.reset();
    if (std::filesystem::exists(folder)) {
      std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    }
  }

  Inspection inspected() { return inspect(odPath(path)); }

  auto snapshot() {
    const Suspended suspended;
    return snapshotOf(folder);
  }

  std::string content() {
    const Suspended suspended;
    return std::filesystem::is_regular_file(path) ? bytesOf(path) : "";
  }

  std::string rawVersion() {
    return RawFile(path).scalarText("SELECT version FROM schema_version WHERE name = 'tessel'");
  }

  OpenOutcome ending(const Open& open) {
    try {
      return open(odPath(path)) ? OpenOutcome::Opens : OpenOutcome::Refuses;
    } catch (const std::exception&) {
      return OpenOutcome::Throws;
    }
  }

  void expectAgreement(const Open& open) {
    make();
    const Inspection found = inspected();
    const std::string before = content();
    const OpenOutcome ended = ending(open);
    keep.reset();
    switch (found.outcome) {
    case OpenOutcome::Unknown:
      EXPECT_EQ(ended, OpenOutcome::Opens) << "these files are sound once they are settled";
      break;
    case OpenOutcome::ThrowsAfterMigration:
      EXPECT_EQ(ended, OpenOutcome::Throws);
      EXPECT_EQ(rawVersion(), "1010");
      break;
    case OpenOutcome::Opens:
      EXPECT_EQ(ended, OpenOutcome::Opens);
      if (found.state == FileState::Outdated) {
        EXPECT_EQ(rawVersion(), "1010");
      } else {
        EXPECT_TRUE(sameBytes(content(), before));
      }
      break;
    default:
      EXPECT_EQ(ended, found.outcome);
      EXPECT_TRUE(sameBytes(content(), before));
    }
  }

  TempFolder root;
  std::string folder = root.path("folder");
  std::string path = folder + "/house.tessel";
  Keep keep;
};

std::string nameOf(const ::testing::TestParamInfo<FileKind>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Unreadable, FileOfKind, ::testing::ValuesIn(unreadableKinds()), nameOf);
INSTANTIATE_TEST_SUITE_P(Refused, FileOfKind, ::testing::ValuesIn(refusedKinds()), nameOf);
INSTANTIATE_TEST_SUITE_P(Usable, FileOfKind, ::testing::ValuesIn(usableKinds()), nameOf);
INSTANTIATE_TEST_SUITE_P(Outdated, FileOfKind, ::testing::ValuesIn(outdatedKinds()), nameOf);
INSTANTIATE_TEST_SUITE_P(Journal, FileOfKind, ::testing::ValuesIn(journalKinds()), nameOf);

TEST_P(FileOfKind, IsToldAsWhatItIsAndLeftAsItWas) {
  make();
  const auto before = snapshot();
  const Inspection found = inspected();
  EXPECT_TRUE(snapshot() == before);
  const FileKind& kind = GetParam();
  EXPECT_EQ(found.state, kind.state);
  EXPECT_EQ(found.outcome, kind.outcome);
  EXPECT_EQ(found.version, kind.version);
  EXPECT_EQ(found.compatibility, kind.compatibility);
  EXPECT_EQ(found.lostSpaces, kind.lostSpaces);
  EXPECT_EQ(found.text.toUtf8(), kind.text);
}

TEST_P(FileOfKind, OpensAsForetold) {
  expectAgreement([](const OdString& name) { return ProjectDb::open(name, false); });
}

TEST_P(FileOfKind, OpensForReadingAsForetold) {
  expectAgreement([](const OdString& name) { return ProjectDb::open(name, true); });
}

TEST_P(FileOfKind, CreateEndsAlikeButWhereItMayMakeAProject) {
  const Open create = [](const OdString& name) { return ProjectDb::create(name); };
  const FileState state = GetParam().state;
  if (state != FileState::Missing && state != FileState::NoProject) return expectAgreement(create);
  make();
  const OpenOutcome ended = ending(create);
  EXPECT_NE(ended, OpenOutcome::Refuses);
  if (ended == OpenOutcome::Opens) {
    EXPECT_EQ(inspected().state, FileState::Current);
  }
}

// One file at a time.

class Inspect : public ::testing::Test {
protected:
  Inspection inspected() { return inspect(odPath(path)); }

  TempFolder folder;
  std::string path = folder.path("house.tessel");
};

TEST_F(Inspect, ThePathMustBeText) { EXPECT_THROW(inspect(OdString(u"\xD800", 1)), utf8::invalid_utf16); }

TEST_F(Inspect, AMissingFolderIsAMissingFile) {
  EXPECT_EQ(inspect(odPath(path + "/x")).state, FileState::Missing);
  writeBytes(path, "x");
  EXPECT_EQ(inspect(odPath(path + "/x")).state, FileState::Missing) << "nor is there a file behind a file";
}

TEST_F(Inspect, DatabasesWithoutAFileHaveNoProject) {
  for (const char* name : {"", ":memory:"}) {
    EXPECT_EQ(inspect(odPath(name)).state, FileState::NoProject) << name;
    EXPECT_FALSE(ProjectDb::open(odPath(name), false)) << name;
  }
}

TEST_F(Inspect, TheTextIsOneLineOfPlainCharacters) {
  RawFile(path, RawFile::Access::create)
    .exec("CREATE TABLE odd (a); PRAGMA writable_schema = 1;"
          "UPDATE sqlite_master SET name = 'Växjö' || char(10) || char(7), sql = 'CREATE TABLE odd ('");
  EXPECT_EQ(inspected().text, L"The file cannot be read: malformed database schema (V\?\?xj\?\?\?\?).");
}

TEST_F(Inspect, ATransactionOfTheThreadIsLeftCurrent) {
  OldFile(1007).withSpaces().write(path);
  const auto db = ProjectDb::create(odPath(folder.path("other.tessel")));
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"Hill"));
  EXPECT_EQ(inspected().outcome, OpenOutcome::Opens);
  EXPECT_EQ(inspect(db->filename()).state, FileState::Current) << "a handle's own file, too";
  ASSERT_TRUE(Transaction::hasCurrent());
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_EQ(db->count<Site>(), 1U);
  transaction.commit();
  EXPECT_EQ(RawFile(folder.path("other.tessel")).count("tessel_Site"), 1);
}

TEST_F(Inspect, NothingIsReadOfACurrentFileBesidesWhatOpeningReads) {
  ProjectDb::create(odPath(path));
  const auto selects = [](const SqlTrace& sql) {
    std::set<std::string> all;
    for (const std::string& statement : sql.beginningWith("SELECT")) all.insert(statement);
    return all;
  };
  std::set<std::string> opening;
  {
    SqlTrace sql;
    ProjectDb::open(odPath(path), false);
    opening = selects(sql);
  }
  SqlTrace sql;
  inspected();
  std::set<std::string> inspecting = selects(sql);
  EXPECT_EQ(inspecting.erase("SELECT compatibility FROM schema_version WHERE name=?"), 1U);
  EXPECT_EQ(inspecting, opening);
}

// Names that mean something else in a URI, which `inspect` needs for files with a log.
TEST_F(Inspect, AnyNameWillDoForAFileWithALog) {
  for (const std::string name : {"50%41?mode=ro&x=1#end", "a b", "ä", "?"}) {
    path = folder.path(name);
    ProjectDb::create(odPath(path));
    RawFile(path).exec("PRAGMA journal_mode = WAL");
    EXPECT_EQ(inspected().state, FileState::Current) << name;
    const WorkingFolder working(folder.path());
    EXPECT_EQ(inspect(odPath(name)).state, FileState::Current) << name;
    EXPECT_EQ(inspect(odPath("/" + path)).state, FileState::Current) << name;
  }
}

// Other connections.

/// Runs in another process, for locks are between processes; gives what it returned.
int elsewhere(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(Inspect, LocksOfAnotherProcessAreSeen) {
  OldFile(1005).write(path);
  for (const auto& [mode, version] : {std::pair("EXCLUSIVE", 0U), std::pair("IMMEDIATE", 1005U)}) {
    RawFile holder(path);
    holder.exec(std::string("BEGIN ") + mode);
    const OdString name = odPath(path);
    const int state = elsewhere([&name] { return static_cast<int>(inspect(name).state); });
    EXPECT_EQ(state, static_cast<int>(FileState::Locked)) << mode;
    EXPECT_EQ(inspected().version, version) << mode;
  }
}

// A process loses its locks on a file with the first descriptor of it that it closes.
TEST_F(Inspect, LocksOfThisProcessStay) {
  ProjectDb::create(odPath(path));
  RawFile holder(path);
  holder.exec("BEGIN IMMEDIATE");
  inspected();
  EXPECT_EQ(elsewhere([this] {
              try {
                RawFile(path).exec("BEGIN IMMEDIATE");
                return 0;
              } catch (const std::exception&) {
                return 1;
              }
            }),
            1)
    << "somebody else could begin to write";
}

TEST_F(Inspect, AnOpenHandleIsNotDisturbed) {
  const auto db = ProjectDb::create(odPath(path));
  EXPECT_EQ(inspected().outcome, OpenOutcome::Opens);
  EXPECT_TRUE(db->save(Site::create(L"Hill")));
  EXPECT_EQ(inspected().outcome, OpenOutcome::Opens);
}

TEST_F(Inspect, AfterTheNextOpeningAnUnsettledFileIsSettled) {
  then(current(), leftInTransaction())(path);
  ASSERT_EQ(inspected().state, FileState::Unsettled);
  ASSERT_TRUE(ProjectDb::open(odPath(path), true));
  EXPECT_EQ(inspected().state, FileState::Current);
  EXPECT_FALSE(RawFile(path).hasTable("filler"));
}

TEST_F(Inspect, ThePersonIsToldWhatIsLostThen) {
  OldFile(1006).withSpaces().write(path);
  const Inspection found = inspected();
  ASSERT_TRUE(ProjectDb::open(odPath(path), false));
  EXPECT_EQ(found.lostSpaces, 2U);
  EXPECT_EQ(inspected().lostSpaces, 0U);
  EXPECT_EQ(RawFile(path).count("tessel_SpatialStructure"), 4) << "all but these";
}

// Through a VFS.

class InspectThroughVfs : public Inspect {
protected:
  Inspection inspected() { return inspect(L"own://house.tessel"); }
  std::shared_ptr<ProjectDb> open() { return ProjectDb::open(L"own://house.tessel", false); }

  FaultyVfs vfs{"own", folder.path()};
};

TEST_F(InspectThroughVfs, ThePathIsSplitAsForOpening) {
  ProjectDb::create(odPath(path));
  EXPECT_EQ(inspected().state, FileState::Current);
  EXPECT_THAT(vfs.askedNames(), Not(::testing::IsEmpty()));
  EXPECT_THAT(vfs.askedNames(), ::testing::Each(std::string("house.tessel")));
}

TEST_F(InspectThroughVfs, AMissingFileIsMissing) { EXPECT_EQ(inspected().state, FileState::Missing); }

TEST_F(InspectThroughVfs, AnUnknownVfsIsUnreachable) {
  const Inspection found = inspect(odPath("nosuch://" + path));
  EXPECT_EQ(found.state, FileState::Unreachable);
  EXPECT_EQ(found.outcome, OpenOutcome::Refuses);
  EXPECT_EQ(found.text, L"The file cannot be opened: no such vfs: nosuch.");
}

TEST_F(InspectThroughVfs, NothingIsWritten) {
  OldFile(1007).withSpaces().write(path);
  EXPECT_EQ(inspected().lostSpaces, 2U);
  EXPECT_EQ(vfs.writes(), 0);
}

TEST_F(InspectThroughVfs, AVfsThatRefusesToWriteStopsAMigration) {
  OldFile(1005).write(path);
  vfs.protectFromWriting(true);
  EXPECT_EQ(inspected().outcome, OpenOutcome::Throws);
  EXPECT_THROW(open(), std::exception);
}

TEST_F(InspectThroughVfs, AFileThatCannotBeReadIsToldAsItOpens) {
  ProjectDb::create(odPath(path));
  vfs.failReads(SQLITE_IOERR);
  EXPECT_EQ(inspected().state, FileState::Unreachable);
  EXPECT_FALSE(open());
}

}  // namespace
}  // namespace test
}  // namespace tessel
