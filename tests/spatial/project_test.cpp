#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/printers.h"

namespace tessel::test {
namespace {

TEST(SheetMarginsRecord, StartsAtZero) {
  const SheetMargins margins;
  EXPECT_EQ(margins.page_left, 0);
  EXPECT_EQ(margins.page_right, 0);
  EXPECT_EQ(margins.page_top, 0);
  EXPECT_EQ(margins.page_bottom, 0);
  EXPECT_EQ(margins.between, 0);
  EXPECT_EQ(margins.label_space, 0);
}

TEST(SheetMarginsRecord, IsEqualInAllSixNumbers) {
  const SheetMargins margins = {1, 2, 3, 4, 5, 6};
  EXPECT_TRUE(margins == (SheetMargins{1, 2, 3, 4, 5, 6}));
  for (double SheetMargins::*const number :
       {&SheetMargins::page_left, &SheetMargins::page_right, &SheetMargins::page_top, &SheetMargins::page_bottom,
        &SheetMargins::between, &SheetMargins::label_space}) {
    SheetMargins other = margins;
    other.*number += 0.5;
    EXPECT_FALSE(margins == other);
    other.*number = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(other == other);
  }
}

TEST(SheetCategoryRecord, StartsWithoutAWidth) {
  const SheetCategory category;
  EXPECT_TRUE(category.name.isEmpty());
  EXPECT_TRUE(category.prefix.isEmpty());
  EXPECT_EQ(category.number_start, 0);
  EXPECT_EQ(category.number_width, -1);
}

TEST(SheetCategoryRecord, HoldsWhatItIsMadeOf) {
  const SheetCategory category(L"Plans", L"A", 100, 3);
  EXPECT_EQ(category.name, L"Plans");
  EXPECT_EQ(category.prefix, L"A");
  EXPECT_EQ(category.number_start, 100);
  EXPECT_EQ(category.number_width, 3);
}

TEST(SheetCategoryRecord, IsEqualInPrefixAndStartOnly) {
  const SheetCategory category(L"Plans", L"A", 100, 3);
  EXPECT_TRUE(category == SheetCategory(L"Sections", L"A", 100, 3));
  EXPECT_TRUE(category == SheetCategory(L"Plans", L"A", 100, 4));
  EXPECT_FALSE(category == SheetCategory(L"Plans", L"a", 100, 3));
  EXPECT_FALSE(category == SheetCategory(L"Plans", L"A", 101, 3));
}

TEST(FilenameRecords, AreEqualInTheirFilename) {
  EXPECT_TRUE(Project::MasterDrawing().filename.isEmpty());
  EXPECT_TRUE(Project::SheetSet().filename.isEmpty());
  EXPECT_TRUE(Project::MasterDrawing(L"a") == Project::MasterDrawing(L"a"));
  EXPECT_FALSE(Project::MasterDrawing(L"a") == Project::MasterDrawing(L"A"));
  EXPECT_TRUE(Project::SheetSet(L"a") == Project::SheetSet(L"a"));
  EXPECT_FALSE(Project::SheetSet(L"a") == Project::SheetSet(L"A"));
}

template <typename T>
constexpr bool isValue = std::is_copy_constructible_v<T>&& std::is_move_constructible_v<T>&&
  std::is_copy_assignable_v<T>&& std::is_move_assignable_v<T>;

TEST(ProjectParts, AreValues) {
  EXPECT_TRUE(isValue<SheetMargins>);
  EXPECT_TRUE(isValue<SheetCategory>);
  EXPECT_TRUE(isValue<Project::MasterDrawing>);
  EXPECT_TRUE(isValue<Project::SheetSet>);
}

TEST(Project, StartsEmpty) {
  const Project project;
  EXPECT_TRUE(project.name().isEmpty());
  EXPECT_TRUE(project.site().isNull());
  EXPECT_TRUE(project.models_folder().isEmpty());
  EXPECT_TRUE(project.sheets_folder().isEmpty());
  EXPECT_TRUE(project.master_drawings().empty());
  EXPECT_TRUE(project.sheet_set().filename.isEmpty());
  EXPECT_TRUE(project.sheet_margins_metric() == SheetMargins());
  EXPECT_TRUE(project.sheet_margins_imperial() == SheetMargins());
  EXPECT_TRUE(project.sheet_categories().empty());
}

TEST(Project, IsNoObject) { EXPECT_FALSE((std::is_base_of_v<Object, Project>)); }

}  // namespace
}  // namespace tessel::test
