#include "suite/connection/shown_pin.h"

#include <memory>
#include <utility>

#include "suite/base/clock.h"
#include "suite/connection/transport_of.h"
#include "suite/platform/interrupt.h"

namespace connection {

using base::Failure;
using base::FailureKind;

base::Result<std::string> readShownPin(const Target& target) {
  if (target.address.scheme != Address::Scheme::kHttps) {
    Failure failure = base::makeFailure(
        FailureKind::kUsage, "shows no certificate; only https:// does");
    failure.address = toString(target.address);
    return failure;
  }
  Target anyone = target;
  anyone.caFile.clear();
  anyone.pin.clear();
  anyone.insecure = true;
  const std::unique_ptr<http::Transport> transport = transportOf(anyone);
  http::Request request;
  request.target = "/redfish/v1/";
  request.timeout = target.timeout;
  transport->start(std::move(request));
  const auto answer = transport->next(base::Clock::now() + target.deadline);
  if (answer && !answer->shownPin.empty()) {
    return answer->shownPin;
  }
  Failure failure =
      answer && answer->failure
          ? *answer->failure
          : base::makeFailure(
                platform::interrupted() ? FailureKind::kInterrupted
                                        : FailureKind::kDeadline,
                platform::interrupted() ? "interrupted" : "no answer in time");
  failure.address = toString(target.address);
  failure.uri.clear();
  return failure;
}

}  // namespace connection
