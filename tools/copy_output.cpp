#include "copy_output.h"

#include <algorithm>
#include <iostream>
#include <string>

#include "copy_failure.h"
#include "json_output.h"
#include "object_types.h"
#include "table.h"
#include "text.h"

namespace tessel::tool {
namespace {

struct CountColumn {
  const char* title;
  const char* jsonName;
  unsigned long long CopyCounts::*count;
};

constexpr CountColumn countColumns[] = {
  {"created", "created", &CopyCounts::created},
  {"kept", "kept", &CopyCounts::kept},
  {"overwritten", "overwritten", &CopyCounts::overwritten},
  {"left behind", "left_behind", &CopyCounts::leftBehind},
};

std::string wordOf(SaveResolution outcome) {
  switch (outcome) {
  case SaveResolution::Kept:
    return "kept";
  case SaveResolution::Overwritten:
    return "overwritten";
  case SaveResolution::Created:
  case SaveResolution::Renamed:
    break;
  }
  return "created";
}

/// Numbers stand below the ends of their titles.
std::string rightAligned(const std::string& text, std::size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

void printCounts(const CopyReport& report) {
  Table table = {{{"kind"}}, true, {}};
  std::vector<Cells>& rows = table.rows;
  std::size_t digits = 0;
  for (const auto& [type, counts] : report.counts) {
    for (const CountColumn& column : countColumns) {
      digits = std::max(digits, std::to_string(counts.*column.count).size());
    }
  }
  const auto cell = [&](const std::string& text, const CountColumn& column) {
    return rightAligned(text, std::max(digits, std::string(column.title).size()));
  };
  for (const CountColumn& column : countColumns) {
    table.numbers.insert(rows.front().size());
    rows.front().push_back(cell(column.title, column));
  }
  for (const auto& [type, counts] : report.counts) {
    rows.push_back({std::string(objectTypeName(type))});
    for (const CountColumn& column : countColumns) {
      rows.back().push_back(cell(std::to_string(counts.*column.count), column));
    }
  }
  printTable(table);
}

void printObjects(const std::vector<CopiedObject>& objects) {
  Table table = {{{"kind", "old id", "new id", "outcome", "name"}}, true, {1, 2}};
  for (const CopiedObject& object : objects) {
    std::string name = printable(object.name);
    if (object.newName != object.name) name += " -> " + printable(object.newName);
    table.rows.push_back({std::string(objectTypeName(object.key.type)), std::to_string(object.key.id),
                          std::to_string(object.newId), wordOf(object.outcome), name});
  }
  printTable(table);
  std::cout << "\n";
}

void printTakenOver(const CopyReport& report, const ProjectDb& source, const ProjectDb& destination) {
  const auto print = [&](const std::string& what, const std::string& which = "") {
    std::cerr << printable(destination.filename()) << ": took over the " << what << " of "
              << printable(source.filename()) << which << "\n";
  };
  if (report.columnUnits) print("units of the columns");
  if (report.projectRecord) print("project record");
  std::string measures;
  for (const OdString& measure : report.defaultUnits) {
    measures += (measures.empty() ? " for " : ", ") + printable(measure);
  }
  if (!measures.empty()) print("default units", measures);
}

JsonObject jsonOf(const CopyCounts& counts) {
  JsonObject out;
  for (const CountColumn& column : countColumns) {
    out.number(column.jsonName, static_cast<long long>(counts.*column.count));
  }
  return out;
}

JsonObject jsonOf(const CopiedObject& object) {
  JsonObject out;
  out.text("kind", objectTypeName(object.key.type)).number("id", object.key.id).number("new_id", object.newId);
  out.text("outcome", wordOf(object.outcome));
  return out.text("name", object.name.toUtf8()).text("new_name", object.newName.toUtf8());
}

JsonObject jsonOf(const LeftBehind& object, const std::string& reason) {
  JsonObject out;
  out.text("kind", objectTypeName(object.key.type)).number("id", object.key.id);
  return out.text("name", object.name.toUtf8()).text("reason", reason);
}

}  // namespace

void printCopyText(const CopyReport& report, const ProjectDb& source, const ProjectDb& destination) {
  printTakenOver(report, source, destination);
  for (const LeftBehind& object : report.leftBehind) {
    std::cerr << printable(source.filename()) << ": " << objectTypeName(object.key.type) << " " << object.key.id << " '"
              << printable(object.name) << "' stays behind: " << printable(whyLeftBehind(object, source, destination))
              << "\n";
  }
  if (report.counts.empty()) {
    std::cout << "(nothing to copy)\n";
    return;
  }
  if (report.objects) printObjects(*report.objects);
  printCounts(report);
}

void printCopyJson(const CopyReport& report, const ProjectDb& source, const ProjectDb& destination) {
  JsonObject counts;
  for (const auto& [type, row] : report.counts) {
    counts.object(objectTypeName(type), jsonOf(row));
  }
  JsonArray defaultUnits;
  for (const OdString& measure : report.defaultUnits) {
    defaultUnits.add(measure.toUtf8());
  }
  JsonArray left;
  for (const LeftBehind& object : report.leftBehind) {
    left.add(jsonOf(object, whyLeftBehind(object, source, destination)));
  }
  JsonObject out;
  out.text("source", source.filename().toUtf8()).text("destination", destination.filename().toUtf8());
  out.boolean("column_units", report.columnUnits).boolean("project_record", report.projectRecord);
  out.array("default_units", defaultUnits).object("counts", counts).array("left_behind", left);
  if (report.objects) {
    JsonArray objects;
    for (const CopiedObject& object : *report.objects) {
      objects.add(jsonOf(object));
    }
    out.array("objects", objects);
  }
  std::cout << out.str() << "\n";
}

}  // namespace tessel::tool
