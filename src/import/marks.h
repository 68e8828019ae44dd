#pragma once

#include <pugixml.hpp>

#include "import/element_context.h"
#include "import/import_context.h"

namespace tessel {

// While an object is read, each child that a reader asks for gets a mark in the tree. A child without one is a property
// that nobody knows.

void markRead(pugi::xml_node element);

/// Warns of the children, one level down, that no reader has asked for.
void reportUnknownProperties(const ImportContext& run, const pugi::xml_node& element, const ElementContext& object);

/// Takes the marks from the element and from all below it.
void clearMarks(const pugi::xml_node& element);

/// Whether the attribute is a mark and not one of the document's.
bool isMark(const pugi::xml_attribute& attribute);

}  // namespace tessel
