#include "json/parser.h"

#include <new>
#include <string_view>

#include <gtest/gtest.h>

#include "json_text.h"

namespace tsutils::json {
namespace {

template <typename Value>
class JsonParser : public ::testing::Test {
public:
  static void expectRead(std::u16string_view text, std::u16string_view expected) {
    EXPECT_EQ(OdString(rewritten<Value>(text).c_str()), OdString(expected)) << OdString(text).toUtf8();
  }
  static void expectFault(std::u16string_view text) {
    EXPECT_FALSE(parsed<Value>(text).has_value()) << OdString(text).toUtf8();
  }
};

TYPED_TEST_SUITE(JsonParser, Values, ConfigurationNames);

TYPED_TEST(JsonParser, ReadsEachKind) {
  const struct {
    const char16_t* text;
    Kind kind;
  } cases[] = {{u"{}", Kind::object}, {u"[]", Kind::array},     {u"\"\"", Kind::string}, {u"true", Kind::boolean},
               {u"1", Kind::integer}, {u"-1", Kind::integer},   {u"1.0", Kind::real},    {u"false", Kind::boolean},
               {u"null", Kind::null}, {u" \t1 ", Kind::integer}};
  for (const auto& [text, kind] : cases) {
    const auto value = parsed<TypeParam>(text);
    ASSERT_TRUE(value) << OdString(text).toUtf8();
    EXPECT_EQ(value->kind(), kind) << OdString(text).toUtf8();
  }
}

TYPED_TEST(JsonParser, KeepsTheSignOfIntegers) {
  EXPECT_TRUE(parsed<TypeParam>(u"5")->isUnsigned());
  EXPECT_TRUE(parsed<TypeParam>(u"-0")->isUnsigned());
  EXPECT_FALSE(parsed<TypeParam>(u"-5")->isUnsigned());
  EXPECT_EQ(parsed<TypeParam>(u"-5")->asInt(), -5);
  EXPECT_EQ(parsed<TypeParam>(u"5")->asInt(), 5);
}

TYPED_TEST(JsonParser, TextWithoutAValueIsAFault) {
  this->expectFault(u"");
  this->expectFault(u"   ");
  this->expectFault({u"\0 1", 3});
}

TYPED_TEST(JsonParser, TokenThatIsNoValueIsAFault) {
  for (const auto* text : {u"]", u"}", u":", u",", u"?", u"-", u"1e", u"nul", u"+1", u".5", u"\"\\x\""}) {
    this->expectFault(text);
  }
}

TYPED_TEST(JsonParser, OnlyTheFirstValueCounts) {
  this->expectRead(u"1 2", u"1");
  this->expectRead(u"1.5 garbage", u"1.5000000000000000");
  this->expectRead(u"[1] ]", u"[1]");
  this->expectRead(u"nullx", u"null");
  this->expectRead(u"01", u"0");
  this->expectRead(u"{}{", u"{}");
  this->expectRead(u"\"a\"\"", u"\"a\"");
}

TYPED_TEST(JsonParser, Arrays) {
  this->expectRead(u"[]", u"[]");
  this->expectRead(u" [ ] ", u"[]");
  this->expectRead(u"[1]", u"[1]");
  this->expectRead(u"[ 1 , \"a\" , [ ] , { } , null ]", u"[1,\"a\",[],{},null]");
  this->expectRead(u"[[[],[1]],[]]", u"[[[],[1]],[]]");
}

TYPED_TEST(JsonParser, CommaMayEndAnArray) {
  this->expectRead(u"[1,]", u"[1]");
  this->expectRead(u"[[1,],]", u"[[1]]");
  this->expectRead(u"[{},]", u"[{}]");
}

TYPED_TEST(JsonParser, FaultsInArrays) {
  for (const auto* text : {u"[", u"[1", u"[1,", u"[,]", u"[,1]", u"[1,,2]", u"[1,,]", u"[1 2]", u"[1}", u"[1:2]",
                           u"[:]", u"[}", u"[01]", u"[nullx]", u"[1,?]", u"[[1]", u"[[1],", u"[[]1]", u"[{}{}]"}) {
    this->expectFault(text);
  }
}

TYPED_TEST(JsonParser, Objects) {
  this->expectRead(u"{}", u"{}");
  this->expectRead(u" { } ", u"{}");
  this->expectRead(u"{\"a\":1}", u"{\"a\":1}");
  this->expectRead(u"{ \"a\" : 1 , \"b\" : { \"c\" : [ ] } }", u"{\"a\":1,\"b\":{\"c\":[]}}");
  this->expectRead(u"{\"\":1}", u"{\"\":1}");
  this->expectRead(u"{\"\\u0061\":1}", u"{\"a\":1}");
}

TYPED_TEST(JsonParser, CommaMayEndAnObject) {
  this->expectRead(u"{\"a\":1,}", u"{\"a\":1}");
  this->expectRead(u"{\"a\":{\"b\":1,},}", u"{\"a\":{\"b\":1}}");
  this->expectRead(u"{\"a\":[],}", u"{\"a\":[]}");
}

TYPED_TEST(JsonParser, FaultsInObjects) {
  for (const auto* text : {u"{",
                           u"{\"a\"",
                           u"{\"a\":",
                           u"{\"a\":1",
                           u"{\"a\":1,",
                           u"{,}",
                           u"{\"a\":1,,}",
                           u"{\"a\":1,,\"b\":1}",
                           u"{\"a\":1 \"b\":2}",
                           u"{\"a\" 1}",
                           u"{\"a\",1}",
                           u"{\"a\"}",
                           u"{\"a\":}",
                           u"{\"a\":,}",
                           u"{\"a\"::1}",
                           u"{a:1}",
                           u"{1:1}",
                           u"{null:1}",
                           u"{[]:1}",
                           u"{]",
                           u"{\"a\":1]",
                           u"{:1}",
                           u"{\"a\":{}",
                           u"{\"a\":nul}",
                           u"{\"\\x\":1}"}) {
    this->expectFault(text);
  }
}

TYPED_TEST(JsonParser, FaultLeavesTheTargetAlone) {
  TypeParam value(7);
  EXPECT_FALSE(parse(u"[1,2", value));
  EXPECT_EQ(value, TypeParam(7));
}

TYPED_TEST(JsonParser, ValueTakesTheEarlierOnesPlace) {
  TypeParam value(typename TypeParam::Array{TypeParam(7)});
  EXPECT_TRUE(parse(u"true", value));
  EXPECT_EQ(value, TypeParam(true));
}

TYPED_TEST(JsonParser, StringsWithEscapesKeepTheirKeys) {
  this->expectRead(u"{\"a\\tb\":\"c\\td\",\"e\\nf\":\"\\n\"}", u"{\"a\\tb\":\"c\\td\",\"e\\nf\":\"\\n\"}");
}

TEST(JsonMapParser, RepeatedKeyReplaces) {
  EXPECT_EQ(rewritten<wmValue>(u"{\"a\":1,\"b\":2,\"a\":3}"), u"{\"a\":3,\"b\":2}");
  EXPECT_EQ(rewritten<wmValue>(u"{\"a\":[1,2],\"a\":{\"b\":1}}"), u"{\"a\":{\"b\":1}}");
  EXPECT_EQ(rewritten<wmValue>(u"{\"a\":{\"b\":1},\"a\":{\"c\":2}}"), u"{\"a\":{\"c\":2}}");
  EXPECT_EQ(rewritten<wmValue>(u"{\"a\":[1],\"a\":null}"), u"{\"a\":null}");
}

TEST(JsonMapParser, KeysAreSortedByUnits) {
  // U+FF5E stands behind the halves of U+1F3E0, although its number is the smaller one.
  const auto value = parsed<wmValue>(u"{\"\uFF5E\":1,\"\U0001F3E0\":2,\"b\":3,\"B\":4,\"aa\":5,\"a\":6,\"\":7}");
  ASSERT_TRUE(value);
  std::u16string keys;
  for (const auto& member : value->asObject()) keys += member.first + u"|";
  EXPECT_EQ(keys, u"|B|a|aa|b|\U0001F3E0|\uFF5E|");
}

TEST(JsonVectorParser, MembersStayInOrder) {
  EXPECT_EQ(rewritten<OdValue>(u"{\"b\":1,\"a\":2,\"b\":3}"), u"{\"b\":1,\"a\":2,\"b\":3}");
}

TEST(JsonMapParser, StringWithoutAnEndRunsOutOfMemory) {
  wmValue value(7);
  EXPECT_THROW((void)parse(u"\"text", value), std::bad_alloc);
  EXPECT_THROW((void)parse(u"[1,{\"a\":\"text", value), std::bad_alloc);
  EXPECT_THROW((void)parse(u"{\"key", value), std::bad_alloc);
  EXPECT_EQ(value, wmValue(7));
}

TEST(JsonVectorParser, StringWithoutAnEndRunsOutOfMemory) {
  OdValue value(7);
  try {
    (void)parse(u"\"text", value);
    ADD_FAILURE() << "no exception";
  } catch (const OdError& error) {
    EXPECT_EQ(error.code(), eOutOfMemory);
  }
  EXPECT_EQ(value, OdValue(7));
}

// The value is complete before the string is looked at.
TYPED_TEST(JsonParser, StringWithoutAnEndBehindTheValueIsIgnored) { this->expectRead(u"1 \"text", u"1"); }

TYPED_TEST(JsonParser, TextNeedsNoZeroBehindIt) {
  const std::u16string text = u"[12]34";
  const auto value = parsed<TypeParam>(std::u16string_view(text).substr(0, 4));
  ASSERT_TRUE(value);
  EXPECT_EQ(written(*value), u"[12]");
  this->expectFault(std::u16string_view(text).substr(0, 3));
}

}  // namespace
}  // namespace tsutils::json
