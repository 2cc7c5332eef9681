#include "tests/bmc/control/control_service.h"

#include <fstream>
#include <sstream>

#include "tests/bmc/wire/error_body.h"

namespace bmc {

ControlService::ControlService(const Counters& counters, const Journal& journal)
    : counters_(counters), journal_(journal) {}

Reply ControlService::answer(const Request& request) {
  if (request.target == "/counters") {
    return jsonReply(200, toJson(counters_));
  }
  if (request.target == "/log") {
    std::ostringstream text;
    text << std::ifstream(journal_.path(), std::ios::binary).rdbuf();
    return jsonReply(200, text.str());
  }
  return errorReply(404, "ResourceMissingAtURI", "Ask /counters or /log.");
}

}  // namespace bmc
