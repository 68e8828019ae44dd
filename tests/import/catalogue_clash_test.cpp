// Objects of the catalogue whose name or label is taken: definitions of properties and sets merge with the row of that
// name, all others clash.

#include <tessel/transaction.h>

#include "import/catalogue_import.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

const OdString taken = u"An other object with the same values exists: name";

class CatalogueMerge : public CatalogueImport {
protected:
  static std::wstring full(const std::wstring& tag, const std::wstring& text, const std::wstring& attributes = L"") {
    return object(tag, L"A", elementOf(L"label", text) + elementOf(L"ifc_name", text), attributes);
  }
};

// In every mode; what is not in the element is reset.
TEST_F(CatalogueMerge, UpdatesTheRowOfTheNameAndNamespace) {
  const auto fields = "name || '|' || coalesce(label, 'null') || '|' || coalesce(ifc_name, 'null')";
  for (const wchar_t* tag : {L"propertydefinition", L"propertyset"}) {
    const std::string table = tag == std::wstring(L"propertyset") ? "tessel_PropertySet" : "tessel_PropertyDefinition";
    import(full(tag, L"old"));
    const auto row = rowOf(table, "A");
    RecordingReactor reactor(db);
    EXPECT_THAT(import(full(tag, L"new")), SaysNothing());
    EXPECT_EQ(fieldOf(table, "A", fields), "A|new|new");
    EXPECT_THAT(update(full(tag, L"newer", L"id='0'")), SaysNothing());
    EXPECT_EQ(fieldOf(table, "A", fields), "A|newer|newer");
    EXPECT_THAT(import(object(tag, L"A")), SaysNothing());
    EXPECT_EQ(fieldOf(table, "A", fields), "A|null|null");
    EXPECT_EQ(rowOf(table, "A"), row);
    EXPECT_EQ(project.count(table), 1);
    EXPECT_TRUE(reactor.clashes.empty());
  }
}

TEST_F(CatalogueMerge, IsWithinTheNamespace) {
  const auto named = [](const std::wstring& tag, const std::wstring& ns) {
    return objectOf(tag, L"", L"<name>A</name>" + ns);
  };
  for (const wchar_t* tag : {L"propertydefinition", L"propertyset"}) {
    EXPECT_THAT(import(L"<p><propertynamespace id='5'>" + std::wstring(tag) + L"</propertynamespace>" +
                       named(tag, L"<namespace name='Common'/>") + named(tag, L"<namespace name='Other'/>") +
                       named(tag, L"<namespace id='5'/>") + named(tag, L"<namespace id='5'/>") + L"</p>"),
                SaysNothing());
  }
  EXPECT_EQ(definitions(), (Names{"A", "A", "A"}));
  EXPECT_EQ(sets(), (Names{"A", "A", "A"}));
}

// Their exact name, and only where they have one.
TEST_F(CatalogueMerge, IsByTheExactName) {
  EXPECT_THAT(import(L"<p>" + definition(L"A") + definition(L"a") + definition(L" A") + L"</p>"), SaysNothing());
  EXPECT_EQ(definitions(), (Names{"A", "a", " A"}));
  EXPECT_THAT(import(definition(L"")), SaysNothing());
  EXPECT_THAT(import(definition(L"")), Says({error(taken, L"<propertydefinition")}));
}

// The object takes the label as its id before it is saved, and there is no row of that id.
TEST_F(CatalogueMerge, DoesNotGoWithALabel) {
  for (const wchar_t* tag : {L"propertydefinition", L"propertyset"}) {
    import(full(tag, L"old"));
    const auto before = dumpOf(project.raw());
    const std::wstring place = std::wstring(L"<") + tag;
    EXPECT_THAT(import(full(tag, L"new", L"id='77'")), Says({error(L"Object not found", place)}));
    EXPECT_EQ(dumpOf(project.raw()), before);
  }
}

// The others clash, and the reactor decides.

struct Clashing {
  std::wstring tag;
  std::string table;
  std::wstring old;  ///< An object "A", and one that would be another.
  std::wstring incoming;
  std::string key;         ///< What differs in them: "old" and "new", in a column that an overwrite brings along.
  std::wstring referring;  ///< A set that refers to the incoming object by the id 9, and the column that shows it.
  std::string referred;
};

const std::wstring valueHome = L"<name>A</name><namespace name='Common'/>";
const Clashing clashing[] = {
  {L"propertynamespace", "tessel_PropertyNamespace", L"<name>A</name><label>old</label>",
   L"<name>A</name><label>new</label>", "label", L"<namespace id='9'/>", "SELECT namespace_id FROM tessel_PropertySet"},
  {L"valuedefinition", "tessel_ValueDefinition", valueHome + L"<description>old</description>",
   valueHome + L"<description>new</description>", "description",
   L"<namespace name='Common'/><value_definition id='9'/>",
   "SELECT value_definition_id FROM tessel_PropertySet_value_definitions"},
  {L"entitytype", "tessel_EntityType", L"A", L"A", "name", L"<namespace name='Common'/><entity_type id='9'/>",
   "SELECT entity_type_id FROM tessel_PropertySet_entity_types"},
};

class CatalogueClash : public CatalogueImport, public ::testing::WithParamInterface<Clashing> {
protected:
  void SetUp() override {
    CatalogueImport::SetUp();
    ASSERT_THAT(import(objectOf(clash.tag, L"", clash.old)), SaysNothing());
    row = idOf(clash.table, "A");
    rows = project.count(clash.table);
  }
  std::string valueOf(const std::string& name) const { return fieldOf(clash.table, name, clash.key); }
  unsigned int referred() const { return static_cast<unsigned int>(project.raw().scalarInt(clash.referred)); }

  /// Whether the value is that of the document. An entity type is nothing but its name.
  std::string expected(const char* value) const { return clash.key == "name" ? "A" : value; }

  const Clashing& clash = GetParam();
  const std::wstring document = L"<p>" + objectOf(clash.tag, L"id='9'", clash.incoming) +
                                L"<propertyset><name>S</name>" + clash.referring + L"</propertyset></p>";
  RecordingReactor reactor{db};
  unsigned int row = 0;
  long long rows = 0;
};

TEST_P(CatalogueClash, CostsTheElementByDefault) {
  const auto before = dumpOf(project.raw());
  const ImportRun run = import(document);
  ASSERT_FALSE(run.messages.empty());
  EXPECT_EQ(run.messages[0],
            (ImportMessage{ImportSeverity::Error, taken, static_cast<std::int64_t>(document.find(clash.tag))}));
  EXPECT_THAT(run.messages.back().text.toUtf8(), ::testing::HasSubstr("with id 9"));
  EXPECT_EQ(dumpOf(project.raw()), before);
}

TEST_P(CatalogueClash, MayKeepTheExistingObject) {
  reactor.answer({SaveResolution::Kept});
  EXPECT_THAT(import(document), SaysNothing());
  EXPECT_EQ(valueOf("A"), expected("old"));
  EXPECT_EQ(referred(), row);
  EXPECT_EQ(project.count(clash.table), rows);
}

TEST_P(CatalogueClash, MayOverwriteTheExistingObject) {
  reactor.answer({SaveResolution::Overwritten});
  EXPECT_THAT(import(document), SaysNothing());
  EXPECT_EQ(valueOf("A"), expected("new"));
  EXPECT_EQ(referred(), row);
  EXPECT_EQ(project.count(clash.table), rows);
}

// A namespace cannot take another name, so it clashes again until it is given up.
TEST_P(CatalogueClash, MayRenameTheNewObject) {
  reactor.rename({L"A 2", L"A 3", L"A 4", L"A 5", L"A 6", L"A 7"});
  const ImportRun run = import(document);
  if (clash.tag == L"propertynamespace") {
    EXPECT_EQ(reactor.clashes.size(), 6U);
    EXPECT_EQ(run.messages.front().text, u"An other object with the same values exists: PropertyNamespace.name");
    return;
  }
  EXPECT_THAT(run, SaysNothing());
  EXPECT_EQ(reactor.clashes.size(), 1U);
  EXPECT_EQ(referred(), idOf(clash.table, "A 2"));
}

INSTANTIATE_TEST_SUITE_P(Import, CatalogueClash, ::testing::ValuesIn(clashing),
                         [](const auto& param) { return narrow(param.param.tag); });

class LabelClash : public CatalogueImport {};

// The reactor is not asked, and what the element has saved before it failed is part of the run.
TEST_F(LabelClash, CostsTheElement) {
  import(L"<p><propertynamespace>A<label>L</label></propertynamespace>" + set(L"<label>L</label>") + L"</p>");
  RecordingReactor reactor(db);
  EXPECT_THAT(
    import(L"<p><propertynamespace>B<label>L</label></propertynamespace>" +
           object(L"propertyset", L"Doors",
                  L"<label>L</label><entity_type>Door</entity_type>"
                  L"<property_definition><name>D</name></property_definition>") +
           value(L"V") + L"</p>"),
    Says({error(L"An other object with the same values exists: PropertyNamespace.label", L"<propertynamespace"),
          error(L"An other object with the same values exists: PropertySet.label", L"<propertyset")}));
  EXPECT_TRUE(reactor.clashes.empty());
  EXPECT_EQ(sets(), Names{"Walls"});
  EXPECT_EQ(definitions(), Names{"D"});
  EXPECT_EQ(types(), Names{"Door"});
  EXPECT_EQ(values(), Names{"V"});
  EXPECT_EQ(project.count("tessel_PropertySet_property_definitions"), 0);
}

TEST_F(LabelClash, LeavesATransactionOfTheHostOpen) {
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THAT(
    import(L"<p><propertynamespace>A<label>L</label></propertynamespace>"
           L"<propertynamespace>B<label>L</label></propertynamespace>" +
           definition(L"D") + L"</p>"),
    Says({error(L"An other object with the same values exists: PropertyNamespace.label", L"<propertynamespace>B")}));
  EXPECT_FALSE(transaction.finalized());
  EXPECT_EQ(definitions(), Names());
  transaction.commit();
  EXPECT_EQ(definitions(), Names{"D"});
  EXPECT_EQ(namespaces().back(), "A");
}

class InlineClash : public CatalogueImport {};

// Inline definitions are new ones: they do not merge by name, unless the set holds an equal one already.
TEST_F(InlineClash, OfADefinitionCostsTheSet) {
  import(definition(L"D"));
  const std::wstring inlineDefinition = set(L"<property_definition><name>D</name></property_definition>");
  EXPECT_THAT(import(inlineDefinition), Says({error(taken, L"<propertyset")}));
  EXPECT_EQ(sets(), Names());
  import(set(L"<property_definition name='D'/>"));
  EXPECT_THAT(import(inlineDefinition), SaysNothing());
  EXPECT_EQ(definitionsOfSets(), Names{"D"});
}

TEST_F(InlineClash, OfANamespaceCostsItsOwner) {
  const std::wstring common = L"<name>D</name><namespace>Common</namespace>";
  EXPECT_THAT(
    import(L"<p>" + objectOf(L"propertydefinition", L"", common) + objectOf(L"valuedefinition", L"", common) +
           objectOf(L"propertyset", L"", common) + L"</p>"),
    Says({error(taken, L"<propertydefinition"), error(taken, L"<valuedefinition"), error(taken, L"<propertyset")}));
  EXPECT_EQ(namespaces(), (Names{"Common", "Other"}));
}

}  // namespace
}  // namespace tessel::test
