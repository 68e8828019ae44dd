#include <algorithm>
#include <iostream>
#include <string>

#include "arguments.h"
#include "command.h"
#include "failures.h"
#include "import_messages.h"
#include "suggestion.h"
#include "text.h"

namespace tessel::tool {
namespace {

constexpr const Command* commands[] = {
  &createCommand, &infoCommand,           &treeCommand,   &importCommand, &copyCommand,    &catalogueCommand,
  &unitsCommand,  &setDefaultUnitCommand, &removeCommand, &purgeCommand,  &inspectCommand,
};

constexpr const char* about = R"(usage: tessel COMMAND [OPTION...] FILE...

Keeps the non-geometric data of a building project in one file: sites, buildings
and stories, measures and units, property definitions and property sets.

)";

constexpr const char* closing = R"(
'tessel COMMAND --help' or 'tessel help COMMAND' tells more, 'tessel --version'
prints the version.

Control characters in texts are shown as \n or \u001b. Exit status: 0 done,
1 done but errors were reported, 2 wrong usage, 3 a file or document could not
be used, 130 an import was interrupted.
)";

void printHelp() {
  std::cout << about;
  for (const Command* command : commands) {
    std::string name(command->name);
    name.resize(std::max<std::size_t>(name.size() + 1, 18), ' ');
    std::cout << "  " << name << command->summary << "\n";
  }
  std::cout << closing;
}

void printHelp(const Command& command) {
  std::cout << "usage: tessel " << command.name << " " << command.synopsis << "\n" << command.help;
}

void printUsageError(const std::string& command, const UsageError& error) {
  const std::string prefix = command.empty() ? "tessel" : "tessel " + command;
  const std::string help = "see '" + prefix + " --help'";
  std::cerr << prefix << ": " << error.what() << "; " << (error.nextStep.empty() ? help : error.nextStep) << "\n";
}

[[noreturn]] void refuseCommand(const std::string& name) {
  std::vector<std::string> words = {"--help", "--version"};
  for (const Command* command : commands) {
    words.emplace_back(command->name);
  }
  const std::string kind = !name.empty() && name.front() == '-' ? "option" : "command";
  throw UsageError("there is no " + kind + " '" + printable(name) + "'", suggestion(name, words));
}

const Command& findCommand(const std::string& name) {
  const auto found =
    std::find_if(std::begin(commands), std::end(commands), [&](const Command* c) { return c->name == name; });
  if (found == std::end(commands)) refuseCommand(name);
  return **found;
}

ExitStatus runCommand(const Command& command, const Words& words) {
  try {
    if (!asksForHelp(words)) return command.run(words);
    printHelp(command);
    return ExitStatus::Done;
  } catch (const UsageError& error) {
    printUsageError(std::string(command.name), error);
    return ExitStatus::WrongUsage;
  }
}

/// "tessel help COMMAND" is what "tessel COMMAND --help" is.
void printHelpOn(const Words& commandNames) {
  if (commandNames.size() > 1) throw UsageError("only one command can be explained at a time");
  if (commandNames.empty() || asksForHelp(commandNames)) return printHelp();
  printHelp(findCommand(commandNames.front()));
}

ExitStatus dispatch(const Words& words) {
  if (words.empty()) throw UsageError("a command is needed");
  const std::string& first = words.front();
  if (first == "--help" || first == "-h") {
    printHelp();
  } else if (first == "help") {
    printHelpOn({words.begin() + 1, words.end()});
  } else if (first == "--version") {
    std::cout << "tessel " TESSEL_VERSION "\n";
  } else {
    return runCommand(findCommand(first), {words.begin() + 1, words.end()});
  }
  return ExitStatus::Done;
}

ExitStatus fail(const std::string& line) {
  std::cerr << printable(line) << "\n";
  return ExitStatus::Unusable;
}

/// No exception leaves the program: each ends in one line and a status.
ExitStatus runProgram(const Words& words) {
  try {
    return dispatch(words);
  } catch (const UsageError& error) {
    printUsageError("", error);
    return ExitStatus::WrongUsage;
  } catch (const DocumentFailure& failure) {
    printMessage(failure.place, ImportSeverity::Error, failure.why);
    return ExitStatus::Unusable;
  } catch (const Failure& failure) {
    return fail(failure.what());
  } catch (...) {
    return fail("tessel: " + currentErrorText());
  }
}

}  // namespace
}  // namespace tessel::tool

int main(int argc, char** argv) {
  using tessel::tool::ExitStatus;
  ExitStatus status = tessel::tool::runProgram(tessel::tool::Words(argv + std::min(argc, 1), argv + argc));
  // What was printed may still be on its way to a full disk.
  std::cout.flush();
  if (!std::cout) {
    std::cerr << "tessel: standard output cannot be written\n";
    status = ExitStatus::Unusable;
  }
  return static_cast<int>(status);
}
