#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <tessel/object_type.h>

namespace tessel::tool {

/// The classes whose objects can be saved; what others refer to comes first.
std::vector<ObjectType> allObjectTypes();

/// The kinds of a list such as "site, building", named by the tags of import documents, whose case does not matter here.
/// Throws UsageError for a name that is none, the empty one too.
std::set<ObjectType> parseObjectTypes(const std::string& list);

/// One of these names.
ObjectType parseObjectType(std::string_view name);
std::string_view objectTypeName(ObjectType type);

/// All kinds, as such a list.
std::string objectTypeNames();

/// "site 'Default'".
std::string namedObject(ObjectType type, std::string_view name);

}  // namespace tessel::tool
