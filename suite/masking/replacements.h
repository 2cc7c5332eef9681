#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace masking {

/// A source of random numbers, all 32 bits of each. Outside of tests it must
/// be one that nobody can predict: see `systemRandom`.
using Random = std::function<std::uint32_t()>;

/// The system's own source of random numbers.
Random systemRandom();

/// The form under which a value is known: small letters; of hexadecimal
/// numbers such as MAC addresses and UUIDs, the digits alone, so that every
/// way of writing one is the same value.
std::string normalForm(std::string_view value);

/// Invented values in the place of real ones: the same value always has the
/// same replacement, and different values have different ones as long as there
/// are enough of the shape. A replacement has the length and the shape of its
/// value: digits for digits, letters for letters of the same case, letters A to
/// F where the value has no others, IPv4 addresses for IPv4 addresses;
/// everything else stays. It is made of random numbers and of the shape, so
/// that the value cannot be computed from it. Takes time in proportion to the
/// values.
class Replacements {
 public:
  explicit Replacements(Random random) : random_(std::move(random)) {}

  /// Keeps a value from becoming a replacement of another one. Has an effect
  /// on the replacements that are made later.
  void reserve(std::string_view value);

  /// The replacement of a value. Texts that stand for no value at all
  /// (`base::isFiller`), and those without any letter or digit, are returned
  /// as they are.
  std::string of(std::string_view value);

  /// Whether there were more values than are remembered: the same one may have
  /// had different replacements.
  bool exceeded() const { return exceeded_; }

 private:
  std::string madeFor(const std::string& normal);
  std::string invent(const std::string& normal);
  std::string draw(std::string_view normal);
  std::uint32_t below(std::uint32_t limit);

  Random random_;
  std::unordered_map<std::string, std::string> made_;  ///< By normal form.
  std::unordered_set<std::string> taken_;
  std::size_t room_ = std::size_t{32} << 20U;  ///< For what is remembered.
  bool exceeded_ = false;
  std::size_t redrawn_ = 0;  ///< Bytes drawn more than once.
};

}  // namespace masking
