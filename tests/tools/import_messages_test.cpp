#include "tools/program.h"
#include "tools/strict_json.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

// One fault of each kind among elements that are right.
constexpr const char* faulty = "<project>\n"                            // 1
                               "  <site id=\"1\">\n"                    // 2
                               "    <name>Harbour</name>\n"             // 3
                               "    <twon>Bergen</twon>\n"              // 4
                               "  </site>\n"                            // 5
                               "  <building id=\"2\">\n"                // 6
                               "    <site id=\"7\"/>\n"                 // 7
                               "    <name>Castle in the air</name>\n"   // 8
                               "  </building>\n"                        // 9
                               "  <building id=\"3\">\n"                // 10
                               "    <site id=\"1\"/>\n"                 // 11
                               "    <long_name>Nameless</long_name>\n"  // 12
                               "  </building>\n"                        // 13
                               "  <building id=\"4\">\n"                // 14
                               "    <site id=\"1\"/>\n"                 // 15
                               "    <name>Tower</name>\n"               // 16
                               "  </building>\n"                        // 17
                               "  <bridge/>\n"                          // 18
                               "</project>\n";

class ImportMessages : public Program {
protected:
  ProcessResult import(const std::string& document, const std::vector<std::string>& options = {}) {
    write("a.xml", document);
    std::vector<std::string> words = {"import"};
    words.insert(words.end(), options.begin(), options.end());
    words.insert(words.end(), {"a.tessel", "a.xml"});
    return tessel(words);
  }

  /// The messages as JSON objects, one from each line.
  std::vector<JsonMembers> json(const std::string& document) {
    std::vector<JsonMembers> messages;
    std::istringstream lines(import(document, {"--messages", "json"}).out);
    for (std::string line; std::getline(lines, line);) {
      messages.push_back(StrictJson::read(line));
    }
    return messages;
  }

  /// The first line on standard error.
  std::string firstMessage(const std::string& document) {
    const std::string err = import(document).err;
    return err.substr(0, err.find('\n'));
  }
};

JsonMembers message(const std::string& severity, const std::string& text, int offset, int line, int column) {
  return {{"severity", severity},
          {"text", text},
          {"offset", std::to_string(offset)},
          {"line", std::to_string(line)},
          {"column", std::to_string(column)},
          {"document", "a.xml"}};
}

TEST_F(ImportMessages, TellTheirPlaceAndTheRestIsSaved) {
  EXPECT_THAT(import(faulty),
              Reports(1, "a.xml:4:6: warning: Unknown property 'twon' for 'site'\n"
                         "a.xml:7:6: error: Could not find referenced object 'building > site' with id 7\n"
                         "a.xml:10:4: error: Missing 'building > name' property\n"
                         "a.xml:18:4: warning: Unknown object type 'bridge'\n"
                         "a.tessel: 1 document imported, 2 errors, 2 warnings\n"));
  EXPECT_THAT(tessel({"tree", "a.tessel"}), Prints("site Harbour (0)\n└── building Tower (0)\n"));
}

TEST_F(ImportMessages, AsJsonComeOneObjectALine) {
  const std::string text = faulty;
  const auto at = [&](const char* part) { return static_cast<int>(text.find(part)); };
  EXPECT_THAT(json(faulty),
              ElementsAre(message("warning", "Unknown property 'twon' for 'site'", at("twon"), 4, 6),
                          message("error", "Could not find referenced object 'building > site' with id 7",
                                  at("site id=\"7\""), 7, 6),
                          message("error", "Missing 'building > name' property", at("building id=\"3\""), 10, 4),
                          message("warning", "Unknown object type 'bridge'", at("bridge"), 18, 4)));
}

TEST_F(ImportMessages, AsJsonLeaveOnlyTheSummaryOnStandardError) {
  const ProcessResult result = import(faulty, {"--messages=json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "a.tessel: 1 document imported, 2 errors, 2 warnings\n");
}

TEST_F(ImportMessages, WarningsAloneAreNoFailure) {
  EXPECT_THAT(import("<p><bridge/><meta/></p>"), Reports(0, "a.xml:1:5: warning: Unknown object type 'bridge'\n"
                                                            "a.tessel: 1 document imported, 0 errors, 1 warning\n"));
}

// What an inline object lacks has no place of its own.
constexpr const char* placeless = "<p><story><building><name>B</name></building><name>S</name></story></p>";

TEST_F(ImportMessages, WithoutAPlaceNameTheDocumentOnly) {
  EXPECT_EQ(firstMessage(placeless), "a.xml: error: Missing 'building > site' property");
}

TEST_F(ImportMessages, WithoutAPlaceHaveLineZeroInJson) {
  EXPECT_THAT(json(placeless), ElementsAre(message("error", "Missing 'building > site' property", -1, 0, 0)));
}

TEST_F(ImportMessages, TextMayHoldAnything) {
  const std::string document = "<p><building><site name='&quot;a\\&#10;\t&#1;&#x9B;&#x1D4B3;'/></building></p>";
  const std::string start = "Could not find referenced object 'building > site' with name '\"a\\";
  EXPECT_EQ(firstMessage(document), "a.xml:1:15: error: " + start + "\\n \\u0001\\u009b\xF0\x9D\x92\xB3'");
  EXPECT_THAT(json(document), ElementsAre(message("error", start + "\n \x01\xC2\x9B\xF0\x9D\x92\xB3'", 14, 1, 15)));
}

TEST_F(ImportMessages, AsJsonNameTheDocumentInUtf8) {
  write("\xE9.xml", "<p><bridge/><meta/></p>");
  const ProcessResult result = tessel({"import", "--messages", "json", "a.tessel", "\xE9.xml"});
  EXPECT_EQ(StrictJson::read(result.out.substr(0, result.out.find('\n'))).at("document"), "\xEF\xBF\xBD.xml");
}

TEST_F(ImportMessages, QuoteTextOfTheDocument) {
  const std::string document =
    "<p><propertyset><namespace>n</namespace><name>s</name><property_definition><name>d</name>"
    "<type>\"Dou\nble\"</type></property_definition></propertyset></p>";
  const std::string start = "Invalid 'propertydefinition > type > value_type' property value: \"Dou";
  EXPECT_EQ(firstMessage(document), "a.xml:1:91: error: " + start + "\\nble\"");
  EXPECT_THAT(json(document), ElementsAre(message("error", start + "\nble\"", 90, 1, 91)));
}

TEST_F(ImportMessages, CarryTheTextOfExceptions) {
  EXPECT_THAT(import("<p>\n<site><name>A</name></site>\n<site><name>A</name></site>\n</p>"),
              Reports(1, StartsWith("a.xml:3:2: error: An other object with the same values exists")));
}

class LineEnds : public ImportMessages, public ::testing::WithParamInterface<const char*> {};

TEST_P(LineEnds, CountOnce) {
  std::string document = faulty;
  for (std::size_t at = 0; (at = document.find('\n', at)) != std::string::npos; at += std::string(GetParam()).size()) {
    document.replace(at, 1, GetParam());
  }
  EXPECT_THAT(import(document).err, HasSubstr("\na.xml:10:4: error: Missing 'building > name' property\na.xml:18:4: "));
}

INSTANTIATE_TEST_SUITE_P(Conventions, LineEnds, ::testing::Values("\n", "\r\n", "\r"));

TEST_F(ImportMessages, LineEndsMayBeMixed) {
  EXPECT_EQ(firstMessage("<p>\n\r\r\n\n  <bridge/><meta/></p>"), "a.xml:5:4: warning: Unknown object type 'bridge'");
}

TEST_F(ImportMessages, ColumnsCountCodePoints) {
  const std::string wide = "<site><name>e\xCC\x81\xE2\x82\xAC\xF0\x9D\x92\xB3\t</name></site>";
  EXPECT_EQ(firstMessage("<p>\n" + wide + "<bridge/></p>"), "a.xml:2:33: warning: Unknown object type 'bridge'");
}

TEST_F(ImportMessages, CommentsAreNoObjects) {
  EXPECT_THAT(import("<p>\n<!-- two\nlines --><?tool x?><bridge/><meta/></p>"),
              Reports(0, StartsWith("a.xml:3:21: warning: Unknown object type 'bridge'\n")));
}

}  // namespace
}  // namespace tessel::test
