#include "suite/redfish/graph/reading_budget.h"

#include <string>

namespace redfish {

std::optional<base::Failure> ReadingBudget::spend(std::size_t textBytes,
                                                  std::size_t values) {
  // Text and values of one document are limited: this cannot overflow.
  const std::size_t bytes = textBytes + values * kBytesPerValue;
  if (bytes > left_) {
    exceeded_ = true;
    return base::makeFailure(
        base::FailureKind::kBadContent,
        "with it, what was read of this service takes more than " +
            std::to_string(whole_ >> 20U) + " MiB");
  }
  left_ -= bytes;
  return std::nullopt;
}

}  // namespace redfish
