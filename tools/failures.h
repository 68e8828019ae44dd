#pragma once

#include <stdexcept>
#include <string>

namespace tessel::tool {

/// The command line asks for something that does not exist; ends the program with ExitStatus::WrongUsage.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A file or a document cannot be used; ends the program with ExitStatus::Unusable. The text is the whole line to show.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The text of the exception that is being handled, of whatever kind it is. To be called in a catch block.
std::string currentErrorText();

}  // namespace tessel::tool
