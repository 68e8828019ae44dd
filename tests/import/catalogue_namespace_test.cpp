// The namespace of a definition or a set. It is read without messages in definitions, and read twice where a row is
// sought by its name first.

#include "import/catalogue_import.h"

namespace tessel::test {
namespace {

// Definitions that stand alone.

class NamespaceOfDefinition : public CatalogueImport, public ::testing::WithParamInterface<const wchar_t*> {
protected:
  std::wstring document(const std::wstring& field, const std::wstring& name = L"D") const {
    return L"<p><propertynamespace id='7'>Seven</propertynamespace>" +
           objectOf(tag, L"place=''", elementOf(L"name", name) + field) + L"</p>";
  }

  /// What the field leads to.
  std::string namespaceOf(const std::wstring& field) {
    project.raw().exec("DELETE FROM \"" + table + "\"; DELETE FROM tessel_PropertyNamespace WHERE name = 'Seven'");
    EXPECT_THAT(import(document(field)), SaysNothing());
    return project.raw().scalarText("SELECT ns.name FROM \"" + table +
                                    "\" owner JOIN tessel_PropertyNamespace ns ON ns.id = owner.namespace_id");
  }

  /// Whatever the cause, it is told as a missing one. Where a row is sought first, the cause is told then.
  void expectRefused(const std::wstring& field, const ExpectedMessage& cause) {
    const std::wstring place = L"<" + tag + L" place";
    const ExpectedMessage missing = error((L"Missing '" + tag + L" > namespace' property").c_str(), place);
    for (const wchar_t* name : {L"D", L""}) {
      project.raw().exec("DELETE FROM tessel_PropertyNamespace WHERE name = 'Seven'");
      const bool isSought = tag == L"propertydefinition" && *name;
      EXPECT_THAT(import(document(field, name)), Says(isSought ? std::vector{cause, missing} : std::vector{missing}));
      EXPECT_EQ(project.count(table), 0);
    }
  }
  ExpectedMessage causeAt(const std::wstring& text) const { return error(text.c_str(), L"<namespace field"); }

  const std::wstring tag = GetParam();
  const std::string table = tag == L"propertydefinition" ? "tessel_PropertyDefinition" : "tessel_ValueDefinition";
};

TEST_P(NamespaceOfDefinition, MayBeAReferenceOfEachForm) {
  EXPECT_EQ(namespaceOf(L"<namespace id='7' name='nobody'/>"), "Seven");
  EXPECT_EQ(namespaceOf(L"<namespace name='Common'>Nine</namespace>"), "Common");
  EXPECT_EQ(namespaceOf(L"<namespace>Nine</namespace>"), "Nine");
  EXPECT_EQ(namespaceOf(L"<namespace><name>Ten</name><revision>5</revision></namespace>"), "Ten");
  EXPECT_EQ(fieldOf("tessel_PropertyNamespace", "Ten", "revision"), "5");
}

TEST_P(NamespaceOfDefinition, ThatIsWrongIsMissing) {
  expectRefused(L"", error((L"Missing '" + tag + L"' property").c_str(), L"<" + tag + L" place"));
  expectRefused(L"<namespace field='' id='9'/>", causeAt(L"Could not find referenced object '" + tag + L"' with id 9"));
  expectRefused(L"<namespace field='' name='x'/>",
                causeAt(L"Could not find referenced object '" + tag + L"' with name 'x'"));
  expectRefused(L"<namespace field='' nil='1'/>", causeAt(L"Property '" + tag + L"' can not be nil"));
  expectRefused(L"<namespace field=''/>", causeAt(L"Property '" + tag + L"' can not be empty"));
}

// Silence is for errors only, and what is read twice is warned of twice.
TEST_P(NamespaceOfDefinition, WarnsOfUnknownFieldsAsOftenAsItIsRead) {
  const ExpectedMessage unknown = warning(L"Unknown property 'unknown' for 'propertynamespace'", L"<unknown");
  const bool isSought = tag == L"propertydefinition";
  EXPECT_THAT(import(document(L"<namespace>Nine<unknown/></namespace>")),
              Says(isSought ? std::vector{unknown, unknown} : std::vector{unknown}));
  EXPECT_EQ(project.count(table), 1);
}

INSTANTIATE_TEST_SUITE_P(Import, NamespaceOfDefinition, ::testing::Values(L"propertydefinition", L"valuedefinition"),
                         [](const auto& param) { return narrow(param.param); });

// Definitions within a set.

class NamespaceOfInlineDefinition : public CatalogueImport, public ::testing::WithParamInterface<const wchar_t*> {
protected:
  /// In which namespace a definition of a set in "Common" is, without a message.
  std::string namespaceOf(const std::wstring& field) {
    project.raw().exec("DELETE FROM tessel_PropertySet; DELETE FROM \"" + table + "\"");
    EXPECT_THAT(import(set(elementOf(key, L"<name>D</name>" + field))), SaysNothing());
    return project.raw().scalarText("SELECT ns.name FROM \"" + table +
                                    "\" owner JOIN tessel_PropertyNamespace ns ON ns.id = owner.namespace_id");
  }

  const std::wstring key = GetParam();
  const std::string table = key == L"property_definition" ? "tessel_PropertyDefinition" : "tessel_ValueDefinition";
};

TEST_P(NamespaceOfInlineDefinition, IsThatOfTheSetIfItIsAbsentOrWrong) {
  EXPECT_EQ(namespaceOf(L""), "Common");
  EXPECT_EQ(namespaceOf(L"<namespace id='9'/>"), "Common");
  EXPECT_EQ(namespaceOf(L"<namespace name='nobody'/>"), "Common");
  EXPECT_EQ(namespaceOf(L"<namespace nil='1' name='Other'/>"), "Common");
  EXPECT_EQ(namespaceOf(L"<namespace/>"), "Common");
}

TEST_P(NamespaceOfInlineDefinition, MayBeItsOwn) {
  EXPECT_EQ(namespaceOf(L"<namespace name='Other'/>"), "Other");
  EXPECT_EQ(namespaceOf(L"<namespace>Nine</namespace>"), "Nine");
}

TEST_P(NamespaceOfInlineDefinition, WarnsOfUnknownFields) {
  EXPECT_THAT(import(set(elementOf(key, L"<name>D</name><namespace>Nine<unknown/></namespace>"))),
              Says({warning(L"Unknown property 'unknown' for 'propertynamespace'", L"<unknown")}));
}

TEST_P(NamespaceOfInlineDefinition, IsTheOneObjectThatTheSetHoldsInline) {
  EXPECT_THAT(import(L"<propertyset><namespace>Nine</namespace><name>S</name>" + elementOf(key, L"<name>D</name>") +
                     elementOf(key, L"<name>E</name>") + L"</propertyset>"),
              SaysNothing());
  EXPECT_EQ(namespaces(), (Names{"Common", "Other", "Nine"}));
  EXPECT_EQ(column(table, "namespace_id"), (Names(2, std::to_string(idOf("tessel_PropertyNamespace", "Nine")))));
}

// The path begins anew at the inline object, which has no place of its own.
TEST_P(NamespaceOfInlineDefinition, IsNotWhatMakesADefinitionFaulty) {
  const std::wstring tag = key == L"property_definition" ? L"propertydefinition" : L"valuedefinition";
  EXPECT_THAT(import(set(elementOf(key, L"<namespace id='9'/>"))),
              Says({errorNowhere((L"Missing '" + tag + L" > name' property").c_str())}));
  EXPECT_THAT(import(set(elementOf(key, L"<name>D</name><type>Foo</type>"))),
              Says({error((L"Invalid '" + tag + L" > type > value_type' property value: Foo").c_str(), L"<type>")}));
  EXPECT_THAT(
    import(set(elementOf(key, L"<name>D</name><unit name='x'/>"))),
    Says({error((L"Could not find referenced object '" + tag + L" > unit' with name 'x'").c_str(), L"<unit name")}));
  EXPECT_EQ(sets(), Names());
}

INSTANTIATE_TEST_SUITE_P(Import, NamespaceOfInlineDefinition,
                         ::testing::Values(L"property_definition", L"value_definition"),
                         [](const auto& param) { return narrow(param.param); });

// Sets.

class NamespaceOfSet : public CatalogueImport {
protected:
  static std::wstring named(const std::wstring& fields) {
    return L"<propertyset place=''><name>S</name>" + fields + L"</propertyset>";
  }
  static ExpectedMessage atField(const std::wstring& text) { return error(text.c_str(), L"<namespace"); }
};

// Once while its row is sought, under the bare tag, and once as a field.
TEST_F(NamespaceOfSet, ThatIsWrongIsToldTwice) {
  EXPECT_THAT(import(named(L"")), Says({error(L"Missing 'propertyset' property", L"<propertyset"),
                                        error(L"Missing 'propertyset > namespace' property", L"<propertyset")}));
  EXPECT_THAT(import(named(L"<namespace id='9'/>")),
              Says({atField(L"Could not find referenced object 'propertyset' with id 9"),
                    atField(L"Could not find referenced object 'propertyset > namespace' with id 9")}));
  EXPECT_THAT(import(named(L"<namespace name='x'/>")),
              Says({atField(L"Could not find referenced object 'propertyset' with name 'x'"),
                    atField(L"Could not find referenced object 'propertyset > namespace' with name 'x'")}));
  EXPECT_THAT(import(named(L"<namespace nil='1'/>")),
              Says({atField(L"Property 'propertyset' can not be nil"),
                    atField(L"Property 'propertyset > namespace' can not be nil")}));
  EXPECT_THAT(import(named(L"<namespace/>")), Says({atField(L"Property 'propertyset' can not be empty"),
                                                    atField(L"Property 'propertyset > namespace' can not be empty")}));
  EXPECT_EQ(sets(), Names());
}

TEST_F(NamespaceOfSet, ThatIsWrongIsToldOnceIfTheSetIsNotSought) {
  const std::vector<ExpectedMessage> once = {error(L"Missing 'propertyset > namespace' property", L"<propertyset")};
  EXPECT_THAT(import(L"<propertyset><label>L</label></propertyset>"), Says(once));
  EXPECT_THAT(import(L"<propertyset><name/></propertyset>"), Says(once));
  EXPECT_THAT(update(L"<propertyset id='77'><name>S</name></propertyset>"), Says(once));
  EXPECT_THAT(import(L"<propertyset id='77'/>"), Says(once));
}

TEST_F(NamespaceOfSet, InlineIsReadTwiceAndSavedOnce) {
  const ExpectedMessage unknown = warning(L"Unknown property 'unknown' for 'propertynamespace'", L"<unknown");
  EXPECT_THAT(import(named(L"<namespace>Nine<unknown/></namespace>")), Says({unknown, unknown}));
  EXPECT_EQ(namespaces(), (Names{"Common", "Other", "Nine"}));
  EXPECT_EQ(sets(), Names{"S"});
}

TEST_F(NamespaceOfSet, IsToldToNobodyWithoutAHandler) {
  const Document document(L"<p>" + named(L"<namespace nil='1'/>") +
                          L"<propertydefinition><name>D</name></propertydefinition>" +
                          L"<valuedefinition/><propertydefinition><name>D</name><type>Foo</type></propertydefinition>" +
                          set(L"<entity_type/>") + definition(L"last") + L"</p>");
  db->importFromXml(document.root(), {});
  EXPECT_EQ(definitions(), Names{"last"});
  EXPECT_EQ(sets(), Names());
}

}  // namespace
}  // namespace tessel::test
