// Copying all objects of a file.

#include <gmock/gmock.h>

#include <tessel/project.h>

#include "operations/copying.h"
#include "support/table_content.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using Row = RawFile::Row;
using Type = PropertyType::Type;

class CopyAll : public Copying {
protected:
  /// Something of each class that others refer to, and something that nothing refers to.
  CopyAll() {
    foreignStory(L"Ground", 0);
    foreignStory(L"First", 3);
    other->save(Building::create(house->site(), L"Shed"));
    other->save(Site::create(L"Vale"));

    const auto common = other->save(PropertyNamespace::create(L"Common"));
    other->save(PropertyNamespace::create(L"Spare"));
    other->save(PropertyDefinition::create(common, L"Alone"));
    const auto width = PropertyDefinition::create(common, L"Width", PropertyType::Single(Type::Double));
    width->set_unit(Unit::create(L"millimetre", L"mm", 0.001, other->get<Measure>(NameKey(L"LENGTH"))));
    const auto set = PropertySet::create(common, L"Door data");
    set->append_property_definition(other->save(width));
    set->append_value_definition(L"Note", PropertyType::Single(Type::String));
    set->insert_entity_type(L"Door");
    other->save(set);
    other->save(EntityType::create(L"Wall"));
    other->save(Unit::create(L"centimetre", L"cm", 0.01, other->get<Measure>(NameKey(L"LENGTH"))));
    other->save(Measure::create(L"TIME", 0, 0, 1, 0, 0, 0, 0));
    startWatching();
  }

  /// So that no row of the destination has the id that it has in the source.
  void fillDestination() {
    for (int i = 0; i < 20; ++i) {
      const OdString name = OdString::format(L"Own %d", i);
      db->save(Story::create(Building::create(Site::create(name), name), name, 0));
      const auto set = PropertySet::create(PropertyNamespace::create(name), name);
      set->append_property_definition(name, PropertyType::Single(Type::Double));
      set->append_value_definition(name, PropertyType::Single(Type::Double));
      set->insert_entity_type(name);
      db->save(set);
      db->save(Unit::create(name, name, 1, db->get<Measure>(NameKey(L"MASS"))));
    }
    startWatching();
  }

  template <typename T>
  void expectMapped(const IdMapping& mapping, std::size_t& objects) {
    std::vector<TsSmartPtr<T>> originals;
    other->get(originals);
    for (const auto& original : originals) {
      EXPECT_EQ(db->get<T>(mapped(mapping, *original).id)->name(), original->name());
      ++objects;
    }
  }
  template <typename... Classes>
  std::size_t expectAllMapped(const IdMapping& mapping, ::testing::Types<Classes...>) {
    std::size_t objects = 0;
    (expectMapped<Classes>(mapping, objects), ...);
    return objects;
  }

  /// The name of a row that was saved, behind its class, with the outcome if it is not `Created`.
  template <typename T>
  void tell(const Saved& saved, std::string& text) {
    if (saved.key.type != ObjectTraits<T>::type) return;
    text = OdString(Sample<T>::className).toUtf8() + " " + db->get<T>(saved.key.id)->name().toUtf8();
    if (saved.resolution != SaveResolution::Created) text += " " + std::to_string(static_cast<int>(saved.resolution));
  }
  template <typename... Classes>
  std::vector<std::string> told(::testing::Types<Classes...>) {
    std::vector<std::string> lines;
    for (const Saved& saved : reactor.saved) {
      std::string& line = lines.emplace_back();
      (tell<Classes>(saved, line), ...);
    }
    return lines;
  }
};

TEST_F(CopyAll, FromNowhereOrFromItselfDoesNothing) {
  const Unchanged destination(project);
  IdMapping mapping(db);
  db->copyAll(nullptr, mapping);
  db->copyAll(nullptr);
  db->copyAll(db, mapping);
  db->copyAll(db);
  EXPECT_EQ(mapping.size(), 0U);
  EXPECT_THAT(reactor.calls, IsEmpty());
  EXPECT_THAT(sql.statements(), IsEmpty());
}

// Classes that refer to others go first and bring them along; the later passes add what nothing refers to.
TEST_F(CopyAll, GoesInAFixedOrder) {
  db->copyAll(other);
  EXPECT_THAT(reactor.clashes, IsEmpty());
  EXPECT_THAT(told(SampledClasses()),
              ElementsAre("Site Hill", "Building House", "Story First", "Story Ground",           // stories
                          "Building Shed",                                                        // buildings
                          "Site Vale",                                                            // sites
                          "EntityType Door", "EntityType Wall",                                   // entity types
                          "PropertyNamespace Common", "PropertyDefinition Alone",                 // definitions
                          "Measure LENGTH 1", "Unit millimetre", "PropertyDefinition Width",      //
                          "ValueDefinition Note",                                                 // value definitions
                          "PropertySet Door data",                                                // sets
                          "PropertyNamespace Spare",                                              // namespaces
                          "Unit centimetre",                                                      // units
                          "Measure AREA 1", "Measure MASS 1", "Measure TIME", "Measure VOLUME 1"  // measures
                          ));
}

TEST_F(CopyAll, ForeignKeysHoldTheIdsOfTheDestination) {
  fillDestination();
  db->copyAll(other);
  RawFile file = project.raw();
  EXPECT_THAT(file.rows("PRAGMA foreign_key_check"), IsEmpty());
  EXPECT_THAT(file.rows("SELECT s.name, b.name, t.name FROM tessel_Site s "
                        "LEFT JOIN tessel_Building b ON b.site_id = s.id "
                        "LEFT JOIN tessel_Story t ON t.building_id = b.id WHERE s.name NOT LIKE 'Own%'"),
              UnorderedElementsAre(Row{"Hill", "House", "Ground"}, Row{"Hill", "House", "First"},
                                   Row{"Hill", "Shed", "NULL"}, Row{"Vale", "NULL", "NULL"}));
  EXPECT_THAT(file.rows("SELECT s.typeid, c.name FROM tessel_SpatialStructure s JOIN tessel_Site c ON c.id = s.id "
                        "WHERE c.name NOT LIKE 'Own%'"),
              UnorderedElementsAre(Row{"tessel::Site", "Hill"}, Row{"tessel::Site", "Vale"}));
  EXPECT_THAT(file.rows("SELECT n.name, d.name, u.label, m.name FROM tessel_PropertyDefinition d "
                        "JOIN tessel_PropertyNamespace n ON n.id = d.namespace_id "
                        "LEFT JOIN tessel_Unit u ON u.id = d.unit_id LEFT JOIN tessel_Measure m ON m.id = u.measure_id "
                        "WHERE d.name NOT LIKE 'Own%'"),
              UnorderedElementsAre(Row{"Common", "Alone", "NULL", "NULL"}, Row{"Common", "Width", "mm", "LENGTH"}));
}

TEST_F(CopyAll, TheMembersOfASetAreThoseOfTheDestination) {
  fillDestination();
  db->copyAll(other);
  const std::string ofSet = " JOIN tessel_PropertySet s ON s.id = m.object_id WHERE s.name = 'Door data'";
  RawFile file = project.raw();
  EXPECT_THAT(file.column("SELECT d.name FROM tessel_PropertySet_property_definitions m "
                          "JOIN tessel_PropertyDefinition d ON d.id = m.property_definition_id" +
                          ofSet),
              ElementsAre("Width"));
  EXPECT_THAT(file.column("SELECT d.name FROM tessel_PropertySet_value_definitions m "
                          "JOIN tessel_ValueDefinition d ON d.id = m.value_definition_id" +
                          ofSet),
              ElementsAre("Note"));
  EXPECT_THAT(file.column("SELECT e.name FROM tessel_PropertySet_entity_types m "
                          "JOIN tessel_EntityType e ON e.id = m.entity_type_id" +
                          ofSet),
              ElementsAre("Door"));
}

TEST_F(CopyAll, TheMappingHoldsEachObjectOfTheSource) {
  fillDestination();
  IdMapping mapping(db);
  db->copyAll(other, mapping);
  EXPECT_EQ(expectAllMapped(mapping, SampledClasses()), mapping.size());
  EXPECT_EQ(mapping.destination(), db.get());
}

TEST_F(CopyAll, TheEntriesOfTheMappingComeInTheOrderOfTheirKeys) {
  IdMapping mapping(db);
  db->copyAll(other, mapping);
  const IdMapping::Key* last = nullptr;
  std::size_t entries = 0;
  for (const auto& [key, value] : mapping) {
    EXPECT_EQ(key.source, other.get());
    EXPECT_NE(value.id, 0U);
    if (last) {
      EXPECT_LT(std::make_pair(last->type, last->id), std::make_pair(key.type, key.id));
    }
    last = &key;
    ++entries;
  }
  EXPECT_EQ(entries, mapping.size());
}

TEST_F(CopyAll, ItIsOneTransactionAndTheSourceIsOnlyRead) {
  const Unchanged source(otherProject);
  db->copyAll(other);
  EXPECT_EQ(sql.beginningWith("COMMIT").size(), 1U);
}

TEST_F(CopyAll, TheFormWithoutAMappingCopiesTheSame) {
  const std::shared_ptr<const ProjectDb> source = other;
  db->copyAll(source);
  EXPECT_THAT(inFile("name", "Story"), ElementsAre("First", "Ground"));
  EXPECT_EQ(rows("tessel_Unit"), 2);
  EXPECT_EQ(rows("tessel_Measure"), 5);
}

TEST_F(CopyAll, TheNewObjectsAreCompleteWhenTheFileIsOpenedAnew) {
  db->copyAll(other);
  project.reopen();
  std::vector<TsSmartPtr<Story>> stories;
  project.db->get(stories);
  ASSERT_EQ(stories.size(), 2U);
  EXPECT_EQ(stories[0]->building()->site()->name(), L"Hill");
  EXPECT_EQ(stories[0]->elevation(), 3);
}

TEST_F(CopyAll, TheProjectRecordIsNotPartOfIt) {
  other->project().set_name(L"Harbour");
  other->saveProject();
  db->copyAll(other);
  EXPECT_THAT(inFile("name", "Project"), ElementsAre(""));
  EXPECT_EQ(db->project().name(), L"");
}

// The objects of the source are those of its file: what hosts have changed in memory does not count.
TEST_F(CopyAll, UnsavedChangesStayWhereTheyAre) {
  house->set_name(L"Palace");
  db->copyAll(other);
  EXPECT_THAT(inFile("name", "Building"), ElementsAre("House", "Shed"));
}

TEST_F(CopyAll, AnotherHandleOnTheSameFileIsAnotherFile) {
  const auto second = ProjectDb::open(odPath(otherProject.path()), false);
  EXPECT_THROW(second->copyAll(other), ObjectNotUnique);
  RecordingReactor keeping(second);
  keeping.otherwise(SaveResolution::Kept);
  RawFile file = otherProject.raw();
  const std::string before = describe(readContent(file));
  second->copyAll(other);
  EXPECT_FALSE(keeping.clashes.empty());
  EXPECT_EQ(describe(readContent(file)), before) << "each object is its own twin";
}

}  // namespace
}  // namespace tessel::test
