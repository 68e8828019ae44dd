#include <filesystem>

#include "tools/paused_program.h"

namespace tessel::test {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::StartsWith;
namespace fs = std::filesystem;

constexpr int doneWithErrors = 1;
constexpr int unusable = 3;

/// Commands that write, on a file that cannot be written just now.
class BusyFile : public PausedProgram {
protected:
  struct Writer {
    std::vector<std::string> words;
    std::string done;
  };

  BusyFile() {
    tessel({"import", "a.tessel", houseDocument});
    write("b.tessel", read("a.tessel"));
  }

  static std::vector<Writer> writers() {
    return {
      {{"import", "a.tessel", houseDocument}, "imported"},         {{"copy", "b.tessel", "a.tessel"}, "copied"},
      {{"set-default-unit", "a.tessel", "metre"}, "changed"},      {{"remove", "a.tessel", "story", "4"}, "removed"},
      {{"remove", "--json", "a.tessel", "story", "4"}, "removed"}, {{"purge", "a.tessel", "story"}, "removed"},
      {{"purge", "--all", "--json", "a.tessel"}, "removed"},
    };
  }

  ProcessOptions bound() const {
    ProcessOptions options;
    options.permissionsHold = true;
    return options;
  }
};

TEST_F(BusyFile, ThatAnotherProgramWritesIsToldBeforeTheWork) {
  RawFile other = raw("a.tessel");
  other.exec("BEGIN IMMEDIATE");
  for (const Writer& writer : writers()) {
    EXPECT_THAT(tessel(writer.words), Reports(unusable, "tessel: a.tessel: another program is using the file, or the "
                                                        "disk is full; nothing was " +
                                                          writer.done + "; try again\n"))
      << writer.words.front();
  }
}

TEST_F(BusyFile, ThatAnotherProgramReadsStopsTheEndOfAnImport) {
  RawFile other = raw("a.tessel");
  other.exec("BEGIN; SELECT count(*) FROM tessel_Site");
  write("a.xml", "<p><site><name>new</name></site></p>");
  EXPECT_THAT(tessel({"import", "a.tessel", "a.xml"}),
              Reports(unusable, "tessel: a.xml: nothing of this document was imported: another program is using the "
                                "file; try again\n"));
}

TEST_F(BusyFile, InAFolderThatMayOnlyBeReadIsNotTakenForOne) {
  fs::create_directory(path("folder"));
  fs::rename(path("a.tessel"), path("folder/a.tessel"));
  fs::permissions(path("folder"), fs::perms::owner_read | fs::perms::owner_exec);
  for (Writer writer : writers()) {
    for (std::string& word : writer.words) {
      if (word == "a.tessel") word = "folder/a.tessel";
    }
    EXPECT_THAT(tessel(writer.words, bound()),
                Reports(unusable, "tessel: folder/a.tessel: the folder of the file can only be read, so the file "
                                  "cannot be changed\n"))
      << writer.words.front();
  }
  EXPECT_EQ(tessel({"tree", "folder/a.tessel"}, bound()).status, 0);
  fs::permissions(path("folder"), fs::perms::owner_all);
}

// A removal is committed at once, and so the file is free until the next object is written.
TEST_F(BusyFile, ObjectsThatItMayHaveCostAreToldAtTheEnd) {
  write("1.xml", "<p><site><name>one</name></site></p>");
  tessel({"import", "c.tessel", "1.xml"});
  write("a.xml", longWarnings("<site id='1' remove='true'/>"));
  start("import --update c.tessel a.xml");
  RawFile other = raw("c.tessel");
  other.exec("BEGIN IMMEDIATE");
  const ProcessResult result = finish();
  EXPECT_EQ(result.status, unusable);
  EXPECT_THAT(result.err,
              EndsWith("c.tessel: 1 document imported, 1 error, 5000 warnings\n"
                       "tessel: c.tessel: this file cannot be written now, which may have cost 1 object\n"));
}

// The library has no other words for them than for a file that cannot be written.
TEST_F(BusyFile, FaultsOfADocumentAreNotTakenForIt) {
  tessel({"create", "c.tessel"});
  write("a.xml", "<p><unit><name>none</name><label>n</label><scale>nan</scale><measure name='LENGTH'/></unit></p>");
  EXPECT_THAT(tessel({"import", "c.tessel", "a.xml"}),
              Reports(doneWithErrors, AllOf(StartsWith("a.xml:1:"),
                                            EndsWith("\nc.tessel: 1 document imported, 1 error, 0 warnings\n"))));
  write("1.xml", "<p><propertynamespace id='1'>n</propertynamespace>"
                 "<propertydefinition id='2'><name>d</name><namespace id='1'/></propertydefinition>"
                 "<propertyset><namespace id='1'/><name>A</name><property_definition id='2'/></propertyset>"
                 "<propertyset><namespace id='1'/><name>B</name><property_definition id='2'/></propertyset></p>");
  write("2.xml", "<p><propertyset id='1' remove='true'/></p>");
  ASSERT_EQ(tessel({"import", "c.tessel", "1.xml"}).status, 0);
  EXPECT_THAT(tessel({"import", "--update", "c.tessel", "2.xml"}),
              Reports(doneWithErrors, "2.xml:1:5: error: Project database exception\n"
                                      "c.tessel: 1 document imported, 1 error, 0 warnings\n"));
}

}  // namespace
}  // namespace tessel::test
