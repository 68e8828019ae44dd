#pragma once

#include <map>
#include <string>
#include <utility>

#include <pugixml.hpp>

#include "yardstick_tables.h"

namespace tessel::benchmarks::yardstick {

/// Reads a document with the elements and fields that `projectDocument` writes, and no others, in the transaction of the
/// caller. Each object is looked for where the rules of the document say so, and saved as it is read.
class Import {
public:
  explicit Import(Tables& tables) : tables_(tables) {}

  void run(const pugi::xml_node& root);

private:
  void importUnit(const pugi::xml_node& element);
  void importEntityType(const pugi::xml_node& element);
  void importNamespace(const pugi::xml_node& element);
  void importSet(const pugi::xml_node& element);
  void importSite(const pugi::xml_node& element);
  void importBuilding(const pugi::xml_node& element);
  void importStory(const pugi::xml_node& element);

  std::shared_ptr<Definition> definitionOf(const pugi::xml_node& element, const std::shared_ptr<Namespace>& ns);

  /// What an element with an "id" has become, for those that refer to it later.
  void remember(const pugi::xml_node& element, const char* type, unsigned int row);
  unsigned int rowOf(const pugi::xml_node& reference, const char* type) const;

  Tables& tables_;
  std::map<std::pair<std::string, unsigned int>, unsigned int> rows_;
};

}  // namespace tessel::benchmarks::yardstick
