#pragma once

namespace tessel::tool {

/// Leaves a piece of work that is to be abandoned. The command that began the work catches it, tells what is left of the
/// work and ends with ExitStatus::Interrupted. It is none of the exceptions that tell of an error.
struct Interrupted {};

/// While it lives, SIGINT and SIGTERM ask for an end and do not make one, so that the file can be left as it was. The
/// second one, be it the same or the other, ends the program at once. A signal that was ignored before stays so.
class Interruption {
public:
  Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption();

  /// Throws Interrupted if one of the signals has come.
  static void check();
};

}  // namespace tessel::tool
