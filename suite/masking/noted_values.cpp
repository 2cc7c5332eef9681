#include "suite/masking/noted_values.h"

#include "suite/base/ascii.h"

namespace masking {
namespace {

std::uint64_t stepOf(std::uint32_t node, char c) {
  return std::uint64_t{node} << 8U | static_cast<unsigned char>(base::lower(c));
}

}  // namespace

bool NotedValues::add(std::string_view value, bool anywhere) {
  if (value.empty() || value.size() > kLongest) {
    return false;
  }
  std::uint32_t node = 0;
  for (const char c : value) {
    const auto [step, made] = next_.try_emplace(
        stepOf(node, c), static_cast<std::uint32_t>(nodes_.size()));
    if (made) {
      nodes_.emplace_back();
    }
    node = step->second;
  }
  nodes_[node].word = true;
  nodes_[node].anywhere = nodes_[node].anywhere || anywhere;
  return true;
}

std::size_t NotedValues::at(std::string_view text, std::size_t place) const {
  const bool beginsWord = place == 0 ||
                          !base::isAlphanumeric(text[place - 1]) ||
                          !base::isAlphanumeric(text[place]);
  std::size_t longest = 0;
  std::uint32_t node = 0;
  for (std::size_t i = place; i < text.size(); ++i) {
    const auto step = next_.find(stepOf(node, text[i]));
    if (step == next_.end()) {
      break;
    }
    node = step->second;
    const bool endsWord = i + 1 == text.size() ||
                          !base::isAlphanumeric(text[i]) ||
                          !base::isAlphanumeric(text[i + 1]);
    if (nodes_[node].word &&
        (nodes_[node].anywhere || (beginsWord && endsWord))) {
      longest = i + 1 - place;
    }
  }
  return longest;
}

}  // namespace masking
