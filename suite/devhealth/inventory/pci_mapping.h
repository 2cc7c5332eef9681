#pragma once

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/report/report.h"

namespace devhealth {

/// The node's PCI adapters: its PCIe devices in the order of their slots, then
/// those without a slot, then the network adapters that are none of them. A
/// network adapter that is one of the devices fills the gaps in its row.
Mapped<report::PciAdapter> mapPciAdapters(const redfish::Graph& graph,
                                          const redfish::Node& node);

}  // namespace devhealth
