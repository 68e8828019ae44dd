#include <cstddef>
#include <cstdint>
#include <new>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "json_text.h"

namespace tsutils::json {
namespace {

class Random {
public:
  explicit Random(unsigned seed) : engine_(seed) {}

  std::size_t below(std::size_t limit) { return engine_() % limit; }
  std::uint64_t bits() { return engine_(); }

  /// Every unit can come, those that need an escape more often than others.
  char16_t unit() {
    static const std::u16string special = u"\"\\/\b\t\n\f\r\x01\x7F\u0085\u00E4\u2028\u4E2D\U0001F3E0\uFFFF";
    switch (below(4)) {
    case 0:
      return special[below(special.size())];
    case 1:
      return static_cast<char16_t>(below(0x10000));
    default:
      return static_cast<char16_t>(u' ' + below(95));
    }
  }

  std::u16string text(std::size_t limit) {
    std::u16string result(below(limit), u' ');
    for (char16_t& character : result) character = unit();
    return result;
  }

private:
  std::mt19937_64 engine_;
};

// Reals have no more than 16 digits behind the point, so that the written text has them all.
template <typename Value>
Value randomScalar(Random& random) {
  switch (random.below(6)) {
  case 0:
    return Value();
  case 1:
    return Value(random.below(2) == 0);
  case 2:
    return Value(random.bits() >> random.below(64));
  case 3:
    return Value(static_cast<std::int64_t>(random.bits()) >> random.below(64));
  case 4:
    return Value(static_cast<double>(static_cast<std::int64_t>(random.bits()) >> random.below(64)) / 65536);
  default:
    return Value(typename Value::String(std::u16string_view(random.text(20))));
  }
}

template <typename Value>
Value randomValue(Random& random, std::size_t levels) {
  const std::size_t form = levels == 0 ? 2 : random.below(4);
  if (form == 0) {
    typename Value::Array elements(random.below(6));
    for (Value& element : elements) element = randomValue<Value>(random, levels - 1);
    return Value(std::move(elements));
  }
  if (form == 1) {
    typename Value::Object members;
    for (std::size_t count = random.below(6); count > 0; --count) {
      typename Value::String key(std::u16string_view(random.text(10)));
      Value::Config::place(members, std::move(key)) = randomValue<Value>(random, levels - 1);
    }
    return Value(std::move(members));
  }
  return randomScalar<Value>(random);
}

/// One to four changes, of the kinds that typing and transport make.
std::u16string mutated(std::u16string text, Random& random) {
  static const std::u16string syntax = u"[]{}:,\"\\-+.eE0123456789ntfu \n\0";
  for (std::size_t changes = 1 + random.below(4); changes > 0; --changes) {
    const std::size_t at = random.below(text.size() + 1);
    const std::size_t length = random.below(8);
    switch (random.below(5)) {
    case 0:
      text.insert(at, 1, syntax[random.below(syntax.size())]);
      break;
    case 1:
      text.erase(at, length);
      break;
    case 2:
      text.insert(at, text.substr(random.below(text.size() + 1), length));
      break;
    case 3:
      text.resize(at);
      break;
    default:
      if (at < text.size()) text[at] = random.unit();
    }
  }
  return text;
}

template <typename Value>
class JsonRandom : public ::testing::Test {
public:
  enum class Outcome { value, fault, outOfMemory };

  /// What is read from a damaged text must be a value like any other.
  static Outcome outcome(const std::u16string& text) {
    Value value;
    try {
      if (!parse(text, value)) return Outcome::fault;
    } catch (const std::bad_alloc&) {
      return Outcome::outOfMemory;
    } catch (const OdError&) {
      return Outcome::outOfMemory;
    }
    const Value copy = value;
    EXPECT_EQ(copy, value);
    (void)written(copy, true);
    return Outcome::value;
  }
};

TYPED_TEST_SUITE(JsonRandom, Values, ConfigurationNames);

TYPED_TEST(JsonRandom, WrittenValuesAreReadBackEqual) {
  Random random(1);
  for (int i = 0; i < 3000; ++i) {
    const TypeParam value = randomValue<TypeParam>(random, 6);
    for (const bool pretty : {false, true}) {
      const std::u16string text = written(value, pretty);
      const auto again = parsed<TypeParam>(text);
      ASSERT_TRUE(again) << OdString(text.c_str()).toUtf8();
      ASSERT_EQ(*again, value);
      ASSERT_EQ(written(*again, pretty), text);
    }
  }
}

TYPED_TEST(JsonRandom, DamagedTextsAreReadOrRefused) {
  Random random(2);
  std::size_t count[3] = {};
  for (int i = 0; i < 30000; ++i) {
    const std::u16string text = written(randomValue<TypeParam>(random, 4), random.below(2) == 0);
    ++count[static_cast<std::size_t>(TestFixture::outcome(mutated(text, random)))];
  }
  for (const std::size_t times : count) EXPECT_GT(times, 100u);
}

TYPED_TEST(JsonRandom, GarbageIsReadOrRefused) {
  Random random(3);
  static const std::u16string syntax = u"[]{}:,\"\\-.e01ntu ";
  for (int i = 0; i < 100000; ++i) {
    std::u16string text(random.below(12), u' ');
    for (char16_t& unit : text) unit = random.below(8) == 0 ? random.unit() : syntax[random.below(syntax.size())];
    (void)TestFixture::outcome(text);
  }
}

}  // namespace
}  // namespace tsutils::json
