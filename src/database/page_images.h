#pragma once

#include <odb/exceptions.hxx>
#include <odb/sqlite/connection.hxx>
#include <odb/sqlite/transaction.hxx>

namespace tessel {

/// While it lives, the savepoints of the thread's current transaction keep their images of changed pages in memory, unless
/// the transaction has written already.
///
/// Otherwise the first savepoint that changes more than 64 KiB of pages, as that of a property set does, makes SQLite
/// write the images to a temporary file for the rest of the transaction. Small savepoints are a fifth faster without:
/// memory is then taken in many small pieces. The project file is the same either way.
class PageImagesInMemory {
public:
  PageImagesInMemory() { odb::sqlite::transaction::current().connection().execute("PRAGMA temp_store=MEMORY"); }

  /// A removal may have ended the transaction, and its connection with it.
  ~PageImagesInMemory() {
    if (!odb::transaction::has_current()) return;
    try {
      odb::sqlite::transaction::current().connection().execute("PRAGMA temp_store=DEFAULT");
    } catch (const odb::exception&) {
      // Slower, no more.
    }
  }
  PageImagesInMemory(const PageImagesInMemory&) = delete;
  PageImagesInMemory& operator=(const PageImagesInMemory&) = delete;
};

}  // namespace tessel
