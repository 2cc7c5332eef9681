#include "suite/report/reader/reports.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "suite/connection/connections.h"
#include "suite/devhealth/target_inventory.h"
#include "suite/fleet/fleet.h"
#include "suite/redfish/service.h"
#include "suite/report/reader/fleet_reading.h"
#include "suite/report/reader/node_report.h"
#include "suite/run/run.h"

namespace report {
namespace {

using connection::Connections;
using Tarvex::TarvexConnection::ConnectionInfo;

Target targetOf(Connections& run) {
  Target target;
  target.name = run.targetName();
  target.address = run.targetAddress();
  return target;
}

// The target behind a connection, which is one of some nodes.
Target targetOf(Connections& run, const ConnectionInfo& node,
                std::size_t nodes) {
  Target target = targetOf(run);
  if (node.service == run::kThisMachine) {
    target.via = Source::kLocal;
  } else if (const redfish::Service* service = run.pool().find(node.service)) {
    target.address = service->address();
  }
  target.node = node.nodeIndex + 1;
  target.nodes = static_cast<int>(nodes);
  return target;
}

}  // namespace

// The nodes of the run's target, one after another, or its several targets.
class Reports::Reading {
 public:
  explicit Reading(std::uint32_t wants) : wants_(wants) {}

  bool next(ServerReport& report) {
    if (fleet::Fleet* const fleet = fleet::Fleet::current()) {
      if (!many_) {
        many_.emplace(*fleet, wants_);
      }
      return many_->next(report);
    }
    Connections* const run = Connections::current();
    if (run == nullptr) {
      return false;
    }
    const auto begun = base::Clock::now();
    if (!begun_) {
      begun_ = true;
      if (!listNodes(*run)) {
        report = failedReport(
            run->failure().value_or(base::makeFailure(
                base::FailureKind::kNoSystem, "the service has no systems")),
            begun);
        report.target = targetOf(*run);
        return true;
      }
    }
    if (next_ == end_) {
      return false;
    }
    const ConnectionInfo& node = nodes_[next_++];
    report = readNode(*devhealth::inventoryOf(node), wants_, begun);
    report.target = targetOf(*run, node, nodes_.size());
    if (report.read.status == ReadStatus::kFailed) {
      const ReadFailure& first = report.read.failures.front();
      run->report({base::FailureKind::kInternal, report.target.address,
                   first.resource, first.cause, ""});
    }
    return true;
  }

 private:
  // Finds the nodes to be read; false if there is none.
  bool listNodes(Connections& run) {
    run.expect(wants_);
    if (run.mode() == kConnectModeEsxi || run.listNodes(nodes_) != 0 ||
        nodes_.empty()) {
      return false;
    }
    const auto asked = run.askedNode();
    next_ = asked ? static_cast<std::size_t>(*asked) - 1 : 0;
    end_ = asked ? next_ + 1 : nodes_.size();
    return true;
  }

  std::uint32_t wants_;
  bool begun_ = false;
  std::vector<ConnectionInfo> nodes_;
  std::size_t next_ = 0;  ///< Of `nodes_`.
  std::size_t end_ = 0;
  std::optional<FleetReading> many_;  ///< If the run reads several targets.
};

Reports::Reports(std::uint32_t wants)
    : reading_(std::make_unique<Reading>(wants)) {}

Reports::~Reports() = default;

bool Reports::next(ServerReport& report) { return reading_->next(report); }

}  // namespace report
