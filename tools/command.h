#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessel::tool {

/// What the program ends with.
enum class ExitStatus : int {
  Done = 0,
  DoneWithErrors = 1,  ///< The work went to its end, but parts of it failed and were reported.
  WrongUsage = 2,
  Unusable = 3,       ///< A file or a document could not be used.
  Interrupted = 130,  ///< As the shell says of a program that SIGINT has ended.
};

/// The words behind the command's name, as they came: any bytes.
using Words = std::vector<std::string>;

/// One row of the table of commands in main.cpp.
struct Command {
  std::string_view name;
  std::string_view synopsis;  ///< What follows the name on the command line.
  std::string_view summary;   ///< One line for the list of commands.
  std::string_view help;      ///< The text below the synopsis in the command's own help; ends with a line break.
  ExitStatus (*run)(const Words& words);
};

extern const Command createCommand;
extern const Command infoCommand;
extern const Command treeCommand;
extern const Command importCommand;
extern const Command copyCommand;
extern const Command catalogueCommand;
extern const Command unitsCommand;
extern const Command setDefaultUnitCommand;
extern const Command removeCommand;
extern const Command purgeCommand;
extern const Command inspectCommand;

}  // namespace tessel::tool
