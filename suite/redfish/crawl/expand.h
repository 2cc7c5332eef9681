#pragma once

#include <cstdint>
#include <string_view>

#include "suite/redfish/crawl/plan.h"
#include "suite/redfish/graph/json.h"

namespace redfish {

/// Whether and how the query $expand can be used with a service (ServiceRoot,
/// ProtocolFeaturesSupported.ExpandQuery).
class Expand {
 public:
  /// Reads from the root what the service offers. Only the form "." is used,
  /// which expands no links: the others follow every link there is.
  void offer(const json::object& root);

  /// The query to read a resource of this kind with; empty for none.
  /// Collections are read with their members. Where two levels are offered, so
  /// are the power subsystem and, if fans are wanted, the thermal subsystem.
  std::string_view queryFor(Kind kind, std::uint32_t planBits) const;

  bool usable() const { return usable_; }

  /// Notes that the service refused the query: it is not used again.
  void giveUp() { usable_ = false; }

 private:
  bool usable_ = false;
  bool twoLevels_ = false;
};

}  // namespace redfish
