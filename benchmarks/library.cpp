#include "library.h"

#include <stdexcept>

#include <tessel/project_db_import.h>

#include "catalogue_files.h"

namespace tessel::benchmarks {
namespace {

std::shared_ptr<ProjectDb> opened(std::shared_ptr<ProjectDb> db) {
  if (!db) throw std::runtime_error("the project file was refused");
  return db;
}

/// Makes definitions of the sets that the work is about.
class DefinitionMaker {
public:
  explicit DefinitionMaker(ProjectDb& db)
      : ns(db.get<PropertyNamespace>(CatalogueFiles::propertyNamespace)), unit(db.get<Unit>(CatalogueFiles::unit)) {}

  TsSmartPtr<const PropertyDefinition> make(const OdString& name) const {
    const auto definition = PropertyDefinition::create(ns, name, PropertyType::Single(PropertyType::Type::Double));
    definition->set_unit(unit);
    return definition;
  }

  const TsSmartPtr<const PropertyNamespace> ns;
  const TsSmartPtr<const Unit> unit;
};

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

void LibraryFile::saveSets(const std::vector<SetTexts<Text>>& texts) {
  const DefinitionMaker maker(*db_);
  const TsSmartPtr<const EntityType> entityType = db_->get<EntityType>(CatalogueFiles::entityType);
  Transaction transaction(*this);
  for (const SetTexts<Text>& text : texts) {
    const auto set = PropertySet::create(maker.ns, text.name);
    set->set_label(text.label);
    for (const Text& name : text.definitions) set->append_property_definition(maker.make(name));
    set->insert_entity_type(entityType);
    db_->save(set);
  }
  transaction.commit();
}

void LibraryFile::changeSets(std::vector<Set>& sets, const std::vector<SetTexts<Text>>& texts) {
  const DefinitionMaker maker(*db_);
  Transaction transaction(*this);
  auto text = texts.begin();
  for (const Set& set : sets) {
    set->set_label(text->label);
    const auto place = set->remove_property_definition(set->property_definitions().begin());
    set->insert_property_definition(place, maker.make(text->definitions.front()));
    db_->save(set);
    ++text;
  }
  transaction.commit();
}

void LibraryFile::importDocument(const pugi::xml_node& root) {
  ImportMessages messages;
  ProjectDb::ImportOptions options;
  options.messageHandler = messages.handler();
  db_->importFromXml(root, options);
  if (!messages.all().empty()) throw std::runtime_error(messages.all().front().text.toUtf8());
}

void LibraryFile::copyAll(LibraryFile& source) { db_->copyAll(source.db_); }

std::vector<LibraryFile::Story> LibraryFile::stories() {
  std::vector<Story> result;
  db_->get(result);
  return result;
}

std::vector<LibraryFile::Set> LibraryFile::sets() {
  std::vector<Set> result;
  db_->get(result);
  return result;
}

LibraryFile::Story LibraryFile::story(unsigned int id) { return db_->get<tessel::Story>(id); }

LibraryFile::Story LibraryFile::story(const Text& name, unsigned int building) {
  return db_->get<tessel::Story>(NameObjectKey<Building>(name, building));
}

LibraryFile::Site LibraryFile::site(const Text& name) { return db_->get<tessel::Site>(NameKey(name)); }

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
