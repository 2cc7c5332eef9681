#include "suite/local/pci/pci.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "suite/base/numbers.h"
#include "suite/base/time_limit.h"
#include "suite/local/pci/pci_vpd.h"

namespace local {
namespace {

// The function's link shows the ports above it:
// "../../../devices/pci0000:3a/0000:3a:00.0/0000:3b:00.0".
std::vector<PciAddress> portsAbove(std::string_view link,
                                   const PciAddress& own) {
  std::vector<PciAddress> ports;
  while (!link.empty()) {
    const std::size_t slash = link.rfind('/');
    const std::size_t begin = slash == std::string_view::npos ? 0 : slash + 1;
    const auto address = parsePciAddress(link.substr(begin));
    if (!address) {
      break;
    }
    if (!(*address == own)) {
      ports.push_back(*address);
    }
    link = link.substr(0, begin == 0 ? 0 : begin - 1);
  }
  return ports;
}

std::uint16_t identity(const Root& root, const std::string& path) {
  return static_cast<std::uint16_t>(
      base::hexadecimal(root.line(path)).value_or(0) & 0xFFFFU);
}

// A function and its folder.
struct Listed {
  PciFunction function;
  std::string folder;
};

// The physical functions that are adapters, with what their choice needs.
std::vector<Listed> candidates(const Root& root) {
  std::vector<Listed> found;
  for (const std::string& name : root.list(kPciBus)) {
    base::heedTime();
    const auto address = parsePciAddress(name);
    if (!address) {
      continue;
    }
    Listed listed;
    listed.folder = kPciBus + name;
    const auto code = base::hexadecimal(root.line(listed.folder + "/class"));
    // A virtual function is a share of the adapter that made it.
    if (!code || !isAdapter(*code, /*driverBound=*/true) ||
        !root.link(listed.folder + "/physfn").empty()) {
      continue;
    }
    PciFunction& function = listed.function;
    function.address = *address;
    function.classCode = *code;
    function.driverBound = !root.link(listed.folder + "/driver").empty();
    function.identity.vendor = identity(root, listed.folder + "/vendor");
    found.push_back(std::move(listed));
  }
  return found;
}

// The adapters of the machine, in the order of their addresses.
std::vector<Listed> adapters(const Root& root) {
  std::vector<Listed> found = candidates(root);
  std::vector<PciFunction> functions;
  functions.reserve(found.size());
  for (const Listed& listed : found) {
    functions.push_back(listed.function);
  }
  std::vector<Listed> chosen;
  for (const std::size_t index : chooseAdapters(functions)) {
    Listed& listed = found[index];
    PciFunction& function = listed.function;
    const std::string& folder = listed.folder;
    function.above = portsAbove(root.link(folder), function.address);
    function.identity.device = identity(root, folder + "/device");
    function.identity.subsystemVendor =
        identity(root, folder + "/subsystem_vendor");
    function.identity.subsystem = identity(root, folder + "/subsystem_device");
    chosen.push_back(std::move(listed));
  }
  return chosen;
}

PciIds readIds(const Root& root, const std::string& configured) {
  if (!configured.empty()) {
    return configuredIds(configured);  // Also for a recorded machine.
  }
  for (const char* path :
       {"/usr/share/hwdata/pci.ids", "/usr/share/misc/pci.ids"}) {
    Content content = root.read(path, kLongestPciIds);
    if (content.access == Access::kRead) {
      return PciIds(std::move(content.bytes));
    }
  }
  return PciIds("");
}

}  // namespace

std::vector<PciFacts> pciFacts(const Root& root, const PciContext& context) {
  const std::vector<Listed> found = adapters(root);
  if (found.empty()) {
    return {};
  }
  const PciIds ids = readIds(root, context.idsFile);
  std::vector<std::string> folders;
  folders.reserve(found.size());
  for (const Listed& listed : found) {
    folders.push_back(listed.folder);
  }
  const auto vitals = readVpds(root, folders, context.vpdLimit);

  std::vector<PciFacts> adapters;
  for (const Listed& listed : found) {
    PciFacts facts = factsOf(listed.function, ids, context);
    const auto vital = vitals.find(listed.folder);
    if (vital != vitals.end()) {
      facts.serial = vital->second.serial;
      facts.partNumber = vital->second.partNumber;
    }
    adapters.push_back(std::move(facts));
  }
  return adapters;
}

}  // namespace local
