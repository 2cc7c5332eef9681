#include "suite/base/numbers.h"

#include <algorithm>

#include "suite/base/ascii.h"

namespace base {

std::optional<unsigned> numberBehind(std::string_view name,
                                     std::string_view prefix) {
  if (!startsWith(name, prefix)) {
    return std::nullopt;
  }
  return parseNumber<unsigned>(name.substr(prefix.size()));
}

std::vector<std::pair<unsigned, std::string>> numbered(
    const std::vector<std::string>& names, std::string_view prefix) {
  std::vector<std::pair<unsigned, std::string>> found;
  for (const std::string& name : names) {
    if (const auto number = numberBehind(name, prefix)) {
      found.emplace_back(*number, name);
    }
  }
  std::sort(found.begin(), found.end());
  return found;
}

std::optional<std::uint32_t> hexadecimal(std::string_view text) {
  if (startsWith(text, "0x")) {
    text.remove_prefix(2);
  }
  return parseNumber<std::uint32_t>(text, 16);
}

}  // namespace base
