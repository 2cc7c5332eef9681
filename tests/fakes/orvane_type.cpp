#include "syshealth/health/orvane_type.h"

#include <string>

#include "tests/fakes/journal.h"
#include "tests/fakes/script.h"

namespace Tarvex::Agentless {

// NOLINTNEXTLINE(modernize-pass-by-value): the signature is the suite's.
OrvaneTypeAcquire::OrvaneTypeAcquire(
    const TarvexConnection::ConnectionInfo& connection)
    : connection_(connection) {
  fakes::enter("OrvaneTypeAcquire(" + connection_.address + ")");
}

OrvaneTypeAcquire::~OrvaneTypeAcquire() {
  fakes::note(fakes::Kind::kCall, "~OrvaneTypeAcquire()");
}

int OrvaneTypeAcquire::GetOrvaneType(OrvaneTypeValue& type) {
  fakes::enter("OrvaneTypeAcquire::GetOrvaneType(" +
               std::to_string(static_cast<int>(type)) + ")");
  const int status = fakes::script().probeStatus;
  if (status == 0) {
    type = fakes::script().generation;
  }
  return status;
}

}  // namespace Tarvex::Agentless
