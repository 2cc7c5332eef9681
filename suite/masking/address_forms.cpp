#include "suite/masking/address_forms.h"

#include <algorithm>
#include <array>

#include "suite/base/ascii.h"

namespace masking {
namespace {

// Longest IPv6 address with an IPv4 address at its end.
constexpr std::size_t kMostIpv6 = 45;

bool isHex(char c) {
  const char small = base::lower(c);
  return base::isDigit(c) || (small >= 'a' && small <= 'f');
}

std::size_t hexDigitsAt(std::string_view text, std::size_t place) {
  std::size_t end = place;
  while (end < text.size() && isHex(text[end])) {
    ++end;
  }
  return end - place;
}

bool endsWord(std::string_view text, std::size_t place) {
  return place >= text.size() || !base::isAlphanumeric(text[place]);
}

std::size_t uuidAt(std::string_view text, std::size_t place) {
  constexpr std::array<std::size_t, 5> kGroups = {8, 4, 4, 4, 12};
  std::size_t at = place;
  for (const std::size_t length : kGroups) {
    if (at != place && (at >= text.size() || text[at++] != '-')) {
      return 0;
    }
    // No more digits than the group has are looked at.
    if (hexDigitsAt(text.substr(0, std::min(text.size(), at + length + 1)),
                    at) != length) {
      return 0;
    }
    at += length;
  }
  return endsWord(text, at) ? at - place : 0;
}

// MAC addresses and world-wide names: 6, 8, or more pairs of digits.
std::size_t pairsAt(std::string_view text, std::size_t place) {
  constexpr std::size_t kFewestPairs = 6;
  constexpr std::size_t kMostPairs = 20;  // An InfiniBand address.
  if (place + 2 >= text.size()) {
    return 0;
  }
  const char separator = text[place + 2];
  if (separator != ':' && separator != '-') {
    return 0;
  }
  std::size_t pairs = 0;
  std::size_t at = place;
  while (pairs < kMostPairs && at + 1 < text.size() && isHex(text[at]) &&
         isHex(text[at + 1]) && endsWord(text, at + 2)) {
    ++pairs;
    at += 2;
    if (at >= text.size() || text[at] != separator) {
      break;
    }
    ++at;
  }
  const bool behindSeparator = pairs > 0 && text[at - 1] == separator;
  const std::size_t end = behindSeparator ? at - 1 : at;
  return pairs >= kFewestPairs && endsWord(text, end) ? end - place : 0;
}

// The length of an IPv4 address; its four numbers are in `octets`.
std::size_t quadAt(std::string_view text, std::size_t place,
                   std::array<unsigned, 4>& octets) {
  std::size_t at = place;
  for (std::size_t i = 0; i < octets.size(); ++i) {
    if (i > 0 && (at >= text.size() || text[at++] != '.')) {
      return 0;
    }
    const std::size_t begin = at;
    octets[i] = 0;
    while (at < text.size() && at - begin < 4 && base::isDigit(text[at])) {
      octets[i] = octets[i] * 10 + static_cast<unsigned>(text[at++] - '0');
    }
    if (at == begin || octets[i] > 255 ||
        (text[begin] == '0' && at - begin > 1)) {
      return 0;
    }
  }
  const bool goesOn = at + 1 < text.size() && text[at] == '.' &&
                      base::isAlphanumeric(text[at + 1]);
  return endsWord(text, at) && !goesOn ? at - place : 0;
}

std::size_t ipv4At(std::string_view text, std::size_t place) {
  std::array<unsigned, 4> octets = {};
  const std::size_t length = quadAt(text, place, octets);
  const bool everyones = octets[0] == 0 || octets[0] == 127 || octets[0] == 255;
  return everyones ? 0 : length;
}

// Whether a text of hexadecimal digits, colons and dots is an IPv6 address.
bool isIpv6(std::string_view text) {
  std::size_t groups = 0;
  std::size_t digits = 0;
  bool gap = false;
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] == ':') {
      const bool twice = i + 1 < text.size() && text[i + 1] == ':';
      if ((twice && gap) || (!twice && (i == 0 || i + 1 == text.size()))) {
        return false;
      }
      gap = gap || twice;
      i += twice ? 2 : 1;
      if (twice && i < text.size() && text[i] == ':') {
        return false;
      }
      continue;
    }
    std::array<unsigned, 4> octets = {};
    const std::size_t quad = quadAt(text, i, octets);
    if (quad != 0 && i + quad == text.size()) {
      groups += 2;
      digits += quad;
      break;
    }
    const std::size_t length = hexDigitsAt(text, i);
    if (length == 0 || length > 4) {
      return false;
    }
    digits += length;
    ++groups;
    i += length;
  }
  // "::", "::1" and the like are everyone's.
  return digits > 1 && (gap ? groups < 8 : groups == 8);
}

std::size_t ipv6At(std::string_view text, std::size_t place) {
  // Most that an address can have, with what follows it. A hostile text has
  // more of them, and would be looked at many times over.
  constexpr int kMostColons = 9;
  constexpr int kMostDots = 4;
  std::size_t end = place;
  int colons = 0;
  int dots = 0;
  while (end < text.size() && end - place <= kMostIpv6 &&
         colons <= kMostColons && dots <= kMostDots &&
         (isHex(text[end]) || text[end] == ':' || text[end] == '.')) {
    colons += text[end] == ':' ? 1 : 0;
    dots += text[end] == '.' ? 1 : 0;
    ++end;
  }
  if (colons == 0 || !endsWord(text, end)) {
    return 0;
  }
  // The end of a sentence, or what an address is followed by.
  while (end > place &&
         (text[end - 1] == '.' ||
          (text[end - 1] == ':' && end - place > 2 && text[end - 2] != ':'))) {
    --end;
  }
  return isIpv6(text.substr(place, end - place)) ? end - place : 0;
}

}  // namespace

bool isIpv4(std::string_view text) {
  std::array<unsigned, 4> octets = {};
  return !text.empty() && quadAt(text, 0, octets) == text.size();
}

std::size_t addressAt(std::string_view text, std::size_t place) {
  const char first = text[place];
  const char before = place == 0 ? ' ' : text[place - 1];
  if ((!isHex(first) && first != ':') || base::isAlphanumeric(before)) {
    return 0;
  }
  if (const std::size_t length = uuidAt(text, place)) {
    return length;
  }
  if (const std::size_t length = pairsAt(text, place)) {
    return length;
  }
  if (const std::size_t length = ipv6At(text, place)) {
    return length;
  }
  return before == '.' ? 0 : ipv4At(text, place);
}

}  // namespace masking
