#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace masking {

/// Values that are looked for in texts, letter case ignored. The time for a
/// text is proportional to its length, whatever the values are.
///
/// It is the automaton of Aho and Corasick (1975), run from the end of a text
/// to its begin, so that the longest value at each place is known there. Where
/// a word begins or ends, values and texts have a character more: so it takes
/// no further look at what stands around a value.
class NotedValues {
 public:
  /// Longest value, in bytes, that is looked for.
  static constexpr std::size_t kLongest = 128;

  /// Adds a value. `anywhere`: it is found inside words as well, and is of
  /// letters and digits alone; otherwise only where a word begins and ends with
  /// it. Returns whether it was added: values that are empty or too long are
  /// not.
  bool add(std::string_view value, bool anywhere);

  /// Makes what was added ready for `lengths`; nothing can be added after it.
  void prepare();

  /// The length of the longest value that stands at each place of a text from
  /// `begin` to before `end`; 0 if there is none.
  std::vector<std::uint8_t> lengths(std::string_view text, std::size_t begin,
                                    std::size_t end) const;

 private:
  /// What the values have in common up to a character, from their ends.
  struct Node {
    char label = 0;              ///< The last character.
    std::uint8_t length = 0;     ///< Of the longest value that is met here.
    std::uint32_t children = 0;  ///< The first; they end where those of the
                                 ///< next node begin, sorted by label.
    std::uint32_t shorter = 0;   ///< The longest proper end of this one.
  };

  std::uint32_t child(std::uint32_t node, char label) const;
  std::uint32_t step(std::uint32_t node, char label) const;

  std::vector<std::string> values_;  ///< Backwards, with edges; not yet ready.
  std::vector<Node> nodes_{1};       ///< The first is the root.
};

}  // namespace masking
