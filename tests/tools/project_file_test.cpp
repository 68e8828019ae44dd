#include <filesystem>
#include <memory>

#include "tools/program.h"

namespace tessel::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
namespace fs = std::filesystem;

constexpr int unusable = 3;

/// What the program says of a file that it cannot use.
class ProjectFile : public Program {
protected:
  ProjectFile() { write("a.xml", "<p><site><name>one</name></site></p>"); }

  /// Each command that opens an existing file, with its words for `name`.
  static std::vector<std::vector<std::string>> readers(const std::string& name) {
    return {{"info", name}, {"info", "--json", name}, {"tree", name}};
  }

  static std::vector<std::vector<std::string>> all(const std::string& name) {
    auto commands = readers(name);
    commands.push_back({"create", name});
    commands.push_back({"import", name, "a.xml"});
    return commands;
  }

  void expectEach(const std::vector<std::vector<std::string>>& commands, const std::string& line,
                  const ProcessOptions& options = {}) {
    for (const auto& words : commands) {
      EXPECT_THAT(tessel(words, options), Reports(unusable, line + "\n")) << words.front();
    }
  }

  void createProject(const std::string& name) { ASSERT_EQ(tessel({"create", name}).status, 0); }

  static ProcessOptions bound() {
    ProcessOptions options;
    options.permissionsHold = true;
    return options;
  }
};

TEST_F(ProjectFile, Missing) {
  expectEach(readers("a.tessel"), "tessel: a.tessel: There is no such file.");
  EXPECT_FALSE(exists("a.tessel"));
}

TEST_F(ProjectFile, InAFolderThatIsMissing) {
  expectEach({{"create", "deep/a.tessel"}, {"import", "deep/a.tessel", "a.xml"}},
             "tessel: deep/a.tessel: There is no folder 'deep'.");
  expectEach(readers("deep/a.tessel"), "tessel: deep/a.tessel: There is no such file.");
  EXPECT_FALSE(exists("deep"));
}

TEST_F(ProjectFile, IsAFolder) {
  fs::create_directory(path("folder"));
  expectEach(all("folder"), "tessel: folder: The file cannot be opened: Is a directory.");
}

TEST_F(ProjectFile, IsADevice) {
  expectEach(all("/dev/null"), "tessel: /dev/null: this is a device or a pipe and no project file");
}

TEST_F(ProjectFile, IsNoDatabase) {
  write("a.tessel", "Dear diary, this is a text and no database, however long it may become.\n");
  expectEach(all("a.tessel"), "tessel: a.tessel: The file is no SQLite database.");
  EXPECT_THAT(read("a.tessel"), StartsWith("Dear diary"));
}

TEST_F(ProjectFile, IsEmpty) {
  write("a.tessel", "");
  expectEach(readers("a.tessel"), "tessel: a.tessel: The database has no project.");
  EXPECT_EQ(read("a.tessel"), "");
}

TEST_F(ProjectFile, IsADatabaseWithoutAProject) {
  RawFile(path("a.tessel"), RawFile::Access::create).exec("CREATE TABLE mine (x)");
  expectEach(readers("a.tessel"), "tessel: a.tessel: The database has no project.");
}

TEST_F(ProjectFile, IsTooNew) {
  createProject("a.tessel");
  raw("a.tessel").exec("UPDATE schema_version SET version = 2000, compatibility = 2000");
  expectEach(all("a.tessel"),
             "tessel: a.tessel: Version 2000 needs a library of version 2000 or later; this one has 1010.");
}

TEST_F(ProjectFile, HoldsNoProjectRecord) {
  createProject("a.tessel");
  raw("a.tessel").exec("DELETE FROM tessel_Project");
  expectEach(all("a.tessel"), "tessel: a.tessel: Version 1010 does not open: it has no project record.");
}

TEST_F(ProjectFile, HoldsANameThatIsNoText) {
  createProject("a.tessel");
  raw("a.tessel")
    .exec("INSERT INTO tessel_SpatialStructure (id, typeid) VALUES (1, 'tessel::Site');"
          "INSERT INTO tessel_Site (id, name) VALUES (1, CAST(x'41FF' AS TEXT))");
  EXPECT_THAT(tessel({"tree", "a.tessel"}), Reports(unusable, "tessel: a.tessel: Invalid UTF-8\n"));
}

TEST_F(ProjectFile, IsLocked) {
  createProject("a.tessel");
  RawFile other = raw("a.tessel");
  other.exec("BEGIN EXCLUSIVE");
  expectEach(all("a.tessel"), "tessel: a.tessel: The file is being written elsewhere.");
}

TEST_F(ProjectFile, MayNotBeRead) {
  createProject("a.tessel");
  fs::permissions(path("a.tessel"), fs::perms::none);
  expectEach(all("a.tessel"), "tessel: a.tessel: The file cannot be opened: Permission denied.", bound());
}

TEST_F(ProjectFile, MayNotBeMade) {
  fs::create_directory(path("folder"));
  fs::permissions(path("folder"), fs::perms::owner_read | fs::perms::owner_exec);
  const std::string line = "tessel: folder/a.tessel: The file cannot be made: Permission denied.";
  expectEach({{"create", "folder/a.tessel"}, {"import", "folder/a.tessel", "a.xml"}}, line, bound());
  expectEach(readers("folder/a.tessel"), "tessel: folder/a.tessel: There is no such file.", bound());
}

TEST_F(ProjectFile, InAFolderThatMayNotBeEntered) {
  fs::create_directory(path("folder"));
  fs::permissions(path("folder"), fs::perms::none);
  expectEach(all("folder/a.tessel"), "tessel: folder/a.tessel: The file cannot be opened: Permission denied.", bound());
  fs::permissions(path("folder"), fs::perms::owner_all);
}

TEST_F(ProjectFile, MayOnlyBeRead) {
  createProject("a.tessel");
  fs::permissions(path("a.tessel"), fs::perms::owner_read);
  EXPECT_THAT(tessel({"tree", "a.tessel"}, bound()), Prints("(no site)\n"));
  EXPECT_THAT(tessel({"info", "a.tessel"}, bound()), Prints(HasSubstr("read only           yes\n")));
  EXPECT_THAT(tessel({"import", "a.tessel", "a.xml"}, bound()),
              Reports(unusable, "tessel: a.tessel: this file can only be read\n"));
}

TEST_F(ProjectFile, NameIsNoUtf8) {
  expectEach(all("\xE9t\xE9.tessel"), "tessel: \\xe9t\\xe9.tessel: the name of a project file must be UTF-8");
}

TEST_F(ProjectFile, NameIsEmpty) { expectEach(all(""), "tessel: the name of a project file must not be empty"); }

TEST_F(ProjectFile, NameIsThatOfADatabaseInMemory) {
  expectEach(all(":memory:"), "tessel: :memory:: this is the name of a database that is gone at once, and of no file");
  EXPECT_FALSE(exists(":memory:"));
}

TEST_F(ProjectFile, NameIsThatOfStandardInput) {
  expectEach(all("-"), "tessel: -: a project is kept in a file and not in a pipe; a file of this name is './-'");
  EXPECT_FALSE(exists("-"));
}

TEST_F(ProjectFile, NameIsAUri) {
  expectEach(all("file:a.tessel"), "tessel: file:a.tessel: a project file is named by its path and not by a URI");
  EXPECT_THAT(tessel({"create", "./file:a.tessel"}), Prints("./file:a.tessel: new project, schema version 1010\n"));
}

TEST_F(ProjectFile, NameMayChooseAnSqliteVfs) {
  EXPECT_THAT(tessel({"create", "unix://a.tessel"}), Prints("unix://a.tessel: new project, schema version 1010\n"));
  EXPECT_TRUE(exists("a.tessel"));
  expectEach(all("moon://a.tessel"), "tessel: moon://a.tessel: The file cannot be opened: no such vfs: moon.");
}

}  // namespace
}  // namespace tessel::test
