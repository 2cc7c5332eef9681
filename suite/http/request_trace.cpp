#include "suite/http/request_trace.h"

#include "syshealth/host/log.h"

namespace http {
namespace {

constexpr unsigned int kLogTrace = 4;

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
  if (Tarvex::Log::GetMinLogLevel() < kLogTrace) {
    return;
  }
  Tarvex::Log(kLogTrace, __FILE__, __LINE__).Stream()
      << address << ": " << nameOf(request.method) << ' ' << request.target
      << ": "
      << (answer.failure ? answer.failure->cause
                         : std::to_string(answer.status))
      << ", " << bytes << " bytes";
}

}  // namespace http
