// Datagrams that claim to be answers of a controller.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/ipmi/rmcp_message.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const StepBudget budget(2000, 50, size);
  const std::string_view datagram(reinterpret_cast<const char*>(data), size);
  const auto capabilities = ipmi::readCapabilities(datagram);
  // The shortest answer has a header of 14 bytes and a message of 8.
  require(!capabilities || size >= 22);
  const auto pong = ipmi::readPresencePong(datagram, 0x5A);
  require(!pong || size >= 21);
  return 0;
}
