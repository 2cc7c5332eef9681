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

/// The area of the origin of an alert: by the type of the resource if it was
/// read, else by the first segment of its path that belongs to an area. A
/// sensor belongs to the area of what it measures; one that was not read, to
/// the system.
AlertCategory categoryOf(const redfish::Graph& graph,
                         const redfish::Uri& origin);

/// Whether the origin is a sensor that was never asked for: reading it would
/// tell its area.
bool isUnreadSensor(const redfish::Graph& graph, const redfish::Uri& origin);

}  // namespace devhealth
