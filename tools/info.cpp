#include <algorithm>
#include <iostream>
#include <string>
#include <variant>
#include <vector>

#include <tessel/inspect.h>
#include <tessel/project.h>

#include "arguments.h"
#include "command.h"
#include "json_output.h"
#include "object_counts.h"
#include "object_types.h"
#include "project_file.h"
#include "text.h"

namespace tessel::tool {
namespace {

/// One thing to know of a file, in both forms of output.
struct Fact {
  std::string_view key;
  std::variant<bool, unsigned long long, std::string> value;
};

std::vector<Fact> factsOf(const ProjectDb& db) {
  return {
    {"file", db.filename().toUtf8()},
    {"schema_version", db.version()},
    {"compatibility", inspect(db.filename()).compatibility},
    {"read_only", db.isReadOnly()},
    {"project", db.project().name().toUtf8()},
  };
}

struct ToJson {
  JsonObject& out;
  std::string_view key;

  void operator()(bool value) const { out.boolean(key, value); }
  void operator()(unsigned long long value) const { out.number(key, static_cast<long long>(value)); }
  void operator()(const std::string& value) const { out.text(key, value); }
};

struct ToText {
  std::string operator()(bool value) const { return value ? "yes" : "no"; }
  std::string operator()(unsigned long long value) const { return std::to_string(value); }
  std::string operator()(const std::string& value) const { return printable(value); }
};

void printJson(const ProjectDb& db) {
  JsonObject out;
  for (const Fact& fact : factsOf(db)) {
    std::visit(ToJson{out, fact.key}, fact.value);
  }
  JsonObject objects;
  for (const ObjectType type : allObjectTypes()) {
    objects.number(objectTypeName(type), static_cast<long long>(countObjects(db, type)));
  }
  std::cout << out.object("objects", objects).str() << "\n";
}

void printLine(std::string label, const std::string& value) {
  constexpr std::size_t width = 20;
  std::replace(label.begin(), label.end(), '_', ' ');
  label.resize(std::max(label.size() + 1, width), ' ');
  std::cout << (value.empty() ? label.substr(0, label.find_last_not_of(' ') + 1) : label + value) << "\n";
}

void printText(const ProjectDb& db) {
  for (const Fact& fact : factsOf(db)) {
    printLine(std::string(fact.key), std::visit(ToText(), fact.value));
  }
  for (const ObjectType type : allObjectTypes()) {
    printLine(std::string(objectTypeName(type)), std::to_string(countObjects(db, type)));
  }
}

ExitStatus run(const Words& words) {
  const Arguments arguments(words, {{"--json"}});
  // For writing, or every file would say that it is read-only.
  const auto db = openProject(arguments.onlyOperand(), false);
  onFile(arguments.onlyOperand(), [&] { arguments.has("--json") ? printJson(*db) : printText(*db); });
  return ExitStatus::Done;
}

}  // namespace

const Command infoCommand = {
  "info",
  "[--json] FILE",
  "tell what a project file holds",
  R"(
Prints the file's path and schema version, its compatibility, which is the
schema version of the oldest library that can use the file, whether it can only
be read, the name of its project, and how many objects of each kind it has. A
file of an older version is brought up to date first.

  --json   print it as one JSON object on one line
)",
  run,
};

}  // namespace tessel::tool
