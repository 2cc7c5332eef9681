#pragma once

#include <string_view>

namespace local {

/// Name of a processor family by its number in DSP0134 (Processor
/// Information, both family fields); empty for "other", "unknown" and numbers
/// of architectures that have no such tables.
std::string_view processorFamilyName(unsigned family);

/// Name of a memory type by its number in DSP0134 (Memory Device); empty for
/// "other", "unknown" and numbers that are not assigned.
std::string_view memoryTypeName(unsigned type);

}  // namespace local
