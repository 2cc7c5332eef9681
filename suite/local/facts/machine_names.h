#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "suite/local/facts/facts.h"

namespace local {

/// The names that a machine goes by: what its firmware states as product,
/// version, family and SKU of the system and as product and version of the
/// board. They turn up where the name of a part is expected: guests have one
/// as the version of their processors, boards as the name of PCI functions.
class MachineNames {
 public:
  MachineNames() = default;
  MachineNames(const SystemFacts& system, const BoardFacts& board);

  /// Whether a text is a name of the machine, or whole words of one. Letter
  /// case does not count; an empty text is none.
  bool contain(std::string_view text) const;

 private:
  std::vector<std::string> names_;
};

}  // namespace local
