#pragma once

#include <string_view>

#include "suite/redfish/graph/json.h"

namespace devhealth {

/// The schema and the type that a resource says it is of ("@odata.type",
/// DSP0266): "#Thermal.v1_7_0.Fan" is the type "Fan" of the schema "Thermal".
struct OdataType {
  std::string_view schema;
  std::string_view type;
};

/// Empty texts where the resource does not say. They live as long as the
/// resource.
OdataType odataTypeOf(const redfish::json::object& resource);

}  // namespace devhealth
