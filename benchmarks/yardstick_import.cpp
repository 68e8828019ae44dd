#include "yardstick_import.h"

#include <cwchar>

namespace tessel::benchmarks::yardstick {
namespace {

Text textOf(const pugi::xml_node& element, const wchar_t* key) { return pugi::as_utf8(element.child_value(key)); }

OptionalText optionalTextOf(const pugi::xml_node& element, const wchar_t* key) {
  const pugi::xml_node child = element.child(key);
  return child ? OptionalText(pugi::as_utf8(child.child_value())) : std::nullopt;
}

double numberOf(const pugi::xml_node& element, const wchar_t* key, double otherwise) {
  return element.child(key).text().as_double(otherwise);
}

Text nameIn(const pugi::xml_node& reference) { return pugi::as_utf8(reference.attribute(L"name").value()); }

bool isNamed(const pugi::xml_node& element, const wchar_t* name) { return std::wcscmp(element.name(), name) == 0; }

/// Of the words for a type only those that the document has.
PropertyType typeOf(const pugi::xml_node& element) {
  if (std::wcscmp(element.child_value(L"type"), L"Double") != 0) throw std::runtime_error("unknown type");
  return {1, 10, 0};
}

}  // namespace

void Import::run(const pugi::xml_node& root) {
  for (const pugi::xml_node& element : root.children()) {
    if (isNamed(element, L"story")) {
      importStory(element);
    } else if (isNamed(element, L"building")) {
      importBuilding(element);
    } else if (isNamed(element, L"site")) {
      importSite(element);
    } else if (isNamed(element, L"entitytype")) {
      importEntityType(element);
    } else if (isNamed(element, L"propertyset")) {
      importSet(element);
    } else if (isNamed(element, L"propertynamespace")) {
      importNamespace(element);
    } else if (isNamed(element, L"unit")) {
      importUnit(element);
    } else {
      throw std::runtime_error("unknown element");
    }
  }
}

void Import::importUnit(const pugi::xml_node& element) {
  Unit unit;
  unit.name = textOf(element, L"name");
  unit.label = textOf(element, L"label");
  unit.scale = numberOf(element, L"scale", 1);
  unit.measure = tables_.units.measureNamed(nameIn(element.child(L"measure")));
  tables_.units.insert(unit);
}

void Import::importEntityType(const pugi::xml_node& element) {
  EntityType type;
  type.name = textOf(element, L"name");
  tables_.catalogue.insert(type);
}

void Import::importNamespace(const pugi::xml_node& element) {
  Namespace ns;
  ns.name = textOf(element, L"name");
  ns.label = optionalTextOf(element, L"label");
  tables_.catalogue.insert(ns);
}

/// The namespace is looked up twice: to find a set that is there already, and as a field of the set.
void Import::importSet(const pugi::xml_node& element) {
  const pugi::xml_node reference = element.child(L"namespace");
  PropertySet set;
  set.name = textOf(element, L"name");
  if (tables_.catalogue.hasSet(set.name, tables_.catalogue.namespaceNamed(nameIn(reference))->id)) {
    throw std::runtime_error("the document is meant for a file without sets");
  }
  set.ns = tables_.catalogue.namespaceNamed(nameIn(reference));
  set.label = optionalTextOf(element, L"label");
  for (const pugi::xml_node& member : element.children(L"property_definition")) {
    set.property_definitions.push_back(definitionOf(member, set.ns));
  }
  for (const pugi::xml_node& member : element.children(L"entity_type")) {
    set.entity_types.push_back(tables_.catalogue.entityTypeNamed(nameIn(member)));
  }
  tables_.catalogue.insert(set);
}

std::shared_ptr<Definition> Import::definitionOf(const pugi::xml_node& element, const std::shared_ptr<Namespace>& ns) {
  auto definition = std::make_shared<Definition>();
  definition->name = textOf(element, L"name");
  definition->unit = tables_.units.unitNamed(nameIn(element.child(L"unit")));
  definition->ifc_name = optionalTextOf(element, L"ifc_name");
  definition->type = typeOf(element);
  definition->ns = ns;
  return definition;
}

void Import::importSite(const pugi::xml_node& element) {
  Site site;
  site.name = textOf(element, L"name");
  tables_.spatial.insert(site);
  remember(element, "site", site.id);
}

void Import::importBuilding(const pugi::xml_node& element) {
  Building building;
  building.site = tables_.spatial.site(rowOf(element.child(L"site"), "site"));
  building.name = textOf(element, L"name");
  tables_.spatial.insert(building);
  remember(element, "building", building.id);
}

void Import::importStory(const pugi::xml_node& element) {
  Story story;
  story.building = tables_.spatial.building(rowOf(element.child(L"building"), "building"));
  story.name = textOf(element, L"name");
  story.elevation = numberOf(element, L"elevation", 0);
  tables_.spatial.insert(story);
}

void Import::remember(const pugi::xml_node& element, const char* type, unsigned int row) {
  rows_[{type, element.attribute(L"id").as_uint()}] = row;
}

unsigned int Import::rowOf(const pugi::xml_node& reference, const char* type) const {
  return rows_.at({type, reference.attribute(L"id").as_uint()});
}

}  // namespace tessel::benchmarks::yardstick
