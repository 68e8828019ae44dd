#include "yardstick.h"

#include "catalogue_files.h"
#include "yardstick_copy.h"
#include "yardstick_import.h"

namespace tessel::benchmarks {
namespace {

constexpr yardstick::PropertyType singleDouble{1, 10, 0};

template <typename Record>
std::shared_ptr<Record> withId(unsigned int id) {
  auto record = std::make_shared<Record>();
  record->id = id;
  return record;
}

/// Makes definitions of the sets that the work is about.
class DefinitionMaker {
public:
  std::shared_ptr<yardstick::Definition> make(const std::string& name) const {
    auto definition = std::make_shared<yardstick::Definition>();
    definition->name = name;
    definition->unit = unit;
    definition->type = singleDouble;
    definition->ns = ns;
    return definition;
  }

  const std::shared_ptr<yardstick::Namespace> ns = withId<yardstick::Namespace>(CatalogueFiles::propertyNamespace);
  const std::shared_ptr<yardstick::Unit> unit = withId<yardstick::Unit>(CatalogueFiles::unit);
};

}  // namespace

void YardstickFile::saveStories(unsigned int building, const std::vector<Text>& names) {
  const auto owner = withId<Building>(building);
  Transaction transaction(*this);
  double elevation = 0;
  for (const Text& name : names) {
    Story story;
    story.building = owner;
    story.name = name;
    story.elevation = elevation += 3;
    tables_.spatial.insert(story);
  }
  transaction.commit();
}

void YardstickFile::saveSets(const std::vector<SetTexts<Text>>& texts) {
  const DefinitionMaker maker;
  const auto entityType = withId<yardstick::EntityType>(CatalogueFiles::entityType);
  Transaction transaction(*this);
  for (const SetTexts<Text>& text : texts) {
    Set set;
    set.ns = maker.ns;
    set.name = text.name;
    set.label = text.label;
    for (const Text& name : text.definitions) set.property_definitions.push_back(maker.make(name));
    set.entity_types.push_back(entityType);
    tables_.catalogue.insert(set);
  }
  transaction.commit();
}

void YardstickFile::changeSets(std::vector<Set>& sets, const std::vector<SetTexts<Text>>& texts) {
  const DefinitionMaker maker;
  Transaction transaction(*this);
  auto text = texts.begin();
  for (Set& set : sets) {
    set.label = text->label;
    set.property_definitions.front() = maker.make(text->definitions.front());
    tables_.catalogue.update(set);
    ++text;
  }
  transaction.commit();
}

void YardstickFile::importDocument(const pugi::xml_node& root) {
  Transaction transaction(*this);
  yardstick::Import(tables_).run(root);
  transaction.commit();
}

void YardstickFile::copyAll(YardstickFile& source) {
  Transaction transaction(*this);
  yardstick::Copy(tables_, source.tables_).run();
  transaction.commit();
}

YardstickFile::Unit YardstickFile::defaultLengthUnit() {
  static const std::string length = "LENGTH";
  return std::move(*tables_.units.defaultUnit(length));
}

YardstickFile::Unit YardstickFile::elevationUnit() {
  static const std::string table = "Story", column = "elevation";
  return std::move(*tables_.units.keptColumnUnit(table, column));
}

void YardstickFile::removeStory(unsigned int id) {
  Transaction transaction(*this);
  tables_.spatial.removeStory(id);
  transaction.commit();
}

}  // namespace tessel::benchmarks
