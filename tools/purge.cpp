#include <iostream>
#include <set>
#include <string>

#include "arguments.h"
#include "command.h"
#include "json_output.h"
#include "object_types.h"
#include "project_file.h"
#include "purge_content.h"
#include "text.h"

namespace tessel::tool {
namespace {

struct Request {
  explicit Request(const Words& words) {
    const Arguments arguments(words, {{"--all"}, {"--json"}});
    const auto& operands = arguments.operands();
    if (operands.empty()) throw UsageError("a project file is needed");
    file = operands.front();
    for (std::size_t i = 1; i < operands.size(); ++i) {
      types.insert(parseObjectType(operands[i]));
    }
    const bool all = arguments.has("--all");
    if (types.empty() && !all) throw UsageError("no kind is named", "--all removes the objects of all kinds");
    if (!types.empty() && all) throw UsageError("either kinds or --all can be asked for, not both");
    if (all) types = parseObjectTypes(objectTypeNames());
    json = arguments.has("--json");
  }

  std::string file;
  std::set<ObjectType> types;
  bool json;
};

/// "3 units and 2 measures stay"; empty if there are none.
std::string unitsInUse(const PurgeReport& report) {
  unsigned long long units = 0;
  unsigned long long measures = 0;
  for (const KeptObject& object : report.kept) {
    if (object.reason == KeptObject::UnitInUse) ++(object.key.type == ObjectType::Unit ? units : measures);
  }
  std::string text;
  if (units > 0) text = counted(units, "unit", "units");
  if (measures > 0) text += (text.empty() ? "" : " and ") + counted(measures, "measure", "measures");
  return text.empty() ? text : text + (units + measures == 1 ? " stays" : " stay");
}

void printKept(const std::string& file, const PurgeReport& report) {
  const std::string start = printable(file) + ": ";
  for (const KeptObject& object : report.kept) {
    if (object.reason == KeptObject::UnitInUse) continue;
    std::cerr << start << namedObject(object.key.type, printable(object.name))
              << " stays: another object refers to it\n";
  }
  if (report.unreadable > 0) {
    std::cerr << start << counted(report.unreadable, "object stays", "objects stay")
              << " whose references lead nowhere\n";
  }
  const std::string units = unitsInUse(report);
  if (!units.empty()) {
    std::cerr << start << units << ": default units and units of columns cannot be removed\n";
  }
}

void printText(const std::string& file, const PurgeReport& report) {
  for (const auto& [type, count] : report.removed) {
    std::cout << objectTypeName(type) << ": " << count << " removed\n";
  }
  printKept(file, report);
}

const char* wordOf(KeptObject::Reason reason) { return reason == KeptObject::Referred ? "referred to" : "unit in use"; }

void printJson(const PurgeReport& report) {
  JsonObject removals;
  for (const auto& [type, count] : report.removed) {
    removals.number(objectTypeName(type), static_cast<long long>(count));
  }
  JsonArray kept;
  for (const KeptObject& object : report.kept) {
    JsonObject row;
    row.text("kind", objectTypeName(object.key.type)).number("id", object.key.id);
    kept.add(row.text("name", object.name.toUtf8()).text("reason", wordOf(object.reason)));
  }
  JsonObject out;
  out.object("removed", removals).array("kept", kept).number("unreadable", static_cast<long long>(report.unreadable));
  out.boolean("complete", report.complete);
  std::cout << out.str() << "\n";
}

void print(const Request& request, const PurgeReport& report) {
  request.json ? printJson(report) : printText(request.file, report);
}

ExitStatus run(const Words& words) {
  const Request request(words);
  const auto db = openForWriting(request.file, "removed");
  PurgeReport report;
  onFile(request.file, [&] {
    try {
      purgeContent(*db, request.types, report);
    } catch (...) {
      report.complete = false;
      print(request, report);
      throw;
    }
  });
  print(request, report);
  return report.complete ? ExitStatus::Done : ExitStatus::DoneWithErrors;
}

}  // namespace

const Command purgeCommand = {
  "purge",
  "[--all] [--json] FILE [KIND...]",
  "remove all objects of some kinds, or of all",
  R"(
Removes every object of the kinds, with --all of all kinds. What refers to
others goes first, whatever the order of the kinds. Objects that others still
refer to stay and are named. Default units, units of columns and their measures
always stay. Exit status 1 if anything stays.

  --all    remove the objects of all kinds; no KIND is named then
  --json   print it as one JSON object on one line
)",
  run,
};

}  // namespace tessel::tool
