#include <algorithm>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include <tessel/definitions.h>
#include <tessel/property_set.h>
#include <tessel/type_words.h>
#include <tessel/unit_conversion.h>
#include <tessel/units.h>

#include "arguments.h"
#include "command.h"
#include "json_output.h"
#include "project_file.h"
#include "table.h"
#include "terminal.h"
#include "text.h"

namespace tessel::tool {
namespace {

/// Which part of the catalogue to show.
struct Selection {
  explicit Selection(const Arguments& arguments)
      : namespaceName(arguments.value("--namespace")), setName(arguments.value("--set")) {
    if (namespaceName) namespaces.name.equals(OdString::fromUtf8(*namespaceName));
    if (setName) sets.equals(OdString::fromUtf8(*setName));
  }

  std::optional<std::string> namespaceName;
  std::optional<std::string> setName;
  NameCriteria namespaces;
  StringCriteria sets;
};

/// A namespace and those of its sets that are to be shown.
struct Entry {
  TsSmartPtr<PropertyNamespace> ns;
  std::vector<TsSmartPtr<PropertySet>> sets;
};

/// "Double", "Array of String", "Map from String to Double".
std::string typeText(const PropertyType& type) {
  const std::string value = wordOf(type.value_type).toUtf8();
  switch (type.structure) {
  case PropertyType::Structure::Single:
    return value;
  case PropertyType::Structure::Array:
    return "Array of " + value;
  case PropertyType::Structure::Map:
    return "Map from " + wordOf(type.key_type).toUtf8() + " to " + value;
  case PropertyType::Structure::Undefined:
    break;
  }
  return "undefined";
}

std::string ifcTypeText(const AbstractDefinition& definition) {
  return definition.has_ifc_type() ? wordOf(definition.ifc_type()).toUtf8() : "";
}

std::string unitText(const AbstractDefinition& definition) {
  return definition.unit() ? printable(formatUnitString(definition.unit()->label())) : "";
}

/// What is asked for by a name that does not exist was most likely mistyped.
void requireFound(const std::vector<Entry>& entries, const Selection& selection) {
  if (selection.namespaceName && entries.empty()) {
    throw Failure("there is no namespace '" + *selection.namespaceName + "'");
  }
  const bool anySet = std::any_of(entries.begin(), entries.end(), [](const Entry& e) { return !e.sets.empty(); });
  if (!selection.setName || anySet) return;
  throw Failure("there is no set '" + *selection.setName + "'" +
                (selection.namespaceName ? " in the namespace '" + *selection.namespaceName + "'" : ""));
}

std::vector<Entry> entriesOf(const ProjectDb& db, const Selection& selection) {
  std::vector<TsSmartPtr<PropertyNamespace>> namespaces;
  db.get(namespaces, selection.namespaces);
  std::vector<Entry> entries;
  for (const auto& ns : namespaces) {
    entries.push_back({ns, {}});
    db.get(entries.back().sets, PropertySetCriteria{selection.sets, ns->id()});
  }
  requireFound(entries, selection);
  return entries;
}

Cells cellsOf(const AbstractDefinition& definition) {
  const bool otherName = definition.has_ifc_name() && definition.ifc_name() != definition.name();
  return {printable(definition.name()), typeText(definition.type()), unitText(definition),
          otherName ? printable(definition.ifc_name()) : "", ifcTypeText(definition)};
}

std::string headingOf(const PropertySet& set) {
  std::string name = "  " + printable(set.name());
  if (set.has_ifc_name() && set.ifc_name() != set.name()) name += " = " + printable(set.ifc_name());
  if (set.per_instance()) name += " (per instance)";
  std::string types;
  for (const auto& type : set.entity_types()) {
    types += (types.empty() ? "" : ", ") + printable(type->name());
  }
  return types.empty() ? name : fittedLine(Stream::Out, name + ": ", types);
}

void printSet(const PropertySet& set) {
  std::cout << styled(Stream::Out, Style::Heading, headingOf(set)) << "\n";
  Table table;
  for (const auto& definition : set.property_definitions()) {
    table.rows.push_back(cellsOf(*definition));
  }
  for (const auto& definition : set.value_definitions()) {
    table.rows.push_back(cellsOf(*definition));
    table.rows.back().push_back("(value)");
  }
  printTable(table, "    ");
}

void printText(const std::vector<Entry>& entries) {
  for (const auto& [ns, setsOfNamespace] : entries) {
    const std::string revision = " (revision " + std::to_string(ns->revision()) + ")";
    const std::string heading = fittedLine(Stream::Out, "namespace ", printable(ns->name()), revision);
    std::cout << styled(Stream::Out, Style::Heading, heading) << "\n";
    for (const auto& set : setsOfNamespace) {
      printSet(*set);
    }
  }
}

JsonObject jsonOf(const AbstractDefinition& definition) {
  JsonObject out;
  out.text("name", definition.name().toUtf8()).text("type", typeText(definition.type()));
  if (definition.unit()) out.text("unit", definition.unit()->label().toUtf8());
  if (definition.has_ifc_name()) out.text("ifc_name", definition.ifc_name().toUtf8());
  if (definition.has_ifc_type()) out.text("ifc_type", ifcTypeText(definition));
  return out.number("id", definition.id());
}

template <typename Definitions>
JsonArray jsonOfAll(const Definitions& definitions) {
  JsonArray out;
  for (const auto& definition : definitions) {
    out.add(jsonOf(*definition));
  }
  return out;
}

JsonObject jsonOf(const PropertySet& set) {
  JsonArray types;
  for (const auto& type : set.entity_types()) {
    types.add(type->name().toUtf8());
  }
  JsonObject out;
  out.text("name", set.name().toUtf8());
  if (set.has_ifc_name()) out.text("ifc_name", set.ifc_name().toUtf8());
  out.boolean("per_instance", set.per_instance()).array("entity_types", types);
  out.array("property_definitions", jsonOfAll(set.property_definitions()));
  return out.array("value_definitions", jsonOfAll(set.value_definitions())).number("id", set.id());
}

void printJson(const std::vector<Entry>& entries) {
  JsonArray out;
  for (const auto& [ns, setsOfNamespace] : entries) {
    JsonArray sets;
    for (const auto& set : setsOfNamespace) {
      sets.add(jsonOf(*set));
    }
    JsonObject row;
    row.text("name", ns->name().toUtf8()).number("revision", ns->revision()).array("sets", sets).number("id", ns->id());
    out.add(row);
  }
  std::cout << out.str() << "\n";
}

ExitStatus run(const Words& words) {
  const Arguments arguments(words, {{"--namespace", true}, {"--set", true}, {"--json"}});
  const Selection selection(arguments);
  const auto db = openProject(arguments.onlyOperand(), true);
  onFile(arguments.onlyOperand(), [&] {
    const std::vector<Entry> entries = entriesOf(*db, selection);
    arguments.has("--json") ? printJson(entries) : printText(entries);
  });
  return ExitStatus::Done;
}

}  // namespace

const Command catalogueCommand = {
  "catalogue",
  "[--namespace NAME] [--set NAME] [--json] FILE",
  "list property sets and their definitions",
  R"(
Prints each namespace, its sets with the entity types that they apply to, and
the definitions in each set: name, type, unit, IFC name where it is another one,
and IFC type. A name that does not exist is an error. A file of an older version
is brought up to date first.

  --namespace NAME   this namespace only
  --set NAME         sets of this name only
  --json             print it as one JSON array on one line, with the ids of the
                     objects
)",
  run,
};

}  // namespace tessel::tool
