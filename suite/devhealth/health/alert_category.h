#pragma once

#include <string_view>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/uri.h"
#include "suite/report/report.h"

namespace devhealth {

/// The hardware areas that alerts are sorted into.
using AlertCategory = report::Category;

/// The name of a category, byte for byte as the report knows it: an alert
/// under any other name would not be shown.
std::string_view categoryName(AlertCategory category);

/// The area of what an alert comes from: told by the type of the resource
/// where it was read, else by the first segment of its path that belongs to an
/// area. A sensor is of the area of what it measures; one that was not read
/// counts to the system.
AlertCategory categoryOf(const redfish::Graph& graph,
                         const redfish::Uri& origin);

/// Whether reading the origin would tell its area better: it is a sensor that
/// was never asked for.
bool isUnreadSensor(const redfish::Graph& graph, const redfish::Uri& origin);

}  // namespace devhealth
