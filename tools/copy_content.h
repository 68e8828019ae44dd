#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include <tessel/copy_report.h>
#include <tessel/id_mapping.h>
#include <tessel/project_db.h>

namespace tessel::tool {

enum class OnClash { Fail, Keep, Overwrite, Rename };

struct CopyWishes {
  std::set<ObjectType> types;
  bool everything = true;  ///< All types; a new destination then takes over the project record, too.
  bool meta = false;
  bool list = false;
  OnClash onClash = OnClash::Fail;
};

struct CopyCounts {
  unsigned long long created = 0;
  unsigned long long kept = 0;
  unsigned long long overwritten = 0;
  unsigned long long leftBehind = 0;
};

struct CopiedObject {
  ObjectKey key;  ///< In the source.
  OdString name;
  unsigned int newId;
  OdString newName;
  SaveResolution outcome;
};

/// What has become of the content of the source.
struct CopyReport {
  bool columnUnits = false;            ///< Whether they were taken over.
  bool projectRecord = false;          ///< The same.
  std::vector<OdString> defaultUnits;  ///< The measures whose default units were taken over.
  std::map<ObjectType, CopyCounts> counts;
  std::optional<std::vector<CopiedObject>> objects;  ///< If a list is wished.
  std::vector<LeftBehind> leftBehind;
};

/// Copies in one transaction. Throws std::runtime_error with the reason if nothing was copied.
CopyReport copyContent(const std::shared_ptr<ProjectDb>& source, const std::shared_ptr<ProjectDb>& destination,
                       const CopyWishes& wishes);

}  // namespace tessel::tool
