// Says in which units a project keeps its numbers, and shows one of them in the unit that people want to see.

#include <iostream>

#include <tessel/tessel.h>

using namespace tessel;

namespace {

/// The file keeps a plain number; what it means is said by the unit of its column.
void show(const ProjectDb& db, const Story& story) {
  const auto stored = db.columnUnit(&Story::elevation);
  const auto wanted = db.defaultUnit(L"LENGTH");
  std::cout << story.name().toUtf8() << ": " << story.elevation() << " " << stored->label().toUtf8() << " = "
            << convertUnit(story.elevation(), stored.get(), wanted.get()) << " " << wanted->label().toUtf8() << "\n";
}

}  // namespace

int main() {
  const auto db = ProjectDb::create(L"units.tessel");
  if (!db) return 1;

  // A new file has the measures LENGTH, AREA, VOLUME and MASS. The first default unit of a length becomes the unit of all
  // columns that hold lengths, and stays that for good.
  const auto length = db->get<Measure>(NameKey(L"LENGTH"));
  db->setDefaultUnit(Unit::create(L"mm", 0.001, length));

  Transaction transaction(db, Transaction::BeginCurrent);
  const auto house = db->save(Building::create(db->save(Site::create(L"Harbour")), L"House"));
  const auto story = db->save(Story::create(house, L"First floor", 3048));
  transaction.commit();
  show(*db, *story);

  // A later one is for display only: the number in the file does not change.
  db->setDefaultUnit(Unit::create(L"ft", 0.3048, length));
  show(*db, *story);

  // A square metre is no length.
  const auto squareMetre = Unit::create(L"m^2", 1, db->get<Measure>(NameKey(L"AREA")));
  try {
    convertUnit(1, squareMetre.get(), db->defaultUnit(L"LENGTH").get());
  } catch (const InvalidUnitConversion& error) {
    std::cout << OdString(error.what()).toUtf8() << "\n";
  }
  std::cout << formatUnitString(squareMetre->label()).toUtf8() << "\n";
}
