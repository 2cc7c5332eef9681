#pragma once

#include <cstdint>
#include <vector>

#include "syshealth/host/connection_info.h"

/// Whether a command's targets could be picked.
enum class TargetSelection {
  kPicked,
  kInvalidNode,     ///< "node" is not within 1 to the number of targets.
  kUnsupportedMode  ///< Neither in-band nor out-of-band.
};

/// Leaves in the non-empty list the targets that a command is to read, in
/// their order: out-of-band the first one; in-band every one, or, where the
/// "node" option is given, those whose node it is, which may be none. Only the
/// in-band mode reads the option. The list is as it was unless picked.
TargetSelection selectTargets(
    std::int32_t connectionMode,
    std::vector<Tarvex::TarvexConnection::ConnectionInfo>& targets);
