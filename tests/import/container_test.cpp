// The root, what stands directly in it, and which types are wanted.

#include "import/import_test.h"

namespace tessel::test {
namespace {

using Names = std::vector<std::string>;

class Container : public ImportTest {
protected:
  ImportRun importOnly(const std::set<ObjectType>& types, const std::wstring& text) {
    const Document document(text);
    ImportMessages messages;
    db->importFromXml(document.root(), types, {false, messages.handler(), {}});
    return {text, messages.all()};
  }

  const std::wstring site = L"<site><name>A</name></site>";
};

TEST_F(Container, MayHaveAnyName) {
  for (const wchar_t* name :
       {L"project", L"p", L"Site", L"sites", L"Meta", L"x:site", L"spatialstructure", L"object"}) {
    const SampleProject fresh;
    const std::wstring text = std::wstring(L"<") + name + L">" + site + L"</" + name + L">";
    EXPECT_THAT(importText(fresh.db, text), SaysNothing());
    EXPECT_EQ(fresh.count("tessel_Site"), 1);
  }
}

TEST_F(Container, MayBeEmpty) { EXPECT_THAT(import(L"<p/>"), SaysNothing()); }

TEST_F(Container, HoldsObjectsInTheirOrder) {
  EXPECT_THAT(import(L"<p><measure id='1'><name>M</name></measure><unit id='1'><name>U</name><measure id='1'/></unit>"
                     L"<default_unit id='1'/><site id='1'><name>S</name></site>"
                     L"<building id='1'><site id='1'/><name>B</name></building>"
                     L"<story><building id='1'/><name>G</name></story></p>"),
              SaysNothing());
  EXPECT_EQ(measures(), Names{"M"});
  EXPECT_EQ(units(), Names{"U"});
  EXPECT_EQ(column("tessel_Story", "name"), Names{"G"});
  EXPECT_EQ(db->defaultUnit(L"M")->name(), u"U");
}

TEST_F(Container, WhereAThingComesBehindWhatRefersToItIsFaulty) {
  EXPECT_THAT(import(L"<p><unit><name>U</name><measure id='1'/></unit><measure id='1'><name>M</name></measure></p>"),
              Says({error(L"Could not find referenced object 'unit > measure' with id 1", L"<measure id='1'/>")}));
  EXPECT_TRUE(units().empty());
  EXPECT_EQ(measures(), Names{"M"});
}

TEST_F(Container, CalledMetaIsIgnored) {
  EXPECT_THAT(import(L"<meta>" + site + L"<unknown/></meta>"), SaysNothing());
  EXPECT_TRUE(sites().empty());
}

TEST_F(Container, MayHoldMetaThatIsSkipped) {
  EXPECT_THAT(import(L"<p><meta id='1'>" + site + L"<unknown/></meta><site><name>B</name></site><meta/></p>"),
              SaysNothing());
  EXPECT_EQ(sites(), Names{"B"});
}

TEST_F(Container, HasNoMetaInAnObject) {
  EXPECT_THAT(import(L"<site><name>A</name><meta/></site>"),
              Says({warning(L"Unknown property 'meta' for 'site'", L"<meta")}));
}

TEST_F(Container, ThatIsAnObjectIsThatObject) {
  EXPECT_THAT(import(L"<site><name>A</name><building/><site><name>B</name></site></site>"),
              Says({warning(L"Unknown property 'building' for 'site'", L"<building"),
                    warning(L"Unknown property 'site' for 'site'", L"<site><name>B")}));
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(Container, ThatIsAFaultyObjectIsNoContainer) {
  EXPECT_THAT(import(L"<site><measure><name>M</name></measure></site>"),
              Says({error(L"Missing 'site > name' property", L"<site")}));
  EXPECT_TRUE(measures().empty());
}

TEST_F(Container, WithUnknownTagsWarnsAndGoesOn) {
  EXPECT_THAT(
    import(L"<p><bridge><site/></bridge>" + site + L"<Site/><spatialstructure/><x:site/><unknown_2 a='1'/></p>"),
    Says({warning(L"Unknown object type 'bridge'", L"<bridge"), warning(L"Unknown object type 'Site'", L"<Site"),
          warning(L"Unknown object type 'spatialstructure'", L"<spatialstructure"),
          warning(L"Unknown object type 'x:site'", L"<x:site"),
          warning(L"Unknown object type 'unknown_2'", L"<unknown_2")}));
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(Container, WithAnUnknownTagOfAnyLettersTellsIt) {
  EXPECT_THAT(import(L"<p><br\u00FCcke\U0001F309/></p>"),
              Says({warning(L"Unknown object type 'br\u00FCcke\U0001F309'", L"<br")}));
}

// Nodes of other kinds have no name.
TEST_F(Container, WithTextWarnsOfANamelessObject) {
  EXPECT_THAT(import(L"<p>text" + site + L"<![CDATA[data]]></p>"),
              Says({warning(L"Unknown object type ''", L"text"), warning(L"Unknown object type ''", L"data")}));
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(Container, WithCommentsWarnsIfTheParserKeptThem) {
  const std::wstring text = L"<p><!--why-->" + site + L"<?tool run?></p>";
  EXPECT_THAT(import(text), SaysNothing());
  project.raw().exec("DELETE FROM \"tessel_Site\"");
  EXPECT_THAT(import(text, pugi::parse_default | pugi::parse_comments | pugi::parse_pi),
              Says({warning(L"Unknown object type ''", L"why"), warning(L"Unknown object type 'tool'", L"tool run")}));
}

// The name of an instruction is its target.
TEST_F(Container, TakesNodesOfEveryKindByTheirNames) {
  EXPECT_THAT(import(L"<p><?meta text?>" + site + L"<?measure text?><?entitytype text?></p>",
                     pugi::parse_default | pugi::parse_pi),
              Says({error(L"Missing 'measure > name' property", L"measure text")}));
  EXPECT_EQ(sites(), Names{"A"});
  EXPECT_EQ(column("tessel_EntityType", "name"), Names{""}) << "a text of its own is none";
}

TEST_F(Container, CommentsWithinObjectsHaveNoEffect) {
  EXPECT_THAT(import(L"<site><!--a--><name>A</name>text<?tool run?><!--b--></site>",
                     pugi::parse_default | pugi::parse_comments | pugi::parse_pi),
              SaysNothing());
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(Container, WithUnknownFieldsWarnsAndSaves) {
  EXPECT_THAT(import(L"<p><site><first/><name>A</name><Town>T</Town><second><name>B</name></second></site></p>"),
              Says({warning(L"Unknown property 'first' for 'site'", L"<first"),
                    warning(L"Unknown property 'Town' for 'site'", L"<Town"),
                    warning(L"Unknown property 'second' for 'site'", L"<second")}));
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(Container, TellsLikeFaultsApartByTheirPlaces) {
  EXPECT_THAT(import(L"<p><site><town>1</town></site><site><town>2</town></site></p>"),
              Says({error(L"Missing 'site > name' property", L"<site><town>1"),
                    error(L"Missing 'site > name' property", L"<site><town>2")}));
}

// The filter.

TEST_F(Container, GivesOnlyTheWantedTypesSilently) {
  EXPECT_THAT(
    importOnly({ObjectType::Measure},
               L"<p><measure><name>M</name></measure><measure/><site><name>A</name><unknown/></site><bridge/></p>"),
    Says({error(L"Missing 'measure > name' property", L"<measure/>"),
          warning(L"Unknown object type 'bridge'", L"<bridge")}));
  EXPECT_EQ(measures(), Names{"M"});
  EXPECT_TRUE(sites().empty());
}

TEST_F(Container, GivesNothingWhenNoTypeIsWanted) {
  EXPECT_THAT(
    importOnly({},
               L"<p><measure><name>M</name></measure><unit/><default_unit name='x'/><site/><building/><story/></p>"),
    SaysNothing());
  EXPECT_TRUE(measures().empty());
}

TEST_F(Container, ThatIsAnUnwantedObjectIsNotEntered) {
  EXPECT_THAT(importOnly({ObjectType::Measure}, L"<site><name>A</name><measure><name>M</name></measure></site>"),
              SaysNothing());
  EXPECT_TRUE(sites().empty());
  EXPECT_TRUE(measures().empty());
}

TEST_F(Container, GivesInlineObjectsWhateverIsWanted) {
  EXPECT_THAT(importOnly({ObjectType::Building},
                         L"<p>" + site + L"<building><site><name>C</name></site><name>B</name></building></p>"),
              SaysNothing());
  EXPECT_EQ(sites(), Names{"C"});
}

TEST_F(Container, UnwantedObjectsHaveNoId) {
  EXPECT_THAT(importOnly({ObjectType::Building},
                         L"<p><site id='1'><name>A</name></site><building><site id='1'/><name>B</name></building></p>"),
              Says({error(L"Could not find referenced object 'building > site' with id 1", L"<site id='1'/>")}));
}

TEST_F(Container, WantingWhatIsNoElementMakesItNone) {
  EXPECT_THAT(importOnly({ObjectType::SpatialStructure}, L"<p><spatialstructure/></p>"),
              Says({warning(L"Unknown object type 'spatialstructure'", L"<spatialstructure")}));
}

// Other nodes than the root element.

TEST_F(Container, MayBeAnyNodeOfATree) {
  const Document document(L"<all><p>" + site + L"</p><site><name>B</name></site></all>");
  ImportMessages messages;
  options.messageHandler = messages.handler();
  db->importFromXml(document.root().child(L"p"), options);
  EXPECT_EQ(sites(), Names{"A"});
  db->importFromXml(document.root().child(L"site"), options);
  EXPECT_EQ(sites(), (Names{"A", "B"}));
  EXPECT_TRUE(messages.all().empty());
}

TEST_F(Container, MayBeTheDocumentAroundAnObject) {
  Document document(site);
  db->importFromXml(document.tree(), options);
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(Container, IsOneLevelOnly) {
  Document document(L"<p>" + site + L"</p>");
  ImportMessages messages;
  options.messageHandler = messages.handler();
  db->importFromXml(document.tree(), options);
  EXPECT_EQ(textsOf(messages.all()), std::vector<OdString>{u"Unknown object type 'p'"});
  EXPECT_TRUE(sites().empty());
}

TEST_F(Container, MayBeNoNodeAtAll) {
  EXPECT_NO_THROW(db->importFromXml(pugi::xml_node(), options));
  EXPECT_NO_THROW(db->importFromXml(pugi::xml_document(), options));
}

}  // namespace
}  // namespace tessel::test
