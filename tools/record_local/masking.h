#pragma once

#include <map>
#include <string>

#include "suite/base/byte_view.h"
#include "suite/local/smbios/host_interface.h"
#include "suite/local/smbios/smbios.h"

namespace record {

// What --mask does to what identifies one machine among others: serial
// numbers, asset tags, UUIDs and the last three bytes of MAC addresses.
// Lengths stay, so that what is wrong with a table stays wrong.

/// A text with every letter and digit replaced.
std::string maskText(const std::string& text);

/// A line of hexadecimal digits and dashes (a UUID) likewise, still one.
std::string maskUuid(const std::string& uuid);

/// Masks MAC addresses: the same one always becomes the same other one.
class MacMask {
 public:
  local::MacAddress operator()(const local::MacAddress& mac);

 private:
  std::map<local::MacAddress, unsigned> numbers_;
};

/// A firmware table with what `tables` holds of the structure types that the
/// suite reads, masked. Structures of other types are left out, because
/// makers keep serial numbers in theirs too.
std::string maskTable(const local::SmbiosTables& tables, MacMask& macs);

/// A 64-bit entry point for a table of that length.
std::string entryPointOf(local::SmbiosVersion version, std::size_t length);

/// Vital product data with the part number as it is and the serial number
/// masked, and nothing else.
std::string maskVpd(base::ByteView bytes);

}  // namespace record
