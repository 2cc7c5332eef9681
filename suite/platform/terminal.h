#pragma once

#include <string_view>

namespace platform {

/// Whether a descriptor is a terminal on which lines can be redrawn.
bool isTerminal(int descriptor);

/// Writes a text as it is, past the streams' buffers. What cannot be written
/// is not missed.
void drawOn(int descriptor, std::string_view text);

}  // namespace platform
