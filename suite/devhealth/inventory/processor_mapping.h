#pragma once

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/report/report.h"

namespace devhealth {

/// The node's processors: CPUs alone, without other kinds of accelerators and
/// without the cores and threads inside them.
Mapped<report::Processor> mapProcessors(const redfish::Graph& graph,
                                        const redfish::Node& node);

}  // namespace devhealth
