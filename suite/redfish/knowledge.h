#pragma once

#include <bitset>
#include <cstdint>
#include <map>
#include <string>

#include "suite/redfish/expand.h"
#include "suite/redfish/graph.h"
#include "suite/redfish/plan.h"

namespace redfish {

/// What is known of a service from one crawl to the next.
struct Knowledge {
  using Kinds = std::bitset<kKindCount>;

  Graph graph;
  std::map<std::string, Kinds> kinds;  ///< Parts played, by document key.
  Expand expand;
  std::uint64_t levels = 0;  ///< Longest chain of answers so far.
};

}  // namespace redfish
