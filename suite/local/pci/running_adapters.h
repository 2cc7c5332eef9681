#pragma once

#include <vector>

#include "suite/local/pci/pci.h"

namespace local {

/// The adapters of the running machine, by address: from the kernel's folders,
/// on Windows from the registry of devices.
std::vector<PciFacts> runningAdapters(const PciContext& context);

}  // namespace local
