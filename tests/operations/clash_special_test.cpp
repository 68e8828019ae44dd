// Clashes that are settled in other ways than by the name.

#include <gmock/gmock.h>

#include <tessel/transaction.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

template <typename T>
OdString memberOfFailure(const std::shared_ptr<ProjectDb>& db, const TsSmartPtr<T>& object) {
  try {
    db->save(object);
  } catch (const ObjectNotUnique& error) {
    return error.member();
  }
  return L"no failure";
}

// Owners.

class ClashInOwner : public ReactingProject {
protected:
  TsSmartPtr<Site> hill = db->save(Site::create(L"Hill"));
  TsSmartPtr<Site> vale = db->save(Site::create(L"Vale"));
};

TEST_F(ClashInOwner, TheSameNameUnderAnotherOwnerIsNoClash) {
  db->save(Building::create(hill, L"House"));
  db->save(Building::create(vale, L"House"));
  EXPECT_EQ(rows("tessel_Building"), 2);
  EXPECT_THAT(reactor.clashes, IsEmpty());
}

TEST_F(ClashInOwner, ACandidateIsLookedForUnderTheSameOwner) {
  db->save(Building::create(hill, L"House"));
  db->save(Building::create(hill, L"Barn"));
  db->save(Building::create(vale, L"Shed"));
  reactor.rename({L"Barn", L"Shed"});
  const auto building = db->save(Building::create(hill, L"House"));
  EXPECT_THAT(reactor.nameWasFree, ElementsAre(false, true)) << "the shed stands on the other site";
  EXPECT_EQ(building->name(), L"Shed");
}

TEST_F(ClashInOwner, TheSameNameInAnotherClassIsNoClash) {
  const auto building = db->save(Building::create(hill, L"Hill"));
  db->save(Story::create(building, L"Hill", 0));
  EXPECT_THAT(reactor.clashes, IsEmpty());
}

// A null owner breaks another rule than that of the names.
TEST_F(ClashInOwner, WithoutAnOwnerThereIsNoClashButAFailure) {
  EXPECT_THROW(db->save(Building::create(nullptr, L"House")), DatabaseException);
  EXPECT_THROW(db->save(Story::create(nullptr, L"Ground", 0)), DatabaseException);
  EXPECT_THROW(db->save(Unit::create(L"m", 1, nullptr)), DatabaseException);
  EXPECT_THROW(db->save(PropertyDefinition::create(nullptr, L"Width")), DatabaseException);
  EXPECT_THAT(reactor.clashes, IsEmpty());
  EXPECT_EQ(rows("tessel_SpatialStructure"), 2) << "only the two sites";
}

// Labels, which no key covers.

class ClashOfLabels : public ReactingProject {
protected:
  ClashOfLabels() {
    reactor.otherwise(SaveResolution::Kept);
    startWatching();
  }

  TsSmartPtr<PropertyNamespace> ns = db->save(PropertyNamespace::create(L"Common", L"The common ones"));
};

TEST_F(ClashOfLabels, ATakenLabelOfANamespaceFailsWithoutAQuestion) {
  EXPECT_EQ(memberOfFailure(db, PropertyNamespace::create(L"Other", L"The common ones")), L"PropertyNamespace.label");
  EXPECT_THAT(reactor.clashes, IsEmpty());
  EXPECT_EQ(rows("tessel_PropertyNamespace"), 1);
}

TEST_F(ClashOfLabels, ATakenLabelOfASetFailsWithoutAQuestion) {
  const auto first = PropertySet::create(ns, L"Door");
  first->set_label(L"Doors");
  db->save(first);
  const auto second = PropertySet::create(ns, L"Gate");
  second->set_label(L"Doors");
  EXPECT_EQ(memberOfFailure(db, second), L"PropertySet.label");
  EXPECT_THAT(reactor.clashes, IsEmpty());
  EXPECT_EQ(rows("tessel_PropertySet"), 1);
}

// The row under its name is its own, so this looks like a clash of names.
TEST_F(ClashOfLabels, AnUpdateToATakenLabelAsksForItsOwnName) {
  const auto other = db->save(PropertyNamespace::create(L"Other"));
  startWatching();
  other->set_label(L"The common ones");
  EXPECT_EQ(db->save(other)->id(), other->id());
  ASSERT_EQ(reactor.clashes.size(), 1U);
  EXPECT_EQ(reactor.clashes[0].name, L"Other");
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(other), SaveResolution::Kept)));
  EXPECT_TRUE(other->isDirty());
  reactor.otherwise(SaveResolution::Created);
  EXPECT_EQ(memberOfFailure(db, other), L"PropertyNamespace.label");
}

// A namespace cannot be renamed.

TEST_F(ClashOfLabels, ANamespaceKeepsItsNameAndTheReactorIsAskedSixTimes) {
  RecordingReactor renaming(db);
  renaming.otherwise([](ProjectDb::Reactor::ObjectInfo& info) {
    EXPECT_TRUE(info.setName(L"free"));
    return SaveResolution::Renamed;
  });
  const auto incoming = PropertyNamespace::create(L"Common");
  EXPECT_EQ(memberOfFailure(db, incoming), L"PropertyNamespace.name");
  EXPECT_EQ(renaming.clashes.size(), 6U);
  for (const auto& clash : renaming.clashes) EXPECT_EQ(clash.name, L"Common");
  EXPECT_EQ(incoming->name(), L"Common");
}

TEST_F(ClashOfLabels, AnOverwrittenNamespaceTakesTheLabel) {
  reactor.otherwise(SaveResolution::Overwritten);
  const auto result = db->save(PropertyNamespace::create(L"Common", L"New"));
  EXPECT_EQ(result->id(), ns->id());
  EXPECT_EQ(project.row("tessel_PropertyNamespace", ns->id())["label"], "New");
}

// Measures.

class ClashOfMeasures : public ReactingProject {
protected:
  TsSmartPtr<Measure> existing = [this] {
    const auto measure = Measure::create(L"SPEED", 1, 0, -1, 0, 0, 0, 0);
    measure->set_description(L"as measured");
    return db->save(measure);
  }();
  TsSmartPtr<Measure> incoming = Measure::create(L"SPEED", 7, 7, 7, 7, 7, 7, 7);
};

TEST_F(ClashOfMeasures, TheExistingOneStandsWhateverTheExponentsAre) {
  const auto before = project.row("tessel_Measure", existing->id());
  startWatching();
  incoming->set_description(L"dropped");
  const auto result = db->save(incoming);
  EXPECT_EQ(result->id(), existing->id());
  EXPECT_TRUE(*result == *existing);
  EXPECT_EQ(project.row("tessel_Measure", existing->id()), before);
  EXPECT_THAT(reactor.calls, ElementsAre("onSaved")) << "nobody is asked";
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(existing), SaveResolution::Kept)));
  EXPECT_EQ(incoming->id(), 0U);
  EXPECT_TRUE(incoming->isDirty());
}

TEST_F(ClashOfMeasures, AChangedOneGivesWayToo) {
  const auto other = db->save(Measure::create(L"PACE", -1, 0, 1, 0, 0, 0, 0));
  other->set_name(L"SPEED");
  EXPECT_EQ(db->save(other)->id(), existing->id());
  EXPECT_EQ(project.row("tessel_Measure", other->id())["name"], "PACE");
}

TEST_F(ClashOfMeasures, AUnitOfTheIncomingOneGetsTheExistingOne) {
  const auto unit = db->save(Unit::create(L"m/s", 1, incoming));
  EXPECT_EQ(unit->measure()->id(), existing->id());
  EXPECT_EQ(project.row("tessel_Unit", unit->id())["measure_id"], std::to_string(existing->id()));
}

TEST_F(ClashOfMeasures, CaseCounts) {
  EXPECT_EQ(db->save(Measure::create(L"Speed", 1, 0, -1, 0, 0, 0, 0))->name(), L"Speed");
  EXPECT_EQ(rows("tessel_Measure"), 6);
}

// Units.

class ClashOfUnits : public ReactingProject {
protected:
  TsSmartPtr<Unit> save(const TsSmartPtr<Unit>& unit) {
    const auto result = db->save(unit);
    startWatching();
    return result;
  }

  TsSmartPtr<const Measure> length = db->get<Measure>(NameKey(L"LENGTH"));
  TsSmartPtr<const Measure> area = db->get<Measure>(NameKey(L"AREA"));
};

TEST_F(ClashOfUnits, OfTheSameLabelScaleAndMeasureTheExistingOneStands) {
  const auto existing = save(Unit::create(L"m", 1, length));
  const auto incoming = Unit::create(L"m", 1, length);
  const auto result = db->save(incoming);
  EXPECT_EQ(result->id(), existing->id());
  EXPECT_EQ(rows("tessel_Unit"), 1);
  EXPECT_EQ(writes(), 1U) << "only the insert that was refused";
  EXPECT_THAT(reactor.calls, ElementsAre("onSaved"));
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(existing), SaveResolution::Kept)));
  EXPECT_EQ(incoming->id(), 0U);
}

TEST_F(ClashOfUnits, ANameIsGivenToAnExistingOneThatHasNone) {
  const auto existing = save(Unit::create(L"m", 1, length));
  const auto result = db->save(Unit::create(L"metre", L"m", 1, length));
  EXPECT_EQ(result->id(), existing->id());
  EXPECT_EQ(result->name(), L"metre");
  EXPECT_EQ(project.row("tessel_Unit", existing->id())["name"], "metre");
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(existing), SaveResolution::Overwritten)));
}

TEST_F(ClashOfUnits, AnExistingNameStays) {
  const auto existing = save(Unit::create(L"metre", L"m", 1, length));
  const auto result = db->save(Unit::create(L"meter", L"m", 1, length));
  EXPECT_EQ(result->name(), L"metre");
  EXPECT_EQ(project.row("tessel_Unit", existing->id())["name"], "metre");
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(existing), SaveResolution::Kept)));
}

TEST_F(ClashOfUnits, AnEmptyNameIsAName) {
  const auto existing = save(Unit::create(L"m", 1, length));
  EXPECT_TRUE(db->save(Unit::create(L"", L"m", 1, length))->has_name());
  EXPECT_EQ(project.row("tessel_Unit", existing->id())["name"], "");
}

TEST_F(ClashOfUnits, WithoutANameTheNamedOneStands) {
  const auto existing = save(Unit::create(L"metre", L"m", 1, length));
  const auto result = db->save(Unit::create(L"m", 1, length));
  EXPECT_EQ(result->id(), existing->id());
  EXPECT_THAT(outcomes(), ElementsAre(Pair(keyOf(existing), SaveResolution::Kept)));
}

TEST_F(ClashOfUnits, OfAnotherScaleFailsWithTheClass) {
  save(Unit::create(L"m", 1, length));
  const auto incoming = Unit::create(L"m", 2, length);
  EXPECT_EQ(memberOfFailure(db, incoming), L"Unit");
  EXPECT_THAT(reactor.calls, IsEmpty());
  EXPECT_EQ(rows("tessel_Unit"), 1);
  EXPECT_EQ(incoming->id(), 0U);
}

TEST_F(ClashOfUnits, OfTheSameNameAndAnotherLabelFailsWithTheClass) {
  save(Unit::create(L"metre", L"m", 1, length));
  EXPECT_EQ(memberOfFailure(db, Unit::create(L"metre", L"M", 1, length)), L"Unit");
}

TEST_F(ClashOfUnits, OfTheSameLabelAndAnotherMeasureIsNoClash) {
  save(Unit::create(L"u", 1, length));
  EXPECT_NE(db->save(Unit::create(L"u", 1, area))->id(), 0U);
  EXPECT_EQ(rows("tessel_Unit"), 2);
}

TEST_F(ClashOfUnits, TheTwinIsSoughtWithinTheMeasure) {
  const auto ofLength = save(Unit::create(L"u", 1, length));
  const auto ofArea = save(Unit::create(L"u", 1, area));
  EXPECT_EQ(db->save(Unit::create(L"u", 1, length))->id(), ofLength->id());
  EXPECT_EQ(db->save(Unit::create(L"u", 1, area))->id(), ofArea->id());
  EXPECT_EQ(rows("tessel_Unit"), 2);
}

// The existing one cannot take the name, for a third one has it.
TEST_F(ClashOfUnits, ANameThatAThirdOneHasFailsAfterAllAttempts) {
  const auto existing = save(Unit::create(L"m", 1, length));
  save(Unit::create(L"metre", L"M", 1, length));
  EXPECT_EQ(memberOfFailure(db, Unit::create(L"metre", L"m", 1, length)), L"Unit.name");
  EXPECT_EQ(project.row("tessel_Unit", existing->id())["name"], "NULL");
}

TEST_F(ClashOfUnits, AChangedOneGivesWayToo) {
  const auto existing = save(Unit::create(L"m", 1, length));
  const auto other = save(Unit::create(L"M", 1, length));
  other->set_label(L"m");
  EXPECT_EQ(db->save(other)->id(), existing->id());
  EXPECT_EQ(project.row("tessel_Unit", other->id())["label"], "M");
}

// What SQLite says.

class ClashText : public ReactingProject {
protected:
  /// Each new entity type fails with this text.
  void refuse(const std::string& text) {
    project.raw().exec("CREATE TRIGGER refusing BEFORE INSERT ON tessel_EntityType BEGIN SELECT RAISE(ABORT, '" + text +
                       "'); END");
  }
};

TEST_F(ClashText, AnotherFailureOfAConstraintIsADatabaseException) {
  refuse("no more types");
  EXPECT_THROW(db->save(EntityType::create(L"Door")), DatabaseException);
  EXPECT_THAT(reactor.calls, IsEmpty());
}

TEST_F(ClashText, ThePrefixMustStandAtTheStart) {
  refuse("says: UNIQUE constraint failed: tessel_EntityType.name");
  EXPECT_THROW(db->save(EntityType::create(L"Door")), DatabaseException);
}

TEST_F(ClashText, CaseOfThePrefixCounts) {
  refuse("Unique constraint failed: tessel_EntityType.name");
  EXPECT_THROW(db->save(EntityType::create(L"Door")), DatabaseException);
}

TEST_F(ClashText, AUniqueFailureThatNoKeyExplainsNamesTheColumns) {
  refuse("UNIQUE constraint failed: tessel_EntityType.size, tessel_EntityType.colour");
  EXPECT_EQ(memberOfFailure(db, EntityType::create(L"Door")), L"EntityType.size,EntityType.colour");
  EXPECT_THAT(reactor.calls, IsEmpty());
}

TEST_F(ClashText, OfAForeignTableTheFirstSixCharactersAreDropped) {
  refuse("UNIQUE constraint failed: notes.text");
  EXPECT_EQ(memberOfFailure(db, EntityType::create(L"Door")), L".text");
}

}  // namespace
}  // namespace tessel::test
