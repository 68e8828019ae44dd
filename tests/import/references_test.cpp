// References, which are alike in all classes: by document id, by attributes, inline, and what is refused.

#include "import/import_test.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

/// A reference from one class to another.
struct Reference {
  std::wstring owner;   ///< The tag of the element that refers.
  std::wstring key;     ///< The field, which is named like the tag of the target.
  std::wstring before;  ///< Two possible targets, of the document ids 7 and 8 and the names "Seven" and "Eight".
  std::wstring inside;  ///< The other fields that a target needs.
  std::string ownerTable;
  std::string targetTable;
  bool byName;  ///< Whether a target of that name is found.
};

const std::wstring twoMeasures =
  L"<measure id='7'><name>Seven</name></measure><measure id='8'><name>Eight</name></measure>";
const std::wstring twoSites = L"<site id='7'><name>Seven</name></site><site id='8'><name>Eight</name></site>";
const std::wstring twoBuildings = L"<site id='9'><name>Main</name></site>"
                                  L"<building id='7'><site id='9'/><name>Seven</name></building>"
                                  L"<building id='8'><site id='9'/><name>Eight</name></building>";

const Reference references[] = {
  {L"unit", L"measure", twoMeasures, L"", "tessel_Unit", "tessel_Measure", true},
  {L"building", L"site", twoSites, L"", "tessel_Building", "tessel_Site", true},
  {L"story", L"building", twoBuildings, L"<site id='9'/>", "tessel_Story", "tessel_Building", false},
};

class References : public ImportTest, public ::testing::WithParamInterface<Reference> {
protected:
  std::wstring document(const std::wstring& field) const {
    return L"<p>" + reference.before + element(field) + L"</p>";
  }
  std::wstring element(const std::wstring& field) const {
    return L"<" + reference.owner + L" place=''><name>Owner</name>" + field + L"</" + reference.owner + L">";
  }

  /// The field with these attributes and this content.
  std::wstring field(const std::wstring& attributes, const std::wstring& content = L"") const {
    return L"<" + reference.key + L" field='' " + attributes + L">" + content + L"</" + reference.key + L">";
  }

  std::wstring inlineTarget(const std::wstring& name) const { return L"<name>" + name + L"</name>" + reference.inside; }

  /// The name of what the only owner refers to; empty if there is no owner.
  std::string target() const {
    const std::string column = OdString(reference.key.c_str()).toUtf8() + "_id";
    const auto names = project.raw().column("SELECT target.name FROM " + reference.targetTable + " target JOIN " +
                                            reference.ownerTable + " owner ON owner." + column + " = target.id");
    return names.empty() ? "" : names.at(0);
  }

  std::wstring owner() const { return L"<" + reference.owner + L" place"; }
  std::wstring place() const { return L"<" + reference.key + L" field"; }
  std::wstring path() const { return L"'" + reference.owner + L" > " + reference.key + L"'"; }

  ExpectedMessage unresolved(const std::wstring& search) const {
    return error((L"Could not find referenced object " + path() + L" with " + search).c_str(), place());
  }
  ExpectedMessage canNotBe(const std::wstring& what) const {
    return error((L"Property " + path() + L" can not be " + what).c_str(), place());
  }

  const Reference& reference = GetParam();
};

// By document id.

TEST_P(References, ByIdLeadToAnEarlierElement) {
  EXPECT_THAT(import(document(field(L"id='8'"))), SaysNothing());
  EXPECT_EQ(target(), "Eight");
}

TEST_P(References, ByIdMayBeHexadecimal) {
  EXPECT_THAT(import(document(field(L"id='0x7'"))), SaysNothing());
  EXPECT_EQ(target(), "Seven");
}

TEST_P(References, ByIdGoBeforeNamesAndContent) {
  EXPECT_THAT(import(document(field(L"name='Seven' id='8'", L"<name>Nine</name><unknown/>"))), SaysNothing());
  EXPECT_EQ(target(), "Eight");
}

TEST_P(References, ByUnknownIdAreErrors) {
  EXPECT_THAT(import(document(field(L"id='6'"))), Says({unresolved(L"id 6")}));
  EXPECT_EQ(target(), "");
}

TEST_P(References, ByUnknownIdAreErrorsDespiteANameAndContent) {
  EXPECT_THAT(import(document(field(L"id='6' name='Seven'", inlineTarget(L"Nine")))), Says({unresolved(L"id 6")}));
  EXPECT_EQ(target(), "");
}

TEST_P(References, ByIdThatIsNoNumberLookForZero) {
  EXPECT_THAT(import(document(field(L"id=''"))), Says({unresolved(L"id 0")}));
  EXPECT_THAT(import(document(field(L"id='Seven'"))).messages.back().text,
              OdString((L"Could not find referenced object " + path() + L" with id 0").c_str()));
  EXPECT_EQ(target(), "");
}

TEST_P(References, ByIdToALaterElementAreErrors) {
  const std::wstring owner = element(field(L"id='7'"));
  EXPECT_THAT(import(L"<p>" + owner + reference.before + L"</p>"), Says({unresolved(L"id 7")}));
  EXPECT_EQ(target(), "");
}

// Rows that this document does not name have no id in it.
TEST_P(References, ByIdDoNotLeadToRows) {
  import(L"<p>" + reference.before + L"</p>");
  const std::wstring row = std::to_wstring(idOf(reference.targetTable, "Seven"));
  const std::wstring owner = element(field(L"id='" + row + L"'"));
  EXPECT_THAT(import(owner), Says({unresolved(L"id " + row)}));
  EXPECT_THAT(update(owner), Says({unresolved(L"id " + row)}));
  EXPECT_EQ(target(), "");
}

// By attributes.

TEST_P(References, ByNameLeadToARowOfThisRunOrOfAnEarlierOne) {
  if (!reference.byName) {
    EXPECT_THAT(import(document(field(L"name='Eight'"))), Says({unresolved(L"name 'Eight'")}));
    return;
  }
  EXPECT_THAT(import(document(field(L"name='Eight'"))), SaysNothing());
  EXPECT_EQ(target(), "Eight");
  project.raw().exec("DELETE FROM \"" + reference.ownerTable + "\"");
  EXPECT_THAT(import(element(field(L"name='Seven'"))), SaysNothing());
  EXPECT_EQ(target(), "Seven");
}

TEST_P(References, ByNameGoBeforeContent) {
  const ImportRun run = import(document(field(L"name='Eight'", L"<name>Nine</name><unknown/>")));
  EXPECT_THAT(run, reference.byName ? SaysNothing() : Says({unresolved(L"name 'Eight'")}));
  EXPECT_EQ(target(), reference.byName ? "Eight" : "");
}

TEST_P(References, ByUnknownNameAreErrors) {
  EXPECT_THAT(import(document(field(L"name='eight'"))), Says({unresolved(L"name 'eight'")}));
  EXPECT_EQ(target(), "");
}

TEST_P(References, ByUnknownNameAreErrorsDespiteContent) {
  EXPECT_THAT(import(document(field(L"name='Nine'", inlineTarget(L"Nine")))), Says({unresolved(L"name 'Nine'")}));
  EXPECT_EQ(target(), "");
}

TEST_P(References, ByEmptyNameAreErrors) {
  EXPECT_THAT(import(document(field(L"name=''"))), Says({unresolved(L"name ''")}));
}

// Inline.

TEST_P(References, MayHoldANewObject) {
  EXPECT_THAT(import(document(field(L"", inlineTarget(L"Nine")))), SaysNothing());
  EXPECT_EQ(target(), "Nine");
}

TEST_P(References, HoldingAnObjectWarnOfWhatItHasTooMuch) {
  const std::wstring warningText = L"Unknown property 'unknown' for '" + reference.key + L"'";
  EXPECT_THAT(import(document(field(L"other='1'", inlineTarget(L"Nine") + L"<unknown/>"))),
              Says({warning(warningText.c_str(), L"<unknown")}));
  EXPECT_EQ(target(), "Nine");
}

// Such an object has no place of its own in the document, but what it holds has one.
TEST_P(References, HoldingAFaultyObjectAreErrors) {
  const std::wstring fault = L"Missing '" + reference.key + L" > name' property";
  EXPECT_THAT(import(document(field(L"", reference.inside + L"<unknown/>"))), Says({errorNowhere(fault.c_str())}));
  EXPECT_EQ(target(), "");
}

TEST_P(References, HoldingATextHoldAnObjectWithoutFields) {
  const std::wstring first = reference.inside.empty() ? L"name" : L"site";
  const std::wstring fault = L"Missing '" + reference.key + L" > " + first + L"' property";
  EXPECT_THAT(import(document(field(L"", L"Seven"))), Says({errorNowhere(fault.c_str())}));
}

TEST_P(References, HoldingACommentHoldAnObjectWithoutFields) {
  const std::wstring first = reference.inside.empty() ? L"name" : L"site";
  const std::wstring fault = L"Missing '" + reference.key + L" > " + first + L"' property";
  const std::wstring text = document(field(L"", L"<!-- Seven -->"));
  EXPECT_THAT(import(text, pugi::parse_default | pugi::parse_comments), Says({errorNowhere(fault.c_str())}));
  EXPECT_THAT(import(text).messages.back().text, OdString((L"Property " + path() + L" can not be empty").c_str()));
}

// What is refused.

TEST_P(References, MayNotBeAbsent) {
  EXPECT_THAT(import(document(L"")), Says({error((L"Missing " + path() + L" property").c_str(), owner())}));
  EXPECT_EQ(target(), "");
}

TEST_P(References, MayNotBeNil) {
  EXPECT_THAT(import(document(field(L"nil='true'"))), Says({canNotBe(L"nil")}));
  EXPECT_EQ(target(), "");
}

TEST_P(References, MayNotBeNilEvenWithATarget) {
  EXPECT_THAT(import(document(field(L"id='7' name='Seven' nil='1'", inlineTarget(L"Nine")))), Says({canNotBe(L"nil")}));
}

TEST_P(References, MayBeDeclaredNotNil) {
  EXPECT_THAT(import(document(field(L"id='7' nil='false'"))), SaysNothing());
  EXPECT_EQ(target(), "Seven");
}

TEST_P(References, MayNotBeEmpty) {
  EXPECT_THAT(import(document(field(L""))), Says({canNotBe(L"empty")}));
  EXPECT_THAT(import(document(field(L"Name='Seven' ID='7'"))).messages.back().text,
              OdString((L"Property " + path() + L" can not be empty").c_str()));
  EXPECT_EQ(target(), "");
}

INSTANTIATE_TEST_SUITE_P(Import, References, ::testing::ValuesIn(references),
                         [](const auto& param) { return OdString(param.param.owner.c_str()).toUtf8(); });

// What is special.

class ReferenceOrder : public ImportTest {};

TEST_F(ReferenceOrder, InlineObjectsAreSavedFirst) {
  RecordingReactor reactor(db);
  EXPECT_THAT(import(L"<story><building><site><name>S</name></site><name>B</name></building><name>G</name></story>"),
              SaysNothing());
  std::vector<ObjectType> types;
  for (const auto& saved : reactor.saved) types.push_back(saved.key.type);
  EXPECT_EQ(types, (std::vector<ObjectType>{ObjectType::Site, ObjectType::Building, ObjectType::Story}));
}

// The path begins anew with each inline object, and the place of a reference in it is its own.
TEST_F(ReferenceOrder, FaultsDeepInsideAreToldByTheInnermostObject) {
  EXPECT_THAT(import(L"<story><building><site id='5'/><name>B</name></building><name>G</name></story>"),
              Says({error(L"Could not find referenced object 'building > site' with id 5", L"<site id")}));
  EXPECT_THAT(import(L"<story><building><site nil='1'/><name>B</name></building><name>G</name></story>"),
              Says({error(L"Property 'building > site' can not be nil", L"<site nil")}));
  EXPECT_THAT(import(L"<story><building><site/><name>B</name></building><name>G</name></story>"),
              Says({error(L"Property 'building > site' can not be empty", L"<site/")}));
  EXPECT_THAT(import(L"<story><building><name>B</name></building><name>G</name></story>"),
              Says({errorNowhere(L"Missing 'building > site' property")}));
  EXPECT_TRUE(sites().empty());
}

// An inline object of a taken name is saved as any other.
TEST_F(ReferenceOrder, InlineObjectsMergeWithExistingOnes) {
  EXPECT_THAT(import(L"<unit><name>metre</name><measure><name>LENGTH</name><length>9</length></measure></unit>"),
              SaysNothing());
  const auto unit = db->get<Unit>(NameKey(u"metre"));
  EXPECT_EQ(unit->measure()->id(), db->get<Measure>(NameKey(u"LENGTH"))->id());
  EXPECT_EQ(unit->measure()->length(), 1);
}

}  // namespace
}  // namespace tessel::test
