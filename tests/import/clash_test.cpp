// What happens to an object whose name, or label, is taken.

#include "import/import_test.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

using Names = std::vector<std::string>;

class ImportClash : public ImportTest {
protected:
  void SetUp() override {
    import(L"<p><measure><name>FORCE</name><mass>1</mass><description>old</description></measure>"
           L"<unit><name>newton</name><label>N</label><measure name='FORCE'/></unit>"
           L"<story><building><site><name>A</name><town>old</town></site><name>B</name></building><name>G</name></"
           L"story></p>");
    row = idOf("tessel_Site", "A");
    before = dumpOf(project.raw());
  }

  /// A site of the taken name, and a building that refers to it.
  const std::wstring taken = L"<p><site id='9'><name>A</name><town>new</town></site>"
                             L"<building><site id='9'/><name>C</name></building></p>";
  const OdString notUnique = u"An other object with the same values exists: name";

  unsigned int siteOfC() { return static_cast<unsigned int>(std::stoul(column("tessel_Building", "site_id").back())); }

  RecordingReactor reactor{db};
  unsigned int row = 0;
  std::vector<std::string> before;
};

TEST_F(ImportClash, CostsTheElementByDefault) {
  EXPECT_THAT(import(taken),
              Says({error(notUnique, L"<site id='9'><"),
                    error(L"Could not find referenced object 'building > site' with id 9", L"<site id='9'/>")}));
  EXPECT_EQ(dumpOf(project.raw()), before);
}

TEST_F(ImportClash, WithinAnOwnerCostsTheElementByDefault) {
  const std::wstring building = L"<building id='9'><site name='A'/><name>B</name></building>";
  EXPECT_THAT(import(building), Says({error(notUnique, L"<building")}));
  reactor.answer({SaveResolution::Kept});
  EXPECT_THAT(import(L"<p>" + building + L"<story><building id='9'/><name>G</name></story></p>"),
              Says({error(notUnique, L"<story")}));
  EXPECT_EQ(dumpOf(project.raw()), before);
}

TEST_F(ImportClash, MayKeepTheExistingObject) {
  reactor.answer({SaveResolution::Kept});
  EXPECT_THAT(import(taken), SaysNothing());
  EXPECT_EQ(column("tessel_Site", "town"), Names{"old"});
  EXPECT_EQ(siteOfC(), row);
}

TEST_F(ImportClash, MayOverwriteTheExistingObject) {
  reactor.answer({SaveResolution::Overwritten});
  EXPECT_THAT(import(taken), SaysNothing());
  EXPECT_EQ(column("tessel_Site", "town"), Names{"new"});
  EXPECT_EQ(siteOfC(), row);
}

TEST_F(ImportClash, MayRenameTheNewObject) {
  reactor.rename({L"A 2"});
  EXPECT_THAT(import(taken), SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "A 2"}));
  EXPECT_EQ(siteOfC(), idOf("tessel_Site", "A 2"));
}

TEST_F(ImportClash, IsGivenUpAfterSixAnswers) {
  reactor.otherwise(SaveResolution::Created);
  const ImportRun run = import(L"<site><name>A</name></site>");
  EXPECT_EQ(reactor.clashes.size(), 6U);
  ASSERT_EQ(run.messages.size(), 1U);
  EXPECT_EQ(run.messages[0].severity, ImportSeverity::Error);
}

TEST_F(ImportClash, IsAskedAboutOnceForEachElement) {
  import(taken);
  EXPECT_EQ(reactor.clashes, (std::vector<RecordingReactor::Clash>{{db.get(), ObjectType::Site, u"A"}}));
}

TEST_F(ImportClash, OfAnInlineObjectCostsItsOwner) {
  EXPECT_THAT(import(L"<building><site><name>A</name></site><name>C</name></building>"),
              Says({error(notUnique, L"<building")}));
  EXPECT_EQ(dumpOf(project.raw()), before);
}

TEST_F(ImportClash, OfAnInlineObjectMayBeResolved) {
  reactor.answer({SaveResolution::Kept});
  EXPECT_THAT(import(L"<building><site><name>A</name></site><name>C</name></building>"), SaysNothing());
  EXPECT_EQ(siteOfC(), row);
}

// What the element had saved before it failed is part of the run.
TEST_F(ImportClash, LeavesTheInlineObjectsOfItsElement) {
  EXPECT_THAT(import(L"<unit><name>newton</name><label>n</label><measure><name>M</name></measure></unit>"),
              Says({error(L"An other object with the same values exists: Unit", L"<unit")}));
  EXPECT_EQ(measures(), (Names{"FORCE", "M"}));
}

// Behind a removal each element has its own transaction.
TEST_F(ImportClash, BehindARemovalTakesTheInlineObjectsOfItsElementBack) {
  EXPECT_THAT(update(L"<p><story id='" + std::to_wstring(idOf("tessel_Story", "G")) +
                     L"' remove='1'/>"
                     L"<unit><name>newton</name><label>n</label><measure><name>M</name></measure></unit></p>"),
              Says({error(L"An other object with the same values exists: Unit", L"<unit")}));
  EXPECT_EQ(measures(), Names{"FORCE"});
}

// Measures and units, about which nobody is asked.

TEST_F(ImportClash, OfMeasuresKeepsTheExistingOne) {
  EXPECT_THAT(import(L"<p><measure id='9'><name>FORCE</name><mass>5</mass><description>new</description></measure>"
                     L"<unit><name>dyne</name><label>dyn</label><measure id='9'/></unit></p>"),
              SaysNothing());
  EXPECT_EQ(measures(), Names{"FORCE"});
  EXPECT_EQ(column("tessel_Measure", "description").back(), "old");
  EXPECT_EQ(column("tessel_Measure", "mass").back(), "1");
  const auto owners = column("tessel_Unit", "measure_id");
  EXPECT_EQ(owners.at(0), owners.at(1));
  EXPECT_TRUE(reactor.clashes.empty());
}

TEST_F(ImportClash, OfLikeUnitsKeepsTheExistingOne) {
  EXPECT_THAT(import(L"<p><unit id='9'><name>Newton</name><label>N</label><measure name='FORCE'/></unit>"
                     L"<default_unit id='9'/></p>"),
              SaysNothing());
  EXPECT_EQ(units(), Names{"newton"});
  EXPECT_EQ(db->defaultUnit(L"FORCE")->name(), u"newton");
  EXPECT_TRUE(reactor.clashes.empty());
}

TEST_F(ImportClash, OfLikeUnitsGivesANamelessOneItsName) {
  project.raw().exec("UPDATE \"tessel_Unit\" SET \"name\" = NULL");
  EXPECT_THAT(import(L"<unit><name>Newton</name><label>N</label><measure name='FORCE'/></unit>"), SaysNothing());
  EXPECT_EQ(units(), Names{"Newton"});
}

TEST_F(ImportClash, OfUnlikeUnitsCostsTheElement) {
  const OdString unlike = u"An other object with the same values exists: Unit";
  EXPECT_THAT(import(L"<unit><name>newton</name><label>other</label><measure name='FORCE'/></unit>"),
              Says({error(unlike, L"<unit")}));
  EXPECT_THAT(import(L"<unit><name>other</name><label>N</label><scale>2</scale><measure name='FORCE'/></unit>"),
              Says({error(unlike, L"<unit")}));
  EXPECT_EQ(dumpOf(project.raw()), before);
  EXPECT_TRUE(reactor.clashes.empty());
}

// The same document twice.

class ImportTwice : public ImportTest {
protected:
  const std::wstring document =
    L"<p><measure id='1'><name>FORCE</name><mass>1</mass></measure>"
    L"<unit id='2'><name>newton</name><label>N</label><measure id='1'/></unit><default_unit id='2'/>"
    L"<unit id='3'><name>metre</name><label>m</label><measure name='LENGTH'/></unit><default_unit name='metre'/>"
    L"<site id='4'><name>A</name><town>T</town></site><building id='5'><site id='4'/><name>B</name></building>"
    L"<story><building id='5'/><name>G</name></story>"
    L"<story><building><site><name>A2</name></site><name>B2</name></building><name>G2</name></story></p>";
};

TEST_F(ImportTwice, ChangesNoRow) {
  EXPECT_THAT(import(document), SaysNothing());
  const auto rows = dumpOf(project.raw());
  EXPECT_THAT(import(document),
              Says({error(L"An other object with the same values exists: name", L"<site id='4'><"),
                    error(L"Could not find referenced object 'building > site' with id 4", L"<site id='4'/>"),
                    error(L"Could not find referenced object 'story > building' with id 5", L"<building id='5'/>"),
                    error(L"An other object with the same values exists: name", L"<story><building><")}));
  EXPECT_EQ(dumpOf(project.raw()), rows);
}

TEST_F(ImportTwice, OverAKeepingReactorChangesNoRowSilently) {
  EXPECT_THAT(import(document), SaysNothing());
  const auto rows = dumpOf(project.raw());
  RecordingReactor reactor(db);
  reactor.otherwise(SaveResolution::Kept);
  EXPECT_THAT(import(document), SaysNothing());
  EXPECT_EQ(dumpOf(project.raw()), rows);
}

TEST_F(ImportTwice, OverAnOverwritingReactorChangesNoValue) {
  EXPECT_THAT(import(document), SaysNothing());
  const auto rows = dumpOf(project.raw());
  RecordingReactor reactor(db);
  reactor.otherwise(SaveResolution::Overwritten);
  EXPECT_THAT(import(document), SaysNothing());
  EXPECT_EQ(dumpOf(project.raw()), rows);
}

}  // namespace
}  // namespace tessel::test
