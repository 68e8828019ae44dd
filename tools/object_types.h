#pragma once

#include <set>
#include <string>
#include <string_view>

#include <tessel/object_type.h>

namespace tessel::tool {

/// The classes of a list such as "site,building", named by the tags of import documents. Throws UsageError for a name
/// that is none, the empty one too.
std::set<ObjectType> parseObjectTypes(const std::string& list);

/// One of these names.
ObjectType parseObjectType(std::string_view name);
std::string_view objectTypeName(ObjectType type);

/// All classes, as such a list.
std::string objectTypeNames();

}  // namespace tessel::tool
