// Elements that remove a row. Whether a row is in use shows at a commit only, so a removal commits the run up to there.

#include <tessel/exceptions.h>
#include <tessel/transaction.h>

#include "import/import_test.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

using Names = std::vector<std::string>;

class RemoveElement : public ImportTest {
protected:
  void SetUp() override {
    import(L"<p><site id='1'><name>A</name></site><site><name>Z</name></site></p>");
    row = std::to_wstring(idOf("tessel_Site", "A"));
  }

  /// Removes the site A.
  std::wstring removal(const std::wstring& content = L"") const {
    return L"<site id='" + row + L"' remove='true'>" + content + L"</site>";
  }
  static std::wstring site(const std::wstring& name) { return L"<site><name>" + name + L"</name></site>"; }

  /// Makes the site one that must stay.
  void useSite() { import(L"<building><site name='A'/><name>B</name></building>"); }

  std::wstring row;
};

TEST_F(RemoveElement, RemovesTheRow) {
  EXPECT_THAT(update(removal()), SaysNothing());
  EXPECT_EQ(sites(), Names{"Z"});
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 1);
}

TEST_F(RemoveElement, IsNotRead) {
  EXPECT_THAT(update(removal(L"<unknown/><name>B</name><site/>")), SaysNothing());
  EXPECT_EQ(sites(), Names{"Z"});
}

TEST_F(RemoveElement, RemovesRowsOfEachType) {
  import(L"<p><unit><name>U</name><measure><name>M</name></measure></unit>"
         L"<story><building><site><name>C</name></site><name>B</name></building><name>G</name></story></p>");
  const auto element = [this](const std::wstring& tag, const char* table, const char* name) {
    return L"<" + tag + L" id='" + std::to_wstring(idOf(table, name)) + L"' remove='1'/>";
  };
  EXPECT_THAT(update(L"<p>" + element(L"story", "tessel_Story", "G") + element(L"building", "tessel_Building", "B") +
                     element(L"site", "tessel_Site", "C") + element(L"unit", "tessel_Unit", "U") +
                     element(L"measure", "tessel_Measure", "M") + L"</p>"),
              SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "Z"}));
  EXPECT_TRUE(buildings().empty());
  EXPECT_TRUE(column("tessel_Story", "name").empty());
  EXPECT_TRUE(units().empty());
  EXPECT_TRUE(measures().empty());
}

TEST_F(RemoveElement, NeedsATrueAttribute) {
  for (const wchar_t* no : {L"false", L"0", L"", L"remove"}) {
    EXPECT_THAT(update(L"<site id='" + row + L"' remove='" + no + L"'><name>A</name></site>"), SaysNothing());
  }
  EXPECT_EQ(sites(), (Names{"A", "Z"}));
}

// Attributes are never warned of.
TEST_F(RemoveElement, IsAnOrdinaryOneUnlessUpdatesAreWanted) {
  EXPECT_THAT(import(removal(L"<name>B</name>")), SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "Z", "B"}));
}

TEST_F(RemoveElement, IsAnOrdinaryOneWithoutAnId) {
  EXPECT_THAT(
    update(L"<p><site remove='true'><name>B</name></site><site id='0' remove='true'><name>C</name></site></p>"),
    SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "Z", "B", "C"}));
}

TEST_F(RemoveElement, MayStandInAnInlineObjectWithoutEffect) {
  EXPECT_THAT(update(L"<building><site remove='true'><name>B</name></site><name>B</name></building>"), SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "Z", "B"}));
}

TEST_F(RemoveElement, OfAnUnwantedTypeHasNoEffect) {
  const Document document(removal());
  options.updateExisting = true;
  db->importFromXml(document.root(), {ObjectType::Building}, options);
  EXPECT_EQ(sites(), (Names{"A", "Z"}));
}

TEST_F(RemoveElement, WithoutARowSaysNothing) {
  EXPECT_THAT(update(L"<p>" + site(L"B") +
                     L"<site id='77' remove='1'/><story id='77' remove='1'/>"
                     L"<unit id='77' remove='1'/><measure id='77' remove='1'/>" +
                     site(L"C") + L"</p>"),
              SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "Z", "B", "C"}));
}

TEST_F(RemoveElement, TwiceSaysNothing) {
  EXPECT_THAT(update(L"<p>" + removal() + removal() + site(L"C") + L"</p>"), SaysNothing());
  EXPECT_EQ(sites(), (Names{"Z", "C"}));
}

TEST_F(RemoveElement, OfARowOfAnotherTypeLeavesIt) {
  EXPECT_THAT(update(L"<p><building id='" + row + L"' remove='1'/><story id='" + row + L"' remove='1'/></p>"),
              SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "Z"}));
  EXPECT_EQ(project.count("tessel_SpatialStructure"), 2);
}

// A reactor is asked before it shows that there is no row.
TEST_F(RemoveElement, AsksTheReactor) {
  RecordingReactor reactor(db);
  update(L"<p>" + removal() + L"<site id='77' remove='1'/></p>");
  EXPECT_EQ(reactor.removals, (std::vector<RecordingReactor::Removal>{{db.get(), {ObjectType::Site, 1}},
                                                                      {db.get(), {ObjectType::Site, 77}}}));
}

TEST_F(RemoveElement, ThatIsRefusedSaysNothing) {
  RecordingReactor reactor(db);
  reactor.whenRemoved = [](const auto&) { return RemoveResolution::Refuse; };
  EXPECT_THAT(update(L"<p>" + removal() + site(L"B") + L"</p>"), SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "Z", "B"}));
}

// Transactions.

TEST_F(RemoveElement, CommitsTheRunUpToThere) {
  std::vector<Names> seen;
  options.messageHandler = [&](ImportSeverity, const OdString&, std::int64_t) { seen.push_back(sites()); };
  update(L"<p>" + site(L"B") + L"<bridge/>" + removal() + L"<bridge2/>" + site(L"C") + L"<bridge3/></p>");
  // Behind it there is no transaction any more that spans the run.
  EXPECT_EQ(seen, (std::vector<Names>{{"A", "Z"}, {"Z", "B"}, {"Z", "B", "C"}}));
}

TEST_F(RemoveElement, LeavesWhatIsBehindItToSaveItself) {
  EXPECT_THAT(update(L"<p><site id='5'><name>B</name></site>" + removal() +
                     L"<measure id='6'><name>M</name></measure><unit><name>U</name><measure id='6'/></unit>"
                     L"<default_unit name='U'/><building><site id='5'/><name>C</name></building></p>"),
              SaysNothing());
  EXPECT_EQ(sites(), (Names{"Z", "B"}));
  EXPECT_EQ(buildings(), Names{"C"});
  EXPECT_EQ(db->defaultUnit(L"M")->name(), u"U");
  EXPECT_FALSE(Transaction::hasCurrent());
}

// Each of the later elements has a transaction of its own, and none of them can be taken back.
TEST_F(RemoveElement, IsNotTakenBackByALaterException) {
  RecordingReactor reactor(db);
  reactor.whenSaved = [this](const RecordingReactor::Saved& saved) {
    if (db->get<Site>(saved.key.id)->name() == u"D") throw std::runtime_error("host");
  };
  EXPECT_THROW(update(L"<p>" + site(L"B") + removal() + site(L"C") + site(L"D") + site(L"E") + L"</p>"),
               std::runtime_error);
  EXPECT_EQ(sites(), (Names{"Z", "B", "C"}));
}

TEST_F(RemoveElement, ThatIsRefusedCommitsNothing) {
  RecordingReactor reactor(db);
  reactor.whenRemoved = [](const auto&) { return RemoveResolution::Refuse; };
  options.messageHandler = [](ImportSeverity severity, const OdString&, std::int64_t) {
    if (severity == ImportSeverity::Error) throw std::runtime_error("host");
  };
  EXPECT_THROW(update(L"<p>" + site(L"B") + removal() + L"<site/></p>"), std::runtime_error);
  EXPECT_EQ(sites(), (Names{"A", "Z"}));
}

TEST_F(RemoveElement, WithoutARowCommitsNothing) {
  options.messageHandler = [](ImportSeverity severity, const OdString&, std::int64_t) {
    if (severity == ImportSeverity::Error) throw std::runtime_error("host");
  };
  EXPECT_THROW(update(L"<p>" + site(L"B") + L"<site id='77' remove='1'/><site/></p>"), std::runtime_error);
  EXPECT_EQ(sites(), (Names{"A", "Z"}));
}

TEST_F(RemoveElement, FinishesATransactionOfTheHost) {
  Transaction transaction(db, Transaction::BeginCurrent);
  db->save(Site::create(L"H"));
  EXPECT_THAT(update(L"<p>" + site(L"B") + removal() + site(L"C") + L"</p>"), SaysNothing());
  EXPECT_TRUE(transaction.finalized());
  EXPECT_EQ(sites(), (Names{"Z", "H", "B", "C"}));
}

// The commit fails then, and what the run had written goes with it.
TEST_F(RemoveElement, OfARowInUseLosesTheRunUpToThere) {
  useSite();
  EXPECT_THAT(update(L"<p><site id='5'><name>B</name></site>" + removal() + site(L"C") + L"</p>"), SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "Z", "C"}));
  EXPECT_FALSE(Transaction::hasCurrent());
}

// The ids of the document still lead to the rows that are lost.
TEST_F(RemoveElement, OfARowInUseLeavesIdsWithoutRows) {
  import(L"<unit><name>U</name><measure><name>M</name></measure></unit>");
  const std::wstring measure = std::to_wstring(idOf("tessel_Measure", "M"));
  EXPECT_THAT(update(L"<p><site id='55'><name>B</name></site><measure id='" + measure +
                     L"' remove='1'/>"
                     L"<building><site id='55'/><name>C</name></building></p>"),
              Says({error(L"object not persistent", L"<building")}));
  EXPECT_EQ(sites(), (Names{"A", "Z"}));
  EXPECT_TRUE(buildings().empty());
}

TEST_F(RemoveElement, LeavesTheIdsOfItsRow) {
  EXPECT_THAT(update(L"<p><site id='" + row + L"'><name>A</name></site>" + removal() + L"<building><site id='" + row +
                     L"'/><name>C</name></building></p>"),
              Says({error(L"object not persistent", L"<building")}));
}

// Exceptions of the removal are those of any element.

TEST_F(RemoveElement, WhoseReactorThrowsOneOfOursIsAnError) {
  RecordingReactor reactor(db);
  reactor.whenRemoved = [](const auto&) -> RemoveResolution { throw ObjectInUse(); };
  EXPECT_THAT(update(L"<p>" + removal() + site(L"B") + L"</p>"),
              Says({error(L"Object is still referenced by other object", L"<site id=")}));
  EXPECT_EQ(sites(), (Names{"A", "Z", "B"}));
}

TEST_F(RemoveElement, WhoseReactorThrowsAnotherEndsTheRun) {
  RecordingReactor reactor(db);
  reactor.whenRemoved = [](const auto&) -> RemoveResolution { throw std::runtime_error("host"); };
  EXPECT_THROW(update(L"<p>" + site(L"B") + removal() + L"</p>"), std::runtime_error);
  EXPECT_EQ(sites(), (Names{"A", "Z"}));
}

TEST_F(RemoveElement, ThatTheFileRefusesIsAnError) {
  project.raw().exec("CREATE TRIGGER refuse BEFORE DELETE ON \"tessel_Site\" BEGIN SELECT no_such_function(); END");
  EXPECT_THAT(update(L"<p>" + removal() + site(L"B") + L"</p>"),
              Says({error(L"Project database exception", L"<site id=")}));
  EXPECT_EQ(sites(), (Names{"A", "Z", "B"}));
}

// Rows that refer to a row which is not there.

class RemoveBrokenElement : public RemoveElement {
protected:
  void SetUp() override {
    RemoveElement::SetUp();
    useSite();
    project.raw().exec("UPDATE \"tessel_Building\" SET site_id = 4711");
    document =
      L"<p><building id='" + std::to_wstring(idOf("tessel_Building", "B")) + L"' remove='1'/>" + site(L"C") + L"</p>";
  }

  std::wstring document;
};

TEST_F(RemoveBrokenElement, RemovesARowThatCannotBeLoaded) {
  EXPECT_THAT(update(document), SaysNothing());
  EXPECT_TRUE(buildings().empty());
  EXPECT_EQ(sites(), (Names{"A", "Z", "C"}));
}

TEST_F(RemoveBrokenElement, OfARowThatCannotBeLoadedAndIsRefusedByTheFileIsAnError) {
  project.raw().exec("CREATE TRIGGER refuse BEFORE DELETE ON \"tessel_Building\" BEGIN SELECT no_such_function(); END");
  EXPECT_THAT(update(document), Says({error(L"Project database exception", L"<building id=")}));
  EXPECT_EQ(buildings(), Names{"B"});
  EXPECT_EQ(sites(), (Names{"A", "Z", "C"}));
}

}  // namespace
}  // namespace tessel::test
