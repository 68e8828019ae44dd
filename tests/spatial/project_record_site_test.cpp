#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <odb/exceptions.hxx>

#include <tessel/tessel.h>

#include "spatial/project_record.h"
#include "support/recording_reactor.h"

// The site of the project record, which is saved with it.

namespace tessel::test {
namespace {

TEST_F(ProjectRecord, SavesANewSiteFirst) {
  RecordingReactor reactor(file.db);
  const auto site = makeSample<Site>();
  record().set_site(site);
  file.db->saveProject();
  EXPECT_EQ(record().site(), site);
  EXPECT_NE(site->id(), 0U);
  EXPECT_EQ(row().at("site_id"), std::to_string(site->id()));
  EXPECT_EQ(file.row("tessel_Site", site->id()), valuesOf(*site));
  const std::vector<RecordingReactor::Saved> expected = {
    {file.db.get(), {ObjectType::Site, site->id()}, SaveResolution::Created}};
  EXPECT_EQ(reactor.saved, expected);
}

TEST_F(ProjectRecord, SavesTheChangesOfItsSite) {
  record().set_site(makeSample<Site>());
  file.db->saveProject();
  record().site()->set_town(L"Bergen");
  file.db->saveProject();
  EXPECT_EQ(file.row("tessel_Site", record().site()->id()).at("town"), "Bergen");
}

TEST_F(ProjectRecord, TakesTheCopyOfASiteOfAnotherFile) {
  SampleProject other;
  const auto foreign = other.db->save(makeSample<Site>());
  record().set_site(foreign);
  file.db->saveProject();
  EXPECT_NE(record().site(), foreign);
  EXPECT_EQ(record().site()->projectDb(), file.db);
  EXPECT_TRUE(*record().site() == *foreign);
  EXPECT_EQ(row().at("site_id"), std::to_string(record().site()->id()));
}

TEST_F(ProjectRecord, TakesTheSiteThatAClashWasResolvedTo) {
  const auto existing = file.db->save(makeSample<Site>());
  RecordingReactor reactor(file.db);
  reactor.answer({SaveResolution::Kept});
  const auto incoming = makeSample<Site>();
  record().set_site(incoming);
  file.db->saveProject();
  EXPECT_NE(record().site(), incoming);
  EXPECT_EQ(record().site()->id(), existing->id());
  EXPECT_EQ(row().at("site_id"), std::to_string(existing->id()));
  EXPECT_EQ(reactor.clashes.size(), 1U);
}

TEST_F(ProjectRecord, WithASiteThatClashesIsNotWritten) {
  file.db->save(makeSample<Site>());
  record().set_name(L"Harbour house");
  record().set_site(makeSample<Site>());
  EXPECT_THROW(file.db->saveProject(), ObjectNotUnique);
  EXPECT_EQ(row().at("name"), "");
  EXPECT_EQ(row().at("site_id"), "NULL");
}

TEST_F(ProjectRecord, WithAnUntouchedSiteIsRefused) {
  record().set_site(Site::create());
  EXPECT_THROW(file.db->saveProject(), DatabaseException);
  EXPECT_EQ(row().at("site_id"), "NULL");
}

TEST_F(ProjectRecord, CanLoseItsSite) {
  record().set_site(makeSample<Site>());
  file.db->saveProject();
  record().set_site(nullptr);
  file.db->saveProject();
  EXPECT_EQ(row().at("site_id"), "NULL");
  EXPECT_EQ(file.count("tessel_Site"), 1);
}

// A length without a unit cannot become one in metres, so the site stays in its own file, and the record has none.
TEST_F(ProjectRecord, LosesASiteOfAnotherFileWhoseNumbersCannotBeConverted) {
  file.db->setDefaultUnit(Unit::create(L"m", 1, Measure::create(L"LENGTH", 1, 0, 0, 0, 0, 0, 0)));
  record().set_site(makeSample<Site>(2));
  file.db->saveProject();
  SampleProject other;
  const auto foreign = other.db->save(makeSample<Site>());
  record().set_name(L"Harbour house");
  record().set_site(foreign);
  file.db->saveProject();
  EXPECT_TRUE(record().site().isNull());
  EXPECT_EQ(row().at("site_id"), "NULL");
  EXPECT_EQ(row().at("name"), "Harbour house");
  EXPECT_EQ(file.count("tessel_Site"), 1) << "the one that it had before";
  EXPECT_EQ(foreign->projectDb(), other.db);
}

TEST_F(ProjectRecord, WhoseSiteIsMissingFromTheFileKeepsItFromBeingOpened) {
  record().set_site(makeSample<Site>());
  file.db->saveProject();
  file.db.reset();
  file.raw().exec("DELETE FROM tessel_Site");
  for (const bool readOnly : {false, true}) {
    EXPECT_THROW(ProjectDb::open(OdString::fromUtf8(file.path()), readOnly), odb::object_not_persistent);
  }
  EXPECT_THROW(ProjectDb::create(OdString::fromUtf8(file.path())), odb::object_not_persistent);
  EXPECT_FALSE(Transaction::hasCurrent());
  file.raw().exec("UPDATE tessel_Project SET site_id = NULL");
  EXPECT_TRUE(ProjectDb::open(OdString::fromUtf8(file.path()), false));
}

}  // namespace
}  // namespace tessel::test
