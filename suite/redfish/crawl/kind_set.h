#pragma once

#include <bitset>
#include <cstddef>

#include "suite/redfish/crawl/plan.h"

namespace redfish {

/// The parts that one resource plays.
using KindSet = std::bitset<kKindCount>;

/// The place of a kind in a set, or in a table of all kinds.
constexpr std::size_t index(Kind kind) {
  return static_cast<std::size_t>(kind);
}

/// Calls `use` with each kind in a set.
template <typename Use>
void forEachKind(const KindSet& kinds, Use use) {
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    if (kinds.test(i)) {
      use(static_cast<Kind>(i));
    }
  }
}

}  // namespace redfish
