#include "json/value.h"

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>
#include <tessel/import_errors.h>

#include "json_text.h"

namespace tsutils::json {
namespace {

template <typename Value>
class JsonValue : public ::testing::Test {
public:
  using Array = typename Value::Array;
  using Object = typename Value::Object;
  using String = typename Value::String;

  static Value text(std::u16string_view units) { return Value(String(units)); }

  static Value object(std::u16string_view key, Value value) {
    Object members;
    Value::Config::place(members, String(key)) = std::move(value);
    return Value(std::move(members));
  }

  /// One value of each kind, in the order of the kinds.
  static Array oneOfEach() {
    return {
      object(u"key", Value(1)), Value(Array{Value(1)}), text(u"text"), Value(true), Value(-5), Value(1.5), Value()};
  }
};

TYPED_TEST_SUITE(JsonValue, Values, ConfigurationNames);

template <typename Access>
std::string valueError(Access access) {
  try {
    access();
  } catch (const ValueError& error) {
    return error.what();
  }
  return "none";
}

TYPED_TEST(JsonValue, KindsHaveTheirNumbers) {
  const auto values = TestFixture::oneOfEach();
  ASSERT_EQ(values.size(), 7u);
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(static_cast<std::size_t>(values[i].kind()), i);
}

TYPED_TEST(JsonValue, IsNullAtFirst) {
  EXPECT_EQ(TypeParam().kind(), Kind::null);
  EXPECT_FALSE(TypeParam().isUnsigned());
}

TYPED_TEST(JsonValue, HoldsWhatItWasMadeOf) {
  const auto values = TestFixture::oneOfEach();
  EXPECT_EQ(values[0].asObject().size(), 1u);
  EXPECT_EQ(values[1].asArray().size(), 1u);
  EXPECT_EQ(values[2].asString(), u"text");
  EXPECT_TRUE(values[3].asBool());
  EXPECT_FALSE(TypeParam(false).asBool());
  EXPECT_EQ(values[4].asInt(), -5);
  EXPECT_EQ(values[5].asReal(), 1.5);
}

TYPED_TEST(JsonValue, IntegersAreUnsignedIfTheirTypeIs) {
  EXPECT_FALSE(TypeParam(5).isUnsigned());
  EXPECT_FALSE(TypeParam(std::int64_t{5}).isUnsigned());
  EXPECT_TRUE(TypeParam(5u).isUnsigned());
  EXPECT_TRUE(TypeParam(std::uint64_t{5}).isUnsigned());
}

TYPED_TEST(JsonValue, IsNotMadeByAccident) {
  EXPECT_FALSE((std::is_convertible_v<bool, TypeParam>));
  EXPECT_FALSE((std::is_convertible_v<int, TypeParam>));
  EXPECT_FALSE((std::is_convertible_v<double, TypeParam>));
  EXPECT_FALSE((std::is_constructible_v<TypeParam, void*>));
  // A literal is text, not the truth value of its address.
  EXPECT_EQ(TypeParam(u"text").kind(), Kind::string);
}

TYPED_TEST(JsonValue, EachAccessToAnotherKindThrows) {
  auto values = TestFixture::oneOfEach();
  for (std::size_t i = 0; i < values.size(); ++i) {
    TypeParam& value = values[i];
    const TypeParam& constant = value;
    const auto expected = [i](std::size_t asked) {
      return i == asked ? "none" : "value type is " + std::to_string(i) + " not " + std::to_string(asked);
    };
    EXPECT_EQ(valueError([&] { (void)value.asObject(); }), expected(0));
    EXPECT_EQ(valueError([&] { (void)constant.asObject(); }), expected(0));
    EXPECT_EQ(valueError([&] { (void)value.asArray(); }), expected(1));
    EXPECT_EQ(valueError([&] { (void)constant.asArray(); }), expected(1));
    EXPECT_EQ(valueError([&] { (void)value.asString(); }), expected(2));
    EXPECT_EQ(valueError([&] { (void)constant.asString(); }), expected(2));
    EXPECT_EQ(valueError([&] { (void)value.asBool(); }), expected(3));
    EXPECT_EQ(valueError([&] { (void)value.asInt(); }), expected(4));
    EXPECT_EQ(valueError([&] { (void)value.asReal(); }), i == 4 ? "none" : expected(5));
  }
}

TYPED_TEST(JsonValue, ArrayAskedForAString) {
  const auto value = parsed<TypeParam>(u"[]");
  ASSERT_TRUE(value);
  EXPECT_EQ(valueError([&] { (void)value->asString(); }), "value type is 1 not 2");
}

TYPED_TEST(JsonValue, RealOfAnIntegerMindsTheSign) {
  EXPECT_EQ(TypeParam(-5).asReal(), -5.0);
  EXPECT_EQ(TypeParam(5u).asReal(), 5.0);
  EXPECT_EQ(TypeParam(std::numeric_limits<std::uint64_t>::max()).asReal(), 18446744073709551616.0);
  EXPECT_EQ(TypeParam(std::int64_t{-1}).asReal(), -1.0);
  EXPECT_EQ(TypeParam(std::numeric_limits<std::int64_t>::min()).asReal(), -9223372036854775808.0);
}

TYPED_TEST(JsonValue, IntegerAboveTheSignedOnesKeepsItsBits) {
  EXPECT_EQ(TypeParam(std::numeric_limits<std::uint64_t>::max()).asInt(), -1);
}

TYPED_TEST(JsonValue, CopiesAreDeep) {
  TypeParam value(TestFixture::oneOfEach());
  const TypeParam copy = value;
  EXPECT_EQ(copy, value);
  value.asArray()[0].asObject().begin()->second = TypeParam(2);
  value.asArray()[1].asArray().clear();
  value.asArray()[2].asString() = u"changed";
  EXPECT_EQ(copy, TypeParam(TestFixture::oneOfEach()));
  EXPECT_NE(copy, value);
}

TYPED_TEST(JsonValue, MovedFromIsNull) {
  for (TypeParam& value : TestFixture::oneOfEach()) {
    const TypeParam original = value;
    TypeParam moved = std::move(value);
    EXPECT_EQ(moved, original);
    EXPECT_EQ(value.kind(), Kind::null);  // NOLINT(bugprone-use-after-move)
    EXPECT_FALSE(value.isUnsigned());
    TypeParam assigned = TestFixture::text(u"before");
    assigned = std::move(moved);
    EXPECT_EQ(assigned, original);
    EXPECT_EQ(moved.kind(), Kind::null);  // NOLINT(bugprone-use-after-move)
  }
}

TYPED_TEST(JsonValue, MovingStealsTheContent) {
  TypeParam value = TestFixture::text(u"A text that is too long to live inside of the object");
  const char16_t* const units = value.asString().c_str();
  const TypeParam moved = std::move(value);
  EXPECT_EQ(moved.asString().c_str(), units);
}

TYPED_TEST(JsonValue, MovesTheSignOfAnInteger) {
  TypeParam value(7u);
  const TypeParam moved = std::move(value);
  EXPECT_TRUE(moved.isUnsigned());
  EXPECT_TRUE(TypeParam(moved).isUnsigned());
  EXPECT_FALSE(value.isUnsigned());  // NOLINT(bugprone-use-after-move)
}

TYPED_TEST(JsonValue, MayBeAssignedToItself) {
  TypeParam value(TestFixture::oneOfEach());
  TypeParam& same = value;
  value = same;
  EXPECT_EQ(value, TypeParam(TestFixture::oneOfEach()));
  value = std::move(same);
  EXPECT_EQ(value, TypeParam(TestFixture::oneOfEach()));
}

TYPED_TEST(JsonValue, MayBecomeAPartOfItself) {
  TypeParam copied(TestFixture::oneOfEach());
  copied = copied.asArray()[0];
  EXPECT_EQ(copied, TestFixture::object(u"key", TypeParam(1)));
  TypeParam moved(TestFixture::oneOfEach());
  moved = std::move(moved.asArray()[0]);
  EXPECT_EQ(moved, TestFixture::object(u"key", TypeParam(1)));
}

TYPED_TEST(JsonValue, Swaps) {
  TypeParam one(TestFixture::oneOfEach());
  TypeParam other(7u);
  swap(one, other);
  EXPECT_EQ(other, TypeParam(TestFixture::oneOfEach()));
  EXPECT_EQ(one, TypeParam(7u));
  EXPECT_TRUE(one.isUnsigned());
}

TYPED_TEST(JsonValue, KindsDiffer) {
  const auto values = TestFixture::oneOfEach();
  for (std::size_t i = 0; i < values.size(); ++i) {
    for (std::size_t j = 0; j < values.size(); ++j) {
      EXPECT_EQ(values[i] == values[j], i == j);
      EXPECT_EQ(values[i] != values[j], i != j);
      EXPECT_EQ(values[i] == TypeParam(values[j]), i == j);
    }
  }
}

TYPED_TEST(JsonValue, IntegersAreEqualWhenTheirBitsAre) {
  EXPECT_EQ(TypeParam(5), TypeParam(5u));
  EXPECT_EQ(TypeParam(std::int64_t{-1}), TypeParam(std::numeric_limits<std::uint64_t>::max()));
  EXPECT_NE(TypeParam(5), TypeParam(6));
  EXPECT_NE(TypeParam(std::int64_t{1} << 32), TypeParam(0));
}

TYPED_TEST(JsonValue, RealNeverEqualsAnInteger) {
  EXPECT_NE(TypeParam(1), TypeParam(1.0));
  EXPECT_NE(TypeParam(1.0), TypeParam(1u));
  EXPECT_NE(parsed<TypeParam>(u"1"), parsed<TypeParam>(u"1.0"));
  EXPECT_NE(parsed<TypeParam>(u"[1]"), parsed<TypeParam>(u"[1.0]"));
  EXPECT_EQ(TypeParam(1.0), TypeParam(1.0));
  EXPECT_NE(TypeParam(1.0), TypeParam(1.5));
}

TYPED_TEST(JsonValue, EqualsItselfEvenIfItIsNotANumber) {
  const TypeParam value(std::numeric_limits<double>::quiet_NaN());
  const TypeParam copy = value;
  EXPECT_TRUE(value == value);
  EXPECT_FALSE(value == copy);
  const TypeParam list(typename TypeParam::Array{value});
  EXPECT_TRUE(list == list);
  EXPECT_FALSE(list == TypeParam(list));
}

TYPED_TEST(JsonValue, StringsAreComparedByLengthAndUnits) {
  EXPECT_EQ(TestFixture::text(u"text"), TestFixture::text(u"text"));
  EXPECT_NE(TestFixture::text(u"text"), TestFixture::text(u"texts"));
  EXPECT_NE(TestFixture::text(u"text"), TestFixture::text(u"Text"));
  EXPECT_NE(TestFixture::text({u"a\0b", 3}), TestFixture::text({u"a\0c", 3}));
  EXPECT_NE(TestFixture::text({u"a\0b", 3}), TestFixture::text(u"a"));
}

TYPED_TEST(JsonValue, TruthValuesAreCompared) {
  EXPECT_EQ(TypeParam(true), TypeParam(true));
  EXPECT_NE(TypeParam(true), TypeParam(false));
}

TYPED_TEST(JsonValue, ArraysAreEqualByLengthAndElements) {
  const auto same = [](std::u16string_view a, std::u16string_view b) {
    return *parsed<TypeParam>(a) == *parsed<TypeParam>(b);
  };
  EXPECT_TRUE(same(u"[]", u"[]"));
  EXPECT_TRUE(same(u"[1,[2,{}]]", u"[1,[2,{}]]"));
  EXPECT_FALSE(same(u"[1]", u"[1,2]"));
  EXPECT_FALSE(same(u"[1,2]", u"[1]"));
  EXPECT_FALSE(same(u"[1,2]", u"[2,1]"));
  EXPECT_FALSE(same(u"[1,[2,[3]]]", u"[1,[2,[4]]]"));
  EXPECT_FALSE(same(u"[[1],2]", u"[[3],2]"));
}

TYPED_TEST(JsonValue, ObjectsAreEqualByTheirMembers) {
  const auto same = [](std::u16string_view a, std::u16string_view b) {
    return *parsed<TypeParam>(a) == *parsed<TypeParam>(b);
  };
  EXPECT_TRUE(same(u"{}", u"{}"));
  EXPECT_TRUE(same(u"{\"a\":{\"b\":1}}", u"{\"a\":{\"b\":1}}"));
  EXPECT_FALSE(same(u"{\"a\":1}", u"{}"));
  EXPECT_FALSE(same(u"{\"a\":1}", u"{\"a\":1,\"b\":1}"));
  EXPECT_FALSE(same(u"{\"a\":1}", u"{\"b\":1}"));
  EXPECT_FALSE(same(u"{\"a\":1}", u"{\"a\":2}"));
  EXPECT_FALSE(same(u"{\"a\":{\"b\":1}}", u"{\"a\":{\"b\":2}}"));
  EXPECT_FALSE(same(u"{\"a\":{\"b\":1}}", u"{\"a\":{\"c\":1}}"));
}

TEST(JsonMapValue, OrderOfTheInputDoesNotCount) {
  EXPECT_EQ(parsed<wmValue>(u"{\"a\":1,\"b\":2}"), parsed<wmValue>(u"{\"b\":2,\"a\":1}"));
}

TEST(JsonVectorValue, MembersAreEqualInOrderOnly) {
  EXPECT_NE(parsed<OdValue>(u"{\"a\":1,\"b\":2}"), parsed<OdValue>(u"{\"b\":2,\"a\":1}"));
}

}  // namespace
}  // namespace tsutils::json
