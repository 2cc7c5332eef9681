#include "suite/masking/replacements.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "suite/base/ascii.h"
#include "suite/base/filler.h"
#include "suite/base/time_limit.h"
#include "suite/masking/address_forms.h"
#include "suite/platform/random.h"

namespace masking {
namespace {

// Draws before a value shares its replacement with another one. Only values
// of one or two characters get there.
constexpr int kMostDraws = 200;

// Bytes that all values together may draw again. Only a service that makes up
// thousands of values of the same few shapes gets there.
constexpr std::size_t kMostRedrawn = std::size_t{4} << 20U;

bool isHexLetter(char c) { return c >= 'a' && c <= 'f'; }

bool isHexNumber(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return base::isDigit(c) || isHexLetter(c); });
}

// The lengths of MAC addresses, world-wide names and UUIDs in digits.
bool isIdentifierLength(std::size_t digits) {
  return digits == 12 || digits == 16 || digits == 32;
}

bool isPlain(char c) {
  return base::isAlphanumeric(c) || static_cast<unsigned char>(c) >= 0x80;
}

// Whether the digit at a place is one of three or more in a row.
bool isLargeNumber(std::string_view text, std::size_t place) {
  std::size_t begin = place;
  while (begin > 0 && base::isDigit(text[begin - 1])) {
    --begin;
  }
  std::size_t end = place;
  while (end < text.size() && base::isDigit(text[end])) {
    ++end;
  }
  return end - begin >= 3;
}

// A letter or digit of the replacement with the case of the original's.
char withCaseOf(char original, char made) {
  return original >= 'A' && original <= 'Z' && base::isLetter(made)
             ? static_cast<char>(made - 'a' + 'A')
             : made;
}

}  // namespace

Random systemRandom() {
  constexpr std::size_t kAtATime = 64;
  auto numbers = std::make_shared<std::vector<std::uint32_t>>();
  return [numbers] {
    if (numbers->empty()) {
      numbers->resize(kAtATime);
      platform::fillRandom(numbers->data(),
                           numbers->size() * sizeof(numbers->front()));
    }
    const std::uint32_t number = numbers->back();
    numbers->pop_back();
    return number;
  };
}

std::string normalForm(std::string_view value) {
  std::string lower = base::lowerCase(value);
  std::string digits;
  std::copy_if(lower.begin(), lower.end(), std::back_inserter(digits),
               [](char c) { return c != ':' && c != '-'; });
  return isIdentifierLength(digits.size()) && isHexNumber(digits) ? digits
                                                                  : lower;
}

void Replacements::reserve(std::string_view value) {
  taken_.insert(normalForm(value));
}

std::string Replacements::of(std::string_view value) {
  const std::string normal = normalForm(value);
  if (base::isFiller(value) || base::isFiller(normal) ||
      std::none_of(normal.begin(), normal.end(), isPlain)) {
    return std::string(value);
  }
  const std::string made = madeFor(normal);
  // Of a hexadecimal number the normal form lacks what stands between digits.
  std::string replacement(value);
  const bool shortened = normal.size() != value.size();
  std::size_t next = 0;
  for (char& c : replacement) {
    if (!shortened || base::isAlphanumeric(c)) {
      c = withCaseOf(c, made[next++]);
    }
  }
  return replacement;
}

std::string Replacements::madeFor(const std::string& normal) {
  // What two entries take beside their texts, about.
  constexpr std::size_t kOverhead = 200;
  const auto known = made_.find(normal);
  if (known != made_.end()) {
    return known->second;
  }
  const std::size_t room = kOverhead + 3 * normal.size();
  if (room > room_) {
    exceeded_ = true;
    return draw(normal);
  }
  room_ -= room;
  return made_.emplace(normal, invent(normal)).first->second;
}

std::string Replacements::invent(const std::string& normal) {
  // Where a few draws find none but the value itself, it has nothing to draw.
  constexpr int kFewDraws = 20;
  std::string shared = normal;
  for (int draws = 0; draws < kMostDraws; ++draws) {
    std::string drawn = draw(normal);
    base::heedTime();
    if (drawn != normal && !base::isFiller(drawn)) {
      if (taken_.insert(drawn).second) {
        return drawn;
      }
      shared = std::move(drawn);
    }
    redrawn_ += normal.size();
    if (redrawn_ > kMostRedrawn && (shared != normal || draws >= kFewDraws)) {
      break;
    }
  }
  return shared;
}

std::string Replacements::draw(std::string_view normal) {
  const bool address = isIpv4(normal);
  const bool hexOnly = std::all_of(normal.begin(), normal.end(), [](char c) {
    return !base::isLetter(c) || isHexLetter(c);
  });
  std::string drawn(normal);
  bool first = true;  // Of a row of digits.
  std::size_t following = 0;
  for (std::size_t i = 0; i < drawn.size(); ++i) {
    const char c = normal[i];
    const auto byte = static_cast<unsigned char>(c);
    const bool digit = base::isDigit(c);
    if (digit) {
      // Numbers keep their digits, and those of addresses stay below 256.
      const bool large = address && isLargeNumber(normal, i);
      const std::uint32_t least = first && c != '0' ? 1 : 0;
      const std::uint32_t most = !large ? 9 : first ? 2 : 5;
      drawn[i] = static_cast<char>('0' + least + below(most - least + 1));
    } else if (base::isLetter(c)) {
      drawn[i] = static_cast<char>('a' + below(hexOnly ? 6 : 26));
    } else if (byte >= 0xF0) {
      following = 3;  // A character beyond ASCII becomes another one.
    } else if (byte >= 0xE0) {
      following = 2;
    } else if (byte >= 0xC0) {
      following = 1;
    } else if (byte >= 0x80 && following > 0 && --following == 0) {
      drawn[i] = static_cast<char>(0x80U + below(0x40));
    }
    first = !digit;
  }
  return drawn;
}

std::uint32_t Replacements::below(std::uint32_t limit) {
  return static_cast<std::uint32_t>(std::uint64_t{random_()} * limit >> 32U);
}

}  // namespace masking
