#include <set>

#include <gtest/gtest.h>

#include <tessel/type_words.h>

#include "catalogue/ifc_types.h"
#include "support/printers.h"

namespace tessel::test {
namespace {

using Structure = PropertyType::Structure;
using Type = PropertyType::Type;

TEST(WordsOfTypes, NameTheStructures) {
  EXPECT_EQ(wordOf(Structure::Undefined), L"Undefined");
  EXPECT_EQ(wordOf(Structure::Single), L"Single");
  EXPECT_EQ(wordOf(Structure::Array), L"Array");
  EXPECT_EQ(wordOf(Structure::Map), L"Map");
}

TEST(WordsOfTypes, NameEachTypeOnceAndNotByAnAlias) {
  std::set<OdString> words;
  for (int number = 0; number <= 18; ++number) words.insert(wordOf(static_cast<Type>(number)));
  EXPECT_EQ(words, (std::set<OdString>{L"Any", L"Bool", L"Int8", L"UInt8", L"Int16", L"UInt16", L"Int32", L"UInt32",
                                       L"Int64", L"UInt64", L"Double", L"String", L"Handle", L"ObjectId", L"Vector2d",
                                       L"Point2d", L"Vector3d", L"Point3d", L"Binary"}));
  EXPECT_EQ(wordOf(Type::Bool), L"Bool");
  EXPECT_EQ(wordOf(Type::Double), L"Double");
}

TEST(WordsOfTypes, NameEachIfcType) {
  for (const IfcTypeGroup& group : ifcTypeGroups()) {
    for (const IfcTypeRow& row : group.rows) EXPECT_EQ(wordOf(row.type), OdString(row.word));
  }
}

TEST(WordsOfTypes, AreEmptyForANumberThatIsNone) {
  EXPECT_EQ(wordOf(static_cast<Structure>(4)), L"");
  EXPECT_EQ(wordOf(static_cast<Type>(19)), L"");
  EXPECT_EQ(wordOf(static_cast<Type>(-1)), L"");
  for (const int number : {0, 99, 112, 199, 223, 299, 369, -2})
    EXPECT_EQ(wordOf(static_cast<IfcType>(number)), L"") << number;
}

}  // namespace
}  // namespace tessel::test
