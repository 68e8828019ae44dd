// Merges the file of one office into that of another. Both work on the same site, each in its own units, and each has
// called a building "House". The drawings of the office in the west refer to stories by their ids in its file; these
// are translated to the ids in the merged file.

#include <iostream>
#include <map>
#include <string>

#include <tessel/tessel.h>

using namespace tessel;

namespace {

class MergeDecisions : public ProjectDb::Reactor {
public:
  SaveResolution onNameNotUnique(ObjectInfo& info) override {
    // The site is one and the same, so what the others know of it is not needed.
    if (info.objectType() == ObjectType::Site) return SaveResolution::Kept;
    // But two buildings of one name are two buildings. The stories of the renamed one then clash with nothing.
    if (info.objectType() == ObjectType::Building && info.setName(info.name() + L" (west)")) {
      return SaveResolution::Renamed;
    }
    // Better no merge than a wrong one: this throws, and the merge leaves nothing in the file.
    return Reactor::onNameNotUnique(info);
  }
};

std::shared_ptr<ProjectDb> makeOffice(const OdString& path, const TsSmartPtr<Unit>& unit, double storyHeight) {
  auto db = ProjectDb::create(path);
  if (!db) return {};
  db->setDefaultUnit(unit);
  const auto house = Building::create(Site::create(L"Harbour"), L"House");
  db->save(Story::create(house, L"Ground", 0));
  db->save(Story::create(house, L"First", storyHeight));
  return db;
}

void merge(ProjectDb& destination, const std::shared_ptr<const ProjectDb>& source, IdMapping& mapping) {
  // Several copies are one step only in a transaction of the host.
  Transaction transaction(destination.shared_from_this(), Transaction::BeginCurrent);
  // Class by class, because a copy of everything would copy the default units, too, and end with an exception: the
  // destination has its own. With one mapping nothing is copied twice, although a story brings its building along.
  destination.copyAll<Story>(source, mapping);
  destination.copyAll<Building>(source, mapping);
  destination.copyAll<Site>(source, mapping);
  transaction.commit();
}

/// A copy says nothing of objects whose numbers it could not convert.
bool isComplete(const ProjectDb& source, const ProjectDb& destination, const IdMapping& mapping) {
  for (const LeftBehind& object : leftBehind(source, destination, mapping)) {
    const ObjectType type = object.key.type;
    if (type == ObjectType::Story || type == ObjectType::Building || type == ObjectType::Site) return false;
  }
  return true;
}

}  // namespace

int main() {
  const auto length = Measure::create(L"LENGTH", 1, 0, 0, 0, 0, 0, 0);
  MergeDecisions decisions;
  const auto east = makeOffice(L"east.tessel", Unit::create(L"m", 1.0, length), 3);
  const auto west = makeOffice(L"west.tessel", Unit::create(L"mm", 0.001, length), 2800);
  if (!east || !west) return 1;

  std::map<std::string, unsigned int> storyOfDrawing;
  std::vector<TsSmartPtr<Story>> stories;
  west->get(stories);
  for (const auto& story : stories) storyOfDrawing["Plan of " + story->name().toUtf8()] = story->id();

  IdMapping mapping(east);
  east->setReactor(&decisions);
  merge(*east, west, mapping);
  east->setReactor(nullptr);
  std::cout << (isComplete(*west, *east, mapping) ? "All stories came along.\n" : "Some things stayed behind.\n");

  for (const auto& [drawing, oldId] : storyOfDrawing) {
    // The source is part of the key: ids of different files are alike.
    IdMapping::Value merged;
    if (!mapping.get({ObjectType::Story, oldId, west.get()}, merged)) continue;
    const auto story = east->get<Story>(merged.id);
    std::cout << drawing << ": story " << oldId << " is now " << merged.id << ", \"" << story->name().toUtf8()
              << "\" of \"" << story->building()->name().toUtf8() << "\" at " << story->elevation() << " m\n";
  }
}
