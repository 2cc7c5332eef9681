#pragma once

#include <string>

#include "suite/base/byte_view.h"
#include "suite/local/smbios/smbios.h"
#include "suite/masking/masker.h"

namespace local {

// What identifies one machine among others in its firmware's data: serial
// numbers, asset tags, UUIDs and MAC addresses. Lengths stay, so that what is
// wrong with a table stays wrong.

/// Tells a masker what identifies the machine in a firmware table.
void noteTable(const SmbiosTables& tables, masking::Masker& masker);

/// The same of vital product data: the serial number.
void noteVpd(base::ByteView bytes, masking::Masker& masker);

/// A firmware table with what `tables` holds of the structure types that the
/// suite reads, masked. Structures of other types are left out, because
/// makers keep serial numbers in theirs too.
std::string maskTable(const SmbiosTables& tables, masking::Masker& masker);

/// A 64-bit entry point for a table of that length.
std::string entryPointOf(SmbiosVersion version, std::size_t length);

/// Vital product data with the part number as it is and the serial number
/// masked, and nothing else.
std::string maskVpd(base::ByteView bytes, masking::Masker& masker);

}  // namespace local
