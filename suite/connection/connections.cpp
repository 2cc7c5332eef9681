#include "suite/connection/connections.h"

#include <cstddef>
#include <limits>
#include <set>
#include <string>
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
std::uint16_t nodeBehind(std::optional<int> number, std::size_t before) {
  const std::int64_t index = static_cast<std::int64_t>(number.value_or(0)) - 1 -
                             static_cast<std::int64_t>(before);
  return index >= 0 && index <= std::numeric_limits<std::uint16_t>::max()
             ? static_cast<std::uint16_t>(index)
             : std::uint16_t{0};
}

// Whether a failure to read the nodes is one of the whole service, so that no
// other call could do better.
bool endsTheList(FailureKind kind) {
  return kind == FailureKind::kInterrupted ||
         kind == FailureKind::kNoCredentials ||
         kind == FailureKind::kAuthentication ||
         kind == FailureKind::kPasswordChange;
}

// Whether a number stands for one of `count` nodes.
bool isNode(int number, std::size_t count) {
  return number >= 1 && static_cast<std::size_t>(number) <= count;
}

// Why a number stands for no node.
Failure noSuchNode(int number, const std::string& what, std::size_t count) {
  return base::usageFailure("--node " + std::to_string(number) + ": " + what +
                            " has " + std::to_string(count) +
                            (count == 1 ? " node" : " nodes"));
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
  auto reached = services_.reachAny(mode_ == kConnectModeInBand
                                        ? std::uint16_t{0}
                                        : nodeBehind(hints_.node, 0));
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
    reportUnlisted(list.size());
    return 0;
  }
  if (!failure && mode_ == kConnectModeInBand) {
    failure = nodes(list);
  } else if (!failure) {
    failure = chosenNode(list);
  }
  return failure ? fail(*std::move(failure)) : 0;
}

int Connections::listNodes(std::vector<ConnectionInfo>& list) {
  everyNode_ = true;
  const int code = listTargets(list);
  if (code == 0 && hints_.node && !isNode(*hints_.node, list.size())) {
    throw noSuchNode(*hints_.node, "this server", list.size());
  }
  return code;
}

void Connections::expect(std::uint32_t wants) {
  hints_.wants = wants;
  services_.expect(wants);
}

std::string Connections::targetName() const {
  const auto& target = services_.target();
  return target && !target->name.empty() ? target->name : targetAddress();
}

std::string Connections::targetAddress() const {
  const auto& target = services_.target();
  return target ? toString(target->address) : "this server";
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

std::vector<std::string> Connections::notices() const {
  std::vector<std::string> notices = services_.notices();
  if (machine() != nullptr && machine()->lacksPciNames()) {
    notices.emplace_back(
        "PCI devices are shown by their numbers: their names come from the "
        "package pci.ids, or from the file that pci-ids in the settings names");
  }
  return notices;
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
  if (list.empty()) {
    return lost;
  }
  reportUnlisted(list.size());
  return std::nullopt;
}

// Keeps for the run's end why the node that is asked for is none of the
// server's. The application refuses the number itself.
void Connections::reportUnlisted(std::size_t count) {
  if (hints_.node && !isNode(*hints_.node, count)) {
    report(noSuchNode(*hints_.node, "this server", count));
  }
}

// Lists the node of the target's service that is asked for, or its first one.
// A service whose nodes cannot be read has one: the calls that read it tell
// what is wrong, also with a controller that does not speak Redfish. Returns
// the failure if the service cannot be opened.
std::optional<Failure> Connections::chosenNode(
    std::vector<ConnectionInfo>& list) {
  const std::int64_t handle = services_.all().begin()->first;
  redfish::Service& service = *pool().find(handle);
  auto closed = service.open();
  if (closed && closed->kind != FailureKind::kNotRedfish) {
    return closed;
  }
  std::size_t count = 1;
  std::string first;
  if (!closed) {
    const ServiceNodes found =
        readNodes(service, hints_.wants, nodeBehind(hints_.node, 0));
    if (found.failure && endsTheList(found.failure->kind)) {
      return found.failure;
    }
    for (std::size_t i = 0; !found.failure && i < found.nodes.size(); ++i) {
      logNode(i + 1, service.address(), found.nodes[i]);
    }
    count = found.failure ? count : found.nodes.size();
    if (!found.failure && !found.nodes.front().uri.empty()) {
      first = " (" + found.nodes.front().uri + ")";
    }
  }
  if (hints_.node && !isNode(*hints_.node, count)) {
    throw noSuchNode(*hints_.node, "this service", count);
  }
  if (everyNode_) {
    for (std::size_t i = 0; i < count; ++i) {
      list.push_back(record(handle));
      list.back().nodeIndex = static_cast<std::uint16_t>(i);
    }
    return std::nullopt;
  }
  if (count > 1 && !hints_.node) {
    services_.notice("this service has " + std::to_string(count) +
                     " nodes, and this is node 1" + first +
                     "; --node 2 shows the next");
  }
  list = {record(handle)};
  list.front().nodeIndex = nodeBehind(hints_.node, 0);
  return std::nullopt;
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

// Adds what the settings have to do with a name that has no address.
Failure Connections::explained(Failure failure) const {
  const auto& target = services_.target();
  if (failure.kind == FailureKind::kNameNotResolved && target &&
      !target->notNamed.empty()) {
    failure.address.clear();
    failure.uri.clear();
    failure.cause = target->notNamed + ", and no host of that name is found";
    failure.remedy = target->similarName.empty()
                         ? ""
                         : "did you mean '" + target->similarName + "'?";
  }
  return failure;
}

// Keeps the failure for the run's end. Returns its result code.
int Connections::fail(Failure failure) {
  failure = explained(std::move(failure));
  if (failure.kind == FailureKind::kInterrupted) {
    throw failure;
  }
  const int result = resultOf(failure.kind);
  if (result != 0) {
    returned_.insert(result);
    report(std::move(failure));
  }
  return result;
}

}  // namespace connection
