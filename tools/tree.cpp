#include <algorithm>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include <tessel/project.h>
#include <tessel/spatial.h>
#include <tessel/unit_conversion.h>
#include <tessel/units.h>

#include "arguments.h"
#include "command.h"
#include "json_output.h"
#include "project_file.h"
#include "terminal.h"
#include "text.h"

namespace tessel::tool {
namespace {

constexpr const char* emptyTree = "(no site)";

/// The unit of a column, to stand behind its numbers.
template <typename T>
std::string unitSuffix(const ProjectDb& db, double (T::*getter)() const) {
  const auto unit = db.columnUnit(getter);
  return unit ? " " + printable(formatUnitString(unit->label())) : "";
}

bool isPlain(const std::string& number) { return number.find_first_not_of("-.0123456789") == std::string::npos; }

std::size_t decimalsOf(const std::string& number) {
  const std::size_t point = number.find('.');
  return point == std::string::npos || !isPlain(number) ? 0 : number.size() - point - 1;
}

std::string withDecimals(std::string number, std::size_t count) {
  const std::size_t decimals = decimalsOf(number);
  if (count == 0 || !isPlain(number)) return number;
  if (decimals == 0) number += '.';
  return number + std::string(count - decimals, '0');
}

/// Gives the numbers equal decimals and equal widths, so that they can stand below each other.
std::vector<std::string> aligned(std::vector<std::string> numbers) {
  std::size_t decimals = 0;
  for (const std::string& number : numbers) {
    decimals = std::max(decimals, decimalsOf(number));
  }
  std::size_t width = 0;
  for (std::string& number : numbers) {
    number = withDecimals(number, decimals);
    width = std::max(width, number.size());
  }
  for (std::string& number : numbers) {
    number.insert(0, width - number.size(), ' ');
  }
  return numbers;
}

std::vector<std::string> alignedElevations(const std::vector<TsSmartPtr<Story>>& stories) {
  std::vector<std::string> numbers;
  for (const auto& story : stories) {
    numbers.push_back(numberText(story->elevation()));
  }
  return aligned(std::move(numbers));
}

class TreePrinter {
public:
  explicit TreePrinter(const ProjectDb& db)
      : db_(db), siteUnit_(unitSuffix(db, &Site::ref_elevation)),
        buildingUnit_(unitSuffix(db, &Building::elevation_of_ref_height)),
        storyUnit_(unitSuffix(db, &Story::elevation)) {}

  void print() const {
    const std::string project = printable(db_.project().name());
    if (!project.empty()) {
      std::cout << styled(Stream::Out, Style::Heading, fittedLine(Stream::Out, "project ", project)) << "\n";
    }
    std::vector<TsSmartPtr<Site>> sites;
    db_.get(sites);
    for (const auto& site : sites) {
      printSite(*site);
    }
    if (sites.empty()) std::cout << emptyTree << "\n";
  }

private:
  void printSite(const Site& site) const {
    printLine("site ", site.name(), " (" + numberText(site.ref_elevation()) + siteUnit_ + ")");
    const auto buildings = site.buildings();
    for (const auto& building : buildings) {
      printBuilding(*building, building == buildings.back());
    }
  }

  void printBuilding(const Building& building, bool last) const {
    printLine(branch(last) + "building ", building.name(),
              " (" + numberText(building.elevation_of_ref_height()) + buildingUnit_ + ")");
    const auto stories = building.stories();
    const std::vector<std::string> elevations = alignedElevations(stories);
    for (std::size_t i = 0; i < stories.size(); ++i) {
      const std::string trunk = last ? "    " : "│   ";
      printLine(trunk + branch(i + 1 == stories.size()) + elevations[i] + storyUnit_ + "  ", stories[i]->name());
    }
  }

  static std::string branch(bool last) { return last ? "└── " : "├── "; }

  static void printLine(const std::string& before, const OdString& name, const std::string& after = "") {
    std::cout << fittedLine(Stream::Out, before, printable(name), after) << "\n";
  }

  const ProjectDb& db_;
  std::string siteUnit_;
  std::string buildingUnit_;
  std::string storyUnit_;
};

/// The members that sites, buildings and stories have in common.
template <typename T>
JsonObject jsonOf(const ProjectDb& db, const T& object, std::string_view elevation, double (T::*getter)() const) {
  JsonObject out;
  out.number("id", object.id()).text("name", object.name().toUtf8()).real(elevation, (object.*getter)());
  const auto unit = db.columnUnit(getter);
  return unit ? out.text("unit", unit->label().toUtf8()) : out.null("unit");
}

JsonObject jsonOf(const ProjectDb& db, const Building& building) {
  JsonArray stories;
  for (const auto& story : building.stories()) {
    stories.add(jsonOf(db, *story, "elevation", &Story::elevation));
  }
  return jsonOf(db, building, "elevation_of_ref_height", &Building::elevation_of_ref_height).array("stories", stories);
}

JsonObject jsonOf(const ProjectDb& db, const Site& site) {
  JsonArray buildings;
  for (const auto& building : site.buildings()) {
    buildings.add(jsonOf(db, *building));
  }
  return jsonOf(db, site, "ref_elevation", &Site::ref_elevation).array("buildings", buildings);
}

void printJson(const ProjectDb& db) {
  std::vector<TsSmartPtr<Site>> sites;
  db.get(sites);
  JsonArray out;
  for (const auto& site : sites) {
    out.add(jsonOf(db, *site));
  }
  std::cout << JsonObject().text("project", db.project().name().toUtf8()).array("sites", out).str() << "\n";
}

ExitStatus run(const Words& words) {
  const Arguments arguments(words, {{"--json"}});
  const auto db = openProject(arguments.onlyOperand(), true);
  onFile(arguments.onlyOperand(), [&] { arguments.has("--json") ? printJson(*db) : TreePrinter(*db).print(); });
  return ExitStatus::Done;
}

}  // namespace

const Command treeCommand = {
  "tree",
  "[--json] FILE",
  "show sites, buildings and stories",
  R"(
Prints the project's name, its sites, their buildings and their stories from the
bottom up, each with its elevation: sites and buildings above sea level, stories
above the zero of their building. The unit is told where the file knows it.
A file of an older version is brought up to date first.

  --json   print it as one JSON object on one line, with the ids of the objects;
           a "unit" that the file does not know is null
)",
  run,
};

}  // namespace tessel::tool
