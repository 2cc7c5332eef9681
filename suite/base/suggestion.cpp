#include "suite/base/suggestion.h"

#include <algorithm>
#include <cstddef>

namespace base {
namespace {

constexpr std::size_t kMostChanges = 2;
// Longer words are no slip of the fingers, and cost time to compare.
constexpr std::size_t kLongestWord = 64;

// How many letters have to be changed, added, removed or swapped with their
// neighbour to make one text of the other (optimal string alignment).
std::size_t changesBetween(std::string_view from, std::string_view to) {
  std::vector<std::vector<std::size_t>> changes(
      from.size() + 1, std::vector<std::size_t>(to.size() + 1));
  for (std::size_t i = 0; i <= from.size(); ++i) {
    for (std::size_t j = 0; j <= to.size(); ++j) {
      if (i == 0 || j == 0) {
        changes[i][j] = i + j;
        continue;
      }
      const std::size_t differ = from[i - 1] == to[j - 1] ? 0 : 1;
      changes[i][j] = std::min({changes[i - 1][j] + 1, changes[i][j - 1] + 1,
                                changes[i - 1][j - 1] + differ});
      const bool swapped = i > 1 && j > 1 && from[i - 1] == to[j - 2] &&
                           from[i - 2] == to[j - 1];
      if (swapped) {
        changes[i][j] = std::min(changes[i][j], changes[i - 2][j - 2] + 1);
      }
    }
  }
  return changes[from.size()][to.size()];
}

}  // namespace

std::string mostSimilar(std::string_view word,
                        const std::vector<std::string>& candidates) {
  if (word.size() > kLongestWord) {
    return "";
  }
  std::size_t fewest = std::min(kMostChanges, word.size() / 3) + 1;
  std::string best;
  for (const std::string& candidate : candidates) {
    if (candidate.size() > kLongestWord) {
      continue;
    }
    const std::size_t changes = changesBetween(word, candidate);
    if (changes < fewest) {
      fewest = changes;
      best = candidate;
    }
  }
  return best;
}

std::string suggestionFor(std::string_view word,
                          const std::vector<std::string>& candidates) {
  const std::string best = mostSimilar(word, candidates);
  return best.empty() ? "" : "; did you mean '" + best + "'?";
}

}  // namespace base
