// References between the elements of the catalogue: namespaces, and what a set lists.

#include "import/catalogue_import.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

/// A field of a "propertyset" that refers to another object of the catalogue.
struct SetReference {
  std::wstring key;
  std::wstring tag;      ///< Of the target, for the paths within it.
  std::wstring targets;  ///< "Seven" and "Eight" under these ids.
  std::wstring search;   ///< What messages add to a name.
  std::wstring inside;   ///< An inline object called "Nine".
};

const std::wstring inCommon = L"<namespace name='Common'/></";
std::wstring twoOf(const std::wstring& tag) {
  const std::wstring end = (tag == L"entitytype" || tag == L"propertynamespace" ? L"</" : inCommon) + tag + L">";
  return L"<" + tag + L" id='7'><name>Seven</name>" + end + L"<" + tag + L" id='8'><name>Eight</name>" + end;
}

const SetReference setReferences[] = {
  {L"namespace", L"propertynamespace", twoOf(L"propertynamespace"), L"", L"Nine"},
  {L"entity_type", L"entitytype", twoOf(L"entitytype"), L"", L"Nine"},
  {L"property_definition", L"propertydefinition", twoOf(L"propertydefinition"), L" and namespace ''",
   L"<name>Nine</name>"},
  {L"value_definition", L"valuedefinition", twoOf(L"valuedefinition"), L" and namespace ''", L"<name>Nine</name>"},
};

class ReferencesOfSets : public CatalogueImport, public ::testing::WithParamInterface<SetReference> {
protected:
  /// A set with this field, behind the targets.
  ImportRun importWith(const std::wstring& field) {
    return import(L"<p>" + reference.targets + setWith(field) + L"</p>");
  }

  std::wstring setWith(const std::wstring& field) const {
    const std::wstring ns = reference.key == L"namespace" ? L"" : L"<namespace name='Common'/>";
    // A set without a name is not sought by it, so what is wrong in its namespace is told once.
    return L"<propertyset place=''>" + ns + L"<name></name>" + field + L"</propertyset>";
  }
  std::wstring field(const std::wstring& attributes, const std::wstring& content = L"") const {
    return L"<" + reference.key + L" field='' " + attributes + L">" + content + L"</" + reference.key + L">";
  }

  /// What the only set refers to.
  Names targets() const {
    if (reference.key == L"entity_type") return typesOfSets();
    if (reference.key == L"property_definition") return definitionsOfSets();
    if (reference.key == L"value_definition") return valuesOfSets();
    return project.raw().column("SELECT ns.name FROM tessel_PropertySet owner JOIN tessel_PropertyNamespace ns "
                                "ON ns.id = owner.namespace_id");
  }

  void expectRefused(const std::wstring& field, const ExpectedMessage& message) {
    const SampleProject fresh;
    fresh.db->save(PropertyNamespace::create(L"Common"));
    EXPECT_THAT(importText(fresh.db, L"<p>" + reference.targets + setWith(field) + L"</p>"), Says({message}));
    EXPECT_EQ(fresh.count("tessel_PropertySet"), 0);
  }
  std::wstring place() const { return L"<" + reference.key + L" field"; }
  std::wstring path() const { return L"'propertyset > " + reference.key + L"'"; }
  ExpectedMessage unresolved(const std::wstring& search) const {
    return error((L"Could not find referenced object " + path() + L" with " + search).c_str(), place());
  }
  ExpectedMessage canNotBe(const std::wstring& what) const {
    return error((L"Property " + path() + L" can not be " + what).c_str(), place());
  }

  const SetReference& reference = GetParam();
};

TEST_P(ReferencesOfSets, ByIdLeadToAnEarlierElement) {
  EXPECT_THAT(importWith(field(L"id='8' name='Seven'", L"<unknown/>")), SaysNothing());
  EXPECT_EQ(targets(), Names{"Eight"});
}

TEST_P(ReferencesOfSets, ByNameLeadToARow) {
  EXPECT_THAT(importWith(field(L"name='Seven'", L"<unknown/>")), SaysNothing());
  EXPECT_EQ(targets(), Names{"Seven"});
}

TEST_P(ReferencesOfSets, MayHoldANewObject) {
  EXPECT_THAT(importWith(field(L"other=''", reference.inside)), SaysNothing());
  EXPECT_EQ(targets(), Names{"Nine"});
}

TEST_P(ReferencesOfSets, HoldingAnObjectWarnOfWhatItHasTooMuch) {
  EXPECT_THAT(importWith(field(L"", reference.inside + L"<unknown/>")),
              Says({warning((L"Unknown property 'unknown' for '" + reference.tag + L"'").c_str(), L"<unknown")}));
  EXPECT_EQ(targets(), Names{"Nine"});
}

TEST_P(ReferencesOfSets, ThatLeadNowhereAreErrors) {
  expectRefused(field(L"id='6' name='Seven'", reference.inside), unresolved(L"id 6"));
  expectRefused(field(L"id=''"), unresolved(L"id 0"));
  expectRefused(field(L"name='seven'", reference.inside), unresolved(L"name 'seven'" + reference.search));
  expectRefused(field(L"name=''"), unresolved(L"name ''" + reference.search));
}

TEST_P(ReferencesOfSets, MayNotBeNilOrEmpty) {
  expectRefused(field(L"nil='1' id='7' name='Seven'", reference.inside), canNotBe(L"nil"));
  expectRefused(field(L""), canNotBe(L"empty"));
  expectRefused(field(L"default='Seven'"), canNotBe(L"empty"));
}

INSTANTIATE_TEST_SUITE_P(Import, ReferencesOfSets, ::testing::ValuesIn(setReferences),
                         [](const auto& param) { return narrow(param.param.key); });

// Definitions that a set refers to by name are those of its own namespace.

class DefinitionsByName : public CatalogueImport, public ::testing::WithParamInterface<const wchar_t*> {
protected:
  void SetUp() override {
    CatalogueImport::SetUp();
    for (const wchar_t* ns : {L"Common", L"Other"}) {
      const auto home = db->get<PropertyNamespace>(NameKey(ns));
      db->save(PropertyDefinition::create(home, OdString(L"of ") + ns));
      db->save(ValueDefinition::create(home, OdString(L"of ") + ns));
    }
  }
  std::wstring field(const std::wstring& attributes) const { return L"<" + key + L" " + attributes + L"/>"; }
  ExpectedMessage unresolved(const std::wstring& search) const {
    return error((L"Could not find referenced object 'propertyset > " + key + L"' with " + search).c_str(), L"<" + key);
  }
  Names members() const { return key == L"property_definition" ? definitionsOfSets() : valuesOfSets(); }

  const std::wstring key = GetParam();
};

TEST_P(DefinitionsByName, AreFoundInTheNamespaceOfTheSet) {
  EXPECT_THAT(import(set(field(L"name='of Common'"))), SaysNothing());
  EXPECT_EQ(members(), Names{"of Common"});
}

// The attribute is told and takes no part in the search.
TEST_P(DefinitionsByName, AreNotFoundInTheNamespaceThatTheirAttributeNames) {
  EXPECT_THAT(import(set(field(L"name='of Other' namespace='Other'"))),
              Says({unresolved(L"name 'of Other' and namespace 'Other'")}));
  EXPECT_THAT(import(set(field(L"name='of Common' namespace='Other'"))), SaysNothing());
  EXPECT_EQ(members(), Names{"of Common"});
}

TEST_P(DefinitionsByName, AreNotFoundByTheirNamespaceAlone) {
  EXPECT_THAT(import(set(field(L"namespace='Common'"))),
              Says({error((L"Property 'propertyset > " + key + L"' can not be empty").c_str(), L"<" + key)}));
}

// The rows of the namespace are sought by its name, so one that is not saved yet has none.
TEST_P(DefinitionsByName, AreNotFoundInANamespaceThatIsNew) {
  EXPECT_THAT(
    import(L"<propertyset><namespace>New</namespace><name>S</name>" + field(L"name='of Common'") + L"</propertyset>"),
    Says({unresolved(L"name 'of Common' and namespace ''")}));
  EXPECT_EQ(sets(), Names());
}

// But an inline namespace of the name of one that is there leads to its definitions, and then clashes with it.
TEST_P(DefinitionsByName, AreFoundInAnInlineNamespaceOfATakenName) {
  RecordingReactor reactor(db);
  reactor.answer({SaveResolution::Kept});
  EXPECT_THAT(import(L"<propertyset><namespace>Common</namespace><name>S</name>" + field(L"name='of Common'") +
                     L"</propertyset>"),
              SaysNothing());
  EXPECT_EQ(members(), Names{"of Common"});
  EXPECT_EQ(namespaces(), (Names{"Common", "Other"}));
}

// An id leads to any definition of the document.
TEST_P(DefinitionsByName, OfAnotherNamespaceAreReachedByIdOnly) {
  const std::wstring tag = key == L"property_definition" ? L"propertydefinition" : L"valuedefinition";
  EXPECT_THAT(import(L"<p><" + tag + L" id='5'><name>far</name><namespace name='Other'/></" + tag + L">" +
                     set(field(L"id='5'")) + L"</p>"),
              SaysNothing());
  EXPECT_EQ(members(), Names{"far"});
}

INSTANTIATE_TEST_SUITE_P(Import, DefinitionsByName, ::testing::Values(L"property_definition", L"value_definition"),
                         [](const auto& param) { return narrow(param.param); });

}  // namespace
}  // namespace tessel::test
