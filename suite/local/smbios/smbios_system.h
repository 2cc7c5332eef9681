#pragma once

#include "suite/local/facts/facts.h"
#include "suite/local/smbios/smbios.h"

namespace local {

/// The machine, from the first System Information structure (type 1).
SystemFacts systemFacts(const SmbiosTables& tables);

/// The main board, from the Baseboard structures (type 2): the first that
/// calls itself a motherboard, else the first.
BoardFacts boardFacts(const SmbiosTables& tables);

/// A UUID of 16 bytes as text. From version 2.6 on its first three groups are
/// little-endian. All zeros and all ones, which mean "not set" and "not
/// present", give an empty text.
std::string uuidText(base::ByteView bytes, SmbiosVersion version);

}  // namespace local
