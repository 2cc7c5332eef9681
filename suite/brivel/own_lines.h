#pragma once

#include <string>

namespace brivel {

/// Writes a line of the host's own on standard error, made safe for a
/// terminal.
void tell(const std::string& text);

}  // namespace brivel
