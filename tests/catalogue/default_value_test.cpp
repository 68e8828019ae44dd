#include <limits>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "catalogue/catalogue.h"

namespace tessel::test {
namespace {

class DefaultValue : public ::testing::Test {
protected:
  /// The text that a value is kept as.
  template <typename T>
  OdString kept(const T& value) {
    definition->set_default_value(value);
    return definition->default_value();
  }

  /// What the text is as a `T`, and nothing if it is none.
  template <typename T>
  std::optional<T> read(const OdString& text) {
    definition->set_default_value(text);
    T value = T();
    if (!definition->default_value(value)) return std::nullopt;
    return value;
  }

  /// Whether a refused reading leaves the host's variable alone.
  template <typename T>
  bool isRefused(const OdString& text, const T& before) {
    definition->set_default_value(text);
    T value = before;
    return !definition->default_value(value) && value == before;
  }

  TsSmartPtr<PropertyDefinition> definition =
    PropertyDefinition::create(PropertyNamespace::create(L"Common"), L"Width");
};

TEST_F(DefaultValue, OfABoolIsAWord) {
  EXPECT_EQ(kept(true), L"true");
  EXPECT_EQ(kept(false), L"false");
}

TEST_F(DefaultValue, OfAnIntIsADecimal) {
  EXPECT_EQ(kept(0), L"0");
  EXPECT_EQ(kept(42), L"42");
  EXPECT_EQ(kept(-7), L"-7");
  EXPECT_EQ(kept(std::numeric_limits<int>::max()), L"2147483647");
  EXPECT_EQ(kept(std::numeric_limits<int>::min()), L"-2147483648");
}

TEST_F(DefaultValue, OfADoubleHasSixteenPlacesBehindThePoint) {
  EXPECT_EQ(kept(2.0), L"2.0000000000000000");
  EXPECT_EQ(kept(1.5), L"1.5000000000000000");
  EXPECT_EQ(kept(-0.25), L"-0.2500000000000000");
  EXPECT_EQ(kept(0.1), L"0.1000000000000000");
  EXPECT_EQ(kept(0.0), L"0.0000000000000000");
  EXPECT_EQ(kept(1e20), L"100000000000000000000.0000000000000000");
  EXPECT_EQ(kept(1e-20), L"0.0000000000000000");
}

TEST_F(DefaultValue, OfATextIsTheTextItself) {
  for (const wchar_t* text : {L"", L"oak", L"\"quoted\"", L"true", L"back\\slash \n line", L"\u00DF\u4E2D"}) {
    EXPECT_EQ(kept(OdString(text)), text);
    EXPECT_EQ(read<OdString>(text), OdString(text));
  }
}

TEST_F(DefaultValue, ComesBackAsItWasSet) {
  for (const bool value : {true, false}) EXPECT_EQ(read<bool>(kept(value)), value);
  for (const int value : {0, 1, -1, 123456, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(read<int>(kept(value)), value);
  }
  for (const double value : {0.0, 1.0, -1.5, 0.1, 123456.789, 1e15, 1e300}) EXPECT_EQ(read<double>(kept(value)), value);
}

TEST_F(DefaultValue, IsABoolOnlyAsOneOfTheTwoWords) {
  EXPECT_EQ(read<bool>(L"true"), true);
  EXPECT_EQ(read<bool>(L"false"), false);
  for (const wchar_t* text : {L"1", L"0", L"-1", L"1.5", L"null", L"\"true\"", L"True", L"[true]", L"{}"}) {
    EXPECT_TRUE(isRefused(text, true)) << text;
    EXPECT_TRUE(isRefused(text, false)) << text;
  }
}

TEST_F(DefaultValue, IsAnIntOnlyAsAnInteger) {
  EXPECT_EQ(read<int>(L"12"), 12);
  EXPECT_EQ(read<int>(L"-12"), -12);
  EXPECT_EQ(read<int>(L"-0"), 0);
  for (const wchar_t* text :
       {L"true", L"false", L"1.0", L"2.0000000000000000", L"1e3", L"null", L"\"12\"", L"[12]", L"{}"}) {
    EXPECT_TRUE(isRefused(text, 77)) << text;
  }
}

TEST_F(DefaultValue, IsCutTo32BitsForAnInt) {
  EXPECT_EQ(read<int>(L"4294967297"), 1);
  EXPECT_EQ(read<int>(L"2147483648"), std::numeric_limits<int>::min());
  EXPECT_EQ(read<int>(L"-4294967297"), -1);
  EXPECT_EQ(read<int>(L"18446744073709551615"), -1);
  EXPECT_EQ(read<int>(L"9223372036854775807"), -1);
  EXPECT_EQ(read<int>(L"-9223372036854775808"), 0);
}

TEST_F(DefaultValue, IsADoubleAsARealOrAnInteger) {
  EXPECT_EQ(read<double>(L"1.5"), 1.5);
  EXPECT_EQ(read<double>(L"1."), 1.0);
  EXPECT_EQ(read<double>(L"-2.5e3"), -2500.0);
  EXPECT_EQ(read<double>(L"3"), 3.0);
  EXPECT_EQ(read<double>(L"-3"), -3.0);
  for (const wchar_t* text : {L"true", L"null", L"\"1.5\"", L"[1.5]", L"{}"}) EXPECT_TRUE(isRefused(text, 7.5)) << text;
}

TEST_F(DefaultValue, IsReadAsAnUnsignedIntegerForADouble) {
  EXPECT_EQ(read<double>(L"18446744073709551615"), 18446744073709551615.0);
  EXPECT_EQ(read<double>(L"9223372036854775808"), 9223372036854775808.0);
  EXPECT_EQ(read<double>(L"-9223372036854775808"), -9223372036854775808.0);
}

TEST_F(DefaultValue, IsNothingInATextThatIsNoJson) {
  for (const wchar_t* text : {L"", L"   ", L"oak", L"-", L"1e", L"[1,,2]", L"{", L"tru", L".5", L"+1"}) {
    EXPECT_TRUE(isRefused(text, true)) << text;
    EXPECT_TRUE(isRefused(text, 77)) << text;
    EXPECT_TRUE(isRefused(text, 7.5)) << text;
    EXPECT_EQ(read<OdString>(text), OdString(text));
  }
}

// It would take all memory to read one, but a text is never a reason to throw.
TEST_F(DefaultValue, IsNothingInAStringWithoutAnEnd) {
  for (const wchar_t* text :
       {L"\"", L"\"oak", L"\"oak\\\"", L"\"o\\u0061k", L"[1, \"oak", L"{\"oak", L"{\"oak\": \"tree"}) {
    EXPECT_TRUE(isRefused(text, true)) << text;
    EXPECT_TRUE(isRefused(text, 77)) << text;
    EXPECT_TRUE(isRefused(text, 7.5)) << text;
    EXPECT_EQ(read<OdString>(text), OdString(text));
  }
}

// Only the first value of a text is looked at.
TEST_F(DefaultValue, IsTheFirstValueOfAText) {
  EXPECT_EQ(read<int>(L" \t\n 7 garbage"), 7);
  EXPECT_EQ(read<int>(L"1 2"), 1);
  EXPECT_EQ(read<int>(L"01"), 0);
  EXPECT_EQ(read<double>(L"1.5 garbage"), 1.5);
  EXPECT_EQ(read<bool>(L"truex"), true);
}

TEST_F(DefaultValue, OfNoFiniteNumberIsNotReadBack) {
  for (const double value : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(isRefused(kept(value), 7.5));
  }
}

TEST_F(DefaultValue, DoesNotAskForTheTypeOfTheDefinition) {
  definition->set_type(PropertyType::Single(Type::String));
  EXPECT_EQ(kept(true), L"true");
  EXPECT_EQ(read<bool>(L"true"), true);
  definition->set_type(PropertyType::Single(Type::Bool));
  EXPECT_EQ(read<int>(L"5"), 5);
}

class SavedDefaultValue : public DefaultValue {
protected:
  template <typename T>
  bool isChangedBy(const T& value) {
    EXPECT_FALSE(definition->isDirty());
    definition->set_default_value(value);
    const bool changed = definition->isDirty();
    definition->save();
    return changed;
  }

  SampleProject project;
};

TEST_F(SavedDefaultValue, MarksItsDefinitionOnlyIfTheTextBecomesAnother) {
  project.db->save(definition);
  EXPECT_FALSE(isChangedBy(OdString()));
  EXPECT_TRUE(isChangedBy(true));
  EXPECT_FALSE(isChangedBy(true));
  EXPECT_FALSE(isChangedBy(OdString(L"true")));
  EXPECT_TRUE(isChangedBy(1));
  EXPECT_FALSE(isChangedBy(1));
  EXPECT_TRUE(isChangedBy(1.0));
  EXPECT_FALSE(isChangedBy(1.0));
  EXPECT_TRUE(isChangedBy(OdString(L"1.0"))) << "the same number, but another text";
  EXPECT_TRUE(isChangedBy(1.0));
}

TEST_F(SavedDefaultValue, IsTheTextInTheFile) {
  project.db->save(definition);
  const auto inFile = [&] { return project.row("tessel_PropertyDefinition", definition->id()).at("default_value"); };
  EXPECT_EQ(inFile(), "");
  EXPECT_TRUE(isChangedBy(2.0));
  EXPECT_EQ(inFile(), "2.0000000000000000");
  EXPECT_TRUE(isChangedBy(OdString(L"oak")));
  EXPECT_EQ(inFile(), "oak");
  double value = 7.5;
  EXPECT_FALSE(project.db->get<PropertyDefinition>(definition->id())->default_value(value));
  EXPECT_EQ(value, 7.5);
}

TEST_F(SavedDefaultValue, IsNotMarkedByReading) {
  project.db->save(definition);
  bool value = false;
  OdString text;
  definition->default_value(value);
  definition->default_value(text);
  EXPECT_FALSE(definition->isDirty());
}

}  // namespace
}  // namespace tessel::test
