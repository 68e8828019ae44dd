#pragma once

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <tessel/project_db.h>
#include <tessel/spatial.h>
#include <tessel/transaction.h>

#include "database/files.h"
#include "support/raw_file.h"
#include "support/temp_folder.h"

namespace tessel::test {

class Transactions : public ::testing::Test {
protected:
  void TearDown() override { EXPECT_FALSE(Transaction::hasCurrent()); }

  // What another connection sees, that is what has been committed.
  static long long sitesIn(const std::string& file) { return RawFile(file).count("tessel_Site"); }
  long long sites() const { return sitesIn(path); }

  // A building whose site has no row: SQLite notices at the commit.
  static void saveDangling(const std::shared_ptr<ProjectDb>& target) {
    target->save(Building::create(Site::create(), L"House"));
  }

  TempFolder folder;
  std::string path = folder.path("house.tessel");
  std::shared_ptr<ProjectDb> db = ProjectDb::create(odPath(path));
};

class TwoDatabases : public Transactions {
protected:
  std::string otherPath = folder.path("other.tessel");
  std::shared_ptr<ProjectDb> other = ProjectDb::create(odPath(otherPath));
};

}  // namespace tessel::test
