#include "suite/http/request_trace.h"

#include "suite/base/log.h"

namespace http {
namespace {

const char* nameOf(Method method) {
  switch (method) {
    case Method::kGet:
      return "GET";
    case Method::kPost:
      return "POST";
    case Method::kDelete:
      break;
  }
  return "DELETE";
}

}  // namespace

void traceAnswer(const std::string& address, const Request& request,
                 const Answer& answer, std::uint64_t bytes) {
  BRIVEL_LOG(base::kLogTrace)
      << address << ": " << nameOf(request.method) << ' '
      << (request.logTarget.empty() ? request.target : request.logTarget)
      << ": "
      << (answer.failure ? answer.failure->cause
                         : std::to_string(answer.status))
      << ", " << bytes << " bytes";
}

}  // namespace http
