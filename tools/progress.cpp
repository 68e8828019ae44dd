#include "progress.h"

#include <iostream>

#include "terminal.h"

namespace tessel::tool {
namespace {

constexpr const char* eraseLine = "\r\x1B[K";

}  // namespace

Progress::Progress() : terminal_(takesControls(Stream::Err)) {}

void Progress::show(const std::string& text, const std::string& amount) {
  if (!terminal_) return;
  // What wraps could not be erased any more.
  std::cerr << eraseLine << fittedLine(Stream::Err, "", text, amount) << std::flush;
  shown_ = true;
}

void Progress::clear() {
  if (shown_) std::cerr << eraseLine << std::flush;
  shown_ = false;
}

}  // namespace tessel::tool
