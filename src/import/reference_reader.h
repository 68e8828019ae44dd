#pragma once

#include <pugixml.hpp>

#include <tessel/smart_ptr.h>

#include "import/element_context.h"
#include "import/import_context.h"

namespace tessel {

/// A reference did not lead to an object. It is thrown and caught within the reading of that reference.
struct UnresolvedReference {
  OdString search;  ///< What was looked for, as the message tells it.
};

/// Reads a reference to an object in one of its forms, in this order: by the document id of an earlier element, by
/// attributes that name a row of the file, or as an object that stands in the element. False after a message, with
/// `target` null unless an inline object failed halfway.
template <typename T>
bool readReference(ImportContext& run, const pugi::xml_node& element, TsSmartPtr<T>& target,
                   const ElementContext& field);

/// As `readReference`, but the reference may be absent, nil or empty, which gives a null target.
template <typename T>
bool readNullableReference(ImportContext& run, const pugi::xml_node& element, TsSmartPtr<T>& target,
                           const ElementContext& field);

}  // namespace tessel
