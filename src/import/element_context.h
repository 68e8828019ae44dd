#pragma once

#include <array>
#include <cstdint>

#include <tessel/fwd.h>
#include <tessel/object_type.h>
#include <tessel/platform/od_string.h>

namespace tessel {

/// Where a reader stands, for messages: the tag of an object, a field of it, a part of the field. It begins anew with each
/// inline object, and is put together only when a message is made.
class ElementPath {
public:
  explicit ElementPath(const wchar_t* tag) : steps_{tag, nullptr, nullptr} {}

  ElementPath then(const wchar_t* key) const;

  /// "unit > measure"
  OdString text() const;

private:
  std::array<const wchar_t*, 3> steps_;
};

/// The state of reading one element. The context of a field is the one of its object with a longer path.
struct ElementContext {
  const ElementContext* parent;  ///< Of the field in which an inline object stands; null for a top-level object.
  ObjectType type;               ///< Of the object; no class under "default_unit".
  Object* object;                ///< The object that is being read; may be null.
  ElementPath path;
  bool report;          ///< Whether errors are delivered.
  std::int64_t offset;  ///< Of the object's element in the document; -1 for an inline object.

  ElementContext field(const wchar_t* key) const {
    ElementContext context = *this;
    context.path = path.then(key);
    return context;
  }

  /// The property set that is being read, if it is one.
  const PropertySet* set() const;

  ElementContext silent() const {
    ElementContext context = *this;
    context.report = false;
    return context;
  }
};

}  // namespace tessel
