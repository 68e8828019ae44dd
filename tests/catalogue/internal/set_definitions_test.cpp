// The ids of the definitions of a set, read without loading the set.

#include <set>

#include <gtest/gtest.h>

#include <odb/sqlite/database.hxx>
#include <tessel/mapping-odb.hxx>

#include "database/project_db_impl.h"
#include "database/transaction_scope.h"
#include "operations/dependants.h"
#include "support/samples.h"
#include "support/sql_trace.h"

namespace tessel::test {
namespace {

class DefinitionsBySetId : public ::testing::Test {
protected:
  void SetUp() override {
    door->append_property_definition(L"Width", PropertyType());
    door->append_property_definition(L"Height", PropertyType());
    door->append_value_definition(L"Area", PropertyType());
    project.db->save(door);
    window->append_property_definition(door->property_definitions()[0]);
    project.db->save(window);
  }

  template <typename View>
  std::set<unsigned int> ids(unsigned int setId) {
    TransactionScope scope(*project.db);
    std::set<unsigned int> found;
    const odb::query<View> ofSet(odb::query<PropertySet>::id == setId);
    for (const View& row : project.db->impl().database->query<View>(ofSet)) found.insert(row.id);
    return found;
  }

  unsigned int property(std::size_t index) const { return door->property_definitions().at(index)->id(); }
  unsigned int value() const { return door->value_definitions().at(0)->id(); }

  SqlTrace sql;
  SampleProject project;
  TsSmartPtr<PropertyNamespace> ns = makeSample<PropertyNamespace>();
  TsSmartPtr<PropertySet> door = PropertySet::create(ns, L"Door");
  TsSmartPtr<PropertySet> window = PropertySet::create(ns, L"Window");
};

TEST_F(DefinitionsBySetId, AreThosePropertiesAndValuesThatTheSetLists) {
  EXPECT_EQ(ids<PropertySetDefinitionView>(door->id()), (std::set<unsigned int>{property(0), property(1)}));
  EXPECT_EQ(ids<PropertySetValDefinitionView>(door->id()), std::set<unsigned int>{value()});
  EXPECT_EQ(ids<PropertySetDefinitionView>(window->id()), std::set<unsigned int>{property(0)});
  EXPECT_TRUE(ids<PropertySetValDefinitionView>(window->id()).empty());
  EXPECT_TRUE(ids<PropertySetDefinitionView>(4711).empty());
}

TEST_F(DefinitionsBySetId, AreReadWithQuotedNames) {
  sql.clear();
  ids<PropertySetDefinitionView>(door->id());
  ids<PropertySetValDefinitionView>(door->id());
  const auto statements = sql.beginningWith("SELECT");
  ASSERT_EQ(statements.size(), 2U);
  for (const std::string& statement : statements) {
    std::string unquoted;
    bool inside = false;
    for (const char character : statement) {
      if (character == '"') inside = !inside;
      if (!inside) unquoted += character;
    }
    EXPECT_EQ(unquoted.find("tessel"), std::string::npos) << statement;
    EXPECT_EQ(unquoted.find("_id"), std::string::npos) << statement;
  }
}

TEST_F(DefinitionsBySetId, AreWhatARemovalByIdTakesAlong) {
  TransactionScope scope(*project.db);
  EXPECT_EQ(dependantsOf<PropertySet>(*project.db, door->id()),
            (std::set<ObjectKey>{{ObjectType::PropertyDefinition, property(0)},
                                 {ObjectType::PropertyDefinition, property(1)},
                                 {ObjectType::ValueDefinition, value()}}));
  EXPECT_TRUE(dependantsOf<PropertySet>(*project.db, 4711).empty());
  EXPECT_TRUE(dependantsOf<PropertyNamespace>(*project.db, ns->id()).empty());
}

TEST_F(DefinitionsBySetId, OfAnObjectAreThoseThatItHoldsAndThatHaveRows) {
  door->remove_property_definition(L"Width");
  door->append_property_definition(L"Unsaved", PropertyType());
  EXPECT_EQ(dependantsOf(*door), (std::set<ObjectKey>{{ObjectType::PropertyDefinition, property(0)},
                                                      {ObjectType::ValueDefinition, value()}}));
  EXPECT_TRUE(dependantsOf(*ns).empty());
}

}  // namespace
}  // namespace tessel::test
