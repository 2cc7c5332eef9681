#pragma once

namespace connection {

/// Waits until a descriptor can be read. False when the user ends the run
/// instead. On Windows, where not everything can be waited for, it returns at
/// once, and the end of the run ends the read that follows.
bool awaitInput(int descriptor);

}  // namespace connection
