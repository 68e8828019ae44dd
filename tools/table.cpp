#include "table.h"

#include <algorithm>
#include <cstddef>
#include <iostream>

namespace tessel::tool {
namespace {

/// Characters, not bytes, so that names in any script line up.
std::size_t widthOf(const std::string& text) {
  const auto startsCharacter = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; };
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), startsCharacter));
}

}  // namespace

void printTable(const std::vector<Cells>& rows, const std::string& indent) {
  std::vector<std::size_t> widths;
  for (const Cells& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], widthOf(row[i]));
    }
  }
  for (const Cells& row : rows) {
    std::string line = indent;
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (widths[i] > 0) line += row[i] + std::string(widths[i] - widthOf(row[i]) + 2, ' ');
    }
    std::cout << line.substr(0, line.find_last_not_of(' ') + 1) << "\n";
  }
}

}  // namespace tessel::tool
