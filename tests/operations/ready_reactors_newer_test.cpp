// What a catalogue of a later revision overwrites.

#include <limits>

#include <gmock/gmock.h>

#include <tessel/reactors.h>
#include <tessel/transaction.h>

#include "operations/operations.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;
using Lines = std::vector<std::string>;

class OverwrittenIfNewer : public TwoProjects {
protected:
  /// A namespace with a definition of each kind and a set, all of which carry the mark.
  static void fill(const std::shared_ptr<ProjectDb>& file, const OdString& name, unsigned int revision,
                   const OdString& mark, const OdString& definition = L"Width") {
    const auto type = PropertyType::Single(PropertyType::Type::Double);
    const auto ns = PropertyNamespace::create(name);
    ns->set_revision(revision);
    const auto set = PropertySet::create(ns, L"Door");
    set->set_ifc_name(mark);
    set->append_property_definition(definition, type)->set_description(mark);
    set->append_value_definition(L"Load", type)->set_description(mark);
    file->save(set);
  }

  /// The same namespace in both files. What is here is marked as old, and what is in the source as new.
  void fillBoth(const OdString& name, unsigned int here, unsigned int inSource, const OdString& definition = L"Width") {
    fill(db, name, here, L"old", definition);
    fill(other, name, inSource, L"new", definition);
  }

  void copy(ProjectDb::Reactor* next = nullptr) {
    OverwriteIfNewer newer(other, next);
    db->setReactor(&newer);
    db->copyAll(other);
    db->setReactor(nullptr);
  }

  /// The revision of a namespace and the marks of what is in it.
  Lines content(const std::string& name) const {
    const std::string ns = "tessel_PropertyNamespace WHERE name = '" + name + "'";
    const std::string inIt = " WHERE namespace_id = (SELECT id FROM " + ns + ")";
    RawFile file = project.raw();
    Lines lines = file.column("SELECT revision FROM " + ns);
    for (const char* const marked : {"description FROM tessel_PropertyDefinition",
                                     "description FROM tessel_ValueDefinition", "ifc_name FROM tessel_PropertySet"}) {
      for (const std::string& line : file.column("SELECT name || ' ' || " + (marked + inIt))) lines.push_back(line);
    }
    return lines;
  }

  static Lines all(const std::string& revision, const std::string& mark) {
    return {revision, "Width " + mark, "Load " + mark, "Door " + mark};
  }
};

TEST_F(OverwrittenIfNewer, IsANamespaceOfALaterRevisionWithAllThatIsInIt) {
  fillBoth(L"Common", 3, 4);
  copy();
  EXPECT_EQ(content("Common"), all("4", "new"));
}

TEST_F(OverwrittenIfNewer, IsNoneOfAnEarlierRevision) {
  fillBoth(L"Common", 4, 3);
  copy();
  EXPECT_EQ(content("Common"), all("4", "old"));
}

TEST_F(OverwrittenIfNewer, IsNoneOfTheSameRevision) {
  fillBoth(L"Common", 4, 4);
  copy();
  EXPECT_EQ(content("Common"), all("4", "old"));
}

TEST_F(OverwrittenIfNewer, IsToldByNumbersWithoutASign) {
  fillBoth(L"Common", 1, std::numeric_limits<unsigned int>::max());
  copy();
  EXPECT_EQ(content("Common"), all("4294967295", "new"));
}

TEST_F(OverwrittenIfNewer, IsToldForEachNamespaceByItself) {
  fillBoth(L"A", 1, 2, L"Zone");
  fillBoth(L"B", 2, 1);
  copy();
  EXPECT_THAT(content("A"), ElementsAre("2", "Zone new", "Load old", "Door old"))
    << "what the clash may be about in B, too, is kept in both";
  EXPECT_EQ(content("B"), all("2", "old"));
}

TEST_F(OverwrittenIfNewer, IsWhatSeveralNamespacesHaveOnlyIfAllAreNewer) {
  fillBoth(L"A", 1, 2);
  fillBoth(L"B", 3, 4);
  copy();
  EXPECT_EQ(content("A"), all("2", "new"));
  EXPECT_EQ(content("B"), all("4", "new"));
}

TEST_F(OverwrittenIfNewer, DoesNotDependOnANamespaceThatIsNewHere) {
  fillBoth(L"A", 1, 2);
  fill(other, L"B", 0, L"first");
  copy();
  EXPECT_EQ(content("A"), all("2", "new"));
  EXPECT_EQ(content("B"), all("0", "first"));
}

TEST_F(OverwrittenIfNewer, StaysDecidedWhenTheRevisionHasBeenOverwritten) {
  fillBoth(L"Common", 3, 4);
  OverwriteIfNewer newer(other);
  ReactorLog log(&newer);
  db->setReactor(&log);
  db->copyAll<PropertyNamespace>(other);
  EXPECT_EQ(content("Common"), (Lines{"4", "Width old", "Load old", "Door old"}));
  db->copyAll(other);
  EXPECT_EQ(content("Common"), all("4", "new"));
  ASSERT_THAT(log.questions(), SizeIs(5)) << "twice about the namespace";
  for (const auto& question : log.questions()) EXPECT_EQ(question.answer, SaveResolution::Overwritten);
}

TEST_F(OverwrittenIfNewer, IsNothingThatTheSourceDoesNotHave) {
  fill(db, L"Common", 3, L"old");
  OverwriteIfNewer fromEmptyFile(other);
  OverwriteIfNewer fromNowhere(nullptr);
  for (OverwriteIfNewer* const newer : {&fromEmptyFile, &fromNowhere}) {
    db->setReactor(newer);
    fill(db, L"Common", 4, L"new");
    EXPECT_EQ(content("Common"), all("3", "old"));
  }
}

TEST_F(OverwrittenIfNewer, IsNoContentOfANamespaceThatWasNotAskedAbout) {
  fillBoth(L"Common", 3, 4);
  IdMapping mapping(db);
  KeepExisting keep;
  db->setReactor(&keep);
  db->copyAll<PropertyNamespace>(other, mapping);
  OverwriteIfNewer newer(other);
  db->setReactor(&newer);
  db->copyAll(other, mapping);
  EXPECT_EQ(content("Common"), all("3", "old"));
}

TEST_F(OverwrittenIfNewer, LeavesAllOtherClassesToTheNextReactor) {
  for (const auto& file : {db, other}) {
    fill(file, L"Common", file == db ? 3 : 4, L"some");
    file->save(EntityType::create(L"Wall"));
    file->save(Story::create(Building::create(Site::create(L"Hill"), L"House"), L"Ground", 0));
  }
  EXPECT_THROW(copy(), ObjectNotUnique);
  KeepExisting keep;
  ReactorLog log(&keep);
  copy(&log);
  std::vector<ObjectType> types;
  for (const auto& question : log.questions()) types.push_back(question.type);
  EXPECT_THAT(types, ElementsAre(ObjectType::Site, ObjectType::Building, ObjectType::Story, ObjectType::EntityType));
}

TEST_F(OverwrittenIfNewer, IsToldWithinTransactionsOfTheHost) {
  fillBoth(L"Common", 3, 4);
  OverwriteIfNewer newer(other);
  db->setReactor(&newer);
  Transaction transaction(db, Transaction::BeginCurrent);
  db->copyAll(other);
  EXPECT_EQ(&Transaction::current(), &transaction);
  transaction.commit();
  EXPECT_EQ(content("Common"), all("4", "new"));
}

}  // namespace
}  // namespace tessel::test
