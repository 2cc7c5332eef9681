#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "suite/devhealth/inventory.h"
#include "suite/redfish/crawl/selection.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/redfish/service.h"

namespace devhealth {

/// Reads one node of a service. Gives every failure its status, and logs it.
class TargetReader {
 public:
  /// Borrows a service. If it is null, every reading fails as one without a
  /// connection to `address`. `nodeIndex` counts from 0 within the service.
  TargetReader(redfish::Service* service, std::string address,
               std::uint16_t nodeIndex);

  /// Reads what a selection names, of this reader's node. Throws a
  /// `base::Failure` if the user has interrupted the run.
  std::optional<Unread> read(redfish::Selection selection);

  /// Reads what one want names.
  std::optional<Unread> read(redfish::Want want);

  /// What was read so far. Call it only after a reading that succeeded.
  const redfish::Graph& graph() const { return service_->graph(); }

  /// The node; its system is not null after a reading that succeeded.
  const redfish::Node& node() const;

  /// All nodes of the service.
  const redfish::Topology& topology() const { return service_->topology(); }

  /// Whether the user wants every component to be read for the health.
  bool thorough() const { return service_->thorough(); }

  /// Runs a task on what was read, such as mapping it, and returns what the
  /// task returns; a failure if it outlasts the run's deadline. Throws a
  /// `base::Failure` if the user has interrupted the run.
  std::optional<Unread> work(
      const std::function<std::optional<Unread>()>& task) const;

  /// What to return for a failure in what was read, which keeps this much from
  /// being known.
  Unread fail(base::Failure failure, Extent extent) const;

 private:
  redfish::Service* service_;
  std::string address_;
  std::uint16_t nodeIndex_;
};

}  // namespace devhealth
