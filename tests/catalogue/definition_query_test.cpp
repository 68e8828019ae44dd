#include <algorithm>
#include <map>

#include <gtest/gtest.h>

#include <odb/exceptions.hxx>

#include "catalogue/catalogue.h"
#include "support/sql_trace.h"

// Questions in terms of IFC: the property definitions in sets of a name.

namespace tessel::test {
namespace {

using Names = std::vector<OdString>;
using Query = IfcPropertySetDefinitionQuery;

/// Two sets and a definition in none:
///   Door    Width (IFC: OverallWidth), Fire (no IFC name)
///   Window  Fire, Sill (IFC: an empty one)
///   none    Loose
class DefinitionQuery : public ::testing::Test {
protected:
  void SetUp() override {
    add("Width")->set_ifc_name(L"OverallWidth");
    add("Sill")->set_ifc_name(L"");
    add("Fire");
    add("Loose");
    makeSet(L"Door", {"Width", "Fire"});
    makeSet(L"Window", {"Fire", "Sill"});
    project.db->save(definitions.at("Loose"));
  }

  TsSmartPtr<PropertyDefinition> add(const std::string& name) {
    const auto definition =
      PropertyDefinition::create(ns, OdString::fromUtf8(name), PropertyType::Single(Type::Double));
    definitions[name] = definition;
    return definition;
  }

  void makeSet(const OdString& name, const std::vector<std::string>& members) {
    const auto set = PropertySet::create(ns, name);
    for (const std::string& member : members) set->append_property_definition(definitions.at(member));
    // Neither counts: the query asks for property definitions and for the names of sets.
    set->append_value_definition(value);
    set->set_ifc_name(L"Pset");
    project.db->save(set);
  }

  /// Sorted, for the query promises no order.
  static Names found(const ProjectDb& db, const Query& query) {
    std::vector<TsSmartPtr<PropertyDefinition>> objects;
    db.get<Query>(objects, query);
    Names names = namesOf(objects);
    std::sort(names.begin(), names.end());
    return names;
  }
  Names found(const Query& query) const { return found(*project.db, query); }

  static Query ofProperty(const OdString& name) {
    Query query;
    query.property_name.equals(name);
    return query;
  }
  static Query ofSet(const OdString& name) {
    Query query;
    query.property_set_name.equals(name);
    return query;
  }

  SampleProject project;
  TsSmartPtr<PropertyNamespace> ns = PropertyNamespace::create(L"Common");
  TsSmartPtr<ValueDefinition> value = ValueDefinition::create(ns, L"Width");
  std::map<std::string, TsSmartPtr<PropertyDefinition>> definitions;
};

TEST_F(DefinitionQuery, WithoutConditionsFindsEachMembershipAndTheDefinitionsInNoSet) {
  EXPECT_EQ(found({}), (Names{L"Fire", L"Fire", L"Loose", L"Sill", L"Width"}));
}

TEST_F(DefinitionQuery, ByTheNameOfASetFindsItsDefinitionsAlone) {
  EXPECT_EQ(found(ofSet(L"Door")), (Names{L"Fire", L"Width"}));
  EXPECT_EQ(found(ofSet(L"Window")), (Names{L"Fire", L"Sill"}));
  EXPECT_EQ(found(ofSet(L"door")), Names());
  EXPECT_EQ(found(ofSet(L"Pset")), Names()) << "the IFC name of a set is not asked for";
}

TEST_F(DefinitionQuery, FindsADefinitionOnceForEachSetThatMatches) {
  Query query = ofProperty(L"Fire");
  EXPECT_EQ(found(query), (Names{L"Fire", L"Fire"}));
  query.property_set_name.contains(L"o");
  EXPECT_EQ(found(query), (Names{L"Fire", L"Fire"}));
  query.property_set_name.equals(L"Door");
  EXPECT_EQ(found(query), Names{L"Fire"});
}

TEST_F(DefinitionQuery, FindsADefinitionByItsNameOnlyIfItHasNoIfcName) {
  EXPECT_EQ(found(ofProperty(L"Loose")), Names{L"Loose"});
  EXPECT_EQ(found(ofProperty(L"Width")), Names());
  EXPECT_EQ(found(ofProperty(L"OverallWidth")), Names{L"Width"});
}

TEST_F(DefinitionQuery, TakesAnEmptyIfcNameForOne) {
  EXPECT_EQ(found(ofProperty(L"Sill")), Names());
  EXPECT_EQ(found(ofProperty(L"")), Names{L"Sill"});
}

TEST_F(DefinitionQuery, AsksBothConditions) {
  Query query = ofProperty(L"OverallWidth");
  query.property_set_name.equals(L"Door");
  EXPECT_EQ(found(query), Names{L"Width"});
  query.property_set_name.equals(L"Window");
  EXPECT_EQ(found(query), Names());
}

TEST_F(DefinitionQuery, KnowsAllModesOfACondition) {
  const auto ofProperties = [this](auto&& set) {
    Query query;
    set(query.property_name);
    return found(query);
  };
  EXPECT_EQ(ofProperties([](StringCriteria& c) { c.contains(L"i"); }), (Names{L"Fire", L"Fire", L"Width"}));
  EXPECT_EQ(ofProperties([](StringCriteria& c) { c.startsWith(L"overall"); }), Names{L"Width"});
  EXPECT_EQ(ofProperties([](StringCriteria& c) { c.endsWith(L"e"); }), (Names{L"Fire", L"Fire", L"Loose"}));
  EXPECT_EQ(ofProperties([](StringCriteria& c) { c.match(L"_ire"); }), (Names{L"Fire", L"Fire"}));
  EXPECT_EQ(ofProperties([](StringCriteria& c) { c.notEquals(L"Fire"); }), (Names{L"Loose", L"Sill", L"Width"}));
  EXPECT_EQ(ofProperties([](StringCriteria& c) { c.empty(); }), Names{L"Sill"});
  EXPECT_EQ(ofProperties([](StringCriteria& c) { c.notEmpty(); }), (Names{L"Fire", L"Fire", L"Loose", L"Width"}));
  // A definition always has a name to fall back to; the condition itself is on the IFC name.
  EXPECT_EQ(ofProperties([](StringCriteria& c) { c.unset(); }), (Names{L"Fire", L"Fire", L"Loose"}));
  EXPECT_EQ(ofProperties([](StringCriteria& c) { c.set(); }), (Names{L"Fire", L"Fire", L"Loose", L"Sill", L"Width"}));
}

// A definition in no set has no set name, so it meets the condition that there be none, and no other.
TEST_F(DefinitionQuery, SeesNoSetNameOnADefinitionInNoSet) {
  const auto ofSets = [this](auto&& set) {
    Query query;
    set(query.property_set_name);
    return found(query);
  };
  EXPECT_EQ(ofSets([](StringCriteria& c) { c.unset(); }), Names{L"Loose"});
  EXPECT_EQ(ofSets([](StringCriteria& c) { c.set(); }), (Names{L"Fire", L"Fire", L"Sill", L"Width"}));
  EXPECT_EQ(ofSets([](StringCriteria& c) { c.notEquals(L"Window"); }), (Names{L"Fire", L"Width"}));
  EXPECT_EQ(ofSets([](StringCriteria& c) { c.notEmpty(); }), (Names{L"Fire", L"Fire", L"Sill", L"Width"}));
}

TEST_F(DefinitionQuery, AppendsWhatItFinds) {
  std::vector<TsSmartPtr<PropertyDefinition>> objects;
  project.db->get<Query>(objects, ofProperty(L"Loose"));
  project.db->get<Query>(objects, ofProperty(L"OverallWidth"));
  project.db->get<Query>(objects, ofProperty(L"nobody"));
  EXPECT_EQ(namesOf(objects), (Names{L"Loose", L"Width"}));
}

TEST_F(DefinitionQuery, GivesWholeCleanObjectsOfTheDatabase) {
  const auto width = definitions.at("Width");
  width->set_unit(makeSample<Unit>());
  width->set_label(L"Breadth");
  width->set_default_value(2);
  ASSERT_TRUE(width->save());
  std::vector<TsSmartPtr<PropertyDefinition>> objects;
  project.db->get<Query>(objects, ofProperty(L"OverallWidth"));
  ASSERT_EQ(objects.size(), 1U);
  EXPECT_EQ(valuesOf(*objects[0]), valuesOf(*width));
  EXPECT_TRUE(*objects[0] == *width);
  EXPECT_EQ(objects[0]->id(), width->id());
  EXPECT_FALSE(objects[0]->isDirty());
  EXPECT_EQ(objects[0]->projectDb(), project.db);
}

TEST_F(DefinitionQuery, GivesANewObjectForEachRow) {
  std::vector<TsSmartPtr<PropertyDefinition>> objects;
  project.db->get<Query>(objects, ofProperty(L"Fire"));
  ASSERT_EQ(objects.size(), 2U);
  EXPECT_EQ(objects[0]->id(), objects[1]->id());
  EXPECT_NE(objects[0], objects[1]);
}

TEST_F(DefinitionQuery, JoinsTheTransactionOfTheHostAndCommitsNothing) {
  Transaction transaction(project.db, Transaction::BeginCurrent);
  add("Depth");
  makeSet(L"Gate", {"Depth"});
  EXPECT_EQ(found(ofSet(L"Gate")), Names{L"Depth"});
  EXPECT_FALSE(transaction.finalized());
  transaction.rollback();
  EXPECT_EQ(found(ofSet(L"Gate")), Names());
  EXPECT_FALSE(Transaction::hasCurrent());
}

TEST_F(DefinitionQuery, SetsATransactionOfAnotherFileAside) {
  SampleProject other;
  Transaction transaction(other.db, Transaction::BeginCurrent);
  EXPECT_EQ(found(ofSet(L"Door")).size(), 2U);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_EQ(found(*other.db, {}), Names());
}

TEST_F(DefinitionQuery, LetsTheExceptionOfABrokenReferencePass) {
  definitions.at("Loose")->set_unit(makeSample<Unit>());
  ASSERT_TRUE(definitions.at("Loose")->save());
  project.raw().exec("DELETE FROM tessel_Unit");
  EXPECT_THROW(found(ofProperty(L"Loose")), odb::object_not_persistent);
  EXPECT_EQ(found(ofSet(L"Door")).size(), 2U);
}

TEST_F(DefinitionQuery, LetsTheExceptionOfABrokenFilePass) {
  project.raw().exec("DROP TABLE tessel_PropertySet_property_definitions");
  EXPECT_THROW(found({}), odb::exception);
}

TEST(DefinitionQueryStatement, JoinsTheSetsToTheDefinitionsAndHasNoOrder) {
  SqlTrace sql;
  SampleProject project;
  sql.clear();
  std::vector<TsSmartPtr<PropertyDefinition>> objects;
  Query query;
  query.property_name.equals(L"a");
  query.property_set_name.equals(L"b");
  project.db->get<Query>(objects, query);
  const std::vector<std::string> statements = sql.beginningWith("SELECT");
  ASSERT_EQ(statements.size(), 1U);
  std::string columns;
  for (const char* column :
       {"id", "name", "label", "description", "unit_id", "ifc_name", "ifc_type", "type_structure", "type_value_type",
        "type_key_type", "visible", "namespace_id", "type_spec", "type_spec2", "default_value"}) {
    columns += std::string(columns.empty() ? "" : ", ") + "\"tessel_PropertyDefinition\".\"" + column + "\"";
  }
  EXPECT_EQ(statements[0].substr(0, statements[0].find(" WHERE")),
            "SELECT " + columns +
              " FROM \"tessel_PropertyDefinition\""
              " LEFT JOIN \"tessel_PropertySet_property_definitions\" ON"
              " \"tessel_PropertySet_property_definitions\".\"property_definition_id\" ="
              " \"tessel_PropertyDefinition\".\"id\""
              " LEFT JOIN \"tessel_PropertySet\" ON"
              " \"tessel_PropertySet_property_definitions\".\"object_id\" = \"tessel_PropertySet\".\"id\"");
  EXPECT_EQ(statements[0].find("ORDER BY"), std::string::npos);
}

}  // namespace
}  // namespace tessel::test
