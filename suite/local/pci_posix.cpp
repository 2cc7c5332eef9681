#include "suite/local/pci.h"

namespace local {

std::vector<PciFacts> runningAdapters(const PciContext& context) {
  return pciFacts(Root(), context);
}

}  // namespace local
