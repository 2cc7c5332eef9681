#include "suite/local/facts/machine_names.h"

#include <algorithm>
#include <cstddef>

#include "suite/base/ascii.h"

namespace local {
namespace {

bool isAlphanumeric(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
         (c >= 'a' && c <= 'z');
}

// Whether whole words of a name are a text.
bool holdsWords(std::string_view name, std::string_view text) {
  for (std::size_t at = 0; at + text.size() <= name.size(); ++at) {
    const std::size_t end = at + text.size();
    if ((at == 0 || !isAlphanumeric(name[at - 1])) &&
        (end == name.size() || !isAlphanumeric(name[end])) &&
        base::startsIgnoringCase(name.substr(at), text)) {
      return true;
    }
  }
  return false;
}

}  // namespace

MachineNames::MachineNames(const SystemFacts& system, const BoardFacts& board)
    : names_({system.product, system.version, system.family, system.sku,
              board.product, board.version}) {}

bool MachineNames::contain(std::string_view text) const {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return false;
  }
  text = text.substr(first, text.find_last_not_of(' ') - first + 1);
  return std::any_of(
      names_.begin(), names_.end(),
      [&](const std::string& name) { return holdsWords(name, text); });
}

}  // namespace local
