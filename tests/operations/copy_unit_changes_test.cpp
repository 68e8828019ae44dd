// Reactors that change units while objects are copied: what comes after is converted with what the files say then.

#include <gmock/gmock.h>

#include <optional>

#include "operations/copying.h"
#include "support/message_log.h"

namespace tessel::test {
namespace {

using ObjectInfo = ProjectDb::Reactor::ObjectInfo;

constexpr double value = 3.5;

/// Two sites are copied one after the other. Something happens at the first, and the second shows the effect.
class CopyUnitChanges : public Copying {
protected:
  CopyUnitChanges() {
    other->save(Site::create(L"A"));
    addForeign({L"B"});
  }

  /// The number of the second site in the destination; none if it has stayed behind.
  std::optional<double> copied() {
    db->copyAll<Site>(other);
    return inDestination();
  }

  std::optional<double> inDestination() {
    const auto site = db->get<Site>(NameKey(L"B"));
    return site ? std::optional<double>(site->ref_elevation()) : std::nullopt;
  }

  /// A document that changes rows is the only way to another scale.
  static void update(const std::shared_ptr<ProjectDb>& target, const std::wstring& document) {
    ProjectDb::ImportOptions options;
    options.updateExisting = true;
    EXPECT_THAT(importText(target, L"<project>" + document + L"</project>", options), SaysNothing());
  }

  static void rescale(const std::shared_ptr<ProjectDb>& target, double scale) {
    const auto unit = target->columnUnit(&Site::ref_elevation);
    update(target, L"<unit id='" + std::to_wstring(unit->id()) + L"'><name>renamed</name><label>" +
                     unit->label().toWide() + L"</label><scale>" + std::to_wstring(scale) +
                     L"</scale><measure name='LENGTH'/></unit>");
  }

  /// Changes the source in a transaction beside that of the copy.
  void rescaleSourceInItsOwn(void (Transaction::*end)()) {
    Transaction& copying = Transaction::current();
    Transaction::clearCurrent();
    Transaction own(other, Transaction::BeginCurrent);
    rescale(other, 0.3048);
    (own.*end)();
    copying.makeCurrent();
  }

  /// Sites of the source that have the number.
  void addForeign(const std::vector<OdString>& names) {
    for (const OdString& name : names) {
      const auto site = Site::create(name);
      site->set_ref_elevation(value);
      other->save(site);
    }
  }

  /// The destination keeps millimetres from now on, the source inches.
  void fixUnits() {
    useUnit(other, L"LENGTH", L"in", 0.0254);
    useUnit(db, L"LENGTH", L"mm", 0.001);
  }
};

enum class Moment { saved, asked };

class CopyUnitChangesAt : public CopyUnitChanges, public ::testing::WithParamInterface<Moment> {
protected:
  /// Calls back once, when the first site is saved or asked for.
  void atFirst(const std::function<void()>& change) {
    if (GetParam() == Moment::saved) {
      reactor.whenSaved = [change, first = true](const Saved&) mutable {
        // Changes are saved as well.
        if (std::exchange(first, false)) change();
      };
    } else {
      db->save(Site::create(L"A"));
      reactor.answer([change](ObjectInfo&) {
        change();
        return SaveResolution::Kept;
      });
    }
  }
};

INSTANTIATE_TEST_SUITE_P(From, CopyUnitChangesAt, ::testing::Values(Moment::saved, Moment::asked),
                         [](const auto& at) { return at.param == Moment::saved ? "OnSaved" : "OnNameNotUnique"; });

TEST_P(CopyUnitChangesAt, WithoutAChangeTheNumberStaysAsItIs) {
  atFirst([] {});
  EXPECT_EQ(copied(), value);
}

TEST_P(CopyUnitChangesAt, AFirstDefaultUnitOfTheDestinationLeavesTheNextBehind) {
  atFirst([this] { useUnit(db, L"LENGTH", L"m", 1); });
  EXPECT_EQ(copied(), std::nullopt);
}

TEST_P(CopyUnitChangesAt, AFirstDefaultUnitOfTheSourceLeavesTheNextBehind) {
  atFirst([this] { useUnit(other, L"LENGTH", L"m", 1); });
  EXPECT_EQ(copied(), std::nullopt);
}

TEST_P(CopyUnitChangesAt, FirstDefaultUnitsOfBothConvertTheNext) {
  atFirst([this] { fixUnits(); });
  EXPECT_EQ(copied(), value * 0.0254 / 0.001);
}

TEST_P(CopyUnitChangesAt, ALaterDefaultUnitChangesNothing) {
  fixUnits();
  atFirst([this] {
    useUnit(db, L"LENGTH", L"km", 1000);
    useUnit(other, L"LENGTH", L"km", 1000);
  });
  EXPECT_EQ(copied(), value * 0.0254 / 0.001);
}

TEST_P(CopyUnitChangesAt, AnotherScaleInTheDestinationIsSeen) {
  fixUnits();
  atFirst([this] { rescale(db, 0.01); });
  EXPECT_EQ(copied(), value * 0.0254 / 0.01);
}

TEST_P(CopyUnitChangesAt, AnotherScaleInTheSourceIsSeen) {
  fixUnits();
  atFirst([this] { rescale(other, 0.3048); });
  EXPECT_EQ(copied(), value * 0.3048 / 0.001);
}

TEST_P(CopyUnitChangesAt, AnotherScaleInTheSourceByAnotherHandleIsSeen) {
  fixUnits();
  const auto handle = ProjectDb::open(odPath(otherProject.path()), false);
  atFirst([&handle] { rescale(handle, 0.3048); });
  EXPECT_EQ(copied(), value * 0.3048 / 0.001);
}

TEST_P(CopyUnitChangesAt, OtherDimensionsOfTheMeasureLeaveTheNextBehind) {
  fixUnits();
  atFirst([this] {
    update(db, L"<measure id='" + std::to_wstring(db->get<Measure>(NameKey(L"LENGTH"))->id()) +
                 L"'><name>LENGTH</name><length>7</length></measure>");
  });
  EXPECT_EQ(copied(), std::nullopt);
}

// Nothing is written then but the units of the columns.
TEST_P(CopyUnitChangesAt, AFirstDefaultUnitThatTheFileHasAlreadyIsSeen) {
  const auto metre = db->save(unitOf(db, L"LENGTH", L"m", 1));
  atFirst([&] { db->setDefaultUnit(metre); });
  EXPECT_EQ(copied(), std::nullopt);
}

TEST_P(CopyUnitChangesAt, ColumnUnitsCopiedFromAThirdFileAreSeen) {
  SampleProject third;
  useUnit(third.db, L"LENGTH", L"m", 1);
  db->save(unitOf(db, L"LENGTH", L"m", 1));
  atFirst([&] { db->copyMeta(third.db); });
  EXPECT_EQ(copied(), std::nullopt);
}

TEST_P(CopyUnitChangesAt, AChangeOfTheSourceThatIsCommittedInATransactionOfItsOwnIsSeen) {
  fixUnits();
  atFirst([this] { rescaleSourceInItsOwn(&Transaction::commit); });
  EXPECT_EQ(copied(), value * 0.3048 / 0.001);
}

TEST_P(CopyUnitChangesAt, AChangeOfTheSourceThatIsRolledBackInATransactionOfItsOwnIsNotSeen) {
  fixUnits();
  atFirst([this] { rescaleSourceInItsOwn(&Transaction::rollback); });
  EXPECT_EQ(copied(), value * 0.0254 / 0.001);
}

// Between the change and its end, objects are copied that must not see it, and one that must not go on doing so.
TEST_F(CopyUnitChanges, AChangeOfTheSourceIsSeenFromItsCommitOn) {
  addForeign({L"C", L"D"});
  fixUnits();
  std::optional<Transaction> own;
  int visits = 0;
  reactor.whenSaved = [&](const Saved&) {
    ++visits;
    Transaction& copying = Transaction::current();
    Transaction::clearCurrent();
    if (visits == 1) {
      own.emplace(other, Transaction::BeginCurrent);
      rescale(other, 0.3048);
    }
    if (visits == 3) own->commit();
    copying.makeCurrent();
  };
  db->copyAll<Site>(other);
  EXPECT_EQ(db->get<Site>(NameKey(L"B"))->ref_elevation(), value * 0.0254 / 0.001);
  EXPECT_EQ(db->get<Site>(NameKey(L"C"))->ref_elevation(), value * 0.0254 / 0.001);
  EXPECT_EQ(db->get<Site>(NameKey(L"D"))->ref_elevation(), value * 0.3048 / 0.001);
}

// The transaction of the destination itself: the third site is converted with a unit that the fourth must not see.
TEST_F(CopyUnitChanges, AChangeThatIsRolledBackWithATransactionOfTheHostIsForgotten) {
  addForeign({L"C", L"D"});
  fixUnits();
  Transaction transaction(db, Transaction::BeginCurrent);
  std::vector<double> seen;
  const auto keepNumber = [&](const Saved& saved) {
    if (saved.key.type == ObjectType::Site) seen.push_back(db->get<Site>(saved.key.id)->ref_elevation());
  };
  reactor.whenSaved = [&](const Saved& saved) {
    keepNumber(saved);
    if (saved.key.type != ObjectType::Site) return;
    if (seen.size() == 2) rescale(db, 0.01);
    if (seen.size() == 3) {
      transaction.rollback();
      transaction.reset(true);
    }
  };
  db->copyAll<Site>(other);
  EXPECT_THAT(seen, ::testing::ElementsAre(0, value * 0.0254 / 0.001, value * 0.0254 / 0.01, value * 0.0254 / 0.001));
}

// What a reactor does when it is asked is taken back if the next attempt fails as well.
TEST_F(CopyUnitChanges, AChangeThatTheNextAttemptTakesBackIsForgotten) {
  fixUnits();
  db->save(Site::create(L"A"));
  reactor.answer([this](ObjectInfo&) {
    rescale(db, 0.01);
    return SaveResolution::Created;
  });
  reactor.otherwise(SaveResolution::Kept);
  EXPECT_EQ(copied(), value * 0.0254 / 0.001);
  EXPECT_EQ(db->columnUnit(&Site::ref_elevation)->scale(), 0.001);
}

TEST_F(CopyUnitChanges, AChangeBeforeTheRenamedAttemptStays) {
  fixUnits();
  db->save(Site::create(L"A"));
  reactor.answer([this](ObjectInfo& info) {
    rescale(db, 0.01);
    EXPECT_TRUE(info.setName(L"A 2"));
    return SaveResolution::Renamed;
  });
  EXPECT_EQ(copied(), value * 0.0254 / 0.01);
}

// An object is converted before what it refers to is saved.
TEST_F(CopyUnitChanges, ObjectsOnTheirWayKeepWhatTheyWereConvertedTo) {
  foreignStory(L"First", value);
  foreignStory(L"Second", value);
  fixUnits();
  reactor.whenSaved = [this](const Saved& saved) {
    if (saved.key.type == ObjectType::Site) rescale(db, 0.01);
  };
  db->copyAll<Story>(other);
  std::vector<TsSmartPtr<Story>> stories;
  db->get(stories);
  ASSERT_EQ(stories.size(), 2U);
  EXPECT_EQ(stories[0]->elevation(), value * 0.0254 / 0.001);
  EXPECT_EQ(stories[1]->elevation(), value * 0.0254 / 0.01);
}

TEST_F(CopyUnitChanges, AChangeBetweenTwoCopiesIsSeen) {
  fixUnits();
  IdMapping mapping(db);
  db->copyAll<Site>(other, mapping);
  rescale(other, 0.3048);
  addForeign({L"C"});
  db->copyAll<Site>(other, mapping);
  EXPECT_EQ(inDestination(), value * 0.0254 / 0.001);
  EXPECT_EQ(db->get<Site>(NameKey(L"C"))->ref_elevation(), value * 0.3048 / 0.001);
}

}  // namespace
}  // namespace tessel::test
