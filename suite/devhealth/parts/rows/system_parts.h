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

/// The node's central processors, as a person sorts them. Absent ones are left
/// out, and so are accelerators and the like. What cannot be read is told to
/// the tally.
std::vector<NamedPart> centralProcessors(const redfish::Graph& graph,
                                         const redfish::Node& node,
                                         ReadTally& tally);

/// The node's memory modules, called after their places. Empty slots and
/// caches are left out.
std::vector<NamedPart> memoryModules(const redfish::Graph& graph,
                                     const redfish::Node& node,
                                     ReadTally& tally);

/// How many places for memory modules the node's systems list, caches left
/// out.
std::size_t memoryPlaces(const redfish::Graph& graph,
                         const redfish::Node& node);

}  // namespace devhealth
