#include <functional>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include <odb/sqlite/database.hxx>

#include <tessel/transaction.h>

#include "database/files.h"
#include "database/project_db_impl.h"
#include "support/samples.h"

namespace tessel::test {
namespace {

ProjectDb::CtorData dataOf(const SampleProject& project) {
  auto database = std::make_unique<odb::sqlite::database>(project.path(), SQLITE_OPEN_READWRITE);
  return {odPath(project.path()), database.release(), false};
}

void expectRefused(const SampleProject& project, const std::vector<std::function<void()>>& operations) {
  const std::string before = bytesOf(project.path());
  for (std::size_t i = 0; i < operations.size(); ++i) {
    EXPECT_THROW(operations[i](), std::bad_weak_ptr) << "operation " << i;
  }
  EXPECT_FALSE(Transaction::hasCurrent());
  EXPECT_TRUE(bytesOf(project.path()) == before);
}

// A reactor is given a shared pointer to the handle, so without one no row may go.
TEST(UnsharedHandle, CannotRemoveOrPurge) {
  const SampleProject project;
  const auto site = project.db->save(Site::create(L"Hill"));
  const unsigned int id = site->id();
  ProjectDb alone(dataOf(project));
  expectRefused(project, {
                           [&] { alone.remove(site); },
                           [&] { alone.remove<Site>(id); },
                           [&] { alone.remove<Site>(std::set<unsigned int>{id}); },
                           [&] {
                             alone.remove(std::set<ObjectKey>{{ObjectType::Site, id}});
                           },
                           [&] { alone.purge<Site>(); },
                           [&] { alone.purge(std::set<ObjectType>{ObjectType::Site}); },
                           [&] { alone.purge(); },
                         });
  EXPECT_EQ(site->id(), id);
  EXPECT_EQ(site->projectDb(), project.db);
}

TEST(UnsharedHandle, CannotBeCopiedInto) {
  const SampleProject project, source;
  source.db->save(Site::create(L"Hill"));
  ProjectDb alone(dataOf(project));
  expectRefused(project, {
                           [&] { alone.copyAll<Site>(source.db); },
                           [&] { alone.copyAll(source.db); },
                           [&] { alone.copyMeta(source.db); },
                         });
}

// Here the pointer shares nothing, as that of a host which owns the source in another way.
TEST(UnsharedHandle, CannotBeCopiedFrom) {
  const SampleProject project, source;
  source.db->save(Site::create(L"Hill"));
  const ProjectDb alone(dataOf(source));
  const std::shared_ptr<const ProjectDb> pointer(std::shared_ptr<void>(), &alone);
  expectRefused(project, {
                           [&] { project.db->copyAll<Site>(pointer); },
                           [&] { project.db->copyAll(pointer); },
                           [&] { project.db->copyMeta(pointer); },
                         });
}

}  // namespace
}  // namespace tessel::test
