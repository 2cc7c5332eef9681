#include "bench/local/dump.h"

#include <cstddef>
#include <fstream>

#include "suite/local/facts/root.h"
#include "suite/local/smbios/firmware_table.h"

namespace bench {
namespace {

constexpr std::size_t kEntryLength = 0x18;
constexpr std::size_t kTableAt = 0x20;

void putNumber(std::string& bytes, std::size_t offset, std::size_t number) {
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[offset + i] = static_cast<char>(number >> (8U * i) & 0xFFU);
  }
}

// A 64-bit entry point (DSP0134, 5.2.2).
std::string entryFor(const local::FirmwareTable& table) {
  const local::SmbiosVersion version =
      table.entry ? table.entry->version : local::SmbiosVersion{3, 0};
  std::string entry(kEntryLength, '\0');
  entry.replace(0, 5, "_SM3_");
  entry[0x06] = static_cast<char>(kEntryLength);
  entry[0x07] = static_cast<char>(version.major);
  entry[0x08] = static_cast<char>(version.minor);
  entry[0x0A] = 1;  // Revision of the entry point itself.
  putNumber(entry, 0x0C, table.bytes.size());
  putNumber(entry, 0x10, kTableAt);
  unsigned sum = 0;
  for (const char byte : entry) {
    sum += static_cast<unsigned char>(byte);
  }
  entry[0x05] = static_cast<char>(0x100U - (sum & 0xFFU));
  return entry;
}

}  // namespace

bool writeDump(const std::string& recordedMachine, const std::string& file) {
  const local::FirmwareTable table =
      local::tableInFolders(local::Root(recordedMachine));
  if (table.access != local::Access::kRead) {
    return false;
  }
  std::string dump = entryFor(table);
  dump.resize(kTableAt);
  dump += table.bytes;
  std::ofstream out(file, std::ios::binary);
  out << dump;
  return static_cast<bool>(out.flush());
}

}  // namespace bench
