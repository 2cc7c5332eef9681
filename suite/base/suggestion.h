#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace base {

/// The candidate that is most like a word; empty if none is. See below.
std::string mostSimilar(std::string_view word,
                        const std::vector<std::string>& candidates);

/// The clause "; did you mean 'NAME'?" with the candidate that is most like a
/// word; empty if none is. A candidate is like a word if at most two letters
/// have to be changed, added, removed or swapped with their neighbour, and at
/// most a third of the word's letters.
std::string suggestionFor(std::string_view word,
                          const std::vector<std::string>& candidates);

}  // namespace base
