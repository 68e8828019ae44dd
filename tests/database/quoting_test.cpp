// Names of tables and columns stand in quotes in every statement, for some are words of SQL: "table", "column", "index".

#include <algorithm>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tessel/tessel.h>

#include "support/old_files.h"
#include "support/samples.h"
#include "support/sql_trace.h"

namespace tessel::test {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Words = std::set<std::string>;

/// The words of a statement that stand in no quotes of either kind.
Words bareWords(const std::string& statement) {
  static const std::regex quoted(R"("[^"]*"|'[^']*')");
  static const std::regex word(R"([A-Za-z_]\w*)");
  const std::string rest = std::regex_replace(statement, quoted, " ");
  return {std::sregex_token_iterator(rest.begin(), rest.end(), word), std::sregex_token_iterator()};
}

Words namesIn(RawFile file) {
  Words names;
  for (const std::string& table : file.tables()) {
    names.insert(table);
    for (const std::string& column : file.columns(table)) names.insert(column);
  }
  return names;
}

/// The compatibility of a file is kept by statements that are fixed as they are.
bool isOfCompatibility(const std::string& statement) {
  return statement.find("compatibility") != std::string::npos || statement == "SELECT * FROM schema_version";
}

/// Statements are taken down before, because the look into the file runs some of its own.
void expectQuoted(const std::vector<std::string>& statements, const std::string& path) {
  const Words names = namesIn(RawFile(path));
  for (const std::string& statement : statements) {
    if (isOfCompatibility(statement)) continue;
    Words bare;
    const Words words = bareWords(statement);
    std::set_intersection(words.begin(), words.end(), names.begin(), names.end(), std::inserter(bare, bare.end()));
    EXPECT_THAT(bare, IsEmpty()) << statement;
  }
}

/// What a host does with objects of a class.
template <typename T>
void useAll(ProjectDb& db) {
  const int ownNumber = static_cast<int>(ObjectTraits<T>::type);
  const auto object = db.save(makeSample<T>(ownNumber));
  for (const Field<T>& field : Sample<T>::fields()) {
    if (field.fill && field.change) field.change(*object);
  }
  object->save();
  db.get<T>(object->id());
  db.get<T>(Sample<T>::key(*object));
  std::vector<TsSmartPtr<T>> found;
  db.get(found, Sample<T>::criteria(*object));
  db.get(found);
  db.count<T>(Sample<T>::criteria(*object));
  db.remove(object);
}

template <typename... T>
void useAll(ProjectDb& db, ::testing::Types<T...>) {
  (useAll<T>(db), ...);
}

void useRecordAndUnits(ProjectDb& db) {
  db.project().set_site(makeSample<Site>(2));
  db.project().set_master_drawings().emplace_back(L"drawing");
  db.project().set_sheet_categories().emplace_back();
  db.saveProject();
  const auto length = db.get<Measure>(NameKey(L"LENGTH"));
  db.setDefaultUnit(Unit::create(L"m", 1, length));
  db.setDefaultUnit(Unit::create(L"mm", 0.001, length));
  db.defaultUnit(L"LENGTH");
  db.columnUnit(&Story::elevation);
}

void useMembersAndChildren(ProjectDb& db) {
  const auto set = PropertySet::create(PropertyNamespace::create(L"Common"), L"Door");
  set->append_property_definition(L"Width", PropertyType());
  set->append_value_definition(L"Area", PropertyType());
  set->insert_entity_type(L"door");
  db.save(set);
  db.get<PropertySet>(set->id());
  std::vector<TsSmartPtr<PropertyDefinition>> found;
  IfcPropertySetDefinitionQuery query;
  query.property_name.equals(L"Width");
  query.property_set_name.equals(L"Door");
  db.get<IfcPropertySetDefinitionQuery>(found, query);

  const auto story = db.save(makeSample<Story>());
  db.get<SpatialStructure>(story->id());
  db.get<Building>(story->building()->id())->stories();
  db.get<Site>(story->building()->site()->id())->buildings();
}

TEST(Quoting, OfNamesIsCompleteInAllStatementsOfANewFile) {
  SqlTrace sql;
  SampleProject project;
  useAll(*project.db, SampledClasses());
  useRecordAndUnits(*project.db);
  useMembersAndChildren(*project.db);
  SampleProject copy;
  IdMapping mapping(copy.db.get());
  copy.db->copyMeta(project.db, mapping);
  copy.db->copyAll(project.db, mapping);
  copy.db->purge<PropertySet>();
  const std::vector<std::string> statements = sql.statements();
  EXPECT_THAT(statements, Contains(HasSubstr(R"("column")")));
  EXPECT_THAT(statements, Contains(HasSubstr(R"("index")")));
  expectQuoted(statements, project.path());
}

TEST(Quoting, OfNamesIsCompleteInTheMigrationOfAnOldFile) {
  TempFolder folder;
  const std::string path = folder.path("old.tessel");
  OldFile(1000).write(path);
  SqlTrace sql;
  ASSERT_TRUE(ProjectDb::open(OdString::fromUtf8(path), false));
  const std::vector<std::string> statements = sql.statements();
  EXPECT_THAT(statements, Contains(HasSubstr(R"(ALTER TABLE ")")));
  expectQuoted(statements, path);
}

}  // namespace
}  // namespace tessel::test
