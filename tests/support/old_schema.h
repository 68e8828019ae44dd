#pragma once

#include <string>
#include <vector>

namespace tessel::test {

/// The statements that bring an empty SQLite file to `version` of the format, from 1000 to 1009, without any
/// row.
std::vector<std::string> oldSchema(int version);

}  // namespace tessel::test
