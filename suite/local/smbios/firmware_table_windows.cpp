#include "suite/local/smbios/firmware_table.h"

#include <windows.h>

#include <string>

namespace local {
namespace {

constexpr DWORD kRawSmbios = 0x52534D42;  // "RSMB"

// What the system puts before the table: calling method, version, revision,
// length of the table.
constexpr std::size_t kRawDataHeaderLength = 8;

}  // namespace

FirmwareTable runningTable() {
  FirmwareTable table;
  table.name = "the firmware's SMBIOS table";
  const UINT size = GetSystemFirmwareTable(kRawSmbios, 0, nullptr, 0);
  if (size == 0) {
    return table;
  }
  std::string bytes(size, '\0');
  const UINT written =
      GetSystemFirmwareTable(kRawSmbios, 0, bytes.data(), size);
  const base::ByteView view(bytes);
  const auto major = view.byte(1);
  const auto minor = view.byte(2);
  const auto length = view.dword(4);
  if (written == 0 || written > size || !major || !minor || !length) {
    table.access = Access::kFailed;
    return table;
  }
  table.access = Access::kRead;
  table.entry = SmbiosEntry{{*major, *minor}, *length, 0, true};
  table.bytes = view.from(kRawDataHeaderLength).text();
  return table;
}

}  // namespace local
