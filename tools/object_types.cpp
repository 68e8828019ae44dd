#include "object_types.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

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

}  // namespace

ObjectType parseObjectType(std::string_view name) {
  const auto found = std::find_if(std::begin(rows), std::end(rows), [&](const Row& row) { return row.name == name; });
  if (found == std::end(rows)) {
    const std::string meant = suggestion(name, allNames());
    throw UsageError("there is no class '" + printable(name) + "'; " + (meant.empty() ? "these" : meant + " These") +
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
    types.insert(parseObjectType(rest.substr(0, comma)));
    if (comma == std::string_view::npos) return types;
    rest.remove_prefix(comma + 1);
  }
}

std::string objectTypeNames() {
  std::string list;
  for (const std::string& name : allNames()) {
    list += (list.empty() ? "" : ",") + name;
  }
  return list;
}

}  // namespace tessel::tool
