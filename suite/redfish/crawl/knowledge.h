#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "suite/redfish/crawl/expand.h"
#include "suite/redfish/crawl/plan.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/reading_budget.h"
#include "suite/redfish/graph/topology.h"

namespace redfish {

/// What is known of a service from one crawl to the next.
struct ServiceKnowledge {
  explicit ServiceKnowledge(std::size_t readingBytes = kMaxReadingBytes)
      : budget(readingBytes) {}

  ServiceKnowledge(const ServiceKnowledge&) = delete;
  ServiceKnowledge& operator=(const ServiceKnowledge&) = delete;

  Graph graph;
  KnownNodes nodes{graph};
  ReadingBudget budget;                  ///< Of all that is kept here.
  std::map<std::string, KindSet> kinds;  ///< By document key.
  /// Resources that came inside others, by document key, until a crawl asks
  /// for them: the graph holds the same whether the service expands or not.
  std::map<std::string, Resource> nested;
  Expand expand;
  std::uint64_t levels = 0;  ///< Longest chain of answers so far.
};

}  // namespace redfish
