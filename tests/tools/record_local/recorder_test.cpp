#include "tools/record_local/recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "suite/local/controller/network.h"
#include "suite/local/machine.h"
#include "tests/suite/local/folder.h"
#include "tests/suite/local/table_builder.h"
#include "tests/support/file_text.h"
#include "tests/support/ordinary_user.h"

namespace record {
namespace {

using local::Folder;
using local::Machine;
using local::Root;
using local::Structure;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kSecret[] = "SN417";

void addMachine(Folder& folder) {
  const std::string table =
      local::tableOf({Structure(1, 0x1B).text(5, "RX").text(7, kSecret),
                      Structure(4, 0x30).byte(5, 3).byte(0x18, 0x41)});
  folder.file("/sys/firmware/dmi/tables/DMI", table)
      .file("/sys/firmware/dmi/tables/smbios_entry_point",
            local::entryPoint64(3, 3, table.size()))
      .file("/sys/class/dmi/id/sys_vendor", "Halvorn\n")
      .file("/sys/class/dmi/id/product_serial", std::string(kSecret) + "\n")
      .file("/sys/class/hwmon/hwmon0/name", "fanctl\n")
      .file("/sys/class/hwmon/hwmon0/fan1_input", "4980\n")
      .file("/sys/class/hwmon/hwmon0/temp1_input", "40000\n");
  const std::string cpu = "/sys/devices/system/cpu/cpu0";
  folder.file(cpu + "/topology/physical_package_id", "0\n")
      .file(cpu + "/cpufreq/cpuinfo_max_freq", "3700000\n");
  const std::string port = "/sys/devices/pci0000:00/0000:00:01.0";
  folder.file(port + "/class", "0x060400\n")
      .link("/sys/bus/pci/devices/0000:00:01.0",
            "../../../devices/pci0000:00/0000:00:01.0");
  const std::string card = port + "/0000:3b:00.0";
  folder.file(card + "/class", "0x020000\n")
      .file(card + "/vendor", "0x10a0\n")
      .file(card + "/device", "0x0001\n")
      .file(card + "/vpd",
            std::string("\x90\x08\0SN\x05", 6) + kSecret + "\x78")
      .link(card + "/driver", "../../../../bus/pci/drivers/nb")
      .link("/sys/bus/pci/devices/0000:3b:00.0",
            "../../../devices/pci0000:00/0000:00:01.0/0000:3b:00.0");
  folder.file(
      "/usr/share/misc/pci.ids",
      "# list\n10a0  Nordbrenn\n\t0001  NB100\n20b0  Other\n\t0001  X\n");
  const std::string usb = "/sys/devices/usb1/1-1";
  folder.file(usb + "/idVendor", "0525\n")
      .file(usb + "/idProduct", "a4a2\n")
      .file(usb + "/1-1:1.0/net/usb0/address", "52:54:01:12:34:56\n")
      .file(usb + "/1-1:1.0/net/usb0/flags", "0x1003\n")
      .file(usb + "/1-1:1.0/net/usb0/operstate", "up\n")
      .link(usb + "/1-1:1.0/net/usb0/device", "../../../1-1:1.0")
      .link("/sys/class/net/usb0", "../../devices/usb1/1-1/1-1:1.0/net/usb0");
}

std::string everythingIn(const std::string& folder) {
  std::string all;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) {
      continue;
    }
    all += support::fileText(entry.path());
  }
  return all;
}

TEST(Recorder, RecordedMachineReadsLikeTheOriginal) {
  Folder original;
  addMachine(original);
  const Folder copy;
  const std::string folder = copy.path() + "/recorded";
  const Root recorded(folder);
  Recorder recorder(original.root(), folder, false);
  recorder.record();
  EXPECT_THAT(recorder.problems(), IsEmpty());

  Machine machine(recorded);
  EXPECT_EQ(machine.system().product, "RX");
  EXPECT_EQ(machine.system().serial, kSecret);
  EXPECT_EQ(machine.processors().at(0).maxMhz, 3700U);
  EXPECT_EQ(machine.fans().at(0).measuredRpm, 4980);
  const auto adapters = machine.adapters();
  ASSERT_THAT(adapters, SizeIs(1));
  EXPECT_EQ(adapters[0].model, "NB100");
  EXPECT_EQ(adapters[0].serial, kSecret);
  EXPECT_TRUE(adapters[0].driverBound);
  const auto devices = local::networkDevices(recorded);
  ASSERT_THAT(devices, SizeIs(1));
  EXPECT_EQ(local::macText(*devices[0].mac), "52:54:01:12:34:56");
  EXPECT_EQ(devices[0].usbVendorId, 0x0525);
  EXPECT_EQ(devices[0].usbProductId, 0xa4a2);
  EXPECT_TRUE(devices[0].up);
}

TEST(Recorder, NothingElseIsRecorded) {
  Folder original;
  addMachine(original);
  original.file("/etc/shadow", "root");
  const Folder copy;
  const std::string folder = copy.path() + "/recorded";
  const Root recorded(folder);
  Recorder(original.root(), folder, false).record();
  EXPECT_FALSE(std::filesystem::exists(folder + "/etc"));
  EXPECT_FALSE(
      std::filesystem::exists(folder + "/sys/class/hwmon/hwmon0/temp1_input"));
  EXPECT_EQ(recorded.read("/usr/share/misc/pci.ids", 1000).bytes,
            "10a0  Nordbrenn\n\t0001  NB100\n");
}

TEST(Recorder, MaskLeavesNoSerial) {
  Folder original;
  addMachine(original);
  const Folder copy;
  const std::string folder = copy.path() + "/recorded";
  const Root recorded(folder);
  Recorder(original.root(), folder, true).record();
  EXPECT_EQ(everythingIn(folder).find(kSecret), std::string::npos);
  Machine machine(recorded);
  EXPECT_EQ(machine.system().product, "RX");
  EXPECT_EQ(machine.system().serial, "XXXXX");
  EXPECT_EQ(machine.adapters().at(0).serial, "XXXXX");
  EXPECT_EQ(local::macText(*local::networkDevices(recorded).at(0).mac),
            "52:54:01:00:00:01");
}

TEST(Recorder, FilesThatMayNotBeReadAreNamed) {
  if (!support::OrdinaryUser::possible()) {
    GTEST_SKIP() << "this machine knows no user but root";
  }
  Folder original;
  addMachine(original);
  const std::string table = "/sys/firmware/dmi/tables/DMI";
  chmod((original.path() + table).c_str(), 0);
  chmod(original.path().c_str(), 0755);
  const Folder copy;
  const std::string folder = copy.path() + "/recorded";
  const Root recorded(folder);
  chmod(copy.path().c_str(), 0777);
  Recorder recorder(original.root(), folder, false);
  {
    const support::OrdinaryUser user;
    recorder.record();
  }
  EXPECT_THAT(recorder.problems(), ElementsAre(HasSubstr(table)));
  EXPECT_EQ(Machine(recorded).fans().size(), 1U);
}

TEST(Recorder, WhatIsRecordedIsForTheUserAlone) {
  Folder original;
  addMachine(original);
  const std::string table = "/sys/firmware/dmi/tables/DMI";
  chmod((original.path() + table).c_str(), 0444);
  const Folder copy;
  const std::string folder = copy.path() + "/recorded";
  const mode_t before = umask(0);
  EXPECT_TRUE(Recorder(original.root(), folder, false).record());
  EXPECT_EQ(umask(before), 0U);
  struct stat status = {};
  ASSERT_EQ(stat(folder.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0700U);
  ASSERT_EQ(stat((folder + table).c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST(Recorder, FolderThatIsThereIsLeftAlone) {
  Folder original;
  addMachine(original);
  const Folder copy;
  const std::string folder = copy.path() + "/recorded";
  std::filesystem::create_directory(folder);
  Recorder present(original.root(), folder, false);
  EXPECT_FALSE(present.record());
  EXPECT_THAT(present.problems(), ElementsAre(folder + " exists already"));
  EXPECT_TRUE(std::filesystem::is_empty(folder));
  // A link that leads nowhere is no free name either.
  std::filesystem::create_symlink(copy.path() + "/elsewhere", folder + "2");
  EXPECT_FALSE(Recorder(original.root(), folder + "2", false).record());
  EXPECT_FALSE(std::filesystem::exists(copy.path() + "/elsewhere"));
  Recorder lost(original.root(), folder + "/a/b", false);
  EXPECT_FALSE(lost.record());
  EXPECT_THAT(
      lost.problems(),
      ElementsAre(folder + "/a/b cannot be made: No such file or directory"));
}

}  // namespace
}  // namespace record
