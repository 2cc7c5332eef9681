// Writes the firmware structures of the test machines, a file for each, as
// qemu takes them. All makers and numbers are invented.
//
//   vm_tables FOLDER PORT PORT
//
// The ports are those of the controllers that the two host interfaces lead to.

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "suite/base/numbers.h"
#include "tests/suite/local/host_interface_builder.h"
#include "tests/suite/local/table_builder.h"

namespace {

using local::Structure;

const std::string kUsbMac("\x52\x54\x00\x12\x34\x56", 6);
const std::string kSecondUsbMac("\x52\x54\x00\x12\x34\x57", 6);

// The UUIDs of services and system as the table orders their bytes: those of
// samples/rack-server, and that of the service of samples/two-node.
const std::string kSystemUuid(
    "\xc8\x41\x9a\x3d\x02\x7e\x5b\x4f\xa6\xd1\x90\xc4\xf8\x2b\x57\xe3", 16);
const std::string kServiceUuid(
    "\xd4\xc7\xf0\xb2\x1e\x5a\x63\x4e\x9d\x0c\x7f\x4b\xe2\xa6\x31\x0d", 16);

Structure systemInformation() {
  return Structure(1, 0x1B)
      .text(0x04, "Halvorn Systems")
      .text(0x05, "RX 7200")
      .text(0x06, "Gen 4")
      .text(0x07, "HV7200-00417")
      .bytes(0x08, kSystemUuid)
      .byte(0x18, 6)
      .text(0x19, "RX7200-2U")
      .text(0x1A, "RX");
}

Structure baseboard() {
  return Structure(2, 0x0F)
      .text(0x04, "Halvorn Systems")
      .text(0x05, "MB-7200")
      .text(0x06, "B2")
      .text(0x07, "HVMB-20881")
      .byte(0x0D, 0x0A);
}

Structure processor(const std::string& socket, unsigned status) {
  return Structure(4, 0x30)
      .text(0x04, socket)
      .byte(0x05, 3)
      .byte(0x06, 0xFE)
      .text(0x07, "Corvex")
      .text(0x10, "Corvex 9100 32-Core Processor")
      .word(0x14, 4200)
      .word(0x16, 2800)
      .byte(0x18, status)
      .byte(0x23, 32)
      .word(0x28, 0x6B);
}

Structure module(const std::string& locator, const std::string& serial) {
  return Structure(17, 0x5C)
      .word(0x08, 72)
      .word(0x0A, 64)
      .word(0x0C, 0x7FFF)
      .byte(0x0E, 9)
      .text(0x10, locator)
      .text(0x11, "P0 CHANNEL A")
      .byte(0x12, 0x22)
      .word(0x15, 4800)
      .text(0x17, "Ostrava Memory")
      .text(0x18, serial)
      .text(0x1A, "OM5-32G-4800R")
      .dword(0x1C, 32768);
}

Structure emptySocket(const std::string& locator) {
  return Structure(17, 0x5C)
      .text(0x10, locator)
      .text(0x11, "P0 CHANNEL A")
      .byte(0x12, 2)
      .text(0x17, "Not Specified");
}

Structure supply(const std::string& name, unsigned status) {
  constexpr unsigned kPresent = 2;
  return Structure(39, 0x16)
      .text(0x05, "Rear")
      .text(0x06, name)
      .text(0x07, "Voltmark")
      .word(0x0C, 1100)
      .word(0x0E, status << 7U | kPresent);
}

constexpr unsigned kSlotAvailable = 3;
constexpr unsigned kSlotInUse = 4;

Structure slot(const std::string& designation, unsigned bus, unsigned place,
               unsigned usage = kSlotInUse) {
  return Structure(9, 0x11)
      .text(0x04, designation)
      .byte(0x05, 0xB6)
      .byte(0x07, usage)
      .byte(0x0F, bus)
      .byte(0x10, place);
}

Structure onboard(const std::string& designation, unsigned bus,
                  unsigned place) {
  return Structure(41, 0x0B)
      .text(0x04, designation)
      .byte(0x05, 0x85)
      .byte(0x09, bus)
      .byte(0x0A, place);
}

constexpr char kLivingHost = 17;
constexpr char kDeadHost = 99;

// A USB network card that leads to a service at 169.254.NETWORK.HOST.
Structure controller(const std::string& mac, char network, unsigned port,
                     const std::string& uuid, bool makesAccounts = false,
                     char host = kLivingHost) {
  std::string record = local::serviceRecord();
  record.replace(0, uuid.size(), uuid);
  record[20] = network;
  record[54] = network;
  record[55] = host;
  record[84] = static_cast<char>(port & 0xFFU);
  record[85] = static_cast<char>(port >> 8U);
  return local::hostInterface(
      local::usbV2Device(0x0525, 0xa4a2, mac, makesAccounts ? 1 : 0), {record});
}

// What other firmware leaves in its table: a guest's names of the machine
// where those of parts belong, fillers, templates, parts of one name, and
// addresses that several slots state.

Structure guestSystem() {
  return Structure(1, 0x1B)
      .text(0x04, "Halvorn Cloud")
      .text(0x05, "HC Guest")
      .text(0x06, "hc-q9-7.2")
      .text(0x07, "System Serial Number")
      .bytes(0x08, kSystemUuid)
      .byte(0x18, 6)
      .text(0x19, "SKU=NotProvided;ModelName=HC Guest")
      .text(0x1A, "HC-9");
}

Structure fillerBoard() {
  return Structure(2, 0x0F)
      .text(0x04, "Default string")
      .text(0x05, "Default string")
      .text(0x06, "Type2 - Board Version")
      .text(0x07, "0123456789");
}

Structure guestProcessor(unsigned status) {
  return Structure(4, 0x30)
      .text(0x04, "CPU")
      .byte(0x05, 1)  // Other.
      .byte(0x06, 0xFE)
      .text(0x10, "hc-q9-7.2")
      .word(0x14, 2000)
      .byte(0x18, status)
      .word(0x28, 0x101);
}

Structure memoryArray(unsigned use) {
  return Structure(16, 0x17).byte(0x04, 3).byte(0x05, use).word(0x0D, 4);
}

Structure moduleOf(unsigned array, const std::string& locator) {
  return Structure(17, 0x28)
      .word(0x04, array)
      .word(0x0C, 0x2000)
      .text(0x10, locator)
      .text(0x11, "BANK 0")
      .byte(0x12, 0x1A)
      .word(0x15, 3200)
      .text(0x17, "Undefined")
      .text(0x18, "00000000")
      .text(0x1A, "PartNum0");
}

Structure supplyTemplate() {
  constexpr unsigned kPresent = 2;
  return Structure(39, 0x16)
      .text(0x05, "To Be Filled By O.E.M.")
      .text(0x06, "To Be Filled By O.E.M.")
      .text(0x07, "To Be Filled By O.E.M.")
      .text(0x0A, "To Be Filled By O.E.M.")
      .word(0x0C, 0x8000)
      .word(0x0E, kPresent);
}

Structure supplyOfOneName(const std::string& place, bool unplugged) {
  constexpr unsigned kPresentAndOk = 3U << 7U | 2U;
  constexpr unsigned kUnplugged = 4;
  return Structure(39, 0x16)
      .text(0x05, place)
      .text(0x06, "PWR SPLY,800W")
      .text(0x07, "Voltmark")
      .word(0x0C, 800)
      .word(0x0E, kPresentAndOk | (unplugged ? kUnplugged : 0));
}

// A folder of structures, a file for each.
class Folder {
 public:
  explicit Folder(std::string path) : path_(std::move(path)) {}

  // Writes a structure and returns its handle; handles count up.
  unsigned write(const std::string& name, const Structure& structure) {
    std::ofstream file(path_ + "/" + name, std::ios::binary);
    file << structure.build(handle_);
    good_ = good_ && file.good();
    return handle_++;
  }

  bool good() const { return good_; }

 private:
  std::string path_;
  std::uint16_t handle_ = 0x1000;
  bool good_ = true;
};

void writeOddFirmware(Folder& folder) {
  constexpr unsigned kPopulatedAndEnabled = 0x41;
  constexpr unsigned kPopulatedAndIdle = 0x44;
  constexpr unsigned kSystemMemory = 3;
  constexpr unsigned kFlash = 5;
  folder.write("guest-system", guestSystem());
  folder.write("filler-board", fillerBoard());
  folder.write("guest-cpu1", guestProcessor(kPopulatedAndEnabled));
  folder.write("guest-cpu2", guestProcessor(kPopulatedAndIdle));
  const unsigned memory = folder.write("memory", memoryArray(kSystemMemory));
  const unsigned flash = folder.write("flash", memoryArray(kFlash));
  folder.write("module1", moduleOf(memory, "DIMM 10"));
  folder.write("module2", moduleOf(memory, "DIMM 9"));
  folder.write("module3", moduleOf(memory, "DIMM 10"));
  folder.write("module4", moduleOf(flash, "SYSTEM ROM"));
  folder.write("supply-template", supplyTemplate());
  folder.write("supply-bay2", supplyOfOneName("Bay 2", false));
  folder.write("supply-bay1", supplyOfOneName("Bay 1", true));
  folder.write("slot5", slot("Slot 5", 0, 5U << 3U));
  folder.write("riser5", slot("Riser 5", 0, 5U << 3U, kSlotAvailable));
  folder.write("slot6", slot("Slot 6", 0, 6U << 3U));
  folder.write("riser6", slot("Riser 6", 0, 6U << 3U));
  folder.write("slot7", slot("Slot 7", 0, 7U << 3U));
  folder.write("lan2", onboard("LAN 2", 1, 0));
}

std::optional<unsigned> portOf(std::string_view text) {
  return base::parseNumber<std::uint16_t>(text);
}

}  // namespace

int main(int argc, char** argv) {
  const auto first = argc > 2 ? portOf(argv[2]) : std::nullopt;
  const auto second = argc > 3 ? portOf(argv[3]) : std::nullopt;
  if (!first || !second) {
    std::fputs("vm_tables FOLDER PORT PORT\n", stderr);
    return 2;
  }
  constexpr unsigned kPopulatedAndEnabled = 0x41;
  constexpr unsigned kOk = 3;
  constexpr unsigned kCritical = 5;
  Folder folder(argv[1]);
  folder.write("system", systemInformation());
  folder.write("board", baseboard());
  folder.write("cpu1", processor("CPU 1", kPopulatedAndEnabled));
  folder.write("cpu2", processor("CPU 2", kPopulatedAndEnabled));
  folder.write("dimm1", module("DIMM A1", "OM-70311"));
  folder.write("dimm2", emptySocket("DIMM A2"));
  folder.write("dimm3", module("DIMM B1", "OM-70312"));
  folder.write("supply1", supply("PSU 1", kOk));
  folder.write("supply2", supply("PSU 2", kCritical));
  folder.write("slot1", slot("Slot 1", 0, 3U << 3U));
  folder.write("slot2", slot("Slot 2", 0, 4U << 3U));
  folder.write("onboard", onboard("LAN 1", 0, 2U << 3U));
  folder.write("controller1", controller(kUsbMac, 0, *first, kServiceUuid));
  folder.write("bootstrapping",
               controller(kUsbMac, 0, *first, kServiceUuid, true));
  folder.write("controller2",
               controller(kSecondUsbMac, 1, *second, std::string(16, '\0')));
  folder.write("dead-controller",
               controller(kUsbMac, 0, *first, kServiceUuid, false, kDeadHost));
  writeOddFirmware(folder);
  return folder.good() ? 0 : 1;
}
