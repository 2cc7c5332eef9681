#pragma once

#include <string>
#include <unordered_map>

#include "suite/redfish/graph/status.h"
#include "suite/redfish/graph/uri.h"

namespace devhealth {

/// The worst severity that was found at and below each place of a service. It
/// explains the health of the resources above.
class FoundSeverities {
 public:
  void add(const redfish::Uri& origin, redfish::Health severity);

  /// The worst at a place (`Uri::identity`) or below it; unknown when nothing
  /// was found there.
  redfish::Health worstWithin(const std::string& identity) const;

 private:
  void raise(std::string_view place, redfish::Health severity);

  std::unordered_map<std::string, redfish::Health> worst_;
};

}  // namespace devhealth
