#include <algorithm>
#include <iostream>
#include <map>
#include <utility>
#include <vector>

#include <tessel/unit_conversion.h>
#include <tessel/units.h>

#include "arguments.h"
#include "columns.h"
#include "command.h"
#include "json_output.h"
#include "project_file.h"
#include "suggestion.h"
#include "table.h"
#include "terminal.h"
#include "text.h"

namespace tessel::tool {
namespace {

using Dimensions = std::vector<std::pair<const char*, short>>;

Dimensions dimensionsOf(const Measure& measure) {
  return {
    {"length", measure.length()},
    {"mass", measure.mass()},
    {"time", measure.time()},
    {"temperature", measure.thermodynamic_temperature()},
    {"electric current", measure.electric_current()},
    {"luminous intensity", measure.luminous_intensity()},
    {"amount of substance", measure.amount_of_substance()},
  };
}

/// "length 2, mass -1", or "no dimension".
std::string dimensionsText(const Measure& measure) {
  std::string text;
  for (const auto& [name, exponent] : dimensionsOf(measure)) {
    if (exponent != 0) text += (text.empty() ? "" : ", ") + std::string(name) + " " + std::to_string(exponent);
  }
  return text.empty() ? "no dimension" : text;
}

using ColumnsByUnit = std::map<unsigned int, std::vector<std::string>>;

/// The columns whose numbers are kept in each unit.
ColumnsByUnit columnsByUnit(const ProjectDb& db) {
  ColumnsByUnit columns;
  forEachColumn([&](const char* name, auto getter) {
    if (const auto unit = db.columnUnit(getter)) columns[unit->id()].emplace_back(name);
  });
  return columns;
}

Cells cellsOf(const Unit& unit, bool isDefault) {
  return {printable(formatUnitString(unit.label())), unit.has_name() ? printable(unit.name()) : "",
          numberText(unit.scale()), isDefault ? "default" : ""};
}

std::vector<TsSmartPtr<Measure>> measuresOf(const ProjectDb& db) {
  std::vector<TsSmartPtr<Measure>> measures;
  db.get(measures);
  return measures;
}

/// Calls `body(unit, isDefault)` for each unit of the measure.
template <typename Body>
void forEachUnit(const ProjectDb& db, const Measure& measure, Body body) {
  const auto standard = db.defaultUnit(measure.name());
  UnitCriteria ofMeasure;
  ofMeasure.measure_id = measure.id();
  std::vector<TsSmartPtr<Unit>> units;
  db.get(units, ofMeasure);
  for (const auto& unit : units) {
    body(*unit, standard && standard->id() == unit->id());
  }
}

void printUnits(const ProjectDb& db, const Measure& measure, ColumnsByUnit& columns) {
  constexpr std::size_t scale = 2;
  Table table = {{}, false, {scale}};
  std::vector<unsigned int> ids;
  forEachUnit(db, measure, [&](const Unit& unit, bool isDefault) {
    table.rows.push_back(cellsOf(unit, isDefault));
    ids.push_back(unit.id());
  });
  const std::vector<std::string> lines = linesOf(table, "  ");
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::cout << lines[i] << "\n";
    for (const std::string& column : columns[ids[i]]) {
      std::cout << "      keeps " << column << "\n";
    }
  }
}

void printText(const ProjectDb& db) {
  ColumnsByUnit columns = columnsByUnit(db);
  for (const auto& measure : measuresOf(db)) {
    const std::string heading =
      fittedLine(Stream::Out, "", printable(measure->name()), " (" + dimensionsText(*measure) + ")");
    std::cout << styled(Stream::Out, Style::Heading, heading) << "\n";
    printUnits(db, *measure, columns);
  }
}

JsonObject jsonOf(const Unit& unit, bool isDefault, const std::vector<std::string>& columns) {
  JsonArray names;
  for (const std::string& column : columns) {
    names.add(column);
  }
  JsonObject out;
  out.number("id", unit.id()).text("label", unit.label().toUtf8());
  if (unit.has_name()) out.text("name", unit.name().toUtf8());
  return out.real("scale", unit.scale()).boolean("default", isDefault).array("columns", names);
}

JsonObject jsonOf(const Dimensions& dimensions) {
  JsonObject out;
  for (const auto& [name, exponent] : dimensions) {
    std::string key = name;
    std::replace(key.begin(), key.end(), ' ', '_');
    out.number(key, exponent);
  }
  return out;
}

void printJson(const ProjectDb& db) {
  ColumnsByUnit columns = columnsByUnit(db);
  JsonArray out;
  for (const auto& measure : measuresOf(db)) {
    JsonArray units;
    forEachUnit(db, *measure,
                [&](const Unit& unit, bool isDefault) { units.add(jsonOf(unit, isDefault, columns[unit.id()])); });
    JsonObject row;
    row.number("id", measure->id()).text("name", measure->name().toUtf8());
    out.add(row.object("dimensions", jsonOf(dimensionsOf(*measure))).array("units", units));
  }
  std::cout << out.str() << "\n";
}

ExitStatus run(const Words& words) {
  const Arguments arguments(words, {{"--json"}});
  const auto db = openProject(arguments.onlyOperand(), true);
  onFile(arguments.onlyOperand(), [&] { arguments.has("--json") ? printJson(*db) : printText(*db); });
  return ExitStatus::Done;
}

/// People also call a unit by its label.
std::string nameMeantBy(const ProjectDb& db, const std::string& wrong) {
  std::vector<TsSmartPtr<Unit>> units;
  db.get(units);
  std::vector<std::string> names;
  for (const auto& unit : units) {
    if (!unit->has_name()) continue;
    if (unit->label().toUtf8() == wrong) return "did you mean '" + unit->name().toUtf8() + "'?";
    names.push_back(unit->name().toUtf8());
  }
  return suggestion(wrong, names);
}

[[noreturn]] void refuseUnit(const ProjectDb& db, const std::string& name) {
  const std::string meant = nameMeantBy(db, name);
  throw Failure("there is no unit '" + name + "'; " +
                (meant.empty() ? "'tessel units' lists those that have a name" : meant));
}

ExitStatus runSetDefault(const Words& words) {
  const Arguments arguments(words, {});
  if (arguments.operands().size() != 2) throw UsageError("a project file and the name of a unit are needed");
  const std::string& file = arguments.operands()[0];
  const std::string& name = arguments.operands()[1];
  const auto db = openForWriting(file, "changed");
  onFile(file, [&] {
    const auto unit = db->get<Unit>(NameKey(OdString::fromUtf8(name)));
    if (!unit) refuseUnit(*db, name);
    db->setDefaultUnit(unit);
    std::cout << "The default unit of " << printable(unit->measure()->name()) << " is " << printable(name) << ".\n";
  });
  return ExitStatus::Done;
}

}  // namespace

const Command unitsCommand = {
  "units",
  "[--json] FILE",
  "list measures and their units",
  R"(
Prints each measure with the exponents of its dimensions and below it its units:
label, name, and the factor that takes a number to the measure's base unit. The
default unit is marked, and the columns whose numbers are kept in a unit stand
below it. A file of an older version is brought up to date first.

  --json   print it as one JSON array on one line, with the ids of the objects
)",
  run,
};

const Command setDefaultUnitCommand = {
  "set-default-unit",
  "FILE UNITNAME",
  "make a unit the default of its measure",
  R"(
The first default unit of LENGTH or AREA in a file also becomes the unit in
which the numbers of its columns are kept, for good. No number is converted.
)",
  runSetDefault,
};

}  // namespace tessel::tool
