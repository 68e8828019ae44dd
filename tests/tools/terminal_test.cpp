#include "tools/terminal_program.h"

namespace tessel::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const std::string bold = "\x1B[1m";
const std::string red = "\x1B[31m";
const std::string yellow = "\x1B[33m";
const std::string plain = "\x1B[0m";
const std::string escape = "\x1B";

/// What the program shows on a terminal, without colours unless the test wants them.
class OnTerminal : public TerminalProgram {
protected:
  OnTerminal() { ::setenv("NO_COLOR", "1", 1); }

  void import(const std::string& content) {
    write("a.xml", "<p>" + content + "</p>");
    ASSERT_EQ(tessel({"import", "a.tessel", "a.xml"}).status, 0);
  }

  void importSite(const std::string& name) { import("<site><name>" + name + "</name></site>"); }

  /// One set with definitions of numbers of these names.
  void importSet(const std::vector<std::string>& names) {
    std::string definitions;
    for (const std::string& name : names) {
      definitions += "<property_definition><name>" + name + "</name><type>Double</type></property_definition>";
    }
    import("<propertynamespace id='1'>ns</propertynamespace><propertyset><namespace id='1'/><name>Set</name>" +
           definitions + "</propertyset>");
  }
};

TEST_F(OnTerminal, TheTreeFitsItsWidth) {
  importSite("A name of some length");
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 30), Shows("site A name of some length (0)\n"));
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 29), Shows("site A name of some leng… (0)\n"));
}

TEST_F(OnTerminal, EveryLineOfTheTreeFits) {
  import("<site id='1'><name>A hill of some length</name></site>"
         "<building id='2'><site id='1'/><name>塔塔塔塔塔塔</name></building>"
         "<story><building id='2'/><name>Loft of some length</name><elevation>2500</elevation></story>"
         "<building><site id='1'/><name>A tower of some length</name></building>");
  raw("a.tessel").exec("UPDATE tessel_Project SET name = 'Harbour of some length'");
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 24), Shows("project Harbour of some…\n"
                                                          "site A hill of some… (0)\n"
                                                          "├── building A towe… (0)\n"
                                                          "└── building 塔塔塔… (0)\n"
                                                          "    └── 2500  Loft of s…\n"));
}

TEST_F(OnTerminal, WideCharactersCountTwice) {
  importSite("塔塔塔塔");
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 17), Shows("site 塔塔塔塔 (0)\n"));
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 16), Shows("site 塔塔塔… (0)\n"));
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 15), Shows("site 塔塔… (0)\n")) << "half a character cannot be shown";
}

TEST_F(OnTerminal, CombiningCharactersCountNothingAndStayWithTheirLetter) {
  importSite("e\xCC\x81"
             "e\xCC\x81"
             "e\xCC\x81");
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 12), Shows("site e\xCC\x81"
                                                          "e\xCC\x81"
                                                          "e\xCC\x81 (0)\n"));
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 11), Shows("site e\xCC\x81… (0)\n"));
}

TEST_F(OnTerminal, WidthsDoNotDependOnTheLocale) {
  importSite("塔塔塔塔");
  ::setenv("LC_ALL", "C", 1);
  const TerminalResult result = onTerminal({"tree", "a.tessel"}, 16);
  ::unsetenv("LC_ALL");
  EXPECT_THAT(result, Shows("site 塔塔塔… (0)\n"));
}

TEST_F(OnTerminal, ANumberIsNeverShortened) {
  importSite("Hill");
  raw("a.tessel").exec("UPDATE tessel_Site SET ref_elevation = 123456789012");
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 10), Shows("site … (123456789012)\n"));
}

TEST_F(OnTerminal, TheWidestColumnOfATableGivesWay) {
  importSet({"A_definition_of_a_long_name"});
  const std::string head = "namespace ns (revision 0)\n  Set\n";
  EXPECT_THAT(onTerminal({"catalogue", "a.tessel"}, 39), Shows(head + "    A_definition_of_a_long_name  Double\n"));
  EXPECT_THAT(onTerminal({"catalogue", "a.tessel"}, 30), Shows(head + "    A_definition_of_a…  Double\n"));
}

TEST_F(OnTerminal, ColumnsOfIdsAndCountsStayWhole) {
  importSite("A_site_of_a_long_name");
  EXPECT_THAT(onTerminal({"copy", "--list", "--only", "site", "a.tessel", "b.tessel"}, 42),
              Shows(HasSubstr("kind  old id  new id  outcome  name\n"
                              "site  1       1       created  A_site_of_…\n")));
  EXPECT_THAT(onTerminal({"copy", "--only", "site", "a.tessel", "c.tessel"}, 10),
              Shows(HasSubstr("kind  created  kept  overwritten  left behind\n"
                              "site        1     0            0            0\n")));
}

TEST_F(OnTerminal, NoColumnIsShortenedToLessThanEightCharacters) {
  importSet({"A_definition"});
  const std::string head = "namespace ns (revision 0)\n  Set\n";
  EXPECT_THAT(onTerminal({"catalogue", "a.tessel"}, 20), Shows(HasSubstr("\n    A_defin…  Double\n")));
  EXPECT_THAT(onTerminal({"catalogue", "a.tessel"}, 12), Shows(HasSubstr("\n    A_defin…  Double\n")));
  EXPECT_THAT(onTerminal({"copy", "--only", "propertydefinition", "a.tessel", "b.tessel"}, 30),
              Shows(HasSubstr("\npropert…        1     0            0            0\n")))
    << "rather a line that is too long than nothing to read in it";
}

TEST_F(OnTerminal, ColumnsOfATableLineUpForWideCharacters) {
  importSet({"塔塔", "abc"});
  EXPECT_THAT(tessel({"catalogue", "a.tessel"}).out, HasSubstr("    塔塔  Double\n"));
  EXPECT_THAT(tessel({"catalogue", "a.tessel"}).out, HasSubstr("    abc   Double\n"));
}

TEST_F(OnTerminal, UnitsShortenTheNameAndNotTheFactor) {
  import("<unit><name>a unit of a long name</name><label>u</label><scale>0.125</scale><measure name='MASS'/></unit>");
  EXPECT_THAT(onTerminal({"units", "a.tessel"}, 20), Shows(HasSubstr("\n  u  a unit …  0.125\n")));
}

TEST_F(OnTerminal, TheVariableColumnsGoesBeforeTheSizeOfTheTerminal) {
  importSite("A name of some length");
  ::setenv("COLUMNS", "29", 1);
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 80), Shows("site A name of some leng… (0)\n"));
  for (const char* nonsense : {"", "0", "wide", "20x", "-1"}) {
    ::setenv("COLUMNS", nonsense, 1);
    EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 28), Shows("site A name of some len… (0)\n")) << nonsense;
  }
}

TEST_F(OnTerminal, NothingIsShortenedWhereTheWidthIsNotKnown) {
  importSite(std::string(300, 'x'));
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}, 0), Shows("site " + std::string(300, 'x') + " (0)\n"));
}

TEST_F(OnTerminal, NothingIsShortenedInAPipe) {
  importSite(std::string(300, 'x'));
  ::setenv("COLUMNS", "20", 1);
  EXPECT_THAT(tessel({"tree", "a.tessel"}), Prints("site " + std::string(300, 'x') + " (0)\n"));
}

TEST_F(OnTerminal, JsonIsTheSameAsInAPipe) {
  importSite(std::string(300, 'x'));
  ::unsetenv("NO_COLOR");
  for (const char* command : {"tree", "units", "catalogue", "info"}) {
    EXPECT_THAT(onTerminal({command, "--json", "a.tessel"}, 20), Shows(tessel({command, "--json", "a.tessel"}).out))
      << command;
  }
}

TEST_F(OnTerminal, ProgressStaysOnOneLine) {
  write("a.xml", "<p><meta/></p>");
  const std::string shown = onTerminal({"import", "a.tessel", "a.xml"}, 12).shown;
  EXPECT_THAT(shown, HasSubstr("\r\x1B[Kreading a.x…\r"));
  EXPECT_THAT(shown, HasSubstr("\r\x1B[Kimporting 1…\r"));
}

TEST_F(OnTerminal, ADumbTerminalGetsNoControlSequences) {
  write("a.xml", "<p><nothing/><meta/></p>");
  ::unsetenv("NO_COLOR");
  ::setenv("TERM", "dumb", 1);
  EXPECT_EQ(onTerminal({"import", "a.tessel", "a.xml"}).shown, "a.xml:1:5: warning: Unknown object type 'nothing'\n"
                                                               "a.tessel: 1 document imported, 0 errors, 1 warning\n");
  EXPECT_THAT(onTerminal({"units", "a.tessel"}).shown, Not(HasSubstr(escape)));
  ::unsetenv("TERM");
  EXPECT_THAT(onTerminal({"units", "a.tessel"}).shown, Not(HasSubstr(escape)));
}

/// Headings are bold, and the words that tell what a message is have a colour.
class Colours : public OnTerminal {
protected:
  Colours() { ::unsetenv("NO_COLOR"); }
};

TEST_F(Colours, HeadingsAreBold) {
  importSet({"definition"});
  raw("a.tessel").exec("UPDATE tessel_Project SET name = 'Harbour'");
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}), Shows(bold + "project Harbour" + plain + "\n(no site)\n"));
  EXPECT_THAT(onTerminal({"units", "a.tessel"}), Shows(HasSubstr(bold + "MASS (mass 1)" + plain + "\n")));
  EXPECT_THAT(onTerminal({"catalogue", "a.tessel"}), Shows(bold + "namespace ns (revision 0)" + plain + "\n" + bold +
                                                           "  Set" + plain + "\n    definition  Double\n"));
  EXPECT_THAT(
    onTerminal({"copy", "a.tessel", "b.tessel"}),
    Shows(HasSubstr(bold + "kind                created  kept  overwritten  left behind" + plain + "\nmeasure ")));
}

TEST_F(Colours, MessagesTellErrorsFromWarnings) {
  write("a.xml", "<p><nothing/><site/></p>");
  const std::string shown = onTerminal({"import", "a.tessel", "a.xml"}).shown;
  EXPECT_THAT(shown, HasSubstr("a.xml:1:5: " + yellow + "warning:" + plain + " Unknown object type"));
  EXPECT_THAT(shown, HasSubstr("a.xml:1:15: " + red + "error:" + plain + " Missing"));
  write("b.xml", "<p>");
  EXPECT_THAT(onTerminal({"import", "a.tessel", "b.xml"}).shown,
              HasSubstr("b.xml:1:3: " + red + "error:" + plain + " "));
}

TEST_F(Colours, AreNotForPipes) {
  importSet({"definition"});
  write("b.xml", "<p><nothing/><meta/></p>");
  EXPECT_THAT(tessel({"catalogue", "a.tessel"}), Prints(StartsWith("namespace ns")));
  EXPECT_THAT(tessel({"import", "a.tessel", "b.xml"}).err, Not(HasSubstr(escape)));
}

TEST_F(Colours, OfMessagesAreThereWhileStandardOutputIsAPipe) {
  write("a.xml", "<p><nothing/><meta/></p>");
  ProcessOptions terminal;
  terminal.errIsTerminal = true;
  EXPECT_THAT(tessel({"import", "a.tessel", "a.xml"}, terminal).err, HasSubstr(yellow + "warning:"));
  EXPECT_THAT(tessel({"units", "a.tessel"}, terminal).out, Not(HasSubstr(escape)));
}

TEST_F(Colours, AreNotWanted) {
  importSet({"definition"});
  ::setenv("NO_COLOR", "0", 1);
  EXPECT_THAT(onTerminal({"catalogue", "a.tessel"}), Shows(Not(HasSubstr(escape))));
  ::setenv("NO_COLOR", "", 1);
  EXPECT_THAT(onTerminal({"catalogue", "a.tessel"}), Shows(HasSubstr(bold))) << "an empty value says nothing";
}

TEST_F(Colours, NamesCannotMakeSome) {
  importSite("x");
  raw("a.tessel").exec("UPDATE tessel_Site SET name = x'1B5B33316D'");
  EXPECT_THAT(onTerminal({"tree", "a.tessel"}).shown, Not(HasSubstr(escape)));
}

}  // namespace
}  // namespace tessel::test
