#pragma once

#include <cstdint>
#include <string>

/// The suite's result value: what an entry point hands to the host, and what
/// the connection-settings service turns its own errors into.
struct BrivelResult {
  std::int32_t code = 0;  ///< Result code, 0 for success. Callers that read
                          ///< 16 bits take the low half.
  std::string message;    ///< Text beside the code; may be empty.
};
