#pragma once

#include <tessel/project_db.h>

#include "import/reference_reader.h"

namespace tessel {

/// "name 'text'", as messages tell a search.
inline OdString searchByName(const OdString& name) { return u"name '" + name + u"'"; }

/// The row that the attribute "name" selects among all of its class.
template <typename T>
TsSmartPtr<T> findByName(ImportContext& run, const pugi::xml_node& element) {
  const pugi::xml_attribute attribute = element.attribute(L"name");
  if (!attribute) return {};
  const OdString name = attribute.value();
  TsSmartPtr<T> target = run.db.get<T>(NameKey(name));
  if (!target) throw UnresolvedReference{searchByName(name)};
  return target;
}

}  // namespace tessel
