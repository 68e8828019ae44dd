#include "json/writer.h"

#include <clocale>
#include <cstdint>
#include <limits>
#include <locale>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "json_text.h"

namespace tsutils::json {
namespace {

OdString pretty(std::u16string_view text) {
  const auto value = parsed<wmValue>(text);
  return value ? OdString(written(*value, true).c_str()) : OdString(L"fault");
}

OdString string(std::u16string_view units) { return OdString(written(wmValue(std::u16string(units))).c_str()); }

OdString real(double value) { return OdString(written(wmValue(value)).c_str()); }

/// While it lives, numbers of C++ streams have groups of two digits and a comma for a point.
class StrangeLocale {
public:
  StrangeLocale() : before_(std::locale::global(std::locale(std::locale::classic(), new Numbers))) {}
  StrangeLocale(const StrangeLocale&) = delete;
  StrangeLocale& operator=(const StrangeLocale&) = delete;
  ~StrangeLocale() { std::locale::global(before_); }

private:
  struct Numbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\2"; }
  };

  std::locale before_;
};

TEST(JsonWriter, WordsAreWrittenAsTheyStand) {
  EXPECT_EQ(written(wmValue(true)), u"true");
  EXPECT_EQ(written(wmValue(false)), u"false");
  EXPECT_EQ(written(wmValue()), u"null");
}

TEST(JsonWriter, IntegersAreDecimal) {
  EXPECT_EQ(written(wmValue(0)), u"0");
  EXPECT_EQ(written(wmValue(42)), u"42");
  EXPECT_EQ(written(wmValue(-42)), u"-42");
  EXPECT_EQ(written(wmValue(std::numeric_limits<std::int64_t>::min())), u"-9223372036854775808");
  EXPECT_EQ(written(wmValue(std::numeric_limits<std::int64_t>::max())), u"9223372036854775807");
}

TEST(JsonWriter, IntegersMindTheirSign) {
  EXPECT_EQ(written(wmValue(std::numeric_limits<std::uint64_t>::max())), u"18446744073709551615");
  EXPECT_EQ(written(wmValue(std::int64_t{-1})), u"-1");
}

TEST(JsonWriter, RealsAreFixedWithSixteenDigits) {
  EXPECT_EQ(real(1.5), u"1.5000000000000000");
  EXPECT_EQ(real(2), u"2.0000000000000000");
  EXPECT_EQ(real(-0.125), u"-0.1250000000000000");
  EXPECT_EQ(real(0.1), u"0.1000000000000000");
  EXPECT_EQ(real(0), u"0.0000000000000000");
  EXPECT_EQ(real(-0.0), u"-0.0000000000000000");
  EXPECT_EQ(real(1.0 / 3), u"0.3333333333333333");
  EXPECT_EQ(real(2.0 / 3), u"0.6666666666666666");
}

TEST(JsonWriter, RealsAreFixedWhateverTheirSize) {
  EXPECT_EQ(real(1e20), u"100000000000000000000.0000000000000000");
  EXPECT_EQ(real(1e-20), u"0.0000000000000000");
  EXPECT_EQ(real(std::numeric_limits<double>::denorm_min()), u"0.0000000000000000");
  const std::u16string largest = written(wmValue(-std::numeric_limits<double>::max()));
  EXPECT_EQ(largest.size(), 327u);
  EXPECT_EQ(largest.substr(0, 18), u"-17976931348623157");
  EXPECT_EQ(largest.substr(310), u".0000000000000000");
}

TEST(JsonWriter, RealsThatAreNoNumbersAreWords) {
  EXPECT_EQ(real(std::numeric_limits<double>::infinity()), u"inf");
  EXPECT_EQ(real(-std::numeric_limits<double>::infinity()), u"-inf");
  EXPECT_EQ(real(std::numeric_limits<double>::quiet_NaN()), u"nan");
}

TEST(JsonWriter, NumbersMindNoLocale) {
  const StrangeLocale strange;
  EXPECT_EQ(written(wmValue(1234567)), u"1234567");
  EXPECT_EQ(real(1234567.5), u"1234567.5000000000000000");
  EXPECT_EQ(parsed<wmValue>(u"1234567.5")->asReal(), 1234567.5);
  EXPECT_EQ(parsed<wmValue>(u"1e400")->asReal(), std::numeric_limits<double>::infinity());
}

TEST(JsonWriter, SevenCharactersHaveShortEscapes) {
  EXPECT_EQ(string(u"\b\t\n\f\r\"\\"), uR"("\b\t\n\f\r\"\\")");
  EXPECT_EQ(string(u"a\nb"), uR"("a\nb")");
}

TEST(JsonWriter, PrintableAsciiStandsAsItIs) {
  for (char16_t unit = 0x20; unit < 0x7F; ++unit) {
    if (unit == u'"' || unit == u'\\') continue;
    EXPECT_EQ(string({&unit, 1}), OdString(std::u16string(u"\"").append(1, unit).append(u"\"").c_str()));
  }
  EXPECT_EQ(string(u"a/b"), u"\"a/b\"");
}

TEST(JsonWriter, OtherControlCharactersAreEscapedInUpperCase) {
  EXPECT_EQ(string(u"\x01"), uR"("\u0001")");
  EXPECT_EQ(string(u"\v"), uR"("\u000B")");
  EXPECT_EQ(string(u"\x1F"), uR"("\u001F")");
  EXPECT_EQ(string(u"\x7F"), uR"("\u007F")");
  EXPECT_EQ(string(u"\u0085"), uR"("\u0085")");
  EXPECT_EQ(string({u"a\0b", 3}), uR"("a\u0000b")");
}

TEST(JsonWriter, PrintableCharactersBeyondAsciiStandAsTheyAre) {
  const std::u16string text = u"\u00A0\u00E4\u00E9\u0416\u05D0\u20AC\u4E2D\uAC00\uFF5E";
  EXPECT_EQ(string(text), OdString((u"\"" + text + u"\"").c_str()));
}

TEST(JsonWriter, CharactersThatAreNotPrintableAreEscaped) {
  EXPECT_EQ(string(u"\u2028\u2029"), uR"("\u2028\u2029")");
  EXPECT_EQ(string(std::u16string{char16_t{0xFFFE}, char16_t{0xFFFF}}), uR"("\uFFFE\uFFFF")");
}

TEST(JsonWriter, EachHalfOfASurrogatePairIsEscaped) {
  EXPECT_EQ(string(u"a\U0001F3E0b"), uR"("a\uD83C\uDFE0b")");
  for (unsigned unit = 0xD800; unit < 0xE000; ++unit) {
    const auto half = static_cast<char16_t>(unit);
    ASSERT_EQ(string({&half, 1}).length(), 8u) << unit;
  }
}

// In the C locale, in which programs begin, nothing beyond ASCII is printable.
TEST(JsonWriter, WhatIsPrintableMindsNoLocale) {
  ASSERT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
  EXPECT_EQ(string(u"\u00E4"), u"\"\u00E4\"");
}

TEST(JsonWriter, KeysAreWrittenLikeStrings) {
  EXPECT_EQ(rewritten<wmValue>(uR"({"a\"\u0001\/":1})"), uR"({"a\"\u0001/":1})");
}

TEST(JsonWriter, EscapeOfAPrintableCharacterIsLost) {
  EXPECT_EQ(rewritten<wmValue>(uR"("\u00e9")"), u"\"\u00E9\"");
  EXPECT_EQ(rewritten<wmValue>(uR"("\u0001")"), uR"("\u0001")");
  EXPECT_EQ(rewritten<wmValue>(uR"("\ud83c\udfe0")"), uR"("\uD83C\uDFE0")");
}

TEST(JsonWriter, CompactTextHasNoSpace) {
  EXPECT_EQ(rewritten<wmValue>(u" { \"b\" : [ 1 , 2 ] ,\n\"a\" : { } , \"c\" : [ ] } "),
            u"{\"a\":{},\"b\":[1,2],\"c\":[]}");
}

TEST(JsonWriter, MapsAreWrittenInTheOrderOfTheirKeys) {
  EXPECT_EQ(rewritten<wmValue>(u"{\"b\":1,\"a\":2,\"B\":3}"), u"{\"B\":3,\"a\":2,\"b\":1}");
}

TEST(JsonWriter, PrettyScalarsHaveNoLineBreak) {
  EXPECT_EQ(pretty(u"1"), u"1");
  EXPECT_EQ(pretty(u"\"a\""), u"\"a\"");
}

TEST(JsonWriter, PrettyContainersAreIndentedByFour) {
  EXPECT_EQ(pretty(u"[1,2]"), u"[\n"
                              u"    1,\n"
                              u"    2\n"
                              u"]");
  EXPECT_EQ(pretty(u"{\"b\":[1,{\"c\":null}],\"a\":\"x\"}"), u"{\n"
                                                             u"    \"a\" : \"x\",\n"
                                                             u"    \"b\" : [\n"
                                                             u"        1,\n"
                                                             u"        {\n"
                                                             u"            \"c\" : null\n"
                                                             u"        }\n"
                                                             u"    ]\n"
                                                             u"}");
}

TEST(JsonWriter, PrettyEmptyContainersAreBrokenToo) {
  EXPECT_EQ(pretty(u"[]"), u"[\n]");
  EXPECT_EQ(pretty(u"{}"), u"{\n}");
  EXPECT_EQ(pretty(u"[[]]"), u"[\n    [\n    ]\n]");
}

TEST(JsonWriter, PrettyTextIsReadBack) {
  const auto value = parsed<wmValue>(u"{\"b\":[1,{\"c\":null},[]],\"a\":\"x\",\"d\":{}}");
  EXPECT_EQ(parsed<wmValue>(written(*value, true)), value);
}

TEST(JsonWriter, AppendsToTextsOfEitherType) {
  OdString od = u"before ";
  write(wmValue(1), od, false);
  EXPECT_EQ(od, u"before 1");
  std::u16string standard = u"before ";
  write(OdValue(true), standard, false);
  EXPECT_EQ(standard, u"before true");
}

// Longer than anything that is gathered before it is appended, with each kind of piece at each place.
TEST(JsonWriter, LongTexts) {
  for (std::size_t shift = 0; shift < 40; ++shift) {
    std::u16string text = u"[\"" + std::u16string(shift, u'x') + u"\"";
    while (text.size() < 20000)
      text += u",-1.2500000000000000,\"\\n\\u0001\u00E4\",18446744073709551615,null,{\"key\":[]}";
    text += u",\"" + std::u16string(20000, u'y') + u"\"]";
    ASSERT_TRUE(rewritten<wmValue>(text) == text) << shift;
  }
}

}  // namespace
}  // namespace tsutils::json
