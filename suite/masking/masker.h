#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "suite/masking/noted_values.h"
#include "suite/masking/replacements.h"

namespace masking {

/// Replaces what identifies one machine or its users, in two passes: first
/// everything is told that does (`note`) and that does not (`keep`), then
/// values and texts are masked, so that a value is found in texts that were
/// read before it was known. Does no input or output; the time is proportional
/// to the bytes that it is given, and the memory is limited.
class Masker {
 public:
  /// Most bytes of different values that are noted.
  static constexpr std::size_t kMostNoted = std::size_t{512} << 10U;

  /// What is told of a machine or a service of which `exceeded` is true.
  static constexpr const char* kExceeded =
      "it has more serial numbers, names and addresses than can be masked";

  explicit Masker(Random random = systemRandom())
      : replacements_(std::move(random)) {}

  /// A value that identifies a machine or a user: a serial number, an asset
  /// tag, a name of a host or a user. Wherever it stands in a text as a word of
  /// its own it is masked, unless it is too short to be told from other words
  /// (less than four characters, or than six if all are digits).
  void note(std::string_view value);

  /// A word of the data format, or a version number that looks like an
  /// address: it stays where it stands in texts. Words beyond `kMostNoted`
  /// bytes are not kept.
  void keep(std::string_view word);

  /// The replacement of a value that was noted.
  std::string value(std::string_view value);

  /// A text with the replacements of noted values, and of UUIDs, MAC
  /// addresses, world-wide names and IP addresses, in their places.
  std::string text(std::string_view text);

  /// Whether there were more values than fit: not all of them are found in
  /// texts, or have the same replacement everywhere.
  bool exceeded() const { return exceeded_ || replacements_.exceeded(); }

 private:
  void prepare();

  Replacements replacements_;
  std::unordered_set<std::string> noted_;
  std::unordered_set<std::string> kept_;  ///< In small letters.
  std::size_t notedBytes_ = 0;
  std::size_t keptBytes_ = 0;
  bool exceeded_ = false;
  bool prepared_ = false;
  NotedValues values_;
  /// What links write in the place of a value with blanks or the like.
  std::unordered_map<std::string, std::string> encoded_;
};

}  // namespace masking
