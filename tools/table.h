#pragma once

#include <string>
#include <vector>

namespace tessel::tool {

/// The texts of one line of a table.
using Cells = std::vector<std::string>;

/// Prints lines with their cells below each other, two spaces apart. A column without a text takes no room.
void printTable(const std::vector<Cells>& rows, const std::string& indent = "");

}  // namespace tessel::tool
