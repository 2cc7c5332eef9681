#include "suite/connection/connections.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <set>
#include <utility>

#include "suite/connection/bootstrap.h"
#include "suite/connection/failure_result.h"
#include "suite/connection/open_service.h"
#include "syshealth/host/log.h"

namespace connection {
namespace {

using base::Failure;
using base::FailureKind;
using Tarvex::TarvexConnection::ConnectionInfo;

Connections* living = nullptr;

// Whether a service can be reached, in its own way: an older controller that
// only speaks IPMI is reached, too, and turned away later for its generation.
std::optional<Failure> reach(redfish::Service& service) {
  auto failure = service.open();
  if (failure) {
    const redfish::Probed& probed = service.probe();
    if (!probed.failure && probed.generation != redfish::Generation::kUnknown) {
      failure.reset();
    }
  }
  return failure;
}

// Reads what the run is for, ahead of the calls that show it, so that a
// failure is told as finely as here. A service without systems, and a
// controller without Redfish, are left to those calls.
std::optional<Failure> readAhead(redfish::Service& service,
                                 std::uint32_t wants) {
  if (service.probe().generation != redfish::Generation::kRedfish) {
    return std::nullopt;
  }
  redfish::Selection selection;
  selection.wants = wants == 0 ? redfish::kWantSystem : wants;
  if (auto failure = service.read(selection);
      failure && failure->kind != FailureKind::kNoSystem) {
    return failure;
  }
  return std::nullopt;
}

// The index in a service of the node that a run asks for by its number among
// all, where `before` nodes belong to other services; 0 for one of those.
std::uint16_t nodeBehind(int number, std::size_t before) {
  const std::int64_t index =
      static_cast<std::int64_t>(number) - 1 - static_cast<std::int64_t>(before);
  return index >= 0 && index <= std::numeric_limits<std::uint16_t>::max()
             ? static_cast<std::uint16_t>(index)
             : std::uint16_t{0};
}

// Whether a run asks a machine for nothing but what its firmware's table
// alone tells.
bool restsOnTable(std::uint32_t wants) {
  constexpr std::uint32_t kOfTable =
      redfish::kWantProcessors | redfish::kWantDimms | redfish::kWantPowers;
  return wants != 0 && (wants & ~kOfTable) == 0;
}

}  // namespace

Connections::Connections(ConnectMode mode, std::optional<Target> target,
                         std::optional<base::Secret> environmentPassword,
                         RunHints hints, InBandOptions inBand)
    : mode_(mode),
      target_(std::move(target)),
      environmentPassword_(std::move(environmentPassword)),
      hints_(hints),
      inBand_(std::move(inBand)) {
  living = this;
}

Connections::~Connections() {
  close();
  living = nullptr;
}

Connections* Connections::current() { return living; }

int Connections::tryTarget(ConnectionInfo& info) {
  if (mode_ == kConnectModeEsxi) {
    info = record(redfish::kNoService);
    return 0;
  }
  auto failure = ensureService();
  std::int64_t handle = 0;
  if (!failure) {
    failure = reachAny(handle);
  } else if (alone_ && failure->kind == FailureKind::kNoHostInterface &&
             !barred_) {
    // The firmware is silent; the IPMI device may still show that there is a
    // controller.
    if (machine_->ipmi().version) {
      info = record(local::kThisMachine);
      return 0;
    }
    failure = withIpmi(*std::move(failure), machine_->ipmi());
  }
  info = record(handle);
  return failure ? fail(*std::move(failure)) : 0;
}

int Connections::listTargets(std::vector<ConnectionInfo>& list) {
  if (mode_ == kConnectModeEsxi) {
    list = {record(redfish::kNoService)};
    return 0;
  }
  auto failure = ensureService();
  if (alone_ && machine_->describesItself()) {
    if (failure->kind == FailureKind::kNotPermitted &&
        restsOnTable(hints_.wants)) {
      return fail(*std::move(failure));
    }
    list = {record(local::kThisMachine)};
    return 0;
  }
  if (!failure && mode_ == kConnectModeInBand) {
    failure = nodes(list);
  } else if (!failure) {
    list = {record(known_.begin()->first)};
  }
  return failure ? fail(*std::move(failure)) : 0;
}

void Connections::close() noexcept { pool_.close(); }

std::optional<Failure> Connections::failure() const {
  if (!pool_.lastFailure() && mode_ == kConnectModeEsxi) {
    return Failure{FailureKind::kNoSystem, target_->address.host, "",
                   "ESXi hosts are not asked",
                   "name the server's management controller by --bmc"};
  }
  return pool_.lastFailure();
}

std::string Connections::cause() const {
  const auto met = failure();
  return met ? describe(*met) : "";
}

std::vector<TargetCost> Connections::costs() const {
  std::vector<TargetCost> costs;
  for (const auto& service : pool_.services()) {
    const redfish::ServiceStats stats = service->stats();
    costs.push_back({service->address(), stats.logins, stats.transport.requests,
                     stats.retries, stats.transport.connections,
                     stats.transport.resumed, stats.transport.mostUnderWay,
                     stats.transport.bytes, stats.levels});
  }
  return costs;
}

// Makes the target's services with their credential, once per run.
std::optional<Failure> Connections::ensureService() {
  if (!unusable_ && known_.empty()) {
    unusable_ = target_ ? addService(*target_) : ensureControllers();
  }
  return unusable_;
}

// Makes a service of each controller that this machine leads to.
std::optional<Failure> Connections::ensureControllers() {
  machine_ = std::make_unique<local::Machine>(local::Root(inBand_.root),
                                              inBand_.pciIdsFile);
  machine_->makeCurrent();
  FoundControllers found = findControllers(*machine_, inBand_.controller);
  barred_ = found.barred;
  if (found.failure &&
      (barred_ || machine_->table() == local::Access::kDenied)) {
    notice(describe(*found.failure));
  }
  alone_ = found.controllers.empty();
  if (alone_ && barred_) {
    notice("this is what the server says of itself, without its controller");
  }
  if (alone_) {
    return found.failure;
  }
  for (FoundController& controller : found.controllers) {
    if (controller.bootstrapsCredentials && inBand_.bootstrapCredentials) {
      trustOverIpmi(controller.target);
    }
    if (controller.target.user.empty() && inBand_.bootstrapCredentials) {
      if (auto failure = makeAccount(controller)) {
        return failure;
      }
    }
    if (auto failure =
            addService(std::move(controller.target), controller.serviceUuid)) {
      return failure;
    }
  }
  return std::nullopt;
}

// Takes the password of a target's user, once per run: the controllers of a
// machine have one between them.
std::optional<Failure> Connections::takeCredential(const Target& target) {
  if (credential_ || !needsPassword(target)) {
    return std::nullopt;
  }
  Failure failure;
  credential_ =
      findCredential(target, std::move(environmentPassword_), failure);
  environmentPassword_.reset();
  if (!credential_) {
    failure.address = inWords(target.address);
    return failure;
  }
  Tarvex::Log(3, __FILE__, __LINE__).Stream()
      << inWords(target.address) << ": password of user " << target.user
      << " from " << credential_->origin;
  return std::nullopt;
}

// Trusts the certificate that the controller names over the IPMI device,
// unless something else is to be trusted.
void Connections::trustOverIpmi(Target& target) {
  if (target.insecure || !target.pin.empty() || !target.caFile.empty()) {
    return;
  }
  target.certificate = namedCertificate(*machine_);
  Tarvex::Log(3, __FILE__, __LINE__).Stream()
      << inWords(target.address)
      << (target.certificate.empty()
              ? ": the controller names no certificate over IPMI"
              : ": trusting the certificate that the controller names over "
                "IPMI");
}

// Has the controller make an account for us.
std::optional<Failure> Connections::makeAccount(FoundController& controller) {
  Failure failure;
  auto account = bootstrapAccount(*machine_, controller, failure);
  if (!account) {
    return failure;
  }
  Target& target = controller.target;
  target.user = std::move(account->user);
  credential_ = std::move(account->credential);
  Tarvex::Log(3, __FILE__, __LINE__).Stream()
      << inWords(target.address) << ": account " << target.user << " made by "
      << credential_->origin;
  return std::nullopt;
}

std::optional<Failure> Connections::addService(Target target,
                                               const std::string& serviceUuid) {
  if (auto failure = takeCredential(target)) {
    return failure;
  }
  environmentPassword_.reset();
  const base::Secret* const password =
      needsPassword(target) ? &credential_->password : nullptr;
  const std::int64_t handle =
      pool_.add(openService(target, password, hints_.wants));
  known_[handle] = {std::move(target), serviceUuid};
  return std::nullopt;
}

// Reaches the first service that can be; its handle. The failure of the last
// one when none can.
std::optional<Failure> Connections::reachAny(std::int64_t& handle) {
  std::optional<Failure> failure;
  for (const auto& [candidate, known] : known_) {
    redfish::Service& service = *pool_.find(candidate);
    handle = candidate;
    failure = reach(service);
    if (!failure) {
      failure = foreign(service, known.serviceUuid);
    }
    if (!failure) {
      failure = readAhead(service, hints_.wants);
    }
    if (!failure) {
      break;
    }
  }
  return failure;
}

// One record per node of each service that can be read. The failure of the
// last one when none can.
std::optional<Failure> Connections::nodes(std::vector<ConnectionInfo>& list) {
  std::optional<Failure> lost;
  std::set<std::string> seen;
  for (const auto& [handle, known] : known_) {
    redfish::Service& service = *pool_.find(handle);
    ServiceNodes found =
        readNodes(service, hints_.wants, nodeBehind(hints_.node, list.size()));
    if (!found.failure) {
      found.failure = foreign(service, known.serviceUuid);
    }
    if (found.failure) {
      lost = std::move(found.failure);
      notice(describe(*lost));
      continue;
    }
    for (std::size_t index = 0; index < found.nodes.size(); ++index) {
      const ServiceNode& node = found.nodes[index];
      // Controllers that stand in for one another serve the same system.
      if (!node.uuid.empty() && !seen.insert(node.uuid).second &&
          known_.size() > 1) {
        continue;
      }
      ConnectionInfo info = record(handle);
      info.nodeIndex = static_cast<std::uint16_t>(list.size());
      info.options = static_cast<std::int32_t>(list.size()) -
                     static_cast<std::int32_t>(index);
      list.push_back(std::move(info));
      logNode(list.size(), service.address(), node);
    }
  }
  return list.empty() ? lost : std::nullopt;
}

// Tells which system a number of the option "node" stands for, once per run.
void Connections::logNode(std::size_t number, const std::string& address,
                          const ServiceNode& node) {
  if (number <= nodesLogged_) {
    return;
  }
  nodesLogged_ = number;
  const bool own = machine_ != nullptr && !node.uuid.empty() &&
                   node.uuid == machine_->system().uuid;
  Tarvex::Log(3, __FILE__, __LINE__).Stream()
      << "node " << number << " is " << (node.uri.empty() ? "?" : node.uri)
      << " of " << address << (own ? ", this server" : "");
}

void Connections::notice(const std::string& text) {
  if (std::find(notices_.begin(), notices_.end(), text) == notices_.end()) {
    notices_.push_back(text);
  }
}

ConnectionInfo Connections::record(std::int64_t handle) const {
  ConnectionInfo info;
  info.service = handle;
  const auto known = known_.find(handle);
  if (known == known_.end() && !target_) {
    info.address = "this server";
    return info;
  }
  const Target& target =
      known == known_.end() ? *target_ : known->second.target;
  info.address = target.address.scheme == Address::Scheme::kDirectory
                     ? inWords(target.address)
                     : target.address.host;
  info.port = static_cast<std::int16_t>(target.address.port);
  info.user = target.user;
  info.credential = credential_ ? credential_->origin : "";
  return info;
}

// Keeps the failure for the run's end; its result code.
int Connections::fail(Failure failure) {
  const int result = resultOf(failure.kind);
  if (result != 0) {
    returned_.insert(result);
    pool_.report(std::move(failure));
  }
  return result;
}

}  // namespace connection
