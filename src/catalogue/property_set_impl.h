#pragma once

#include <memory>
#include <optional>

#include <tessel/definitions.h>
#include <tessel/property_set.h>

namespace tessel {

struct EntityType::Impl {
  unsigned int id = 0;
  OdString name;
  std::weak_ptr<ProjectDb> projectDb;
  bool dirty = false;
};

struct PropertyNamespace::Impl {
  unsigned int id = 0;
  OdString name;
  std::optional<OdString> label;
  bool editable = true;
  bool visible = true;
  unsigned int revision = 0;
  std::weak_ptr<ProjectDb> projectDb;
  bool dirty = false;
};

struct PropertySet::Impl {
  unsigned int id = 0;
  TsSmartPtr<const PropertyNamespace> ns;
  OdString name;
  std::optional<OdString> label;
  PropertyDefinitions property_definitions;
  ValueDefinitions value_definitions;
  bool per_instance = false;
  EntityTypes entity_types;
  std::optional<OdString> ifc_name;
  bool visible = true;
  std::weak_ptr<ProjectDb> projectDb;
  bool dirty = false;
};

}  // namespace tessel
