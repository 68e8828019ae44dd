// How much a failure costs: one element, or the run.

#include <odb/exceptions.hxx>

#include <tessel/exceptions.h>
#include <tessel/transaction.h>

#include "database/files.h"
#include "import/import_test.h"
#include "support/recording_reactor.h"
#include "support/sql_trace.h"

namespace tessel::test {
namespace {

using Names = std::vector<std::string>;

struct HostError : std::runtime_error {
  HostError() : std::runtime_error("host") {}
};

std::wstring site(const std::wstring& name) { return L"<site><name>" + name + L"</name></site>"; }

class ImportFailure : public ImportTest {
protected:
  void TearDown() override { EXPECT_FALSE(Transaction::hasCurrent()); }

  /// Makes the save of a site of this name fail.
  template <typename Error>
  void failFor(const OdString& name, const Error& failure) {
    reactor.whenSaved = [this, name, failure](const RecordingReactor::Saved& saved) {
      if (saved.key.type == ObjectType::Site && db->get<Site>(saved.key.id)->name() == name) throw failure;
    };
  }

  RecordingReactor reactor{db};
};

// One element.

TEST_F(ImportFailure, OfAFieldCostsItsElement) {
  EXPECT_THAT(import(L"<p>" + site(L"A") + L"<site/><building><site id='8'/></building>" + site(L"B") + L"</p>"),
              Says({error(L"Missing 'site > name' property", L"<site/>"),
                    error(L"Could not find referenced object 'building > site' with id 8", L"<site id='8'/>")}));
  EXPECT_EQ(sites(), (Names{"A", "B"}));
}

TEST_F(ImportFailure, WithOneOfOurExceptionsCostsItsElement) {
  failFor(u"B", ObjectNotFound());
  EXPECT_THAT(import(L"<p>" + site(L"A") + site(L"B") + site(L"C") + L"</p>"),
              Says({error(L"Object not found", L"<site><name>B")}));
  // The row was written when the reactor heard of it, and it is part of the run.
  EXPECT_EQ(sites(), (Names{"A", "B", "C"}));
}

TEST_F(ImportFailure, OfTheFileCostsItsElement) {
  project.raw().exec("CREATE TRIGGER refuse BEFORE INSERT ON \"tessel_Site\" WHEN new.name = 'B' "
                     "BEGIN SELECT abs(-9223372036854775808); END");  // An overflow when it runs.
  EXPECT_THAT(import(L"<p>" + site(L"A") + site(L"B") + site(L"C") + L"</p>"),
              Says({error(L"Project database exception", L"<site><name>B")}));
  EXPECT_EQ(sites(), (Names{"A", "C"}));
}

TEST_F(ImportFailure, OfAReadOnlyFileCostsEachElement) {
  db->setReactor(nullptr);
  const auto readOnly = ProjectDb::open(OdString::fromUtf8(project.path()), true);
  const ImportRun run = importText(readOnly, L"<p>" + site(L"A") + site(L"B") + L"</p>");
  EXPECT_THAT(run, Says({error(L"Project database exception", L"<site><name>A"),
                         error(L"Project database exception", L"<site><name>B")}));
}

/// Its text is UTF-8, as all narrow texts of the persistence layer.
struct OdbFailure : odb::exception {
  const char* what() const noexcept override { return "Z\u00E4hler \U0001F3E0"; }
  OdbFailure* clone() const override { return new OdbFailure(*this); }
};

// The handler is called while the element is read, so what it throws is met by the guard of the element.
TEST_F(ImportFailure, WithAnExceptionOfThePersistenceLayerCostsItsElement) {
  int calls = 0;
  options.messageHandler = [&](ImportSeverity, const OdString&, std::int64_t) {
    if (++calls == 1) throw OdbFailure();
  };
  EXPECT_THAT(
    import(L"<p>" + site(L"A") + L"<site/>" + site(L"B") + L"</p>"),
    Says({error(L"Missing 'site > name' property", L"<site/>"), error(u"Z\u00E4hler \U0001F3E0", L"<site/>")}));
  EXPECT_EQ(sites(), (Names{"A", "B"}));
}

// The run.

TEST_F(ImportFailure, WithAnotherExceptionCostsTheRun) {
  failFor(u"B", HostError());
  EXPECT_THROW(import(L"<p>" + site(L"A") + site(L"B") + site(L"C") + L"</p>"), HostError);
  EXPECT_TRUE(sites().empty());
  EXPECT_EQ(reactor.saved.size(), 2U);
}

TEST_F(ImportFailure, WithWhatIsNoExceptionCostsTheRun) {
  failFor(u"B", 42);
  EXPECT_THROW(import(L"<p>" + site(L"A") + site(L"B") + L"</p>"), int);
  EXPECT_TRUE(sites().empty());
}

TEST_F(ImportFailure, OfMemoryCostsTheRun) {
  failFor(u"B", std::bad_alloc());
  EXPECT_THROW(import(L"<p>" + site(L"A") + site(L"B") + L"</p>"), std::bad_alloc);
  EXPECT_TRUE(sites().empty());
}

TEST_F(ImportFailure, LeavesADatabaseThatWorks) {
  failFor(u"B", HostError());
  EXPECT_THROW(import(site(L"B")), HostError);
  EXPECT_THAT(import(site(L"A")), SaysNothing());
  EXPECT_EQ(sites(), Names{"A"});
}

TEST_F(ImportFailure, OfAHandlerCostsTheRun) {
  options.messageHandler = [](ImportSeverity, const OdString&, std::int64_t) { throw HostError(); };
  EXPECT_THROW(import(L"<p>" + site(L"A") + L"<site/>" + site(L"B") + L"</p>"), HostError);
  EXPECT_TRUE(sites().empty());
}

// The message of an exception is given outside the guard.
TEST_F(ImportFailure, OfAHandlerThatHearsOfAnExceptionCostsTheRun) {
  options.messageHandler = [](ImportSeverity, const OdString&, std::int64_t) { throw ObjectNotFound(); };
  EXPECT_THROW(import(L"<p>" + site(L"A") + site(L"A") + L"</p>"), ObjectNotFound);
  EXPECT_TRUE(sites().empty());
}

TEST_F(ImportFailure, OfAnInlineReferenceInAHandlerCostsTheRun) {
  options.messageHandler = [](ImportSeverity, const OdString&, std::int64_t) { throw HostError(); };
  EXPECT_THROW(import(L"<p>" + site(L"A") + L"<story><building><site id='5'/></building></story></p>"), HostError);
  EXPECT_TRUE(sites().empty());
}

// A transaction of the host.

TEST_F(ImportFailure, LeavesATransactionOfTheHostToTheHost) {
  failFor(u"B", HostError());
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THROW(import(L"<p>" + site(L"A") + site(L"B") + L"</p>"), HostError);
  EXPECT_FALSE(transaction.finalized());
  transaction.commit();
  EXPECT_EQ(sites(), (Names{"A", "B"}));
}

TEST_F(ImportFailure, OfTheHostTakesTheRunBack) {
  {
    Transaction transaction(db, Transaction::BeginCurrent);
    EXPECT_THAT(import(site(L"A")), SaysNothing());
    EXPECT_FALSE(transaction.finalized());
    EXPECT_TRUE(sites().empty());
    EXPECT_EQ(db->count<Site>(), 1U);
  }
  EXPECT_TRUE(sites().empty());
}

TEST_F(ImportFailure, LeavesATransactionOfAnotherDatabaseAsItWas) {
  const SampleProject other;
  Transaction transaction(other.db, Transaction::BeginCurrent);
  EXPECT_THAT(import(site(L"A")), SaysNothing());
  EXPECT_EQ(sites(), Names{"A"});
  failFor(u"B", HostError());
  EXPECT_THROW(import(site(L"B")), HostError);
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_FALSE(transaction.finalized());
  transaction.rollback();
}

TEST_F(ImportFailure, OfAnElementLeavesATransactionOfTheHostOpen) {
  Transaction transaction(db, Transaction::BeginCurrent);
  EXPECT_THAT(
    import(L"<p>" + site(L"A") + site(L"A") + site(L"B") + L"</p>"),
    Says({error(L"An other object with the same values exists: name", L"<site><name>A</name></site><site><name>B")}));
  transaction.commit();
  EXPECT_EQ(sites(), (Names{"A", "B"}));
}

TEST(ImportWithoutTransaction, DoesNotBegin) {
  SqlTrace sql;
  const SampleProject project;
  const Transaction transaction(project.db, Transaction::BeginCurrent);
  sql.onEachConnection("ROLLBACK");
  EXPECT_THROW(importText(project.db, L"<p><bridge/>" + site(L"A") + L"</p>"), ForcedRollback);
  EXPECT_EQ(project.count("tessel_Site"), 0);
}

// Without their transaction the later elements would be committed one by one, behind the back of the run.
TEST(ImportWithoutTransaction, WritesNothing) {
  SqlTrace sql;
  const SampleProject project;
  ProjectDb::ImportOptions options;
  options.messageHandler = [&](ImportSeverity, const OdString& text, std::int64_t) {
    if (text == u"Missing 'site > name' property") sql.onEachConnection("ROLLBACK");
  };
  EXPECT_ANY_THROW(importText(project.db, L"<p>" + site(L"A") + L"<site/>" + site(L"B") + L"</p>", options));
  EXPECT_EQ(project.count("tessel_Site"), 0);
}

}  // namespace
}  // namespace tessel::test
