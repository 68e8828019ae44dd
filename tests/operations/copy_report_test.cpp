// What a copy has left behind, and why.

#include <gmock/gmock.h>

#include <tessel/copy_report.h>
#include <tessel/transaction.h>

#include "operations/operations.h"

namespace tessel {

bool operator==(const LeftBehind& a, const LeftBehind& b) {
  return a.key == b.key && a.name == b.name && a.reason == b.reason && a.column == b.column;
}
void PrintTo(const LeftBehind& object, std::ostream* out) {
  *out << "type " << static_cast<int>(object.key.type) << " id " << object.key.id << " reason "
       << static_cast<int>(object.reason) << " ";
  PrintTo(object.name, out);
  PrintTo(object.column, out);
}

}  // namespace tessel

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Reason = LeftBehindReason;

class CopyReport : public TwoProjects {
protected:
  /// Sets the default unit of a measure, which a new file takes for its columns, too.
  static void useUnit(ProjectDb& file, const wchar_t* measure, short length, const wchar_t* label, double scale) {
    file.setDefaultUnit(Unit::create(label, scale, Measure::create(measure, length, 0, 0, 0, 0, 0, 0)));
  }
  static void useLength(ProjectDb& file) { useUnit(file, L"LENGTH", 1, L"m", 1); }
  static void useArea(ProjectDb& file) { useUnit(file, L"AREA", 2, L"m^2", 1); }

  /// A story with all that it stands in, in the source.
  void build() {
    hill = other->save(Site::create(L"Hill"));
    house = other->save(Building::create(hill, L"House"));
    ground = other->save(Story::create(house, L"Ground", 0));
  }

  std::vector<LeftBehind> report() const { return leftBehind(*other, *db, mapping); }

  /// Of each class by itself, because a file that has default units of its own does not take those of another.
  std::vector<LeftBehind> copyAndReport() {
    copyClasses(SampledClasses());
    return report();
  }
  template <typename... Classes>
  void copyClasses(::testing::Types<Classes...>) {
    (db->copyAll<Classes>(other, mapping), ...);
  }

  /// The report if all that `build` has made stayed behind for such a reason.
  auto isAllThatWasBuilt(Reason reason, const wchar_t* ofStory, const wchar_t* ofBuilding,
                         const wchar_t* ofSite) const {
    return ElementsAre(LeftBehind{keyOf(ground), L"Ground", reason, ofStory},
                       LeftBehind{keyOf(house), L"House", reason, ofBuilding},
                       LeftBehind{keyOf(hill), L"Hill", reason, ofSite});
  }

  IdMapping mapping{db};
  TsSmartPtr<Site> hill;
  TsSmartPtr<Building> house;
  TsSmartPtr<Story> ground;
};

/// One of each class; with numbers of their own they share nothing.
template <typename... Classes>
void saveSamples(ProjectDb& file, ::testing::Types<Classes...>) {
  int number = 0;
  (file.save(makeSample<Classes>(++number)), ...);
}

// Nothing.

TEST_F(CopyReport, HasNothingIfMetaAndAllWereCopiedIntoAnEmptyFile) {
  useLength(*other);
  useArea(*other);
  saveSamples(*other, SampledClasses());
  db->copyMeta(other, mapping);
  db->copyAll(other, mapping);
  EXPECT_THAT(report(), IsEmpty());
  EXPECT_EQ(db->count<SpatialStructure>(), other->count<SpatialStructure>());
}

TEST_F(CopyReport, HasNothingIfNeitherFileHasUnits) {
  build();
  EXPECT_THAT(copyAndReport(), IsEmpty());
}

TEST_F(CopyReport, HasNothingIfTheUnitsCanBeConverted) {
  useLength(*other);
  useUnit(*db, L"LENGTH", 1, L"mm", 0.001);
  build();
  EXPECT_THAT(copyAndReport(), IsEmpty());
}

TEST_F(CopyReport, HasNothingOfAnObjectThatStandsForAnother) {
  build();
  const auto existing = db->save(Site::create(L"Hill"));
  reactor.answer({SaveResolution::Kept});
  EXPECT_THAT(copyAndReport(), IsEmpty());
  EXPECT_EQ(rows("tessel_Site"), 1);
}

// Units.

TEST_F(CopyReport, TellsThatTheDestinationHasNoUnit) {
  useLength(*other);
  useArea(*other);
  build();
  EXPECT_THAT(copyAndReport(), isAllThatWasBuilt(Reason::NoUnitInDestination, L"elevation", L"elevation_of_ref_height",
                                                 L"ref_elevation"));
  EXPECT_EQ(rows("tessel_SpatialStructure"), 0);
}

TEST_F(CopyReport, TellsThatTheSourceHasNoUnit) {
  useLength(*db);
  useArea(*db);
  build();
  EXPECT_THAT(copyAndReport(),
              isAllThatWasBuilt(Reason::NoUnitInSource, L"elevation", L"elevation_of_ref_height", L"ref_elevation"));
}

TEST_F(CopyReport, TellsThatTheDimensionsDiffer) {
  useLength(*other);
  useLength(*db);
  project.raw().exec("UPDATE tessel_Measure SET mass = 1 WHERE name = 'LENGTH'");
  build();
  EXPECT_THAT(copyAndReport(),
              isAllThatWasBuilt(Reason::DimensionsDiffer, L"elevation", L"elevation_of_ref_height", L"ref_elevation"));
}

TEST_F(CopyReport, TellsTheFirstColumnThatIsInTheWay) {
  useLength(*other);
  useLength(*db);
  useArea(*db);
  build();
  EXPECT_THAT(copyAndReport(), isAllThatWasBuilt(Reason::NoUnitInSource, L"gross_area_planned", L"gross_planned_area",
                                                 L"buildable_area"));
}

TEST_F(CopyReport, TellsTheReasonOfTheFirstColumnIfThereAreSeveral) {
  useArea(*other);
  useLength(*db);
  build();
  EXPECT_THAT(copyAndReport(),
              isAllThatWasBuilt(Reason::NoUnitInSource, L"elevation", L"elevation_of_ref_height", L"ref_elevation"));
}

TEST_F(CopyReport, TellsEachClassByItself) {
  useLength(*other);
  useLength(*db);
  build();
  project.raw().exec("DELETE FROM tessel_ColumnUnit WHERE \"table\" = 'Story' AND \"column\" = 'elevation'");
  EXPECT_THAT(copyAndReport(),
              ElementsAre(LeftBehind{keyOf(ground), L"Ground", Reason::NoUnitInDestination, L"elevation"}));
}

TEST_F(CopyReport, TellsOfTheFilesAsTheyAreNow) {
  useLength(*other);
  build();
  db->copyAll(other, mapping);
  db->copyMeta(other, mapping);
  EXPECT_THAT(report(), isAllThatWasBuilt(Reason::NotCopied, L"", L"", L""));
  db->copyAll<Story>(other, mapping);
  EXPECT_THAT(report(), IsEmpty());
}

// Other reasons.

TEST_F(CopyReport, ListsAllClassesInTheOrderInWhichTheyAreCopied) {
  saveSamples(*other, SampledClasses());
  std::vector<ObjectType> types;
  std::map<ObjectType, unsigned long long> counts;
  for (const LeftBehind& object : report()) {
    EXPECT_EQ(object.reason, Reason::NotCopied);
    EXPECT_EQ(object.column, L"");
    if (++counts[object.key.type] == 1) types.push_back(object.key.type);
  }
  EXPECT_THAT(types, ElementsAre(ObjectType::Story, ObjectType::Building, ObjectType::Site, ObjectType::EntityType,
                                 ObjectType::PropertyDefinition, ObjectType::ValueDefinition, ObjectType::PropertySet,
                                 ObjectType::PropertyNamespace, ObjectType::Unit, ObjectType::Measure));
  EXPECT_EQ(counts[ObjectType::Measure], other->count<Measure>());
  EXPECT_EQ(counts[ObjectType::Unit], other->count<Unit>());
  EXPECT_EQ(counts[ObjectType::Site], other->count<Site>());
}

TEST_F(CopyReport, ListsTheClassesThatWereNotCopied) {
  build();
  db->copyAll<Building>(other, mapping);
  db->copyAll<Measure>(other, mapping);
  EXPECT_THAT(report(), ElementsAre(LeftBehind{keyOf(ground), L"Ground", Reason::NotCopied, {}}));
}

TEST_F(CopyReport, ListsTheObjectsOfAClassByTheirNamesAndThenByTheirIds) {
  db->copyAll<Measure>(other, mapping);
  const auto a = EntityType::create(L"a"), b = EntityType::create(L"B"), ab = EntityType::create(L"Ab");
  for (const auto& type : {a, b, ab}) other->save(type);
  const auto ns = PropertyNamespace::create(L"N"), inner = PropertyNamespace::create(L"M");
  const auto second = other->save(PropertySet::create(inner, L"Set"));
  const auto third = other->save(PropertySet::create(ns, L"Set"));
  const auto first = other->save(PropertySet::create(ns, L"Door"));
  std::vector<ObjectKey> keys;
  for (const LeftBehind& object : report()) keys.push_back(object.key);
  EXPECT_THAT(keys, ElementsAre(keyOf(ab), keyOf(b), keyOf(a), keyOf(first), keyOf(second), keyOf(third), keyOf(inner),
                                keyOf(ns)));
}

TEST_F(CopyReport, CallsAUnitWithoutANameByItsLabel) {
  db->copyAll<Measure>(other, mapping);
  const auto length = other->get<Measure>(NameKey(L"LENGTH"));
  const auto named = other->save(Unit::create(L"metre", L"b", 1, length));
  const auto labelled = other->save(Unit::create(L"z", 2, length));
  const auto emptyNamed = other->save(Unit::create(L"", L"a", 3, length));
  EXPECT_THAT(report(), ElementsAre(LeftBehind{keyOf(emptyNamed), {}, Reason::NotCopied, {}},
                                    LeftBehind{keyOf(named), L"metre", Reason::NotCopied, {}},
                                    LeftBehind{keyOf(labelled), L"z", Reason::NotCopied, {}}));
}

TEST_F(CopyReport, ListsRowsThatCannotBeLoaded) {
  build();
  const auto unit = other->save(Unit::create(L"m", 1, other->get<Measure>(NameKey(L"LENGTH"))));
  otherProject.raw().exec("UPDATE tessel_Story SET building_id = 4711; UPDATE tessel_Unit SET measure_id = 4711");
  EXPECT_THAT(copyAndReport(), ElementsAre(LeftBehind{keyOf(ground), L"Ground", Reason::NotCopied, {}},
                                           LeftBehind{keyOf(unit), {}, Reason::NotCopied, {}}));
}

TEST_F(CopyReport, LooksForEntriesOfThisSourceAndClassOnly) {
  const auto type = other->save(EntityType::create(L"Door"));
  db->copyAll<Measure>(other, mapping);
  const IdMapping::Value value{1, SaveResolution::Created};
  mapping.set({ObjectType::EntityType, type->id(), db.get()}, value);
  mapping.set({ObjectType::EntityType, type->id(), nullptr}, value);
  mapping.set({ObjectType::Site, type->id(), other.get()}, value);
  mapping.set({ObjectType::EntityType, type->id() + 1, other.get()}, value);
  EXPECT_THAT(report(), ElementsAre(LeftBehind{keyOf(type), L"Door", Reason::NotCopied, {}}));
  mapping.set({ObjectType::EntityType, type->id(), other.get()}, value);
  EXPECT_THAT(report(), IsEmpty());
}

// How it goes about it.

TEST_F(CopyReport, JoinsATransactionOfTheHost) {
  Transaction transaction(other, Transaction::BeginCurrent);
  const auto type = other->save(EntityType::create(L"Door"));
  db->copyAll<Measure>(other, mapping);
  EXPECT_THAT(report(), ElementsAre(LeftBehind{keyOf(type), L"Door", Reason::NotCopied, {}}));
  EXPECT_EQ(&Transaction::current(), &transaction);
  EXPECT_FALSE(transaction.finalized());
}

TEST_F(CopyReport, SeesUnitsOfATransactionOfTheHostInTheDestination) {
  build();
  Transaction transaction(db, Transaction::BeginCurrent);
  useLength(*db);
  db->copyAll(other, mapping);
  EXPECT_THAT(report(),
              isAllThatWasBuilt(Reason::NoUnitInSource, L"elevation", L"elevation_of_ref_height", L"ref_elevation"));
  EXPECT_EQ(&Transaction::current(), &transaction);
}

TEST_F(CopyReport, AsksOncePerClassForTheColumnsAndLoadsNoObjectThatWasCopied) {
  const auto statements = [this](const std::string& table) {
    startWatching();
    report();
    const auto all = sql.statements();
    return std::count_if(all.begin(), all.end(),
                         [&](const std::string& text) { return text.find(table) != std::string::npos; });
  };
  build();
  db->copyAll(other, mapping);
  const auto ofStories = statements("tessel_Story");
  useLength(*other);
  for (int i = 0; i < 5; ++i) other->save(Story::create(house, OdString::format(L"%d", i), i));
  const auto ofColumns = statements("tessel_ColumnUnit");
  EXPECT_EQ(ofColumns, 3) << "the first column of stories: its unit here and there, and whether a row names a lost one";
  EXPECT_EQ(ofStories, 1);
  EXPECT_EQ(statements("tessel_Building"), 1);
}

}  // namespace
}  // namespace tessel::test
