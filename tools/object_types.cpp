#include "object_types.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "failures.h"
#include "suggestion.h"
#include "text.h"

namespace tessel::tool {
namespace {

struct Row {
  std::string_view name;
  ObjectType type;
};

constexpr Row rows[] = {
  {"measure", ObjectType::Measure},
  {"unit", ObjectType::Unit},
  {"propertynamespace", ObjectType::PropertyNamespace},
  {"entitytype", ObjectType::EntityType},
  {"propertydefinition", ObjectType::PropertyDefinition},
  {"valuedefinition", ObjectType::ValueDefinition},
  {"propertyset", ObjectType::PropertySet},
  {"site", ObjectType::Site},
  {"building", ObjectType::Building},
  {"story", ObjectType::Story},
};

std::vector<std::string> allNames() {
  std::vector<std::string> names;
  for (const Row& row : rows) {
    names.emplace_back(row.name);
  }
  return names;
}

bool isSameWord(std::string_view one, std::string_view other) {
  const auto isSame = [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); };
  return std::equal(one.begin(), one.end(), other.begin(), other.end(), isSame);
}

std::string_view withoutSpaces(std::string_view word) {
  while (!word.empty() && word.front() == ' ') word.remove_prefix(1);
  while (!word.empty() && word.back() == ' ') word.remove_suffix(1);
  return word;
}

}  // namespace

std::vector<ObjectType> allObjectTypes() {
  std::vector<ObjectType> types;
  for (const Row& row : rows) {
    types.push_back(row.type);
  }
  return types;
}

ObjectType parseObjectType(std::string_view name) {
  const auto found =
    std::find_if(std::begin(rows), std::end(rows), [&](const Row& row) { return isSameWord(row.name, name); });
  if (found == std::end(rows)) {
    const std::string meant = suggestion(name, allNames());
    throw UsageError("there is no kind '" + printable(name) + "'; " + (meant.empty() ? "these" : meant + " These") +
                     " are all: " + objectTypeNames());
  }
  return found->type;
}

std::string_view objectTypeName(ObjectType type) {
  const auto found = std::find_if(std::begin(rows), std::end(rows), [&](const Row& row) { return row.type == type; });
  return found == std::end(rows) ? std::string_view() : found->name;
}

std::set<ObjectType> parseObjectTypes(const std::string& list) {
  std::set<ObjectType> types;
  for (std::string_view rest = list;;) {
    const std::size_t comma = rest.find(',');
    types.insert(parseObjectType(withoutSpaces(rest.substr(0, comma))));
    if (comma == std::string_view::npos) return types;
    rest.remove_prefix(comma + 1);
  }
}

std::string objectTypeNames() {
  std::string list;
  for (const std::string& name : allNames()) {
    list += (list.empty() ? "" : ", ") + name;
  }
  return list;
}

std::string namedObject(ObjectType type, std::string_view name) {
  return std::string(objectTypeName(type)) + " '" + std::string(name) + "'";
}

}  // namespace tessel::tool
