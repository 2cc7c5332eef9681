#include "suite/local/machine.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/local/controller/ipmi_device.h"
#include "suite/local/cpu_frequency.h"
#include "suite/local/facts/machine_names.h"
#include "suite/local/fans.h"
#include "suite/local/pci/pci.h"
#include "suite/local/pci/running_adapters.h"
#include "suite/local/smbios/smbios_parts.h"
#include "suite/local/smbios/smbios_system.h"

namespace local {
namespace {

// Copies of the texts of types 1 and 2, most of them readable by everyone.
constexpr char kTexts[] = "/sys/class/dmi/id/";
constexpr char kChips[] = "/sys/class/hwmon";

// A controller answers within milliseconds, one that starts within seconds.
constexpr std::chrono::milliseconds kIpmiTimeout(5000);

}  // namespace

Machine::Machine(Root root, std::string pciIdsFile)
    : root_(std::move(root)), pciIdsFile_(std::move(pciIdsFile)) {}

Machine::~Machine() = default;

const SmbiosTables& Machine::smbios() {
  if (!table_) {
    table_ = root_.recorded() ? tableInFolders(root_) : runningTable();
    if (table_->access == Access::kRead) {
      smbios_ = parseSmbios(table_->entry, base::ByteView(table_->bytes));
    }
  }
  return smbios_;
}

Access Machine::table() {
  smbios();
  return table_->access;
}

const std::string& Machine::tableName() {
  smbios();
  return table_->name;
}

const std::vector<std::string>& Machine::defects() { return smbios().defects; }

SystemFacts Machine::system() {
  if (table() == Access::kRead) {
    return systemFacts(smbios());
  }
  const auto text = [&](const char* name) {
    return root_.line(std::string(kTexts) + name);
  };
  return {text("sys_vendor"),
          text("product_name"),
          text("product_version"),
          text("product_serial"),
          text("product_sku"),
          text("product_family"),
          base::lowerCase(text("product_uuid"))};
}

BoardFacts Machine::board() {
  if (table() == Access::kRead) {
    return boardFacts(smbios());
  }
  const auto text = [&](const char* name) {
    return root_.line(std::string(kTexts) + name);
  };
  return {text("board_vendor"), text("board_name"), text("board_version"),
          text("board_serial")};
}

std::vector<ProcessorFacts> Machine::processors() {
  std::vector<ProcessorFacts> processors = processorFacts(smbios());
  // Packages have no name in common with sockets: both ascend alike, so they
  // are paired by order, where there are as many of one as of the other.
  const std::vector<unsigned> speeds = packageMaxMhz(root_);
  if (speeds.size() == processors.size()) {
    for (std::size_t i = 0; i < speeds.size(); ++i) {
      processors[i].maxMhz = speeds[i];
    }
  }
  return processors;
}

std::vector<MemoryFacts> Machine::memory() { return memoryFacts(smbios()); }
std::optional<std::size_t> Machine::memoryPlaces() {
  return local::memoryPlaces(smbios());
}

std::vector<SupplyFacts> Machine::supplies() { return supplyFacts(smbios()); }

std::vector<FanFacts> Machine::fans() { return fanFacts(root_); }

bool Machine::hasFanSource() const {
  return root_.recorded() || kSystemHasFanSource;
}

std::vector<PciFacts> Machine::adapters() {
  PciContext context;
  context.slots = slotFacts(smbios());
  context.onboard = onboardFacts(smbios());
  context.machine = MachineNames(system(), board());
  context.idsFile = pciIdsFile_;
  std::vector<PciFacts> found =
      root_.recorded() ? pciFacts(root_, context) : runningAdapters(context);
  lacksPciNames_ =
      !found.empty() &&
      std::none_of(found.begin(), found.end(), [](const PciFacts& facts) {
        return !facts.manufacturer.empty();
      });
  return found;
}

std::vector<HostInterface> Machine::hostInterfaces() {
  return local::hostInterfaces(smbios());
}

const IpmiFinding& Machine::ipmi() {
  if (!ipmi_) {
    IpmiDevice device(root_);
    ipmi_ = {device.access(), device.path(), std::nullopt};
    const auto answer = device.ask(ipmi::getDeviceIdRequest(), kIpmiTimeout);
    if (answer) {
      ipmi_->version = ipmi::ipmiVersion(*answer);
    }
  }
  return *ipmi_;
}

bool Machine::describesItself() {
  return table() != Access::kMissing || root_.exists(kTexts) ||
         root_.exists(kChips) || root_.exists(kPciBus);
}

}  // namespace local
