#include <tessel/project_db_import.h>

#include <cwchar>
#include <iterator>

#include "catalogue/definition_impl.h"
#include "catalogue/property_set_impl.h"
#include "database/page_images.h"
#include "database/transaction_scope.h"
#include "import/read_object.h"
#include "operations/class_list.h"
#include "spatial/spatial_impl.h"
#include "units/measure_impl.h"
#include "units/unit_impl.h"

namespace tessel {
namespace {

bool isNamed(const pugi::xml_node& node, const wchar_t* name) { return std::wcscmp(node.name(), name) == 0; }

template <typename T>
bool takes(ImportContext& run, const pugi::xml_node& element) {
  if (!isNamed(element, ElementTraits<T>::tag)) return false;
  importElement<T>(run, element);
  return true;
}

/// Unlike the object elements this one has no guard: what goes wrong with a default unit ends the run.
bool takesDefaultUnit(ImportContext& run, const pugi::xml_node& element) {
  if (!isNamed(element, L"default_unit")) return false;
  if (run.types.count(ObjectType::Unit) == 0) return true;
  const ElementContext context{nullptr, ObjectType(),          nullptr, ElementPath(L"default_unit").then(L"unit"),
                               true,    element.offset_debug()};
  TsSmartPtr<Unit> unit;
  if (readNullableReference(run, element, unit, context)) run.db.setDefaultUnit(unit);
  return true;
}

template <typename... Classes>
bool takesObject(ClassList<Classes...>, ImportContext& run, const pugi::xml_node& element) {
  return (takes<Classes>(run, element) || ...);
}

bool dispatch(ImportContext& run, const pugi::xml_node& element) {
  return takesObject(SavedClasses(), run, element) || takesDefaultUnit(run, element);
}

void importChildren(ImportContext& run, const pugi::xml_node& container) {
  const auto children = container.children();
  const auto total = static_cast<std::size_t>(std::distance(children.begin(), children.end()));
  std::size_t done = 0;
  for (const pugi::xml_node& child : children) {
    if (run.progress) run.progress(done++, total);
    if (isNamed(child, L"meta") || dispatch(run, child)) continue;
    warnOfUnknownObject(run, child);
  }
  if (run.progress) run.progress(total, total);
}

void importNode(ImportContext& run, const pugi::xml_node& node) {
  if (isNamed(node, L"meta") || dispatch(run, node)) return;
  importChildren(run, node);
}

}  // namespace

void ProjectDb::importFromXml(const pugi::xml_node& node, const ImportOptions& options) {
  importFromXml(node, typesOf(SavedClasses()), options);
}

void ProjectDb::importFromXml(const pugi::xml_node& node, const std::set<ObjectType>& types,
                              const ImportOptions& options) {
  ImportContext run(*this, types, options, node);
  TransactionScope scope(*this);
  scope.requireLive();
  {
    const PageImagesInMemory images;
    importNode(run, node);
  }
  scope.commitOwn();
}

}  // namespace tessel
