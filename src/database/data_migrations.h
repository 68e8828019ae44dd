#pragma once

namespace odb {
class database;
}

namespace tessel {

/// The steps of the migration that look at rows. ODB's catalogue calls each between the schema statements of
/// its version and that version's clean-up. They work in the thread's current transaction and throw
/// `database_error` if a table that they read is not there.

/// To 1001: gives a file that knows only "imperial or not" its measures and units.
void migrateMetaUnit(odb::database& database);

/// To 1002: from here on the key of the project row is 1. A file with several rows is left as it is, for
/// nothing tells which one counts. A file without a row is given the default one, which fails with an ODB
/// exception: the row names columns that come only with 1009.
void migrateProjectRow(odb::database& database);

}  // namespace tessel
