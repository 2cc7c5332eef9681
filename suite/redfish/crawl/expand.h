#pragma once

#include <cstdint>
#include <string_view>

#include "suite/redfish/crawl/plan.h"
#include "suite/redfish/graph/json.h"

namespace redfish {

/// What the service says of $expand (ServiceRoot,
/// ProtocolFeaturesSupported.ExpandQuery), and what became of it.
class Expand {
 public:
  /// Reads what the root offers. Only the form without links is used ("."):
  /// the others follow every link there is.
  void offer(const json::object& root);

  /// The query to read a resource of this kind with, or nothing. Collections
  /// bring their members along; the thermal subsystem, where fans are wanted,
  /// and the power subsystem bring theirs where two levels are offered.
  std::string_view queryFor(Kind kind, std::uint32_t planBits) const;

  bool usable() const { return usable_; }

  /// A refusal: it is not asked for again in this run.
  void giveUp() { usable_ = false; }

 private:
  bool usable_ = false;
  bool twoLevels_ = false;
};

}  // namespace redfish
