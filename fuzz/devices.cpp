// What cards, controllers and the local link answer, and the list of PCI
// names: the first byte picks the reader.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/ipmi/ipmi_message.h"
#include "suite/local/controller/discovery.h"
#include "suite/local/pci/pci.h"
#include "suite/local/pci/pci_ids.h"
#include "suite/local/pci/pci_vpd.h"

namespace {

void readIpmi(std::string_view bytes) {
  ipmi::IpmiResponse response;
  if (!bytes.empty()) {
    response.completion = static_cast<std::uint8_t>(bytes[0]);
    response.data = bytes.substr(1);
  }
  const auto version = ipmiVersion(response);
  require(!version || (*version >= 10 && *version <= 99));
  const auto account = bootstrapAccount(response);
  require(!account || (!account->user.empty() && account->user.size() <= 16));
  const auto digest = certificateDigest(response);
  require(!digest || digest->size() == 32);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const StepBudget budget(2000, 50, size);
  if (size == 0) {
    return 0;
  }
  const std::string_view bytes(reinterpret_cast<const char*>(data + 1),
                               size - 1);
  switch (data[0] % 5) {
    case 0:
      local::parseVpd(base::ByteView(bytes));
      break;
    case 1:
      readIpmi(bytes);
      break;
    case 2:
      require(local::parseSearchAnswer(bytes, "").value_or(1) != 0);
      break;
    case 3: {
      const local::PciNames names =
          local::PciIds(std::string(bytes)).names({0x10A0, 1, 0x20B0, 7});
      require(names.model.find('\n') == std::string::npos);
      break;
    }
    default:
      local::parsePciAddress(bytes);
      break;
  }
  return 0;
}
