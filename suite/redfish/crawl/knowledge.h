#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "suite/redfish/crawl/expand.h"
#include "suite/redfish/crawl/kind_set.h"
#include "suite/redfish/graph/graph.h"

namespace redfish {

/// What is known of a service from one crawl to the next.
struct Knowledge {
  Graph graph;
  std::map<std::string, KindSet> kinds;  ///< Parts played, by document key.
  Expand expand;
  std::uint64_t levels = 0;  ///< Longest chain of answers so far.
};

}  // namespace redfish
