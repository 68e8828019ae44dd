// One mapping for several copies.

#include <gmock/gmock.h>

#include "operations/copying.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CopyMapping : public Copying {
protected:
  IdMapping mapping{db};
};

TEST_F(CopyMapping, ASecondCopyOfTheSameSourceAddsNothing) {
  foreignStory(L"Ground", 0);
  db->copyAll(other, mapping);
  startWatching();
  const std::size_t size = mapping.size();
  const Unchanged destination(project);
  db->copyAll(other, mapping);
  EXPECT_EQ(mapping.size(), size);
  EXPECT_EQ(writes(), 0U);
  EXPECT_THAT(reactor.calls, IsEmpty());
}

TEST_F(CopyMapping, ASecondCopyBringsWhatIsNewInTheSource) {
  const auto ground = foreignStory(L"Ground", 0);
  db->copyAll(other, mapping);
  const IdMapping::Value before = mapped(mapping, *ground);
  foreignStory(L"First", 3);
  startWatching();
  db->copyAll(other, mapping);
  ASSERT_EQ(reactor.saved.size(), 1U);
  EXPECT_EQ(reactor.saved[0].key.type, ObjectType::Story);
  EXPECT_EQ(mapped(mapping, *ground).id, before.id);
  EXPECT_EQ(project.raw().column("SELECT building_id FROM tessel_Story GROUP BY 1").size(), 1U);
}

TEST_F(CopyMapping, ClassesCanBeCopiedOneByOne) {
  foreignStory(L"Ground", 0);
  db->copyAll<Site>(other, mapping);
  db->copyAll<Building>(other, mapping);
  db->copyAll<Story>(other, mapping);
  EXPECT_EQ(rows("tessel_Site"), 1);
  EXPECT_EQ(rows("tessel_Building"), 1);
  EXPECT_EQ(rows("tessel_Story"), 1);
  EXPECT_THAT(reactor.clashes, IsEmpty());
}

TEST_F(CopyMapping, WithoutAMappingASecondCopyClashes) {
  foreignStory(L"Ground", 0);
  db->copyAll(other);
  EXPECT_THROW(db->copyAll(other), ObjectNotUnique);
}

TEST_F(CopyMapping, ObjectsOfTwoSourcesWithTheSameIdsAreKeptApart) {
  SampleProject third;
  const auto hill = other->save(Site::create(L"Hill"));
  const auto vale = third.db->save(Site::create(L"Vale"));
  ASSERT_EQ(hill->id(), vale->id());
  db->copyAll(other, mapping);
  const std::size_t ofFirst = mapping.size();
  db->copyAll(third.db, mapping);
  EXPECT_EQ(mapping.size(), 2 * ofFirst);
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Hill", "Vale"));
  IdMapping::Value value{};
  ASSERT_TRUE(mapping.get({ObjectType::Site, vale->id(), third.db.get()}, value));
  EXPECT_EQ(db->get<Site>(value.id)->name(), L"Vale");
  EXPECT_EQ(db->get<Site>(mapped(mapping, *hill).id)->name(), L"Hill");
}

TEST_F(CopyMapping, MeasuresOfBothSourcesBecomeTheSameOnes) {
  SampleProject third;
  db->copyAll<Measure>(other, mapping);
  db->copyAll<Measure>(third.db, mapping);
  EXPECT_EQ(rows("tessel_Measure"), 4);
  EXPECT_EQ(mapping.size(), 8U);
  const auto length = other->get<Measure>(NameKey(L"LENGTH"));
  IdMapping::Value value{};
  ASSERT_TRUE(mapping.get({ObjectType::Measure, length->id(), third.db.get()}, value));
  EXPECT_EQ(value.id, mapped(mapping, *length).id);
}

// Whatever the mapping says is believed, so a host can say beforehand what stands for an object.
TEST_F(CopyMapping, AnEntryOfTheHostIsFollowed) {
  const auto own = db->save(Building::create(Site::create(L"Shore"), L"Hut"));
  foreignStory(L"Ground", 0);
  mapping.set({ObjectType::Building, house->id(), other.get()}, {own->id(), SaveResolution::Kept});
  db->copyAll<Story>(other, mapping);
  EXPECT_THAT(inFile("name", "Building"), ElementsAre("Hut"));
  EXPECT_THAT(inFile("building_id", "Story"), ElementsAre(std::to_string(own->id())));
  EXPECT_THAT(inFile("name", "Site"), ElementsAre("Shore"));
}

TEST_F(CopyMapping, AnEntryOfARowThatIsNotThereEndsTheCopy) {
  foreignStory(L"Ground", 0);
  mapping.set({ObjectType::Building, house->id(), other.get()}, {4711, SaveResolution::Kept});
  const Unchanged destination(project);
  EXPECT_THROW(db->copyAll<Story>(other, mapping), ObjectNotFound);
}

// It is not rolled back with the file.
TEST_F(CopyMapping, AfterAFailureItNamesRowsThatDoNotExist) {
  foreignStory(L"Ground", 0);
  reactor.whenSaved = [](const Saved& saved) {
    if (saved.key.type == ObjectType::Story) throw std::domain_error("host");
  };
  EXPECT_THROW(db->copyAll(other, mapping), std::domain_error);
  EXPECT_EQ(rows("tessel_Building"), 0);
  EXPECT_EQ(mapped(mapping, *house).resolution, SaveResolution::Created);
  EXPECT_NE(mapped(mapping, *house).id, 0U);
}

TEST_F(CopyMapping, ItMayBeMadeForNoDestination) {
  IdMapping nowhere(nullptr);
  foreignStory(L"Ground", 0);
  db->copyAll(other, nowhere);
  EXPECT_EQ(nowhere.destination(), nullptr);
  EXPECT_EQ(mapped(nowhere, *house).resolution, SaveResolution::Created);
}

// And back: the way of an object through two files.
TEST_F(CopyMapping, ACopyCanBeCopiedOn) {
  SampleProject third;
  foreignStory(L"Ground", 2.5);
  db->save(Site::create(L"Shore"));
  db->copyAll<Story>(other, mapping);
  third.db->copyAll<Story>(db, mapping);
  EXPECT_EQ(third.count("tessel_Site"), 1) << "nothing refers to the shore";
  std::vector<TsSmartPtr<Story>> stories;
  third.db->get(stories);
  ASSERT_EQ(stories.size(), 1U);
  EXPECT_EQ(stories[0]->elevation(), 2.5);
  EXPECT_EQ(stories[0]->building()->site()->name(), L"Hill");
  EXPECT_EQ(mapping.size(), 6U);
}

}  // namespace
}  // namespace tessel::test
