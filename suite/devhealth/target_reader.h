#pragma once

#include <cstdint>

#include "suite/redfish/crawl/selection.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/redfish/service.h"
#include "syshealth/host/connection_info.h"

namespace devhealth {

/// One node of a target, as the run's service reads it. Every failure becomes
/// a status, a line in the log, and the run's last failure, from which the
/// host tells the cause. Lives for the length of one call.
class TargetReader {
 public:
  /// Borrows the service of a connection from the run's pool. Without one,
  /// every reading fails as one without a connection.
  explicit TargetReader(
      const Tarvex::TarvexConnection::ConnectionInfo& connection);

  /// Reads what a selection names, of this reader's node. A status.
  int read(redfish::Selection selection);

  /// Reads what one want names. A status.
  int read(redfish::Want want);

  /// What was read so far; to be asked after a reading that succeeded.
  const redfish::Graph& graph() const { return service_->graph(); }

  /// The node; its system is not null after a reading that succeeded.
  redfish::Node node() const;

  /// Whether the user wants every component to be read for the health.
  bool thorough() const { return service_->thorough(); }

  /// Reports that what was read is not enough. A status.
  int fail(base::Failure failure) const;

 private:
  redfish::Service* service_;
  std::string address_;
  std::uint16_t nodeIndex_;
};

}  // namespace devhealth
