#include "suite/local/recording/recorder.h"

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

namespace local {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kSecret[] = "SN417";

void addMachine(Folder& folder) {
  const std::string table =
      tableOf({Structure(1, 0x1B).text(5, "RX of SN417").text(7, kSecret),
               Structure(4, 0x30).byte(5, 3).byte(0x18, 0x41)});
  folder.file("/sys/firmware/dmi/tables/DMI", table)
      .file("/sys/firmware/dmi/tables/smbios_entry_point",
            entryPoint64(3, 3, table.size()))
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

platform::PrivateFolder opened(const std::string& path) {
  auto refusal = platform::PrivateFolder::Refusal::kNone;
  std::string reason;
  auto folder = platform::PrivateFolder::make(path, refusal, reason);
  EXPECT_TRUE(folder) << reason;
  return std::move(folder).value();
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
  platform::PrivateFolder folder = opened(copy.path());
  Recorder recorder(original.root(), folder, nullptr);
  recorder.record();
  EXPECT_THAT(recorder.problems(), IsEmpty());

  Machine machine(copy.root());
  EXPECT_EQ(machine.system().product, "RX of SN417");
  EXPECT_EQ(machine.system().serial, kSecret);
  EXPECT_EQ(machine.processors().at(0).maxMhz, 3700U);
  EXPECT_EQ(machine.fans().at(0).measuredRpm, 4980);
  const auto adapters = machine.adapters();
  ASSERT_THAT(adapters, SizeIs(1));
  EXPECT_EQ(adapters[0].model, "NB100");
  EXPECT_EQ(adapters[0].serial, kSecret);
  EXPECT_TRUE(adapters[0].driverBound);
  const auto devices = networkDevices(copy.root());
  ASSERT_THAT(devices, SizeIs(1));
  EXPECT_EQ(macText(*devices[0].mac), "52:54:01:12:34:56");
  EXPECT_EQ(devices[0].usbVendorId, 0x0525);
  EXPECT_EQ(devices[0].usbProductId, 0xa4a2);
  EXPECT_TRUE(devices[0].up);
}

TEST(Recorder, NothingElseIsRecorded) {
  Folder original;
  addMachine(original);
  original.file("/etc/shadow", "root");
  const Folder copy;
  platform::PrivateFolder folder = opened(copy.path());
  Recorder(original.root(), folder, nullptr).record();
  EXPECT_FALSE(std::filesystem::exists(copy.path() + "/etc"));
  EXPECT_FALSE(std::filesystem::exists(copy.path() +
                                       "/sys/class/hwmon/hwmon0/temp1_input"));
  EXPECT_EQ(copy.root().read("/usr/share/misc/pci.ids", 1000).bytes,
            "10a0  Nordbrenn\n\t0001  NB100\n");
}

TEST(Recorder, MaskLeavesNoSerial) {
  Folder original;
  addMachine(original);
  const Folder copy;
  masking::Masker masker;
  platform::PrivateFolder folder = opened(copy.path());
  Recorder(original.root(), folder, &masker).record();
  EXPECT_EQ(everythingIn(copy.path()).find(kSecret), std::string::npos);
  Machine machine(copy.root());
  EXPECT_EQ(machine.system().product, "RX of " + masker.value(kSecret));
  EXPECT_EQ(machine.system().serial, masker.value(kSecret));
  EXPECT_EQ(machine.adapters().at(0).serial, masker.value(kSecret));
  EXPECT_EQ(macText(*networkDevices(copy.root()).at(0).mac),
            masker.value("52:54:01:12:34:56"));
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
  platform::PrivateFolder folder = opened(copy.path());
  chmod(copy.path().c_str(), 0777);
  Recorder recorder(original.root(), folder, nullptr);
  {
    const support::OrdinaryUser user;
    recorder.record();
  }
  EXPECT_THAT(recorder.problems(), ElementsAre(HasSubstr(table)));
  EXPECT_EQ(Machine(copy.root()).fans().size(), 1U);
}

}  // namespace
}  // namespace local
