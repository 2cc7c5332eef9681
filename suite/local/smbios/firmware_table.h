#pragma once

#include <optional>
#include <string>

#include "suite/local/facts/root.h"
#include "suite/local/smbios/smbios_entry.h"

namespace local {

/// Where Linux shows the SMBIOS structure table, and its entry point.
inline constexpr char kTablePath[] = "/sys/firmware/dmi/tables/DMI";
inline constexpr char kEntryPointPath[] =
    "/sys/firmware/dmi/tables/smbios_entry_point";

/// The firmware's structure table as the system shows it.
struct FirmwareTable {
  Access access = Access::kMissing;
  std::optional<SmbiosEntry> entry;  ///< What is said of the table.
  std::string bytes;
  std::string name;  ///< What to call its source in messages.
};

/// The table that a machine's folders hold, as Linux shows it.
FirmwareTable tableInFolders(const Root& root);

/// The table of the running machine.
FirmwareTable runningTable();

}  // namespace local
