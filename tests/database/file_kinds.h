#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include <tessel/inspect.h>
#include <tessel/project_db.h>

#include "database/files.h"
#include "support/old_files.h"
#include "support/raw_file.h"

namespace tessel::test {

/// Lives as long as a file is to be what it is, such as locked.
using Keep = std::shared_ptr<void>;

/// One kind of file that a path may lead to, and all that there is to be said of it.
struct FileKind {
  std::string name;
  std::function<Keep(const std::string& path)> make;
  FileState state;
  OpenOutcome outcome;
  std::string text;
  unsigned long long version = 0;
  unsigned long long compatibility = 0;
  unsigned long long lostSpaces = 0;
};

inline void PrintTo(const FileKind& kind, std::ostream* out) { *out << kind.name; }

// How files are made.

using Make = std::function<Keep(const std::string& path)>;

inline Make nothing() {
  return [](const std::string&) { return Keep(); };
}

inline Make bytes(const std::string& content) {
  return [content](const std::string& path) {
    writeBytes(path, content);
    return Keep();
  };
}

/// A database that is changed, or made, by SQL.
inline Make sql(const std::string& statements) {
  return [statements](const std::string& path) {
    RawFile(path, RawFile::Access::create).exec(statements);
    return Keep();
  };
}

inline Make current() {
  return [](const std::string& path) {
    ProjectDb::create(odPath(path));
    return Keep();
  };
}

inline Make old(const OldFile& file) {
  return [file](const std::string& path) {
    file.write(path);
    return Keep();
  };
}

/// The second step is what is kept.
inline Make then(const Make& first, const Make& second) {
  return [first, second](const std::string& path) {
    first(path);
    return second(path);
  };
}

inline Make current(const std::string& statements) { return then(current(), sql(statements)); }
inline Make old(const OldFile& file, const std::string& statements) { return then(old(file), sql(statements)); }

/// Only the first part of the file is left.
inline Make cutOff(std::uintmax_t size) {
  return [size](const std::string& path) {
    std::filesystem::resize_file(path, size);
    return Keep();
  };
}

/// The page of a table, or of the catalogue of all tables, is overwritten behind its first bytes.
inline Make overwritten(const std::string& table) {
  return [table](const std::string& path) {
    const long long page =
      table == "sqlite_master"
        ? 1
        : RawFile(path).scalarInt("SELECT rootpage FROM sqlite_master WHERE name = '" + table + "'");
    std::string content = bytesOf(path);
    const std::size_t header = page == 1 ? 100 : 0;
    content.replace(static_cast<std::size_t>(page - 1) * 4096 + header, 64, std::string(64, '\x7F'));
    writeBytes(path, content);
    return Keep();
  };
}

/// A connection stays open that has run the statements.
inline Make heldBy(const std::string& statements) {
  return [statements](const std::string& path) {
    auto file = std::make_shared<RawFile>(path);
    file->exec(statements);
    return file;
  };
}

/// As a program that was killed leaves it: what stands beside the file now stays when the connection is gone.
inline Make leftBy(const std::string& statements, const std::string& journal) {
  return [=](const std::string& path) {
    {
      RawFile file(path);
      file.exec(statements);
      std::filesystem::copy_file(path, path + "-copy");
      std::filesystem::copy_file(path + journal, path + "-copy" + journal);
    }
    std::filesystem::rename(path + "-copy", path);
    std::filesystem::rename(path + "-copy" + journal, path + journal);
    return Keep();
  };
}

/// As the last connection leaves it where it may remove nothing: an empty log and its index stay.
inline Make withEmptyLog(mode_t mode, const std::vector<std::string>& parts = {"-wal", "-shm"}) {
  return [=](const std::string& path) {
    for (const std::string& part : parts) {
      writeBytes(path + part, part == "-wal" ? std::string() : std::string(32768, '\0'));
      chmod((path + part).c_str(), mode);
    }
    return Keep();
  };
}

/// A transaction that is so large that SQLite has written a part of it before the commit.
inline Make leftInTransaction() {
  return leftBy("PRAGMA cache_size = 2; BEGIN; CREATE TABLE filler (text TEXT);"
                "WITH RECURSIVE n (i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 100)"
                " INSERT INTO filler SELECT hex(randomblob(2000)) FROM n;"
                "UPDATE schema_version SET version = 1",
                "-journal");
}

/// While it lives this process is an ordinary user in every respect.
class OrdinaryProcess {
public:
  OrdinaryProcess() : wasRoot_(geteuid() == 0) {
    if (wasRoot_ && setresuid(nobody, nobody, 0) != 0) throw std::runtime_error("cannot become an ordinary user");
  }
  OrdinaryProcess(const OrdinaryProcess&) = delete;
  OrdinaryProcess& operator=(const OrdinaryProcess&) = delete;
  ~OrdinaryProcess() {
    if (wasRoot_ && (seteuid(0) != 0 || setresuid(0, 0, 0) != 0)) std::abort();
  }

private:
  static constexpr uid_t nobody = 65534;
  bool wasRoot_;
};

inline Make withModes(mode_t folder, mode_t file) {
  return [=](const std::string& path) {
    chmod(path.c_str(), file);
    chmod(std::filesystem::path(path).parent_path().c_str(), folder);
    return std::make_shared<OrdinaryProcess>();
  };
}

inline Make readOnly() { return withModes(0755, 0444); }

// The kinds.

inline const std::string upTo = " will be brought up to 1010.";
inline const std::string without = "none of its project records has the id 1";

/// What SQLite itself refuses.
inline std::vector<FileKind> unreadableKinds() {
  using S = FileState;
  using O = OpenOutcome;
  return {
    {"Missing", nothing(), S::Missing, O::Refuses, "There is no such file."},
    {"Folder",
     [](const std::string& path) {
       std::filesystem::create_directory(path);
       return Keep();
     },
     S::Unreachable, O::Refuses, "The file cannot be opened: Is a directory."},
    {"Pipe",
     [](const std::string& path) {
       mkfifo(path.c_str(), 0644);
       return Keep();
     },
     S::Unreachable, O::Refuses, "The file cannot be opened: Illegal seek."},
    {"Forbidden", then(current(), withModes(0755, 0)), S::Unreachable, O::Refuses,
     "The file cannot be opened: Permission denied."},
    {"InForbiddenFolder", then(current(), withModes(0, 0644)), S::Unreachable, O::Refuses,
     "The file cannot be opened: Permission denied."},
    {"ShortText", bytes("hello"), S::NotADatabase, O::Throws, "The file is no SQLite database."},
    {"LongText", bytes(std::string(10000, 'x')), S::NotADatabase, O::Throws, "The file is no SQLite database."},
    {"Zeros", bytes(std::string(8192, '\0')), S::NotADatabase, O::Throws, "The file is no SQLite database."},
    {"OnlyTheFirstBytesOfADatabase", then(current(), cutOff(16)), S::NotADatabase, O::Throws,
     "The file is no SQLite database."},
    {"CutOffInTheHeader", then(current(), cutOff(60)), S::Damaged, O::Throws,
     "The file cannot be read: database disk image is malformed."},
    {"CutOffInTheFirstPage", then(current(), cutOff(1000)), S::Damaged, O::Throws,
     "The file cannot be read: database disk image is malformed."},
    {"CutOffBehindTheFirstPage", then(current(), cutOff(4096)), S::Damaged, O::Throws,
     "The file cannot be read: database disk image is malformed."},
    {"CutOffByAPage",
     [](const std::string& path) {
       current()(path);
       return cutOff(std::filesystem::file_size(path) - 4096)(path);
     },
     S::Damaged, O::Throws, "The file cannot be read: database disk image is malformed."},
    {"DamagedCatalogue", then(current(), overwritten("sqlite_master")), S::Damaged, O::Throws,
     "The file cannot be read: database disk image is malformed."},
    {"DamagedVersion", then(current(), overwritten("schema_version")), S::Damaged, O::Throws,
     "The file cannot be read: database disk image is malformed."},
    {"Locked", then(current(), heldBy("BEGIN EXCLUSIVE")), S::Locked, O::Throws,
     "The file is being written elsewhere."},
    {"LockedOld", then(old(OldFile(1005)), heldBy("BEGIN EXCLUSIVE")), S::Locked, O::Throws,
     "The file is being written elsewhere."},
  };
}

/// What is no project file, or none of a version that could be used.
inline std::vector<FileKind> refusedKinds() {
  using S = FileState;
  using O = OpenOutcome;
  const std::string none = "The database has no project.";
  const std::string versionTable = "CREATE TABLE schema_version (name TEXT, version INTEGER, migration INTEGER);";
  return {
    {"Empty", bytes(""), S::NoProject, O::Refuses, none},
    {"EmptyDatabase", sql("PRAGMA user_version = 1"), S::NoProject, O::Refuses, none},
    {"Foreign", sql("CREATE TABLE notes (text); INSERT INTO notes VALUES ('mine')"), S::NoProject, O::Refuses, none},
    {"ForeignUtf16", sql("PRAGMA encoding = 'UTF-16'; CREATE TABLE notes (text)"), S::NoProject, O::Refuses, none},
    {"VersionOfOthers", sql(versionTable + "INSERT INTO schema_version VALUES ('other', 7, 0)"), S::NoProject,
     O::Refuses, none},
    {"ForeignVersionTable",
     sql("CREATE TABLE schema_version (version TEXT, installed_on TEXT);"
         "INSERT INTO schema_version VALUES ('1.2', 'today')"),
     S::NoProject, O::Refuses, none},
    {"VersionViewOnNothing", sql("CREATE VIEW schema_version AS SELECT * FROM gone"), S::NoProject, O::Refuses, none},
    {"VersionRowDeleted", current("DELETE FROM schema_version"), S::NoProject, O::Refuses, none},
    {"VersionZero", current("UPDATE schema_version SET version = 0"), S::NoProject, O::Refuses, none},
    {"VersionNull", sql(versionTable + "INSERT INTO schema_version VALUES ('tessel', NULL, 0)"), S::NoProject,
     O::Refuses, none},
    {"VersionText", current("UPDATE schema_version SET version = 'new'"), S::NoProject, O::Refuses, none},
    {"TwoVersions", sql(versionTable + "INSERT INTO schema_version VALUES ('tessel', 1010, 0), ('tessel', 1010, 0)"),
     S::Damaged, O::Refuses, "The database says several versions."},
    {"Version1", current("UPDATE schema_version SET version = 1"), S::TooOld, O::Refuses,
     "Version 1 is too old: the oldest that can be brought up to date is 1000.", 1, 1000},
    {"Version999", current("UPDATE schema_version SET version = 999"), S::TooOld, O::Refuses,
     "Version 999 is too old: the oldest that can be brought up to date is 1000.", 999, 1000},
    {"NewerOnly", current("UPDATE schema_version SET version = 1011, compatibility = 1011"), S::TooNew, O::Refuses,
     "Version 1011 needs a library of version 1011 or later; this one has 1010.", 1011, 1011},
    {"NewerNegative", current("UPDATE schema_version SET version = 1011, compatibility = -1"), S::TooNew, O::Refuses,
     "Version 1011 needs a library of version 18446744073709551615 or later; this one has 1010.", 1011,
     18446744073709551615U},
  };
}

/// What needs no migration.
inline std::vector<FileKind> usableKinds() {
  using S = FileState;
  using O = OpenOutcome;
  const std::string now = "Version 1010, the current one.";
  const std::string fails = "Version 1010 does not open: ";
  const std::string later = " is later than 1010, but says that it can be used.";
  return {
    {"Current", current(), S::Current, O::Opens, now, 1010, 1000},
    {"CurrentOfHighCompatibility", current("UPDATE schema_version SET compatibility = 5000"), S::Current, O::Opens, now,
     1010, 5000},
    {"CurrentWithoutCompatibility", current("ALTER TABLE schema_version DROP COLUMN compatibility"), S::Current,
     O::Opens, now, 1010, 0},
    {"CurrentWithoutProject", current("DELETE FROM tessel_Project"), S::Current, O::Throws,
     fails + "it has no project record.", 1010, 1000},
    {"CurrentWithProject2", current("UPDATE tessel_Project SET id = 2"), S::Current, O::Throws, fails + without + ".",
     1010, 1000},
    {"CurrentWithLostSite", current("UPDATE tessel_Project SET site_id = 9"), S::Current, O::Throws,
     fails + "the site of its project record is not there.", 1010, 1000},
    {"CurrentWithoutProjectTable", current("DROP TABLE tessel_Project"), S::Current, O::Throws,
     fails + "no such table: tessel_Project.", 1010, 1000},
    {"CurrentWithoutAContainer", current("DROP TABLE tessel_Project_master_drawings"), S::Current, O::Throws,
     fails + "no such table: tessel_Project_master_drawings.", 1010, 1000},
    {"CurrentWithoutAnyOtherTable", current("DROP TABLE tessel_Unit"), S::Current, O::Opens, now, 1010, 1000},
    {"CurrentWithTextThatIsNone", current("UPDATE tessel_Project SET name = CAST(x'FF' AS TEXT)"), S::Current,
     O::Throws, fails + "Invalid UTF-8.", 1010, 1000},
    {"CurrentWithDamagedProject", then(current(), overwritten("tessel_Project")), S::Current, O::Throws,
     fails + "database disk image is malformed.", 1010, 1000},
    {"CurrentWithDamageElsewhere", then(current(), overwritten("tessel_Unit")), S::Current, O::Opens, now, 1010, 1000},
    {"CurrentReadOnly", then(current(), readOnly()), S::Current, O::Opens, now, 1010, 1000},
    {"CurrentInReadOnlyFolder", then(current(), withModes(0555, 0444)), S::Current, O::Opens, now, 1010, 1000},
    {"CurrentReserved", then(current(), heldBy("BEGIN IMMEDIATE")), S::Current, O::Opens, now, 1010, 1000},
    {"CurrentBeingRead", then(current(), heldBy("BEGIN; SELECT * FROM schema_version")), S::Current, O::Opens, now,
     1010, 1000},
    {"NewerButCompatible", current("UPDATE schema_version SET version = 1011"), S::Newer, O::Opens,
     "Version 1011" + later, 1011, 1000},
    {"NewerJustCompatible", current("UPDATE schema_version SET version = 1011, compatibility = 1010"), S::Newer,
     O::Opens, "Version 1011" + later, 1011, 1010},
    {"NewerOfNoCompatibility", current("UPDATE schema_version SET version = 2000, compatibility = 0"), S::Newer,
     O::Opens, "Version 2000" + later, 2000, 0},
    {"NewerWithoutCompatibility",
     current("UPDATE schema_version SET version = 1011;"
             "ALTER TABLE schema_version DROP COLUMN compatibility"),
     S::Newer, O::Throws, "Version 1011 does not say which library can use it: no such column: compatibility.", 1011},
    {"NewerWithoutProject", current("UPDATE schema_version SET version = 1011; DELETE FROM tessel_Project"), S::Newer,
     O::Throws, "Version 1011 does not open: it has no project record.", 1011, 1000},
    {"NewerReadOnly", then(current("UPDATE schema_version SET version = 1011"), readOnly()), S::Newer, O::Opens,
     "Version 1011" + later, 1011, 1000},
    {"NegativeVersion", current("UPDATE schema_version SET version = -1"), S::Newer, O::Opens,
     "Version 18446744073709551615" + later, 18446744073709551615U, 1000},
  };
}

/// What must be migrated.
inline std::vector<FileKind> outdatedKinds() {
  using S = FileState;
  using O = OpenOutcome;
  const std::string cannot = " cannot be brought up to 1010: ";
  const std::string inVain = " will be brought up to 1010, but does not open then: ";
  std::vector<FileKind> kinds = {
    {"SpacesAt1006", old(OldFile(1006).withSpaces()), S::Outdated, O::Opens,
     "Version 1006" + upTo + " 2 spaces will be lost.", 1006, 0, 2},
    {"SpacesAt1007", old(OldFile(1007).withSpaces()), S::Outdated, O::Opens,
     "Version 1007" + upTo + " 2 spaces will be lost.", 1007, 0, 2},
    {"OneSpace", old(OldFile(1007).withSpaces(), "DELETE FROM tessel_Space WHERE id = 6"), S::Outdated, O::Opens,
     "Version 1007" + upTo + " 1 space will be lost.", 1007, 0, 1},
    {"SpacesInVain", old(OldFile(1007).withSpaces().projects({7})), S::Outdated, O::ThrowsAfterMigration,
     "Version 1007" + inVain + without + ". 2 spaces will be lost.", 1007, 0, 2},
    {"SpacesThatStay", old(OldFile(1007).withSpaces(), "DROP TABLE tessel_PropertySet"), S::Outdated, O::Throws,
     "Version 1007" + cannot + "no such table: tessel_PropertySet.", 1007, 0, 0},
    {"WithoutSpaceTable", old(OldFile(1007), "DROP TABLE tessel_Space"), S::Outdated, O::Throws,
     "Version 1007" + cannot + "no such table: tessel_Space.", 1007},
    {"Project7At1000", old(OldFile(1000).projects({7})), S::Outdated, O::Opens, "Version 1000" + upTo, 1000},
    {"Project7At1001", old(OldFile(1001).projects({7})), S::Outdated, O::Opens, "Version 1001" + upTo, 1001},
    {"Project7At1002", old(OldFile(1002).projects({7})), S::Outdated, O::ThrowsAfterMigration,
     "Version 1002" + inVain + without + ".", 1002},
    {"NoProjectAt1000", old(OldFile(1000).projects({})), S::Outdated, O::Throws,
     "Version 1000" + cannot + "it has no project record.", 1000},
    {"NoProjectAt1001", old(OldFile(1001).projects({})), S::Outdated, O::Throws,
     "Version 1001" + cannot + "it has no project record.", 1001},
    {"NoProjectAt1002", old(OldFile(1002).projects({})), S::Outdated, O::ThrowsAfterMigration,
     "Version 1002" + inVain + "it has no project record.", 1002},
    {"Projects3And7", old(OldFile(1001).projects({3, 7})), S::Outdated, O::ThrowsAfterMigration,
     "Version 1001" + inVain + without + ".", 1001},
    {"Projects1And7", old(OldFile(1001).projects({1, 7})), S::Outdated, O::Opens, "Version 1001" + upTo, 1001},
    {"LostSite", old(OldFile(1003), "UPDATE tessel_Project SET site_id = 9"), S::Outdated, O::ThrowsAfterMigration,
     "Version 1003" + inVain + "the site of its project record is not there.", 1003},
    {"NoMetaAt1000", old(OldFile(1000), "DROP TABLE tessel_Meta"), S::Outdated, O::Throws,
     "Version 1000" + cannot + "no such table: tessel_Meta.", 1000},
    {"NoMetaAt1001", old(OldFile(1001), "DROP TABLE tessel_Meta"), S::Outdated, O::Opens, "Version 1001" + upTo, 1001},
    {"NoSiteTable", old(OldFile(1004), "DROP TABLE tessel_Site"), S::Outdated, O::Throws,
     "Version 1004" + cannot + "no such table: tessel_Site.", 1004},
    {"ColumnThereAlready", old(OldFile(1004), "ALTER TABLE tessel_Project ADD COLUMN sheets_folder TEXT"), S::Outdated,
     O::Throws, "Version 1004" + cannot + "duplicate column name: sheets_folder.", 1004},
    {"OldWithCompatibility", old(OldFile(1008), "ALTER TABLE schema_version ADD COLUMN compatibility DEFAULT 1007"),
     S::Outdated, O::Opens, "Version 1008" + upTo, 1008, 1007},
    {"OldWithFiveVersionColumns",
     old(OldFile(1008), "ALTER TABLE schema_version ADD COLUMN a;"
                        "ALTER TABLE schema_version ADD COLUMN b"),
     S::Outdated, O::Throws, "Version 1008" + cannot + "no such column: compatibility.", 1008},
    {"OldReadOnly", then(old(OldFile(1005)), readOnly()), S::Outdated, O::Throws,
     "Version 1005" + cannot + "it cannot be written.", 1005},
    {"OldInReadOnlyFolder", then(old(OldFile(1005)), withModes(0555, 0666)), S::Outdated, O::Throws,
     "Version 1005" + cannot + "it cannot be written.", 1005},
    {"OldReserved", then(old(OldFile(1005)), heldBy("BEGIN IMMEDIATE")), S::Locked, O::Throws,
     "Version 1005" + cannot + "it is being written elsewhere.", 1005},
  };
  for (int version = 1000; version < 1010; ++version) {
    const std::string name = std::to_string(version);
    const auto number = static_cast<unsigned long long>(version);
    kinds.push_back(
      {"Old" + name, old(OldFile(version).withContent()), S::Outdated, O::Opens, "Version " + name + upTo, number});
  }
  return kinds;
}

/// Files that are, or were, written by way of a journal.
inline std::vector<FileKind> journalKinds() {
  using S = FileState;
  using O = OpenOutcome;
  const std::string unsettled = "A part of the file stands in a journal beside it, which the next opening settles.";
  const std::string stuck =
    "A part of the file stands in a journal beside it, which permissions keep from being settled.";
  const std::string now = "Version 1010, the current one.";
  const Make logged = sql("PRAGMA journal_mode = WAL");
  const std::string noLog = "The file needs a write-ahead log, which cannot be made beside it.";
  const std::string change = "UPDATE tessel_Project SET name = 'in the log'";
  return {
    {"HotJournal", then(current(), leftInTransaction()), S::Unsettled, O::Unknown, unsettled},
    {"HotJournalOfAnOldFile", then(old(OldFile(1005)), leftInTransaction()), S::Unsettled, O::Unknown, unsettled},
    {"HotJournalReadOnly", then(then(current(), leftInTransaction()), readOnly()), S::Unsettled, O::Throws, stuck},
    {"ColdJournal", then(current("PRAGMA journal_mode = PERSIST; UPDATE tessel_Project SET name = 'x'"), nothing()),
     S::Current, O::Opens, now, 1010, 1000},
    {"Logged", then(current(), logged), S::Current, O::Opens, now, 1010, 1000},
    {"LoggedOld", then(old(OldFile(1007).withSpaces()), logged), S::Outdated, O::Opens,
     "Version 1007" + upTo + " 2 spaces will be lost.", 1007, 0, 2},
    {"LoggedReadOnly", then(then(current(), logged), withModes(0777, 0444)), S::Current, O::Opens, now, 1010, 1000},
    {"LoggedInReadOnlyFolder", then(then(current(), logged), withModes(0555, 0444)), S::Unreachable, O::Throws, noLog},
    {"LoggedWithLogInReadOnlyFolder", then(then(then(current(), logged), withEmptyLog(0666)), withModes(0555, 0666)),
     S::Current, O::Opens, now, 1010, 1000},
    {"LoggedWithReadOnlyLogInReadOnlyFolder",
     then(then(then(current(), logged), withEmptyLog(0444)), withModes(0555, 0444)), S::Current, O::Opens, now, 1010,
     1000},
    {"LoggedWithForbiddenLogInReadOnlyFolder",
     then(then(then(current(), logged), withEmptyLog(0)), withModes(0555, 0666)), S::Unreachable, O::Throws, noLog},
    {"LoggedWithLogOnlyInReadOnlyFolder",
     then(then(then(current(), logged), withEmptyLog(0666, {"-wal"})), withModes(0555, 0666)), S::Unreachable,
     O::Throws, noLog},
    {"LoggedWithIndexOnlyInReadOnlyFolder",
     then(then(then(current(), logged), withEmptyLog(0666, {"-shm"})), withModes(0555, 0666)), S::Unreachable,
     O::Throws, noLog},
    {"LoggedOldWithLogInReadOnlyFolder",
     then(then(then(old(OldFile(1007).withSpaces()), logged), withEmptyLog(0666)), withModes(0555, 0666)), S::Outdated,
     O::Opens, "Version 1007" + upTo + " 2 spaces will be lost.", 1007, 0, 2},
    {"LoggedOldWithReadOnlyLogInReadOnlyFolder",
     then(then(then(old(OldFile(1007)), logged), withEmptyLog(0444)), withModes(0555, 0666)), S::Outdated, O::Throws,
     "Version 1007 cannot be brought up to 1010: it cannot be written.", 1007},
    {"LogInUse", then(then(current(), logged), heldBy(change)), S::Unsettled, O::Unknown, unsettled},
    {"LogLeft", then(then(current(), logged), leftBy(change, "-wal")), S::Unsettled, O::Unknown, unsettled},
    {"LogLeftByReadOnlyFile", then(then(then(current(), logged), leftBy(change, "-wal")), withModes(0777, 0444)),
     S::Unsettled, O::Unknown, unsettled},
    {"LogLeftInReadOnlyFolder", then(then(then(current(), logged), leftBy(change, "-wal")), withModes(0555, 0444)),
     S::Unsettled, O::Throws, stuck},
  };
}

inline std::vector<FileKind> allFileKinds() {
  std::vector<FileKind> all;
  for (const auto& kinds : {unreadableKinds(), refusedKinds(), usableKinds(), outdatedKinds(), journalKinds()}) {
    all.insert(all.end(), kinds.begin(), kinds.end());
  }
  return all;
}

}  // namespace tessel::test
