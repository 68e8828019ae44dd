#pragma once

#include <cstdint>

namespace tessel {

/// Shape and kind of the values of a definition. The numbers are part of the file format.
///
/// There are four structures only: a struct is an array of Any, and a dictionary is a map whose values are Any, so
/// `Struct()` equals `Array(Type::Any)`.
struct PropertyType {
  /// The shape of the values; 0 is that of a definition without a type.
  enum class Structure : std::int32_t { Undefined = 0, Single = 1, Array = 2, Map = 3 };

  /// The kind of a single value, of the elements of an array, or of the keys or values of a map.
  enum class Type : std::int32_t {
    Any = 0,
    Bool = 1,
    Int8 = 2,
    UInt8 = 3,
    Int16 = 4,
    UInt16 = 5,
    Int32 = 6,
    UInt32 = 7,
    Int64 = 8,
    UInt64 = 9,
    Double = 10,
    String = 11,
    Handle = 12,
    ObjectId = 13,
    Vector2d = 14,
    Point2d = 15,
    Vector3d = 16,
    Point3d = 17,
    Binary = 18,
  };

  Structure structure = Structure::Undefined;  ///< Of the whole value.
  Type value_type = Type::Any;                 ///< Of the value, or of each element.
  Type key_type = Type::Any;                   ///< Of the keys of a map; Any for all other structures.

  PropertyType() = default;

  /// A type of that structure; `Struct` and `Dictionary` are shorthands.
  ///@{
  static PropertyType Undefined() { return {}; }
  static PropertyType Single(Type type) { return {Structure::Single, type, Type::Any}; }
  static PropertyType Array(Type type) { return {Structure::Array, type, Type::Any}; }
  static PropertyType Map(Type key, Type value) { return {Structure::Map, value, key}; }
  static PropertyType Struct() { return Array(Type::Any); }
  static PropertyType Dictionary(Type key) { return Map(key, Type::Any); }
  ///@}

  /// Each overwrites all three fields.
  ///@{
  void setUndefined() { *this = Undefined(); }
  void setSingle(Type type) { *this = Single(type); }
  void setArray(Type type) { *this = Array(type); }
  void setMap(Type key, Type value) { *this = Map(key, value); }
  void setStruct() { *this = Struct(); }
  void setDictionary(Type key) { *this = Dictionary(key); }
  ///@}

private:
  PropertyType(Structure structureValue, Type valueType, Type keyType)
      : structure(structureValue), value_type(valueType), key_type(keyType) {}
};

/// All three fields, so that the kind of the keys counts even without a map.
///@{
inline bool operator==(const PropertyType& a, const PropertyType& b) {
  return a.structure == b.structure && a.value_type == b.value_type && a.key_type == b.key_type;
}
inline bool operator!=(const PropertyType& a, const PropertyType& b) { return !(a == b); }
///@}

}  // namespace tessel
