// A reactor saves something of its own, hits a failing disk and takes no notice. SQLite has rolled the whole transaction
// back then; what the operation still has to write must not be committed by itself, row by row.

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/faulty_vfs.h"
#include "support/raw_file.h"
#include "support/recording_reactor.h"
#include "support/temp_folder.h"

namespace tessel::test {
namespace {

class SwallowedFailure : public ::testing::TestWithParam<int> {
protected:
  SwallowedFailure() {
    db->project().set_site(db->save(Site::create(L"Hill")));
    db->saveProject();
    db->setDefaultUnit(unit(L"m", 1));
  }

  TsSmartPtr<Unit> unit(const OdString& label, double scale) {
    return Unit::create(label, scale, db->get<Measure>(NameKey(L"LENGTH")));
  }

  void fail() {
    disk.failWrites(GetParam());
    EXPECT_THROW(db->save(EntityType::create(L"Door")), DatabaseException);
    disk.repair();
  }

  void failWhenSaved(ObjectType type) {
    reactor.whenSaved = [this, type, done = false](const RecordingReactor::Saved& saved) mutable {
      if (saved.key.type != type || done) return;
      done = true;
      fail();
    };
  }

  TempFolder folder;
  std::string path = folder.path("project.tessel");
  FaultyVfs disk{"faulty-swallowed", folder.path()};
  std::shared_ptr<ProjectDb> db = ProjectDb::create(L"faulty-swallowed://project.tessel");
  RecordingReactor reactor{db};
};

INSTANTIATE_TEST_SUITE_P(Disk, SwallowedFailure, ::testing::Values(SQLITE_FULL, SQLITE_IOERR_WRITE),
                         [](const auto& fault) { return fault.param == SQLITE_FULL ? "IsFull" : "HasAnError"; });

TEST_P(SwallowedFailure, SavingTheRecordLeavesItsRowAsItWas) {
  db->project().set_name(L"Harbour");
  failWhenSaved(ObjectType::Site);
  EXPECT_THROW(db->saveProject(), ForcedRollback);
  EXPECT_EQ(RawFile(path).scalarText("SELECT name FROM tessel_Project"), "");
}

TEST_P(SwallowedFailure, SettingADefaultUnitLeavesTheOldOne) {
  failWhenSaved(ObjectType::Unit);
  EXPECT_THROW(db->setDefaultUnit(unit(L"km", 1000)), ForcedRollback);
  EXPECT_EQ(RawFile(path).scalarText("SELECT label FROM tessel_DefaultUnit JOIN tessel_Unit ON unit_id=id"), "m");
  EXPECT_EQ(RawFile(path).count("tessel_Unit"), 1);
}

class FailsWhenAsked : public ProjectDb::Reactor {
public:
  explicit FailsWhenAsked(std::function<void()> fail) : fail_(std::move(fail)) {}
  RemoveResolution onRemove(const std::shared_ptr<const ProjectDb>&, const ObjectKey&) override {
    fail_();
    return RemoveResolution::Remove;
  }

private:
  std::function<void()> fail_;
};

TEST_P(SwallowedFailure, RemovingLeavesTheRow) {
  const auto site = db->save(Site::create(L"Quay"));
  FailsWhenAsked asked([this] { fail(); });
  db->setReactor(&asked);
  EXPECT_THROW(db->remove(site), ForcedRollback);
  EXPECT_THROW(db->remove<Site>(site->id()), ForcedRollback);
  EXPECT_THROW(db->remove<Site>({site->id()}), ForcedRollback);
  db->setReactor(nullptr);
  EXPECT_EQ(RawFile(path).count("tessel_Site"), 2);
  EXPECT_NE(site->id(), 0U);
}

}  // namespace
}  // namespace tessel::test
