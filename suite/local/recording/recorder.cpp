#include "suite/local/recording/recorder.h"

#include <cstdint>
#include <utility>

#include "suite/base/numbers.h"
#include "suite/local/controller/network.h"
#include "suite/local/pci/adapter.h"
#include "suite/local/pci/pci.h"
#include "suite/local/recording/pci_names.h"
#include "suite/local/recording/table_masking.h"
#include "suite/local/smbios/firmware_table.h"

namespace local {
namespace {

using base::ByteView;

constexpr std::size_t kLimit = 16U * 1024 * 1024;
constexpr char kTexts[] = "/sys/class/dmi/id/";
constexpr char kNetwork[] = "/sys/class/net/";

// Attributes that identify the machine.
constexpr const char* kIdentifying[] = {"product_serial", "board_serial",
                                        "product_uuid"};

SmbiosTables parsed(const Content& table, const Content& entry) {
  return parseSmbios(parseSmbiosEntry(ByteView(entry.bytes)),
                     ByteView(table.bytes));
}

}  // namespace

Recorder::Recorder(Root from, platform::PrivateFolder& folder,
                   masking::Masker* masker)
    : from_(std::move(from)), folder_(folder), masker_(masker) {}

void Recorder::record() {
  if (masker_ != nullptr) {
    note();
    if (masker_->exceeded()) {
      problems_.emplace_back(masking::Masker::kExceeded);
      return;
    }
  }
  recordTable();
  recordTexts();
  recordFans();
  recordProcessors();
  recordAdapters();
  recordNames();
  recordNetwork();
  if (masker_ != nullptr && masker_->exceeded()) {
    problems_.emplace_back(masking::Masker::kExceeded);
  }
}

// Tells the masker all that identifies, before any of it is written.
void Recorder::note() {
  const Content table = from_.read(kTablePath, kLimit);
  noteTable(parsed(table, from_.read(kEntryPointPath, kLimit)), *masker_);
  for (const std::string name : kIdentifying) {
    masker_->note(from_.line(kTexts + name));
  }
  forEachAdapter([this](const std::string&, const std::string& place) {
    noteVpd(ByteView(from_.read(place + "/vpd", kLimit).bytes), *masker_);
  });
  for (const std::string& name : from_.list(kNetwork)) {
    masker_->note(from_.line(kNetwork + name + "/address"));
  }
}

std::string Recorder::masked(const std::string& value) {
  return masker_ == nullptr ? value : masker_->value(value);
}

void Recorder::write(const std::string& path, const std::string& bytes) {
  std::string reason;
  if (folder_.write(path.substr(1), bytes, reason)) {
    ++files_;
  } else {
    problems_.push_back(path + " cannot be written: " + reason);
  }
}

void Recorder::copy(const std::string& path) {
  const Content content = from_.read(path, kLimit);
  if (content.access == Access::kRead) {
    write(path, content.bytes);
  } else if (content.access == Access::kDenied) {
    problems_.push_back(path + ": may be read by root only");
  }
}

// Copies a text in which what identifies is masked.
void Recorder::copyText(const std::string& path) {
  const Content content = from_.read(path, kLimit);
  if (masker_ == nullptr || content.access != Access::kRead) {
    copy(path);
  } else {
    write(path, masker_->text(content.bytes));
  }
}

void Recorder::copyLink(const std::string& path) {
  const std::string target = from_.link(path);
  std::string reason;
  if (!target.empty() && !folder_.link(path.substr(1), target, reason)) {
    problems_.push_back(path + " cannot be written: " + reason);
  }
}

void Recorder::recordTable() {
  if (masker_ == nullptr) {
    copy(kTablePath);
    copy(kEntryPointPath);
    return;
  }
  const Content table = from_.read(kTablePath, kLimit);
  const Content entry = from_.read(kEntryPointPath, kLimit);
  if (table.access == Access::kDenied) {
    problems_.push_back(std::string(kTablePath) + ": may be read by root only");
  }
  if (table.access != Access::kRead) {
    return;
  }
  const SmbiosTables tables = parsed(table, entry);
  const std::string bytes = maskTable(tables, *masker_);
  write(kTablePath, bytes);
  write(kEntryPointPath, entryPointOf(tables.version, bytes.size()));
}

void Recorder::recordTexts() {
  for (const char* name :
       {"sys_vendor", "product_name", "product_version", "product_sku",
        "product_family", "board_vendor", "board_name", "board_version"}) {
    copyText(std::string(kTexts) + name);
  }
  for (const std::string name : kIdentifying) {
    const std::string line = from_.line(kTexts + name);
    if (!line.empty()) {
      write(kTexts + name, masked(line) + "\n");
    }
  }
}

void Recorder::recordFans() {
  const std::string hwmon = "/sys/class/hwmon";
  for (const auto& chip : base::numbered(from_.list(hwmon), "hwmon")) {
    const std::string folder = hwmon + "/" + chip.second;
    // Old drivers keep their attributes with the device itself.
    const std::string place =
        from_.exists(folder + "/name") ? folder : folder + "/device";
    for (const std::string& name : from_.list(place)) {
      if (name == "name" || name.substr(0, 3) == "fan") {
        copy(place + "/" + name);
      }
    }
  }
}

void Recorder::recordProcessors() {
  const std::string cpus = "/sys/devices/system/cpu";
  for (const auto& cpu : base::numbered(from_.list(cpus), "cpu")) {
    copy(cpus + "/" + cpu.second + "/topology/physical_package_id");
    copy(cpus + "/" + cpu.second + "/cpufreq/cpuinfo_max_freq");
  }
}

// Calls `use` with the names of the adapters among the PCI functions and the
// folders that they stand in.
void Recorder::forEachAdapter(
    const std::function<void(const std::string& name,
                             const std::string& place)>& use) const {
  for (const std::string& name : from_.list(kPciBus)) {
    const std::string folder = kPciBus + name;
    const auto code = base::hexadecimal(from_.line(folder + "/class"));
    if (!code || !isAdapter(*code, /*driverBound=*/true)) {
      continue;
    }
    // The function's folder stands where its link points, below its ports.
    const std::string link = from_.link(folder);
    const std::size_t devices = link.find("devices/");
    if (devices != std::string::npos) {
      use(name, "/sys/" + link.substr(devices));
    }
  }
}

void Recorder::recordAdapters() {
  forEachAdapter([this](const std::string& name, const std::string& place) {
    copyLink(kPciBus + name);
    for (const char* file : {"/class", "/vendor", "/device",
                             "/subsystem_vendor", "/subsystem_device"}) {
      copy(place + file);
    }
    copyLink(place + "/driver");
    copyLink(place + "/physfn");
    const Content vpd = from_.read(place + "/vpd", kLimit);
    if (vpd.access == Access::kRead) {
      write(place + "/vpd", masker_ == nullptr
                                ? vpd.bytes
                                : maskVpd(ByteView(vpd.bytes), *masker_));
    }
  });
}

// Of the names of all PCI devices those that this machine has.
void Recorder::recordNames() {
  std::vector<PciIdentity> functions;
  const std::string bus = kPciBus;
  for (const std::string& name : from_.list(bus)) {
    const auto id = [&](const char* file) {
      return static_cast<std::uint16_t>(
          base::hexadecimal(from_.line(bus + name + file)).value_or(0) &
          0xFFFFU);
    };
    functions.push_back({id("/vendor"), id("/device"), id("/subsystem_vendor"),
                         id("/subsystem_device")});
  }
  Content names = from_.read("/usr/share/hwdata/pci.ids", kLimit);
  if (names.access != Access::kRead) {
    names = from_.read("/usr/share/misc/pci.ids", kLimit);
  }
  const std::string kept = namesOf(names.bytes, functions);
  if (!kept.empty()) {
    write("/usr/share/misc/pci.ids", kept);
  }
}

void Recorder::recordNetwork() {
  const std::string net = kNetwork;
  for (const std::string& name : from_.list(net)) {
    const std::string folder = net + name;
    const auto mac = parseMac(from_.line(folder + "/address"));
    if (mac) {
      write(folder + "/address", masked(macText(*mac)) + "\n");
    }
    copy(folder + "/flags");
    copy(folder + "/operstate");
    copy(folder + "/carrier");
    for (const char* file :
         {"/vendor", "/device", "/subsystem_vendor", "/subsystem_device"}) {
      copy(folder + "/device" + file);
    }
    // Above a USB function; in the recording the function is no link, so this
    // is the card's own folder.
    bool present = false;
    for (const std::string file : {"/idVendor", "/idProduct"}) {
      const std::string id = from_.line(folder + "/device/.." + file);
      if (id.empty()) {
        continue;
      }
      if (!std::exchange(present, true)) {
        write(folder + "/device/present", "");
      }
      write(folder + file, id + "\n");
    }
  }
}

}  // namespace local
