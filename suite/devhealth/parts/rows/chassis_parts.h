#pragma once

#include <string>
#include <vector>

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/part_models.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// A part that makes a row.
struct ChassisPart {
  Part part;           ///< Its object is null when it could not be read.
  std::string name;    ///< What it is called.
  bool entry = false;  ///< It is an entry of the older document.
};

/// The parts of one kind in a list of places, such as `coolingSources` gives:
/// chassis, single parts, places in the older document. A chassis is asked for
/// its subsystem, and for its older document only when the subsystem has no
/// such part; the same part never comes twice. When the places have none, the
/// chassis that hold the node's own are asked, the nearest first. Absent parts
/// are left out.
std::vector<ChassisPart> chassisParts(const redfish::Graph& graph,
                                      const redfish::Node& node,
                                      const std::vector<redfish::Uri>& places,
                                      const redfish::PartSchema& schema,
                                      ReadTally& tally);

/// The failure that keeps the node's chassis from being known: one that the
/// system names cannot be read, or, when no chassis is known at all, the
/// collection of chassis or a member of it.
std::optional<base::Failure> chassisFailure(const redfish::Graph& graph,
                                            const redfish::Node& node);

/// Counts the chassis of the node that nobody knows: links of its systems that
/// are refused; where all chassis of the service are its own, members of the
/// collection that cannot be read.
void countChassis(const redfish::Graph& graph, const redfish::Node& node,
                  ReadTally& tally);

/// Counts the refused links to parts of one kind elsewhere, or to chassis that
/// have them.
void countSources(const redfish::Node& node, const redfish::PartSchema& schema,
                  ReadTally& tally);

}  // namespace devhealth
