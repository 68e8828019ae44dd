#include <pthread.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "json_text.h"

// Values that are nested up to a million levels deep, on a stack that has but a few bytes for each of them.

namespace tsutils::json {
namespace {

constexpr std::size_t depth = 1'000'000;

void onSmallStack(std::function<void()> work) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
  pthread_t thread;
  const auto run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
  pthread_attr_destroy(&attributes);
}

std::u16string repeated(std::u16string_view part, std::size_t count) {
  std::u16string text;
  text.reserve(part.size() * count);
  while (count-- > 0) text += part;
  return text;
}

struct Shape {
  std::size_t levels;
  std::u16string_view before;
  std::u16string_view innermost;
  std::u16string_view after;

  std::u16string text() const { return repeated(before, levels) + std::u16string(innermost) + repeated(after, levels); }
};

// Those with something beside the nested value on each level are less deep, for the sake of time.
const Shape shapes[] = {
  {depth, u"[", u"", u"]"},
  {depth, u"{\"k\":", u"7", u"}"},
  {depth / 10, u"[1,", u"7", u",\"x\"]"},
  {depth / 10, u"{\"a\":\"x\",\"k\":", u"{}", u",\"z\":[2]}"},
  {depth / 10, u"[{\"k\":[[],", u"null", u",{}]}]"},
};

template <typename Value>
class JsonDepth : public ::testing::Test {};

TYPED_TEST_SUITE(JsonDepth, Values, ConfigurationNames);

TYPED_TEST(JsonDepth, NothingNeedsADeepStack) {
  for (const Shape& shape : shapes) {
    const std::u16string text = shape.text();
    onSmallStack([&text] {
      TypeParam value;
      ASSERT_TRUE(parse(text, value));
      TypeParam copy = value;
      EXPECT_TRUE(copy == value);
      EXPECT_TRUE(written(copy) == text);
      TypeParam moved = std::move(value);
      EXPECT_TRUE(moved == copy);
      copy = TypeParam(7);
      copy = moved;
      moved = TypeParam();
      EXPECT_TRUE(written(copy) == text);
    });
  }
}

TYPED_TEST(JsonDepth, DifferenceAtTheBottomIsFound) {
  onSmallStack([] {
    TypeParam one;
    TypeParam other;
    ASSERT_TRUE(parse(repeated(u"[", depth) + u"1" + repeated(u"]", depth), one));
    ASSERT_TRUE(parse(repeated(u"[", depth) + u"2" + repeated(u"]", depth), other));
    EXPECT_FALSE(one == other);
  });
}

TYPED_TEST(JsonDepth, FaultAtTheBottomLeavesNothing) {
  onSmallStack([] {
    TypeParam value(7);
    EXPECT_FALSE(parse(repeated(u"[", depth), value));
    EXPECT_FALSE(parse(repeated(u"{\"k\":", depth) + u"?", value));
    EXPECT_FALSE(parse(repeated(u"[", depth) + repeated(u"]", depth - 1), value));
    EXPECT_TRUE(value == TypeParam(7));
  });
}

TYPED_TEST(JsonDepth, PartCanBeTakenOut) {
  onSmallStack([] {
    TypeParam value;
    ASSERT_TRUE(parse(repeated(u"[", depth) + repeated(u"]", depth), value));
    for (std::size_t level = 0; level < 1000; ++level) value = std::move(value.asArray()[0]);
    value = TypeParam(value.asArray()[0]);
    EXPECT_TRUE(written(value) == repeated(u"[", depth - 1001) + repeated(u"]", depth - 1001));
  });
}

// The indentation grows with each level, so this one is less deep.
TYPED_TEST(JsonDepth, PrettyTextNeedsNoDeepStack) {
  onSmallStack([] {
    constexpr std::size_t levels = 5000;
    TypeParam value;
    ASSERT_TRUE(parse(repeated(u"[", levels) + repeated(u"]", levels), value));
    TypeParam again;
    ASSERT_TRUE(parse(written(value, true), again));
    EXPECT_TRUE(again == value);
  });
}

// Around the depth at which copying and destroying change their way.
TYPED_TEST(JsonDepth, EveryDepthIsCopied) {
  for (std::size_t levels = 0; levels < 100; ++levels) {
    const std::u16string text =
      repeated(u"[1,{\"k\":\"x\",\"l\":", levels) + u"[\"a\",{},[true]]" + repeated(u",\"m\":[0]},null]", levels);
    const auto value = parsed<TypeParam>(text);
    ASSERT_TRUE(value);
    const TypeParam copy = *value;
    EXPECT_TRUE(copy == *value);
    EXPECT_TRUE(written(copy) == text) << levels;
  }
}

// A list that is looked through again for each of its members would take minutes.
TYPED_TEST(JsonDepth, WideListsAtTheBottomAreFreedInOneGo) {
  constexpr std::size_t width = 200'000;
  const std::u16string wide =
    u"[" + repeated(u"1,", width) + repeated(u"[],", width) + repeated(u"{\"a\":[]},1,", width) + u"]";
  onSmallStack([&wide] {
    TypeParam value;
    ASSERT_TRUE(parse(repeated(u"[", 100) + wide + repeated(u"]", 100), value));
    const TypeParam copy = value;
    EXPECT_TRUE(copy == value);
  });
}

}  // namespace
}  // namespace tsutils::json
