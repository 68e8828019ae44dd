// The host's handler: what it may do, and what happens when there is none.

#include <tessel/transaction.h>

#include "import/import_test.h"

namespace tessel::test {
namespace {

using Names = std::vector<std::string>;
using ::testing::ElementsAre;

static_assert(sizeof(ImportSeverity) == 4);
static_assert(static_cast<int>(ImportSeverity::Warning) == 2);
static_assert(static_cast<int>(ImportSeverity::Error) == 3);

class MessageHandler : public ImportTest {
protected:
  void import(const std::wstring& text) {
    const Document document(text);
    db->importFromXml(document.root(), options);
  }

  const std::wstring site = L"<site><name>A</name></site>";
  const std::wstring faulty = L"<site/>";
};

TEST_F(MessageHandler, IsCalledWithinTheRun) {
  std::vector<OdString> heard;
  options.messageHandler = [&](ImportSeverity, const OdString& text, std::int64_t) {
    heard.push_back(text);
    EXPECT_TRUE(Transaction::hasCurrent());
    EXPECT_EQ(db->count<Site>(), heard.size());  // The run sees its own rows,
    EXPECT_TRUE(sites().empty());                // nobody else does.
  };
  import(L"<p>" + site + L"<bridge/><site><name>B</name></site>" + faulty + L"</p>");
  EXPECT_THAT(heard, ElementsAre(u"Unknown object type 'bridge'", u"Missing 'site > name' property"));
}

TEST_F(MessageHandler, MayUseTheDatabase) {
  options.messageHandler = [&](ImportSeverity, const OdString&, std::int64_t) {
    EXPECT_TRUE(db->get<Site>(NameKey(u"A")));
    EXPECT_FALSE(db->get<Measure>(NameKey(u"nobody")));
    std::vector<TsSmartPtr<Site>> all;
    db->get(all);
    db->save(Site::create(OdString::format(L"of the host %d", static_cast<int>(all.size()))));
  };
  import(L"<p>" + site + L"<unit><name>U</name><measure name='nobody'/></unit><bridge/><default_unit name='nobody'/>" +
         faulty + L"</p>");
  EXPECT_THAT(sites(), ElementsAre("A", "of the host 1", "of the host 2", "of the host 3", "of the host 4"));
}

TEST_F(MessageHandler, MayImportAnotherDocument) {
  options.messageHandler = [&](ImportSeverity, const OdString&, std::int64_t) {
    EXPECT_THAT(importText(db, L"<site id='5'><name>inner</name></site>"), SaysNothing());
  };
  import(L"<p><site id='5'><name>A</name></site><bridge/><building><site id='5'/><name>B</name></building></p>");
  EXPECT_THAT(sites(), ElementsAre("A", "inner"));
  EXPECT_EQ(db->get<Building>(NameObjectKey<Site>(u"B", idOf("tessel_Site", "A")))->name(), u"B");
}

// What happens to the options during the run has no effect on it.
TEST_F(MessageHandler, IsCopiedAtTheStart) {
  int heard = 0;
  options.messageHandler = [&](ImportSeverity, const OdString&, std::int64_t) {
    ++heard;
    options.messageHandler = nullptr;
    options.updateExisting = true;
  };
  import(L"<p>" + site + L"<bridge/><bridge/><site id='1' remove='1'><name>B</name></site></p>");
  EXPECT_EQ(heard, 2);
  EXPECT_THAT(sites(), ElementsAre("A", "B"));
}

TEST_F(MessageHandler, MayBeMissingWhenThereAreFaultsOnly) {
  import(L"<p>" + site + faulty + site +
         L"<building><site nil='1'/></building><unit><name>U</name><measure/></unit>"
         L"<unit><name>U</name><measure name='nobody'/></unit><default_unit id='7'/><site><name>B</name></site></p>");
  EXPECT_THAT(sites(), ElementsAre("A", "B"));
}

// A warning comes from a destructor, which can neither do without a handler nor let an exception pass.

using MessageHandlerDeathTest = MessageHandler;

TEST_F(MessageHandlerDeathTest, MissingAtAnUnknownObjectEndsTheProcess) {
  EXPECT_DEATH(import(L"<p><bridge/></p>"), "bad_function_call");
}

TEST_F(MessageHandlerDeathTest, MissingAtAnUnknownPropertyEndsTheProcess) {
  EXPECT_DEATH(import(L"<site><name>A</name><unknown/></site>"), "bad_function_call");
}

TEST_F(MessageHandlerDeathTest, ThrowingAtAWarningEndsTheProcess) {
  options.messageHandler = [](ImportSeverity, const OdString&, std::int64_t) {
    throw std::runtime_error("thrown by host");
  };
  EXPECT_DEATH(import(L"<p><bridge/></p>"), "thrown by host");
  EXPECT_DEATH(import(L"<site><name>A</name><unknown/></site>"), "thrown by host");
}

// Progress.

class ImportProgress : public ImportTest {
protected:
  using Steps = std::vector<std::pair<std::size_t, std::size_t>>;

  Steps stepsOf(const std::wstring& text) {
    Steps steps;
    options.progress = [&](std::size_t done, std::size_t total) { steps.emplace_back(done, total); };
    const Document document(text);
    ImportMessages ignored;
    options.messageHandler = ignored.handler();
    db->importFromXml(document.root(), options);
    return steps;
  }
};

TEST_F(ImportProgress, IsToldBeforeEachChildAndAtTheEnd) {
  EXPECT_EQ(stepsOf(L"<p><site><name>A</name></site>text<meta/><bridge/><site/></p>"),
            (Steps{{0, 5}, {1, 5}, {2, 5}, {3, 5}, {4, 5}, {5, 5}}));
  EXPECT_EQ(stepsOf(L"<p/>"), (Steps{{0, 0}}));
}

TEST_F(ImportProgress, IsNotToldOfASingleObject) {
  EXPECT_EQ(stepsOf(L"<site><name>A</name></site>"), Steps());
  EXPECT_EQ(stepsOf(L"<meta><site/></meta>"), Steps());
}

TEST_F(ImportProgress, MayEndTheRun) {
  const Document document(L"<p><site><name>A</name></site><site><name>B</name></site></p>");
  options.progress = [](std::size_t done, std::size_t) {
    if (done == 1) throw std::runtime_error("cancelled");
  };
  EXPECT_THROW(db->importFromXml(document.root(), options), std::runtime_error);
  EXPECT_TRUE(sites().empty());
}

// The collection that the library offers.

TEST(ImportMessagesCollection, KeepsAllInTheirOrder) {
  ImportMessages messages;
  const auto handler = messages.handler();
  handler(ImportSeverity::Warning, u"a", 1);
  handler(ImportSeverity::Error, u"b", -1);
  handler(ImportSeverity::Warning, u"a", 1);
  EXPECT_EQ(messages.all(), (std::vector<ImportMessage>{{ImportSeverity::Warning, u"a", 1},
                                                        {ImportSeverity::Error, u"b", -1},
                                                        {ImportSeverity::Warning, u"a", 1}}));
  EXPECT_EQ(messages.warnings(), 2U);
  EXPECT_EQ(messages.errors(), 1U);
}

TEST(ImportMessagesCollection, MayServeSeveralRuns) {
  ImportMessages messages;
  EXPECT_EQ(messages.errors() + messages.warnings(), 0U);
  messages.handler()(ImportSeverity::Error, u"a", 0);
  messages.handler()(ImportSeverity::Error, u"b", 0);
  EXPECT_EQ(messages.errors(), 2U);
}

}  // namespace
}  // namespace tessel::test
