#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/old_files.h"
#include "support/printers.h"
#include "support/temp_folder.h"
#include "units/column_rows.h"

namespace tessel::test {
namespace {

struct MigratedUnits {
  int meta;  ///< -1 for a file without the row
  const wchar_t* length;
  double lengthScale;
  const wchar_t* area;
  double areaScale;
};

class UnitsOfAnOldFile : public ::testing::TestWithParam<MigratedUnits> {};

TEST_P(UnitsOfAnOldFile, AreThoseItsNumbersWereKeptIn) {
  const MigratedUnits& expected = GetParam();
  TempFolder folder;
  const std::string path = folder.path("old.tessel");
  OldFile old(1000);
  if (expected.meta < 0) {
    old.withoutMetaRow();
  } else {
    old.metaUnit(expected.meta);
  }
  old.write(path);
  {
    const auto db = ProjectDb::open(OdString::fromUtf8(path), false);
    ASSERT_NE(db, nullptr);
    const auto length = db->defaultUnit(L"LENGTH");
    const auto area = db->defaultUnit(L"AREA");
    ASSERT_TRUE(length && area);
    EXPECT_EQ(length->label(), expected.length);
    EXPECT_EQ(length->scale(), expected.lengthScale);
    EXPECT_FALSE(length->has_name());
    EXPECT_EQ(area->label(), expected.area);
    EXPECT_EQ(area->scale(), expected.areaScale);
    EXPECT_EQ(length->length(), 1);
    EXPECT_EQ(area->length(), 2);
    EXPECT_EQ(db->columnUnit(&Story::elevation)->id(), length->id());
    EXPECT_EQ(db->columnUnit(&Story::net_area_planned)->id(), area->id());
  }
  RawFile file(path);
  EXPECT_EQ(file.column("SELECT name FROM tessel_Measure ORDER BY id"), (std::vector<std::string>{"LENGTH", "AREA"}));
  EXPECT_EQ(file.count("tessel_Unit"), 2);
  EXPECT_EQ(file.count("tessel_DefaultUnit"), 2);
  RawFile::Rows columns = lengthColumns(OdString(expected.length).toUtf8());
  for (const RawFile::Row& row : areaColumns(OdString(expected.area).toUtf8())) columns.push_back(row);
  EXPECT_EQ(columnRowsOf(file), columns);
}

INSTANTIATE_TEST_SUITE_P(Imperial, UnitsOfAnOldFile,
                         ::testing::Values(MigratedUnits{0, L"in", 0.0254, L"ft^2", 0.09290304}));
INSTANTIATE_TEST_SUITE_P(Metric, UnitsOfAnOldFile,
                         ::testing::Values(MigratedUnits{1, L"mm", 0.001, L"m^2", 1.0},
                                           MigratedUnits{-1, L"mm", 0.001, L"m^2", 1.0},
                                           MigratedUnits{5, L"mm", 0.001, L"m^2", 1.0}));

}  // namespace
}  // namespace tessel::test
