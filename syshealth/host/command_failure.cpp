#include "syshealth/host/command_failure.h"

#include "syshealth/host/console_line.h"
#include "syshealth/host/trace.h"
#include "syshealth/result/health_status.h"
#include "syshealth/result/result_codes.h"

std::int32_t failMissingService() { return kResultGenericFailure; }

std::int32_t failWithCode(std::int32_t code, const std::string& failureLine) {
  SYSHEALTH_LOG(kLogError) << getResultMessage(code);
  printError(failureLine);
  return code;
}

std::int32_t failConnection(const std::string& failureLine) {
  return failWithCode(kResultConnectionFailed, failureLine);
}

std::int32_t failNotSupported(const std::string& failureLine) {
  return failWithCode(kResultNotSupported, failureLine);
}

std::int32_t failTargetList(ConnectionErr error,
                            const std::string& failureLine) {
  ConnectInfo* const settings = ConnectInfo::Getinstance();
  if (settings == nullptr) {
    return failMissingService();
  }
  // The service's codes are 16 bits wide; what stands above is not a module.
  const auto code =
      static_cast<std::uint16_t>(settings->ParseCimError(error).code);
  return failWithCode(code, failureLine);
}

std::int32_t failInvalidNode() {
  printError("");
  printError("The input node is invalid ");
  return kResultGenericFailure;
}

std::int32_t failRead(int status, const std::string& failureLine,
                      const char* operation) {
  printError("");
  printError(failureLine);
  traceExiting(operation);
  return healthStatusToResult(status);
}
