// The element that makes a unit the default of its measure.

#include <tessel/exceptions.h>

#include "import/import_test.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

class DefaultUnitElement : public ImportTest {
protected:
  /// The name of the default unit of length; empty if there is none.
  std::string lengths() const {
    const auto unit = db->defaultUnit(L"LENGTH");
    return unit ? unit->name().toUtf8() : "";
  }

  static std::wstring unit(const std::wstring& name, const std::wstring& attributes = L"") {
    return L"<unit " + attributes + L"><name>" + name + L"</name><label>" + name +
           L"</label><measure name='LENGTH'/></unit>";
  }

  static ExpectedMessage unresolved(const std::wstring& search) {
    return error((L"Could not find referenced object 'default_unit > unit' with " + search).c_str(), L"<default_unit");
  }

  const std::wstring metre = unit(L"metre", L"id='1'");
};

TEST_F(DefaultUnitElement, NamesAUnit) {
  EXPECT_THAT(import(L"<p>" + metre + L"<default_unit name='metre'/></p>"), SaysNothing());
  EXPECT_EQ(lengths(), "metre");
}

TEST_F(DefaultUnitElement, HasTheIdOfAUnit) {
  EXPECT_THAT(import(L"<p>" + metre + L"<default_unit id='1' name='yard'/></p>"), SaysNothing());
  EXPECT_EQ(lengths(), "metre");
}

TEST_F(DefaultUnitElement, HoldsAUnit) {
  EXPECT_THAT(import(L"<default_unit><name>metre</name><measure name='LENGTH'/></default_unit>"), SaysNothing());
  EXPECT_EQ(lengths(), "metre");
}

TEST_F(DefaultUnitElement, HoldsAUnitWithItsMeasure) {
  EXPECT_THAT(import(L"<default_unit><name>newton</name><measure><name>FORCE</name></measure></default_unit>"),
              SaysNothing());
  EXPECT_EQ(db->defaultUnit(L"FORCE")->name(), u"newton");
}

TEST_F(DefaultUnitElement, ByTheDefaultOfAMeasureChangesNothing) {
  import(L"<p>" + metre + L"<default_unit id='1'/></p>");
  EXPECT_THAT(import(L"<default_unit default='LENGTH'/>"), SaysNothing());
  EXPECT_EQ(lengths(), "metre");
}

// The attribute "default" goes before "name", right or wrong.
TEST_F(DefaultUnitElement, TriesTheNameWhenTheMeasureHasNoDefault) {
  const std::wstring both = L"<default_unit default='LENGTH' name='yard'/>";
  EXPECT_THAT(import(L"<p>" + metre + unit(L"yard") + both + L"</p>"), SaysNothing());
  EXPECT_EQ(lengths(), "yard");
  import(L"<default_unit name='metre'/>");
  EXPECT_THAT(import(both), SaysNothing());
  EXPECT_EQ(lengths(), "metre");
  EXPECT_THAT(import(L"<default_unit default='LENGTH' name='nobody'/>"), SaysNothing());
}

TEST_F(DefaultUnitElement, ThatFindsNothingIsAnError) {
  EXPECT_THAT(import(L"<default_unit default='x' name='y'/>"), Says({unresolved(L"default unit 'x' or name 'y'")}));
  EXPECT_THAT(import(L"<default_unit name='y' default='x'/>"), Says({unresolved(L"default unit 'x' or name 'y'")}));
  EXPECT_THAT(import(L"<default_unit default='x'/>"), Says({unresolved(L"default unit 'x'")}));
  EXPECT_THAT(import(L"<default_unit default='LENGTH'/>"), Says({unresolved(L"default unit 'LENGTH'")}));
  EXPECT_THAT(import(L"<default_unit name='y'/>"), Says({unresolved(L"name 'y'")}));
  EXPECT_THAT(import(L"<default_unit default='' name=''/>"), Says({unresolved(L"default unit '' or name ''")}));
  EXPECT_THAT(import(L"<default_unit id='9' name='y'/>"), Says({unresolved(L"id 9")}));
}

TEST_F(DefaultUnitElement, WithoutAUnitChangesNothing) {
  import(L"<p>" + metre + L"<default_unit id='1'/></p>");
  for (const wchar_t* none : {L"<default_unit/>", L"<default_unit></default_unit>", L"<default_unit nil='true'/>",
                              L"<default_unit nil='true' name='nobody'>content</default_unit>"}) {
    EXPECT_THAT(import(none), SaysNothing());
    EXPECT_THAT(import(std::wstring(L"<p>") + none + L"</p>"), SaysNothing());
  }
  EXPECT_EQ(lengths(), "metre");
}

TEST_F(DefaultUnitElement, WithAnotherAttributeOnlyIsEmpty) {
  EXPECT_THAT(import(L"<p><default_unit measure='LENGTH'/></p>"),
              Says({error(L"Property 'default_unit > unit' can not be empty", L"<default_unit")}));
  EXPECT_THAT(import(L"<p><default_unit nil='false'/></p>"),
              Says({error(L"Property 'default_unit > unit' can not be empty", L"<default_unit")}));
}

TEST_F(DefaultUnitElement, HoldingAFaultyUnitIsAnError) {
  EXPECT_THAT(import(L"<default_unit>metre</default_unit>"), Says({errorNowhere(L"Missing 'unit > name' property")}));
  EXPECT_THAT(import(L"<default_unit><name>U</name></default_unit>"),
              Says({errorNowhere(L"Missing 'unit > measure' property")}));
  EXPECT_THAT(import(L"<default_unit><name>U</name><measure/></default_unit>"),
              Says({error(L"Property 'unit > measure' can not be empty", L"<measure")}));
  EXPECT_TRUE(units().empty());
}

TEST_F(DefaultUnitElement, HoldingAUnitWarnsOfWhatThatHasTooMuch) {
  EXPECT_THAT(import(L"<default_unit><name>metre</name><measure name='LENGTH'/><colour/></default_unit>"),
              Says({warning(L"Unknown property 'colour' for 'unit'", L"<colour")}));
  EXPECT_EQ(lengths(), "metre");
}

TEST_F(DefaultUnitElement, ThatFailsLeavesTheRestOfTheRun) {
  EXPECT_THAT(import(L"<p>" + metre + L"<default_unit name='y'/><site><name>A</name></site></p>"),
              Says({unresolved(L"name 'y'")}));
  EXPECT_EQ(units(), std::vector<std::string>{"metre"});
  EXPECT_EQ(sites(), std::vector<std::string>{"A"});
}

// The first default of a measure settles the units of its columns for good.
TEST_F(DefaultUnitElement, ComingFirstSettlesTheColumns) {
  EXPECT_THAT(import(L"<p>" + metre + unit(L"yard") + L"<default_unit id='1'/><default_unit name='yard'/></p>"),
              SaysNothing());
  EXPECT_EQ(lengths(), "yard");
  EXPECT_EQ(db->columnUnit<Site>(&Site::ref_elevation)->name(), u"metre");
  EXPECT_EQ(project.count("tessel_ColumnUnit"), 5);
}

TEST_F(DefaultUnitElement, IsReadWhenUnitsAreWanted) {
  ImportMessages messages;
  options.messageHandler = messages.handler();
  const Document document(L"<p>" + metre + L"<default_unit name='metre'/><default_unit name='nobody'/></p>");
  db->importFromXml(document.root(), {ObjectType::Measure}, options);
  EXPECT_TRUE(units().empty());
  EXPECT_TRUE(messages.all().empty());

  db->importFromXml(document.root(), {ObjectType::Unit}, options);
  EXPECT_EQ(lengths(), "metre");
  EXPECT_EQ(messages.all().size(), 1U);
}

// It has no id of its own, and cannot be removed.
TEST_F(DefaultUnitElement, KnowsNoRemoval) {
  import(metre);
  const std::wstring id = std::to_wstring(idOf("tessel_Unit", "metre"));
  EXPECT_THAT(update(L"<p><unit id='" + id +
                     L"'><name>metre</name><measure name='LENGTH'/></unit>"
                     L"<default_unit id='" +
                     id + L"' remove='true'/></p>"),
              SaysNothing());
  EXPECT_EQ(lengths(), "metre");
}

// Unlike the elements of objects this one has no guard.
TEST_F(DefaultUnitElement, LetsExceptionsPassAndTheRunIsLost) {
  import(metre);
  const Document document(L"<p><site><name>A</name></site><default_unit><name>metre</name><label>other</label>"
                          L"<measure name='LENGTH'/></default_unit></p>");
  ImportMessages messages;
  options.messageHandler = messages.handler();
  EXPECT_THROW(db->importFromXml(document.root(), options), ObjectNotUnique);
  EXPECT_TRUE(messages.all().empty());
  EXPECT_TRUE(sites().empty());
  EXPECT_EQ(lengths(), "");
}

TEST_F(DefaultUnitElement, LetsExceptionsOfTheFilePass) {
  import(metre);
  project.raw().exec("DROP TABLE \"tessel_DefaultUnit\"");
  const Document document(L"<p><site><name>A</name></site><default_unit name='metre'/></p>");
  EXPECT_THROW(db->importFromXml(document.root(), options), DatabaseException);
  EXPECT_TRUE(sites().empty());
}

}  // namespace
}  // namespace tessel::test
