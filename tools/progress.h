#pragma once

#include <string>

namespace tessel::tool {

/// A line on standard error that says what is going on, if that is a terminal that can erase it;
/// otherwise nothing is shown. Anything else
/// that goes to the terminal clears the line first and shows it again behind itself.
class Progress {
public:
  Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { clear(); }

  /// A terminal too narrow shortens the text, and leaves the amount as it is.
  void show(const std::string& text, const std::string& amount = "");
  void clear();

private:
  bool terminal_;
  bool shown_ = false;
};

}  // namespace tessel::tool
