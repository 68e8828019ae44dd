#include <iostream>
#include <map>
#include <utility>
#include <vector>

#include <tessel/unit_conversion.h>
#include <tessel/units.h>

#include "arguments.h"
#include "columns.h"
#include "command.h"
#include "project_file.h"
#include "text.h"

namespace tessel::tool {
namespace {

/// "length 2, mass -1", or "no dimension".
std::string dimensionsOf(const Measure& measure) {
  const std::pair<const char*, short> exponents[] = {
    {"length", measure.length()},
    {"mass", measure.mass()},
    {"time", measure.time()},
    {"temperature", measure.thermodynamic_temperature()},
    {"electric current", measure.electric_current()},
    {"luminous intensity", measure.luminous_intensity()},
    {"amount of substance", measure.amount_of_substance()},
  };
  std::string text;
  for (const auto& [name, exponent] : exponents) {
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

void printUnit(const Unit& unit, bool isDefault, const std::vector<std::string>& columns) {
  std::cout << "  " << printable(formatUnitString(unit.label()));
  if (unit.has_name()) std::cout << "  " << printable(unit.name());
  std::cout << "  " << numberText(unit.scale()) << (isDefault ? "  default" : "") << "\n";
  for (const std::string& column : columns) {
    std::cout << "      keeps " << column << "\n";
  }
}

void printMeasure(const ProjectDb& db, const Measure& measure, ColumnsByUnit& columns) {
  std::cout << printable(measure.name()) << " (" << dimensionsOf(measure) << ")\n";
  const auto standard = db.defaultUnit(measure.name());
  UnitCriteria ofMeasure;
  ofMeasure.measure_id = measure.id();
  std::vector<TsSmartPtr<Unit>> units;
  db.get(units, ofMeasure);
  for (const auto& unit : units) {
    printUnit(*unit, standard && standard->id() == unit->id(), columns[unit->id()]);
  }
}

void printUnits(const ProjectDb& db) {
  ColumnsByUnit columns = columnsByUnit(db);
  std::vector<TsSmartPtr<Measure>> measures;
  db.get(measures);
  for (const auto& measure : measures) {
    printMeasure(db, *measure, columns);
  }
}

ExitStatus run(const Words& words) {
  const Arguments arguments(words, {});
  const auto db = openProject(arguments.onlyOperand(), true);
  onFile(arguments.onlyOperand(), [&] { printUnits(*db); });
  return ExitStatus::Done;
}

ExitStatus runSetDefault(const Words& words) {
  const Arguments arguments(words, {});
  if (arguments.operands().size() != 2) throw UsageError("a project file and the name of a unit are needed");
  const std::string& file = arguments.operands()[0];
  const std::string& name = arguments.operands()[1];
  const auto db = openForWriting(file);
  onFile(file, [&] {
    const auto unit = db->get<Unit>(NameKey(OdString::fromUtf8(name)));
    if (!unit) throw Failure("there is no unit '" + name + "'; 'tessel units' lists those that have a name");
    db->setDefaultUnit(unit);
    std::cout << "The default unit of " << printable(unit->measure()->name()) << " is " << printable(name) << ".\n";
  });
  return ExitStatus::Done;
}

}  // namespace

const Command unitsCommand = {
  "units", "FILE", "list measures and their units",
  R"(
Prints each measure with the exponents of its dimensions and below it its units:
label, name, and the factor that takes a number to the measure's base unit. The
default unit is marked, and the columns whose numbers are kept in a unit stand
below it. A file of an older version is brought up to date first.
)",     run,
};

const Command setDefaultUnitCommand = {
  "set-default-unit",
  "FILE UNITNAME",
  "make a unit the default of its measure",
  R"(
The first default unit of LENGTH or AREA in a file also becomes the unit in which
the numbers of its columns are kept, for good. No number is converted.
)",
  runSetDefault,
};

}  // namespace tessel::tool
