#pragma once

#include <tessel/export.h>
#include <tessel/platform/od_string.h>

namespace tessel {

/// What kind of file a path leads to.
enum class FileState {
  Missing,       ///< There is no file.
  Unreachable,   ///< There is something, but it is no file, may not be opened, or the VFS of the path is not known.
  Locked,        ///< Another program, or another handle of this one, is writing.
  Unsettled,     ///< A journal beside the file holds a part of it. Only an opening that may write can settle that.
  NotADatabase,  ///< Not an SQLite file.
  Damaged,       ///< An SQLite file that cannot be read, such as one that was cut off.
  NoProject,     ///< A database without a project, such as an empty file. `ProjectDb::create` makes one in it.
  TooOld,        ///< Of a version below the oldest that can be brought up to date.
  Outdated,      ///< Of an older version; opening brings it up to date.
  Current,       ///< Of the version that this library writes.
  Newer,         ///< Of a later version, which says that this library may use it. It would be opened as it stands.
  TooNew,        ///< Of a later version, which asks for a later library.
};

/// How `ProjectDb::open` would end. `ProjectDb::create` ends alike, save that it may make a project where the state is
/// `Missing` or `NoProject`.
enum class OpenOutcome {
  Opens,                 ///< With a handle.
  Refuses,               ///< With a null handle; the file stays as it is.
  Throws,                ///< With an exception; the file stays as it is.
  ThrowsAfterMigration,  ///< With an exception, but the file was brought up to date for good before.
  Unknown,               ///< It shows only when the file was settled; see `FileState::Unsettled`.
};

/// What `inspect` has found.
struct Inspection {
  /// What kind of file it is.
  FileState state = FileState::Missing;

  /// How opening it would end.
  OpenOutcome outcome = OpenOutcome::Refuses;

  unsigned long long version = 0;        ///< Of the file's schema; 0 if there is none or it cannot be read.
  unsigned long long compatibility = 0;  ///< The version from which on a library may use the file; 0 if it says none.
  unsigned long long lostSpaces = 0;     ///< How many spaces the migration of the file would drop for good.
  OdString text;                         ///< All that for a person, and why: one line of plain English.
};

/// Tells what `ProjectDb::open` would do with a file and why, without a change to the file, its time or its folder.
///
///     const Inspection found = inspect(L"house.tessel");
///     if (found.lostSpaces > 0 && !confirm(found.text)) return;
///     auto db = ProjectDb::open(L"house.tessel", false);
///
/// The path is one as `ProjectDb::open` takes it, with or without a VFS. It tells of this moment: what another program
/// does later is not foreseen, nor that another one is just reading, which makes a migration fail at its very end.
///
/// Of a file of an older version all is copied into a temporary database, in memory or in the folder for temporary
/// files if it is large, and the copy is opened in earnest. Of all others only that is read what opening them reads,
/// which takes the same short time whatever their size. So damage is found only where opening would meet it; looking
/// for it elsewhere takes as long as reading the whole file.
///
/// A file with a rollback journal that a killed program has left, or with a write-ahead log that is in use or was left,
/// is `Unsettled`: to say more it would have to be written. On a read-only medium opening such a file throws, otherwise
/// the outcome is unknown.
///
/// For any thread. The thread's current transaction is left as it is, and the answer is that for a thread without one:
/// within a transaction opening always throws. Throws `utf8::invalid_utf16` for a path that is no text, and
/// `std::bad_alloc`.
TESSEL_API Inspection inspect(const OdString& path);

}  // namespace tessel
