#include <tuple>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/property_type.h>

namespace tessel::test {
namespace {

using Type = PropertyType::Type;
using Structure = PropertyType::Structure;
using Numbers = std::tuple<int, int, int>;

Numbers numbersOf(const PropertyType& type) {
  return {static_cast<int>(type.structure), static_cast<int>(type.value_type), static_cast<int>(type.key_type)};
}

TEST(PropertyType, IsUndefinedByItself) {
  EXPECT_EQ(numbersOf(PropertyType()), Numbers(0, 0, 0));
  EXPECT_TRUE(PropertyType() == PropertyType::Undefined());
}

TEST(PropertyType, IsMadeInSixForms) {
  EXPECT_EQ(numbersOf(PropertyType::Undefined()), Numbers(0, 0, 0));
  EXPECT_EQ(numbersOf(PropertyType::Single(Type::Double)), Numbers(1, 10, 0));
  EXPECT_EQ(numbersOf(PropertyType::Array(Type::Handle)), Numbers(2, 12, 0));
  EXPECT_EQ(numbersOf(PropertyType::Map(Type::String, Type::Int32)), Numbers(3, 6, 11));
  EXPECT_EQ(numbersOf(PropertyType::Struct()), Numbers(2, 0, 0));
  EXPECT_EQ(numbersOf(PropertyType::Dictionary(Type::String)), Numbers(3, 0, 11));
}

// Whoever makes a type names its form, so that no type of another form comes about.
static_assert(!std::is_constructible_v<PropertyType, Structure, Type, Type>);
static_assert(!std::is_constructible_v<PropertyType, Structure, Type>);
static_assert(!std::is_constructible_v<PropertyType, Structure>);
static_assert(!std::is_aggregate_v<PropertyType>);

TEST(PropertyType, SettersOverwriteAllThreeFields) {
  const PropertyType full = PropertyType::Map(Type::Point3d, Type::Binary);
  const auto after = [&full](auto&& set) {
    PropertyType type = full;
    set(type);
    return numbersOf(type);
  };
  EXPECT_EQ(after([](PropertyType& t) { t.setUndefined(); }), Numbers(0, 0, 0));
  EXPECT_EQ(after([](PropertyType& t) { t.setSingle(Type::Bool); }), Numbers(1, 1, 0));
  EXPECT_EQ(after([](PropertyType& t) { t.setArray(Type::Int8); }), Numbers(2, 2, 0));
  EXPECT_EQ(after([](PropertyType& t) { t.setMap(Type::UInt64, Type::UInt8); }), Numbers(3, 3, 9));
  EXPECT_EQ(after([](PropertyType& t) { t.setStruct(); }), Numbers(2, 0, 0));
  EXPECT_EQ(after([](PropertyType& t) { t.setDictionary(Type::Int16); }), Numbers(3, 0, 4));
}

TEST(PropertyType, AStructIsAnArrayOfAny) { EXPECT_TRUE(PropertyType::Struct() == PropertyType::Array(Type::Any)); }

TEST(PropertyType, ADictionaryIsAMapToAny) {
  EXPECT_TRUE(PropertyType::Dictionary(Type::String) == PropertyType::Map(Type::String, Type::Any));
}

TEST(PropertyType, EqualityLooksAtAllThreeFields) {
  const PropertyType type = PropertyType::Map(Type::String, Type::Double);
  EXPECT_TRUE(type == PropertyType::Map(Type::String, Type::Double));
  EXPECT_FALSE(type != PropertyType::Map(Type::String, Type::Double));
  EXPECT_TRUE(type != PropertyType::Map(Type::Int32, Type::Double));
  EXPECT_TRUE(type != PropertyType::Map(Type::String, Type::Any));
  PropertyType other = type;
  other.structure = Structure::Array;
  EXPECT_TRUE(type != other);
}

TEST(PropertyType, EqualityLooksAtTheKeyOfASingleToo) {
  PropertyType type = PropertyType::Single(Type::Double);
  type.key_type = Type::String;
  EXPECT_FALSE(type == PropertyType::Single(Type::Double));
}

TEST(PropertyType, NumbersOfStructuresArePartOfTheFile) {
  EXPECT_EQ(static_cast<int>(Structure::Undefined), 0);
  EXPECT_EQ(static_cast<int>(Structure::Single), 1);
  EXPECT_EQ(static_cast<int>(Structure::Array), 2);
  EXPECT_EQ(static_cast<int>(Structure::Map), 3);
}

TEST(PropertyType, NumbersOfTypesArePartOfTheFile) {
  const std::vector<Type> ordered = {
    Type::Any,      Type::Bool,    Type::Int8,     Type::UInt8,   Type::Int16,  Type::UInt16, Type::Int32,
    Type::UInt32,   Type::Int64,   Type::UInt64,   Type::Double,  Type::String, Type::Handle, Type::ObjectId,
    Type::Vector2d, Type::Point2d, Type::Vector3d, Type::Point3d, Type::Binary,
  };
  ASSERT_EQ(ordered.size(), 19U);
  for (std::size_t i = 0; i < ordered.size(); ++i) EXPECT_EQ(static_cast<std::size_t>(ordered[i]), i);
}

TEST(PropertyType, HoldsThreeNumbersOf32BitsInTheirOrder) {
  EXPECT_EQ(sizeof(PropertyType), 12U);
  PropertyType type;
  EXPECT_LT(static_cast<void*>(&type.structure), static_cast<void*>(&type.value_type));
  EXPECT_LT(static_cast<void*>(&type.value_type), static_cast<void*>(&type.key_type));
  EXPECT_TRUE(std::is_copy_assignable_v<PropertyType> && std::is_move_assignable_v<PropertyType>);
}

}  // namespace
}  // namespace tessel::test
