#include "suite/connection/connections.h"

#include <cstddef>
#include <limits>
#include <set>
#include <utility>

#include "suite/base/log.h"
#include "suite/connection/failure_result.h"

namespace connection {
namespace {

using base::Failure;
using base::FailureKind;
using Tarvex::TarvexConnection::ConnectionInfo;

// The index in a service of the node that a run asks for by its number among
// all, where `before` nodes belong to other services; 0 for one of those.
std::uint16_t nodeBehind(int number, std::size_t before) {
  const std::int64_t index =
      static_cast<std::int64_t>(number) - 1 - static_cast<std::int64_t>(before);
  return index >= 0 && index <= std::numeric_limits<std::uint16_t>::max()
             ? static_cast<std::uint16_t>(index)
             : std::uint16_t{0};
}

// Whether a run asks a machine only for what its firmware's table tells.
bool needsOnlyTable(std::uint32_t wants) {
  constexpr std::uint32_t kOfTable =
      redfish::kWantProcessors | redfish::kWantDimms | redfish::kWantPowers;
  return wants != 0 && (wants & ~kOfTable) == 0;
}

}  // namespace

Connections::Connections(ConnectMode mode, std::optional<Target> target,
                         std::optional<base::Secret> environmentPassword,
                         RunHints hints, InBandOptions inBand)
    : mode_(mode),
      hints_(hints),
      services_(*this, std::move(target), std::move(environmentPassword),
                hints.wants, std::move(inBand)) {}

Connections::~Connections() { close(); }

Connections* Connections::current() {
  return dynamic_cast<Connections*>(run::Run::current());
}

int Connections::tryTarget(ConnectionInfo& info) {
  if (mode_ == kConnectModeEsxi) {
    info = record(run::kNoService);
    return 0;
  }
  if (auto failure = services_.ensure()) {
    if (services_.noController() && !services_.pathBlocked() &&
        failure->kind == FailureKind::kNoHostInterface) {
      // The firmware is silent; the IPMI device may still show that there is
      // a controller.
      if (machine()->ipmi().version) {
        info = record(run::kThisMachine);
        return 0;
      }
      failure = withIpmi(*std::move(failure), machine()->ipmi());
    }
    info = record(0);
    return fail(*std::move(failure));
  }
  auto reached = services_.reachAny();
  info = record(reached ? *reached : services_.all().rbegin()->first);
  return reached ? 0 : fail(std::move(reached).error());
}

int Connections::listTargets(std::vector<ConnectionInfo>& list) {
  if (mode_ == kConnectModeEsxi) {
    list = {record(run::kNoService)};
    return 0;
  }
  auto failure = services_.ensure();
  if (services_.noController() && machine()->describesItself()) {
    if (failure->kind == FailureKind::kNotPermitted &&
        needsOnlyTable(hints_.wants)) {
      return fail(*std::move(failure));
    }
    list = {record(run::kThisMachine)};
    return 0;
  }
  if (!failure && mode_ == kConnectModeInBand) {
    failure = nodes(list);
  } else if (!failure) {
    list = {record(services_.all().begin()->first)};
  }
  return failure ? fail(*std::move(failure)) : 0;
}

void Connections::close() noexcept { pool().close(); }

std::optional<Failure> Connections::failure() const {
  if (!lastFailure() && mode_ == kConnectModeEsxi) {
    return Failure{FailureKind::kNoSystem, services_.target()->address.host, "",
                   "ESXi hosts are not asked",
                   "name the server's management controller by --bmc"};
  }
  return lastFailure();
}

std::string Connections::cause() const {
  const auto met = failure();
  return met ? describe(*met) : "";
}

std::vector<TargetCost> Connections::costs() const {
  std::vector<TargetCost> costs;
  for (const auto& service : pool().services()) {
    const redfish::ServiceStats stats = service->stats();
    costs.push_back({service->address(), stats.logins, stats.transport.requests,
                     stats.retries, stats.transport.connections,
                     stats.transport.resumed, stats.transport.mostUnderWay,
                     stats.transport.bytes, stats.levels});
  }
  return costs;
}

// Lists one record per node of each service that can be read. Returns the
// failure of the last service if none can.
std::optional<Failure> Connections::nodes(std::vector<ConnectionInfo>& list) {
  std::optional<Failure> lost;
  std::set<std::string> seen;
  for (const auto& [handle, known] : services_.all()) {
    redfish::Service& service = *pool().find(handle);
    ServiceNodes found =
        readNodes(service, hints_.wants, nodeBehind(hints_.node, list.size()));
    if (!found.failure) {
      found.failure = checkServiceUuid(service, known.serviceUuid);
    }
    if (found.failure) {
      lost = std::move(found.failure);
      services_.notice(describe(*lost));
      continue;
    }
    for (std::size_t index = 0; index < found.nodes.size(); ++index) {
      const ServiceNode& node = found.nodes[index];
      // Controllers that stand in for one another serve the same system.
      if (!node.uuid.empty() && !seen.insert(node.uuid).second &&
          services_.all().size() > 1) {
        continue;
      }
      ConnectionInfo info = record(handle);
      info.nodeIndex = static_cast<std::uint16_t>(list.size());
      info.firstNode = static_cast<std::int32_t>(list.size()) -
                       static_cast<std::int32_t>(index);
      list.push_back(std::move(info));
      logNode(list.size(), service.address(), node);
    }
  }
  return list.empty() ? lost : std::nullopt;
}

// Logs which system a number of the option "node" stands for, once per run.
void Connections::logNode(std::size_t number, const std::string& address,
                          const ServiceNode& node) {
  if (number <= nodesLogged_) {
    return;
  }
  nodesLogged_ = number;
  const bool own = machine() != nullptr && !node.uuid.empty() &&
                   node.uuid == machine()->system().uuid;
  BRIVEL_LOG(base::kLogInformation)
      << "node " << number << " is " << (node.uri.empty() ? "?" : node.uri)
      << " of " << address << (own ? ", this server" : "");
}

ConnectionInfo Connections::record(std::int64_t handle) const {
  ConnectionInfo info;
  info.service = handle;
  const auto known = services_.all().find(handle);
  if (known == services_.all().end() && !services_.target()) {
    info.address = "this server";
    return info;
  }
  const Target& target = known == services_.all().end() ? *services_.target()
                                                        : known->second.target;
  info.address = target.address.scheme == Address::Scheme::kDirectory
                     ? toString(target.address)
                     : target.address.host;
  info.port = static_cast<std::int16_t>(target.address.port);
  info.user = target.user;
  info.credential = services_.credentialOrigin();
  return info;
}

// Keeps the failure for the run's end. Returns its result code.
int Connections::fail(Failure failure) {
  const int result = resultOf(failure.kind);
  if (result != 0) {
    returned_.insert(result);
    report(std::move(failure));
  }
  return result;
}

}  // namespace connection
