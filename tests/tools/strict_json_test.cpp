#include "tools/strict_json.h"

#include <gtest/gtest.h>

namespace tessel::test {
namespace {

// The judge of the program's output is judged first.

TEST(StrictJson, ReadsMembersOfAllKinds) {
  const JsonMembers expected = {
    {"a", "1"}, {"b.c", "-0.5e+3"}, {"b.d", "true"}, {"e", "x\"\\\n\xC3\xA9\xF0\x9F\x8F\xA0"}};
  EXPECT_EQ(StrictJson::read(R"({"a":1, "b": {"c": -0.5e+3, "d" : true}, "e": "x\"\\\n\u00e9\uD83C\uDFE0"})"),
            expected);
  EXPECT_TRUE(StrictJson::read("{}").empty());
}

TEST(StrictJson, ReadsArrays) {
  const JsonMembers expected = {{"0", "1"}, {"1.a.0", "x"}, {"1.a.1.0", "null"}};
  EXPECT_EQ(StrictJson::read(R"([1, {"a":["x", [null] ], "b":[]}])"), expected);
  EXPECT_TRUE(StrictJson::read("[ ]").empty());
}

class StrictJsonRefuses : public ::testing::TestWithParam<const char*> {};

TEST_P(StrictJsonRefuses, WhatIsNoJson) { EXPECT_THROW(StrictJson::read(GetParam()), std::runtime_error); }

INSTANTIATE_TEST_SUITE_P(Texts, StrictJsonRefuses,
                         ::testing::Values("", "1", "{", "{} ", "{}{}", R"({"a":1,})", R"({"a":1 "b":2})", R"({a:1})",
                                           R"({'a':1})", R"({"a":01})", R"({"a":1.})", R"({"a":.5})", R"({"a":1e})",
                                           R"({"a":+1})", R"({"a":True})", R"({"a":})", R"({"a":1,"a":2})", "[", "[1",
                                           "[1,]", "[1 2]", "[1}", "[] ", "[,1]", "{\"a\":\"\n\"}", "{\"a\":\"\x01\"}",
                                           R"({"a":"\x"})", R"({"a":"\u12"})", R"({"a":"\uD800"})",
                                           R"({"a":"\uDC00\uD800"})", R"({"a":"b)", "{\"a\":\"\xFF\"}"));

}  // namespace
}  // namespace tessel::test
