#include "tools/record_local/recorder.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "suite/base/numbers.h"
#include "suite/local/controller/network.h"
#include "suite/local/pci/adapter.h"
#include "tools/record_local/pci_names.h"

namespace record {
namespace {

namespace fs = std::filesystem;
using base::ByteView;
using local::Access;
using local::Content;

constexpr std::size_t kLimit = 16U * 1024 * 1024;
constexpr char kTable[] = "/sys/firmware/dmi/tables/DMI";
constexpr char kEntryPoint[] = "/sys/firmware/dmi/tables/smbios_entry_point";

}  // namespace

Recorder::Recorder(local::Root from, std::string folder, bool mask)
    : from_(std::move(from)), folder_(std::move(folder)), mask_(mask) {}

bool Recorder::record() {
  // Much of this is root's alone. Nobody else can enter the folder, so nobody
  // can put a link into it.
  const mode_t before = umask(S_IRWXG | S_IRWXO);
  const bool made = mkdir(folder_.c_str(), S_IRWXU) == 0;
  if (made) {
    recordAll();
  } else {
    problems_.push_back(
        errno == EEXIST ? folder_ + " exists already"
                        : folder_ + " cannot be made: " + std::strerror(errno));
  }
  umask(before);
  return made;
}

void Recorder::recordAll() {
  recordTable();
  recordTexts();
  recordFans();
  recordProcessors();
  recordAdapters();
  recordNames();
  recordNetwork();
}

std::string Recorder::folderOf(const std::string& path) {
  const fs::path host = folder_ + path;
  std::error_code error;
  fs::create_directories(host.parent_path(), error);
  if (error) {
    problems_.push_back(host.parent_path().string() + ": " + error.message());
  }
  return host.string();
}

void Recorder::write(const std::string& path, const std::string& bytes) {
  const std::string host = folderOf(path);
  std::ofstream file(host, std::ios::binary);
  file << bytes;
  file.close();
  if (!file) {
    problems_.push_back(host + ": cannot be written");
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

void Recorder::copyLink(const std::string& path) {
  const std::string target = from_.link(path);
  if (target.empty()) {
    return;
  }
  std::error_code error;
  fs::create_symlink(target, folderOf(path), error);
  if (error) {
    problems_.push_back(folder_ + path + ": " + error.message());
  }
}

void Recorder::recordTable() {
  if (!mask_) {
    copy(kTable);
    copy(kEntryPoint);
    return;
  }
  const Content table = from_.read(kTable, kLimit);
  const Content entry = from_.read(kEntryPoint, kLimit);
  if (table.access == Access::kDenied) {
    problems_.push_back(std::string(kTable) + ": may be read by root only");
  }
  if (table.access != Access::kRead) {
    return;
  }
  const local::SmbiosTables tables =
      local::parseSmbios(local::parseSmbiosEntry(base::ByteView(entry.bytes)),
                         base::ByteView(table.bytes));
  const std::string masked = maskTable(tables, macs_);
  write(kTable, masked);
  write(kEntryPoint, entryPointOf(tables.version, masked.size()));
}

void Recorder::recordTexts() {
  const std::string texts = "/sys/class/dmi/id/";
  for (const char* name :
       {"sys_vendor", "product_name", "product_version", "product_sku",
        "product_family", "board_vendor", "board_name", "board_version"}) {
    copy(texts + name);
  }
  for (const std::string name :
       {"product_serial", "board_serial", "product_uuid"}) {
    const std::string line = from_.line(texts + name);
    if (line.empty()) {
      continue;
    }
    const bool uuid = name == "product_uuid";
    write(texts + name, (!mask_ ? line
                         : uuid ? maskUuid(line)
                                : maskText(line)) +
                            "\n");
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

void Recorder::recordAdapters() {
  const std::string bus = "/sys/bus/pci/devices/";
  for (const std::string& name : from_.list(bus)) {
    const std::string folder = bus + name;
    const auto code = base::hexadecimal(from_.line(folder + "/class"));
    if (!code || !local::isAdapter(*code, /*driverBound=*/true)) {
      continue;
    }
    // The function's folder stands where its link points, below its ports.
    const std::string link = from_.link(folder);
    const std::size_t devices = link.find("devices/");
    if (devices == std::string::npos) {
      continue;
    }
    copyLink(folder);
    const std::string place = "/sys/" + link.substr(devices);
    for (const char* file : {"/class", "/vendor", "/device",
                             "/subsystem_vendor", "/subsystem_device"}) {
      copy(place + file);
    }
    copyLink(place + "/driver");
    copyLink(place + "/physfn");
    const Content vpd = from_.read(place + "/vpd", kLimit);
    if (vpd.access == Access::kRead) {
      write(place + "/vpd",
            mask_ ? maskVpd(base::ByteView(vpd.bytes)) : vpd.bytes);
    }
  }
}

// Of the names of all PCI devices those that this machine has.
void Recorder::recordNames() {
  std::vector<local::PciIdentity> functions;
  const std::string bus = "/sys/bus/pci/devices/";
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
  const std::string net = "/sys/class/net/";
  for (const std::string& name : from_.list(net)) {
    const std::string folder = net + name;
    const auto mac = local::parseMac(from_.line(folder + "/address"));
    if (mac) {
      write(folder + "/address",
            local::macText(mask_ ? macs_(*mac) : *mac) + "\n");
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
    for (const std::string file : {"/idVendor", "/idProduct"}) {
      const std::string id = from_.line(folder + "/device/.." + file);
      if (id.empty()) {
        continue;
      }
      write(folder + "/device/present", "");
      write(folder + file, id + "\n");
    }
  }
}

}  // namespace record
