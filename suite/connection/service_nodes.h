#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "suite/base/failure.h"
#include "suite/redfish/service.h"

namespace connection {

/// One node of a service, as far as it was read.
struct ServiceNode {
  std::string uri;   ///< Of its system; empty: not read.
  std::string uuid;  ///< Of its system, in lower case; empty: not stated.
};

/// The nodes of a service by their index in it, or why they are not known.
struct ServiceNodes {
  std::vector<ServiceNode> nodes;
  std::optional<base::Failure> failure;
};

/// Reads the nodes of a service, and with them `wants`, what the run needs of
/// the node `index`. A service without nodes is listed with one: the calls that
/// read it report what is wrong.
ServiceNodes readNodes(redfish::Service& service, std::uint32_t wants,
                       std::uint16_t index);

/// Checks that a service which was read is the one that the firmware names:
/// if both state a UUID, it must be the same. `expectedUuid` in lower case;
/// empty: any service.
std::optional<base::Failure> checkServiceUuid(const redfish::Service& service,
                                              const std::string& expectedUuid);

}  // namespace connection
