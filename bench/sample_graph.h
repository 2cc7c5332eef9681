#pragma once

#include <string>
#include <utility>
#include <vector>

#include "suite/redfish/crawl/selection.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/service.h"

namespace bench {

/// Reads everything that a run may want of the node.
redfish::Selection wholeNode();

/// A service over the recorded server samples/rack-server; nothing is read.
redfish::Service sampleService();

/// The recorded server, read once, whole. Ends the program when that fails.
const redfish::Graph& sampleGraph();

/// The links and texts of its documents.
std::vector<std::pair<redfish::Uri, std::string>> sampleDocuments();

}  // namespace bench
