// The tree is written to while it is read. What the run leaves in it.

#include "import/import_test.h"
#include "support/recording_reactor.h"

namespace tessel::test {
namespace {

using Names = std::vector<std::string>;

class ImportMarks : public ImportTest {
protected:
  static bool isMarked(const pugi::xml_node& node) { return !node.attribute(L"_tessel_import_mark").empty(); }

  void import(Document& document) {
    options.messageHandler = messages.handler();
    db->importFromXml(document.root(), options);
  }

  ImportMessages messages;
};

TEST_F(ImportMarks, AreGoneAfterTheRun) {
  const std::wstring story = L"<story><building x='1'><site><name>A</name><town>T</town><unknown/></site>"
                             L"<name>B</name></building><name>G</name><unknown><name>x</name></unknown></story>";
  Document document(L"<p><measure id='1'><name>M</name></measure><unit><name>U</name><measure id='1'/></unit>"
                    L"<unit><name>V</name><measure id='8'><name/></measure></unit><site><town/></site>"
                    L"<site><name>A</name></site>" +
                    story +
                    L"<meta><site/></meta><bridge><site/></bridge>"
                    L"<site id='77' remove='1'><name/></site><building><site nil='1'/></building></p>");
  const std::string before = document.written();
  options.updateExisting = true;
  import(document);
  EXPECT_EQ(messages.errors(), 4U);
  EXPECT_EQ(messages.warnings(), 3U);
  EXPECT_EQ(document.written(), before);
}

TEST_F(ImportMarks, AreOnWhatHasBeenReadMeanwhile) {
  Document document(L"<p><site><name>A</name><unknown/><town>T</town></site></p>");
  std::vector<bool> marked;
  options.messageHandler = [&](ImportSeverity, const OdString&, std::int64_t) {
    for (const pugi::xml_node& child : document.root().first_child().children()) marked.push_back(isMarked(child));
  };
  db->importFromXml(document.root(), options);
  EXPECT_EQ(marked, (std::vector<bool>{true, false, true}));
}

TEST_F(ImportMarks, AreNotOnFieldsBehindAFault) {
  Document document(L"<building><name>B</name><site nil='1'/><town/></building>");
  std::vector<bool> marked;
  options.messageHandler = [&](ImportSeverity, const OdString&, std::int64_t) {
    for (const pugi::xml_node& child : document.root().children()) marked.push_back(isMarked(child));
  };
  db->importFromXml(document.root(), options);
  EXPECT_EQ(marked, (std::vector<bool>{false, true, false}));
}

// Nothing cleans up behind this tag.
TEST_F(ImportMarks, StayOnDefaultUnits) {
  Document document(L"<p><default_unit name='nobody'/><default_unit nil='1'/><default_unit/>"
                    L"<default_unit><name>U</name><measure name='LENGTH'/><unknown/></default_unit></p>");
  import(document);
  const std::string mark = " _tessel_import_mark=\"1\"";
  EXPECT_EQ(document.written(), "<p><default_unit name=\"nobody\"" + mark + "/><default_unit nil=\"1\"" + mark +
                                  "/><default_unit" + mark + "/><default_unit" + mark + "><name" + mark +
                                  ">U</name><measure name=\"LENGTH\"" + mark + "/><unknown/></default_unit></p>");
}

TEST_F(ImportMarks, ThatStayedHaveNoEffectOnTheNextRun) {
  Document document(L"<p><default_unit name='nobody'/><default_unit/>"
                    L"<default_unit><name>U</name><measure name='LENGTH'/></default_unit></p>");
  import(document);
  const auto first = messages.all();
  const std::string written = document.written();
  import(document);
  ASSERT_EQ(first.size(), 1U);
  EXPECT_EQ(messages.all(), (std::vector<ImportMessage>{first[0], first[0]}));
  EXPECT_EQ(document.written(), written);
}

TEST_F(ImportMarks, StayOnTheElementFromWhichAnExceptionEscaped) {
  Document document(L"<p><site><name>A</name></site>"
                    L"<unit><measure name='nobody'/><name>U</name><label/><other/></unit></p>");
  options.messageHandler = [](ImportSeverity, const OdString&, std::int64_t) { throw std::runtime_error("host"); };
  EXPECT_THROW(db->importFromXml(document.root(), options), std::runtime_error);
  const std::string mark = " _tessel_import_mark=\"1\"";
  EXPECT_EQ(document.written(), "<p><site><name>A</name></site><unit><measure name=\"nobody\"" + mark + "/><name" +
                                  mark + ">U</name><label" + mark + "/><other/></unit></p>");
}

// They are taken away before the object is saved.
TEST_F(ImportMarks, AreGoneWhenTheSaveFails) {
  Document document(L"<p><site><name>A</name></site></p>");
  const std::string before = document.written();
  RecordingReactor reactor(db);
  reactor.whenSaved = [](const auto&) { throw std::runtime_error("host"); };
  EXPECT_THROW(import(document), std::runtime_error);
  EXPECT_EQ(document.written(), before);
}

TEST_F(ImportMarks, AreGoneWhenALookUpFails) {
  Document document(L"<p><site id='1'><name>A</name></site>"
                    L"<building><name>B</name><site id='1'/></building></p>");
  const std::string before = document.written();
  options.messageHandler = nullptr;
  RecordingReactor reactor(db);
  reactor.whenSaved = [this](const RecordingReactor::Saved& saved) {
    // The row goes behind the back of the run.
    if (saved.key.type == ObjectType::Site) db->remove<Site>(saved.key.id);
  };
  import(document);
  EXPECT_EQ(textsOf(messages.all()), std::vector<OdString>{u"object not persistent"});
  EXPECT_EQ(document.written(), before);
}

// A document that brings marks along.

TEST_F(ImportMarks, OfTheDocumentHideUnknownFields) {
  Document document(L"<site><name>A</name><a _tessel_import_mark='1'/><b _tessel_import_mark='0'/>"
                    L"<c _tessel_import_mark=''/><d _tessel_import_mark='2'/></site>");
  import(document);
  EXPECT_EQ(textsOf(messages.all()),
            (std::vector<OdString>{u"Unknown property 'b' for 'site'", u"Unknown property 'c' for 'site'"}));
  EXPECT_EQ(document.written(), "<site><name>A</name><a/><b/><c/><d/></site>");
}

TEST_F(ImportMarks, OfTheDocumentAreOverwritten) {
  Document document(L"<site _tessel_import_mark='7'><name _tessel_import_mark='0'>A</name></site>");
  import(document);
  EXPECT_TRUE(messages.all().empty());
  EXPECT_EQ(document.written(), "<site><name>A</name></site>");
}

TEST_F(ImportMarks, OfTheDocumentDoNotMakeAnElementAnUnknownObject) {
  Document document(L"<p><bridge _tessel_import_mark='1'/></p>");
  import(document);
  EXPECT_EQ(textsOf(messages.all()), std::vector<OdString>{u"Unknown object type 'bridge'"});
}

}  // namespace
}  // namespace tessel::test
