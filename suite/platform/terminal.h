#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

/// The descriptors of the standard streams that are written.
inline constexpr int kStandardOutput = 1;
inline constexpr int kStandardError = 2;

/// Whether a descriptor is a terminal on which lines can be redrawn.
bool isTerminal(int descriptor);

/// How many columns a terminal has; `otherwise` if the descriptor is no
/// terminal, or its width is unknown.
std::size_t terminalWidth(int descriptor, std::size_t otherwise);

/// Writes a text as it is, past the streams' buffers. Write errors are
/// ignored.
void writeRaw(int descriptor, std::string_view text);

}  // namespace platform
