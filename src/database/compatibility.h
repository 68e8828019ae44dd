#pragma once

#include <cstdint>

struct sqlite3;

namespace tessel {

/// Writes into the file which is the oldest build that may still use it: `writtenCompatibility`, whatever
/// stood there. Adds the column to `schema_version` where ODB's form of the table lacks it. Run after the
/// schema was created or migrated, in the same transaction. It is no step of the catalogue, because ODB does
/// not know the column. Throws `database_error` if there is no `schema_version` that can be read, or if a
/// failure has ended the transaction; any other failure to write is passed over.
void setCompatibility(sqlite3* connection);

/// Whether more than one row of `schema_version` is of our name, which only a damaged or foreign table can hold. ODB ends
/// the process over such a table, so it is asked for first. A failure counts as no: who reads the version meets it again.
bool hasSeveralVersions(sqlite3* connection);

/// The oldest build that may use this file, told by its current version; 0 if the file has no row of ours.
/// Throws `database_error` if there is no such column. The file is only read.
std::uint64_t readCompatibility(sqlite3* connection);

}  // namespace tessel
