#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace tessel::tool {

/// The command line asks for something that does not exist; ends the program with ExitStatus::WrongUsage.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
  UsageError(const std::string& what, std::string hint) : std::runtime_error(what), nextStep(std::move(hint)) {}

  std::string nextStep;  ///< What to do about it; empty if nothing better is known than to read the help.
};

/// A file or a document cannot be used; ends the program with ExitStatus::Unusable. The text is the whole line to show.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The same for what is wrong at a place in a document.
struct DocumentFailure : Failure {
  DocumentFailure(std::string where, std::string what)
      : Failure(where + ": error: " + what), place(std::move(where)), why(std::move(what)) {}

  std::string place;
  std::string why;
};

/// The text of the exception that is being handled, of whatever kind it is. To be called in a catch block.
std::string currentErrorText();

/// Whether a text is one of those that tell only that the file could not be read or written. That need not be a fault of
/// the file: it is all that the library says of values that the file does not take, too.
bool isFileFailure(const std::string& errorText);

/// Why a file cannot be opened, for a number of `errno`.
std::string openErrorText(int error);

}  // namespace tessel::tool
