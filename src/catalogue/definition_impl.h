#pragma once

#include <memory>
#include <optional>

#include <tessel/definitions.h>
#include <tessel/property_set.h>
#include <tessel/units.h>

namespace tessel {

struct AbstractDefinition::Impl {
  unsigned int id = 0;
  OdString name;
  std::optional<OdString> label;
  OdString description;
  TsSmartPtr<const Unit> unit;
  std::optional<OdString> ifc_name;
  std::optional<IfcType> ifc_type;
  PropertyType type;
  bool visible = true;
  std::weak_ptr<ProjectDb> projectDb;
  bool dirty = false;

  Impl() = default;
  Impl(const Impl&) = default;
  Impl& operator=(const Impl&) = delete;
  virtual ~Impl() = default;
};

struct PropertyDefinition::Impl : AbstractDefinition::Impl {
  TsSmartPtr<const PropertyNamespace> ns;
  OdString type_spec;
  OdString type_spec2;
  OdString default_value;
};

struct ValueDefinition::Impl : AbstractDefinition::Impl {
  TsSmartPtr<const PropertyNamespace> ns;
  OdString value_spec;
};

}  // namespace tessel
