#include <charconv>
#include <iostream>
#include <map>
#include <optional>
#include <set>

#include <odb/exceptions.hxx>

#include <tessel/exceptions.h>

#include "arguments.h"
#include "classes.h"
#include "command.h"
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
    throw UsageError("'" + printable(word) + "' is no id of an object");
  }
  return id;
}

const char* wordOf(RemoveResult result) {
  switch (result.outcome) {
  case RemoveResult::Removed:
    return "removed";
  case RemoveResult::Refused:
    return "refused";
  case RemoveResult::InUse:
    return "in use";
  }
  return "";
}

template <typename T>
bool exists(ProjectDb& db, unsigned int id) {
  try {
    return !db.get<T>(id).isNull();
  } catch (const odb::object_not_persistent&) {
    return false;
  }
}

/// Whether the object is gone now.
template <typename T>
bool removeOne(ProjectDb& db, const std::string& kind, unsigned int id) {
  std::cout << kind << " " << id << ": ";
  if (!exists<T>(db, id)) {
    std::cout << "there is no such object\n";
    return false;
  }
  const RemoveResult result = db.remove<T>(id);
  std::cout << wordOf(result) << "\n";
  return result.outcome == RemoveResult::Removed;
}

ExitStatus runRemove(const Words& words) {
  const Arguments arguments(words, {});
  const auto& operands = arguments.operands();
  if (operands.size() < 3) throw UsageError("a project file, a kind of object and at least one id are needed");
  const ObjectType type = parseObjectType(operands[1]);
  std::vector<unsigned int> ids;
  for (std::size_t i = 2; i < operands.size(); ++i) {
    ids.push_back(parseId(operands[i]));
  }
  const auto db = openForWriting(operands[0]);
  bool all = true;
  onFile(operands[0], [&] {
    forClass(type, [&](auto tag) {
      for (const unsigned int id : ids) {
        all = removeOne<typename decltype(tag)::type>(*db, operands[1], id) && all;
      }
    });
  });
  return all ? ExitStatus::Done : ExitStatus::DoneWithErrors;
}

using Results = std::map<ObjectKey, RemoveResult>;

/// How many rows of each kind have gone. Without a reactor nobody refuses.
void printResults(const Results& results) {
  std::map<ObjectType, unsigned long long> removed;
  for (const auto& [key, result] : results) {
    if (result.outcome == RemoveResult::Removed) ++removed[key.type];
  }
  for (const auto& [type, count] : removed) {
    std::cout << objectTypeName(type) << ": " << count << " removed\n";
  }
}

ExitStatus runPurge(const Words& words) {
  const Arguments arguments(words, {});
  const auto& operands = arguments.operands();
  if (operands.empty()) throw UsageError("a project file is needed");
  std::set<ObjectType> types = parseObjectTypes(objectTypeNames());
  if (operands.size() > 1) types.clear();
  for (std::size_t i = 1; i < operands.size(); ++i) {
    types.insert(parseObjectType(operands[i]));
  }
  const auto db = openForWriting(operands[0]);
  Results results;
  bool all = true;
  onFile(operands[0], [&] {
    try {
      db->purge(types, results);
    } catch (const DatabaseException&) {
      all = false;
    }
  });
  printResults(results);
  if (!all) {
    std::cerr << "tessel: " << printable(operands[0])
              << ": the rest stays: an object is still referred to by one of another kind\n";
  }
  return all ? ExitStatus::Done : ExitStatus::DoneWithErrors;
}

}  // namespace

const Command removeCommand = {
  "remove", "FILE KIND ID...", "remove objects by their ids",
  R"(
Removes the objects of one KIND, named as the elements of documents are, for
example "story". Tells of each whether it was removed, is in use by another
object, or does not exist. A property set takes its definitions along. Exit
status 1 if one of them stays or was not there.
)",      runRemove,
};

const Command purgeCommand = {
  "purge", "FILE [KIND...]", "remove all objects of some kinds, or of all",
  R"(
Removes every object of the kinds, those that refer to others first. It stops at
the first that an object of another kind refers to; what was removed before stays
removed. Exit status 1 in that case.
)",     runPurge,
};

}  // namespace tessel::tool
