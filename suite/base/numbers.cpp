#include "suite/base/numbers.h"

#include <algorithm>
#include <charconv>

namespace base {
namespace {

template <typename Number>
std::optional<Number> wholly(std::string_view text, int base = 10) {
  Number value = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value, base);
  if (result.ec != std::errc() || result.ptr != end) {
    return std::nullopt;
  }
  return value;
}

}  // namespace

std::optional<unsigned> numberBehind(std::string_view name,
                                     std::string_view prefix) {
  if (name.substr(0, prefix.size()) != prefix) {
    return std::nullopt;
  }
  return wholly<unsigned>(name.substr(prefix.size()));
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

std::optional<long> decimal(std::string_view text) {
  return wholly<long>(text);
}

std::optional<std::uint32_t> hexadecimal(std::string_view text) {
  if (text.substr(0, 2) == "0x") {
    text.remove_prefix(2);
  }
  return wholly<std::uint32_t>(text, 16);
}

}  // namespace base
