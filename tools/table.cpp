#include "table.h"

#include <algorithm>
#include <iostream>
#include <optional>

#include "display_width.h"
#include "terminal.h"

namespace tessel::tool {
namespace {

constexpr std::size_t gap = 2;
constexpr std::size_t narrowest = 8;

using Widths = std::vector<std::size_t>;

Widths widthsOf(const std::vector<Cells>& rows) {
  Widths widths;
  for (const Cells& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], displayWidth(row[i]));
    }
  }
  return widths;
}

std::size_t widthOfLine(const Widths& widths) {
  std::size_t total = 0;
  for (const std::size_t width : widths) {
    if (width > 0) total += (total > 0 ? gap : 0) + width;
  }
  return total;
}

/// Nothing if no column can give way any more.
std::optional<std::size_t> widestText(const Widths& widths, const std::set<std::size_t>& numbers) {
  std::optional<std::size_t> widest;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    if (numbers.count(i) == 0 && widths[i] > (widest ? widths[*widest] : narrowest)) widest = i;
  }
  return widest;
}

void fit(Widths& widths, const std::set<std::size_t>& numbers, std::size_t room) {
  while (widthOfLine(widths) > room) {
    const auto widest = widestText(widths, numbers);
    if (!widest) return;
    --widths[*widest];
  }
}

std::string lineOf(const Cells& row, const Widths& widths) {
  std::string line;
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (widths[i] == 0) continue;
    const std::string cell = shortened(row[i], widths[i]);
    line += cell + std::string(widths[i] - displayWidth(cell) + gap, ' ');
  }
  return line.substr(0, line.find_last_not_of(' ') + 1);
}

}  // namespace

std::vector<std::string> linesOf(const Table& table, const std::string& indent) {
  Widths widths = widthsOf(table.rows);
  if (const auto room = widthOf(Stream::Out)) fit(widths, table.numbers, *room - std::min(*room, indent.size()));
  std::vector<std::string> lines;
  for (const Cells& row : table.rows) {
    lines.push_back(indent + lineOf(row, widths));
  }
  if (table.hasHeading && !lines.empty()) lines.front() = styled(Stream::Out, Style::Heading, lines.front());
  return lines;
}

void printTable(const Table& table, const std::string& indent) {
  for (const std::string& line : linesOf(table, indent)) {
    std::cout << line << "\n";
  }
}

}  // namespace tessel::tool
