#include "progress.h"

#include <iostream>

#include <unistd.h>

namespace tessel::tool {
namespace {

constexpr const char* eraseLine = "\r\x1B[K";

}  // namespace

Progress::Progress() : terminal_(::isatty(STDERR_FILENO) == 1) {}

void Progress::show(const std::string& text) {
  if (!terminal_) return;
  std::cerr << eraseLine << text << std::flush;
  shown_ = true;
}

void Progress::clear() {
  if (shown_) std::cerr << eraseLine << std::flush;
  shown_ = false;
}

}  // namespace tessel::tool
