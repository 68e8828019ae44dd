#include "json/od_string_json.h"

#include <algorithm>
#include <new>
#include <regex>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <tessel/exceptions.h>
#include <tessel/import_errors.h>

#include "json_text.h"

namespace tsutils::json {
namespace {

std::string readError(const OdString& text) {
  try {
    (void)read(text);
  } catch (const tessel::ReadError& error) {
    return error.what();
  }
  return "none";
}

std::string keyError(const wmValue& value, const char16_t* key) {
  try {
    (void)find(value.asObject(), key);
  } catch (const tessel::KeyError& error) {
    return error.what();
  }
  return "none";
}

std::string valueError(const wmValue& value) {
  try {
    (void)value.asString();
  } catch (const ValueError& error) {
    return error.what();
  }
  return "none";
}

TEST(JsonRead, GivesTheValue) {
  const wmValue value = read(u"{\"type\":\"Enum\",\"values\":[\"a\",\"b\"]}");
  EXPECT_EQ(find(value.asObject(), u"type").asString(), u"Enum");
  EXPECT_EQ(find(value.asObject(), u"values").asArray().size(), 2u);
}

TEST(JsonRead, EveryFaultHasTheSameText) {
  const std::string text = "fail to read the string into json::wmValue";
  for (const auto* fault : {u"", u"   ", u"[1,,2]", u"{\"a\":1", u"-", u"1e", u"plain text"}) {
    EXPECT_EQ(readError(fault), text) << OdString(fault).toUtf8();
  }
}

TEST(JsonRead, IgnoresWhatFollows) {
  EXPECT_EQ(read(u"1 2"), wmValue(1));
  EXPECT_EQ(read(u"1.5 garbage"), wmValue(1.5));
}

TEST(JsonRead, StringWithoutAnEndIsNoReadError) { EXPECT_THROW((void)read(u"{\"type\":\"Enum"), std::bad_alloc); }

TEST(JsonRead, ZeroEndsTheText) {
  EXPECT_EQ(readError(OdString(u"[1\0]", 4)), "fail to read the string into json::wmValue");
  EXPECT_EQ(read(OdString(u"1\0]", 3)), wmValue(1));
}

TEST(JsonFind, GivesTheMember) {
  wmValue value = read(u"{\"a\":1,\"a key that is longer\":2}");
  EXPECT_EQ(find(value.asObject(), u"a").asInt(), 1);
  const wmValue& constant = value;
  EXPECT_EQ(find(constant.asObject(), u"a key that is longer").asInt(), 2);
}

TEST(JsonFind, MemberMayBeChanged) {
  wmValue value = read(u"{\"a\":1}");
  find(value.asObject(), u"a") = wmValue(true);
  EXPECT_EQ(written(value), u"{\"a\":true}");
}

TEST(JsonFind, MissingKeyIsShownByItsAddress) {
  const char16_t* const key = u"missing";
  std::ostringstream address;
  address << static_cast<const void*>(key);
  const std::string text = keyError(read(u"{\"a\":1}"), key);
  EXPECT_EQ(text, "no key \"" + address.str() + "\" in json::wmObject");
  EXPECT_TRUE(std::regex_match(text, std::regex("no key \"0x[0-9a-f]+\" in json::wmObject"))) << text;
}

TEST(JsonFind, KeysAreComparedExactly) {
  const wmValue value = read(u"{\"Type\":1}");
  EXPECT_NE(keyError(value, u"type"), "none");
  EXPECT_NE(keyError(value, u"Typ"), "none");
  EXPECT_EQ(keyError(value, u"Type"), "none");
}

TEST(JsonFind, WrongKindIsAValueError) {
  EXPECT_EQ(valueError(find(read(u"{\"type\":1}").asObject(), u"type")), "value type is 4 not 2");
  EXPECT_THROW((void)read(u"[]").asObject(), ValueError);
}

// What has been read and written is in the order of its keys and without space, so it differs from most inputs.
TEST(JsonRead, WritingMakesAnotherTextOfTheSameValue) {
  const OdString text = u"{\"values\": [\"a\"], \"type\": \"Enum\"}";
  OdString again;
  write(read(text), again, false);
  EXPECT_EQ(again, u"{\"type\":\"Enum\",\"values\":[\"a\"]}");
  EXPECT_NE(again, text);
  EXPECT_EQ(read(again), read(text));
}

// The steps of a merge: the members of one array that the other one lacks are appended to it.
TEST(JsonRead, ArraysCanBeMerged) {
  wmValue current = read(u"{\"type\":\"Enum\",\"values\":[\"a\",\"b\"]}");
  const wmValue old = read(u"{\"values\":[\"a\",\"c\"],\"type\":\"Enum\"}");
  EXPECT_EQ(find(current.asObject(), u"type"), find(old.asObject(), u"type"));
  wmValue::Array values = find(current.asObject(), u"values").asArray();
  for (const wmValue& value : find(old.asObject(), u"values").asArray()) {
    if (std::find(values.begin(), values.end(), value) == values.end()) values.push_back(value);
  }
  find(current.asObject(), u"values") = wmValue(values);
  EXPECT_EQ(written(current), u"{\"type\":\"Enum\",\"values\":[\"a\",\"b\",\"c\"]}");
}

TEST(OdValue, HoldsSingleValues) {
  OdString text;
  write(OdValue(2.0), text, false);
  EXPECT_EQ(text, u"2.0000000000000000");
  OdValue value;
  ASSERT_TRUE(parse(text.view(), value));
  EXPECT_THROW((void)value.asInt(), ValueError);
  EXPECT_EQ(value.asReal(), 2.0);
  EXPECT_FALSE(parse(OdString().view(), value));
}

}  // namespace
}  // namespace tsutils::json
