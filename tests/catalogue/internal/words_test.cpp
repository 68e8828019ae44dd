#include "catalogue/words.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "catalogue/ifc_types.h"
#include "support/printers.h"

namespace tessel::test {
namespace {

using Structure = PropertyType::Structure;
using Type = PropertyType::Type;

std::u16string withLetters(std::u16string text, char16_t first, char16_t becomes) {
  for (char16_t& unit : text) {
    if (unit >= first && unit < first + 26) unit = static_cast<char16_t>(unit - first + becomes);
  }
  return text;
}

/// How else a word might be written; none of these is one.
std::vector<OdString> slipsOf(const OdString& word) {
  const std::u16string text(word.view());
  std::vector<OdString> slips;
  for (const std::u16string& slip :
       {withLetters(text, u'A', u'a'), withLetters(text, u'a', u'A'), u" " + text, text + u" ", text + u"\n",
        text + u'\0', text.substr(0, text.size() - 1), text + u"s"}) {
    slips.emplace_back(std::u16string_view(slip));
  }
  return slips;
}

TEST(StructureWords, NameTheFourStructures) {
  EXPECT_EQ(structureFromWord(L"Undefined"), Structure::Undefined);
  EXPECT_EQ(structureFromWord(L"Single"), Structure::Single);
  EXPECT_EQ(structureFromWord(L"Array"), Structure::Array);
  EXPECT_EQ(structureFromWord(L"Map"), Structure::Map);
}

TEST(StructureWords, DoNotNameTheShorthands) {
  EXPECT_FALSE(structureFromWord(L"Struct"));
  EXPECT_FALSE(structureFromWord(L"Dictionary"));
}

TEST(StructureWords, AreMatchedWholeAndWithTheirCase) {
  for (const wchar_t* word : {L"Undefined", L"Single", L"Array", L"Map"}) {
    for (const OdString& slip : slipsOf(word)) {
      EXPECT_FALSE(structureFromWord(slip)) << ::testing::PrintToString(slip);
    }
  }
  EXPECT_FALSE(structureFromWord(L""));
  EXPECT_FALSE(structureFromWord(L"1"));
  EXPECT_FALSE(structureFromWord(L"Double"));
}

struct TypeWord {
  const wchar_t* word;
  Type type;
};

const std::vector<TypeWord> typeWords = {
  {L"Any", Type::Any},         {L"Bool", Type::Bool},         {L"Int8", Type::Int8},
  {L"UInt8", Type::UInt8},     {L"Int16", Type::Int16},       {L"UInt16", Type::UInt16},
  {L"Int32", Type::Int32},     {L"UInt32", Type::UInt32},     {L"Int64", Type::Int64},
  {L"UInt64", Type::UInt64},   {L"Double", Type::Double},     {L"String", Type::String},
  {L"Handle", Type::Handle},   {L"ObjectId", Type::ObjectId}, {L"Vector2d", Type::Vector2d},
  {L"Point2d", Type::Point2d}, {L"Vector3d", Type::Vector3d}, {L"Point3d", Type::Point3d},
  {L"Binary", Type::Binary},
};

const std::vector<TypeWord> aliases = {
  {L"Boolean", Type::Bool},
  {L"Byte", Type::Int8},
  {L"Integer", Type::Int32},
  {L"Real", Type::Double},
};

TEST(TypeWords, NameTheNineteenTypesInTheOrderOfTheirNumbers) {
  int number = 0;
  for (const TypeWord& row : typeWords) {
    const auto type = typeFromWord(row.word);
    ASSERT_TRUE(type) << row.word;
    EXPECT_EQ(*type, row.type) << row.word;
    EXPECT_EQ(static_cast<int>(*type), number++) << row.word;
  }
  EXPECT_EQ(number, 19);
}

TEST(TypeWords, HaveFourAliases) {
  for (const TypeWord& row : aliases) EXPECT_EQ(typeFromWord(row.word), row.type) << row.word;
}

TEST(TypeWords, CallTheSignedKindAByte) {
  EXPECT_EQ(typeFromWord(L"Byte"), Type::Int8);
  EXPECT_EQ(typeFromWord(L"UInt8"), Type::UInt8);
  for (const wchar_t* word : {L"UByte", L"SByte", L"Uint8", L"Unsigned"}) EXPECT_FALSE(typeFromWord(word)) << word;
}

TEST(TypeWords, AreMatchedWholeAndWithTheirCase) {
  for (const auto* words : {&typeWords, &aliases}) {
    for (const TypeWord& row : *words) {
      for (const OdString& slip : slipsOf(row.word)) {
        EXPECT_FALSE(typeFromWord(slip)) << ::testing::PrintToString(slip);
      }
    }
  }
  EXPECT_FALSE(typeFromWord(L""));
  EXPECT_FALSE(typeFromWord(L"0"));
  EXPECT_FALSE(typeFromWord(L"Single"));
}

TEST(IfcTypeWords, AreTheNamesOfTheMembers) {
  for (const IfcTypeGroup& group : ifcTypeGroups()) {
    int number = group.base;
    for (const IfcTypeRow& row : group.rows) {
      const auto type = ifcTypeFromWord(row.word);
      ASSERT_TRUE(type) << row.word;
      EXPECT_EQ(static_cast<int>(*type), number++) << row.word;
    }
  }
}

TEST(IfcTypeWords, AreMatchedWholeAndWithTheirCase) {
  for (const IfcTypeGroup& group : ifcTypeGroups()) {
    for (const IfcTypeRow& row : group.rows) {
      for (const OdString& slip : slipsOf(row.word)) {
        EXPECT_FALSE(ifcTypeFromWord(slip)) << ::testing::PrintToString(slip);
      }
    }
  }
  for (const wchar_t* word : {L"", L"-1", L"Label", L"IfcLabel", L"Undefined"})
    EXPECT_FALSE(ifcTypeFromWord(word)) << word;
}

}  // namespace
}  // namespace tessel::test
