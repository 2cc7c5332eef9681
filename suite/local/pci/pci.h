#pragma once

#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/local/facts/root.h"
#include "suite/local/pci/adapter.h"

namespace local {

/// The folder with a link to the folder of each PCI function (Linux).
inline constexpr char kPciBus[] = "/sys/bus/pci/devices/";

/// The adapters among the PCI functions under /sys/bus/pci/devices, as
/// `chooseAdapters` chooses them; virtual functions are left out.
///
/// The kernel's folders are read directly, and not through libpciaccess,
/// because that library reads "/sys" and one names file alone (a recorded
/// machine has another root), and gives no vital product data.
std::vector<PciFacts> pciFacts(const Root& root, const PciContext& context);

}  // namespace local
