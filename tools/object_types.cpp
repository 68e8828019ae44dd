#include "object_types.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "failures.h"
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

}  // namespace

ObjectType parseObjectType(std::string_view name) {
  const auto found = std::find_if(std::begin(rows), std::end(rows), [&](const Row& row) { return row.name == name; });
  if (found == std::end(rows)) {
    throw UsageError("there is no class '" + printable(name) + "'; these are all: " + objectTypeNames());
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
  std::string names;
  for (const Row& row : rows) {
    names += (names.empty() ? "" : ",") + std::string(row.name);
  }
  return names;
}

}  // namespace tessel::tool
