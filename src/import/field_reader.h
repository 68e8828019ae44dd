#pragma once

#include <cstdint>
#include <optional>

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

  /// A reference that must be there.
  template <typename T>
  bool required(const wchar_t* key, TsSmartPtr<const T>& field) const {
    const pugi::xml_node child = element_.child(key);
    TsSmartPtr<T> target;
    const bool success = readReference<T>(run_, child, target, object_.field(key));
    field = target;
    return success;
  }

private:
  pugi::xml_node take(const wchar_t* key) const;

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
