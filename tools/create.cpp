#include <iostream>

#include "arguments.h"
#include "command.h"
#include "project_file.h"
#include "text.h"

namespace tessel::tool {
namespace {

ExitStatus run(const Words& words) {
  const Arguments arguments(words, {{"--force"}});
  const std::string& path = arguments.onlyOperand();
  const auto db = createProject(path, arguments.has("--force"));
  std::cout << printable(path) << ": " << (db->isNew() ? "new project" : "holds a project already")
            << ", schema version " << db->version() << "\n";
  return ExitStatus::Done;
}

}  // namespace

const Command createCommand = {
  "create",
  "[--force] FILE",
  "make an empty project file",
  R"(
Makes FILE a project without content. Nothing happens if it holds a project
already; a project of an older version is brought up to date.

  --force   put the project into an SQLite database of another program
)",
  run,
};

}  // namespace tessel::tool
