#include "terminal.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

#include <sys/ioctl.h>
#include <unistd.h>

#include "display_width.h"

namespace tessel::tool {
namespace {

constexpr const char* endOfStyle = "\x1B[0m";

int descriptorOf(Stream stream) { return stream == Stream::Out ? STDOUT_FILENO : STDERR_FILENO; }

bool isTerminal(Stream stream) { return ::isatty(descriptorOf(stream)) == 1; }

/// Empty if it is not set: an empty value means the same for all variables here.
std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::size_t columnsVariable() {
  const std::string_view text = environment("COLUMNS");
  std::size_t columns = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), columns);
  return parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() ? columns : 0;
}

const char* startOf(Style style) {
  switch (style) {
  case Style::Heading:
    return "\x1B[1m";
  case Style::Error:
    return "\x1B[31m";
  case Style::Warning:
    return "\x1B[33m";
  }
  return "";
}

}  // namespace

bool takesControls(Stream stream) {
  const std::string_view kind = environment("TERM");
  return isTerminal(stream) && !kind.empty() && kind != "dumb";
}

std::optional<std::size_t> widthOf(Stream stream) {
  if (!isTerminal(stream)) return std::nullopt;
  if (const std::size_t columns = columnsVariable()) return columns;
  winsize size{};
  if (::ioctl(descriptorOf(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return std::nullopt;
  return size.ws_col;
}

std::string styled(Stream stream, Style style, const std::string& text) {
  if (!takesControls(stream) || !environment("NO_COLOR").empty()) return text;
  return startOf(style) + text + endOfStyle;
}

std::string fittedLine(Stream stream, const std::string& before, const std::string& text, const std::string& after) {
  const auto width = widthOf(stream);
  if (!width) return before + text + after;
  const std::size_t taken = displayWidth(before) + displayWidth(after);
  return before + shortened(text, *width > taken ? *width - taken : 0) + after;
}

}  // namespace tessel::tool
