#pragma once

#include <map>
#include <set>

#include <tessel/id_mapping.h>
#include <tessel/project_db_import.h>

namespace tessel {

/// The state of one run. It lives on the stack of `importFromXml`; document ids mean nothing afterwards.
struct ImportContext {
  /// Takes over the options, and the namespace prefixes that the node declares.
  ImportContext(ProjectDb& projectDb, const std::set<ObjectType>& importedTypes,
                const ProjectDb::ImportOptions& options, const pugi::xml_node& root);

  ProjectDb& db;
  const std::set<ObjectType>& types;  ///< Of the top-level elements that are read; others are passed over.
  IdMapping mapping;                  ///< From document ids, with a null source, to rows.
  const bool updateExisting;
  const ProjectDb::ImportOptions::MessageHandler messageHandler;
  const ProjectDb::ImportOptions::Progress progress;
  const std::map<std::wstring, std::wstring> namespacePrefixes;  ///< From the URI of a namespace to its prefix.
  const std::wstring nilAttributeName;
};

}  // namespace tessel
