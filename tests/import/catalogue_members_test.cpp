// The lists of a set: their order, and what an update makes of them.

#include "import/catalogue_import.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

class MembersOfSets : public CatalogueImport {
protected:
  void SetUp() override {
    CatalogueImport::SetUp();
    import(L"<p><entitytype>Wall</entitytype><entitytype>Door</entitytype><entitytype>Slab</entitytype></p>");
    for (const wchar_t* name : {L"a", L"b", L"c", L"d"}) import(L"<p>" + definition(name) + value(name) + L"</p>");
  }

  static std::wstring all(const std::wstring& key, std::initializer_list<const wchar_t*> names) {
    std::wstring fields;
    for (const wchar_t* name : names) fields += L"<" + key + L" name='" + name + L"'/>";
    return fields;
  }
  static std::wstring propertyMembers(std::initializer_list<const wchar_t*> names) {
    return all(L"property_definition", names);
  }
  static std::wstring valueMembers(std::initializer_list<const wchar_t*> names) {
    return all(L"value_definition", names);
  }
  static std::wstring typeMembers(std::initializer_list<const wchar_t*> names) { return all(L"entity_type", names); }

  void expectImported(const std::wstring& document) { EXPECT_THAT(import(document), SaysNothing()); }
};

TEST_F(MembersOfSets, AreInTheOrderOfTheDocument) {
  expectImported(
    set(propertyMembers({L"c", L"a", L"b"}) + valueMembers({L"b", L"c", L"a"}) + typeMembers({L"Slab", L"Wall"})));
  EXPECT_EQ(definitionsOfSets(), (Names{"c", "a", "b"}));
  EXPECT_EQ(valuesOfSets(), (Names{"b", "c", "a"}));
  EXPECT_EQ(typesOfSets(), (Names{"Slab", "Wall"}));
}

TEST_F(MembersOfSets, MayBeMixedWithOtherFields) {
  expectImported(set(typeMembers({L"Wall"}) + valueMembers({L"c"}) + L"<label>L</label>" + propertyMembers({L"b"}) +
                     typeMembers({L"Door"}) + valueMembers({L"a"}) + L"<visible>0</visible>" + propertyMembers({L"a"}) +
                     typeMembers({L"Slab"})));
  EXPECT_EQ(definitionsOfSets(), (Names{"b", "a"}));
  EXPECT_EQ(valuesOfSets(), (Names{"c", "a"}));
  EXPECT_EQ(typesOfSets(), (Names{"Wall", "Door", "Slab"}));
}

TEST_F(MembersOfSets, MayBeOfAllForms) {
  expectImported(L"<p><entitytype id='5'>Roof</entitytype>" + definition(L"five", L"", L"id='5'") +
                 set(L"<property_definition><name>new</name></property_definition>" + propertyMembers({L"a"}) +
                     L"<property_definition id='5'/>"
                     L"<entity_type>Beam</entity_type><entity_type id='5'/><entity_type name='Wall'/>"
                     L"<entity_type><name>Stair</name></entity_type>") +
                 L"</p>");
  EXPECT_EQ(definitionsOfSets(), (Names{"new", "a", "five"}));
  EXPECT_EQ(typesOfSets(), (Names{"Beam", "Roof", "Wall", "Stair"}));
}

// Property definitions and entity types are there once.
TEST_F(MembersOfSets, AreNotListedTwice) {
  expectImported(set(propertyMembers({L"a", L"b", L"a", L"a"}) + typeMembers({L"Wall", L"Wall", L"Door"}) +
                     L"<entity_type>Wall</entity_type><property_definition><name>b</name></property_definition>"));
  EXPECT_EQ(definitionsOfSets(), (Names{"a", "b"}));
  EXPECT_EQ(typesOfSets(), (Names{"Wall", "Door"}));
  EXPECT_EQ(definitions(), (Names{"a", "b", "c", "d"}));
}

TEST_F(MembersOfSets, AreComparedByTheirExactNames) {
  expectImported(set(L"<entity_type>wall</entity_type><entity_type name='Wall'/><entity_type>Wall </entity_type>"));
  EXPECT_EQ(typesOfSets(), (Names{"wall", "Wall", "Wall "}));
}

// A definition that differs in any field is another one.
TEST_F(MembersOfSets, AreComparedByAllTheirFields) {
  RecordingReactor reactor(db);
  reactor.rename({L"a 2"});
  expectImported(set(propertyMembers({L"a"}) +
                     L"<property_definition><name>a</name><description>other</description></property_definition>"));
  EXPECT_EQ(definitionsOfSets(), (Names{"a", "a 2"}));
}

// Values are not compared.
TEST_F(MembersOfSets, OfValuesMayBeListedTwice) {
  expectImported(set(valueMembers({L"a", L"b", L"a"})));
  EXPECT_EQ(valuesOfSets(), (Names{"a", "b", "a"}));
}

TEST_F(MembersOfSets, ThatAreTakenClashAsOthers) {
  const std::wstring inlineWall = set(L"<entity_type>Wall</entity_type>");
  EXPECT_THAT(import(inlineWall), Says({error(L"An other object with the same values exists: name", L"<propertyset")}));
  EXPECT_EQ(sets(), Names());
  RecordingReactor reactor(db);
  reactor.answer({SaveResolution::Kept});
  expectImported(inlineWall);
  EXPECT_EQ(typesOfSets(), Names{"Wall"});
  EXPECT_EQ(types(), (Names{"Wall", "Door", "Slab"}));
}

TEST_F(MembersOfSets, AreSavedBeforeTheSetInTheOrderOfTheLists) {
  RecordingReactor reactor(db);
  expectImported(L"<propertyset><entity_type>T</entity_type><value_definition><name>V</name></value_definition>"
                 L"<property_definition><name>D</name></property_definition><name>S</name>"
                 L"<namespace>N</namespace></propertyset>");
  std::vector<ObjectType> saved;
  for (const auto& one : reactor.saved) {
    if (one.resolution == SaveResolution::Created) saved.push_back(one.key.type);
  }
  EXPECT_EQ(saved,
            (std::vector<ObjectType>{ObjectType::PropertyNamespace, ObjectType::PropertyDefinition,
                                     ObjectType::ValueDefinition, ObjectType::EntityType, ObjectType::PropertySet}));
}

// The first that fails ends the list and the set.
TEST_F(MembersOfSets, BehindAFaultyOneAreNotRead) {
  EXPECT_THAT(import(set(propertyMembers({L"a", L"nobody", L"no one"}) + valueMembers({L"nothing"}) + L"<unknown/>")),
              Says({error(L"Could not find referenced object 'propertyset > property_definition' with name 'nobody' "
                          L"and namespace ''",
                          L"<property_definition name='nobody'")}));
  EXPECT_THAT(import(set(valueMembers({L"a"}) + L"<value_definition nil='1'/><entity_type/>")),
              Says({error(L"Property 'propertyset > value_definition' can not be nil", L"<value_definition nil")}));
  EXPECT_THAT(import(set(typeMembers({L"Wall"}) + L"<entity_type/><entity_type name='x'/>")),
              Says({error(L"Property 'propertyset > entity_type' can not be empty", L"<entity_type/>")}));
  EXPECT_EQ(sets(), Names());
}

TEST_F(MembersOfSets, AreReadInTheOrderOfTheFormat) {
  const auto isEmpty = [](const std::wstring& key) {
    return error((L"Property 'propertyset > " + key + L"' can not be empty").c_str(), L"<" + key);
  };
  const std::wstring named = L"<name>S</name>";
  std::wstring fields = L"<unknown/><namespace name='Common'/>";
  for (const wchar_t* key : {L"entity_type", L"value_definition", L"property_definition"}) {
    fields += std::wstring(L"<") + key + L"/>";
    EXPECT_THAT(import(objectOf(L"propertyset", L"", fields + named)), Says({isEmpty(key)}));
  }
  EXPECT_THAT(import(objectOf(L"propertyset", L"", fields)),
              Says({error(L"Missing 'propertyset > name' property", L"<propertyset")}));
}

// The inline members of a set that fails are not saved.
TEST_F(MembersOfSets, OfAFaultySetAreNotSaved) {
  EXPECT_THAT(import(set(L"<property_definition><name>new</name></property_definition><entity_type>new</entity_type>"
                         L"<entity_type name='nobody'/>")),
              Says({error(L"Could not find referenced object 'propertyset > entity_type' with name 'nobody'",
                          L"<entity_type name")}));
  EXPECT_EQ(definitions(), (Names{"a", "b", "c", "d"}));
  EXPECT_EQ(types(), (Names{"Wall", "Door", "Slab"}));
}

// Updates, by the name of the set and by its id.

class MembersOfUpdatedSets : public MembersOfSets, public ::testing::WithParamInterface<bool> {
protected:
  void SetUp() override {
    MembersOfSets::SetUp();
    expectImported(set(propertyMembers({L"c", L"a"}) + valueMembers({L"c", L"a"}) + typeMembers({L"Slab", L"Wall"})));
  }
  ImportRun updateSet(const std::wstring& fields) {
    if (!GetParam()) return import(set(fields));
    return update(set(fields, L"id='" + rowOf("tessel_PropertySet", "Walls") + L"'"));
  }
};

TEST_P(MembersOfUpdatedSets, StayAndNewOnesFollowThem) {
  EXPECT_THAT(updateSet(propertyMembers({L"b", L"a", L"d"}) + typeMembers({L"Door", L"Wall"})), SaysNothing());
  EXPECT_EQ(definitionsOfSets(), (Names{"c", "a", "b", "d"}));
  EXPECT_EQ(typesOfSets(), (Names{"Slab", "Wall", "Door"}));
  EXPECT_EQ(sets(), Names{"Walls"});
}

TEST_P(MembersOfUpdatedSets, StayWithoutAnyInTheDocument) {
  EXPECT_THAT(updateSet(L""), SaysNothing());
  EXPECT_EQ(definitionsOfSets(), (Names{"c", "a"}));
  EXPECT_EQ(typesOfSets(), (Names{"Slab", "Wall"}));
}

TEST_P(MembersOfUpdatedSets, AreReplacedIfTheyAreValues) {
  EXPECT_THAT(updateSet(valueMembers({L"b", L"c"})), SaysNothing());
  EXPECT_EQ(valuesOfSets(), (Names{"b", "c"}));
  EXPECT_THAT(updateSet(L""), SaysNothing());
  EXPECT_EQ(valuesOfSets(), Names());
}

TEST_P(MembersOfUpdatedSets, StayIfTheUpdateFails) {
  const auto before = dumpOf(project.raw());
  EXPECT_THAT(
    updateSet(propertyMembers({L"b"}) + valueMembers({L"b"}) + typeMembers({L"nobody"})),
    Says({error(L"Could not find referenced object 'propertyset > entity_type' with name 'nobody'", L"<entity_type")}));
  EXPECT_EQ(dumpOf(project.raw()), before);
}

INSTANTIATE_TEST_SUITE_P(Import, MembersOfUpdatedSets, ::testing::Bool(),
                         [](const auto& param) { return param.param ? "ById" : "ByName"; });

}  // namespace
}  // namespace tessel::test
