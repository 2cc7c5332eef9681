#include <optional>
#include <utility>

#include "suite/devhealth/failure_status.h"
#include "suite/local/machine.h"
#include "suite/redfish/generation.h"
#include "suite/redfish/service.h"
#include "suite/run/run.h"
#include "syshealth/health/orvane_type.h"
#include "syshealth/result/health_status.h"

namespace Tarvex::Agentless {
namespace {

using base::Failure;
using base::FailureKind;
using redfish::Generation;

// The module's generations and the probe's are numbered alike.
static_assert(static_cast<int>(Generation::kUnknown) == kOrvaneTypeUnknown);
static_assert(static_cast<int>(Generation::kIpmi15) == kOrvaneType1);
static_assert(static_cast<int>(Generation::kIpmi20) == kOrvaneType2);
static_assert(static_cast<int>(Generation::kRedfish) == kOrvaneTypeDravik);

// Why a controller that answers is turned away all the same.
Failure notOfTheNewest(redfish::Service& service, Generation generation) {
  Failure failure = service.open().value_or(Failure());
  failure.kind = FailureKind::kNotRedfish;
  failure.address = service.address();
  if (generation == Generation::kUnknown) {
    if (failure.cause.empty()) {
      failure.cause = "its Redfish service has no systems";
    }
  } else {
    failure.uri.clear();
    failure.cause =
        generation == Generation::kIpmi20
            ? "an older controller: it speaks IPMI 2.0, not Redfish"
            : "an older controller: it speaks IPMI 1.5, not Redfish";
    failure.remedy.clear();
  }
  return failure;
}

// The controller that the machine itself reaches over its IPMI device alone.
int typeOfOwnController(OrvaneTypeValue& type) {
  run::Run* current = run::Run::current();
  local::Machine* machine = current == nullptr ? nullptr : current->machine();
  const auto version =
      machine == nullptr ? std::nullopt : machine->ipmi().version;
  if (!version) {
    return kHealthNoConnection;
  }
  constexpr int kVersion20 = 20;
  type = *version >= kVersion20 ? kOrvaneType2 : kOrvaneType1;
  current->report({FailureKind::kNotRedfish, "this server", "",
                   "its controller speaks IPMI over " + machine->ipmi().path +
                       ", and the firmware names no Redfish host interface",
                   "if it serves Redfish elsewhere, name it by --bmc"});
  return kHealthSuccess;
}

}  // namespace

// The module calls this very signature, here and below.
OrvaneTypeAcquire::OrvaneTypeAcquire(
    // NOLINTNEXTLINE(modernize-pass-by-value)
    const TarvexConnection::ConnectionInfo& connection)
    : connection_(connection) {}

OrvaneTypeAcquire::~OrvaneTypeAcquire() = default;

// NOLINTNEXTLINE(readability-make-member-function-const)
int OrvaneTypeAcquire::GetOrvaneType(OrvaneTypeValue& type) {
  // Nobody is asked for such a target: the application refuses its connection
  // mode by itself, later.
  if (connection_.service == run::kNoService) {
    type = kOrvaneTypeDravik;
    return kHealthSuccess;
  }
  if (connection_.service == run::kThisMachine) {
    return typeOfOwnController(type);
  }
  run::Run* current = run::Run::current();
  redfish::Service* service =
      current == nullptr ? nullptr : current->pool().find(connection_.service);
  if (service == nullptr) {
    return kHealthNoConnection;
  }
  const redfish::Probed& probed = service->probe();
  if (probed.failure) {
    current->report(*probed.failure);
    return devhealth::statusOf(probed.failure->kind,
                               devhealth::Phase::kConnecting);
  }
  if (probed.generation != Generation::kRedfish) {
    current->report(notOfTheNewest(*service, probed.generation));
  }
  type = static_cast<OrvaneTypeValue>(probed.generation);
  return kHealthSuccess;
}

}  // namespace Tarvex::Agentless
