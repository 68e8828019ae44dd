#include "import/reference_reader.h"

#include "import/element_traits.h"
#include "import/marks.h"
#include "import/messages.h"
#include "object/object_access.h"

namespace tessel {
namespace {

/// Only what this document has named can be reached by id.
template <typename T>
TsSmartPtr<T> findByDocumentId(ImportContext& run, unsigned int id) {
  IdMapping::Value row{0, SaveResolution::Kept};
  run.mapping.get({ObjectTraits<T>::type, id, nullptr}, row);
  TsSmartPtr<T> target = run.db.get<T>(row.id);
  if (!target) throw UnresolvedReference{u"id " + OdString::format(L"%u", id)};
  return target;
}

template <typename T>
bool readInline(ImportContext& run, const pugi::xml_node& element, TsSmartPtr<T>& target, const ElementContext& field) {
  using Traits = ElementTraits<T>;
  target = ObjectAccess::blankDirty<T>();
  const ElementContext object{&field, ObjectTraits<T>::type, target.get(), ElementPath(Traits::tag), field.report, -1};
  if (!Traits::readFields(FieldReader(run, element, object), *target)) {
    target.reset();
    return false;
  }
  reportUnknownProperties(run, element, object);
  return true;
}

template <typename T>
bool readExisting(ImportContext& run, const pugi::xml_node& element, TsSmartPtr<T>& target,
                  const ElementContext& field) {
  if (const pugi::xml_attribute id = element.attribute(L"id")) {
    target = findByDocumentId<T>(run, id.as_uint());
    return true;
  }
  target = ElementTraits<T>::findByAttributes(run, element, field);
  return !target.isNull();
}

}  // namespace

template <typename T>
bool readReference(ImportContext& run, const pugi::xml_node& element, TsSmartPtr<T>& target,
                   const ElementContext& field) {
  target.reset();
  if (!element) {
    reportMissing(run, field);
    return false;
  }
  markRead(element);
  if (isNil(run, element)) {
    reportNil(run, field, element);
    return false;
  }
  try {
    if (readExisting(run, element, target, field)) return true;
    if (element.first_child()) return readInline(run, element, target, field);
    reportEmpty(run, field, element);
  } catch (const UnresolvedReference& unresolved) {
    reportUnresolved(run, field, element, unresolved.search);
  }
  return false;
}

template <typename T>
bool readNullableReference(ImportContext& run, const pugi::xml_node& element, TsSmartPtr<T>& target,
                           const ElementContext& field) {
  target.reset();
  if (!isNullElement(run, element)) return readReference(run, element, target, field);
  markRead(element);
  return true;
}

template bool readReference(ImportContext&, const pugi::xml_node&, TsSmartPtr<Measure>&, const ElementContext&);
template bool readReference(ImportContext&, const pugi::xml_node&, TsSmartPtr<Unit>&, const ElementContext&);
template bool readReference(ImportContext&, const pugi::xml_node&, TsSmartPtr<EntityType>&, const ElementContext&);
template bool readReference(ImportContext&, const pugi::xml_node&, TsSmartPtr<PropertyNamespace>&,
                            const ElementContext&);
template bool readReference(ImportContext&, const pugi::xml_node&, TsSmartPtr<PropertyDefinition>&,
                            const ElementContext&);
template bool readReference(ImportContext&, const pugi::xml_node&, TsSmartPtr<ValueDefinition>&, const ElementContext&);
template bool readReference(ImportContext&, const pugi::xml_node&, TsSmartPtr<Site>&, const ElementContext&);
template bool readReference(ImportContext&, const pugi::xml_node&, TsSmartPtr<Building>&, const ElementContext&);

template bool readNullableReference(ImportContext&, const pugi::xml_node&, TsSmartPtr<Unit>&, const ElementContext&);

}  // namespace tessel
