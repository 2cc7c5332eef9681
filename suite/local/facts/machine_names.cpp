#include "suite/local/facts/machine_names.h"

#include <algorithm>
#include <cstddef>

#include "suite/base/ascii.h"

namespace local {
namespace {

// Whether whole words of a name are a text.
bool holdsWords(std::string_view name, std::string_view text) {
  for (std::size_t at = 0; at + text.size() <= name.size(); ++at) {
    const std::size_t end = at + text.size();
    if ((at == 0 || !base::isAlphanumeric(name[at - 1])) &&
        (end == name.size() || !base::isAlphanumeric(name[end])) &&
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
  text = base::trimmed(text);
  if (text.empty()) {
    return false;
  }
  return std::any_of(
      names_.begin(), names_.end(),
      [&](const std::string& name) { return holdsWords(name, text); });
}

}  // namespace local
