#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessel::tool {

/// "did you mean 'import'?" for the one of `words` that was most likely meant by `word`, or nothing if none is near.
std::string suggestion(std::string_view word, const std::vector<std::string>& words);

}  // namespace tessel::tool
