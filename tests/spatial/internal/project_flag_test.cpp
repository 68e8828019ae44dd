#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "spatial/project_impl.h"
#include "support/samples.h"

// The flag of the record is not shown to hosts.

namespace tessel::test {
namespace {

struct Setter {
  const char* name;
  std::function<void(Project&)> set;
};

void PrintTo(const Setter& setter, std::ostream* out) { *out << setter.name; }

const TsSmartPtr<Site>& aSite() {
  static const TsSmartPtr<Site> site = Site::create(L"Harbour");
  return site;
}

const Setter comparing[] = {
  {"name", [](Project& p) { p.set_name(L"value"); }},
  {"site", [](Project& p) { p.set_site(aSite()); }},
  {"models_folder", [](Project& p) { p.set_models_folder(L"value"); }},
  {"sheets_folder", [](Project& p) { p.set_sheets_folder(L"value"); }},
  {"sheet_set", [](Project& p) { p.set_sheet_set(Project::SheetSet(L"value")); }},
};

const Setter handingOut[] = {
  {"master_drawings", [](Project& p) { p.set_master_drawings(); }},
  {"sheet_margins_metric", [](Project& p) { p.set_sheet_margins_metric(); }},
  {"sheet_margins_imperial", [](Project& p) { p.set_sheet_margins_imperial(); }},
  {"sheet_categories", [](Project& p) { p.set_sheet_categories(); }},
};

std::string nameOf(const ::testing::TestParamInfo<Setter>& info) { return info.param.name; }

class ComparingSetter : public ::testing::TestWithParam<Setter> {};
INSTANTIATE_TEST_SUITE_P(Project, ComparingSetter, ::testing::ValuesIn(comparing), nameOf);

TEST_P(ComparingSetter, MarksTheRecordIfTheValueIsAnotherOne) {
  Project project;
  EXPECT_FALSE(project.impl().dirty);
  GetParam().set(project);
  EXPECT_TRUE(project.impl().dirty);
}

TEST_P(ComparingSetter, LeavesTheFlagAloneIfTheValueIsThere) {
  Project project;
  GetParam().set(project);
  project.impl().dirty = false;
  GetParam().set(project);
  EXPECT_FALSE(project.impl().dirty);
}

class HandingOutSetter : public ::testing::TestWithParam<Setter> {};
INSTANTIATE_TEST_SUITE_P(Project, HandingOutSetter, ::testing::ValuesIn(handingOut), nameOf);

TEST_P(HandingOutSetter, MarksTheRecordByBeingAsked) {
  Project project;
  GetParam().set(project);
  EXPECT_TRUE(project.impl().dirty);
}

TEST_P(HandingOutSetter, HandsOutTheFieldItself) {
  Project project;
  project.set_master_drawings().emplace_back(L"drawing");
  project.set_sheet_margins_metric().between = 1;
  project.set_sheet_margins_imperial().between = 2;
  project.set_sheet_categories().emplace_back(L"Plans", L"A", 1, 2);
  EXPECT_EQ(project.master_drawings().at(0).filename, L"drawing");
  EXPECT_EQ(project.sheet_margins_metric().between, 1);
  EXPECT_EQ(project.sheet_margins_imperial().between, 2);
  EXPECT_EQ(project.sheet_categories().at(0).name, L"Plans");
}

TEST(ProjectFlag, IsNotSetByEditsThroughAReferenceThatWasKept) {
  Project project;
  SheetMargins& margins = project.set_sheet_margins_metric();
  project.impl().dirty = false;
  margins.between = 5;
  EXPECT_FALSE(project.impl().dirty);
  EXPECT_EQ(project.sheet_margins_metric().between, 5);
}

TEST(ProjectFlag, IsSetByAnotherPointerToAnEqualSite) {
  Project project;
  project.set_site(aSite());
  project.impl().dirty = false;
  project.set_site(aSite()->cloneObject());
  EXPECT_TRUE(project.impl().dirty);
}

TEST(ProjectFlag, IsSetByTheLossOfTheSite) {
  Project project;
  project.set_site(nullptr);
  EXPECT_FALSE(project.impl().dirty);
  project.set_site(aSite());
  project.impl().dirty = false;
  project.set_site(nullptr);
  EXPECT_TRUE(project.impl().dirty);
}

void fill(Project& project) {
  for (const Setter& setter : comparing) setter.set(project);
  project.set_master_drawings() = {Project::MasterDrawing(L"a"), Project::MasterDrawing(L"b")};
  project.set_sheet_margins_metric() = {1, 2, 3, 4, 5, 6};
  project.set_sheet_margins_imperial() = {7, 8, 9, 10, 11, 12};
  project.set_sheet_categories() = {SheetCategory(L"Plans", L"A", 1, 2)};
}

TEST(ProjectAssignment, CopiesEverythingButTheIdAndMarksTheTarget) {
  Project source;
  fill(source);
  source.impl().id = 9;
  source.impl().dirty = false;
  Project target;
  EXPECT_EQ(&(target = source), &target);
  EXPECT_TRUE(target.impl().dirty);
  EXPECT_FALSE(source.impl().dirty);
  EXPECT_EQ(target.impl().id, 1U);
  EXPECT_EQ(target.name(), L"value");
  EXPECT_EQ(target.site(), aSite());
  EXPECT_EQ(target.models_folder(), L"value");
  EXPECT_EQ(target.sheets_folder(), L"value");
  EXPECT_EQ(target.sheet_set().filename, L"value");
  EXPECT_TRUE(target.master_drawings() == source.master_drawings());
  EXPECT_TRUE(target.sheet_margins_metric() == source.sheet_margins_metric());
  EXPECT_TRUE(target.sheet_margins_imperial() == source.sheet_margins_imperial());
  ASSERT_EQ(target.sheet_categories().size(), 1U);
  EXPECT_EQ(target.sheet_categories()[0].name, L"Plans");
  EXPECT_EQ(target.sheet_categories()[0].number_width, 2);
}

TEST(ProjectAssignment, ToItselfMarksItAndKeepsItsFields) {
  Project project;
  fill(project);
  project.impl().dirty = false;
  const Project& same = project;
  project = same;
  EXPECT_TRUE(project.impl().dirty);
  EXPECT_EQ(project.name(), L"value");
  EXPECT_EQ(project.master_drawings().size(), 2U);
}

TEST(ProjectAssignment, OfAnEqualRecordMarksIt) {
  Project project;
  project = Project();
  EXPECT_TRUE(project.impl().dirty);
}

TEST(ProjectImpl, HasTheIdOfTheOneRow) { EXPECT_EQ(Project().impl().id, 1U); }

TEST(ProjectFlag, IsClearInARecordThatWasLoadedAndAfterItsSave) {
  SampleProject file;
  EXPECT_FALSE(file.db->project().impl().dirty);
  file.db->project().set_name(L"Harbour house");
  EXPECT_TRUE(file.db->project().impl().dirty);
  file.db->saveProject();
  EXPECT_FALSE(file.db->project().impl().dirty);
  file.reopen();
  EXPECT_FALSE(file.db->project().impl().dirty);
  EXPECT_EQ(file.db->project().name(), L"Harbour house");
}

TEST(ProjectFlag, StaysSetWhenTheSaveFails) {
  SampleProject file;
  file.db->project().set_name(L"Harbour house");
  file.raw().exec("DELETE FROM tessel_Project");
  EXPECT_THROW(file.db->saveProject(), DatabaseException);
  EXPECT_TRUE(file.db->project().impl().dirty);
}

}  // namespace
}  // namespace tessel::test
