// Roads of the reference reader that no document of today takes, and contexts that do not report.

#include "import/reference_reader.h"

#include <gtest/gtest.h>

#include <tessel/spatial.h>
#include <tessel/units.h>

#include "import/internal/import_run.h"

namespace tessel::test {
namespace {

ElementContext contextOf(ObjectType type, Object* object, bool report = true) {
  return {nullptr, type, object, ElementPath(L"owner").then(L"field"), report, 5};
}

// In a site a name selects among its own buildings. Elsewhere it selects among those without a site.
TEST(BuildingReference, ByNameIsSoughtInTheSiteThatIsRead) {
  RunOn on(L"<building name='B'/>");
  const auto main = on.project.db->save(Site::create(L"Main"));
  const auto other = on.project.db->save(Site::create(L"Other"));
  const auto building = on.project.db->save(Building::create(main, L"B"));
  on.project.db->save(Building::create(other, L"B"));

  TsSmartPtr<Building> found;
  EXPECT_TRUE(readReference(on.run, on.root(), found, contextOf(ObjectType::Site, main.get())));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->id(), building->id());

  EXPECT_FALSE(readReference(on.run, on.root(), found, contextOf(ObjectType::Site, nullptr)));
  EXPECT_FALSE(readReference(on.run, on.root(), found, contextOf(ObjectType::Building, main.get())));
  EXPECT_FALSE(found);
  const OdString unresolved = u"Could not find referenced object 'owner > field' with name 'B'";
  EXPECT_EQ(textsOf(on.messages.all()), (std::vector<OdString>{unresolved, unresolved}));
}

class SilentReference : public ::testing::Test {
protected:
  /// Reads a reference to a unit where nothing is to be reported.
  static std::vector<ImportMessage> messagesOf(const std::wstring& text, bool success) {
    RunOn on(text);
    TsSmartPtr<Unit> unit;
    EXPECT_EQ(readReference(on.run, on.root().first_child(), unit, contextOf(ObjectType::Unit, nullptr, false)),
              success);
    EXPECT_EQ(!unit.isNull(), success);
    return on.messages.all();
  }
};

TEST_F(SilentReference, GivesNoErrors) {
  for (const wchar_t* faulty :
       {L"<p/>", L"<p><unit/></p>", L"<p><unit nil='1'/></p>", L"<p><unit id='1'/></p>", L"<p><unit name='x'/></p>",
        L"<p><unit>x</unit></p>", L"<p><unit><name>U</name><measure/></unit></p>",
        L"<p><unit><name>U</name><measure><length>1</length></measure></unit></p>"}) {
    EXPECT_TRUE(messagesOf(faulty, false).empty()) << OdString(faulty).toUtf8();
  }
}

TEST_F(SilentReference, WarnsNevertheless) {
  EXPECT_EQ(textsOf(messagesOf(L"<p><unit><name>U</name><measure><name>M</name><a/></measure><b/></unit></p>", true)),
            (std::vector<OdString>{u"Unknown property 'a' for 'measure'", u"Unknown property 'b' for 'unit'"}));
}

TEST(NullableReference, TakesTheNullElements) {
  for (const wchar_t* none : {L"<p/>", L"<p><unit/></p>", L"<p><unit nil='1' id='5'/></p>"}) {
    RunOn on(none);
    TsSmartPtr<Unit> unit = Unit::create(L"old", 1, nullptr);
    EXPECT_TRUE(readNullableReference(on.run, on.root().first_child(), unit, contextOf(ObjectType::Unit, nullptr)));
    EXPECT_FALSE(unit);
    EXPECT_TRUE(on.messages.all().empty());
  }
}

TEST(NullableReference, ReadsAllOthersAsReferences) {
  RunOn on(L"<p><unit name='x'/></p>");
  TsSmartPtr<Unit> unit;
  EXPECT_FALSE(readNullableReference(on.run, on.root().first_child(), unit, contextOf(ObjectType::Unit, nullptr)));
  EXPECT_EQ(textsOf(on.messages.all()),
            (std::vector<OdString>{u"Could not find referenced object 'owner > field' with name 'x'"}));
}

TEST(ElementPath, IsPutTogetherFromItsParts) {
  EXPECT_EQ(ElementPath(L"unit").text(), u"unit");
  EXPECT_EQ(ElementPath(L"unit").then(L"measure").text(), u"unit > measure");
  EXPECT_EQ(ElementPath(L"propertydefinition").then(L"type").then(L"value_type").text(),
            u"propertydefinition > type > value_type");
}

TEST(ElementContext, OfAFieldIsThatOfItsObjectWithALongerPath) {
  const ElementContext parent = contextOf(ObjectType::Building, nullptr);
  const TsSmartPtr<Site> site = Site::create(L"A");
  const ElementContext object{&parent, ObjectType::Site, site.get(), ElementPath(L"site"), false, 12};
  const ElementContext field = object.field(L"town");
  EXPECT_EQ(field.parent, &parent);
  EXPECT_EQ(field.type, ObjectType::Site);
  EXPECT_EQ(field.object, site.get());
  EXPECT_EQ(field.path.text(), u"site > town");
  EXPECT_FALSE(field.report);
  EXPECT_EQ(field.offset, 12);
}

}  // namespace
}  // namespace tessel::test
