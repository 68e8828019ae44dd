#include <filesystem>

#include "tools/copy_program.h"

namespace tessel::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;
namespace fs = std::filesystem;

constexpr int wrongUsage = 2;
constexpr int unusable = 3;

/// Copies that end with one line and leave everything as it is.
class CopyRefusal : public CopyProgram {
protected:
  void SetUp() override {
    CopyProgram::SetUp();
    duplicate("b.tessel");
  }

  void expectRefusal(const std::vector<std::string>& words, const std::string& why) {
    EXPECT_THAT(refusedCopy("b.tessel", words),
                Reports(unusable, "tessel: b.tessel: nothing was copied from a.tessel: " + why + "\n"));
  }

  ProcessOptions bound() const {
    ProcessOptions options;
    options.permissionsHold = true;
    return options;
  }
};

TEST_F(CopyRefusal, TwoFilesAreNeeded) {
  const std::string line =
    "tessel copy: a project file to copy from and one to copy to are needed; see 'tessel copy --help'\n";
  EXPECT_THAT(copy({}), Reports(wrongUsage, line));
  EXPECT_THAT(copy({"a.tessel"}), Reports(wrongUsage, line));
  EXPECT_THAT(copy({"a.tessel", "c.tessel", "d.tessel"}), Reports(wrongUsage, line));
  EXPECT_FALSE(exists("c.tessel"));
}

TEST_F(CopyRefusal, AFileIsNotCopiedIntoItself) {
  fs::create_symlink("a.tessel", path("link.tessel"));
  for (const char* name : {"a.tessel", "./a.tessel", "link.tessel"}) {
    EXPECT_THAT(copy({"a.tessel", name}),
                Reports(wrongUsage, StartsWith("tessel copy: a file cannot be copied into itself;")));
  }
}

TEST_F(CopyRefusal, UnknownWordsAreWrongUsage) {
  EXPECT_THAT(
    copy({"--on-clash", "merge", "a.tessel", "c.tessel"}),
    Reports(wrongUsage, StartsWith("tessel copy: a clash is answered by 'fail', 'keep', 'overwrite' or 'rename', "
                                   "not by 'merge';")));
  EXPECT_THAT(copy({"--only", "storey", "a.tessel", "c.tessel"}),
              Reports(wrongUsage, StartsWith("tessel copy: there is no kind 'storey';")));
  EXPECT_THAT(copy({"--everything", "a.tessel", "c.tessel"}),
              Reports(wrongUsage, StartsWith("tessel copy: there is no option '--everything';")));
  EXPECT_FALSE(exists("c.tessel"));
}

TEST_F(CopyRefusal, HelpTellsWhatAClashDoes) {
  EXPECT_THAT(tessel({"copy", "--help"}),
              Prints(AllOf(StartsWith("usage: tessel copy ["), HasSubstr(" SOURCE DESTINATION\n\n"),
                           HasSubstr("namespaces cannot be renamed"))));
  EXPECT_THAT(tessel({"--help"}).out, HasSubstr("\n  copy              copy the content of a project file"));
}

TEST_F(CopyRefusal, ASourceThatCannotBeUsedMakesNoDestination) {
  write("text.tessel", "Dear diary, this is a text and no database, however long it may become.\n");
  EXPECT_THAT(copy({"none.tessel", "c.tessel"}), Reports(unusable, "tessel: none.tessel: There is no such file.\n"));
  EXPECT_THAT(copy({"text.tessel", "c.tessel"}),
              Reports(unusable, "tessel: text.tessel: The file is no SQLite database.\n"));
  EXPECT_FALSE(exists("c.tessel"));
  EXPECT_FALSE(exists("none.tessel"));
}

TEST_F(CopyRefusal, ADestinationThatCannotBeMade) {
  EXPECT_THAT(copy({"a.tessel", "deep/c.tessel"}),
              Reports(unusable, "tessel: deep/c.tessel: There is no folder 'deep'.\n"));
}

TEST_F(CopyRefusal, ADestinationThatMayOnlyBeRead) {
  fs::permissions(path("b.tessel"), fs::perms::owner_read);
  EXPECT_THAT(tessel({"copy", "--on-clash", "keep", "a.tessel", "b.tessel"}, bound()),
              Reports(unusable, "tessel: b.tessel: this file can only be read\n"));
}

TEST_F(CopyRefusal, ASourceThatMayOnlyBeReadIsEnough) {
  fs::permissions(path("a.tessel"), fs::perms::owner_read);
  EXPECT_EQ(tessel({"copy", "--on-clash", "keep", "a.tessel", "b.tessel"}, bound()).status, 0);
}

TEST_F(CopyRefusal, ADestinationThatIsBeingWritten) {
  const std::string before = read("b.tessel");
  RawFile other = raw("b.tessel");
  other.exec("BEGIN IMMEDIATE");
  // Without a look at the bytes meanwhile: closing the file would drop the lock of this process.
  EXPECT_THAT(copy({"--on-clash", "overwrite", "a.tessel", "b.tessel"}),
              Reports(unusable, "tessel: b.tessel: another program is using the file, or the disk is full; nothing "
                                "was copied; try again\n"));
  other.exec("ROLLBACK");
  EXPECT_TRUE(read("b.tessel") == before);
}

TEST_F(CopyRefusal, AClashNamesTheObject) {
  const std::string answer = " is there already; choose an answer with --on-clash";
  expectRefusal({"a.tessel"}, "site 'Default'" + answer);
  expectRefusal({"--only", "entitytype", "--on-clash", "fail", "a.tessel"}, "entitytype 'IfcBeam'" + answer);
  change("b.tessel", "UPDATE tessel_Site SET name = 'Other'");
  expectRefusal({"--only", "site,propertyset", "--json", "a.tessel"}, "propertynamespace 'IFC4'" + answer);
}

TEST_F(CopyRefusal, AClashAtTheEndUndoesWhatCameBefore) {
  importHouseInMetres("c.tessel");
  change("c.tessel", "INSERT INTO tessel_EntityType (name) VALUES ('IfcWindow')");
  EXPECT_THAT(refusedCopy("c.tessel", {"a.tessel"}), Reports(unusable, HasSubstr(": entitytype 'IfcWindow' is there")));
}

TEST_F(CopyRefusal, MetaNamesTheColumnThatHasAUnit) {
  change("b.tessel", "DELETE FROM tessel_ColumnUnit WHERE \"column\" <> 'elevation'");
  expectRefusal({"--meta", "--on-clash", "keep", "a.tessel"},
                "--meta cannot give story.elevation a unit, for it has one already");
}

TEST_F(CopyRefusal, AUnitWithAnotherFactorIsNamed) {
  change("b.tessel", "UPDATE tessel_Unit SET scale = 0.01 WHERE label = 'mm'");
  expectRefusal({"--on-clash", "keep", "a.tessel"}, "unit 'millimetre': 'mm' of LENGTH is 0.01 there, and not 0.001");
}

TEST_F(CopyRefusal, AUnitWhoseNameIsTakenIsNamed) {
  change("b.tessel", "UPDATE tessel_Unit SET label = 'millim' WHERE label = 'mm'");
  expectRefusal({"--on-clash", "overwrite", "a.tessel"},
                "unit 'millimetre': the name belongs to another unit there, 'millim' of LENGTH");
}

TEST_F(CopyRefusal, ATakenLabelIsNamed) {
  change("a.tessel", "UPDATE tessel_PropertySet SET label = 'D' WHERE name = 'Pset_DoorCommon'");
  change("b.tessel", "UPDATE tessel_PropertySet SET label = 'D', name = 'Mine' WHERE name = 'Pset_DoorCommon'");
  expectRefusal({"--on-clash", "keep", "a.tessel"},
                "propertyset 'Pset_DoorCommon': its label 'D' is taken there by 'Mine'");
}

TEST_F(CopyRefusal, ATakenLabelOfANamespaceIsNamed) {
  change("a.tessel", "UPDATE tessel_PropertyNamespace SET label = 'N'");
  change("b.tessel", "UPDATE tessel_PropertyNamespace SET label = 'N', name = 'Mine'");
  expectRefusal({"--on-clash", "keep", "a.tessel"}, "propertynamespace 'IFC4': its label 'N' is taken there by 'Mine'");
}

TEST_F(CopyRefusal, ALabelThatIsTakenByTheOneOfTheSameNameIsNamed) {
  const std::string label = "UPDATE tessel_PropertySet SET label = 'D' WHERE name = 'Pset_DoorCommon'";
  change("a.tessel", label);
  change("b.tessel", label);
  expectRefusal({"--on-clash", "rename", "a.tessel"}, "propertyset 'Pset_DoorCommon': its label is taken there");
}

TEST_F(CopyRefusal, ASiteThatStaysBehindBeneathItsBuildingIsNamed) {
  change("a.tessel", "UPDATE tessel_Site SET name = 'Hill'");
  change("b.tessel", "DELETE FROM tessel_ColumnUnit WHERE \"table\" = 'Site'");
  expectRefusal({"a.tessel"},
                "site 'Hill' cannot come along (site.ref_elevation has no unit in b.tessel), and what is in it "
                "not without it");
}

TEST_F(CopyRefusal, ANewFileStaysEmpty) {
  change("a.tessel", "UPDATE tessel_PropertySet SET name = CAST(x'41FF' AS TEXT) WHERE name = 'Pset_DoorCommon'");
  EXPECT_THAT(copy({"a.tessel", "c.tessel"}),
              Reports(unusable, "tessel: c.tessel: nothing was copied from a.tessel: Invalid UTF-8\n"));
  for (const char* table :
       {"tessel_Story", "tessel_Unit", "tessel_ColumnUnit", "tessel_DefaultUnit", "tessel_EntityType"}) {
    EXPECT_EQ(raw("c.tessel").count(table), 0) << table;
  }
}

}  // namespace
}  // namespace tessel::test
