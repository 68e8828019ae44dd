// The unit of a definition, which may also be none.

#include "import/catalogue_import.h"

namespace tessel::test {
namespace {

class UnitOfDefinition : public CatalogueImport, public ::testing::WithParamInterface<const wchar_t*> {
protected:
  void SetUp() override {
    CatalogueImport::SetUp();
    ASSERT_THAT(import(units + L"</p>"), SaysNothing());
  }

  /// A definition with this field is imported behind the units, which are there already.
  ImportRun importWith(const std::wstring& field) {
    project.raw().exec("DELETE FROM \"" + table + "\"");
    return import(units + object(tag, L"D", field, L"place=''") + L"</p>");
  }

  /// What the field leads to, without a message.
  std::string unitOf(const std::wstring& field) {
    EXPECT_THAT(importWith(field), SaysNothing());
    return project.raw().scalarText("SELECT coalesce(unit.name, 'none') FROM \"" + table +
                                    "\" owner LEFT JOIN tessel_Unit unit ON unit.id = owner.unit_id");
  }

  void expectRefused(const std::wstring& field, const ExpectedMessage& message) {
    EXPECT_THAT(importWith(field), Says({message}));
    EXPECT_EQ(project.count(table), 0);
  }
  ExpectedMessage unresolved(const std::wstring& search) const {
    return error((L"Could not find referenced object '" + tag + L" > unit' with " + search).c_str(), L"<unit field");
  }

  const std::wstring tag = GetParam();
  const std::string table = tag == L"propertydefinition" ? "tessel_PropertyDefinition" : "tessel_ValueDefinition";

  // "metre" is the default of its measure, and each is there under an id.
  const std::wstring units = L"<p><unit id='7'><name>metre</name><label>m</label><measure name='LENGTH'/></unit>"
                             L"<unit id='8'><name>yard</name><label>yd</label><measure name='LENGTH'/></unit>"
                             L"<default_unit id='7'/>";
};

TEST_P(UnitOfDefinition, MayBeNone) {
  EXPECT_EQ(unitOf(L""), "none");
  EXPECT_EQ(unitOf(L"<unit/>"), "none");
  EXPECT_EQ(unitOf(L"<unit></unit>"), "none");
  EXPECT_EQ(unitOf(L"<unit nil='true'/>"), "none");
  EXPECT_EQ(unitOf(L"<unit nil='true' id='7' default='LENGTH' name='yard'><name>x</name></unit>"), "none");
}

TEST_P(UnitOfDefinition, ById) {
  EXPECT_EQ(unitOf(L"<unit id='8'/>"), "yard");
  EXPECT_EQ(unitOf(L"<unit id='8' nil='false' default='LENGTH' name='metre'><unknown/></unit>"), "yard");
}

TEST_P(UnitOfDefinition, ByUnknownIdIsAnError) {
  expectRefused(L"<unit field='' id='9' name='metre'/>", unresolved(L"id 9"));
}

TEST_P(UnitOfDefinition, ByName) { EXPECT_EQ(unitOf(L"<unit name='yard'/>"), "yard"); }

TEST_P(UnitOfDefinition, ByTheDefaultOfItsMeasure) {
  EXPECT_EQ(unitOf(L"<unit default='LENGTH'/>"), "metre");
  EXPECT_EQ(unitOf(L"<unit default='LENGTH' name='yard'/>"), "metre");
  EXPECT_EQ(unitOf(L"<unit name='nobody' default='LENGTH'/>"), "metre");
}

// A measure without a default, and no measure at all.
TEST_P(UnitOfDefinition, ByNameIfTheMeasureHasNoDefault) {
  EXPECT_EQ(unitOf(L"<unit default='AREA' name='yard'/>"), "yard");
  EXPECT_EQ(unitOf(L"<unit default='nobody' name='yard'/>"), "yard");
}

TEST_P(UnitOfDefinition, ByAttributesThatLeadNowhereIsAnError) {
  expectRefused(L"<unit field='' default='AREA'/>", unresolved(L"default unit 'AREA'"));
  expectRefused(L"<unit field='' default=''/>", unresolved(L"default unit ''"));
  expectRefused(L"<unit field='' name='Yard'/>", unresolved(L"name 'Yard'"));
  expectRefused(L"<unit field='' name='y' default='x'/>", unresolved(L"default unit 'x' or name 'y'"));
  expectRefused(L"<unit field='' name='y'><name>y</name><measure name='LENGTH'/></unit>", unresolved(L"name 'y'"));
}

TEST_P(UnitOfDefinition, Inline) {
  EXPECT_EQ(unitOf(L"<unit><name>foot</name><label>ft</label><measure name='LENGTH'/></unit>"), "foot");
  EXPECT_EQ(unitOf(L"<unit><name>newton</name><measure><name>FORCE</name></measure></unit>"), "newton");
}

TEST_P(UnitOfDefinition, InlineWithUnknownFieldsWarnsOnly) {
  EXPECT_THAT(importWith(L"<unit><name>foot</name><measure name='LENGTH'/><unknown/></unit>"),
              Says({warning(L"Unknown property 'unknown' for 'unit'", L"<unknown")}));
  EXPECT_EQ(project.count(table), 1);
}

TEST_P(UnitOfDefinition, InlineThatIsFaultyIsAnError) {
  expectRefused(L"<unit><measure name='LENGTH'/></unit>", errorNowhere(L"Missing 'unit > name' property"));
  expectRefused(L"<unit><name>foot</name></unit>", errorNowhere(L"Missing 'unit > measure' property"));
  expectRefused(L"<unit><name>foot</name><measure field=''/></unit>",
                error(L"Property 'unit > measure' can not be empty", L"<measure field"));
}

// An attribute that selects nothing makes it no null, and nothing else.
TEST_P(UnitOfDefinition, WithAnUnknownAttributeAloneIsAnError) {
  const OdString empty = (L"Property '" + tag + L" > unit' can not be empty").c_str();
  expectRefused(L"<unit field=''/>", error(empty, L"<unit field"));
  expectRefused(L"<unit field='' nil='false'/>", error(empty, L"<unit field"));
}

TEST_P(UnitOfDefinition, WithATextAloneIsAFaultyObject) {
  expectRefused(L"<unit>metre</unit>", errorNowhere(L"Missing 'unit > name' property"));
}

TEST_P(UnitOfDefinition, IsTakenAwayByAnUpdate) {
  ASSERT_EQ(unitOf(L"<unit id='8'/>"), "yard");
  EXPECT_THAT(update(object(tag, L"D", L"", L"id='" + rowOf(table, "D") + L"'")), SaysNothing());
  EXPECT_EQ(fieldOf(table, "D", "unit_id"), "NULL");
}

INSTANTIATE_TEST_SUITE_P(Import, UnitOfDefinition, ::testing::Values(L"propertydefinition", L"valuedefinition"),
                         [](const auto& param) { return narrow(param.param); });

}  // namespace
}  // namespace tessel::test
