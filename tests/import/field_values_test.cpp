// How the text of a field becomes its value.

#include "import/import_test.h"

namespace tessel::test {
namespace {

class FieldValues : public ImportTest {
protected:
  /// What a site named by this has as its name in the file.
  std::string nameOf(const std::wstring& field, unsigned int parsing = pugi::parse_default) {
    const SampleProject fresh;
    EXPECT_THAT(importText(fresh.db, L"<site>" + field + L"</site>", options, parsing), SaysNothing());
    return fresh.raw().scalarText("SELECT \"name\" FROM \"tessel_Site\"");
  }

  /// The value of a field of the only row after an update.
  std::string updated(const std::wstring& tag, const std::string& table, const std::wstring& rest,
                      const std::wstring& key, const std::wstring& text) {
    const std::wstring id = std::to_wstring(project.raw().scalarInt("SELECT max(\"id\") FROM \"" + table + "\""));
    const std::wstring field = L"<" + key + L">" + text + L"</" + key + L">";
    EXPECT_THAT(update(L"<" + tag + L" id='" + id + L"'>" + rest + field + L"</" + tag + L">"), SaysNothing());
    return project.raw().scalarText("SELECT \"" + OdString(key.c_str()).toUtf8() + "\" FROM \"" + table +
                                    "\" ORDER BY \"id\" DESC LIMIT 1");
  }

  std::string asNumber(const std::wstring& text) {
    return updated(L"site", "tessel_Site", L"<name>A</name>", L"total_area", text);
  }
  std::string asExponent(const std::wstring& text) {
    return updated(L"measure", "tessel_Measure", L"<name>M</name>", L"length", text);
  }
  std::string asCount(const std::wstring& text) {
    const std::wstring rest = L"<site name='A'/><name>B</name>";
    return updated(L"building", "tessel_Building", rest, L"number_of_storeys", text);
  }
  std::string asBoolean(const std::wstring& text) {
    const std::wstring rest = L"<site name='A'/><name>B</name>";
    return updated(L"building", "tessel_Building", rest, L"is_landmarked", text);
  }

  void SetUp() override {
    import(L"<p><measure><name>M</name></measure><site id='1'><name>A</name></site>"
           L"<building><site id='1'/><name>B</name></building></p>");
  }
};

TEST_F(FieldValues, TextIsTakenAsItStands) {
  EXPECT_EQ(nameOf(L"<name>  A  b </name>"), "  A  b ");
  EXPECT_EQ(nameOf(L"<name>a\n b</name>"), "a\n b");
  EXPECT_EQ(nameOf(L"<name>&lt;&amp;&quot;&#65;&#x42;</name>"), "<&\"AB");
}

TEST_F(FieldValues, TextBeyondTheBasicPlaneIsKept) {
  EXPECT_EQ(nameOf(L"<name>\U0001F3E0&#x1F3E1;\u00DF\u4E2D</name>"), "\U0001F3E0\U0001F3E1\u00DF\u4E2D");
  EXPECT_EQ(nameOf(L"<name>\U0010FFFF</name>"), "\U0010FFFF");
}

TEST_F(FieldValues, TextMayBeCdata) {
  EXPECT_EQ(nameOf(L"<name><![CDATA[<a> & </b>]]></name>"), "<a> & </b>");
  EXPECT_EQ(nameOf(L"<name><![CDATA[]]></name>"), "");
}

TEST_F(FieldValues, TextIsTheFirstOfSeveralParts) {
  EXPECT_EQ(nameOf(L"<name>a<![CDATA[b]]></name>"), "a");
  EXPECT_EQ(nameOf(L"<name><![CDATA[b]]>a</name>"), "b");
  EXPECT_EQ(nameOf(L"<name><b>x</b>a<b/>c</name>"), "a");
}

TEST_F(FieldValues, TextMayBeMissing) {
  EXPECT_EQ(nameOf(L"<name/>"), "");
  EXPECT_EQ(nameOf(L"<name></name>"), "");
  EXPECT_EQ(nameOf(L"<name><b>x</b></name>"), "");
}

// Whether blanks alone are a text is the host's choice when it parses.
TEST_F(FieldValues, TextOfBlanksIsAsTheParserKeptIt) {
  EXPECT_EQ(nameOf(L"<name>  </name>"), "");
  EXPECT_EQ(nameOf(L"<name>  </name>", pugi::parse_default | pugi::parse_ws_pcdata), "  ");
}

TEST_F(FieldValues, TextMayStandBehindAComment) {
  EXPECT_EQ(nameOf(L"<name><!-- why -->a</name>", pugi::parse_default | pugi::parse_comments), "a");
  EXPECT_EQ(nameOf(L"<name>a<!-- why -->b</name>", pugi::parse_default | pugi::parse_comments), "a");
}

TEST_F(FieldValues, TextMayBeLong) {
  const std::wstring name(1'000'000, L'\u4E2D');
  EXPECT_EQ(nameOf(L"<name>" + name + L"</name>"), OdString(name.c_str()).toUtf8());
}

TEST_F(FieldValues, BooleanLooksAtTheFirstCharacterOnly) {
  for (const wchar_t* yes : {L"1", L"t", L"true", L"T", L"y", L"yes", L"Y", L"1 is no", L"trap", L"<![CDATA[1]]>"}) {
    EXPECT_EQ(asBoolean(yes), "1") << OdString(yes).toUtf8();
  }
  for (const wchar_t* no : {L"0", L"false", L"no", L"on", L"2", L" true", L"", L"-1", L"\u00FD"}) {
    EXPECT_EQ(asBoolean(no), "0") << OdString(no).toUtf8();
  }
}

TEST_F(FieldValues, DoubleReadsWhatLooksLikeANumberAtTheStart) {
  EXPECT_EQ(asNumber(L"2.5"), "2.5");
  EXPECT_EQ(asNumber(L" -2.5e3 "), "-2500.0");
  EXPECT_EQ(asNumber(L"3 m"), "3.0");
  EXPECT_EQ(asNumber(L"1,5"), "1.0");
  EXPECT_EQ(asNumber(L"m 3"), "0.0");
}

TEST_F(FieldValues, DoubleIsKeptToTheLastBit) {
  asNumber(L"0.1");
  EXPECT_EQ(db->get<Site>(NameKey(u"A"))->total_area(), 0.1);
  asNumber(L"1.7976931348623157e308");
  EXPECT_EQ(db->get<Site>(NameKey(u"A"))->total_area(), 1.7976931348623157e308);
}

TEST_F(FieldValues, Int16MayBeHexadecimal) {
  EXPECT_EQ(asExponent(L"0x10"), "16");
  EXPECT_EQ(asExponent(L"-0xA"), "-10");
  EXPECT_EQ(asExponent(L" 7 "), "7");
  EXPECT_EQ(asExponent(L"+7.9"), "7");
}

// The number is read in 32 bits, where it stops at the limits, and its lower half is kept.
TEST_F(FieldValues, Int16KeepsTheLowerBits) {
  EXPECT_EQ(asExponent(L"32768"), "-32768");
  EXPECT_EQ(asExponent(L"65537"), "1");
  EXPECT_EQ(asExponent(L"-32769"), "32767");
  EXPECT_EQ(asExponent(L"99999999999"), "-1");
  EXPECT_EQ(asExponent(L"-99999999999"), "0");
}

TEST_F(FieldValues, Uint32StopsAtItsLimits) {
  EXPECT_EQ(asCount(L"0x1F"), "31");
  EXPECT_EQ(asCount(L"4294967295"), "4294967295");
  EXPECT_EQ(asCount(L"4294967296"), "4294967295");
  EXPECT_EQ(asCount(L"-1"), "0");
}

// The columns have their units, but the numbers of a document are in those already.
TEST_F(FieldValues, NumbersAreNotConverted) {
  EXPECT_THAT(import(L"<p><unit id='1'><name>mm</name><scale>0.001</scale><measure name='LENGTH'/></unit>"
                     L"<default_unit id='1'/><site><name>B</name><ref_elevation>2.5</ref_elevation></site>"
                     L"<unit id='2'><name>m</name><label>m</label><measure name='LENGTH'/></unit>"
                     L"<default_unit id='2'/><site><name>C</name><ref_elevation>2.5</ref_elevation></site></p>"),
              SaysNothing());
  EXPECT_EQ(column("tessel_Site", "ref_elevation"), (std::vector<std::string>{"0.0", "2.5", "2.5"}));
}

// "nan" is a number to the parser, but a column cannot hold it.
TEST_F(FieldValues, NotANumberCostsItsElement) {
  const ImportRun run =
    import(L"<p><site><name>B</name><total_area>nan</total_area></site><site><name>C</name></site></p>");
  ASSERT_EQ(run.messages.size(), 1U);
  EXPECT_EQ(run.messages[0].severity, ImportSeverity::Error);
  EXPECT_EQ(run.messages[0].offset, 4);
  EXPECT_EQ(sites(), (std::vector<std::string>{"A", "C"}));
}

// Of attributes only those are read that the format knows, and a field is never one of them.
TEST_F(FieldValues, AttributesAreNoFields) {
  EXPECT_THAT(import(L"<site name='B' town='T'><name x='1'>C</name></site>"), SaysNothing());
  EXPECT_EQ(sites(), (std::vector<std::string>{"A", "C"}));
  EXPECT_THAT(column("tessel_Site", "town"), ::testing::Each(""));
}

}  // namespace
}  // namespace tessel::test
