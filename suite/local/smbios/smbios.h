#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "suite/base/byte_view.h"
#include "suite/local/smbios/smbios_entry.h"

namespace local {

/// Structure types of DSP0134 that this system reads.
enum SmbiosType : std::uint8_t {
  kSmbiosSystem = 1,
  kSmbiosBaseboard = 2,
  kSmbiosProcessor = 4,
  kSmbiosSlot = 9,
  kSmbiosMemoryArray = 16,
  kSmbiosMemoryDevice = 17,
  kSmbiosPowerSupply = 39,
  kSmbiosOnboardDevice = 41,
  kSmbiosHostInterface = 42,
  kSmbiosEnd = 127
};

/// One structure of the table. A view: the table's bytes must outlive it.
struct SmbiosStructure {
  std::uint8_t type = 0;
  std::uint16_t handle = 0;
  base::ByteView formatted;  ///< From the type byte on, as long as stated.
  std::string_view strings;  ///< The texts behind it, each ended by a NUL.

  /// The text that the string number at an offset names, as the firmware
  /// wrote it; empty for number 0, for a number past the set, and for an
  /// offset past the structure.
  std::string_view string(std::size_t offset) const;
};

/// The structure table of a machine.
struct SmbiosTables {
  SmbiosVersion version;
  std::vector<SmbiosStructure> structures;  ///< In table order.
  /// What is wrong with the table, as texts for the log. Reading went on, or
  /// stopped there and kept what came before.
  std::vector<std::string> defects;

  /// The structures of a type, in table order.
  std::vector<const SmbiosStructure*> ofType(SmbiosType type) const;
};

/// Reads a structure table. Never fails: of an inconsistent table, the
/// structures up to the inconsistency are returned. Without a usable entry
/// point the version is 3.0, which every current machine follows. The result
/// refers to `table`, which must outlive it.
SmbiosTables parseSmbios(const std::optional<SmbiosEntry>& entry,
                         base::ByteView table);

}  // namespace local
