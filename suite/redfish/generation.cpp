#include "suite/redfish/generation.h"

#include "suite/base/log.h"
#include "suite/ipmi/lan_probe.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/topology.h"

namespace redfish {
namespace {

// Whether a controller that failed so may be one that only speaks IPMI.
bool mayBeOlder(base::FailureKind kind) {
  switch (kind) {
    case base::FailureKind::kNotRedfish:
    case base::FailureKind::kUnreachable:
    case base::FailureKind::kConnectTimeout:
    case base::FailureKind::kTls:
      return true;
    default:
      return false;
  }
}

}  // namespace

Probed probeGeneration(const Opened& opened, const LanAddress& lan,
                       base::Clock::time_point until) {
  Probed probed;
  probed.failure = opened.failure;
  const Resource* root = serviceRoot(opened.graph);
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
  const ipmi::LanAnswer answer =
      lan.host.empty() ? ipmi::LanAnswer::kNone
                       : ipmi::probeLan(lan.host, lan.port, until);
  if (answer == ipmi::LanAnswer::kNone) {
    // Something that answers HTTP is there, but is of no known generation.
    if (probed.failure &&
        probed.failure->kind == base::FailureKind::kNotRedfish) {
      probed.failure.reset();
    }
    return probed;
  }
  probed.failure.reset();
  probed.generation = answer == ipmi::LanAnswer::kIpmi20 ? Generation::kIpmi20
                                                         : Generation::kIpmi15;
  BRIVEL_LOG(base::kLogInformation)
      << opened.address << ": no Redfish service, but it answers IPMI "
      << (answer == ipmi::LanAnswer::kIpmi20 ? "2.0" : "1.5");
  return probed;
}

}  // namespace redfish
