#include "import/import_context.h"

#include <string_view>

namespace tessel {
namespace {

/// XML Schema Part 1: Structures, section 2.6, gives this name space, and in 2.6.2 the attribute "nil".
constexpr wchar_t schemaInstanceNamespace[] = L"http://www.w3.org/2001/XMLSchema-instance";

/// A later declaration of the same namespace replaces an earlier one.
std::map<std::wstring, std::wstring> prefixesOf(const pugi::xml_node& root) {
  constexpr std::wstring_view declaration = L"xmlns";
  std::map<std::wstring, std::wstring> prefixes;
  for (const pugi::xml_attribute& attribute : root.attributes()) {
    const std::wstring_view name = attribute.name();
    if (name.substr(0, declaration.size()) != declaration) continue;
    const std::wstring_view rest = name.substr(declaration.size());
    if (rest.empty()) {
      prefixes[attribute.value()].clear();
    } else if (rest.size() > 1 && rest.front() == L':') {
      prefixes[attribute.value()] = rest.substr(1);
    }
  }
  return prefixes;
}

std::wstring nilNameWith(const std::map<std::wstring, std::wstring>& prefixes) {
  const auto declared = prefixes.find(schemaInstanceNamespace);
  return declared == prefixes.end() ? L"nil" : declared->second + L":nil";
}

}  // namespace

ImportContext::ImportContext(ProjectDb& projectDb, const std::set<ObjectType>& importedTypes,
                             const ProjectDb::ImportOptions& options, const pugi::xml_node& root)
    : db(projectDb), types(importedTypes), mapping(&projectDb), updateExisting(options.updateExisting),
      messageHandler(options.messageHandler), progress(options.progress), namespacePrefixes(prefixesOf(root)),
      nilAttributeName(nilNameWith(namespacePrefixes)) {}

}  // namespace tessel
