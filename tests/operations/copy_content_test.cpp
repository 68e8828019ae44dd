// A whole catalogue with a building goes from one file to another, and all of it is there afterwards.

#include <gmock/gmock.h>

#include <tessel/project.h>
#include <tessel/project_db_import.h>

#include <pugixml.hpp>

#include "operations/copied_content.h"
#include "operations/copying.h"

namespace tessel::test {
namespace {

using ::testing::IsEmpty;
using ::testing::Not;

class CopyContent : public Copying {
protected:
  CopyContent() { fill(other); }

  /// The sample catalogue, and what it lacks: a project with buildings, and definitions of values with a unit.
  static void fill(const std::shared_ptr<ProjectDb>& target) {
    pugi::xml_document document;
    ASSERT_TRUE(document.load_file(TESSEL_EXAMPLES "/ifc-common-elements.xml"));
    target->importFromXml(document.document_element(), {});
    target->project().set_name(L"Harbour");
    target->project().set_master_drawings() = {Project::MasterDrawing(L"b.dwg"), Project::MasterDrawing(L"a.dwg")};
    target->project().set_sheet_categories() = {SheetCategory(L"Plans", L"A", 100, 3)};
    const auto hill = makeSample<Site>(1);
    target->project().set_site(hill);
    target->saveProject();
    for (const int number : {2, 3}) {
      const auto building = filled(Building::create(target->project().site()), number);
      target->save(filled(Story::create(building), number));
      target->save(filled(Story::create(building), number + 10));
    }
    const auto set = PropertySet::create(target->save(makeSample<PropertyNamespace>(4)), L"Values");
    const auto value = filled(Sample<ValueDefinition>::create(4, set->ns()), 4);
    EXPECT_TRUE(set->append_value_definition(target->save(value)));
    set->append_value_definition(L"Note", PropertyType::Single(PropertyType::Type::String));
    target->save(set);
  }

  void expectEqualContent() {
    const NamedContent::Tables source = NamedContent(otherProject.raw()).tables();
    const NamedContent::Tables destination = NamedContent(project.raw()).tables();
    ASSERT_EQ(source.size(), destination.size());
    for (const auto& [table, lines] : source) {
      EXPECT_EQ(lines, destination.at(table)) << table;
      EXPECT_THAT(lines, Not(IsEmpty())) << table;
    }
    EXPECT_THAT(project.raw().rows("PRAGMA foreign_key_check"), IsEmpty());
    EXPECT_EQ(project.raw().scalarText("PRAGMA integrity_check"), "ok");
  }

  void copyEverything() {
    const Unchanged source(otherProject);
    IdMapping mapping(db);
    db->copyMeta(other, mapping);
    db->copyAll(other, mapping);
  }

  /// The same document is there already. Rows that would be in the way of the source's are taken out, as a host must.
  void fillDestination() {
    fill(db);
    project.raw().exec("DELETE FROM tessel_ColumnUnit; DELETE FROM tessel_DefaultUnit");
    startWatching();
  }
};

TEST_F(CopyContent, IntoANewFileIsEqual) {
  copyEverything();
  expectEqualContent();
}

TEST_F(CopyContent, IntoAFileWithOtherIdsIsEqual) {
  // These rows go, and their ids are not used again.
  for (int i = 0; i < 7; ++i) db->save(makeSample<PropertySet>(50 + i));
  for (int i = 0; i < 5; ++i) db->save(makeSample<Story>(50 + i));
  for (int i = 0; i < 3; ++i) db->save(makeSample<ValueDefinition>(60 + i));
  for (int i = 0; i < 9; ++i) db->save(EntityType::create(OdString::format(L"Own %d", i)));
  db->purge({ObjectType::Story, ObjectType::Building, ObjectType::Site, ObjectType::EntityType,
             ObjectType::PropertyDefinition, ObjectType::ValueDefinition, ObjectType::PropertySet,
             ObjectType::PropertyNamespace, ObjectType::Unit, ObjectType::Measure});
  copyEverything();
  expectEqualContent();
  EXPECT_NE(project.raw().column("SELECT id FROM tessel_PropertySet ORDER BY id"),
            otherProject.raw().column("SELECT id FROM tessel_PropertySet ORDER BY id"));
}

TEST_F(CopyContent, IntoAFileThatHasItIsEqualIfAllIsKept) {
  fillDestination();
  reactor.otherwise(SaveResolution::Kept);
  copyEverything();
  expectEqualContent();
  EXPECT_FALSE(reactor.clashes.empty());
}

TEST_F(CopyContent, IntoAFileThatHasItIsEqualIfAllIsOverwritten) {
  fillDestination();
  reactor.otherwise(SaveResolution::Overwritten);
  copyEverything();
  expectEqualContent();
  EXPECT_FALSE(reactor.clashes.empty());
}

TEST_F(CopyContent, OverwritingBringsBackWhatTheDestinationHasChanged) {
  fillDestination();
  project.raw().exec("UPDATE tessel_Site SET town = 'elsewhere'; UPDATE tessel_Story SET elevation = 4711;"
                     "UPDATE tessel_PropertyDefinition SET description = 'changed', unit_id = NULL;"
                     "UPDATE tessel_PropertySet SET visible = 0, ifc_name = 'changed';"
                     "DELETE FROM tessel_PropertySet_property_definitions WHERE \"index\" > 0;"
                     "DELETE FROM tessel_PropertySet_entity_types");
  reactor.otherwise(SaveResolution::Overwritten);
  copyEverything();
  expectEqualContent();
}

TEST_F(CopyContent, KeepingLeavesWhatTheDestinationHasChanged) {
  fillDestination();
  project.raw().exec("UPDATE tessel_Site SET town = 'elsewhere'; UPDATE tessel_PropertyDefinition SET visible = 0");
  const NamedContent::Tables before = NamedContent(project.raw()).tables();
  reactor.otherwise(SaveResolution::Kept);
  copyEverything();
  const NamedContent::Tables after = NamedContent(project.raw()).tables();
  for (const char* const table : {"tessel_Site", "tessel_PropertyDefinition", "tessel_PropertySet"}) {
    EXPECT_EQ(after.at(table), before.at(table));
  }
}

TEST_F(CopyContent, ThereAndBackIsEqual) {
  copyEverything();
  SampleProject third;
  IdMapping mapping(third.db);
  third.db->copyMeta(db, mapping);
  third.db->copyAll(db, mapping);
  EXPECT_EQ(NamedContent(third.raw()).tables(), NamedContent(otherProject.raw()).tables());
}

TEST_F(CopyContent, AsOneTransactionOfTheHostIsEqual) {
  Transaction transaction(db, Transaction::BeginCurrent);
  copyEverything();
  transaction.commit();
  expectEqualContent();
}

}  // namespace
}  // namespace tessel::test
