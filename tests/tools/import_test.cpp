#include "tools/program.h"

namespace tessel::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr int wrongUsage = 2;
constexpr int unusable = 3;

/// What follows the file's name when all went well.
const char* const clean = ": 1 document imported, 0 errors, 0 warnings\n";

class Import : public Program {
protected:
  ProcessResult import(std::vector<std::string> words) {
    words.insert(words.begin(), "import");
    return tessel(words);
  }

  std::vector<std::string> names(const std::string& file = "a.tessel") const {
    return raw(file).column(
      "SELECT name FROM tessel_SpatialStructure JOIN (SELECT id AS i, name FROM tessel_Site UNION "
      "SELECT id, name FROM tessel_Building UNION SELECT id, name FROM tessel_Story) ON i = id "
      "ORDER BY id");
  }
};

TEST_F(Import, OfTheHouseGivesNoMessage) {
  EXPECT_THAT(import({"a.tessel", houseDocument}), Reports(0, std::string("a.tessel") + clean));
  EXPECT_THAT(tessel({"tree", "a.tessel"}), Prints("site Default (0 mm)\n"
                                                   "└── building Building (0 mm)\n"
                                                   "    ├──    0 mm  Ground Floor\n"
                                                   "    └── 2500 mm  Roof\n"));
}

TEST_F(Import, AddsToAFileThatIsThere) {
  write("1.xml", "<p><site><name>one</name></site></p>");
  write("2.xml", "<p><site><name>two</name></site></p>");
  import({"a.tessel", "1.xml"});
  EXPECT_THAT(import({"a.tessel", "2.xml"}), Reports(0, std::string("a.tessel") + clean));
  EXPECT_THAT(names(), ElementsAre("one", "two"));
}

TEST_F(Import, TakesSeveralDocumentsInTheirOrder) {
  write("1.xml", "<p><site id='1'><name>one</name></site></p>");
  write("2.xml", "<p><building><site name='one'/><name>two</name></building></p>");
  EXPECT_THAT(import({"a.tessel", "1.xml", "2.xml"}),
              Reports(0, "a.tessel: 2 documents imported, 0 errors, 0 warnings\n"));
  EXPECT_THAT(names(), ElementsAre("one", "two"));
}

TEST_F(Import, IdsAreLabelsOfTheirDocument) {
  write("1.xml", "<p><site id='1'><name>one</name></site></p>");
  write("2.xml", "<p><building><site id='1'/><name>two</name></building></p>");
  EXPECT_THAT(import({"a.tessel", "1.xml", "2.xml"}),
              Reports(1, "2.xml:1:15: error: Could not find referenced object 'building > site' with id 1\n"
                         "a.tessel: 2 documents imported, 1 error, 0 warnings\n"));
  EXPECT_THAT(names(), ElementsAre("one"));
}

TEST_F(Import, WithUpdateAnIdNamesARow) {
  write("1.xml", "<p><site><name>old</name></site><site><name>gone</name></site></p>");
  write("2.xml", "<p><site id='1'><name>new</name></site><site id='2' remove='true'/></p>");
  import({"a.tessel", "1.xml"});
  EXPECT_THAT(import({"--update", "a.tessel", "2.xml"}), Reports(0, std::string("a.tessel") + clean));
  EXPECT_THAT(names(), ElementsAre("new"));
}

TEST_F(Import, WithoutUpdateAnIdNamesNoRow) {
  write("1.xml", "<p><site id='1'><name>one</name></site></p>");
  write("2.xml", "<p><site id='1' remove='true'><name>two</name></site></p>");
  import({"a.tessel", "1.xml", "2.xml"});
  EXPECT_THAT(names(), ElementsAre("one", "two"));
}

TEST_F(Import, TypesLetsOtherClassesOut) {
  EXPECT_THAT(import({"--types", "site,story", "a.tessel", houseDocument}), Reports(1, HasSubstr(" 2 errors, ")));
  EXPECT_THAT(names(), ElementsAre("Default"));
  EXPECT_EQ(raw("a.tessel").count("tessel_Unit"), 0);
  EXPECT_THAT(import({"--types=unit,measure", "a.tessel", houseDocument}), Reports(0, std::string("a.tessel") + clean));
  EXPECT_THAT(names(), ElementsAre("Default"));
  EXPECT_EQ(raw("a.tessel").count("tessel_Unit"), 3);
}

struct ClassOfDocuments {
  std::string type;
  std::string table;
  std::string element;  ///< With an object named "n" of this class, and what it needs under other names.
};

const ClassOfDocuments classes[] = {
  {"measure", "tessel_Measure", "<measure><name>n</name></measure>"},
  {"unit", "tessel_Unit", "<unit><name>n</name><measure name='MASS'/></unit>"},
  {"propertynamespace", "tessel_PropertyNamespace", "<propertynamespace>n</propertynamespace>"},
  {"entitytype", "tessel_EntityType", "<entitytype>n</entitytype>"},
  {"propertydefinition", "tessel_PropertyDefinition",
   "<propertydefinition><name>n</name><namespace>a</namespace></propertydefinition>"},
  {"valuedefinition", "tessel_ValueDefinition",
   "<valuedefinition><name>n</name><namespace>b</namespace></valuedefinition>"},
  {"propertyset", "tessel_PropertySet", "<propertyset><name>n</name><namespace>c</namespace></propertyset>"},
  {"site", "tessel_Site", "<site><name>n</name></site>"},
  {"building", "tessel_Building", "<building><name>n</name><site><name>d</name></site></building>"},
  {"story", "tessel_Story",
   "<story><name>n</name><building><name>e</name><site><name>e</name></site></building></story>"},
};

TEST_F(Import, TypesTakesEachClassAlone) {
  std::string document;
  for (const auto& each : classes) {
    document += each.element;
  }
  write("a.xml", "<p>" + document + "</p>");
  for (const auto& wanted : classes) {
    const std::string file = wanted.type + ".tessel";
    EXPECT_THAT(import({"--types", wanted.type, file, "a.xml"}), Reports(0, file + clean));
    for (const auto& each : classes) {
      EXPECT_EQ(raw(file).scalarInt("SELECT count(*) FROM " + each.table + " WHERE name = 'n'"),
                each.type == wanted.type ? 1 : 0)
        << each.type << " when only " << wanted.type << " is wanted";
    }
  }
}

TEST_F(Import, TypesMayBeWrittenAsTheyAreListed) {
  EXPECT_THAT(import({"--types", "UNIT, Measure ", "a.tessel", houseDocument}),
              Reports(0, std::string("a.tessel") + clean));
  EXPECT_EQ(raw("a.tessel").count("tessel_Unit"), 3);
  EXPECT_EQ(raw("a.tessel").count("tessel_Site"), 0);
}

TEST_F(Import, UnknownKindIsWrongUsage) {
  for (const char* list : {"site,roof", "Sites", "", "site,", "si te"}) {
    EXPECT_THAT(import({"--types", list, "a.tessel", houseDocument}),
                Reports(wrongUsage, AllOf(StartsWith("tessel import: there is no kind '"),
                                          EndsWith("building, story; see 'tessel import --help'\n"))));
  }
  EXPECT_FALSE(exists("a.tessel"));
}

TEST_F(Import, UnknownFormOfMessagesIsWrongUsage) {
  EXPECT_THAT(import({"--messages", "xml", "a.tessel", houseDocument}),
              Reports(wrongUsage,
                      "tessel import: messages come as 'text' or as 'json', not as 'xml'; see 'tessel import "
                      "--help'\n"));
  EXPECT_FALSE(exists("a.tessel"));
}

TEST_F(Import, DocumentThatIsMissing) {
  EXPECT_THAT(import({"a.tessel", "a.xml"}), Reports(unusable, "tessel: a.xml: There is no such file.\n"));
  EXPECT_FALSE(exists("a.tessel"));
}

TEST_F(Import, DocumentThatIsAFolder) {
  EXPECT_THAT(import({"a.tessel", "."}), Reports(unusable, "tessel: .: The file cannot be opened: Is a directory.\n"));
}

TEST_F(Import, DocumentThatMayNotBeRead) {
  write("a.xml", "<p/>");
  std::filesystem::permissions(path("a.xml"), std::filesystem::perms::none);
  ProcessOptions bound;
  bound.permissionsHold = true;
  EXPECT_THAT(tessel({"import", "a.tessel", "a.xml"}, bound),
              Reports(unusable, "tessel: a.xml: The file cannot be opened: Permission denied.\n"));
}

TEST_F(Import, DocumentWhoseNameIsNoUtf8) {
  write("\xE9.xml", "<p><site/></p>");
  EXPECT_THAT(import({"a.tessel", "\xE9.xml"}), Reports(1, StartsWith("\\xe9.xml:1:5: error: Missing")));
}

TEST_F(Import, DocumentThatIsNotWellFormedIsToldWithItsPlace) {
  write("a.xml", "<project>\n  <site>\n    <name>one</nam>\n  </site>\n</project>\n");
  EXPECT_THAT(import({"a.tessel", "a.xml"}), Reports(unusable, "a.xml:3:16: error: Start-end tags mismatch\n"));
  write("a.xml", "<project>\r\n<site>");
  EXPECT_THAT(import({"a.tessel", "a.xml"}), Reports(unusable, StartsWith("a.xml:2:")));
  EXPECT_FALSE(exists("a.tessel"));
}

TEST_F(Import, DocumentWithoutAnElement) {
  for (const char* text : {"", " \n", "<!-- nothing -->", "Dear diary"}) {
    write("a.xml", text);
    EXPECT_THAT(import({"a.tessel", "a.xml"}), Reports(unusable, HasSubstr(": error: No document element found\n")))
      << text;
  }
  EXPECT_FALSE(exists("a.tessel"));
}

TEST_F(Import, DocumentOfAByteOrderMark) {
  write("a.xml", "\xEF\xBB\xBF");
  EXPECT_THAT(import({"a.tessel", "a.xml"}), Reports(unusable, "a.xml:1:1: error: No document element found\n"));
}

TEST_F(Import, DocumentWithAReferenceToNoCharacter) {
  write("a.xml", "<p>\n  <site><name>&#xD800;</name></site>\n</p>");
  EXPECT_THAT(import({"a.tessel", "a.xml"}),
              Reports(unusable, "a.xml:2:15: error: a character reference names no character\n"));
  write("a.xml", "<p>\n  <site name='&#x110000;'/>\n</p>");
  EXPECT_THAT(import({"a.tessel", "a.xml"}),
              Reports(unusable, "a.xml:2:4: error: a character reference names no character\n"));
}

TEST_F(Import, NothingIsDoneIfOneOfTheDocumentsCannotBeRead) {
  write("1.xml", "<p><site><name>one</name></site></p>");
  write("2.xml", "<p>");
  EXPECT_EQ(import({"a.tessel", "1.xml", "2.xml"}).status, unusable);
  EXPECT_FALSE(exists("a.tessel"));
}

TEST_F(Import, ErrorThatEndsTheImportLeavesNothingOfTheDocument) {
  tessel({"create", "a.tessel"});
  raw("a.tessel").exec("DROP TABLE tessel_DefaultUnit");
  write("a.xml", "<p><site><name>one</name></site>"
                 "<unit><name>metre</name><label>m</label><measure name='LENGTH'/></unit>"
                 "<default_unit name='metre'/></p>");
  EXPECT_THAT(import({"a.tessel", "a.xml"}),
              Reports(unusable, StartsWith("tessel: a.xml: nothing of this document was imported: ")));
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(Import, ErrorThatIsAClashTellsWhatIsTaken) {
  write("1.xml", "<p><unit><name>metre</name><label>m</label><measure name='LENGTH'/></unit></p>");
  write("2.xml", "<p><default_unit><name>foot</name><label>m</label><scale>0.3</scale><measure name='LENGTH'/>"
                 "</default_unit></p>");
  import({"a.tessel", "1.xml"});
  EXPECT_THAT(import({"a.tessel", "2.xml"}), Reports(unusable, "tessel: 2.xml: nothing of this document was imported: "
                                                               "unit: its name or label is taken\n"));
}

TEST_F(Import, OfSomethingElseMakesNoFile) {
  write("a.xml", "<html>\n text <body><site/></body></html>");
  EXPECT_THAT(import({"a.tessel", "a.xml"}),
              Reports(1, "a.xml:2:8: error: holds no element of an import document, but 'body'\n"
                         "a.tessel: 0 documents imported, 1 error, 0 warnings\n"));
  EXPECT_THAT(import({"--messages", "json", "a.tessel", "a.xml"}).out, HasSubstr("\"severity\": \"error\""));
  EXPECT_FALSE(exists("a.tessel"));
}

TEST_F(Import, OfAnEmptyProjectIsNoError) {
  write("a.xml", "<project/>");
  write("b.xml", "<html/>");
  EXPECT_THAT(import({"a.tessel", "a.xml", "b.xml"}),
              Reports(0, "a.tessel: 2 documents imported, 0 errors, 0 warnings\n"));
}

TEST_F(Import, WithUpdateDoesNotPromiseTooMuchAfterAnError) {
  tessel({"create", "a.tessel"});
  raw("a.tessel").exec("DROP TABLE tessel_DefaultUnit");
  write("a.xml", "<p><site><name>one</name></site><site id='99' remove='true'/>"
                 "<unit><name>metre</name><label>m</label><measure name='LENGTH'/></unit>"
                 "<default_unit name='metre'/></p>");
  EXPECT_THAT(import({"--update", "a.tessel", "a.xml"}),
              Reports(unusable, StartsWith("tessel: a.xml: nothing of this document was imported, but for what was "
                                           "removed and what stood in front of it: ")));
}

TEST_F(Import, OfSomethingElseKeepsNothingOutOfOtherDocuments) {
  write("1.xml", "<html><body/></html>");
  write("2.xml", "<p><site><name>one</name></site></p>");
  EXPECT_THAT(import({"a.tessel", "1.xml", "2.xml"}),
              Reports(1, "1.xml:1:8: error: holds no element of an import document, but 'body'\n"
                         "a.tessel: 1 document imported, 1 error, 0 warnings\n"));
  EXPECT_THAT(names(), ElementsAre("one"));
}

TEST_F(Import, TakesARootThatIsItselfAnObjectOrADefaultUnit) {
  write("1.xml", "<site><name>one</name></site>");
  write("2.xml", "<p><default_unit name='metre'/></p>");
  EXPECT_THAT(import({"a.tessel", "1.xml"}), Reports(0, std::string("a.tessel") + clean));
  EXPECT_THAT(import({"a.tessel", "2.xml"}), Reports(1, StartsWith("2.xml:1:5: error: Could not find")));
}

TEST_F(Import, ReadsStandardInput) {
  write("a.xml", "<p>\n<site><name>one</name></site><bridge/></p>");
  const auto importFrom = [&](const std::string& input) {
    ProcessOptions here;
    here.folder = folder.path();
    return runProcess({"/bin/sh", "-c", std::string(TESSEL_PROGRAM) + " import a.tessel - < " + input}, here);
  };
  EXPECT_THAT(importFrom("a.xml"), Reports(0, "-:2:31: warning: Unknown object type 'bridge'\n"
                                              "a.tessel: 1 document imported, 0 errors, 1 warning\n"));
  EXPECT_THAT(names(), ElementsAre("one"));
  EXPECT_THAT(importFrom("/dev/null"), Reports(unusable, "-:1:1: error: No document element found\n"));
  write("-", "<p><site><name>two</name></site></p>");
  EXPECT_THAT(import({"a.tessel", "./-"}), Reports(0, std::string("a.tessel") + clean));
  EXPECT_THAT(names(), ElementsAre("one", "two"));
}

TEST_F(Import, RootNamedMetaIsIgnored) {
  write("a.xml", "<meta><site><name>one</name></site></meta>");
  EXPECT_THAT(import({"a.tessel", "a.xml"}), Reports(0, std::string("a.tessel") + clean));
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(Import, ShowsOnATerminalWhatItDoes) {
  write("1.xml", "<p><nothing/><meta/></p>");
  ProcessOptions terminal;
  terminal.errIsTerminal = true;
  const ProcessResult result = tessel({"import", "a.tessel", "1.xml", houseDocument}, terminal);
  EXPECT_EQ(result.status, 0);
  const std::string erase = "\r\x1B[K";
  EXPECT_EQ(result.err, erase + "reading 1.xml" + erase + "reading " + houseDocument + erase +
                          "importing 1 of 2: 1.xml" + erase +
                          "1.xml:1:5: \x1B[33mwarning:\x1B[0m Unknown object type 'nothing'\r\n" + erase +
                          "importing 1 of 2: 1.xml" + erase + "importing 2 of 2: " + houseDocument + erase +
                          "a.tessel: 2 documents imported, 0 errors, 1 warning\r\n");
}

}  // namespace
}  // namespace tessel::test
