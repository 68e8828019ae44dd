#pragma once

#include <sqlite3.h>

#include <odb/sqlite/connection.hxx>
#include <odb/sqlite/transaction.hxx>

namespace tessel {

/// Holds the mutex of the thread's current connection. SQLite takes it for each column of each row, which is an eighth of a
/// look-up as long as nobody holds it already. To be let go before code of the host runs.
class ConnectionLock {
public:
  ConnectionLock() : mutex_(sqlite3_db_mutex(odb::sqlite::transaction::current().connection().handle())) {
    sqlite3_mutex_enter(mutex_);
  }
  ~ConnectionLock() { sqlite3_mutex_leave(mutex_); }
  ConnectionLock(const ConnectionLock&) = delete;
  ConnectionLock& operator=(const ConnectionLock&) = delete;

private:
  sqlite3_mutex* mutex_;
};

}  // namespace tessel
