// The ids of a document: labels for references, and with `updateExisting` the ids of rows.

#include "import/import_test.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

using Names = std::vector<std::string>;

class DocumentIds : public ImportTest {
protected:
  std::string siteOf(const std::string& building) {
    return project.raw().scalarText("SELECT site.name FROM tessel_Building building JOIN tessel_Site site "
                                    "ON site.id = building.site_id WHERE building.name = '" +
                                    building + "'");
  }

  /// A building in the site of this id.
  static std::wstring building(const std::wstring& siteId, const std::wstring& name = L"B") {
    return L"<building><site id='" + siteId + L"'/><name>" + name + L"</name></building>";
  }
  static std::wstring site(const std::wstring& id, const std::wstring& fields) {
    return L"<site id='" + id + L"'>" + fields + L"</site>";
  }
  static ExpectedMessage unresolved(const std::wstring& id) {
    return error((L"Could not find referenced object 'building > site' with id " + id).c_str(),
                 L"<site id='" + id + L"'/>");
  }

  /// A row that holds all that a site has not by default.
  std::wstring rowOfSite(const std::wstring& name) {
    import(L"<site><name>" + name + L"</name><town>old</town><total_area>5</total_area></site>");
    return std::to_wstring(idOf("tessel_Site", OdString(name.c_str()).toUtf8()));
  }
};

TEST_F(DocumentIds, AreNotThoseOfRows) {
  EXPECT_THAT(import(L"<p>" + site(L"77", L"<name>A</name>") + building(L"77") + L"</p>"), SaysNothing());
  EXPECT_EQ(siteOf("B"), "A");
  EXPECT_EQ(column("tessel_Site", "id"), Names{"1"});
}

TEST_F(DocumentIds, BelongToTheirTypes) {
  EXPECT_THAT(import(L"<p>" + site(L"1", L"<name>A</name>") +
                     L"<measure id='1'><name>M</name></measure><measure id='2'><name>N</name></measure>" +
                     building(L"1") + building(L"2", L"C") + L"</p>"),
              Says({unresolved(L"2")}));
  EXPECT_EQ(siteOf("B"), "A");
}

TEST_F(DocumentIds, GoUpToThe32BitLimit) {
  EXPECT_THAT(import(L"<p>" + site(L"4294967295", L"<name>A</name>") + building(L"4294967295") + L"</p>"),
              SaysNothing());
  EXPECT_EQ(siteOf("B"), "A");
}

TEST_F(DocumentIds, GivenTwiceMeanTheLastObject) {
  EXPECT_THAT(import(L"<p>" + site(L"1", L"<name>A</name>") + building(L"1") + site(L"1", L"<name>Z</name>") +
                     building(L"1", L"C") + L"</p>"),
              SaysNothing());
  EXPECT_EQ(siteOf("B"), "A");
  EXPECT_EQ(siteOf("C"), "Z");
}

TEST_F(DocumentIds, OfFaultyObjectsLeadNowhere) {
  EXPECT_THAT(import(L"<p>" + site(L"1", L"") + building(L"1") + L"</p>"),
              Says({error(L"Missing 'site > name' property", L"<site id='1'></site>"), unresolved(L"1")}));
}

TEST_F(DocumentIds, OfObjectsThatFailToSaveLeadNowhere) {
  EXPECT_THAT(
    import(L"<p><site><name>A</name></site>" + site(L"1", L"<name>A</name>") + building(L"1") + L"</p>"),
    Says({error(L"An other object with the same values exists: name", L"<site id='1'><name>A"), unresolved(L"1")}));
}

TEST_F(DocumentIds, EndWithTheRun) {
  import(site(L"5", L"<name>A</name>"));
  EXPECT_THAT(import(building(L"5")), Says({unresolved(L"5")}));
}

// Objects without an id share the label 0, which is that of the last one.
TEST_F(DocumentIds, OfZeroMeanTheLastObjectWithoutOne) {
  EXPECT_THAT(
    import(L"<p>" + building(L"0") + L"<site><name>A</name></site>" + building(L"0", L"C") +
           site(L"0", L"<name>Z</name>") + building(L"none", L"D") + L"</p>"),
    Says({error(L"Could not find referenced object 'building > site' with id 0", L"<site id='0'/><name>B</name>")}));
  EXPECT_EQ(siteOf("C"), "A");
  EXPECT_EQ(siteOf("D"), "Z");
}

TEST_F(DocumentIds, OfZeroAlsoMeanInlineObjects) {
  EXPECT_THAT(
    import(L"<p><building><site><name>A</name></site><name>B</name></building>" + building(L"0", L"C") + L"</p>"),
    SaysNothing());
  EXPECT_EQ(siteOf("C"), "A");
}

TEST_F(DocumentIds, OfInlineObjectsDoNotExist) {
  EXPECT_THAT(import(L"<p><story><building><site><name>A</name></site><name>B</name></building><name>G</name></story>" +
                     building(L"1", L"C") + L"</p>"),
              Says({unresolved(L"1")}));
}

TEST_F(DocumentIds, OfMergedObjectsMeanTheExistingRow) {
  EXPECT_THAT(import(L"<p><measure id='9'><name>LENGTH</name></measure>"
                     L"<unit><name>U</name><measure id='9'/></unit></p>"),
              SaysNothing());
  EXPECT_EQ(db->get<Unit>(NameKey(u"U"))->measure()->name(), u"LENGTH");
}

// Where "id" is that of a row.

TEST_F(DocumentIds, OfRowsAreLabelsUnlessUpdatesAreWanted) {
  const std::wstring row = rowOfSite(L"A");
  EXPECT_THAT(import(site(row, L"<name>B</name>")), SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "B"}));
}

TEST_F(DocumentIds, OfRowsUpdateThem) {
  const std::wstring row = rowOfSite(L"A");
  rowOfSite(L"B");
  EXPECT_THAT(update(L"<p>" + site(row, L"<name>C</name><country>N</country>") + L"</p>"), SaysNothing());
  EXPECT_EQ(sites(), (Names{"C", "B"}));
  EXPECT_EQ(column("tessel_Site", "town"), (Names{"", "old"}));
  EXPECT_EQ(column("tessel_Site", "total_area"), (Names{"0.0", "5.0"}));
  EXPECT_EQ(column("tessel_Site", "country"), (Names{"N", ""}));
}

TEST_F(DocumentIds, OfUpdatedRowsCanBeReferredTo) {
  const std::wstring row = rowOfSite(L"A");
  EXPECT_THAT(update(L"<p>" + site(row, L"<name>A</name>") + building(row) + L"</p>"), SaysNothing());
  EXPECT_EQ(siteOf("B"), "A");
}

TEST_F(DocumentIds, OfRowsThatTheDocumentDoesNotNameCannotBeReferredTo) {
  const std::wstring row = rowOfSite(L"A");
  EXPECT_THAT(update(building(row)), Says({unresolved(row)}));
}

TEST_F(DocumentIds, OfRowsThatFailToBeReadCannotBeReferredTo) {
  const std::wstring row = rowOfSite(L"A");
  EXPECT_THAT(update(L"<p>" + site(row, L"<town>new</town>") + building(row) + L"</p>"),
              Says({error(L"Missing 'site > name' property", L"<site id='" + row + L"'><town>"), unresolved(row)}));
  EXPECT_EQ(column("tessel_Site", "town"), Names{"old"});
}

TEST_F(DocumentIds, OfNoRowAreLabelsEvenForUpdates) {
  EXPECT_THAT(update(L"<p>" + site(L"77", L"<name>A</name>") + building(L"77") + L"</p>"), SaysNothing());
  EXPECT_EQ(siteOf("B"), "A");
  EXPECT_EQ(column("tessel_Site", "id"), Names{"1"});
}

// All spatial objects share one series of ids.
TEST_F(DocumentIds, OfRowsOfAnotherTypeAreLabels) {
  const std::wstring row = rowOfSite(L"A");
  EXPECT_THAT(update(L"<building id='" + row + L"'><site name='A'/><name>B</name></building>"), SaysNothing());
  EXPECT_EQ(sites(), Names{"A"});
  EXPECT_EQ(siteOf("B"), "A");
}

TEST_F(DocumentIds, OfZeroUpdateNothing) {
  EXPECT_THAT(update(L"<p>" + site(L"0", L"<name>A</name>") + site(L"x", L"<name>B</name>") + L"</p>"), SaysNothing());
  EXPECT_EQ(sites(), (Names{"A", "B"}));
}

// The second element finds what the first one has written.
TEST_F(DocumentIds, OfRowsMayUpdateThemTwice) {
  const std::wstring row = rowOfSite(L"A");
  EXPECT_THAT(
    update(L"<p>" + site(row, L"<name>B</name><town>1</town>") + site(row, L"<name>C</name><town>2</town>") + L"</p>"),
    SaysNothing());
  EXPECT_EQ(sites(), Names{"C"});
  EXPECT_EQ(column("tessel_Site", "town"), Names{"2"});
}

TEST_F(DocumentIds, OfRowsUpdateThemEvenWithoutAChange) {
  const std::wstring row = rowOfSite(L"A");
  RecordingReactor reactor(db);
  update(site(row, L"<name>A</name><town>old</town><total_area>5</total_area>"));
  EXPECT_EQ(reactor.saved, (std::vector<RecordingReactor::Saved>{
                             {db.get(), {ObjectType::Site, idOf("tessel_Site", "A")}, SaveResolution::Overwritten}}));
}

// That there is such a row keeps it from being taken for a label, of an object that would then be new.
TEST_F(DocumentIds, OfRowsThatCannotBeLoadedAreErrors) {
  import(L"<building><site><name>A</name></site><name>B</name></building>");
  const std::wstring row = std::to_wstring(idOf("tessel_Building", "B"));
  project.raw().exec("UPDATE \"tessel_Building\" SET site_id = 4711");
  EXPECT_THAT(update(L"<p><building id='" + row + L"'><site name='A'/><name>C</name></building>" +
                     site(L"77", L"<name>Z</name>") + L"<story><building id='" + row +
                     L"'/><name>G</name></story></p>"),
              Says({error(L"object not persistent", L"<building id='" + row + L"'><site"),
                    error(OdString((L"Could not find referenced object 'story > building' with id " + row).c_str()),
                          L"<building id='" + row + L"'/>")}));
  EXPECT_EQ(buildings(), Names{"B"});
  EXPECT_EQ(column("tessel_Building", "site_id"), Names{"4711"});
  EXPECT_EQ(sites(), (Names{"A", "Z"}));
}

// A row that an update would give the name of another one.
TEST_F(DocumentIds, OfRowsWhoseNewNameIsTakenFail) {
  const std::wstring row = rowOfSite(L"A");
  rowOfSite(L"B");
  EXPECT_THAT(update(L"<p>" + site(row, L"<name>B</name>") + building(row) + L"</p>"),
              Says({error(L"An other object with the same values exists: name", L"<site id='" + row + L"'><name>"),
                    unresolved(row)}));
  EXPECT_EQ(sites(), (Names{"A", "B"}));
}

TEST_F(DocumentIds, OfRowsMayEndAtTheRowThatHasTheName) {
  const std::wstring row = rowOfSite(L"A");
  rowOfSite(L"B");
  RecordingReactor reactor(db);
  reactor.otherwise(SaveResolution::Kept);
  EXPECT_THAT(update(L"<p>" + site(row, L"<name>B</name>") + building(row, L"C") + L"</p>"), SaysNothing());
  EXPECT_EQ(siteOf("C"), "B");
}

TEST_F(DocumentIds, OfRowsUpdateEachType) {
  import(L"<p><measure><name>M</name><mass>1</mass></measure>"
         L"<unit><name>U</name><label>u</label><measure name='M'/></unit>"
         L"<story><building><site><name>A</name></site><name>B</name></building><name>G</name></story></p>");
  const auto id = [this](const char* table, const char* name) { return std::to_wstring(idOf(table, name)); };
  EXPECT_THAT(update(L"<p><measure id='" + id("tessel_Measure", "M") + L"'><name>M2</name></measure>" + L"<unit id='" +
                     id("tessel_Unit", "U") + L"'><name>U2</name><measure name='LENGTH'/></unit>" +
                     site(id("tessel_Site", "A"), L"<name>A2</name>") + L"<building id='" + id("tessel_Building", "B") +
                     L"'><site name='A2'/><name>B2</name></building>" + L"<story id='" + id("tessel_Story", "G") +
                     L"'><building id='" + id("tessel_Building", "B") + L"'/><name>G2</name></story></p>"),
              SaysNothing());
  EXPECT_EQ(measures(), Names{"M2"});
  EXPECT_EQ(column("tessel_Measure", "mass").back(), "0");
  EXPECT_EQ(units(), Names{"U2"});
  EXPECT_EQ(column("tessel_Unit", "measure_id"), Names{std::to_string(idOf("tessel_Measure", "LENGTH"))});
  EXPECT_EQ(sites(), Names{"A2"});
  EXPECT_EQ(buildings(), Names{"B2"});
  EXPECT_EQ(column("tessel_Story", "name"), Names{"G2"});
}

TEST_F(DocumentIds, OfRowsAreNotReadForUnwantedTypes) {
  const Document document(site(rowOfSite(L"A"), L"<name>B</name>"));
  options.updateExisting = true;
  db->importFromXml(document.root(), {ObjectType::Building}, options);
  EXPECT_EQ(sites(), Names{"A"});
}

}  // namespace
}  // namespace tessel::test
