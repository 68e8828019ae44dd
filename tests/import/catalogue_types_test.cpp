// The words of a definition: the type of its values, the IFC type, and the texts that are kept as they stand.

#include "catalogue/ifc_types.h"
#include "import/catalogue_import.h"

namespace tessel::test {
namespace {

/// The rules are those of both kinds of definition.
class DefinitionWords : public CatalogueImport, public ::testing::WithParamInterface<const wchar_t*> {
protected:
  /// A fresh definition with these fields, which must be right.
  std::string valueOf(const std::wstring& fields, const std::string& sql) {
    project.raw().exec("DELETE FROM \"" + table + "\"");
    EXPECT_THAT(import(object(tag, L"D", fields)), SaysNothing()) << narrow(fields);
    return project.raw().scalarText("SELECT " + sql + " FROM \"" + table + "\"");
  }
  std::string typeOf(const std::wstring& content) {
    return valueOf(elementOf(L"type", content), "type_structure || '|' || type_value_type || '|' || type_key_type");
  }
  std::string ifcTypeOf(const std::wstring& element) { return valueOf(element, "ifc_type"); }

  /// A definition with these fields, which must be wrong.
  ImportRun refused(const std::wstring& fields) {
    const long long rows = project.count(table);
    const ImportRun run = import(object(tag, L"D", fields, L"place=''"));
    EXPECT_EQ(project.count(table), rows) << narrow(fields);
    return run;
  }

  ExpectedMessage invalid(const std::wstring& key, const std::wstring& word, const std::wstring& place) const {
    return error((L"Invalid '" + tag + L" > " + key + L"' property value: " + word).c_str(), place);
  }

  const std::wstring tag = GetParam();
  const std::string table = tag == L"propertydefinition" ? "tessel_PropertyDefinition" : "tessel_ValueDefinition";
};

const std::vector<std::pair<std::wstring, int>> typeWords = {
  {L"Any", 0},     {L"Bool", 1},      {L"Int8", 2},      {L"UInt8", 3},    {L"Int16", 4},     {L"UInt16", 5},
  {L"Int32", 6},   {L"UInt32", 7},    {L"Int64", 8},     {L"UInt64", 9},   {L"Double", 10},   {L"String", 11},
  {L"Handle", 12}, {L"ObjectId", 13}, {L"Vector2d", 14}, {L"Point2d", 15}, {L"Vector3d", 16}, {L"Point3d", 17},
  {L"Binary", 18}, {L"Boolean", 1},   {L"Byte", 2},      {L"Integer", 6},  {L"Real", 10}};

TEST_P(DefinitionWords, TypeMayBeAWordAloneForASingleValue) {
  for (const auto& [word, number] : typeWords) EXPECT_EQ(typeOf(word), "1|" + std::to_string(number) + "|0");
}

TEST_P(DefinitionWords, TypeMayHaveEachWordInItsParts) {
  for (const auto& [word, number] : typeWords) {
    EXPECT_EQ(typeOf(elementOf(L"value_type", word) + elementOf(L"key_type", word)),
              "1|" + std::to_string(number) + "|" + std::to_string(number));
  }
}

TEST_P(DefinitionWords, TypeMayHaveEachStructure) {
  const std::wstring parts = L"<value_type>Double</value_type><key_type>String</key_type>";
  EXPECT_EQ(typeOf(parts + L"<structure>Undefined</structure>"), "0|10|11");
  EXPECT_EQ(typeOf(parts + L"<structure>Single</structure>"), "1|10|11");
  EXPECT_EQ(typeOf(parts + L"<structure>Array</structure>"), "2|10|11");
  EXPECT_EQ(typeOf(parts + L"<structure>Map</structure>"), "3|10|11");
}

TEST_P(DefinitionWords, TypeHasDefaultsForItsParts) {
  EXPECT_EQ(typeOf(L"<value_type>Double</value_type>"), "1|10|0");
  EXPECT_EQ(typeOf(L"<structure>Array</structure>Double"), "2|10|0");
  EXPECT_EQ(typeOf(L"Double<key_type>String</key_type>"), "1|10|11");
}

TEST_P(DefinitionWords, TypeThatIsAbsentIsUndefined) {
  EXPECT_EQ(valueOf(L"", "type_structure || '|' || type_value_type || '|' || type_key_type"), "0|0|0");
}

TEST_P(DefinitionWords, TypeGoesByTheChildBeforeTheText) {
  EXPECT_EQ(typeOf(L"String<value_type>Double</value_type>"), "1|10|0");
  EXPECT_EQ(typeOf(L"String<value_type>Foo</value_type>"), "1|11|0");
  EXPECT_EQ(typeOf(L"String<value_type/>"), "1|11|0");
}

// Whether all is known is asked of the fields of an object, not of the parts of a field.
TEST_P(DefinitionWords, TypeIsNotLookedThroughForUnknownParts) {
  EXPECT_EQ(typeOf(L"Double<unknown/><value_type>Double</value_type><value_type>Foo</value_type>"), "1|10|0");
}

// It is the text of the element that is told, not the wrong word in the child.
TEST_P(DefinitionWords, TypeNeedsAKnownWord) {
  const auto refusedAs = [this](const std::wstring& content, const std::wstring& word) {
    EXPECT_THAT(refused(elementOf(L"type", content)), Says({invalid(L"type > value_type", word, L"<type>")}));
  };
  refusedAs(L"Foo", L"Foo");
  refusedAs(L"", L"");
  refusedAs(L"<value_type>Foo</value_type>", L"");
  refusedAs(L"<value_type>Foo</value_type>Bar", L"Bar");
  refusedAs(L"<structure>Map</structure><key_type>String</key_type>", L"");
  for (const wchar_t* wrong : {L"boolean", L" Double", L"Double ", L"Doubl", L"Doubles", L"10", L"Single", L"Unsigned"})
    refusedAs(wrong, wrong);
}

TEST_P(DefinitionWords, TypeNeedsAKnownStructure) {
  for (const wchar_t* word : {L"Struct", L"Dictionary", L"single", L"", L" Map", L"1"}) {
    EXPECT_THAT(refused(L"<type>Double" + elementOf(L"structure", word) + L"</type>"),
                Says({invalid(L"type > structure", word, L"<structure>")}));
  }
}

TEST_P(DefinitionWords, TypeNeedsAKnownWordForItsKey) {
  for (const wchar_t* word : {L"Foo", L"", L"string"}) {
    EXPECT_THAT(refused(L"<type>Double" + elementOf(L"key_type", word) + L"</type>"),
                Says({invalid(L"type > key_type", word, L"<key_type>")}));
  }
}

TEST_P(DefinitionWords, TypeWithManyFaultsTellsTheFirstInTheOrderOfItsParts) {
  const std::wstring keyType = L"<key_type>3</key_type>";
  const std::wstring valueType = L"<value_type>2</value_type>";
  EXPECT_THAT(refused(L"<type>" + keyType + valueType + L"<structure>1</structure></type>"),
              Says({invalid(L"type > structure", L"1", L"<structure>")}));
  EXPECT_THAT(refused(L"<type>" + keyType + valueType + L"</type>"),
              Says({invalid(L"type > value_type", L"", L"<type>")}));
}

TEST_P(DefinitionWords, TypeIsNeverNil) {
  EXPECT_THAT(refused(L"<type nil='true'/>"), Says({invalid(L"type > value_type", L"", L"<type nil")}));
  EXPECT_EQ(valueOf(L"<type nil='true'>Double</type>", "type_value_type"), "10");
}

TEST_P(DefinitionWords, IfcTypeMayBeEachMember) {
  int words = 0;
  for (const IfcTypeGroup& group : ifcTypeGroups()) {
    for (std::size_t i = 0; i < group.rows.size(); ++i, ++words) {
      EXPECT_EQ(ifcTypeOf(elementOf(L"ifc_type", group.rows[i].word)),
                std::to_string(group.base + static_cast<int>(i)));
    }
  }
  EXPECT_EQ(words, 105);
}

// Undefined is a value, which is not the same as none.
TEST_P(DefinitionWords, IfcTypeMayBeNull) {
  EXPECT_EQ(ifcTypeOf(L""), "NULL");
  EXPECT_EQ(ifcTypeOf(L"<ifc_type nil='true'/>"), "NULL");
  EXPECT_EQ(ifcTypeOf(L"<ifc_type nil='1'>IfcSimpleValue_Label</ifc_type>"), "NULL");
  EXPECT_EQ(ifcTypeOf(L"<ifc_type nil='1'>Foo</ifc_type>"), "NULL");
  EXPECT_EQ(ifcTypeOf(L"<ifc_type nil='false'>IfcTypeUndefined</ifc_type>"), "-1");
}

TEST_P(DefinitionWords, IfcTypeNeedsAKnownWord) {
  for (const wchar_t* word : {L"", L"Foo", L"Label", L"ifcSimpleValue_Label", L" IfcSimpleValue_Label", L"105"}) {
    EXPECT_THAT(refused(elementOf(L"ifc_type", word)), Says({invalid(L"ifc_type", word, L"<ifc_type>")}));
  }
}

// The first fault in the order of the format is told, whatever the order in the element, and nothing behind it is read.
TEST_P(DefinitionWords, AreReadInTheOrderOfTheFormat) {
  const auto path = [this](const std::wstring& key) { return L"'" + tag + L" > " + key + L"'"; };
  const std::wstring start = L"<" + tag;
  const std::vector<std::pair<std::wstring, ExpectedMessage>> faults = {
    {L"<namespace/>", error((L"Missing " + path(L"namespace") + L" property").c_str(), start)},
    {L"<type>a</type>", invalid(L"type > value_type", L"a", L"<type>")},
    {L"<ifc_type>b</ifc_type>", invalid(L"ifc_type", L"b", L"<ifc_type>")},
    {L"<unit name='c'/>",
     error((L"Could not find referenced object " + path(L"unit") + L" with name 'c'").c_str(), L"<unit")},
    {L"", error((L"Missing " + path(L"name") + L" property").c_str(), start)},
  };
  std::wstring fields = L"<unknown/>";
  for (const auto& [field, message] : faults) {
    fields += field;
    const std::wstring name = field.empty() ? L"" : L"<name>D</name>";
    EXPECT_THAT(update(objectOf(tag, L"id='77'", fields + name)), Says({message}));
  }
  EXPECT_EQ(project.count(table), 0);
}

INSTANTIATE_TEST_SUITE_P(Import, DefinitionWords, ::testing::Values(L"propertydefinition", L"valuedefinition"),
                         [](const auto& param) { return narrow(param.param); });

// Texts that are kept as they stand, whatever they look like.

class DefinitionTexts : public CatalogueImport {
protected:
  TsSmartPtr<PropertyDefinition> imported(const std::wstring& fields) {
    project.raw().exec("DELETE FROM \"tessel_PropertyDefinition\"");
    EXPECT_THAT(import(definition(L"D", fields)), SaysNothing());
    const auto ns = db->get<PropertyNamespace>(NameKey(u"Common"));
    return db->get<PropertyDefinition>(NameObjectKey<PropertyNamespace>(u"D", ns->id()));
  }
  template <typename T>
  std::optional<T> defaultOf(const std::wstring& text) {
    T value{};
    if (!imported(elementOf(L"default_value", text))->default_value(value)) return {};
    return value;
  }
};

TEST_F(DefinitionTexts, ServeAsDefaultsIfTheyAreJson) {
  EXPECT_EQ(defaultOf<bool>(L"true"), true);
  EXPECT_EQ(defaultOf<bool>(L"false"), false);
  EXPECT_EQ(defaultOf<int>(L"-7"), -7);
  EXPECT_EQ(defaultOf<double>(L"2.5"), 2.5);
  EXPECT_EQ(defaultOf<double>(L"7"), 7.0);
  EXPECT_EQ(defaultOf<OdString>(L"plain &amp; text"), OdString(u"plain & text"));
}

TEST_F(DefinitionTexts, ServeNotAsDefaultsOfAnotherKind) {
  EXPECT_EQ(defaultOf<bool>(L"1"), std::nullopt);
  EXPECT_EQ(defaultOf<int>(L"2.5"), std::nullopt);
  EXPECT_EQ(defaultOf<double>(L"wide"), std::nullopt);
  EXPECT_EQ(defaultOf<int>(L""), std::nullopt);
  EXPECT_EQ(defaultOf<OdString>(L"true"), OdString(u"true"));
}

// The type of the definition does not matter.
TEST_F(DefinitionTexts, AreDefaultsOfEachType) {
  for (const auto& [word, number] : typeWords) {
    const auto read = imported(elementOf(L"type", word) + L"<default_value> {broken </default_value>");
    EXPECT_EQ(read->default_value(), u" {broken ");
    EXPECT_EQ(static_cast<int>(read->type().value_type), number);
  }
}

TEST_F(DefinitionTexts, AreNotParsedInANewDefinition) {
  const auto read = imported(L"<type_spec>[1,</type_spec><type_spec2>{ \"type\" : \"Enum\" </type_spec2>");
  EXPECT_EQ(read->type_spec(), u"[1,");
  EXPECT_EQ(read->type_spec2(), u"{ \"type\" : \"Enum\" ");
  EXPECT_THAT(import(value(L"V", L"<value_spec>{{{</value_spec>")), SaysNothing());
  EXPECT_EQ(fieldOf("tessel_ValueDefinition", "V", "value_spec"), "{{{");
}

// The name of what is nothing but a name.

class NamesOrTexts : public CatalogueImport {};

TEST_F(NamesOrTexts, AreTheNameOfAnEntityType) {
  EXPECT_THAT(import(L"<p><entitytype>Wall</entitytype><entitytype><name>Door</name></entitytype>"
                     L"<entitytype>text<name>Slab</name></entitytype><entitytype><![CDATA[ Roof ]]></entitytype></p>"),
              SaysNothing());
  EXPECT_EQ(types(), (Names{"Wall", "Door", "Slab", " Roof "}));
}

TEST_F(NamesOrTexts, AreTheNameOfANamespace) {
  EXPECT_THAT(import(L"<p><propertynamespace>A<label>L</label></propertynamespace>"
                     L"<propertynamespace>text<name>B</name></propertynamespace></p>"),
              SaysNothing());
  EXPECT_EQ(namespaces(), (Names{"Common", "Other", "A", "B"}));
  EXPECT_EQ(fieldOf("tessel_PropertyNamespace", "A", "label"), "L");
}

TEST_F(NamesOrTexts, MayBeMissing) {
  EXPECT_THAT(import(L"<p><entitytype/><propertynamespace><label>L</label></propertynamespace></p>"), SaysNothing());
  EXPECT_EQ(types(), Names{""});
  EXPECT_EQ(namespaces(), (Names{"Common", "Other", ""}));
}

// A child that is there counts, even if it is empty.
TEST_F(NamesOrTexts, GoBehindAnEmptyName) {
  EXPECT_THAT(import(L"<p><entitytype>Wall<name/></entitytype><propertynamespace>A<name/></propertynamespace></p>"),
              SaysNothing());
  EXPECT_EQ(types(), Names{""});
  EXPECT_EQ(namespaces().back(), "");
}

TEST_F(NamesOrTexts, StandBesideOtherFieldsThatAreUnknown) {
  EXPECT_THAT(import(L"<entitytype>Wall<label>L</label></entitytype>"),
              Says({warning(L"Unknown property 'label' for 'entitytype'", L"<label")}));
  EXPECT_EQ(types(), Names{"Wall"});
}

}  // namespace
}  // namespace tessel::test
