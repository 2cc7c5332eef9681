#include "suite/connection/run_services.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "suite/base/log.h"
#include "suite/connection/bootstrap.h"
#include "suite/connection/open_service.h"
#include "suite/connection/service_nodes.h"

namespace connection {
namespace {

using base::Failure;
using base::FailureKind;

// Opens a service. An older controller that only speaks IPMI counts as
// reached, too; it is turned away later for its generation.
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
// failure is known as finely as here. A service without systems, and a
// controller without Redfish, are left to those calls.
std::optional<Failure> readAhead(redfish::Service& service, std::uint32_t wants,
                                 std::uint16_t nodeIndex) {
  if (service.probe().generation != redfish::Generation::kRedfish) {
    return std::nullopt;
  }
  redfish::Selection selection;
  selection.nodeIndex = nodeIndex;
  selection.wants = wants == 0 ? redfish::kWantSystem : wants;
  if (auto failure = service.read(selection);
      failure && failure->kind != FailureKind::kNoSystem) {
    return failure;
  }
  return std::nullopt;
}

// Whether a failure is one of reaching and trusting a target, whoever asks.
bool isOfConnection(FailureKind kind) {
  switch (kind) {
    case FailureKind::kNameNotResolved:
    case FailureKind::kUnreachable:
    case FailureKind::kConnectTimeout:
    case FailureKind::kReadTimeout:
    case FailureKind::kDeadline:
    case FailureKind::kCertificate:
    case FailureKind::kTls:
    case FailureKind::kInterrupted:
      return true;
    default:
      return false;
  }
}

}  // namespace

RunServices::RunServices(run::Run& run, std::optional<Target> target,
                         std::optional<base::Secret> environmentPassword,
                         std::uint32_t wants, InBandOptions inBand)
    : run_(run),
      target_(std::move(target)),
      environmentPassword_(std::move(environmentPassword)),
      wants_(wants),
      inBand_(std::move(inBand)) {}

std::optional<Failure> RunServices::ensure() {
  if (!unusable_ && services_.empty()) {
    unusable_ = target_ ? addService(*target_) : ensureControllers();
  }
  return unusable_;
}

// Makes a service of each controller that this machine leads to.
std::optional<Failure> RunServices::ensureControllers() {
  run_.setMachine(std::make_unique<local::Machine>(local::Root(inBand_.root),
                                                   inBand_.pciIdsFile));
  local::Machine& machine = *run_.machine();
  FoundControllers found = findControllers(machine, inBand_.controller);
  pathBlocked_ = found.pathBlocked;
  if (found.failure &&
      (pathBlocked_ || machine.table() == local::Access::kDenied)) {
    notice(describe(*found.failure));
  }
  noController_ = found.controllers.empty();
  if (noController_ && recording_ != nullptr) {
    recording_->recordMachine(machine.root());
  }
  if (noController_ && pathBlocked_) {
    notice("this is what the server says of itself, without its controller");
  }
  if (noController_) {
    return found.failure;
  }
  for (FoundController& controller : found.controllers) {
    if (auto failure = addController(std::move(controller))) {
      return failure;
    }
  }
  return std::nullopt;
}

std::optional<Failure> RunServices::addController(FoundController controller) {
  if (controller.bootstrapsCredentials && inBand_.bootstrapCredentials) {
    trustOverIpmi(controller.target);
  }
  if (controller.target.user.empty() && inBand_.bootstrapCredentials) {
    if (auto failure = makeAccount(controller)) {
      return failure;
    }
  }
  return addService(std::move(controller.target), controller.serviceUuid);
}

std::optional<Failure> RunServices::addService(Target target,
                                               const std::string& serviceUuid) {
  if (auto failure = takeCredential(target)) {
    return failure;
  }
  environmentPassword_.reset();
  OpenOptions how;
  how.password = needsPassword(target) ? &credential_->password : nullptr;
  how.wants = wants_;
  how.recording = recording_;
  how.progress = progress_;
  const std::int64_t handle = run_.pool().add(openService(target, how));
  services_[handle] = {std::move(target), serviceUuid};
  return std::nullopt;
}

// Takes the password of a target's user, once per run: the controllers of a
// machine share one.
std::optional<Failure> RunServices::takeCredential(const Target& target) {
  if (credential_ || !needsPassword(target)) {
    return std::nullopt;
  }
  if (asksPerson(target, environmentPassword_.has_value())) {
    if (auto failure = checkBeforeAsking(target)) {
      return failure;
    }
  }
  auto credential = findCredential(target, std::move(environmentPassword_));
  environmentPassword_.reset();
  if (!credential) {
    Failure failure = std::move(credential).error();
    failure.address = toString(target.address);
    return failure;
  }
  credential_ = *std::move(credential);
  BRIVEL_LOG(base::kLogInformation)
      << toString(target.address) << ": password of user " << target.user
      << " from " << credential_->origin;
  return std::nullopt;
}

// Reaches and trusts a target before a person is asked for a password, which
// would be typed in vain otherwise. Whether it serves Redfish is found later.
std::optional<Failure> RunServices::checkBeforeAsking(
    const Target& target) const {
  Target nobody = target;
  nobody.user.clear();
  const auto service = openService(nobody, {});
  auto failure = service->open();
  return failure && isOfConnection(failure->kind) ? failure : std::nullopt;
}

// Trusts the certificate that the controller names over the IPMI device,
// unless something else is to be trusted.
void RunServices::trustOverIpmi(Target& target) {
  if (target.insecure || !target.pin.empty() || !target.caFile.empty()) {
    return;
  }
  target.certificate = namedCertificate(*run_.machine());
  BRIVEL_LOG(base::kLogInformation)
      << toString(target.address)
      << (target.certificate.empty()
              ? ": the controller names no certificate over IPMI"
              : ": trusting the certificate that the controller names over "
                "IPMI");
}

// Lets the controller make an account for this run.
std::optional<Failure> RunServices::makeAccount(FoundController& controller) {
  auto account = bootstrapAccount(*run_.machine(), controller);
  if (!account) {
    return std::move(account).error();
  }
  Target& target = controller.target;
  target.user = std::move(account->user);
  credential_ = std::move(account->credential);
  BRIVEL_LOG(base::kLogInformation)
      << toString(target.address) << ": account " << target.user << " made by "
      << credential_->origin;
  return std::nullopt;
}

base::Result<std::int64_t> RunServices::reachAny(std::uint16_t nodeIndex) {
  std::optional<Failure> failure;
  for (const auto& [handle, known] : services_) {
    redfish::Service& service = *run_.pool().find(handle);
    failure = reach(service);
    if (!failure) {
      failure = checkServiceUuid(service, known.serviceUuid);
    }
    if (!failure) {
      failure = readAhead(service, wants_, nodeIndex);
    }
    if (!failure) {
      return handle;
    }
  }
  return failure.value_or(Failure());
}

void RunServices::notice(const std::string& text) {
  if (std::find(notices_.begin(), notices_.end(), text) == notices_.end()) {
    notices_.push_back(text);
  }
}

}  // namespace connection
