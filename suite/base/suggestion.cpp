#include "suite/base/suggestion.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "suite/base/time_limit.h"

namespace base {
namespace {

constexpr std::size_t kMostChanges = 2;
// Longer words are no slip of the fingers, and cost time to compare.
constexpr std::size_t kLongestWord = 64;

// How many letters have to be changed, added, removed or swapped with their
// neighbour to make one text of the other (optimal string alignment), as far as
// that is below `limit`: of what differs more only the beginning is compared.
std::size_t changesBetween(std::string_view from, std::string_view to,
                           std::size_t limit) {
  if (std::max(from.size(), to.size()) >=
      std::min(from.size(), to.size()) + limit) {
    return limit;
  }
  // This row, the last one and the one before it, by turns.
  std::array<std::array<std::size_t, kLongestWord + 1>, 3> rows = {};
  std::size_t leastOfLast = 0;
  for (std::size_t i = 0; i <= from.size(); ++i) {
    heedTime();
    auto& row = rows[i % 3];
    const auto& last = rows[(i + 2) % 3];
    const auto& beforeLast = rows[(i + 1) % 3];
    std::size_t least = limit;
    for (std::size_t j = 0; j <= to.size(); ++j) {
      row[j] = i + j;
      if (i > 0 && j > 0) {
        const std::size_t differ = from[i - 1] == to[j - 1] ? 0 : 1;
        row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + differ});
        const bool swapped = i > 1 && j > 1 && from[i - 1] == to[j - 2] &&
                             from[i - 2] == to[j - 1];
        if (swapped) {
          row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
      }
      least = std::min(least, row[j]);
    }
    if (least == limit && leastOfLast == limit) {
      return limit;
    }
    leastOfLast = least;
  }
  return rows[from.size() % 3][to.size()];
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
    const std::size_t changes = changesBetween(word, candidate, fewest);
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
