#include <algorithm>
#include <charconv>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include <tessel/exceptions.h>

#include "arguments.h"
#include "classes.h"
#include "command.h"
#include "json_output.h"
#include "object_ids.h"
#include "object_types.h"
#include "project_file.h"
#include "text.h"

namespace tessel::tool {
namespace {

unsigned int parseId(const std::string& word) {
  unsigned int id = 0;
  const char* const end = word.data() + word.size();
  const auto parsed = std::from_chars(word.data(), end, id);
  if (parsed.ec != std::errc() || parsed.ptr != end || id == 0) {
    throw UsageError("'" + printable(word) + "' is no id of an object",
                     "tree, units and catalogue tell the ids with --json");
  }
  return id;
}

constexpr std::string_view removed = "removed";
constexpr std::string_view partlyRemoved = "partly removed";
constexpr std::string_view missing = "missing";

std::string_view wordOf(RemoveResult result) {
  switch (result.outcome) {
  case RemoveResult::Removed:
    return removed;
  case RemoveResult::Refused:
    return "refused";
  case RemoveResult::InUse:
    return "in use";
  }
  return "";
}

/// What has become of an object.
struct Removal {
  unsigned int id;
  std::string_view outcome;
};

template <typename T>
Removal removeOne(ProjectDb& db, unsigned int id) {
  const unsigned long long before = db.count<T>();
  try {
    return {id, wordOf(db.remove<T>(id))};
  } catch (const DatabaseException&) {
    if (idsOf<T>(db).count(id) > 0) throw;
    // A set goes first, and then its definitions, of which another set may have one.
    return {id, db.count<T>() < before ? partlyRemoved : missing};
  }
}

std::string_view textOf(std::string_view outcome) {
  if (outcome == missing) return "there is no such object";
  if (outcome == partlyRemoved) return "removed, but definitions of it could not be";
  return outcome;
}

void printRemovals(const std::string& kind, const std::vector<Removal>& removals, bool json) {
  JsonArray out;
  for (const Removal& removal : removals) {
    if (json) {
      out.add(JsonObject().text("kind", kind).number("id", removal.id).text("outcome", removal.outcome));
    } else {
      std::cout << kind << " " << removal.id << ": " << textOf(removal.outcome) << "\n";
    }
  }
  if (json) std::cout << out.str() << "\n";
}

/// Returns whether all are gone. What has gone before an error is told as well.
bool removeAndPrint(ProjectDb& db, ObjectType type, const std::vector<unsigned int>& ids, bool json) {
  const std::string kind(objectTypeName(type));
  std::vector<Removal> removals;
  try {
    forClass(type, [&](auto tag) {
      for (const unsigned int id : ids) {
        removals.push_back(removeOne<typename decltype(tag)::type>(db, id));
      }
    });
  } catch (...) {
    printRemovals(kind, removals, json);
    throw;
  }
  printRemovals(kind, removals, json);
  return std::all_of(removals.begin(), removals.end(), [](const Removal& r) { return r.outcome == removed; });
}

ExitStatus runRemove(const Words& words) {
  const Arguments arguments(words, {{"--json"}});
  const auto& operands = arguments.operands();
  if (operands.size() < 3) throw UsageError("a project file, a kind of object and at least one id are needed");
  const ObjectType type = parseObjectType(operands[1]);
  std::vector<unsigned int> ids;
  for (std::size_t i = 2; i < operands.size(); ++i) {
    ids.push_back(parseId(operands[i]));
  }
  const auto db = openForWriting(operands[0], "removed");
  bool all = true;
  onFile(operands[0], [&] { all = removeAndPrint(*db, type, ids, arguments.has("--json")); });
  return all ? ExitStatus::Done : ExitStatus::DoneWithErrors;
}

}  // namespace

const Command removeCommand = {
  "remove",
  "[--json] FILE KIND ID...",
  "remove objects by their ids",
  R"(
Removes the objects of one KIND, named as the elements of documents are, for
example "story". Tells of each whether it was removed, is in use by another
object, or does not exist. A property set takes its definitions along, as far as
no other set has one of them. Exit status 1 if something stays or was not there.

  --json   print it as one JSON array on one line
)",
  runRemove,
};

}  // namespace tessel::tool
