#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "suite/base/byte_view.h"

namespace local {

/// Version of the System Management BIOS reference (DSP0134) that a machine's
/// tables follow.
struct SmbiosVersion {
  std::uint8_t major = 0;
  std::uint8_t minor = 0;

  /// Whether the tables follow version `otherMajor.otherMinor` or a later one.
  bool atLeast(unsigned otherMajor, unsigned otherMinor) const {
    return major > otherMajor || (major == otherMajor && minor >= otherMinor);
  }
};

/// What the entry point says of the structure table.
struct SmbiosEntry {
  SmbiosVersion version;
  std::size_t tableLength = 0;     ///< Bytes at most; 0: not said.
  std::size_t structureCount = 0;  ///< 0: not said (64-bit entry points).
  bool checksumRight = false;      ///< A wrong one is worth a log line only.
};

/// Reads an entry point: the 64-bit one ("_SM3_"), the 32-bit one ("_SM_"),
/// or the table part that firmware before it had alone ("_DMI_"). Returns
/// nullopt if the bytes are none of these, or too short.
std::optional<SmbiosEntry> parseSmbiosEntry(base::ByteView bytes);

}  // namespace local
