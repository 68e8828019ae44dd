#include "library.h"

#include <stdexcept>

namespace tessel::benchmarks {
namespace {

std::shared_ptr<ProjectDb> opened(std::shared_ptr<ProjectDb> db) {
  if (!db) throw std::runtime_error("the project file was refused");
  return db;
}

}  // namespace

void LibraryFile::create(const std::string& path) { opened(ProjectDb::create(OdString::fromUtf8(path))); }
void LibraryFile::open(const std::string& path) { opened(ProjectDb::open(OdString::fromUtf8(path), false)); }

LibraryFile::LibraryFile(const std::string& path) : db_(opened(ProjectDb::open(OdString::fromUtf8(path), false))) {}

void LibraryFile::saveStories(unsigned int building, const std::vector<Text>& names) {
  const TsSmartPtr<const Building> owner = db_->get<Building>(building);
  Transaction transaction(*this);
  double elevation = 0;
  for (const Text& name : names) db_->save(tessel::Story::create(owner, name, elevation += 3));
  transaction.commit();
}

std::vector<LibraryFile::Story> LibraryFile::stories() {
  std::vector<Story> result;
  db_->get(result);
  return result;
}

LibraryFile::Story LibraryFile::story(unsigned int id) { return db_->get<tessel::Story>(id); }

LibraryFile::Story LibraryFile::story(const Text& name, unsigned int building) {
  return db_->get<tessel::Story>(NameObjectKey<Building>(name, building));
}

LibraryFile::Unit LibraryFile::defaultLengthUnit() {
  static const OdString length = u"LENGTH";
  return db_->defaultUnit(length);
}

LibraryFile::Unit LibraryFile::elevationUnit() { return db_->columnUnit(&tessel::Story::elevation); }

void LibraryFile::removeStory(unsigned int id) {
  if (db_->remove<tessel::Story>(id).outcome != RemoveResult::Removed)
    throw std::runtime_error("a story was not removed");
}

}  // namespace tessel::benchmarks
