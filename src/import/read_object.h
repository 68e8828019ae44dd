#pragma once

#include <odb/exceptions.hxx>

#include <tessel/exceptions.h>

#include "database/operation.h"
#include "import/element_traits.h"
#include "import/marks.h"
#include "import/messages.h"
#include "object/object_access.h"
#include "operations/finder.h"

namespace tessel {

/// Reads a top-level element into an object and saves it.
template <typename T>
class ObjectReader {
public:
  ObjectReader(ImportContext& run, const pugi::xml_node& element)
      : run_(run), element_(element), documentId_(element.attribute(L"id").as_uint()) {}

  /// Lets the faults of the document go to the handler and the exceptions of look-ups and saves pass.
  void read() {
    if (namesRow() && element_.attribute(L"remove").as_bool()) {
      removeRow();
      return;
    }
    const TsSmartPtr<T> row = namesRow() ? rowOfDocumentId() : TsSmartPtr<T>();
    const TsSmartPtr<T> target = row ? row : rowOfNameOrNew();
    if (!readFields(*target)) return;
    save(target, !row.isNull());
  }

private:
  static constexpr bool mergesByName = std::is_same_v<T, PropertyDefinition> || std::is_same_v<T, PropertySet>;

  /// Whether the "id" of the element is that of a row, and not only a label in the document.
  bool namesRow() const { return documentId_ != 0 && run_.updateExisting; }

  // A row that is not there is no fault of the document, but look-up and removal throw for it as for a row that cannot be
  // loaded or removed.

  void removeRow() {
    // Asked beforehand, because the failure may come after the row has gone, with what went along with it.
    const bool existed = hasRow();
    try {
      run_.db.remove<T>(documentId_);
    } catch (const DatabaseException&) {
      if (existed) throw;
    }
  }

  TsSmartPtr<T> rowOfDocumentId() const {
    try {
      return run_.db.get<T>(documentId_);
    } catch (const odb::object_not_persistent&) {
      if (hasRow()) throw;
      return {};
    }
  }

  bool hasRow() const {
    return readOperation(run_.db, [this] { return Finder<T>(run_.db).hasRow(documentId_); });
  }

  TsSmartPtr<T> rowOfNameOrNew() const {
    if constexpr (mergesByName) {
      if (!namesRow()) {
        if (TsSmartPtr<T> row = ElementTraits<T>::findExisting(run_, element_)) return row;
      }
    }
    return ObjectAccess::blank<T>();
  }

  bool readFields(T& target) {
    const ElementContext object{nullptr, ObjectTraits<T>::type,  &target, ElementPath(ElementTraits<T>::tag),
                                true,    element_.offset_debug()};
    const bool success = ElementTraits<T>::readFields(FieldReader(run_, element_, object), target);
    target.impl().dirty = true;
    if (success) reportUnknownProperties(run_, element_, object);
    clearMarks(element_);
    return success;
  }

  void save(const TsSmartPtr<T>& target, bool isUpdate) {
    // The mapping records a new object under the id that it has before it is saved.
    if (documentId_ != 0 && !isUpdate) target->impl().id = documentId_;
    run_.db.save<T>(target, run_.mapping);
    if (isUpdate) mapUpdatedRow();
  }

  /// References in the document look for ids without a source, but a row that was updated is mapped as one of this file.
  void mapUpdatedRow() {
    constexpr auto unknown = static_cast<SaveResolution>(-1);
    IdMapping::Value row{0, unknown};
    run_.mapping.get({ObjectTraits<T>::type, documentId_, &run_.db}, row);
    run_.mapping.set({ObjectTraits<T>::type, documentId_, nullptr}, row);
  }

  ImportContext& run_;
  const pugi::xml_node element_;
  const unsigned int documentId_;
};

/// Reads an element if its type is wanted. A failure of the file costs this element only; what is neither an exception of
/// ours nor one of the persistence layer ends the run.
template <typename T>
void importElement(ImportContext& run, const pugi::xml_node& element) {
  if (run.types.count(ObjectTraits<T>::type) == 0) return;
  OdString failure;
  try {
    ObjectReader<T>(run, element).read();
    return;
  } catch (const Exception& error) {
    failure = OdString(error.what());
  } catch (const odb::exception& error) {
    failure = OdString::fromUtf8(error.what());
  }
  clearMarks(element);
  reportException(run, element, failure);
}

}  // namespace tessel
