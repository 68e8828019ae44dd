#pragma once

#include <tessel/export.h>
#include <tessel/fwd.h>
#include <tessel/platform/od_string.h>
#include <tessel/property_type.h>

namespace tessel {

/// The natural key of an object whose name is unique in its file.
struct NameKey {
  explicit NameKey(const OdString& keyName) : name(keyName) {}

  OdString name;
};

/// The natural key of an object whose name is unique within its owner, a `T`.
template <typename T>
struct NameObjectKey {
  NameObjectKey(const OdString& keyName, unsigned int ownerId) : name(keyName), object_id(ownerId) {}

  OdString name;
  unsigned int object_id;  ///< The owner's id; 0 when there is no owner.
};

/// A condition on a text column. New criteria set no condition.
///
/// Equality is exact. `contains`, `startsWith`, `endsWith` and `match` are SQLite's LIKE: they ignore the case of ASCII
/// letters, "%" stands for any text and "_" for any character, in the operand too, for nothing is escaped. A column
/// without a value (NULL) satisfies `unset` alone, not even `notEquals`.
class TESSEL_API StringCriteria {
public:
  enum class Mode {
    Anything = 0,
    Unset = 1,
    Set = 2,
    Empty = 3,
    NotEmpty = 4,
    Equals = 5,
    NotEquals = 6,
    Contains = 7,
    StartsWith = 8,
    EndsWith = 9,
    Match = 10,
  };

  Mode mode() const { return mode_; }
  const OdString& str() const { return str_; }

  /// Whether there is a condition.
  explicit operator bool() const { return mode_ != Mode::Anything; }

  StringCriteria& anything() { return setMode(Mode::Anything); }
  StringCriteria& unset() { return setMode(Mode::Unset); }
  StringCriteria& set() { return setMode(Mode::Set); }
  StringCriteria& empty() { return setMode(Mode::Empty); }
  StringCriteria& notEmpty() { return setMode(Mode::NotEmpty); }
  StringCriteria& equals(const OdString& text) { return setMode(Mode::Equals, text); }
  StringCriteria& notEquals(const OdString& text) { return setMode(Mode::NotEquals, text); }
  StringCriteria& contains(const OdString& text) { return setMode(Mode::Contains, text); }
  StringCriteria& startsWith(const OdString& text) { return setMode(Mode::StartsWith, text); }
  StringCriteria& endsWith(const OdString& text) { return setMode(Mode::EndsWith, text); }
  StringCriteria& match(const OdString& pattern) { return setMode(Mode::Match, pattern); }

private:
  StringCriteria& setMode(Mode mode) {
    mode_ = mode;
    return *this;
  }
  StringCriteria& setMode(Mode mode, const OdString& operand) {
    str_ = operand;
    return setMode(mode);
  }

  Mode mode_ = Mode::Anything;
  OdString str_;
};

/// A condition on a column of floating-point numbers, which are compared exactly. New criteria set no condition.
class TESSEL_API NumberCriteria {
public:
  enum class Mode {
    Anything = 0,
    Unset = 1,
    Set = 2,
    Equals = 3,
    NotEquals = 4,
    Less = 5,
    LessOrEqual = 6,
    Greater = 7,
    GreaterOrEqual = 8,
  };

  Mode mode() const { return mode_; }
  double value() const { return value_; }

  /// Whether there is a condition.
  explicit operator bool() const { return mode_ != Mode::Anything; }

  NumberCriteria& anything() { return setMode(Mode::Anything); }
  NumberCriteria& unset() { return setMode(Mode::Unset); }
  NumberCriteria& set() { return setMode(Mode::Set); }
  NumberCriteria& equals(double number) { return setMode(Mode::Equals, number); }
  NumberCriteria& notEquals(double number) { return setMode(Mode::NotEquals, number); }
  NumberCriteria& less(double number) { return setMode(Mode::Less, number); }
  NumberCriteria& lessOrEqual(double number) { return setMode(Mode::LessOrEqual, number); }
  NumberCriteria& greater(double number) { return setMode(Mode::Greater, number); }
  NumberCriteria& greaterOrEqual(double number) { return setMode(Mode::GreaterOrEqual, number); }

private:
  NumberCriteria& setMode(Mode mode) {
    mode_ = mode;
    return *this;
  }
  NumberCriteria& setMode(Mode mode, double operand) {
    value_ = operand;
    return setMode(mode);
  }

  Mode mode_ = Mode::Anything;
  double value_ = 0;
};

// What a look-up may ask of each class. All conditions of a record must hold; an id of 0 sets no condition.

/// Site, EntityType, PropertyNamespace, Measure; in the order of their names.
struct NameCriteria {
  StringCriteria name;
};

/// Building; in the order of the names.
struct BuildingCriteria {
  StringCriteria name;
  unsigned int site_id = 0;
};

/// Story; from the bottom up if the building is given, otherwise in the order of the names.
struct StoryCriteria {
  StringCriteria name;
  unsigned int building_id = 0;
};

/// Unit; in no particular order.
struct UnitCriteria {
  StringCriteria name;
  StringCriteria label;
  NumberCriteria scale;
  unsigned int measure_id = 0;
};

/// PropertySet; in the order of the names.
struct PropertySetCriteria {
  StringCriteria name;
  unsigned int namespace_id = 0;
};

/// PropertyDefinition; in the order of the names.
///
/// `ifc_name` asks for the IFC name of a definition, which is its name where it has no IFC name of its own. `type` sets
/// no condition while all its three parts are 0; otherwise all three must agree, those that are 0 too.
struct PropertyDefinitionCriteria {
  unsigned int namespace_id = 0;
  StringCriteria name;
  StringCriteria ifc_name;
  PropertyType type;
};

/// ValueDefinition; as for PropertyDefinition.
struct ValueDefinitionCriteria {
  unsigned int namespace_id = 0;
  StringCriteria name;
  StringCriteria ifc_name;
  PropertyType type;
};

/// PropertyDefinition, asked in terms of IFC: those that are in a property set of such a name and have such an IFC name,
/// which is their name where they have no IFC name of their own. A definition comes once for each such set; without a
/// condition on the set also the definitions in no set come. In no particular order.
struct IfcPropertySetDefinitionQuery {
  StringCriteria property_set_name;
  StringCriteria property_name;
};

/// SpatialStructure: sites, buildings and stories together, in no particular order.
struct SpatialStructureCriteria {};

}  // namespace tessel
