#include "suggestion.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace tessel::tool {
namespace {

bool isSame(char one, char other) {
  const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
  return lower(one) == lower(other);
}

/// How many letters have to be added, left out, replaced or swapped with their neighbour.
std::size_t distance(std::string_view one, std::string_view other) {
  std::vector<std::vector<std::size_t>> steps(one.size() + 1, std::vector<std::size_t>(other.size() + 1));
  for (std::size_t i = 0; i <= one.size(); ++i) {
    for (std::size_t j = 0; j <= other.size(); ++j) {
      std::size_t& best = steps[i][j];
      if (i == 0 || j == 0) {
        best = i + j;
        continue;
      }
      best = std::min(steps[i - 1][j], steps[i][j - 1]) + 1;
      best = std::min(best, steps[i - 1][j - 1] + (isSame(one[i - 1], other[j - 1]) ? 0 : 1));
      const bool swapped = i > 1 && j > 1 && isSame(one[i - 1], other[j - 2]) && isSame(one[i - 2], other[j - 1]);
      if (swapped) best = std::min(best, steps[i - 2][j - 2] + 1);
    }
  }
  return steps[one.size()][other.size()];
}

/// A short word is soon near to anything.
std::size_t allowedDistance(std::string_view word) {
  if (word.size() < 5) return 1;
  return word.size() < 7 ? 2 : 3;
}

/// Who writes "help" for "--help" is not far off.
std::string_view withoutDashes(std::string_view word) {
  return word.substr(std::min(word.find_first_not_of('-'), word.size()));
}

}  // namespace

std::string suggestion(std::string_view word, const std::vector<std::string>& words) {
  const std::string_view wrong = withoutDashes(word);
  constexpr std::size_t longest = 40;  // No word of the program is, and the work grows with the square of the length.
  if (wrong.size() < 2 || wrong.size() > longest) return {};
  const auto farness = [&](const std::string& candidate) { return distance(wrong, withoutDashes(candidate)); };
  const auto isNearer = [&](const std::string& a, const std::string& b) { return farness(a) < farness(b); };
  const auto nearest = std::min_element(words.begin(), words.end(), isNearer);
  if (nearest == words.end() || farness(*nearest) > allowedDistance(wrong)) return {};
  return "did you mean '" + *nearest + "'?";
}

}  // namespace tessel::tool
