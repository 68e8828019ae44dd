#include <filesystem>
#include <string>

#include "arguments.h"
#include "command.h"
#include "copy_content.h"
#include "copy_output.h"
#include "object_types.h"
#include "project_file.h"
#include "text.h"

namespace tessel::tool {
namespace {

OnClash parseOnClash(const std::string& word) {
  if (word == "fail") return OnClash::Fail;
  if (word == "keep") return OnClash::Keep;
  if (word == "overwrite") return OnClash::Overwrite;
  if (word == "rename") return OnClash::Rename;
  throw UsageError("a clash is answered by 'fail', 'keep', 'overwrite' or 'rename', not by '" + printable(word) + "'");
}

bool isSameFile(const std::string& one, const std::string& other) {
  std::error_code unknown;
  return one == other || std::filesystem::equivalent(one, other, unknown);
}

struct Request {
  explicit Request(const Words& words) {
    const Arguments arguments(
      words, {{"--meta"}, {"--only", true}, {"--on-clash", true}, {"--list"}, {"--json"}, {"--force"}});
    if (arguments.operands().size() != 2) throw UsageError("a project file to copy from and one to copy to are needed");
    source = arguments.operands()[0];
    destination = arguments.operands()[1];
    if (isSameFile(source, destination)) throw UsageError("a file cannot be copied into itself");
    wishes.everything = !arguments.has("--only");
    wishes.types = parseObjectTypes(arguments.value("--only").value_or(objectTypeNames()));
    wishes.onClash = parseOnClash(arguments.value("--on-clash").value_or("fail"));
    wishes.meta = arguments.has("--meta");
    wishes.list = arguments.has("--list");
    json = arguments.has("--json");
    force = arguments.has("--force");
  }

  std::string source;
  std::string destination;
  CopyWishes wishes;
  bool json;
  bool force;
};

CopyReport copied(const Request& request, const std::shared_ptr<ProjectDb>& source,
                  const std::shared_ptr<ProjectDb>& destination) {
  try {
    return copyContent(source, destination, request.wishes);
  } catch (...) {
    throw Failure("tessel: " + request.destination + ": nothing was copied from " + request.source + ": " +
                  currentErrorText());
  }
}

ExitStatus run(const Words& words) {
  const Request request(words);
  // In this order, so that no file is made for the sake of a source that cannot be used.
  const auto source = openProject(request.source, true);
  const auto destination = createForWriting(request.destination, request.force, "copied");
  const CopyReport report = copied(request, source, destination);
  request.json ? printCopyJson(report, *source, *destination) : printCopyText(report, *source, *destination);
  return report.leftBehind.empty() ? ExitStatus::Done : ExitStatus::DoneWithErrors;
}

}  // namespace

const Command copyCommand = {
  "copy",
  "[--meta] [--only LIST]\n"
  "                   [--on-clash fail|keep|overwrite|rename]\n"
  "                   [--list] [--json] [--force] SOURCE DESTINATION",
  "copy the content of a project file into another",
  R"(
Copies the objects of the project file SOURCE into the project file DESTINATION,
which is made if it is missing, and counts what became of them. Either
everything is copied or, if something is in the way, nothing; a DESTINATION that
was made for it stays empty then. A file of an older version is brought up to
date first.

Numbers are converted to the units of DESTINATION's columns. If no column has a
unit there, those of SOURCE are taken over. A site, building or story stays
behind if one of its columns has a unit in one of the files only; 'tessel units'
shows them, and 'tessel set-default-unit' gives a file its first ones. Default
units of DESTINATION stay, missing ones are taken over. A new DESTINATION takes
over the project record as well, and with it its site. Exit status 1 if
something stays behind.

  --meta       take over the project record also of a DESTINATION that is not
               new, and the units of the columns, which must not have any there
  --only LIST  copy these kinds only, for example "site,building", and what
               their objects refer to; named as the elements of documents are.
               Default units come along with "unit", the project record only
               with --meta
  --on-clash   what to do with an object whose name is taken in DESTINATION:
    fail       copy nothing at all (the default)
    keep       take the object that is there instead
    overwrite  give the object that is there the values of the incoming one
    rename     call the incoming one 'NAME (2)'; namespaces cannot be renamed
               and are kept
  --list       list each object with its id in both files
  --json       print it all as one JSON object on one line
  --force      put the project into an SQLite database of another program

Measures of one name are taken for the same, and so are units of one label and
factor. A name of a unit, or a label, that something else has in DESTINATION
ends the copy, whatever is to be done about clashes.
)",
  run,
};

}  // namespace tessel::tool
