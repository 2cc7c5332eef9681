#include "suite/redfish/generation.h"

#include "suite/redfish/json.h"
#include "suite/redfish/lan_probe.h"
#include "suite/redfish/service.h"
#include "suite/redfish/topology.h"
#include "syshealth/host/log.h"

namespace redfish {
namespace {

// Whether a controller that failed so may be one that only speaks IPMI.
bool mayBeOlder(FailureKind kind) {
  switch (kind) {
    case FailureKind::kNotRedfish:
    case FailureKind::kUnreachable:
    case FailureKind::kConnectTimeout:
    case FailureKind::kTls:
      return true;
    default:
      return false;
  }
}

}  // namespace

Probed probeGeneration(Service& service, const LanAddress& lan,
                       Clock::time_point until) {
  Probed probed;
  probed.failure = service.open();
  const Resource* root = serviceRoot(service.graph());
  // A link that is refused is no sign of another generation.
  if (root != nullptr && !stringAt(root->body, "Systems/@odata.id").empty()) {
    if (!probed.failure) {
      probed.generation = Generation::kRedfish;
    }
    return probed;
  }
  if (probed.failure && !mayBeOlder(probed.failure->kind)) {
    return probed;
  }
  const LanAnswer answer =
      lan.host.empty() ? LanAnswer::kNone : probeLan(lan.host, lan.port, until);
  if (answer == LanAnswer::kNone) {
    // Something that answers HTTP is there, but is of no known generation.
    if (probed.failure && probed.failure->kind == FailureKind::kNotRedfish) {
      probed.failure.reset();
    }
    return probed;
  }
  probed.failure.reset();
  probed.generation =
      answer == LanAnswer::kIpmi20 ? Generation::kIpmi20 : Generation::kIpmi15;
  Tarvex::Log(3, __FILE__, __LINE__).Stream()
      << service.address() << ": no Redfish service, but it answers IPMI "
      << (answer == LanAnswer::kIpmi20 ? "2.0" : "1.5");
  return probed;
}

}  // namespace redfish
