#include "suite/base/natural_order.h"

#include <algorithm>

#include "suite/base/ascii.h"

namespace base {
namespace {

// Takes the digits that a text starts with off it, without leading zeros.
std::string_view takeNumber(std::string_view& text) {
  const std::size_t end =
      std::min(text.find_first_not_of("0123456789"), text.size());
  std::string_view digits = text.substr(0, end);
  text.remove_prefix(end);
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  return digits;
}

// Numbers of any length: the one with more digits is the greater.
int compareNumbers(std::string_view left, std::string_view right) {
  if (left.size() != right.size()) {
    return left.size() < right.size() ? -1 : 1;
  }
  return left.compare(right);
}

}  // namespace

int compareNaturally(std::string_view left, std::string_view right) {
  while (!left.empty() && !right.empty()) {
    if (isDigit(left.front()) && isDigit(right.front())) {
      const std::string_view leftNumber = takeNumber(left);
      const std::string_view rightNumber = takeNumber(right);
      if (const int order = compareNumbers(leftNumber, rightNumber)) {
        return order;
      }
      continue;
    }
    const auto leftByte = static_cast<unsigned char>(lower(left.front()));
    const auto rightByte = static_cast<unsigned char>(lower(right.front()));
    if (leftByte != rightByte) {
      return leftByte < rightByte ? -1 : 1;
    }
    left.remove_prefix(1);
    right.remove_prefix(1);
  }
  return static_cast<int>(!left.empty()) - static_cast<int>(!right.empty());
}

}  // namespace base
