// Updates and removals of catalogue rows by their ids, the wanted types, and what an element has too much.

#include "import/catalogue_import.h"

namespace tessel::test {
namespace {

struct CatalogueElement {
  std::wstring tag;
  std::string table;
  ObjectType type;
  std::wstring home;  ///< The field that says where it is at home, for those that need one.
};

const std::wstring inCommon = L"<namespace name='Common'/>";
const CatalogueElement catalogueElements[] = {
  {L"entitytype", "tessel_EntityType", ObjectType::EntityType, L""},
  {L"propertynamespace", "tessel_PropertyNamespace", ObjectType::PropertyNamespace, L""},
  {L"propertydefinition", "tessel_PropertyDefinition", ObjectType::PropertyDefinition, inCommon},
  {L"valuedefinition", "tessel_ValueDefinition", ObjectType::ValueDefinition, inCommon},
  {L"propertyset", "tessel_PropertySet", ObjectType::PropertySet, inCommon},
};

void PrintTo(const CatalogueElement& element, std::ostream* out) { *out << narrow(element.tag); }

class EachCatalogueElement : public CatalogueImport, public ::testing::WithParamInterface<CatalogueElement> {
protected:
  void SetUp() override {
    CatalogueImport::SetUp();
    ASSERT_THAT(import(L"<p>" + named(L"A") + named(L"Z") + L"</p>"), SaysNothing());
    row = rowOf(element.table, "A");
  }

  std::wstring named(const std::wstring& name, const std::wstring& attributes = L"",
                     const std::wstring& fields = L"") const {
    return objectOf(element.tag, attributes, elementOf(L"name", name) + element.home + fields);
  }
  std::wstring idIs(const std::wstring& id) const { return L"id='" + id + L"'"; }

  /// Without the namespaces that are there from the start.
  Names names() const {
    return project.raw().column("SELECT name FROM \"" + element.table +
                                "\" WHERE name NOT IN ('Common', 'Other') ORDER BY id");
  }

  ImportRun importOnly(const std::set<ObjectType>& types, const std::wstring& text, bool updating = false) {
    const Document document(text);
    ImportMessages messages;
    db->importFromXml(document.root(), types, {updating, messages.handler(), {}});
    return {text, messages.all()};
  }

  const CatalogueElement& element = GetParam();
  std::wstring row;
};

TEST_P(EachCatalogueElement, IsUpdatedByTheIdOfItsRow) {
  EXPECT_THAT(update(named(L"B", idIs(row))), SaysNothing());
  EXPECT_EQ(names(), (Names{"B", "Z"}));
  EXPECT_EQ(rowOf(element.table, "B"), row);
}

TEST_P(EachCatalogueElement, IsNewWhereTheIdIsALabel) {
  EXPECT_THAT(import(named(L"B", idIs(row))), SaysNothing());
  EXPECT_THAT(update(named(L"C", idIs(L"77"))), SaysNothing());
  EXPECT_EQ(names(), (Names{"A", "Z", "B", "C"}));
}

// By id only, so even those that merge by name clash with the row of that name.
TEST_P(EachCatalogueElement, IsNotSoughtByNameWhereItsIdIsThatOfARow) {
  const ExpectedMessage taken = error(L"An other object with the same values exists: name", L"<" + element.tag);
  EXPECT_THAT(update(named(L"A", idIs(L"77"))), Says({taken}));
  EXPECT_THAT(update(named(L"Z", idIs(row))), Says({taken}));
  EXPECT_EQ(names(), (Names{"A", "Z"}));
}

TEST_P(EachCatalogueElement, IsRemovedByTheIdOfItsRow) {
  EXPECT_THAT(update(L"<p>" + named(L"B", idIs(row) + L" remove='1'", L"<unknown/>") + named(L"C") + L"</p>"),
              SaysNothing());
  EXPECT_EQ(names(), (Names{"Z", "C"}));
}

TEST_P(EachCatalogueElement, IsNotRemovedUnlessItsRowIsMeant) {
  const std::wstring remove = L" remove='1'";
  EXPECT_THAT(import(named(L"B", idIs(row) + remove)), SaysNothing());
  EXPECT_THAT(update(L"<p>" + named(L"C", remove) + named(L"D", idIs(L"0") + remove) +
                     named(L"E", idIs(L"77") + remove) + L"</p>"),
              SaysNothing());
  EXPECT_EQ(names(), (Names{"A", "Z", "B", "C", "D"}));
}

TEST_P(EachCatalogueElement, IsReadIfItsTypeIsWanted) {
  EXPECT_THAT(importOnly({element.type}, L"<p>" + named(L"B") + L"<site><name>S</name></site><" + element.tag +
                                           L"><name>C</name>" + element.home + L"<unknown/></" + element.tag +
                                           L"></p>"),
              Says({warning((L"Unknown property 'unknown' for '" + element.tag + L"'").c_str(), L"<unknown")}));
  EXPECT_EQ(names(), (Names{"A", "Z", "B", "C"}));
  EXPECT_EQ(sites(), Names());
}

TEST_P(EachCatalogueElement, IsPassedOverInSilenceIfItsTypeIsNotWanted) {
  std::set<ObjectType> others = {ObjectType::Site, ObjectType::Measure, ObjectType::Unit};
  for (const CatalogueElement& other : catalogueElements) others.insert(other.type);
  others.erase(element.type);
  const std::wstring document = L"<p>" + named(L"B", L"", L"<unknown/>") + L"<" + element.tag + L"/><bridge/>" +
                                named(L"C", idIs(row)) + named(L"C", idIs(row) + L" remove='1'") + L"</p>";
  EXPECT_THAT(importOnly(others, document, true), Says({warning(L"Unknown object type 'bridge'", L"<bridge")}));
  EXPECT_EQ(names(), (Names{"A", "Z"}));
}

TEST_P(EachCatalogueElement, IsSavedInSpiteOfUnknownChildren) {
  const OdString unknown = (L"Unknown property 'town' for '" + element.tag + L"'").c_str();
  const OdString inOtherLetters = (L"Unknown property 'Label' for '" + element.tag + L"'").c_str();
  EXPECT_THAT(import(named(L"B", L"unknown='1'", L"<town/><Label>x<name/></Label>")),
              Says({warning(unknown, L"<town"), warning(inOtherLetters, L"<Label")}));
  EXPECT_EQ(names(), (Names{"A", "Z", "B"}));
}

TEST_P(EachCatalogueElement, MayBeTheRoot) {
  EXPECT_THAT(import(named(L"B")), SaysNothing());
  EXPECT_THAT(import(L"<" + element.tag + L"s>" + named(L"C") + L"</" + element.tag + L"s>"), SaysNothing());
  EXPECT_EQ(names(), (Names{"A", "Z", "B", "C"}));
}

// Tags are compared exactly.
TEST_P(EachCatalogueElement, IsKnownByItsExactTagOnly) {
  std::wstring capital = element.tag;
  capital[0] = static_cast<wchar_t>(capital[0] - L'a' + L'A');
  EXPECT_THAT(import(L"<p><" + capital + L"/><x:" + element.tag + L"/></p>"),
              Says({warning((L"Unknown object type '" + capital + L"'").c_str(), L"<" + capital),
                    warning((L"Unknown object type 'x:" + element.tag + L"'").c_str(), L"<x:")}));
}

INSTANTIATE_TEST_SUITE_P(Import, EachCatalogueElement, ::testing::ValuesIn(catalogueElements),
                         [](const auto& param) { return narrow(param.param.tag); });

// What is special.

class CatalogueUpdate : public CatalogueImport {};

TEST_F(CatalogueUpdate, MakesRowsThatTheDocumentCanReferTo) {
  import(L"<p><entitytype>Wall</entitytype>" + definition(L"D") + value(L"V") + L"</p>");
  const auto id = [this](const char* table, const char* name) { return L"id='" + rowOf(table, name) + L"'"; };
  const std::wstring ns = id("tessel_PropertyNamespace", "Other");
  const std::wstring type = id("tessel_EntityType", "Wall");
  const std::wstring d = id("tessel_PropertyDefinition", "D");
  const std::wstring v = id("tessel_ValueDefinition", "V");
  const std::wstring members =
    L"<property_definition " + d + L"/><value_definition " + v + L"/><entity_type " + type + L"/></propertyset>";
  EXPECT_THAT(update(L"<p><propertynamespace " + ns + L">Other</propertynamespace><entitytype " + type +
                     L">Door</entitytype>" + definition(L"D2", L"", d) + value(L"V2", L"", v) +
                     L"<propertyset><name>S</name><namespace " + ns + L"/>" + members + L"</p>"),
              SaysNothing());
  EXPECT_EQ(definitionsOfSets(), Names{"D2"});
  EXPECT_EQ(valuesOfSets(), Names{"V2"});
  EXPECT_EQ(typesOfSets(), Names{"Door"});
}

// An update gives a definition another home.
TEST_F(CatalogueUpdate, MayMoveARowToAnotherNamespace) {
  import(L"<p>" + definition(L"D") + value(L"V") + set(L"") + L"</p>");
  const auto moved = [this](const std::wstring& tag, const char* table, const char* name) {
    return objectOf(tag, L"id='" + rowOf(table, name) + L"'",
                    elementOf(L"name", wide(name)) + L"<namespace name='Other'/>");
  };
  EXPECT_THAT(update(L"<p>" + moved(L"propertydefinition", "tessel_PropertyDefinition", "D") +
                     moved(L"valuedefinition", "tessel_ValueDefinition", "V") +
                     moved(L"propertyset", "tessel_PropertySet", "Walls") + L"</p>"),
              SaysNothing());
  const Names other = {std::to_string(idOf("tessel_PropertyNamespace", "Other"))};
  for (const char* table : {"tessel_PropertyDefinition", "tessel_ValueDefinition", "tessel_PropertySet"})
    EXPECT_EQ(column(table, "namespace_id"), other);
}

TEST_F(CatalogueUpdate, RemovesTheDefinitionsOfASetWithIt) {
  import(L"<p>" + definition(L"D") + definition(L"E") + value(L"V") +
         set(L"<property_definition name='D'/><value_definition name='V'/><entity_type>Wall</entity_type>") + L"</p>");
  EXPECT_THAT(update(L"<propertyset id='" + rowOf("tessel_PropertySet", "Walls") + L"' remove='1'/>"), SaysNothing());
  EXPECT_EQ(definitions(), Names{"E"});
  EXPECT_EQ(values(), Names());
  EXPECT_EQ(types(), Names{"Wall"});
}

// Nothing is said of a row that is in use, and what the run has done so far goes with the attempt.
TEST_F(CatalogueUpdate, DoesNotRemoveWhatIsInUse) {
  import(L"<p>" + definition(L"D") + value(L"V") +
         set(L"<property_definition name='D'/><value_definition name='V'/><entity_type>Wall</entity_type>") + L"</p>");
  const auto removal = [this](const std::wstring& tag, const char* table, const char* name) {
    return L"<" + tag + L" id='" + rowOf(table, name) + L"' remove='1'/>";
  };
  const auto before = dumpOf(project.raw());
  for (const std::wstring& element : {removal(L"propertynamespace", "tessel_PropertyNamespace", "Common"),
                                      removal(L"propertydefinition", "tessel_PropertyDefinition", "D"),
                                      removal(L"valuedefinition", "tessel_ValueDefinition", "V"),
                                      removal(L"entitytype", "tessel_EntityType", "Wall")}) {
    EXPECT_THAT(update(L"<p><site><name>lost</name></site>" + element + L"</p>"), SaysNothing()) << narrow(element);
    EXPECT_EQ(dumpOf(project.raw()), before);
  }
}

TEST_F(CatalogueUpdate, ThatFailsLeavesTheRow) {
  import(definition(L"D", L"<description>old</description>"));
  const auto before = dumpOf(project.raw());
  const std::wstring id = L"id='" + rowOf("tessel_PropertyDefinition", "D") + L"'";
  EXPECT_THAT(update(definition(L"D2", L"<description>new</description><ifc_type>Foo</ifc_type>", id)),
              Says({error(L"Invalid 'propertydefinition > ifc_type' property value: Foo", L"<ifc_type")}));
  EXPECT_EQ(dumpOf(project.raw()), before);
}

TEST_F(CatalogueUpdate, OfASetWhoseDefinitionIsInUseElsewhereIsAnError) {
  import(L"<p>" + definition(L"D") + set(L"<property_definition name='D'/>") +
         object(L"propertyset", L"Doors", L"<property_definition name='D'/>") + L"</p>");
  EXPECT_THAT(update(L"<p><propertyset id='" + rowOf("tessel_PropertySet", "Walls") + L"' remove='1'/></p>"),
              Says({error(L"Project database exception", L"<propertyset id=")}));
  EXPECT_EQ(sets(), Names{"Doors"});
  EXPECT_EQ(definitions(), Names{"D"});
}

}  // namespace
}  // namespace tessel::test
