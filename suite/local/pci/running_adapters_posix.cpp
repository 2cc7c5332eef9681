#include "suite/local/pci/running_adapters.h"

namespace local {

std::vector<PciFacts> runningAdapters(const PciContext& context) {
  return pciFacts(Root(), context);
}

}  // namespace local
