#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <odb/exceptions.hxx>
#include <utf8.h>

#include <tessel/tessel.h>

#include "spatial/project_record.h"
#include "support/old_files.h"

namespace tessel::test {
namespace {

using Row = std::map<std::string, std::string>;

const OdString difficult(u"\U0001F3E0 \"it's\" %_;-- \u00DF\u4E2D");

void fill(Project& project, const TsSmartPtr<Site>& site) {
  project.set_name(OdString(L"name ") + difficult);
  project.set_site(site);
  project.set_models_folder(OdString(L"models ") + difficult);
  project.set_sheets_folder(OdString(L"sheets ") + difficult);
  project.set_sheet_set(Project::SheetSet(OdString(L"set ") + difficult));
  project.set_sheet_margins_metric() = {1.125, 2.125, 3.125, 4.125, 5.125, 6.125};
  project.set_sheet_margins_imperial() = {11.125, 12.125, 13.125, 14.125, 15.125, 16.125};
  project.set_master_drawings() = {Project::MasterDrawing(L"second"), Project::MasterDrawing(L"first"),
                                   Project::MasterDrawing(OdString(L"drawing ") + difficult)};
  project.set_sheet_categories() = {
    SheetCategory(L"Sections", L"B", 200, 4), SheetCategory(L"Plans", L"A", -1, -1),
    SheetCategory(L"", L"", std::numeric_limits<int>::min(), std::numeric_limits<int>::max())};
}

TEST_F(ProjectRecord, OfANewFileIsEmpty) {
  EXPECT_EQ(file.count("tessel_Project"), 1);
  Row expected = {
    {"name", ""}, {"site_id", "NULL"}, {"models_folder", ""}, {"sheets_folder", ""}, {"sheet_set_filename", ""}};
  for (const char* const kind : {"metric", "imperial"}) {
    for (const char* const side : {"page_left", "page_right", "page_top", "page_bottom", "between", "label_space"}) {
      expected[std::string("sheet_margins_") + kind + "_" + side] = "0.0";
    }
  }
  EXPECT_EQ(row(), expected);
  EXPECT_EQ(drawings(), Rows());
  EXPECT_EQ(categories(), Rows());
  EXPECT_TRUE(record().site().isNull());
}

TEST_F(ProjectRecord, KeepsEachFieldInItsColumn) {
  const auto site = file.db->save(makeSample<Site>());
  fill(record(), site);
  file.db->saveProject();
  const std::string text = difficult.toUtf8();
  EXPECT_EQ(row(), (Row{{"name", "name " + text},
                        {"site_id", std::to_string(site->id())},
                        {"models_folder", "models " + text},
                        {"sheets_folder", "sheets " + text},
                        {"sheet_set_filename", "set " + text},
                        {"sheet_margins_metric_page_left", "1.125"},
                        {"sheet_margins_metric_page_right", "2.125"},
                        {"sheet_margins_metric_page_top", "3.125"},
                        {"sheet_margins_metric_page_bottom", "4.125"},
                        {"sheet_margins_metric_between", "5.125"},
                        {"sheet_margins_metric_label_space", "6.125"},
                        {"sheet_margins_imperial_page_left", "11.125"},
                        {"sheet_margins_imperial_page_right", "12.125"},
                        {"sheet_margins_imperial_page_top", "13.125"},
                        {"sheet_margins_imperial_page_bottom", "14.125"},
                        {"sheet_margins_imperial_between", "15.125"},
                        {"sheet_margins_imperial_label_space", "16.125"}}));
  EXPECT_EQ(drawings(), (Rows{{"1", "0", "second"}, {"1", "1", "first"}, {"1", "2", "drawing " + text}}));
  EXPECT_EQ(categories(), (Rows{{"1", "0", "Sections", "B", "200", "4"},
                                {"1", "1", "Plans", "A", "-1", "-1"},
                                {"1", "2", "", "", "-2147483648", "2147483647"}}));
}

TEST_F(ProjectRecord, ComesBackFromTheFile) {
  fill(record(), makeSample<Site>());
  file.db->saveProject();
  Project saved;
  saved = record();
  file.reopen();
  EXPECT_EQ(record().name(), saved.name());
  ASSERT_TRUE(record().site());
  EXPECT_TRUE(*record().site() == *saved.site());
  EXPECT_EQ(record().site()->projectDb(), file.db);
  EXPECT_FALSE(record().site()->isDirty());
  EXPECT_EQ(record().models_folder(), saved.models_folder());
  EXPECT_EQ(record().sheets_folder(), saved.sheets_folder());
  EXPECT_TRUE(record().sheet_set() == saved.sheet_set());
  EXPECT_TRUE(record().sheet_margins_metric() == saved.sheet_margins_metric());
  EXPECT_TRUE(record().sheet_margins_imperial() == saved.sheet_margins_imperial());
  EXPECT_TRUE(record().master_drawings() == saved.master_drawings());
  ASSERT_EQ(record().sheet_categories().size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(record().sheet_categories()[i].name, saved.sheet_categories()[i].name);
    EXPECT_EQ(record().sheet_categories()[i].prefix, saved.sheet_categories()[i].prefix);
    EXPECT_EQ(record().sheet_categories()[i].number_start, saved.sheet_categories()[i].number_start);
    EXPECT_EQ(record().sheet_categories()[i].number_width, saved.sheet_categories()[i].number_width);
  }
}

TEST_F(ProjectRecord, ReadsItsListsInTheOrderOfTheirNumbers) {
  record().set_master_drawings() = {Project::MasterDrawing(L"first"), Project::MasterDrawing(L"second")};
  record().set_sheet_categories() = {SheetCategory(L"Plans", L"A", 1, 2), SheetCategory(L"Sections", L"B", 3, 4)};
  file.db->saveProject();
  file.db.reset();
  file.raw().exec("UPDATE tessel_Project_master_drawings SET \"index\" = 1 - \"index\"; "
                  "UPDATE tessel_Project_sheet_categories SET \"index\" = 1 - \"index\"");
  file.reopen();
  ASSERT_EQ(record().master_drawings().size(), 2U);
  EXPECT_EQ(record().master_drawings()[0].filename, L"second");
  EXPECT_EQ(record().master_drawings()[1].filename, L"first");
  ASSERT_EQ(record().sheet_categories().size(), 2U);
  EXPECT_EQ(record().sheet_categories()[0].name, L"Sections");
  EXPECT_EQ(record().sheet_categories()[1].name, L"Plans");
}

TEST_F(ProjectRecord, LosesChangesThatWereNotSaved) {
  record().set_name(L"Harbour house");
  record().set_master_drawings().emplace_back(L"drawing");
  file.reopen();
  EXPECT_TRUE(record().name().isEmpty());
  EXPECT_TRUE(record().master_drawings().empty());
}

TEST_F(ProjectRecord, ReplacesItsListsWhole) {
  fill(record(), nullptr);
  file.db->saveProject();
  record().set_master_drawings() = {Project::MasterDrawing(L"only")};
  record().set_sheet_categories().clear();
  file.db->saveProject();
  EXPECT_EQ(drawings(), (Rows{{"1", "0", "only"}}));
  EXPECT_EQ(categories(), Rows());
}

TEST_F(ProjectRecord, KeepsCategoriesThatAreEqualApart) {
  record().set_sheet_categories() = {SheetCategory(L"Plans", L"A", 1, 2), SheetCategory(L"Sections", L"A", 1, 3)};
  file.db->saveProject();
  EXPECT_EQ(categories(), (Rows{{"1", "0", "Plans", "A", "1", "2"}, {"1", "1", "Sections", "A", "1", "3"}}));
}

// Edits through a reference that was kept do not mark the record, but it is written whole whenever it is saved.
TEST_F(ProjectRecord, IsWrittenEvenIfItIsNotMarked) {
  SheetMargins& margins = record().set_sheet_margins_metric();
  file.db->saveProject();
  margins.between = 5;
  file.db->saveProject();
  EXPECT_EQ(row().at("sheet_margins_metric_between"), "5.0");
}

TEST_F(ProjectRecord, InATransactionOfTheHostIsDurableWithItsCommit) {
  record().set_name(L"Harbour house");
  record().set_site(makeSample<Site>());
  Transaction transaction(file.db, Transaction::BeginCurrent);
  file.db->saveProject();
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(row().at("name"), "") << "another connection must not see it yet";
  transaction.commit();
  EXPECT_EQ(row().at("name"), "Harbour house");
  EXPECT_EQ(row().at("site_id"), std::to_string(record().site()->id()));
}

TEST_F(ProjectRecord, InATransactionThatIsRolledBackStaysChangedInMemoryOnly) {
  record().set_name(L"Harbour house");
  {
    Transaction transaction(file.db, Transaction::BeginCurrent);
    file.db->saveProject();
  }
  EXPECT_EQ(row().at("name"), "");
  EXPECT_EQ(record().name(), L"Harbour house");
}

TEST_F(ProjectRecord, IsSavedWhileATransactionOfAnotherFileIsCurrent) {
  SampleProject other;
  Transaction transaction(other.db, Transaction::BeginCurrent);
  record().set_name(L"Harbour house");
  file.db->saveProject();
  EXPECT_EQ(row().at("name"), "Harbour house");
  EXPECT_EQ(&Transaction::current(), &transaction);
}

TEST_F(ProjectRecord, WhoseRowHasGoneIsADatabaseException) {
  file.raw().exec("DELETE FROM tessel_Project");
  EXPECT_THROW(file.db->saveProject(), DatabaseException);
}

TEST_F(ProjectRecord, IsAskedForThroughAConstantHandle) {
  record().set_name(L"Harbour house");
  const ProjectDb& constant = *file.db;
  EXPECT_EQ(&constant.project(), &record());
}

TEST_F(ProjectRecord, WithTextThatIsNoUtf16IsRefusedAndTheFileStaysAsItWas) {
  fill(record(), makeSample<Site>());
  file.db->saveProject();
  const auto before = row();
  const Rows drawingsBefore = drawings();
  const Rows categoriesBefore = categories();
  const OdString broken(u"\xD83C", 1);
  const std::vector<std::function<void(Project&)>> breaks = {
    [&](Project& p) { p.set_name(broken); },
    [&](Project& p) { p.set_models_folder(broken); },
    [&](Project& p) { p.set_sheets_folder(broken); },
    [&](Project& p) { p.set_sheet_set(Project::SheetSet(broken)); },
    [&](Project& p) { p.set_master_drawings().emplace_back(broken); },
    [&](Project& p) { p.set_sheet_categories().emplace_back(broken, L"", 0, 0); },
    [&](Project& p) { p.set_sheet_categories().emplace_back(L"", broken, 0, 0); },
  };
  for (const auto& breakIt : breaks) {
    file.reopen();
    record().set_name(L"changed");
    breakIt(record());
    EXPECT_THROW(file.db->saveProject(), utf8::invalid_utf16);
    EXPECT_EQ(row(), before);
    EXPECT_EQ(drawings(), drawingsBefore);
    EXPECT_EQ(categories(), categoriesBefore);
  }
}

TEST_F(ProjectRecord, WithTextThatIsNoUtf16LeavesEarlierWorkOfTheHostIntact) {
  Transaction transaction(file.db, Transaction::BeginCurrent);
  const auto site = file.db->save(makeSample<Site>());
  record().set_name(OdString(u"\xD83C", 1));
  EXPECT_THROW(file.db->saveProject(), utf8::invalid_utf16);
  ASSERT_FALSE(transaction.finalized());
  record().set_name(L"mended");
  file.db->saveProject();
  transaction.commit();
  EXPECT_EQ(row().at("name"), "mended");
  EXPECT_EQ(file.row("tessel_Site", site->id()), valuesOf(*site));
}

TEST_F(ProjectRecord, WithAMarginThatIsNoNumberIsRefusedAndTheFileStaysAsItWas) {
  record().set_name(L"Harbour house");
  record().set_sheet_margins_imperial().label_space = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THROW(file.db->saveProject(), DatabaseException);
  EXPECT_EQ(row().at("name"), "");
  record().set_sheet_margins_imperial().label_space = std::numeric_limits<double>::infinity();
  file.db->saveProject();
  file.reopen();
  EXPECT_EQ(record().sheet_margins_imperial().label_space, std::numeric_limits<double>::infinity());
}

TEST_F(ProjectRecord, OfANewFileHasAnExceptionOfItsOwnWhenItIsMissing) {
  file.db.reset();
  file.raw().exec("DELETE FROM tessel_Project");
  EXPECT_THROW(ProjectDb::open(OdString::fromUtf8(file.path()), false), odb::object_not_persistent);
  EXPECT_THROW(ProjectDb::create(OdString::fromUtf8(file.path())), odb::object_not_persistent);
}

TEST(ProjectRecordOfAnOldFile, ReadsNullAsEmptyText) {
  TempFolder folder;
  const std::string path = folder.path("old.tessel");
  OldFile(1000).write(path);
  ProjectDb::open(OdString::fromUtf8(path), false);
  {
    RawFile raw(path);
    raw.exec("UPDATE tessel_Project SET models_folder = NULL, sheets_folder = NULL, sheet_set_filename = NULL");
  }
  const auto db = ProjectDb::open(OdString::fromUtf8(path), true);
  ASSERT_NE(db, nullptr);
  EXPECT_TRUE(db->project().models_folder().isEmpty());
  EXPECT_TRUE(db->project().sheets_folder().isEmpty());
  EXPECT_TRUE(db->project().sheet_set().filename.isEmpty());
}

}  // namespace
}  // namespace tessel::test
