// The columns of the file are written down twice, in the statements of the tables and in the class mappings.
// These tests hold the two together: ODB's insert names every column that it maps.

#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "database/internal/catalogue_run.h"
#include "support/expected_schema.h"
#include "support/raw_file.h"
#include "support/temp_folder.h"
#include "tessel/mapping-odb.hxx"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAreArray;

template <typename T>
using Mapping = odb::object_traits_impl<T, odb::id_sqlite>;

struct Insert {
  std::string table;
  std::vector<std::string> columns;
};

// INSERT INTO "table" ("column", ...) VALUES (?, ...)
Insert parse(const std::string& statement) {
  static const std::regex name("\"(\\w+)\"");
  std::vector<std::string> names;
  for (std::sregex_iterator match(statement.begin(), statement.end(), name), end; match != end; ++match) {
    names.push_back((*match)[1]);
  }
  return {names.at(0), {names.begin() + 1, names.end()}};
}

// One line for each mapped class and for each container of one.
std::vector<Insert> inserts() {
  std::vector<Insert> result;
  for (const char* statement : {
         Mapping<Measure>::persist_statement,
         Mapping<Unit>::persist_statement,
         Mapping<ColumnUnit>::persist_statement,
         Mapping<DefaultUnit>::persist_statement,
         Mapping<SpatialStructure>::persist_statement,
         Mapping<Site>::persist_statement,
         Mapping<Building>::persist_statement,
         Mapping<Story>::persist_statement,
         Mapping<Project>::persist_statement,
         Mapping<Project>::master_drawings_traits::insert_statement,
         Mapping<Project>::sheet_categories_traits::insert_statement,
         Mapping<EntityType>::persist_statement,
         Mapping<PropertyNamespace>::persist_statement,
         Mapping<PropertyDefinition>::persist_statement,
         Mapping<ValueDefinition>::persist_statement,
         Mapping<PropertySet>::persist_statement,
         Mapping<PropertySet>::property_definitions_traits::insert_statement,
         Mapping<PropertySet>::value_definitions_traits::insert_statement,
         Mapping<PropertySet>::entity_types_traits::insert_statement,
       }) {
    result.push_back(parse(statement));
  }
  return result;
}

TEST(MappingOfClasses, NamesTheColumnsOfTheTablesAndNoOthers) {
  TempFolder folder;
  createFile(folder.path("a.tessel"));
  RawFile file(folder.path("a.tessel"));
  for (const Insert& insert : inserts()) {
    EXPECT_THAT(insert.columns, UnorderedElementsAreArray(file.columns(insert.table))) << insert.table;
  }
}

TEST(MappingOfClasses, BindsTheKeyFirst) {
  TempFolder folder;
  createFile(folder.path("a.tessel"));
  RawFile file(folder.path("a.tessel"));
  for (const Insert& insert : inserts()) {
    EXPECT_EQ(insert.columns.at(0), file.columns(insert.table).at(0)) << insert.table;
  }
}

TEST(MappingOfClasses, CoversEveryTableButTheTwoWithoutAClass) {
  std::set<std::string> unmapped;
  for (const ExpectedTable& table : expectedSchema()) {
    unmapped.insert(table.name);
  }
  for (const Insert& insert : inserts()) {
    unmapped.erase(insert.table);
  }
  EXPECT_THAT(unmapped, ElementsAre("schema_version", "tessel_Meta"));
}

/// The lines of a query behind the one that names the table.
template <typename T>
std::vector<std::string> joins() {
  std::istringstream statement(Mapping<T>::query_statement);
  std::vector<std::string> lines;
  for (std::string line; std::getline(statement, line);) {
    if (line.compare(0, 9, "LEFT JOIN") == 0) lines.push_back(line);
  }
  return lines;
}

// What a criterion on a referenced object stands on: its columns are known by the name of the column that refers to it.
TEST(MappingOfClasses, JoinsReferencesUnderTheNamesOfTheirColumns) {
  const auto measure = [](const std::string& table) {
    return R"(LEFT JOIN "tessel_Measure" AS "measure_id" ON "measure_id"."id"=")" + table + R"("."measure_id")";
  };
  const auto unit = [](const std::string& table) {
    return R"(LEFT JOIN "tessel_Unit" AS "unit_id" ON "unit_id"."id"=")" + table + R"("."unit_id")";
  };
  const auto ns = [](const std::string& table) {
    return R"(LEFT JOIN "tessel_PropertyNamespace" AS "namespace_id" ON "namespace_id"."id"=")" + table +
           R"("."namespace_id")";
  };
  EXPECT_THAT(joins<Measure>(), IsEmpty());
  EXPECT_THAT(joins<Unit>(), ElementsAre(measure("tessel_Unit")));
  EXPECT_THAT(joins<ColumnUnit>(), ElementsAre(unit("tessel_ColumnUnit")));
  EXPECT_THAT(joins<EntityType>(), IsEmpty());
  EXPECT_THAT(joins<PropertyNamespace>(), IsEmpty());
  EXPECT_THAT(joins<PropertyDefinition>(),
              ElementsAre(unit("tessel_PropertyDefinition"), ns("tessel_PropertyDefinition")));
  EXPECT_THAT(joins<ValueDefinition>(), ElementsAre(unit("tessel_ValueDefinition"), ns("tessel_ValueDefinition")));
  EXPECT_THAT(joins<PropertySet>(), ElementsAre(ns("tessel_PropertySet")));
}

// A reference to a spatial object is one to both of its rows.
TEST(MappingOfClasses, JoinsTheRootOfSpatialObjectsAndBothRowsOfTheirParents) {
  const auto root = [](const std::string& table) {
    return R"(LEFT JOIN "tessel_SpatialStructure" ON "tessel_SpatialStructure"."id"=")" + table + R"("."id")";
  };
  const auto row = [](const std::string& table, const std::string& column, const std::string& owner) {
    const std::string alias = '"' + column + "_" + table + '"';
    return "LEFT JOIN \"" + table + "\" AS " + alias + " ON " + alias + ".\"id\"=" + owner;
  };
  const std::string rootTable = "tessel_SpatialStructure";
  EXPECT_THAT(joins<SpatialStructure>(), IsEmpty());
  EXPECT_THAT(joins<Site>(), ElementsAre(root("tessel_Site")));
  EXPECT_THAT(joins<Building>(),
              ElementsAre(root("tessel_Building"), row("tessel_Site", "site_id", R"("tessel_Building"."site_id")"),
                          row(rootTable, "site_id", R"("site_id_tessel_Site"."id")")));
  EXPECT_THAT(joins<Story>(), ElementsAre(root("tessel_Story"),
                                          row("tessel_Building", "building_id", R"("tessel_Story"."building_id")"),
                                          row(rootTable, "building_id", R"("building_id_tessel_Building"."id")")));
  EXPECT_THAT(joins<Project>(), ElementsAre(row("tessel_Site", "site_id", R"("tessel_Project"."site_id")"),
                                            row(rootTable, "site_id", R"("site_id_tessel_Site"."id")")));
}

}  // namespace
}  // namespace tessel::test
