#include "syshealth/result/health_status.h"

#include "syshealth/host/console_line.h"
#include "syshealth/result/result_codes.h"

namespace {

std::int32_t resultOf(int status) {
  switch (status) {
    case kHealthSuccess:
      return kResultSuccess;
    case kHealthNoConnection:
    case kHealthRefused:
      return kResultConnectionFailed;
    case kHealthReadFailed:
      return kResultReadFileFailed;
    case kHealthNotSupported:
      return kResultNotSupported;
    default:
      return kResultInternalError;
  }
}

}  // namespace

std::int32_t healthStatusToResult(int status) {
  const std::int32_t result = resultOf(status);
  if (result != kResultSuccess) {
    printError(getResultMessage(result));
  }
  return result;
}
