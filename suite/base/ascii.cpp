#include "suite/base/ascii.h"

#include <algorithm>

namespace base {

std::string lowerCase(std::string_view text) {
  std::string small(text);
  std::transform(small.begin(), small.end(), small.begin(), lower);
  return small;
}

bool equalIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return lower(a) == lower(b); });
}

bool startsIgnoringCase(std::string_view text, std::string_view start) {
  return equalIgnoringCase(text.substr(0, start.size()), start);
}

}  // namespace base
