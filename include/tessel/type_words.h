#pragma once

#include <tessel/export.h>
#include <tessel/ifc_type.h>
#include <tessel/platform/od_string.h>
#include <tessel/property_type.h>

namespace tessel {

/// The words by which the import document calls the parts of a type; of those that have an alias, the first one. Empty
/// for a number that is none of the enumeration. For any thread.
///@{
TESSEL_API OdString wordOf(PropertyType::Structure structure);
TESSEL_API OdString wordOf(PropertyType::Type type);
TESSEL_API OdString wordOf(IfcType type);
///@}

}  // namespace tessel
