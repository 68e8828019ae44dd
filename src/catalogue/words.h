#pragma once

#include <optional>

#include <tessel/ifc_type.h>
#include <tessel/platform/od_string.h>
#include <tessel/property_type.h>

namespace tessel {

// The words that the import document writes for the values of a definition's type. Case counts; no value for any other text.

std::optional<PropertyType::Structure> structureFromWord(const OdString& word);
std::optional<PropertyType::Type> typeFromWord(const OdString& word);
std::optional<IfcType> ifcTypeFromWord(const OdString& word);

}  // namespace tessel
