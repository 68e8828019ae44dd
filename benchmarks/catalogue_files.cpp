#include "catalogue_files.h"

#include "library.h"

namespace tessel::benchmarks {
namespace {

void writeCatalogue(const std::string& path) {
  const auto db = ProjectDb::create(OdString::fromUtf8(path));
  db->save(PropertyNamespace::create(u"Common"));
  db->save(EntityType::create(u"Wall"));
  db->save(Unit::create(u"m", 1, db->get<Measure>(NameKey(u"LENGTH"))));
}

}  // namespace

CatalogueFiles::CatalogueFiles(int setCount) : folder_(inMemory()), setCount_(setCount) {
  writeCatalogue(withoutSets());
  LibraryFile(copied(withoutSets(), withSets())).saveSets(setTexts<OdString>(setCount, definitionsOfEach));
}

}  // namespace tessel::benchmarks
