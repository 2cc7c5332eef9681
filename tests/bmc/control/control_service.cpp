#include "tests/bmc/control/control_service.h"

#include "tests/bmc/wire/error_body.h"
#include "tests/support/file_text.h"

namespace bmc {

ControlService::ControlService(const Counters& counters, const Journal& journal)
    : counters_(counters), journal_(journal) {}

Reply ControlService::answer(const Request& request) {
  if (request.target == "/counters") {
    return jsonReply(200, toJson(counters_));
  }
  if (request.target == "/log") {
    return jsonReply(200, support::fileText(journal_.path()));
  }
  return errorReply(404, "ResourceMissingAtURI", "Ask /counters or /log.");
}

}  // namespace bmc
