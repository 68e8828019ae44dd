#pragma once

#include <cstdint>
#include <optional>

#include <tessel/ifc_type.h>
#include <tessel/property_type.h>

#include "import/element_context.h"
#include "import/import_context.h"
#include "import/reference_reader.h"

namespace tessel {

/// Reads the fields of one object from the children of its element, each by its key. All readers return whether reading
/// may go on; one that does not has made its message. An absent child gives the default, which also replaces the old
/// value of a row that is updated.
///
/// The order of the calls is the order in which faults are found, so the calls of an object stand in one chain.
class FieldReader {
public:
  FieldReader(ImportContext& run, const pugi::xml_node& element, const ElementContext& object)
      : run_(run), element_(element), object_(object) {}

  const ElementContext& object() const { return object_; }

  bool required(const wchar_t* key, OdString& field) const;
  bool optional(const wchar_t* key, OdString& field) const;

  /// An absent child and one that is nil give no text; an empty child gives an empty one.
  bool optional(const wchar_t* key, std::optional<OdString>& field) const;

  // Numbers and booleans are never refused: what is no number reads as 0.
  bool optional(const wchar_t* key, bool& field, bool defaultValue) const;
  bool optional(const wchar_t* key, short& field, short defaultValue) const;
  bool optional(const wchar_t* key, unsigned int& field, unsigned int defaultValue) const;
  bool optional(const wchar_t* key, double& field, double defaultValue) const;

  /// The text of the child "name", or of the element itself if there is none.
  bool nameOrText(OdString& field) const;

  /// Words of closed lists. An absent child gives no IFC type, and a type with all three parts 0.
  bool optional(const wchar_t* key, std::optional<IfcType>& field) const;
  bool optional(const wchar_t* key, PropertyType& field) const;

  /// A reference that must be there.
  template <typename T>
  bool required(const wchar_t* key, TsSmartPtr<const T>& field) const {
    const pugi::xml_node child = element_.child(key);
    TsSmartPtr<T> target;
    const bool success = readReference<T>(run_, child, target, object_.field(key));
    field = target;
    return success;
  }

  /// A reference that may be absent, nil or empty, which makes it null.
  template <typename T>
  bool nullable(const wchar_t* key, TsSmartPtr<const T>& field) const {
    TsSmartPtr<T> target;
    const bool success = readNullableReference<T>(run_, element_.child(key), target, object_.field(key));
    field = target;
    return success;
  }

  /// All references of that key, handed to `add` one by one; the first that fails ends the list.
  template <typename T, typename Add>
  bool each(const wchar_t* key, Add&& add) const {
    const ElementContext context = object_.field(key);
    for (pugi::xml_node child = element_.child(key); child; child = child.next_sibling(key)) {
      TsSmartPtr<T> target;
      if (!readReference<T>(run_, child, target, context)) return false;
      add(target);
    }
    return true;
  }

  /// The home of a definition. Within a set, a namespace that is absent or does not resolve is that of the set, silently.
  bool definitionNamespace(TsSmartPtr<const PropertyNamespace>& field) const;

private:
  pugi::xml_node take(const wchar_t* key) const;
  bool structure(PropertyType::Structure& field) const;
  bool valueType(PropertyType::Type& field) const;
  bool keyType(PropertyType::Type& field) const;

  ImportContext& run_;
  const pugi::xml_node element_;
  const ElementContext& object_;
};

/// Whether the nil attribute of the element is set.
bool isNil(const ImportContext& run, const pugi::xml_node& element);

/// Whether a nullable reference says that there is no target: the element is absent, nil, or has neither a child nor an
/// attribute of its own.
bool isNullElement(const ImportContext& run, const pugi::xml_node& element);

}  // namespace tessel
