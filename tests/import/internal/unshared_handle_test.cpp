#include <memory>

#include <gtest/gtest.h>

#include <odb/sqlite/database.hxx>

#include <tessel/project_db_import.h>

#include "database/project_db_impl.h"
#include "support/message_log.h"

namespace tessel::test {
namespace {

// A run needs a shared handle, and finds out before it reads anything.
TEST(UnsharedHandle, CannotImport) {
  auto database = std::make_unique<odb::sqlite::database>(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  ProjectDb db(ProjectDb::CtorData{L"file", database.release(), false});
  Document document(L"<p><bridge/><default_unit/></p>");
  const std::string before = document.written();
  ImportMessages messages;
  int steps = 0;
  EXPECT_THROW(
    db.importFromXml(document.root(), {false, messages.handler(), [&](std::size_t, std::size_t) { ++steps; }}),
    std::bad_weak_ptr);
  EXPECT_TRUE(messages.all().empty());
  EXPECT_EQ(steps, 0);
  EXPECT_EQ(document.written(), before);
}

}  // namespace
}  // namespace tessel::test
