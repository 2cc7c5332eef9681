#include "suite/connection/connections.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "suite/connection/credential.h"
#include "suite/connection/failure_result.h"
#include "suite/connection/open_service.h"
#include "suite/redfish/topology.h"
#include "syshealth/host/log.h"

namespace connection {
namespace {

using redfish::Failure;
using redfish::FailureKind;
using Tarvex::TarvexConnection::ConnectionInfo;

Connections* living = nullptr;

Failure noController() {
  Failure failure;
  failure.kind = FailureKind::kNoHostInterface;
  failure.address = "this server";
  failure.cause = "nothing is known about its management controller";
  failure.remedy =
      "name a controller by --bmc, or in the settings "
      "(~/.config/brivel/brivel.toml) by source in [inband]";
  return failure;
}

/// Whether a service can be reached, in its own way: an older controller that
/// only speaks IPMI is reached, too, and turned away later for its generation.
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

/// Reads what the run is for, ahead of the calls that show it, so that a
/// failure is told as finely as here. A service without systems, and a
/// controller without Redfish, are left to those calls.
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

/// The node whose parts are read along with the list of nodes.
std::uint16_t nodeIndexOf(int node) {
  return node >= 1 && node <= std::numeric_limits<std::uint16_t>::max()
             ? static_cast<std::uint16_t>(node - 1)
             : std::uint16_t{0};
}

}  // namespace

Connections::Connections(ConnectMode mode, std::optional<Target> target,
                         std::optional<Secret> environmentPassword,
                         RunHints hints)
    : mode_(mode),
      target_(std::move(target)),
      environmentPassword_(std::move(environmentPassword)),
      hints_(hints) {
  living = this;
}

Connections::~Connections() {
  close();
  living = nullptr;
}

Connections* Connections::current() { return living; }

int Connections::tryTarget(ConnectionInfo& info) {
  if (mode_ == kConnectModeEsxi) {
    info = record();
    return 0;
  }
  auto failure = ensureService();
  if (!failure) {
    failure = reach(*pool_.find(0));
  }
  if (!failure) {
    failure = readAhead(*pool_.find(0), hints_.wants);
  }
  info = record();
  return failure ? fail(*std::move(failure)) : 0;
}

int Connections::listTargets(std::vector<ConnectionInfo>& list) {
  if (mode_ == kConnectModeEsxi) {
    list = {record()};
    return 0;
  }
  auto failure = ensureService();
  if (!failure && mode_ == kConnectModeInBand) {
    failure = nodes(list);
  } else if (!failure) {
    list = {record()};
  }
  return failure ? fail(*std::move(failure)) : 0;
}

void Connections::close() noexcept { pool_.close(); }

std::string Connections::cause() const {
  const auto& failure = pool_.lastFailure();
  if (!failure && mode_ == kConnectModeEsxi) {
    return target_->address.host +
           ": ESXi hosts are not asked; name the server's management "
           "controller by --bmc";
  }
  return failure ? describe(*failure) : "";
}

std::vector<TargetCost> Connections::costs() const {
  std::vector<TargetCost> costs;
  for (const auto& service : pool_.services()) {
    const redfish::ServiceStats stats = service->stats();
    costs.push_back({service->address(), stats.logins, stats.transport.requests,
                     stats.retries, stats.transport.connections,
                     stats.transport.bytes, stats.levels});
  }
  return costs;
}

/// Makes the target's service with its credential, once per run.
std::optional<Failure> Connections::ensureService() {
  if (unusable_ || !pool_.services().empty()) {
    return unusable_;
  }
  if (!target_) {
    return unusable_ = noController();
  }
  std::optional<Credential> credential;
  if (needsPassword(*target_)) {
    Failure failure;
    credential =
        findCredential(*target_, std::move(environmentPassword_), failure);
    if (!credential) {
      failure.address = inWords(target_->address);
      return unusable_ = std::move(failure);
    }
    credentialOrigin_ = credential->origin;
    Tarvex::Log(3, __FILE__, __LINE__).Stream()
        << inWords(target_->address) << ": password of user " << target_->user
        << " from " << credential->origin;
  }
  environmentPassword_.reset();
  pool_.add(openService(*target_, credential ? &credential->password : nullptr,
                        hints_.wants));
  return std::nullopt;
}

/// One record per node of the service.
std::optional<Failure> Connections::nodes(std::vector<ConnectionInfo>& list) {
  redfish::Service& service = *pool_.find(0);
  redfish::Selection selection;
  selection.nodeIndex = nodeIndexOf(hints_.node);
  selection.wants = hints_.wants == 0 ? redfish::kWantSystem : hints_.wants;
  const auto failure = service.read(selection);
  const std::vector<const redfish::Resource*> systems =
      redfish::eligibleSystems(service.graph());
  const bool allKnown =
      !systems.empty() &&
      std::find(systems.begin(), systems.end(), nullptr) == systems.end();
  // A node that cannot be read is a node still, and a service without any was
  // reached all the same: the calls that read them tell what is wrong.
  if (failure && !allKnown && failure->kind != FailureKind::kNoSystem) {
    return failure;
  }
  const std::size_t count =
      std::min<std::size_t>(std::max<std::size_t>(systems.size(), 1),
                            std::numeric_limits<std::uint16_t>::max());
  for (std::size_t index = 0; index < count; ++index) {
    list.push_back(record());
    list.back().nodeIndex = static_cast<std::uint16_t>(index);
  }
  return std::nullopt;
}

ConnectionInfo Connections::record() const {
  ConnectionInfo info;
  if (target_) {
    const Address& address = target_->address;
    info.address = address.scheme == Address::Scheme::kDirectory
                       ? inWords(address)
                       : address.host;
    info.port = static_cast<std::int16_t>(address.port);
    info.user = target_->user;
    info.credential = credentialOrigin_;
  }
  if (mode_ == kConnectModeEsxi) {
    info.service = redfish::kNoService;
  }
  return info;
}

/// Keeps the failure for the run's end; its result code.
int Connections::fail(Failure failure) {
  const int result = resultOf(failure.kind);
  if (result != 0) {
    pool_.report(std::move(failure));
  }
  return result;
}

}  // namespace connection
