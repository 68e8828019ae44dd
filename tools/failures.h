#pragma once

#include <stdexcept>

namespace tessel::tool {

/// The command line asks for something that does not exist; ends the program with ExitStatus::WrongUsage.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A file or a document cannot be used; ends the program with ExitStatus::Unusable. The text is the whole line to show.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace tessel::tool
