#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace masking {

/// Values that are looked for in texts, letter case ignored. Finding one takes
/// the same time however many there are.
class NotedValues {
 public:
  /// Longest value, in bytes, that is looked for.
  static constexpr std::size_t kLongest = 128;

  NotedValues() : nodes_(1) {}

  /// Adds a value. `anywhere`: it is found inside words as well; otherwise only
  /// where a word begins and ends with it. Returns whether it was added: values
  /// that are empty or too long are not.
  bool add(std::string_view value, bool anywhere);

  /// The length of the longest value that stands at a place of a text; 0 if
  /// there is none.
  std::size_t at(std::string_view text, std::size_t place) const;

 private:
  struct Node {
    bool word = false;      ///< A value ends here.
    bool anywhere = false;  ///< And may stand inside a word.
  };

  std::vector<Node> nodes_;  ///< Of a trie; the first is its root.
  std::unordered_map<std::uint64_t, std::uint32_t>
      next_;  ///< By node and byte.
};

}  // namespace masking
