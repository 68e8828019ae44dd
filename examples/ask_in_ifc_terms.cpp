// Asks which definitions belong to a property set of IFC. A definition goes by its IFC name, or by its own name where it
// has none.

#include <iostream>
#include <vector>

#include <tessel/tessel.h>

using namespace tessel;

namespace {

void fill(const std::shared_ptr<ProjectDb>& db) {
  const auto text = PropertyType::Single(PropertyType::Type::String);
  const auto ns = PropertyNamespace::create(L"IFC4");
  const auto set = PropertySet::create(ns, L"Pset_WallCommon");
  set->append_property_definition(L"Reference", text);
  // Another set has a "Status" of its own in this namespace, so this one is called otherwise and keeps its IFC name.
  set->append_property_definition(L"Wall status", text)->set_ifc_name(L"Status");
  set->save(db);
}

void ask(const ProjectDb& db, const OdString& property) {
  IfcPropertySetDefinitionQuery query;
  query.property_set_name.equals(L"Pset_WallCommon");
  query.property_name.equals(property);
  std::vector<TsSmartPtr<PropertyDefinition>> found;
  db.get<IfcPropertySetDefinitionQuery>(found, query);

  std::cout << property.toUtf8() << ":";
  for (const auto& definition : found) std::cout << " \"" << definition->name().toUtf8() << "\"";
  std::cout << (found.empty() ? " nothing\n" : "\n");
}

}  // namespace

int main() {
  const auto db = ProjectDb::create(L"walls.tessel");
  if (!db) return 1;
  fill(db);
  ask(*db, L"Reference");
  ask(*db, L"Status");
  ask(*db, L"Wall status");  // Not by its own name, for it has an IFC name.
}
