#pragma once

#include <tessel/export.h>
#include <tessel/fwd.h>
#include <tessel/platform/od_string.h>
#include <tessel/property_type.h>

namespace tessel {

/// The natural key of an object whose name is unique in its file.
struct NameKey {
  /// The name is compared exactly.
  ///@{
  explicit NameKey(const OdString& keyName) : name(keyName) {}

  OdString name;
  ///@}
};

/// The natural key of an object whose name is unique within its owner, a `T`.
template <typename T>
struct NameObjectKey {
  /// The name is compared exactly.
  ///@{
  NameObjectKey(const OdString& keyName, unsigned int ownerId) : name(keyName), object_id(ownerId) {}

  OdString name;
  ///@}

  unsigned int object_id;  ///< The owner's id.
};

/// A condition on a text column. New criteria set no condition.
///
/// Equality is exact. `contains`, `startsWith`, `endsWith` and `match` are SQLite's LIKE: they ignore the case of ASCII
/// letters, "%" stands for any text and "_" for any character, in the operand too, for nothing is escaped. A column
/// without a value (NULL) satisfies `unset` alone, not even `notEquals`.
class TESSEL_API StringCriteria {
public:
  /// The conditions, each set by the operation of its name.
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

  /// The condition.
  Mode mode() const { return mode_; }

  /// The operand of the last condition that took one; empty if none did.
  const OdString& str() const { return str_; }

  /// Whether there is a condition.
  explicit operator bool() const { return mode_ != Mode::Anything; }

  /// Replace the condition: a column has one at a time.
  ///@{
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
  ///@}

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
  /// The conditions, each set by the operation of its name.
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

  /// The condition.
  Mode mode() const { return mode_; }

  /// The operand of the last condition that took one; 0 if none did.
  double value() const { return value_; }

  /// Whether there is a condition.
  explicit operator bool() const { return mode_ != Mode::Anything; }

  /// Replace the condition: a column has one at a time.
  ///@{
  NumberCriteria& anything() { return setMode(Mode::Anything); }
  NumberCriteria& unset() { return setMode(Mode::Unset); }
  NumberCriteria& set() { return setMode(Mode::Set); }
  NumberCriteria& equals(double number) { return setMode(Mode::Equals, number); }
  NumberCriteria& notEquals(double number) { return setMode(Mode::NotEquals, number); }
  NumberCriteria& less(double number) { return setMode(Mode::Less, number); }
  NumberCriteria& lessOrEqual(double number) { return setMode(Mode::LessOrEqual, number); }
  NumberCriteria& greater(double number) { return setMode(Mode::Greater, number); }
  NumberCriteria& greaterOrEqual(double number) { return setMode(Mode::GreaterOrEqual, number); }
  ///@}

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
  StringCriteria name;  ///< On the name.
};

/// Building; in the order of the names.
struct BuildingCriteria {
  StringCriteria name;       ///< On the name.
  unsigned int site_id = 0;  ///< Of the site that the buildings stand on.
};

/// Story; from the bottom up if the building is given, otherwise in the order of the names.
struct StoryCriteria {
  StringCriteria name;           ///< On the name.
  unsigned int building_id = 0;  ///< Of the building that the stories belong to.
};

/// Unit; in no particular order.
struct UnitCriteria {
  StringCriteria name;          ///< On the name; a unit that has none is `unset`.
  StringCriteria label;         ///< On the label in its plain form.
  NumberCriteria scale;         ///< On the factor to the base unit of the measure.
  unsigned int measure_id = 0;  ///< Of the measure that the units express.
};

/// PropertySet; in the order of the names.
struct PropertySetCriteria {
  StringCriteria name;            ///< On the name.
  unsigned int namespace_id = 0;  ///< Of the namespace that the sets are in.
};

/// PropertyDefinition; in the order of the names.
struct PropertyDefinitionCriteria {
  unsigned int namespace_id = 0;  ///< Of the namespace that the definitions are in.
  StringCriteria name;            ///< On the name.
  StringCriteria ifc_name;        ///< On the IFC name, which is the name where there is no IFC name of its own.
  PropertyType type;  ///< No condition while all three parts are 0; otherwise all must agree, those that are 0 too.
};

/// ValueDefinition; as for PropertyDefinition.
struct ValueDefinitionCriteria {
  /// As in PropertyDefinitionCriteria.
  ///@{
  unsigned int namespace_id = 0;
  StringCriteria name;
  StringCriteria ifc_name;
  PropertyType type;
  ///@}
};

/// PropertyDefinition, asked in terms of IFC: those that are in a property set of such a name and have such an IFC name,
/// which is their name where they have no IFC name of their own. A definition comes once for each such set; without a
/// condition on the set also the definitions in no set come. In no particular order.
struct IfcPropertySetDefinitionQuery {
  StringCriteria property_set_name;  ///< On the name of the set.
  StringCriteria property_name;      ///< On the IFC name of the definition.
};

/// SpatialStructure: sites, buildings and stories together, in no particular order.
struct SpatialStructureCriteria {};

}  // namespace tessel
