// The columns of the file are written down twice, in the statements of the tables and in the class mappings.
// These tests hold the two together: ODB's insert names every column that it maps.

#include <regex>
#include <set>

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

}  // namespace
}  // namespace tessel::test
