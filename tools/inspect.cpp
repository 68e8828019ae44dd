#include <iostream>

#include <tessel/inspect.h>

#include "arguments.h"
#include "command.h"
#include "json_output.h"
#include "project_file.h"
#include "text.h"

namespace tessel::tool {
namespace {

const char* wordOf(FileState state) {
  switch (state) {
  case FileState::Missing:
    return "missing";
  case FileState::Unreachable:
    return "unreachable";
  case FileState::Locked:
    return "locked";
  case FileState::Unsettled:
    return "unsettled";
  case FileState::NotADatabase:
    return "not a database";
  case FileState::Damaged:
    return "damaged";
  case FileState::NoProject:
    return "no project";
  case FileState::TooOld:
    return "too old";
  case FileState::Outdated:
    return "outdated";
  case FileState::Current:
    return "current";
  case FileState::Newer:
    return "newer";
  case FileState::TooNew:
    return "too new";
  }
  return "";
}

const char* wordOf(OpenOutcome outcome) {
  switch (outcome) {
  case OpenOutcome::Opens:
    return "opens";
  case OpenOutcome::Refuses:
    return "refuses";
  case OpenOutcome::Throws:
    return "throws";
  case OpenOutcome::ThrowsAfterMigration:
    return "throws after migration";
  case OpenOutcome::Unknown:
    return "unknown";
  }
  return "";
}

void printJson(const std::string& file, const Inspection& found) {
  JsonObject out;
  out.text("file", file).text("state", wordOf(found.state)).text("opening", wordOf(found.outcome));
  out.number("schema_version", static_cast<long long>(found.version));
  out.number("compatibility", static_cast<long long>(found.compatibility));
  out.number("lost_spaces", static_cast<long long>(found.lostSpaces)).text("text", found.text.toUtf8());
  std::cout << out.str() << "\n";
}

ExitStatus run(const Words& words) {
  const Arguments arguments(words, {{"--json"}});
  const std::string& file = arguments.onlyOperand();
  const Inspection found = inspect(databaseName(file));
  if (arguments.has("--json")) {
    printJson(file, found);
  } else {
    std::cout << printable(file) << ": " << printable(found.text) << "\n";
  }
  return found.outcome == OpenOutcome::Opens ? ExitStatus::Done : ExitStatus::DoneWithErrors;
}

}  // namespace

const Command inspectCommand = {
  "inspect",
  "[--json] FILE",
  "tell what opening a file would do, without a change to it",
  R"(
Tells whether the file is a project that can be opened, and what would become of
it: its version, whether it would be brought up to date, and what that would
lose. The file is only read. Exit status 1 if it would not open.

  --json   print it as one JSON object on one line
)",
  run,
};

}  // namespace tessel::tool
