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

/// The parts of one kind in a list of places (chassis, single parts, places in
/// the older document) such as `coolingSources` gives. Of a chassis the
/// subsystem counts, or the older document if the subsystem has no such part.
/// If the places have none, the chassis around the node's own are used, the
/// nearest first. Each part stands once. Leaves out absent parts.
std::vector<ChassisPart> chassisParts(const redfish::Graph& graph,
                                      const redfish::Node& node,
                                      const std::vector<redfish::Uri>& places,
                                      const redfish::PartSchema& schema,
                                      ReadTally& tally);

/// Why the node's chassis are not known: one that the system names cannot be
/// read, or, if no chassis is known at all, the collection of chassis or a
/// member of it.
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
