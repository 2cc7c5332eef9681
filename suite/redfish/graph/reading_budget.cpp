#include "suite/redfish/graph/reading_budget.h"

namespace redfish {

bool ReadingBudget::spend(std::size_t textBytes, std::size_t values,
                          std::string& error) {
  // Text and values of one document are limited: this cannot overflow.
  const std::size_t bytes = textBytes + values * kBytesPerValue;
  if (bytes > left_) {
    exceeded_ = true;
    error = "with it, what was read of this service takes more than " +
            std::to_string(whole_ >> 20U) + " MiB";
    return false;
  }
  left_ -= bytes;
  return true;
}

}  // namespace redfish
