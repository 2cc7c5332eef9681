#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// A part that makes a row of its table.
struct NamedPart {
  Part part;         ///< Its object is null when it could not be read.
  std::string name;  ///< What the first column of its table shows.
};

/// The node's central processors, in the natural order of their names. Leaves
/// out absent ones, accelerators and the like. Tells the tally what cannot be
/// read.
std::vector<NamedPart> centralProcessors(const redfish::Graph& graph,
                                         const redfish::Node& node,
                                         ReadTally& tally);

/// The node's memory modules, called by their places. Leaves out empty slots
/// and caches. Tells the tally what cannot be read.
std::vector<NamedPart> memoryModules(const redfish::Graph& graph,
                                     const redfish::Node& node,
                                     ReadTally& tally);

/// How many places for memory modules the node's systems list, without caches.
std::size_t memoryPlaces(const redfish::Graph& graph,
                         const redfish::Node& node);

}  // namespace devhealth
