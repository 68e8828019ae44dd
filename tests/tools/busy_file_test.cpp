#include <filesystem>

#include "tools/program.h"

namespace tessel::test {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
namespace fs = std::filesystem;

constexpr int unusable = 3;

/// Commands that write, on a file that cannot be written just now.
class BusyFile : public Program {
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

TEST_F(BusyFile, ObjectsThatItCostsAreToldAtTheEnd) {
  raw("a.tessel").exec("DROP TABLE tessel_Story");
  write("a.xml", "<p><site><name>new</name></site><story><name>1</name><building name='none'/></story>"
                 "<story><name>2</name><building><name>x</name><site name='new'/></building></story>"
                 "<story><name>3</name><building><name>y</name><site name='new'/></building></story></p>");
  const ProcessResult result = tessel({"import", "a.tessel", "a.xml"});
  EXPECT_EQ(result.status, unusable);
  EXPECT_THAT(result.err, AllOf(HasSubstr("a.tessel: 1 document imported, 3 errors, 0 warnings\n"),
                                EndsWith("\ntessel: a.tessel: 2 objects were lost to failures of this file, most "
                                         "likely because another program is writing it\n")));
}

}  // namespace
}  // namespace tessel::test
