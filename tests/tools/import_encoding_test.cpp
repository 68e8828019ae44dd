#include <functional>

#include <utf8.h>

#include "tools/program.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;

constexpr int unusable = 3;

/// The units of a text as bytes.
template <typename Unit>
std::string bytesOf(const std::basic_string<Unit>& text, bool bigEndian) {
  std::string bytes;
  for (const Unit unit : text) {
    for (std::size_t i = 0; i < sizeof(Unit); ++i) {
      const std::size_t place = bigEndian ? sizeof(Unit) - 1 - i : i;
      bytes += static_cast<char>(static_cast<std::uint32_t>(unit) >> (8 * place));
    }
  }
  return bytes;
}

std::string utf16(const std::string& text, bool bigEndian) { return bytesOf(utf8::utf8to16(text), bigEndian); }

std::string utf32(const std::string& text, bool bigEndian) {
  std::u32string units;
  utf8::utf8to32(text.begin(), text.end(), std::back_inserter(units));
  return bytesOf(units, bigEndian);
}

std::string latin1(const std::string& text) {
  std::string bytes;
  for (const char16_t unit : utf8::utf8to16(text)) {
    bytes += static_cast<char>(unit);
  }
  return bytes;
}

struct Encoding {
  const char* name;
  const char* start;  ///< In UTF-8, before the document.
  std::function<std::string(const std::string&)> encode;
};

void PrintTo(const Encoding& encoding, std::ostream* out) { *out << encoding.name; }

constexpr const char* mark = "\xEF\xBB\xBF";

const Encoding encodings[] = {
  {"Utf8", "", [](auto& text) { return text; }},
  {"Utf8Declared", "<?xml version='1.0' encoding='UTF-8'?>", [](auto& text) { return text; }},
  {"Utf8Marked", mark, [](auto& text) { return text; }},
  {"Utf16Le", "", [](auto& text) { return utf16(text, false); }},
  {"Utf16LeMarked", mark, [](auto& text) { return utf16(text, false); }},
  {"Utf16Be", "", [](auto& text) { return utf16(text, true); }},
  {"Utf16BeMarked", mark, [](auto& text) { return utf16(text, true); }},
  {"Utf32Le", "", [](auto& text) { return utf32(text, false); }},
  {"Utf32LeMarked", mark, [](auto& text) { return utf32(text, false); }},
  {"Utf32Be", "", [](auto& text) { return utf32(text, true); }},
  {"Utf32BeMarked", mark, [](auto& text) { return utf32(text, true); }},
};

class ImportEncoding : public Program {
protected:
  ProcessResult import(const std::string& bytes) {
    write("a.xml", bytes);
    return tessel({"import", "a.tessel", "a.xml"});
  }
};

class ImportOfEncoding : public ImportEncoding, public ::testing::WithParamInterface<Encoding> {};

TEST_P(ImportOfEncoding, KeepsTextAndPlaces) {
  const std::string name = "B\xC3\xA5t \xE2\x82\xAC \xED\x9F\xBF\xEE\x80\x80 \xF0\x9D\x92\xB3\xF4\x8F\xBF\xBD";
  const std::string key = "d\xC3\xB8r\xF0\x9D\x92\xB3";
  const std::string start = GetParam().start;
  const std::string document =
    "<p><bridge/><site><name>" + name + "</name>\r\n\xF0\x9D\x92\xB3<" + key + "/></site></p>";
  const std::size_t column = (start == mark ? 0 : start.size()) + 5;
  EXPECT_THAT(import(GetParam().encode(start + document)),
              Reports(0, "a.xml:1:" + std::to_string(column) + ": warning: Unknown object type 'bridge'\n" +
                           "a.xml:2:3: warning: Unknown property '" + key + "' for 'site'\n" +
                           "a.tessel: 1 document imported, 0 errors, 2 warnings\n"));
  EXPECT_THAT(raw("a.tessel").column("SELECT name FROM tessel_Site"), ElementsAre(name));
  EXPECT_THAT(tessel({"tree", "a.tessel"}), Prints("site " + name + " (0)\n"));
}

INSTANTIATE_TEST_SUITE_P(Encodings, ImportOfEncoding, ::testing::ValuesIn(encodings),
                         [](const auto& instance) { return instance.param.name; });

class ImportOfLatin1 : public ImportEncoding, public ::testing::WithParamInterface<const char*> {};

TEST_P(ImportOfLatin1, KeepsTextAndPlaces) {
  const std::string declaration = "<?xml version=\"1.0\" encoding=\"" + std::string(GetParam()) + "\"?>\n";
  const std::string document = "<p><site><name>B\xC3\xA5t \xC3\xBF</name><d\xC3\xB8r/></site></p>";
  EXPECT_THAT(import(latin1(declaration + document)),
              Reports(0, "a.xml:2:29: warning: Unknown property 'd\xC3\xB8r' for 'site'\n"
                         "a.tessel: 1 document imported, 0 errors, 1 warning\n"));
  EXPECT_THAT(raw("a.tessel").column("SELECT name FROM tessel_Site"), ElementsAre("B\xC3\xA5t \xC3\xBF"));
}

INSTANTIATE_TEST_SUITE_P(Names, ImportOfLatin1, ::testing::Values("ISO-8859-1", "iso-8859-1", "latin1"));

struct Broken {
  const char* name;
  std::string bytes;
  const char* place;
};

void PrintTo(const Broken& broken, std::ostream* out) { *out << broken.name; }

const std::string before = "<p>\n<site><name>";
const std::string behind = "</name></site></p>";

const Broken broken[] = {
  {"Utf8Byte", before + "x\xFFx" + behind, "2:14"},
  {"Utf8Latin1Undeclared", before + "\xE5" + behind, "2:13"},
  {"Utf8Surrogate", before + "\xED\xA0\x80" + behind, "2:13"},
  {"Utf8Overlong", before + "\xC0\xBC" + behind, "2:13"},
  {"Utf8BeyondTheLast", before + "\xF4\x90\x80\x80" + behind, "2:13"},
  {"Utf8CutOff", before + "\xE2\x82", "2:13"},
  {"Utf16LoneHighSurrogate", utf16(before, false) + std::string("\x00\xD8", 2) + utf16(behind, false), "2:13"},
  {"Utf16LoneLowSurrogate", utf16(before, true) + std::string("\xDC\x00", 2) + utf16(behind, true), "2:13"},
  {"Utf16HalfAUnit", utf16(before + behind, false) + "x", "2:31"},
  {"Utf32Surrogate", utf32(before, false) + std::string("\x00\xD8\x00\x00", 4) + utf32(behind, false), "2:13"},
  {"Utf32BeyondTheLast", utf32(before, true) + std::string("\x00\x11\x00\x00", 4) + utf32(behind, true), "2:13"},
  {"Utf32FarBeyond", utf32(before, true) + std::string("\xFF\x00\x00\x00", 4) + utf32(behind, true), "2:13"},
  {"Utf32HalfAUnit", utf32(before + behind, false) + "xx", "2:31"},
};

class ImportOfBrokenText : public ImportEncoding, public ::testing::WithParamInterface<Broken> {};

// The parser would leave out what is no text, and the name would come in with letters missing.
TEST_P(ImportOfBrokenText, IsRefusedWithThePlaceOfTheFault) {
  EXPECT_THAT(import(GetParam().bytes), Reports(unusable, "a.xml:" + std::string(GetParam().place) +
                                                            ": error: the bytes here are no text in this encoding\n"));
  EXPECT_FALSE(exists("a.tessel"));
}

INSTANTIATE_TEST_SUITE_P(Texts, ImportOfBrokenText, ::testing::ValuesIn(broken),
                         [](const auto& instance) { return instance.param.name; });

// Its bytes may by chance be UTF-8, and plain English is.
TEST_F(ImportEncoding, ADeclaredEncodingThatIsNotKnownIsNamed) {
  const std::string japanese = "\x93\x8C\x8B\x9E";
  for (const std::string name : {"Shift_JIS", "windows-1252", "UTF-7"}) {
    const std::string start = "<?xml version='1.0' encoding='" + name + "'?>\n";
    EXPECT_THAT(import(start + "<p><site><name>" + japanese + behind),
                Reports(unusable, "a.xml:2:16: error: the encoding '" + name + "' is not known; UTF-8 is\n"));
    EXPECT_FALSE(exists("a.tessel"));
    EXPECT_EQ(import(start + "<p><site><name>" + name + behind).status, 0);
    std::filesystem::remove(path("a.tessel"));
  }
  for (const std::string known : {"UTF-8", "us-ascii", "utf-16", "UCS-4"}) {
    EXPECT_THAT(import("<?xml version='1.0' encoding='" + known + "'?>\n" + before + japanese + behind),
                Reports(unusable, "a.xml:3:13: error: the bytes here are no text in this encoding\n"));
  }
}

TEST_F(ImportEncoding, ByteOrderMarkIsNoColumnButCountsInTheOffset) {
  write("a.xml", mark + std::string("<bridge><tunnel/><meta/></bridge>"));
  EXPECT_THAT(tessel({"import", "--messages", "json", "a.tessel", "a.xml"}).out,
              ::testing::HasSubstr("\"offset\": 10, \"line\": 1, \"column\": 10,"));
}

}  // namespace
}  // namespace tessel::test
