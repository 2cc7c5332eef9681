#pragma once

#include <memory>
#include <string>

#include "suite/redfish/service.h"
#include "tests/suite/redfish/script_transport.h"

/// A service on a scripted controller.
struct ScriptedService {
  std::shared_ptr<Script> script = std::make_shared<Script>();
  redfish::ServiceOptions options;
  std::unique_ptr<redfish::Service> service;

  ScriptedService() {
    options.user = "admin";
    options.password = base::Secret("s3cret-word");
  }

  redfish::Service& start() {
    service = std::make_unique<redfish::Service>(options,
                                                 makeScriptTransport(script));
    return *service;
  }
};

/// A selection of what is wanted of a node.
inline redfish::Selection wanting(std::uint32_t wants,
                                  std::uint16_t nodeIndex = 0) {
  redfish::Selection selection;
  selection.wants = wants;
  selection.nodeIndex = nodeIndex;
  return selection;
}

inline const char* const kRootBody = R"({
  "@odata.id": "/redfish/v1/", "@odata.type": "#ServiceRoot.v1_16_0.ServiceRoot",
  "Id": "RootService", "Name": "Root", "RedfishVersion": "1.18.0",
  "Systems": {"@odata.id": "/redfish/v1/Systems"},
  "Chassis": {"@odata.id": "/redfish/v1/Chassis"},
  "Links": {"Sessions": {"@odata.id": "/redfish/v1/SessionService/Sessions"}}
})";
